# Reads back from what was built the flags that make it harder to exploit. Sourced by run.

# needs_lines FILE WHAT PATTERN...: each pattern has to match a line of the standard input, which describes FILE.
needs_lines() {
  local described pattern
  described=$(cat)
  for pattern in "${@:3}"; do
    grep -qE "$pattern" <<<"$described" || fail "$1 is not built with $2: no '$pattern'"
  done
}

# check_hardened_elf FILE: a shared library or program of Linux.
check_hardened_elf() {
  readelf -lW "$1" | needs_lines "$1" "read-only relocations" '^ +GNU_RELRO'
  readelf -dW "$1" | needs_lines "$1" "immediate binding" '\(FLAGS(_1)?\).*NOW'
  readelf -hW "$1" | needs_lines "$1" "addresses chosen at load time" 'Type: +DYN'
  nm -D "$1" | needs_lines "$1" "the stack protector and checked functions" 'U __stack_chk_fail' 'U __[a-z]+_chk(@|$)'
}

# check_hardened_dll FILE: a DLL or program of Windows. Symbols are in FILE.debug, if that is there.
check_hardened_dll() {
  i686-w64-mingw32-objdump -p "$1" |
    needs_lines "$1" "address space randomisation, data execution prevention and NO_SEH, and without time stamp" \
      '^\s+DYNAMIC_BASE$' '^\s+NX_COMPAT$' '^\s+NO_SEH$' '^Time/Date\s+(Thu Jan  1 .*1970|0.*)$'
  [ ! -f "$1.debug" ] || i686-w64-mingw32-nm "$1.debug" |
    needs_lines "$1" "the stack protector and checked functions" ' ___stack_chk_fail$' ' ___[a-z]+_chk$'
}
