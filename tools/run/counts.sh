# Instruction counts of key operations, which do not depend on how busy the machine is. Sourced by run.

counts_file=benchmarks/counts.txt

# The instructions of one operation. The C library is kept from choosing its copies by the processor.
count_instructions() {
  local out=build/linux-bench/counts.out
  rm -f "$out"
  GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX,-SSE4_2,-SSE4_1,-SSSE3,-BMI2,-ERMS,-FSRM,-MOVBE \
    valgrind --tool=callgrind --toggle-collect=Counted --callgrind-out-file="$out" \
    build/linux-bench/benchmarks/bench_counts "$1" 2>build/linux-bench/counts.log ||
    { cat build/linux-bench/counts.log >&2; fail "the operation '$1' could not be counted"; }
  awk '$1 == "summary:" || $1 == "totals:" { print $2; exit }' "$out"
}

counts() {
  [ $# -eq 0 ] || { [ $# -eq 1 ] && [ "$1" = --store ]; } || fail "'counts' takes --store or nothing; see ./run help"
  need_build_tools
  need valgrind libbenchmark-dev
  build linux-bench bench_counts
  say "Counting instructions"
  local name stored now grown=0
  rm -f "$counts_file.new"
  [ -s "$counts_file" ] || fail "$counts_file is missing"
  while read -r name stored; do
    now=$(count_instructions "$name")
    [ "${now:-0}" -gt 0 ] || fail "nothing was counted for '$name'"
    printf '%-20s %10d stored %10d now %+d%%\n' "$name" "$stored" "$now" $(((now - stored) * 100 / (stored > 0 ? stored : 1)))
    if [ "${1:-}" = --store ]; then
      echo "$name $now" >>"$counts_file.new"
    elif [ $((now * 10)) -gt $((stored * 11)) ]; then
      grown=$((grown + 1))
    elif [ $((now * 10)) -lt $((stored * 9)) ]; then
      echo "   it has become shorter by more than a tenth: please store the new count with ./run counts --store"
    fi
  done <"$counts_file"
  [ "${1:-}" != --store ] || mv "$counts_file.new" "$counts_file"
  [ "$grown" -eq 0 ] || fail "$grown operations take over a tenth more instructions than stored in $counts_file"
}
