# Checks of what is built for Windows, under Wine. Sourced by run.

# check_windows_zvuti BIN: runs the transcripts of the documents with the zvuti.exe in BIN, and looks at a console.
check_windows_zvuti() {
  local program=${1#"$PWD/"}/zvuti.exe
  ZVUTI=$PWD/tools/run/wine_zvuti.sh ZVUTI_SOURCE=$PWD ZVUTI_WINE="$wine_root $program" \
    beside_wine_root "$PWD" python3 -B -m unittest discover -s tests/zvuti -p commands_test.py -k documents
  beside_wine_root "$1" tests/zvuti/windows_console.py tools/run/wine_chroot.sh "$wine_root" /usr/lib/wine/wine
}

# check_windows_client PREFIX BUILD: builds the client in BUILD with the package in PREFIX, and runs it.
check_windows_client() {
  rm -rf "$2"
  build_against "$1" tests/client "$2" --toolchain "$windows_toolchain"
  cp "$1"/bin/*.dll* "$2"
  local program
  for program in client accepted unload; do in_wine "$2" "$program.exe"; done
  local refusal
  refusal=$(build_against "$1" tests/client "$2-static" --toolchain "$windows_toolchain" \
    -DCMAKE_EXE_LINKER_FLAGS=-static-libgcc 2>&1) && fail "a client with a runtime library of its own is not refused"
  grep -q 'linked with -static-libgcc' <<<"$refusal" || fail "a client with a runtime library of its own fails otherwise: $refusal"
}

# check_windows_debugging CLIENT: lets the crash.exe of the client's build folder crash inside the DLL beside it. The
# debugger must name the line.
check_windows_debugging() {
  local shown
  shown=$(beside_wine_root "$1" tools/run/wine_debug.sh "$wine_root" 24681 crash.exe "$1")
  grep -E '^#[0-9]+ .*CUtiNumber::InsertSeparator .* at .*text/CUtiNumber\.cpp:[0-9]+' <<<"$shown" ||
    fail "the debugger does not name the line of a crash inside the DLL: $shown"
}
