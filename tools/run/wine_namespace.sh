#!/usr/bin/env bash
# wine_namespace.sh ROOT FOLDER COMMAND...: runs COMMAND, outside of ROOT, with FOLDER mounted as /app of ROOT.
# Must be started in its own mount and process namespaces; when it ends, the system ends all processes in them.
set -euo pipefail
trap 'exit 130' INT TERM HUP
mount --bind "$2" "$1/app"
mount -o bind,ro /sys "$1/sys"  # where Wine reads the number and speed of the processors
"${@:3}" &
wait $!
