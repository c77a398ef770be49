# Runs the fuzz targets and reports how much was tried and what broke. Sourced by run.

fuzz_build=build/linux-fuzz/fuzz
fuzz_work=build/fuzz

# fuzz_target NAME SECONDS: runs one target for that long. Inputs that reach new code are kept in the corpus,
# from which the next run continues. Limits per input: 4,096 bytes, 25 seconds, 2 GB of memory.
fuzz_target() {
  local name=$1 corpus=$fuzz_work/corpus/$1 options=()
  mkdir -p "$corpus"
  [ -f "fuzz/dictionaries/$name.dict" ] && options+=("-dict=fuzz/dictionaries/$name.dict")
  [ -d "fuzz/seeds/$name" ] && options+=("fuzz/seeds/$name")
  [ -d "$fuzz_work/seeds/$name" ] && options+=("$fuzz_work/seeds/$name")
  "$fuzz_build/fuzz_$name" -max_total_time="$2" -rss_limit_mb=2048 -timeout=25 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="$fuzz_work/findings/$name-" "$corpus" "${options[@]}" \
    >"$fuzz_work/logs/$name" 2>&1 && touch "$fuzz_work/logs/$name.passed"
}

# Prints the number of executions and of covered edges from the log of the target $1.
fuzz_figures() {
  awk '/^stat::number_of_executed_units:/ { runs = $2 }
       { for (i = 1; i < NF; ++i) if ($i == "cov:") edges = $(i + 1) }
       END { print runs + 0, edges + 0 }' "$fuzz_work/logs/$1"
}

fuzz() {
  local seconds=${1:-120} jobs=2 targets=() name runs edges found all_runs=0 all_found=0
  [[ $seconds =~ ^[1-9][0-9]{0,6}$ ]] || fail "'fuzz' takes a number of seconds, shared by all targets"
  need_build_tools
  need clang libclang-rt-14-dev
  build linux-fuzz
  rm -rf "$fuzz_work"/{logs,seeds}
  mkdir -p "$fuzz_work"/{logs,findings}
  "$fuzz_build/make_seeds" "$fuzz_work/seeds"

  for name in fuzz/targets/*.cpp; do targets+=("$(basename "$name" .cpp)"); done
  local share=$((seconds * jobs / ${#targets[@]}))
  [ "$share" -gt 0 ] || share=1
  say "${#targets[@]} targets, $jobs at a time, $share seconds each"
  export fuzz_build fuzz_work
  export -f fuzz_target
  printf '%s\n' "${targets[@]}" | xargs -P "$jobs" -I NAME bash -c 'fuzz_target NAME '"$share"' || true'

  printf '%-12s %14s %10s %10s\n' target executions edges findings
  for name in "${targets[@]}"; do
    read -r runs edges < <(fuzz_figures "$name")
    found=0
    [ -f "$fuzz_work/logs/$name.passed" ] || found=1
    printf '%-12s %14d %10d %10d\n' "$name" "$runs" "$edges" "$found"
    all_runs=$((all_runs + runs)) all_found=$((all_found + found))
  done
  printf '%-12s %14d %10s %10d\n' total "$all_runs" "" "$all_found"
  [ "$all_found" -eq 0 ] && return
  for name in "${targets[@]}"; do
    [ -f "$fuzz_work/logs/$name.passed" ] && continue
    printf '\n%s: ' "$name" >&2
    grep -hE '^fuzz: broken|^SUMMARY|runtime error|Test unit written to' "$fuzz_work/logs/$name" >&2 ||
      echo "see $fuzz_work/logs/$name" >&2
  done
  fail "the library failed on some inputs, which are kept in $fuzz_work/findings"
}
