# Makes the packages of both systems in build/packages and tries each one with a client. Sourced by run.

packages=build/packages

# pack BUILD GENERATOR...: packs the build folder BUILD with each generator.
pack() {
  local generator
  for generator in "${@:2}"; do
    cpack --config "$1/CPackConfig.cmake" -B "$packages" -G "$generator" >/dev/null
  done
}

# Prints the path of the only package whose name ends in $1.
package_of_kind() {
  local found=("$packages"/*"$1")
  [ -f "${found[0]}" ] && [ ${#found[@]} -eq 1 ] || fail "expected exactly one $1 package in $packages"
  echo "${found[0]}"
}

package() {
  need dpkg-dev file unzip debhelper lintian binutils python3 gdb-mingw-w64 gdb-mingw-w64-target
  need_windows_tools
  build linux-release zvutilib_installed
  build windows-i686
  rm -rf "$packages"
  mkdir -p "$packages"
  say "Packing"
  pack build/linux-release TGZ
  pack_windows "$packages"
  pack_selftest "$packages"
  rm -rf "$packages/_CPack_Packages"
  # A release is built with Debian's flags; otherwise what is built already is packed, which takes seconds.
  if [ -n "${ZVUTILIB_DEBIAN_FLAGS:-}" ]; then make_debian_packages; else make_debian_packages build/linux-release; fi
  ls -l "$packages"

  local unpacked=$PWD/build/unpacked
  rm -rf "$unpacked"
  mkdir -p "$unpacked"/{tar,zip}
  tar -xf "$(package_of_kind .tar.gz)" -C "$unpacked/tar" --strip-components=1
  unzip -q "$(package_of_kind i686.zip)" -d "$unpacked/zip"
  unzip -q "$(package_of_kind selftest.zip)" -d "$unpacked/selftest"
  say "Clients of the unpacked packages"
  tests/client/check.sh "$unpacked/tar" "$PWD/build/client-tar"
  "$unpacked/tar/bin/zvuti" records --names >/dev/null || fail "the zvuti in $unpacked/tar does not run"
  check_debian_packages
  say "CMake and pkg-config, as strangers use them"
  tests/package/cmake.sh build/linux-release build/package-cmake
  say "How hard the library and zvuti are to exploit"
  check_hardened_elf "$(find "$unpacked/tar/lib" -name 'libZvUtiLib.so.*.*')"
  check_hardened_elf "$unpacked/tar/bin/zvuti"
  say "The package for Windows"
  check_windows_package "$(echo "$unpacked"/zip/*)"
  check_same_package
  say "The self-test for a real Windows, under Wine"
  check_selftest "$(echo "$unpacked"/selftest/*)"
}
