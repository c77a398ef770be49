#!/usr/bin/env bash
# wine_namespace.sh ROOT FOLDER COMMAND...: runs COMMAND in ROOT with FOLDER as /app, in the time zone TZ. To be
# started in namespaces of its own for mounts and processes: it ends all processes there when it ends.
set -euo pipefail
trap 'exit 130' INT TERM HUP
mount --bind "$2" "$1/app"
chroot "$1" env -i --chdir=/app HOME=/home WINEPREFIX=/home/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= \
  LC_ALL=zh_CN.UTF-8 "TZ=$TZ" PATH=/usr/bin:/bin "${@:3}" &
wait $!
