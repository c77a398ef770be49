#!/usr/bin/env bash
# Every promise in docs/reliability.md has a test, and every test that the page names is there.
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
[ -n "$named" ] || problem "no test is named"
for name in $named; do
  grep -qxF "$name" <<<"$tests" || problem "there is no test $name"
done
for name in $(grep -oE 'fuzz targets? (`\w+`(, )?)+' "$page" | grep -oE '`\w+`' | tr -d '`' | sort -u); do
  [ -f "fuzz/targets/$name.cpp" ] || problem "there is no fuzz target $name"
done
# The rows of the promises: the last column names a test.
while IFS= read -r row; do
  grep -qE '\| [^|]*`[A-Z]\w+\.[A-Z]\w+`[^|]*\|$' <<<"$row" || problem "no test holds us to: $row"
done < <(sed -n '/^## Promises/,/^## What the caller/p' "$page" | grep '^|' | grep -vE '^\|(-|\s*(Promise|Class) )')

[ "$problems" -eq 0 ] || exit 1
echo "promises: all held by tests"
