#!/usr/bin/env bash
# Checks the house rules that a script can check. Prints each violation and exits with 1 if there is one.
set -euo pipefail
shopt -s lastpipe  # runs report, the last command of each pipe, in this shell, where it counts violations
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
git rev-parse --git-dir >/dev/null 2>&1 || { echo "house rules: skipped, this is not a git checkout"; exit 77; }

violations=0
# Reports that a rule is violated, unless standard input is empty. $1 is the message; the input lists the places.
report() {
  local places
  places=$(cat)
  [ -z "$places" ] && return
  printf '%s:\n%s\n' "$1" "$places" | sed '2,$s/^/  /' >&2
  violations=$((violations + 1))
}

mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp')
product() { printf '%s\n' "${sources[@]}" | grep -vE '^(tests|benchmarks|fuzz|examples|tools)/'; }
product | grep -vE '^(platform/|include/ZvUtiLib/(platform/|Export\.h$))' |
  xargs grep -nE '\b(_WIN32|__MINGW32__|__linux__|__unix__)\b' | report 'Conditions on the host system outside the platform layer' || true
product | grep -v '^platform/' |
  xargs grep -nE '# *include *<(unistd|fcntl|pthread|dlfcn|net/|sys/|ifaddrs|expat)' | report 'Headers of the host system outside the platform layer' || true
printf '%s\n' "${sources[@]}" | xargs grep -nP '^(?:(?!//).)*[^\x00-\x7F]' | report 'Non-ASCII bytes outside comments; write GBK text as byte escapes' || true
printf '%s\n' "${sources[@]}" | grep '\.h$' | xargs grep -L '^#pragma once' | report 'Headers without #pragma once' || true
product | xargs grep -nE '\b(v?f?printf|f?puts|putchar|perror|abort|_?exit|terminate) *\(|std::(cout|cerr|clog)|\bstd(out|err)\b' |
  grep -vE '^[^:]+:[0-9]+: *//' |
  report 'The library must neither print nor end the process' || true

# The table in docs/architecture.md says which room may include which. A public header belongs to the room that has
# the source of the same name.
{
  sed -nE 's#^\| `([a-z/]+)/` \| ([^|]+) \|.*#room \1 \2#p' docs/architecture.md | sed 's#`##g; s#/,##g; s#/ *$##'
  product | sed -nE 's|^([a-z]+)/([A-Za-z]+)\.cpp$|home \2.h \1|p'
  product | grep -v '^include/ZvUtiLib/ZvUtiLib\.h$' |
    xargs grep -nE '^ *# *include +("|<ZvUtiLib/)' | sed -E 's/^([^:]+):([0-9]+):[^<"]*[<"]([^>"]+).*/include \1 \2 \3/'
} | awk '
  # A room within a room, such as platform/xml/, is a room of its own.
  function room(path, parts, count) {
    sub(/^include\//, "", path)
    sub(/^ZvUtiLib\//, "", path)
    count = split(path, parts, "/")
    if (count > 2 && isRoom[parts[1] "/" parts[2]]) return parts[1] "/" parts[2]
    return count > 1 ? parts[1] : home[path]
  }
  $1 == "room" { isRoom[$2] = 1; for (i = 3; i <= NF; ++i) if ($i != "nothing") allowed[$2, $i] = 1 }
  $1 == "home" { home[$2] = $3 }
  $1 == "include" && $4 != "ZvUtiLib/Export.h" {
    from = room($2)
    to = room($4)
    if (!isRoom[from]) print $2 ": not in a room of docs/architecture.md"
    else if (!isRoom[to]) print $2 ":" $3 ": " $4 " is not in a room of docs/architecture.md"
    else if (from != to && !((from, to) in allowed)) print $2 ":" $3 ": " from " may not include " to
    used[from, to] = 1
  }
  END {
    for (edge in allowed) {
      split(edge, rooms, SUBSEP)
      if (!(edge in used)) print "docs/architecture.md: " rooms[1] " may include " rooms[2] ", but never does"
    }
  }' | sort | report 'Includes that differ from the table in docs/architecture.md' || true

# ZvUtiLib.h must include every public header.
git ls-files --cached --others --exclude-standard -- 'include/ZvUtiLib/**/*.h' 'include/ZvUtiLib/*.h' |
  sed 's|^include/||' | grep -v 'ZvUtiLib/ZvUtiLib.h' | while read -r header; do
  grep -qF "<$header>" include/ZvUtiLib/ZvUtiLib.h || echo "$header"
done | report 'Public headers that ZvUtiLib.h does not include' || true

[ "$violations" -eq 0 ] || exit 1
echo "house rules: no violations"
