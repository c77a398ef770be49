#!/usr/bin/env bash
# wine_namespace.sh ROOT FOLDER COMMAND...: runs COMMAND in ROOT with FOLDER mounted as /app, in the time zone TZ.
# Must be started in its own mount and process namespaces; when it ends, the system ends all processes in them.
set -euo pipefail
trap 'exit 130' INT TERM HUP
mount --bind "$2" "$1/app"
chroot "$1" env -i --chdir=/app HOME=/home WINEPREFIX=/home/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= \
  LC_ALL=zh_CN.UTF-8 "TZ=$TZ" PATH=/usr/bin:/bin "${@:3}" &
wait $!
