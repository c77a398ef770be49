# The benchmarks, and the table that compares the library with its peers. Sourced by run.

need_bench_tools() {
  need_build_tools
  need libbenchmark-dev python3 libcereal-dev libmsgpack-cxx-dev protobuf-compiler libprotobuf-dev \
    libhyperscan-dev libfmt-dev libicu-dev libxml2-dev libpugixml-dev
}

bench() {
  local subjects=() option=() subject results=build/linux-bench/results
  for subject in "$@"; do
    case "$subject" in
      records | words | text | xml) subjects+=("$subject") ;;
      --markdown) option=(--markdown benchmarks/results.md) ;;
      *) fail "unknown benchmark '$subject'; see ./run help" ;;
    esac
  done
  [ ${#option[@]} -eq 0 ] || [ ${#subjects[@]} -eq 0 ] || fail "'bench --markdown' writes the whole table, so it takes no subject"
  [ ${#subjects[@]} -gt 0 ] || subjects=(records words text xml)
  need_bench_tools
  build linux-bench
  rm -rf "$results"
  mkdir -p "$results"
  for subject in "${subjects[@]}"; do
    say "Measuring: $subject"
    # Interleaved, so that changes in the speed of the machine affect both sides of a ratio alike.
    "build/linux-bench/benchmarks/bench_$subject" --benchmark_repetitions=25 \
      --benchmark_enable_random_interleaving=true --benchmark_min_time=0.02 \
      --benchmark_out="$results/$subject.json" --benchmark_out_format=json \
      >/dev/null 2>"$results/$subject.log" || { cat "$results/$subject.log" >&2; fail "the benchmark '$subject' failed"; }
  done
  tools/bench/table.py "${option[@]}" "$results"/*.json
}
