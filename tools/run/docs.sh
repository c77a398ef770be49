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

# Ends with an error where something public has no comment, or a link leads nowhere.
make_interface_pages() {
  say "build/docs/html"
  local pages
  pages=$(ls -- *.md; find docs -name '*.md' | sort)
  mkdir -p build/docs
  rm -rf build/docs/html
  # A filter that fails leaves its header out, and says so, but is no failure to Doxygen.
  { cat tools/docs/Doxyfile; echo "INPUT +=" $pages; } | doxygen - 2>build/docs/problems && [ ! -s build/docs/problems ] ||
    { cat build/docs/problems >&2; fail "the pages are not whole"; }
  echo "$(find build/docs/html -name '*.html' | wc -l) pages; begin with build/docs/html/index.html"
}

docs() {
  need_build_tools
  need doxygen python3
  refresh_wire_format
  make_interface_pages
}
