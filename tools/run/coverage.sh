# Which branches of the library the tests take. Sourced by run.
#
# Measured by clang, which counts the conditions that stand in the sources; the branches that gcov counts
# are those of the machine code, the hidden ones of exceptions among them.

least_coverage=97

coverage() {
  local build=build/linux-coverage profiles=build/coverage
  need_build_tools
  need clang libclang-rt-14-dev llvm-14 python3
  build linux-coverage zvutilib_tests
  say "Tests"
  rm -rf "$profiles"
  mkdir -p "$profiles"
  # A child process of a test has a profile of its own.
  LLVM_PROFILE_FILE="$PWD/$profiles/%p.profraw" "$build/tests/zvutilib_tests" --gtest_brief=1
  llvm-profdata-14 merge --sparse -o "$profiles/tests.profdata" "$profiles"/*.profraw
  say "Branches that no test takes"
  llvm-cov-14 export --instr-profile="$profiles/tests.profdata" "$build/tests/zvutilib_tests" |
    tools/branch_coverage.py "$PWD" "$least_coverage" tests/uncovered_branches.txt
}
