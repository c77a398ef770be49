#!/usr/bin/env bash
# in_root.sh: tries the packages in /work, in a bare Debian root file system and without network. Installs an older
# release, upgrades it, uses everything, removes and purges it.
set -euo pipefail
cd /work
fail() { printf 'in_root.sh: %s\n' "$*" >&2; exit 1; }
export DEBIAN_FRONTEND=noninteractive
quietly() { "$@" >log 2>&1 || { tail -20 log >&2; fail "failed: $*"; }; }

# All files but those of the package managers and what this script writes; and all packages.
state() {
  find / -xdev \( -path /work -o -path /proc -o -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o \
    -path /var/log -o -path /tmp \) -prune -o -print | sort
  dpkg-query -W -f '${Package} ${Version} ${Status}\n'
}
state >before
version=$(dpkg-deb -f libzvutilib1_*.deb Version)
arch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)

# An older release: the same packages under another version, the library under another file name.
old=0.9.9.9
mkdir older
for package in *.deb; do
  dpkg-deb -R "$package" older/tree
  sed -i "s/${version%-*}/$old/g" older/tree/DEBIAN/control
  find older/tree -name "*${version%-*}*" | while read -r file; do mv "$file" "${file/"${version%-*}"/$old}"; done
  [ ! -L "older/tree/usr/lib/$arch/libZvUtiLib.so.1" ] || ln -sf libZvUtiLib.so.$old "older/tree/usr/lib/$arch/libZvUtiLib.so.1"
  rm older/tree/DEBIAN/md5sums
  dpkg-deb -b older/tree older/ >/dev/null
  rm -rf older/tree
done
quietly apt-get -qq --yes install ./older/*.deb
[ -e "/usr/lib/$arch/libZvUtiLib.so.$old" ] && zvuti records --names >/dev/null || fail "the older release does not work"
quietly apt-get -qq --yes install ./*.deb
leftover=$(find / -xdev -path /work -prune -o -path /proc -prune -o -name "*ZvUtiLib*$old*" -print)
[ -z "$leftover" ] || fail "upgrading leaves $leftover"
ldconfig -p | grep "libZvUtiLib.so.1 .*/lib/$arch/libZvUtiLib.so.1" >/dev/null || fail "the loader does not know the library"

# Everything in it, used as it is meant to be.
[ "$(zvuti --version)" = "zvuti ${version%-*}" ] || fail "zvuti --version says $(zvuti --version)"
quietly cmake -S client -B built -G Ninja -DCMAKE_BUILD_TYPE=Debug
quietly cmake --build built --target client client_static
quietly ./built/client
quietly ./built/client_static
read -ra shared <<<"$(pkg-config --cflags --libs ZvUtiLib)"
read -ra static <<<"$(pkg-config --static --cflags --libs ZvUtiLib)"
quietly g++ -std=c++17 client/main.cpp -o client_pc "${shared[@]}"
quietly ./client_pc
quietly g++ -std=c++17 -static client/main.cpp -o client_pc_static "${static[@]}"
quietly ./client_pc_static
mkdir debian
printf 'Source: game\n\nPackage: game\nArchitecture: any\n' >debian/control
depends=$(dpkg-shlibdeps -O client_pc 2>&1) || fail "dpkg-shlibdeps fails: $depends"
grep -q "libzvutilib1 (>= ${version%-*})" <<<"$depends" || fail "dpkg-shlibdeps says: $depends"
for page in zvuti zvuti-decode; do
  quietly man --warnings -w 1 $page
done
quietly man -w 3 zvutilib
[ -s "/usr/share/gdb/auto-load/usr/lib/$arch/libZvUtiLib.so.${version%-*}-gdb.py" ] || fail "gdb finds no printers"
for package in libzvutilib1 libzvutilib-dev zvuti; do
  grep -q "All rights are reserved" /usr/share/doc/$package/copyright || fail "$package says nothing of its terms"
done

quietly apt-get -qq --yes remove libzvutilib1 libzvutilib-dev zvuti
quietly dpkg --purge libzvutilib1 libzvutilib-dev zvuti
quietly apt-get -qq --yes autoremove --purge
state >after
diff before after || fail "after purging, the files and packages of the root differ (lines with >)"
echo "older release, upgrade, client by CMake and pkg-config, shared and static, dpkg-shlibdeps ($depends), removed without a trace"
