# Runs many threads under full load for a while, under each of two sanitizers. Sourced by run.

soak() {
  local seconds=${1:-60} kind
  [[ $seconds =~ ^[1-9][0-9]{0,4}$ ]] || fail "'soak' takes a number of seconds for each of the two sanitizers"
  need_build_tools
  for kind in tsan asan; do
    build "linux-$kind" zvutilib_tests
    say "Soak ($kind), $seconds seconds"
    # ASan keeps freed blocks in a quarantine. A small one, so that the process visibly shrinks when memory is
    # freed.
    ASAN_OPTIONS=quarantine_size_mb=16 ZVUTILIB_SOAK_SECONDS=$seconds \
      "build/linux-$kind/tests/zvutilib_tests" --gtest_brief=1 --gtest_filter='Soak.*'
  done
}
