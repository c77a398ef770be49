# The documents that are generated from the code. Sourced by run.

refresh_wire_format() {
  say "docs/wire-format.md"
  build linux-release zvutilib_wire_format
  build/linux-release/tools/docs/zvutilib_wire_format tools/docs/wire-format.in.md >build/wire-format.md
  if cmp -s build/wire-format.md docs/wire-format.md; then
    echo "up to date"
  else
    cp build/wire-format.md docs/wire-format.md
    echo "rewritten"
  fi
}

# Fails if a public declaration has no comment or a link has no target.
make_interface_pages() {
  say "build/docs/html"
  local pages
  pages=$(ls -- *.md; find docs benchmarks -name '*.md' | sort)
  mkdir -p build/docs
  rm -rf build/docs/html
  tools/docs/layout.py $pages >build/docs/layout.xml
  # Doxygen does not fail when its filter does; it only reports that and leaves the header out. So fail on any
  # message.
  { cat tools/docs/Doxyfile; echo "INPUT +=" $pages; } | doxygen - 2>build/docs/problems && [ ! -s build/docs/problems ] ||
    { cat build/docs/problems >&2; fail "the interface pages are incomplete"; }
  local broken
  broken=$(grep -rlE '(href|src)="file:' build/docs/html || true)
  [ -z "$broken" ] || fail "these pages link to files of this machine: $broken"
  broken=$(find build/docs/html -maxdepth 1 -name 'class*.html' ! -name '*-members.html' -exec grep -LE '<dt>Threads</dt>' {} +)
  [ -z "$broken" ] || fail "these pages lack the thread rules of their class: $broken"
  broken=$(grep -ohE '<img src="[^":]+"' -r build/docs/html | sed 's/.*="//; s/"//' | sort -u | while read -r picture; do
    [ -f "build/docs/html/$picture" ] || echo "$picture"; done)
  [ -z "$broken" ] || fail "these pictures are missing: $broken"
  echo "$(find build/docs/html -name '*.html' | wc -l) pages; start at build/docs/html/index.html"
}

docs() {
  need_build_tools
  need doxygen python3
  refresh_wire_format
  make_interface_pages
}
