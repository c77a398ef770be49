#!/usr/bin/env bash
# cmake.sh RELEASE-BUILD WORK: tries in the folder WORK what a stranger's project does with CMake and pkg-config:
# components, uninstalling, static linking, and the library as a part of another project. RELEASE-BUILD is a build
# folder in which the library and its static variant are built.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source=$(cd "$here/../.." && pwd)
build=$(cd "$1" && pwd)
rm -rf "$2"
mkdir -p "$2"
cd "$2"
fail() { printf 'cmake.sh: %s\n' "$*" >&2; exit 1; }

# files FOLDER: the files and links below it, in order.
files() { (cd "$1" && find . ! -type d | sort); }

# Each component installs something of its own, and together they install everything.
for component in Runtime Development Tools; do
  cmake --install "$build" --prefix "$PWD/only/$component" --component "$component" >/dev/null
done
cmake --install "$build" --prefix "$PWD/all" >/dev/null
# An installation into a staging folder is removed there; the folders of others stay.
DESTDIR=$PWD/staged cmake --install "$build" --prefix /usr >/dev/null
touch staged/usr/lib/other
diff <(cat <(files only/Runtime) <(files only/Development) <(files only/Tools) | sort) <(files all) ||
  fail "the components install other files (lines with <) than a whole installation (lines with >)"
places() { files "only/$1" | sed -E 's#^\./([^/]+/[^/.]+).*#\1#' | sort -u | tr '\n' ' '; }
[ "$(places Runtime | sed 's/share[^ ]* //g')" = "lib/libZvUtiLib " ] || fail "Runtime installs $(places Runtime)"
[ -f only/Tools/bin/zvuti ] && [ ! -e only/Tools/lib ] || fail "Tools installs $(places Tools)"
[ -f only/Development/include/ZvUtiLib/ZvUtiLib.h ] && [ ! -e only/Development/bin ] ||
  fail "Development installs $(places Development)"
DESTDIR=$PWD/staged cmake --build "$build" --target uninstall >/dev/null
[ "$(files staged)" = ./usr/lib/other ] || fail "after uninstalling there is still: $(files staged)"
[ -z "$(find staged -iname '*zvuti*')" ] || fail "uninstalling leaves folders: $(find staged -iname '*zvuti*')"
[ -f only/Runtime/share/doc/ZvUtiLib/COPYING ] || fail "Runtime does not install COPYING"
for notice in Development/libexpat1-dev Tools/libcli11-dev Tools/nlohmann-json3-dev; do
  [ -s "only/${notice%/*}/share/doc/ZvUtiLib/notices/${notice#*/}.txt" ] || fail "a notice is missing: $notice"
done
echo "components and uninstalling: $(files all | wc -l) files"

# The static variant, with everything that it needs from the .pc file, alone and in a program without shared libraries.
export PKG_CONFIG_PATH=$PWD/all/lib/pkgconfig
read -ra flags <<<"$(pkg-config --static --cflags --libs ZvUtiLib)"
rm all/lib/libZvUtiLib.so
for option in -no-pie -static; do
  g++ -std=c++17 $option "$source/tests/client/main.cpp" -o "static$option" "${flags[@]}" 2>link.log ||
    { cat link.log >&2; fail "linking with $option and pkg-config --static failed"; }
  ! readelf -d "static$option" 2>/dev/null | grep -q 'NEEDED.*ZvUtiLib' || fail "static$option needs the shared library"
  "./static$option" >/dev/null || fail "the program linked with $option does not work"
done
echo "pkg-config --static: builds and runs"

# As a part of another project, built from a copy of the sources in another place: the same bytes, nothing installed.
mkdir copy-of-the-sources
tar -C "$source" --exclude=./build --exclude=./.git -cf - . | tar -xf - -C copy-of-the-sources
for how in add_subdirectory FetchContent; do
  cmake -S "$here/embedding" -B embedding -G Ninja -DCMAKE_BUILD_TYPE=Release -DHOW=$how \
    -DZVUTILIB_SOURCE="$PWD/copy-of-the-sources" >/dev/null
  cmake --build embedding >embedding.log || { cat embedding.log >&2; fail "building with $how failed"; }
  ./embedding/with_ZvUtiLib >/dev/null
  ./embedding/with_ZvUtiLib_static >/dev/null
  rm -rf embedded
  cmake --install embedding --prefix "$PWD/embedded" >/dev/null
  [ "$(files embedded)" = ./share/CMakeLists.txt ] || fail "embedded with $how, the library installs: $(files embedded)"
done
for library in libZvUtiLib.a "libZvUtiLib.so.$(pkg-config --modversion ZvUtiLib)"; do
  cmp "embedding/parts/zvutilib/$library" "$build/$library" || fail "two builds of $library differ"
done
# The companion is not built a second time. Its bytes may not name the build folder either.
! grep -qF "$source" "$build/tools/zvuti/zvuti" "$build"/libZvUtiLib.* || fail "a built file contains the path $source"
echo "add_subdirectory and FetchContent: build and run, install nothing, and give the bytes of the release build"
