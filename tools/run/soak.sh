# Runs many threads under full load for a while, under each of two sanitizers, and many processes with one log on a
# full disk. Sourced by run.

soak() {
  local seconds=${1:-60} kind
  [[ $seconds =~ ^[1-9][0-9]{0,4}$ ]] || fail "'soak' takes a number of seconds for each of the two sanitizers"
  need_build_tools
  need_windows_tools
  for kind in tsan asan; do
    build "linux-$kind"
    say "All classes, on a heap that refuses at random ($kind), $seconds seconds"
    "build/linux-$kind/fuzz/answers/zvutilib_crowd" "$seconds"
  done
  build linux-release zvutilib_crowd
  build windows-i686 zvutilib_crowd
  say "One log of many processes, on a full disk"
  unshare --mount tools/run/full_disk.sh linux build/linux-release/fuzz/answers/zvutilib_crowd
  unshare --mount tools/run/full_disk.sh windows "$windows_build/fuzz/answers/zvutilib_crowd.exe"
}
