# Wine for programs of 32-bit Windows, in a small i386 Debian of its own below build/. Sourced by run.
#
# The machine's own Wine, if any, runs 64-bit programs only, and a second architecture cannot be installed
# everywhere. The root is kept between runs. What it needs mounted is mounted in a namespace that ends with
# the program, so nothing stays behind, however a run ends.

wine_root=$PWD/build/wine-i386

# The players' own, China's: what a program tells of days is theirs, wherever it is run.
wine_zone=CST-8

# Runs a command there, with FOLDER as /app: in_wine_root FOLDER COMMAND...
in_wine_root() {
  TZ=$wine_zone unshare --mount --pid --fork --kill-child --mount-proc="$wine_root/proc" \
    tools/run/wine_namespace.sh "$wine_root" "$@" </dev/null
}

# Runs a Windows program of FOLDER, which is its current folder, too: in_wine FOLDER PROGRAM ARGUMENTS...
in_wine() { in_wine_root "$1" /usr/lib/wine/wine "${@:2}"; }

# The machine's own source of Debian's packages, as a line of sources.list.
debian_source() {
  local codename uri keyring
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
  read -r uri keyring < <(apt-get indextargets --format '$(REPO_URI) $(SIGNED_BY)' \
    'Created-By: Packages' 'Label: Debian' 'Component: main' "Codename: $codename") || return 1
  case "$keyring" in
    /*) echo "deb [signed-by=$keyring] $uri $codename main" ;;
    *) echo "deb $uri $codename main" ;;
  esac
}

remove_wine_root() { rm -rf --one-file-system "$wine_root" "$wine_root.new"; }

make_wine_root() {
  say "Making a 32-bit root with Wine in build/ (once, about a minute)"
  local source
  source=$(debian_source) || { apt-get -qq update && source=$(debian_source); } ||
    fail "apt knows no source of this Debian release; Wine has to come from there"
  remove_wine_root
  mkdir -p "$wine_root.new"
  # Without a locale of that name files with Chinese names could not be made; it also gives code page 936.
  unshare --mount mmdebstrap --quiet --architectures=i386 --variant=essential --include=wine32,locales \
    --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-exclude=/usr/share/man/*' \
    --customize-hook='chroot "$1" localedef -i zh_CN -f UTF-8 zh_CN.UTF-8' \
    "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$wine_root.new" "$source" ||
    fail "the 32-bit root could not be made"
  mkdir -p "$wine_root.new/app" "$wine_root.new/home"
  mv "$wine_root.new" "$wine_root"
  in_wine_root tools /bin/sh -c '/usr/lib/wine/wine wineboot --init && /usr/lib/wine/wineserver -w' >/dev/null 2>&1 ||
    fail "Wine does not start in the 32-bit root"
  wine_works || fail "Wine starts in the 32-bit root, but runs no program with code page 936"
}

# True when programs run there.
wine_works() { [ -d "$wine_root/home/wine" ] && in_wine tools cmd /c echo works 2>/dev/null | grep -q works; }

need_wine() {
  need mmdebstrap arch-test
  [ "$(id -u)" -eq 0 ] ||
    fail "the Windows programs run in a 32-bit root of their own, and only root can make and enter one: please run this as root"
  unshare --mount --pid --fork true 2>/dev/null ||
    fail "this machine allows no namespaces of mounts, which the 32-bit root needs"
  wine_works || make_wine_root
}
