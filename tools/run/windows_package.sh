# Makes the .zip files for Windows: the package and the self-test. Sourced by run.

# zip_folder FOLDER: makes FOLDER.zip and its checksum, with the date of the commit.
zip_folder() {
  tools/zip_folder.py "$1" "$(git log -1 --format=%ct 2>/dev/null || echo 946684800)"
  (cd "$(dirname "$1")" && sha256sum "$(basename "$1").zip" >"$1.zip.sha256")
}

# windows_package_name: the name of the folder in the .zip.
windows_package_name() { sed -n 's/^set(CPACK_PACKAGE_FILE_NAME "\(.*\)")$/\1/p' "$windows_build/CPackConfig.cmake"; }

# pack_windows FOLDER: makes the .zip of the package in FOLDER.
pack_windows() {
  local folder
  folder=$(cd "$1" && pwd)/$(windows_package_name)
  rm -rf "$folder"
  cmake --install "$windows_build" --prefix "$folder" >/dev/null
  zip_folder "$folder"
  rm -rf "$folder"
}

# pack_selftest FOLDER: makes the .zip in FOLDER with the tests as a program for a real Windows.
pack_selftest() {
  local folder
  folder=$(cd "$1" && pwd)/$(windows_package_name)-selftest
  rm -rf "$folder"
  mkdir -p "$folder"
  cp "$windows_build"/tests/{facts.exe,registrable.so} tests/selftest/run.bat "$folder"
  SOURCE_DATE_EPOCH=0 i686-w64-mingw32-strip -o "$folder/zvutilib_tests.exe" "$windows_build/tests/zvutilib_tests.exe"
  zip_folder "$folder"
  rm -rf "$folder"
}

# check_selftest FOLDER: runs the unpacked self-test under Wine, with a few tests, as ./run windows runs them all. Its
# report has to count the tests and the costs. Under Wine no process keeps the clipboard from another.
check_selftest() {
  in_wine "$1" cmd /c run.bat quiet CUtiXml*:CUtiNumber*:CDebug* >/dev/null 2>&1 || fail "the self-test fails under Wine: $(cat "$1/report.txt")"
  needs_lines "$1/report.txt" "what a report needs" '^Microsoft Windows' '^\[  PASSED  \] [0-9]+ tests' '^\[  SKIPPED \] [0-9]+ tests' \
    '^strlen of .* ns' '^clipboard +(free|held)' <"$1/report.txt"
  sed -n '1,/The output of the tests/p' "$1/report.txt" | grep -E ' ns|PASSED|SKIPPED|clipboard' | tr -d '\r'
}

# check_same_package: what was linked and packed twice has to be the same bytes.
check_same_package() {
  local first second
  first=$(cat "$packages/$(windows_package_name).zip.sha256")
  rm -rf "$windows_build/ZvUtiLib.dll" "$windows_build/tools/zvuti/zvuti.exe" build/again
  mkdir -p build/again
  cmake --build "$windows_build" --target ZvUtiLib zvuti >/dev/null
  pack_windows build/again
  second=$(cat build/again/*.sha256)
  [ "$first" = "$second" ] || fail "the .zip for Windows differs when its files are linked and packed again"
}

# check_windows_package PREFIX: everything that the unpacked package in PREFIX promises.
check_windows_package() {
  local file prefix=$1
  for file in README.md doc/CHANGELOG.md doc/migration.md doc/wire-format.md cmake/windows-i686.cmake bin/ZvUtiLib.dll.debug \
    doc/notices/{GPL-3,gcc-mingw-w64-base,mingw-w64-common,libcli11-dev,nlohmann-json3-dev}.txt; do
    [ -s "$prefix/$file" ] || fail "the package for Windows lacks $file"
  done
  check_hardened_dll "$prefix/bin/ZvUtiLib.dll"
  check_hardened_dll "$prefix/bin/zvuti.exe"
  check_windows_client "$prefix" build/client-zip
  check_windows_debugging "$PWD/build/client-zip"
  check_windows_example "$prefix"
}

# check_windows_example PREFIX: builds the example from the unpacked package alone, and runs it and zvuti.exe in an empty
# Wine prefix.
check_windows_example() {
  local prefix=$1
  say "The example and zvuti.exe of the .zip, in an empty Wine prefix"
  rm -rf build/example-zip "$wine_root/home/empty"
  cmake -S "$prefix/examples/lobby" -B build/example-zip -G Ninja -DCMAKE_BUILD_TYPE=Release \
    --toolchain "$prefix/cmake/windows-i686.cmake" >/dev/null
  cmake --build build/example-zip
  cp "$prefix/bin/zvuti.exe" build/example-zip/app
  # The registry is written when the server ends.
  WINEPREFIX=/home/empty in_wine_root build/example-zip/app \
    /bin/sh -c '/usr/lib/wine/wine wineboot --init && /usr/lib/wine/wineserver -w' >/dev/null 2>&1 ||
    fail "Wine makes no new prefix"
  WINEPREFIX=/home/empty in_wine build/example-zip/app lobby.exe >build/example-zip/lobby.txt
  grep -q . build/example-zip/lobby.txt || fail "the example of the package prints nothing"
  WINEPREFIX=/home/empty in_wine build/example-zip/app zvuti.exe check . --ignore hidden-word
  rm -rf "$wine_root/home/empty"
}
