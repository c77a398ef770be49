#!/usr/bin/env bash
# check.sh PROGRAM PRINTERS: looks at the values of PROGRAM through the pretty-printers in a debugger.
set -euo pipefail
program=$1 printers=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
export LC_ALL=C.UTF-8

skip() { echo "printers: skipped, $*"; exit 77; }
debugger() { gdb -nx -q -batch "$@" 2>&1; }

command -v gdb >/dev/null || skip "gdb is not installed"
[ "$(debugger -ex 'python print(6 * 7)')" = 42 ] || skip "this gdb has no Python"
debugger -ex run /bin/true | grep -q 'exited normally' || skip "this machine lets no program be traced"

commands=()
while IFS=: read -r name _; do
  commands+=(-ex "printf \"$name: \"" -ex "output v.$name" -ex 'echo \n')
done <"$here/expected.txt"
debugger -ex "source $printers" -ex 'break Look' -ex run -ex up -ex 'echo \n=====\n' "${commands[@]}" "$program" |
  sed '1,/^=====$/d' | diff "$here/expected.txt" - || {
  echo "printers: not what tests/gdb/expected.txt has (lines with <)" >&2
  exit 1
}
echo "printers: $(wc -l <"$here/expected.txt") values shown as they should be"
