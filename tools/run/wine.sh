# Runs programs for 32-bit Windows under Wine, in a small i386 Debian root file system below build/. Sourced by run.
#
# A Wine installed on the machine may run 64-bit programs only, and i386 packages cannot be installed on every
# machine. The root is kept between runs. Its mounts live in a mount namespace that ends with the program, so
# nothing stays mounted, however a run ends.

wine_root=$PWD/build/wine-i386

# China Standard Time, the time zone of the players, so that results that depend on the date are the same everywhere.
wine_zone=CST-8

# beside_wine_root FOLDER COMMAND...: runs COMMAND on this machine, with FOLDER mounted as /app of the root, so that the
# command can enter it with wine_chroot.sh as often as it likes.
beside_wine_root() {
  TZ=$wine_zone unshare --mount --pid --fork --kill-child --mount-proc="$wine_root/proc" \
    tools/run/wine_namespace.sh "$wine_root" "$@" </dev/null
}

# in_wine_root FOLDER COMMAND...: runs COMMAND in the root, with FOLDER mounted as /app.
in_wine_root() { beside_wine_root "$1" tools/run/wine_chroot.sh "$wine_root" "${@:2}"; }

# in_wine FOLDER PROGRAM ARGUMENTS...: runs a Windows program from FOLDER, which is also its current folder.
in_wine() { in_wine_root "$1" /usr/lib/wine/wine "${@:2}"; }

# Prints the source of Debian packages that this machine uses, as a line for sources.list. Without package lists, as on a
# fresh machine, it loads them first.
debian_source() {
  local codename uri keyring
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
  main_source() {
    apt-get indextargets --format '$(REPO_URI) $(SIGNED_BY)' \
      'Created-By: Packages' 'Label: Debian' 'Component: main' "Codename: $codename"
  }
  read -r uri keyring < <(main_source) || { apt-get -qq update >&2 && read -r uri keyring < <(main_source); } || return 1
  case "$keyring" in
    /*) echo "deb [signed-by=$keyring] $uri $codename main" ;;
    *) echo "deb $uri $codename main" ;;
  esac
}

remove_wine_root() { rm -rf --one-file-system "$wine_root" "$wine_root.new"; }

make_wine_root() {
  say "Making a 32-bit root file system with Wine in build/ (only once; takes about a minute)"
  local source
  source=$(debian_source) ||
    fail "apt has no package source for this Debian release, from which Wine would be installed"
  remove_wine_root
  mkdir -p "$wine_root.new"
  # Wine takes code page 936 from this locale, and could not create files with Chinese names without it.
  unshare --mount mmdebstrap --quiet --architectures=i386 --variant=essential --include=wine32,locales \
    --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-exclude=/usr/share/man/*' \
    --customize-hook='chroot "$1" localedef -i zh_CN -f UTF-8 zh_CN.UTF-8' \
    "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$wine_root.new" "$source" ||
    fail "making the 32-bit root file system failed"
  mkdir -p "$wine_root.new/app" "$wine_root.new/home"
  mv "$wine_root.new" "$wine_root"
  in_wine_root tools /bin/sh -c '/usr/lib/wine/wine wineboot --init && /usr/lib/wine/wineserver -w' >/dev/null 2>&1 ||
    fail "Wine does not start in the 32-bit root file system"
  wine_works || fail "Wine starts in the 32-bit root file system, but cannot run a program"
}

# Succeeds if Wine can run a program in the root.
wine_works() { [ -d "$wine_root/home/wine" ] && in_wine tools cmd /c echo works 2>/dev/null | grep -q works; }

need_wine() {
  need mmdebstrap arch-test
  [ "$(id -u)" -eq 0 ] ||
    fail "Windows programs run in a 32-bit root file system that only root can make and enter; please run this as root"
  unshare --mount --pid --fork true 2>/dev/null ||
    fail "this machine does not allow mount namespaces, which the 32-bit root file system needs"
  wine_works || make_wine_root
}
