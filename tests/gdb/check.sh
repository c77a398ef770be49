#!/usr/bin/env bash
# check.sh PROGRAM PRINTERS: runs PROGRAM in gdb with the pretty-printers in the file PRINTERS, prints the values, and
# compares them with expected.txt.
set -euo pipefail
program=$1 printers=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
export LC_ALL=C.UTF-8

skip() { echo "printers: skipped, $*"; exit 77; }
debugger() { gdb -nx -q -batch "$@" 2>&1; }

command -v gdb >/dev/null || skip "gdb is not installed"
[ "$(debugger -ex 'python print(6 * 7)')" = 42 ] || skip "this gdb has no Python"
debugger -ex run /bin/true | grep -q 'exited normally' || skip "this machine does not allow debugging"

commands=()
while IFS=: read -r name _; do
  commands+=(-ex "printf \"$name: \"" -ex "output v.$name" -ex 'echo \n')
done <"$here/expected.txt"
debugger -ex "source $printers" -ex 'break Look' -ex run -ex up -ex 'echo \n=====\n' "${commands[@]}" "$program" |
  sed '1,/^=====$/d' | diff "$here/expected.txt" - || {
  echo "printers: gdb's output (lines with >) differs from tests/gdb/expected.txt (lines with <)" >&2
  exit 1
}
echo "printers: $(wc -l <"$here/expected.txt") values are shown as expected"
