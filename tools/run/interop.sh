# The exported formats beside zvuti, read by other people's programs. Sourced by run.

# The runtime for Python comes from Debian and must have the compiler's version.
kaitai_compiler=kaitai-struct-compiler@0.10.0

interop() {
  need_build_tools
  need tshark python3 python3-kaitaistruct python3-yaml
  command -v npm >/dev/null || need nodejs npm
  build linux-release zvutilib_installed
  install_release
  local prefix=$PWD/build/linux-release/installed work=$PWD/build/interop
  local formats=$prefix/share/ZvUtiLib
  rm -rf "$work"
  mkdir -p "$work"
  say "Compiling $(find "$formats/kaitai" -name '*.ksy' | wc -l) descriptions with $kaitai_compiler"
  npm install --silent --no-audit --no-fund --prefix build/npm "$kaitai_compiler"
  NODE_PATH=build/npm/node_modules node tools/run/interop/compile.js "$formats/kaitai" "$work"
  say "Wireshark and Kaitai beside zvuti"
  tools/run/interop/compare.py "$prefix/bin/zvuti" "$formats/wireshark/zvutilib.lua" "$work"
}
