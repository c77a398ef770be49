#!/usr/bin/env bash
# wine_debug.sh ROOT PORT PROGRAM FOLDER: runs PROGRAM, which is in /app of ROOT and in FOLDER of this machine, in a
# debugger until it stops, and prints where. Only in the namespaces of wine_namespace.sh.
set -euo pipefail
here=$(dirname "${BASH_SOURCE[0]}")
cp /usr/share/win32/gdbserver.exe "$4"
"$here/wine_chroot.sh" "$1" /usr/lib/wine/wine gdbserver.exe --once "127.0.0.1:$2" "$3" &
i686-w64-mingw32-gdb -nx -q -batch -ex 'set tcp connect-timeout 120' -ex 'set remotetimeout 120' -ex "set sysroot $4" -ex "set solib-search-path $4" \
  -ex "target remote 127.0.0.1:$2" -ex continue -ex 'backtrace 3' "$4/$3" 2>&1
