#!/usr/bin/env bash
# check.sh PREFIX BUILD: builds and runs the client with the package installed in PREFIX, once with CMake and once
# with pkg-config; then checks the exported symbols of the library.
set -euo pipefail
prefix=$1 build=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

rm -rf "$build"
cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$build" >/dev/null
for program in client client_static accepted; do
  [ ! -x "$build/$program" ] || "$build/$program"
done

pc=$(dirname "$(find "$prefix" -name ZvUtiLib.pc)")
read -ra flags <<<"$(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs ZvUtiLib)"
g++ -std=c++17 "$here"/main.cpp -o "$build/client_pc" "${flags[@]}" -Wl,-rpath,"$pc/.."
"$build/client_pc"
if command -v clang++ >/dev/null; then
  clang++ -std=c++17 "$here"/../compile/accepted.cpp -o "$build/accepted_clang" "${flags[@]}" -Wl,-rpath,"$pc/.."
  "$build/accepted_clang"
else
  echo "check: clang++ is not installed, left out"
fi

# The library may export only what its headers declare: the first identifier of each symbol must occur in a header.
library=$(find "$prefix" -name libZvUtiLib.so)
hidden=$(nm -DC --defined-only "$library" | sed -E 's/^[0-9a-f]+ . //; s/^(vtable|VTT|typeinfo|typeinfo name|guard variable) for //' |
  grep -v '^std::' | sed -E 's/^zvuti:://; s/[^A-Za-z0-9_].*//' | sort -u |
  while read -r name; do grep -rqw "$name" "$prefix/include" || echo "$name"; done)
[ -z "$hidden" ] || { echo "check: exported, but in no header:" $hidden >&2; exit 1; }
