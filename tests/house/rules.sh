#!/usr/bin/env bash
# The rules of the house that a machine can check. Prints each breach and ends with 1 where there is one.
set -euo pipefail
shopt -s lastpipe  # report, at the end of its pipes, counts in this shell
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
git rev-parse --git-dir >/dev/null 2>&1 || { echo "house rules: no git checkout, nothing to look at"; exit 77; }

breaches=0
# $1 says what is wrong; standard input has the places, none when all is well.
report() {
  local places
  places=$(cat)
  [ -z "$places" ] && return
  printf '%s:\n%s\n' "$1" "$places" | sed '2,$s/^/  /' >&2
  breaches=$((breaches + 1))
}

mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp')
product() { printf '%s\n' "${sources[@]}" | grep -vE '^(tests|benchmarks|fuzz|examples|tools)/'; }
product | grep -vE '^(platform/|include/ZvUtiLib/(platform/|Export\.h$))' |
  xargs grep -nE '\b(_WIN32|__MINGW32__|__linux__|__unix__)\b' | report 'Platform conditions outside the platform layer' || true
product | grep -v '^platform/' |
  xargs grep -nE '# *include *<(unistd|fcntl|pthread|dlfcn|net/|sys/|ifaddrs|expat)' | report 'System headers outside the platform layer' || true
printf '%s\n' "${sources[@]}" | xargs grep -nP '^(?:(?!//).)*[^\x00-\x7F]' | report 'GBK text is byte escapes; only comments may leave ASCII' || true
printf '%s\n' "${sources[@]}" | grep '\.h$' | xargs grep -L '^#pragma once' | report 'Headers without #pragma once' || true
product | xargs grep -nE '\b(v?f?printf|f?puts|putchar|perror|abort|_?exit|terminate) *\(|std::(cout|cerr|clog)|\bstd(out|err)\b' |
  grep -vE '^[^:]+:[0-9]+: *//' |
  report 'The library neither prints nor ends the process' || true

# The table in docs/architecture.md says which room may include which. A public header belongs to the room of
# the source of its name.
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
    if (!isRoom[from]) print $2 ": no room of docs/architecture.md"
    else if (!isRoom[to]) print $2 ":" $3 ": " $4 " is in no room of docs/architecture.md"
    else if (from != to && !((from, to) in allowed)) print $2 ":" $3 ": " from " may not include " to
    used[from, to] = 1
  }
  END {
    for (edge in allowed) {
      split(edge, rooms, SUBSEP)
      if (!(edge in used)) print "docs/architecture.md: " rooms[1] " may include " rooms[2] ", but nothing there does"
    }
  }' | sort | report 'Includes that docs/architecture.md does not show' || true

# The umbrella header names every public header.
git ls-files --cached --others --exclude-standard -- 'include/ZvUtiLib/**/*.h' 'include/ZvUtiLib/*.h' |
  sed 's|^include/||' | grep -v 'ZvUtiLib/ZvUtiLib.h' | while read -r header; do
  grep -qF "<$header>" include/ZvUtiLib/ZvUtiLib.h || echo "$header"
done | report 'Missing in ZvUtiLib.h' || true

[ "$breaches" -eq 0 ] || exit 1
echo "house rules: all kept"
