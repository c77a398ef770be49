# The binary interface of the library beside that of a release. Sourced by run.

abi_release=tests/exports/release-1.0.0.1.txt

abi() {
  [ $# -eq 0 ] || { [ $# -eq 1 ] && [ "$1" = --store ]; } || fail "'abi' takes no argument but --store; see ./run help"
  need_build_tools
  need abigail-tools python3
  build linux-abi ZvUtiLib
  say "Comparing with $abi_release"
  tests/exports/abi.py build/linux-abi/libZvUtiLib.so include "$abi_release" "$@"
}
