# Makes the Debian packages and tries them in a bare Debian root file system below build/. Sourced by run.

debian_stage=build/debian
debian_root=$PWD/build/debian-root

# The folder with the packages and what dpkg writes beside them. $1 is a build folder whose programs are packed; without
# it everything is built anew, with the flags of Debian.
make_debian_packages() {
  local tree version log=$debian_stage/build.log
  version=$(library_version)
  tree=$debian_stage/zvutilib-$version
  rm -rf "$debian_stage"
  tools/debian/make.sh "$tree"
  (
    cd "$tree"
    export DEB_BUILD_OPTIONS=noautodbgsym
    [ $# -eq 0 ] || export ZVUTILIB_BUILT="$PWD/../../../$1"
    dpkg-buildpackage -b -us -uc >../build.log 2>&1
  ) || { tail -20 "$log" >&2; fail "making the Debian packages failed; see $log"; }
  say "lintian"
  lintian --allow-root --fail-on error,warning "$debian_stage"/*.changes || fail "lintian finds faults in the packages"
  echo "no errors, no warnings; the reasons of the overrides are in tools/debian/make.sh"
  cp "$debian_stage"/*.deb "$packages"
}

make_debian_root() {
  say "Making a bare Debian root file system with compilers in build/ (only once; takes about a minute)"
  local source
  source=$(debian_source) || { apt-get -qq update && source=$(debian_source); } ||
    fail "apt has no package source for this Debian release"
  rm -rf --one-file-system "$debian_root" "$debian_root".*
  # What the packages depend on waits in apt's cache: installing them in the root needs no network.
  unshare --mount mmdebstrap --quiet --variant=minbase --skip=cleanup/apt \
    --include=g++,cmake,ninja-build,pkgconf,dpkg-dev,man-db --dpkgopt='path-exclude=/usr/share/locale/*' \
    --customize-hook='APT_CONFIG=$MMDEBSTRAP_APT_CONFIG apt-get -qq --yes --download-only install libexpat1-dev' \
    "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$debian_root.new" "$source" ||
    fail "making the Debian root file system failed"
  mv "$debian_root.new" "$debian_root"
}

# The packages leave the root as it was, or else it is made anew next time.
check_debian_packages() {
  [ -d "$debian_root" ] || make_debian_root
  say "Debian packages in a bare root: install, upgrade, use, remove, purge"
  local used=$debian_root.used
  rm -rf --one-file-system "$used"
  mv "$debian_root" "$used"
  rm -rf "$used/work"
  mkdir "$used/work"
  cp "$debian_stage"/*.deb tests/package/in_root.sh "$used/work"
  cp -r tests/client tests/compile "$used/work"
  unshare --mount --net --pid --fork --kill-child --mount-proc="$used/proc" \
    chroot "$used" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 /work/in_root.sh </dev/null ||
    fail "the Debian packages do not work in a bare root"
  rm -rf "$used/work"
  mv "$used" "$debian_root"
}
