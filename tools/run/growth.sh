# Growth of cost with the size of the input, for hostile shapes of each operation. Sourced by run.
#
# Memory and stack are measured in a plain run, instructions under callgrind, all shapes in one process each.

growth() {
  need_build_tools
  need valgrind libbenchmark-dev python3
  build linux-bench bench_growth
  local program=build/linux-bench/benchmarks/bench_growth out=build/linux-bench/growth
  rm -rf "$out"
  mkdir -p "$out"
  say "Measuring memory and stack"
  LD_BIND_NOW=1 "$program" >"$out/runs.txt"
  say "Counting instructions"
  timeout 1200 valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file="$out/dump" "$program" \
    >/dev/null 2>"$out/log.txt" || { tail -5 "$out/log.txt" >&2; fail "counting ended early, or after 20 minutes"; }
  python3 tools/bench/growth.py "$out/runs.txt" "$out/dump" docs/reliability.md
}
