# Instruction counts of key operations. They do not depend on the load of the machine. Sourced by run.
#
# A name is OPERATION/SIZE. An operation counted at several sizes may take at most 1.3 times as many instructions
# per unit of its largest size as of its smallest: at these sizes n log n stays below that, and n * n does not.
#
# OPERATION-m32 is the operation in a 32-bit build, whose registers and code are like those on the players' Windows.
# It is linked statically, because valgrind needs symbols of the dynamic linker that Debian's libc6-i386 does not have.

counts_file=benchmarks/counts.txt

# Prints the number of instructions of the operation $1. GLIBC_TUNABLES keeps the C library from selecting
# different memory and string functions on different processors.
count_instructions() {
  local out=build/linux-bench/counts.out program=build/linux-bench/benchmarks/bench_counts
  [[ $1 != *-m32/* ]] || program=build/linux-m32/benchmarks/bench_counts
  rm -f "$out"
  GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX,-SSE4_2,-SSE4_1,-SSSE3,-BMI2,-ERMS,-FSRM,-MOVBE \
    valgrind --tool=callgrind --toggle-collect=Counted --callgrind-out-file="$out" \
    "$program" "${1/-m32\//\/}" 2>build/linux-bench/counts.log ||
    { cat build/linux-bench/counts.log >&2; fail "counting the instructions of '$1' failed"; }
  awk '$1 == "summary:" || $1 == "totals:" { print $2; exit }' "$out"
}

counts() {
  [ $# -eq 0 ] || { [ $# -eq 1 ] && [ "$1" = --store ]; } || fail "'counts' takes no argument but --store; see ./run help"
  need_build_tools
  need valgrind libbenchmark-dev g++-multilib
  build linux-bench bench_counts
  build linux-m32
  say "Counting instructions"
  local name stored now grown=0 counted="" steep
  rm -f "$counts_file.new"
  [ -s "$counts_file" ] || fail "$counts_file is missing"
  while read -r name stored; do
    now=$(count_instructions "$name")
    [ "${now:-0}" -gt 0 ] || fail "no instructions were counted for '$name'"
    counted+="${name/\// } $now"$'\n'
    printf '%-28s %10d recorded %10d now %+d%%\n' "$name" "$stored" "$now" $(((now - stored) * 100 / (stored > 0 ? stored : 1)))
    if [ "${1:-}" = --store ]; then
      echo "$name $now" >>"$counts_file.new"
    elif [ $((now * 10)) -gt $((stored * 11)) ]; then
      grown=$((grown + 1))
    elif [ $((now * 10)) -lt $((stored * 9)) ]; then
      echo "   over a tenth fewer instructions than recorded: please record the new count with ./run counts --store"
    fi
  done <"$counts_file"
  steep=$(awk 'NF == 3 && (!($1 in least) || $2 < least[$1]) { least[$1] = $2; fewest[$1] = $3 }
    NF == 3 && $2 > most[$1] { most[$1] = $2; all[$1] = $3 }
    END { for (o in all) if (all[o] / most[o] > 1.3 * fewest[o] / least[o]) print o }' <<<"$counted")
  [ -z "$steep" ] || fail "instructions grow faster than the size of the input: ${steep//$'\n'/, }"
  [ "${1:-}" != --store ] || mv "$counts_file.new" "$counts_file"
  [ "$grown" -eq 0 ] || fail "$grown operations take over a tenth more instructions than $counts_file says"
}
