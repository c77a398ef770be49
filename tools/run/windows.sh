# Builds the library for 32-bit Windows with the cross-compiler and tests it under Wine. Sourced by run.

windows_build=build/windows-i686
windows_toolchain=$PWD/cmake/windows-i686.cmake

need_windows_tools() {
  need_build_tools
  need g++-mingw-w64-i686-posix
  need_wine
}

# Installs the Windows build into $windows_build/installed, replacing what was there.
install_windows() {
  rm -rf "$windows_build/installed"
  cmake --install "$windows_build" --prefix "$PWD/$windows_build/installed" >/dev/null
}

check_version_record() {
  local record version
  version=$(library_version)
  record=$(i686-w64-mingw32-windres -J coff -i "$windows_build/ZvUtiLib.dll")
  while read -r line; do
    grep -qF "$line" <<<"$record" || fail "the version record of the DLL does not contain: $line"
  done <<TEXT
FILEVERSION ${version//./, }
PRODUCTVERSION ${version//./, }
VALUE "FileDescription", "ZvUtiLib DLL"
VALUE "ProductName", "ZvUtiLib Dynamic Link Library"
VALUE "InternalName", "ZvUtiLib"
TEXT
}

# Lines of the lobby program's report that depend on the machine.
machine_lines='^   (log |time now |list read, |list not available|([0-9A-F]{2}-){5}[0-9A-F]{2}$)'

compare_lobby_reports() {
  build_against "$PWD/build/linux-release/installed" examples/lobby build/lobby
  build_against "$PWD/$windows_build/installed" examples/lobby build/lobby-windows --toolchain "$windows_toolchain"
  # Both reports must be from the same day in the same time zone, because the value of an item changes at midnight.
  local day=
  until [ "$day" = "$(TZ=$wine_zone date +%F)" ]; do
    day=$(TZ=$wine_zone date +%F)
    TZ=$wine_zone build/lobby/app/lobby >build/lobby-linux.txt
    in_wine build/lobby-windows/app lobby.exe | tr -d '\r' >build/lobby-windows.txt
  done
  diff <(grep -vE "$machine_lines" build/lobby-linux.txt) <(grep -vE "$machine_lines" build/lobby-windows.txt) ||
    fail "the lobby program's report differs between Linux (lines with <) and Windows (lines with >)"
  echo "$(wc -l <build/lobby-windows.txt) lines, the same on both systems except for those about the machine"
}

# Differences belong in docs/migration.md, and their calls out of fuzz/answers.
compare_answers() {
  local answers=fuzz/answers/zvutilib_answers
  build/linux-release/$answers 3000 >build/answers-linux.txt
  in_wine "$windows_build/fuzz/answers" zvutilib_answers.exe 3000 | tr -d '\r' >build/answers-windows.txt
  diff build/answers-linux.txt build/answers-windows.txt ||
    fail "these thousands of random questions are answered differently on Linux (lines with <) and Windows (lines with >)"
  echo "$(wc -l <build/answers-windows.txt) thousand answers, the same on both systems"
}

windows() {
  need clang python3
  need_windows_tools
  build linux-release
  install_release
  build windows-i686
  install_windows
  say "Exported names and version record"
  tests/exports/check.py include build/linux-release/libZvUtiLib.so "$windows_build/ZvUtiLib.dll"
  check_version_record
  say "What a client may write, with all three compilers"
  tests/compile/check.py g++ clang++ i686-w64-mingw32-g++-posix
  say "A client of the installed package, under Wine"
  check_windows_client "$PWD/$windows_build/installed" build/client-windows
  say "zvuti.exe, under Wine"
  check_windows_zvuti "$PWD/$windows_build/installed/bin"
  say "Tests, under Wine"
  in_wine "$windows_build/tests" zvutilib_tests.exe --gtest_brief=1
  say "The kept inputs of the fuzz targets, under Wine"
  in_wine "$windows_build/fuzz" fuzz_replay.exe inputs
  say "Random questions, on both systems"
  compare_answers
  say "The lobby program, under Wine"
  compare_lobby_reports
}
