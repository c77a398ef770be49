# Reports which branches of the library the tests take. Sourced by run.
#
# It uses clang, which counts the conditions in the sources. gcov counts branches of the machine code, including
# the hidden ones for exceptions.

minimum_coverage=97

coverage() {
  local build=build/linux-coverage profiles=build/coverage
  need_build_tools
  need clang libclang-rt-14-dev llvm-14 python3
  build linux-coverage zvutilib_tests
  say "Tests"
  rm -rf "$profiles"
  mkdir -p "$profiles"
  # %p is the process id: child processes of tests write their own profiles.
  LLVM_PROFILE_FILE="$PWD/$profiles/%p.profraw" "$build/tests/zvutilib_tests" --gtest_brief=1
  llvm-profdata-14 merge --sparse -o "$profiles/tests.profdata" "$profiles"/*.profraw
  say "Branches not taken by any test"
  llvm-cov-14 export --instr-profile="$profiles/tests.profdata" "$build/tests/zvutilib_tests" |
    tools/branch_coverage.py "$PWD" "$minimum_coverage" tests/uncovered_branches.txt
}
