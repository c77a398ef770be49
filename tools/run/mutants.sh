# Puts small faults into the library and lists those that no test catches. Sourced by run.

mutants() {
  need_checkout
  need_build_tools
  need clang libclang-rt-14-dev lld llvm-14 python3
  tools/mutants.py "$@"
}
