# The benchmarks, and the tables that compare the library with its peers. Sourced by run.

need_bench_tools() {
  need_build_tools
  need libbenchmark-dev python3 libcereal-dev libmsgpack-cxx-dev protobuf-compiler libprotobuf-dev \
    libhyperscan-dev libfmt-dev libicu-dev libxml2-dev libpugixml-dev
}

# measure WHAT RESULTS COMMAND...: runs a benchmark. RESULTS is the path of its results as COMMAND sees it.
measure() {
  say "Measuring: $1"
  local log=build/bench.log
  # Interleaved, so that changes in the speed of the machine affect both sides of a ratio alike.
  "${@:3}" --benchmark_enable_random_interleaving=true --benchmark_min_time=0.02 --benchmark_out="$2" \
    --benchmark_out_format=json >/dev/null 2>"$log" || { cat "$log" >&2; fail "the benchmark '$1' failed"; }
}

bench() {
  local subjects=() option=() subject is_windows= results=build/linux-bench/results
  for subject in "$@"; do
    case "$subject" in
      records | words | text | xml) subjects+=("$subject") ;;
      windows) is_windows=1 ;;
      --markdown) option=(--markdown benchmarks/results.md) ;;
      *) fail "unknown benchmark '$subject'; see ./run help" ;;
    esac
  done
  [ ${#option[@]} -eq 0 ] || [ ${#subjects[@]} -eq 0 ] || fail "'bench --markdown' writes the whole table, so it takes no subject"
  [ ${#subjects[@]} -gt 0 ] || subjects=(records words text xml)
  need_bench_tools
  if [ -n "$is_windows" ]; then
    need_windows_tools
    need_windows_peers
  fi
  build linux-bench
  rm -rf "$results"
  mkdir -p "$results"
  if [ -n "$is_windows" ]; then
    bench_windows
    return
  fi
  for subject in "${subjects[@]}"; do
    measure "$subject" "$results/$subject.json" "build/linux-bench/benchmarks/bench_$subject" --benchmark_repetitions=25
  done
  tools/bench/table.py "${option[@]}" "$results"/*.json
}

# Part of bench, whose variables it uses. The systems take turns, so that a machine that slows down slows both.
bench_windows() {
  build windows-bench
  local windows=build/windows-bench/benchmarks round
  rm -rf "$windows/results"
  mkdir "$windows/results"
  for round in 1 2 3 4 5; do
    for subject in "${subjects[@]}"; do
      measure "$subject on Linux ($round of 5)" "$results/$round-$subject.json" \
        "build/linux-bench/benchmarks/bench_$subject" --benchmark_repetitions=5 --benchmark_filter='/library(/|$)'
      measure "$subject on Windows ($round of 5)" "results/$round-$subject.json" \
        in_wine "$windows" "bench_$subject.exe" --benchmark_repetitions=5 --benchmark_filter='/(library|cereal|msgpack|copy)(/|$)'
    done
  done
  tools/bench/table.py "${option[@]}" --windows "$windows"/results/*.json --linux "$results"/*.json
}

# Installs the peers that consist of headers, and Google Benchmark built for Windows, of which Debian has the source.
need_windows_peers() {
  local peers=$PWD/build/bench-peers-i686
  [ ! -d "$peers" ] || return 0
  say "Building Google Benchmark for Windows (only once)"
  local new=$peers.new source
  rm -rf "$new"
  mkdir -p "$new/lists/partial"
  source=$(debian_source) || fail "apt has no package source for this Debian release, from which the source would be loaded"
  echo "deb-src ${source#deb }" >"$new/sources.list"
  local options=(-qq -o "Dir::Etc::SourceList=$new/sources.list" -o Dir::Etc::SourceParts=/dev/null -o "Dir::State::Lists=$new/lists")
  { apt-get "${options[@]}" update && (cd "$new" && apt-get "${options[@]}" source --download-only benchmark) &&
    mkdir "$new/source" && tar -xf "$new"/benchmark_*.orig.tar.* --strip-components=1 -C "$new/source"; } >/dev/null ||
    fail "the source of Debian's package benchmark could not be loaded"
  { build_against "$new" "$new/source" "$new/build" --toolchain "$windows_toolchain" -DCMAKE_INSTALL_PREFIX="$new/installed" \
      -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_WERROR=OFF -DBENCHMARK_INSTALL_DOCS=OFF &&
      cmake --install "$new/build"; } >"$new/log" 2>&1 ||
    { cat "$new/log" >&2; fail "Google Benchmark could not be built for Windows"; }
  cp -r /usr/include/{cereal,msgpack,msgpack.hpp} "$new/installed/include"
  mv "$new/installed" "$peers"
  rm -rf "$new"
}
