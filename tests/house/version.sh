#!/usr/bin/env bash
# version.sh BUILD: compares the version in include/ZvUtiLib/Version.h with what the build folder BUILD made of it and
# with the newest release in CHANGELOG.md.
set -euo pipefail
build=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
version=$(printf '#include <ZvUtiLib/Version.h>\nZVUTILIB_VERSION' | c++ -x c++ -std=c++17 -E -P -Iinclude - | tr -d '" \n')
[[ $version =~ ^[0-9]+(\.[0-9]+){3}$ ]] || { echo "version: Version.h says '$version'" >&2; exit 1; }

problems=0
# expect PLACE VERSION
expect() {
  [ "$2" = "$version" ] || { echo "version: $1 says '$2' where Version.h says '$version'" >&2; problems=1; }
}
expect CHANGELOG.md "$(sed -nE 's/^## ([0-9.]+)$/\1/p' CHANGELOG.md | head -1)"
expect "the project" "$(sed -n 's/^CMAKE_PROJECT_VERSION:[A-Z]*=//p' "$build/CMakeCache.txt")"
expect ZvUtiLib.pc "$(sed -n 's/^Version: //p' "$build/ZvUtiLib.pc")"
expect ZvUtiLibConfigVersion.cmake "$(sed -nE 's/^set\(PACKAGE_VERSION "(.*)"\)$/\1/p' "$build/ZvUtiLibConfigVersion.cmake")"
expect "the library's file name" "$(readlink -f "$build/libZvUtiLib.so" | sed 's/.*\.so\.//')"
[ ! -x "$build/tools/zvuti/zvuti" ] || expect "zvuti --version" "$("$build/tools/zvuti/zvuti" --version | sed 's/^zvuti //')"
again=$(grep -nF "${version//./,}" platform/ZvUtiLib.rc; grep -nF "$version" platform/ZvUtiLib.rc CMakeLists.txt cmake/* || true)
[ -z "$again" ] || { printf 'version: written again in\n%s\n' "$again" >&2; problems=1; }
exit $problems
