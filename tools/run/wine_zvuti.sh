#!/usr/bin/env bash
# Stands for zvuti in its tests: runs zvuti.exe under Wine. ZVUTI_WINE names the root and the program in it.
read -r root program <<<"$ZVUTI_WINE"
exec "$(dirname "${BASH_SOURCE[0]}")/wine_chroot.sh" "$root" /usr/lib/wine/wine "$program" "$@"
