# Runs the fuzz targets and reports how much was tried and what broke. Sourced by run.
#
# Each target has a corpus in build/fuzz/corpus: the inputs that reach something new. Runs begin with those of
# fuzz/corpora and continue from each other. 'fuzz --store' reduces them and writes them to fuzz/corpora, from
# which the tests replay them.

fuzz_build=build/linux-fuzz/fuzz
fuzz_work=build/fuzz
fuzz_most_stored=2000000 # bytes, of all targets

# fuzz_target NAME SECONDS: runs one target for that long. Limits per input: 4,096 bytes, 25 seconds, 2 GB of
# memory. Short stacks of allocations and a small quarantine make it fast; for a long stack in a report run the
# program on the finding, without ASAN_OPTIONS.
fuzz_target() {
  local name=$1 log=$fuzz_work/logs/$1 options=() TIMEFORMAT='%U %S'
  [ -f "fuzz/dictionaries/$name.dict" ] && options+=("-dict=fuzz/dictionaries/$name.dict")
  [ -d "fuzz/seeds/$name" ] && options+=("fuzz/seeds/$name")
  [ -d "$fuzz_work/seeds/$name" ] && options+=("$fuzz_work/seeds/$name")
  { time ASAN_OPTIONS=malloc_context_size=3:quarantine_size_mb=32 "$fuzz_build/fuzz_$name" -max_total_time="$2" \
    -rss_limit_mb=2048 -timeout=25 -max_len=4096 -entropic=0 -print_final_stats=1 \
    -artifact_prefix="$fuzz_work/findings/$name-" "$fuzz_work/corpus/$name" "${options[@]}" >"$log" 2>&1 &&
    touch "$log.passed"; } 2>"$log.seconds" || true
  # All runs since build/fuzz was made, in sum.
  awk -v before="$(cat "$fuzz_work/executions/$name" 2>/dev/null)" '
    /^stat::number_of_executed_units:/ { runs = $2 } END { print before + runs }' "$log" >"$log.sum"
  mv "$log.sum" "$fuzz_work/executions/$name"
}

# Prints executions, executions for each second of processor time, executions since ever, and covered edges.
fuzz_figures() {
  awk -v sum="$(cat "$fuzz_work/executions/$1")" '
    FILENAME ~ /seconds$/ { seconds = $1 + $2; next }
    /^stat::number_of_executed_units:/ { runs = $2 }
    { for (i = 1; i < NF; ++i) if ($i == "cov:") edges = $(i + 1) }
    END { print runs + 0, int(runs / (seconds > 0 ? seconds : 1)), sum + 0, edges + 0 }' \
    "$fuzz_work/logs/$1.seconds" "$fuzz_work/logs/$1"
}

fuzz_targets() {
  local file
  for file in fuzz/targets/*.cpp; do basename "$file" .cpp; done
}

# Makes the folders below build/fuzz and puts the kept corpora there.
fuzz_prepare() {
  local name
  rm -rf "$fuzz_work"/{logs,seeds}
  mkdir -p "$fuzz_work"/{logs,findings,executions}
  "$fuzz_build/make_seeds" "$fuzz_work/seeds"
  for name in "$@"; do
    mkdir -p "$fuzz_work/corpus/$name"
    [ ! -f "fuzz/corpora/$name.tar.xz" ] || tar -xf "fuzz/corpora/$name.tar.xz" -C "$fuzz_work/corpus" --skip-old-files
  done
}

# Reduces the corpora to inputs that reach something that no smaller one reaches, and stores them.
fuzz_store() {
  local name all
  rm -rf "$fuzz_work/reduced"
  mkdir -p fuzz/corpora
  for name in "$@"; do
    mkdir -p "$fuzz_work/reduced/$name"
    "$fuzz_build/fuzz_$name" -merge=1 -rss_limit_mb=2048 "$fuzz_work/reduced/$name" "$fuzz_work/corpus/$name" \
      >"$fuzz_work/logs/$name" 2>&1 || fail "the corpus of $name cannot be reduced; see $fuzz_work/logs/$name"
    tar -cJf "fuzz/corpora/$name.tar.xz" -C "$fuzz_work/reduced" --sort=name --mtime=@0 --owner=0 --group=0 \
      --numeric-owner --mode=go=r,u=rw,a+X "$name"
    printf '%-12s %6d inputs %8d bytes stored\n' "$name" "$(find "$fuzz_work/reduced/$name" -type f | wc -l)" \
      "$(stat -c %s "fuzz/corpora/$name.tar.xz")"
  done
  all=$(cat fuzz/corpora/*.tar.xz | wc -c)
  [ "$all" -le "$fuzz_most_stored" ] || fail "the corpora have $all bytes, more than $fuzz_most_stored"
}

fuzz() {
  local seconds=${1:-120} jobs=2 targets known name runs speed sum edges found all_runs=0 all_found=0
  [[ $seconds =~ ^([1-9][0-9]{0,6}|--store)$ ]] ||
    fail "'fuzz' takes a number of seconds, shared by all targets, or --store; then the targets, if not all"
  known=$(fuzz_targets)
  mapfile -t targets <<<"$known"
  [ $# -le 1 ] || targets=("${@:2}")
  for name in "${targets[@]}"; do
    grep -qxF -- "$name" <<<"$known" || fail "there is no fuzz target '$name'; there are:" $known
  done
  need_build_tools
  need clang libclang-rt-14-dev xz-utils
  build linux-fuzz
  fuzz_prepare "${targets[@]}"
  if [ "$seconds" = --store ]; then
    fuzz_store "${targets[@]}"
    return
  fi

  local share=$((seconds * jobs / ${#targets[@]}))
  [ "$share" -gt 0 ] || share=1
  [ "$share" -le "$seconds" ] || share=$seconds
  say "${#targets[@]} targets, $jobs at a time, $share seconds each"
  export fuzz_build fuzz_work
  export -f fuzz_target
  printf '%s\n' "${targets[@]}" | xargs -P "$jobs" -I NAME bash -c 'fuzz_target NAME '"$share"

  printf '%-12s %12s %8s %14s %8s %8s\n' target executions 'a second' 'in all runs' edges findings
  for name in "${targets[@]}"; do
    read -r runs speed sum edges < <(fuzz_figures "$name")
    found=0
    [ -f "$fuzz_work/logs/$name.passed" ] || found=1
    printf '%-12s %12d %8d %14d %8d %8d\n' "$name" "$runs" "$speed" "$sum" "$edges" "$found"
    all_runs=$((all_runs + runs)) all_found=$((all_found + found))
  done
  printf '%-12s %12d %32s %8d\n' total "$all_runs" "" "$all_found"
  [ "$all_found" -eq 0 ] && return
  for name in "${targets[@]}"; do
    [ -f "$fuzz_work/logs/$name.passed" ] && continue
    printf '\n%s: ' "$name" >&2
    grep -hE '^fuzz: broken|^SUMMARY|runtime error|Test unit written to' "$fuzz_work/logs/$name" >&2 ||
      echo "see $fuzz_work/logs/$name" >&2
  done
  fail "the library failed on some inputs, which are kept in $fuzz_work/findings"
}
