#!/usr/bin/env bash
# wine_chroot.sh ROOT COMMAND...: runs COMMAND in ROOT, in the folder /app and the time zone TZ, with Wine's settings.
# Only in the namespaces of wine_namespace.sh.
exec chroot "$1" env -i --chdir=/app HOME=/home WINEPREFIX="${WINEPREFIX:-/home/wine}" WINEDEBUG=-all \
  WINEDLLOVERRIDES=mscoree,mshtml= LC_ALL=zh_CN.UTF-8 "TZ=$TZ" PATH=/usr/bin:/bin "${@:2}"
