# The documents that are made of the code. Sourced by run.

refresh_wire_format() {
  say "docs/wire-format.md"
  build linux-release zvutilib_wire_format
  build/linux-release/tools/docs/zvutilib_wire_format tools/docs/wire-format.in.md >build/wire-format.md
  if cmp -s build/wire-format.md docs/wire-format.md; then
    echo "up to date"
  else
    cp build/wire-format.md docs/wire-format.md
    echo "made anew"
  fi
}

docs() {
  need_build_tools
  refresh_wire_format
}
