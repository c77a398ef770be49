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
in_rooms() { product | grep -E "^(include/ZvUtiLib/)?($1)/" || true; }
# Breaches of "room $1 may not include anything of $2": the include lines that name it.
may_not_include() {
  in_rooms "$1" | xargs -r grep -nE "^ *# *include +[<\"](ZvUtiLib/)?($2)" | report "$1 may not include $2" || true
}

product | grep -vE '^(platform/|include/ZvUtiLib/(platform/|Export\.h$))' |
  xargs grep -nE '\b(_WIN32|__MINGW32__|__linux__|__unix__)\b' | report 'Platform conditions outside the platform layer' || true
product | grep -v '^platform/' |
  xargs grep -nE '# *include *<(unistd|fcntl|pthread|dlfcn|net/|sys/|ifaddrs|expat)' | report 'System headers outside the platform layer' || true
printf '%s\n' "${sources[@]}" | xargs grep -nP '^(?:(?!//).)*[^\x00-\x7F]' | report 'GBK text is byte escapes; only comments may leave ASCII' || true
printf '%s\n' "${sources[@]}" | grep '\.h$' | xargs grep -L '^#pragma once' | report 'Headers without #pragma once' || true
product | xargs grep -nE '\b(v?f?printf|f?puts|putchar|perror|abort|_?exit|terminate) *\(|std::(cout|cerr|clog)|\bstd(out|err)\b' |
  grep -vE '^[^:]+:[0-9]+: *//' |
  report 'The library neither prints nor ends the process' || true

may_not_include platform '(core|text|gameconfig|turntable|xml|data|records)/|C(Uti|Debug|KxTime)|GameCatalogue'
may_not_include 'core|text|gameconfig|turntable|xml' '(data|records)/'
may_not_include data '(core|text|gameconfig|turntable|xml|records)/|C(Uti|Debug|KxTime)|GameCatalogue'
may_not_include records '(core|text|gameconfig|turntable|xml)/|C(Uti(IO|Base|Rank|Exp|Task|Xml|Thread|Mac|Turn|Number|Black)|Debug|KxTime)|GameCatalogue'

# The umbrella header names every public header.
git ls-files --cached --others --exclude-standard -- 'include/ZvUtiLib/**/*.h' 'include/ZvUtiLib/*.h' |
  sed 's|^include/||' | grep -v 'ZvUtiLib/ZvUtiLib.h' | while read -r header; do
  grep -qF "<$header>" include/ZvUtiLib/ZvUtiLib.h || echo "$header"
done | report 'Missing in ZvUtiLib.h' || true

[ "$breaches" -eq 0 ] || exit 1
echo "house rules: all kept"
