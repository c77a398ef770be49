#!/usr/bin/env bash
# Checks that every promise in docs/reliability.md names a test and that every test named there exists.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
page=docs/reliability.md

problems=0
problem() {
  echo "$page: $*" >&2
  problems=$((problems + 1))
}

tests=$(grep -rhoE '^TEST(_F|_P)?\(\w+, *\w+\)' tests --include='*_test.cpp' | sed -E 's/^\w+\(//; s/, */./; s/\)$//')
named=$(grep -oE '`[A-Z]\w+\.[A-Z]\w+`' "$page" | tr -d '`' | sort -u)
[ -n "$named" ] || problem "the page names no tests"
for name in $named; do
  grep -qxF "$name" <<<"$tests" || problem "the test $name does not exist"
done
for name in $(grep -oE 'fuzz targets? (`\w+`(, )?)+' "$page" | grep -oE '`\w+`' | tr -d '`' | sort -u); do
  [ -f "fuzz/targets/$name.cpp" ] || problem "the fuzz target $name does not exist"
done
for name in $(grep -oE '`\./run \w+`' "$page" | grep -oE '\w+`' | tr -d '`' | sort -u); do
  grep -qE "^  $name( |\$)" run || problem "there is no ./run $name"
done
# In each row of the table of promises, the last column names a test or a command that tests.
while IFS= read -r row; do
  grep -qE '\| [^|]*`([A-Z]\w+\.[A-Z]\w+|\./run \w+)`[^|]*\|$' <<<"$row" || problem "this promise names no test: $row"
done < <(sed -n '/^## Promises/,/^## What the caller/p' "$page" | grep '^|' | grep -vE '^\|(-|\s*(Promise|Class) )')

[ "$problems" -eq 0 ] || exit 1
echo "promises: all have tests"
