#!/usr/bin/env bash
# full_disk.sh linux|windows PROGRAM: four processes of four threads each write to one log on a small disk of its
# own, which is filled up and freed in turns meanwhile. No line may be torn by another one or out of order, and
# none may be lost once there is room again. Call it in a mount namespace, in which the disk is mounted.
set -euo pipefail
source tools/run/wine.sh
system=$1 folder=$PWD/build/full-disk
mkdir -p "$folder"
mount -t tmpfs -o size=24m none "$folder"
cp "$2" "$folder/crowd.exe"

crowd() {
  if [ "$system" = windows ]; then
    in_wine_root "$folder" /bin/sh -c "crowd='/usr/lib/wine/wine crowd.exe'; $1" 2>/dev/null | tr -d '\r'
  else
    (cd "$folder" && crowd=./crowd.exe && eval "$1")
  fi
}

while :; do
  head -c 1G /dev/zero >"$folder/filler" 2>/dev/null || true
  sleep 0.2
  rm "$folder/filler"
  sleep 0.2
done &
filler=$!
crowd 'for name in A B C D; do $crowd log . $name 3000 & done; wait'
kill "$filler"
wait "$filler" 2>/dev/null || true
rm -f "$folder/filler"
crowd '$crowd log . E 500'
report=$(crowd '$crowd check . ABCDE 1') || { echo "$report" >&2; exit 1; }
[ "$(grep -c 'E[0-3]: 500 whole lines' <<<"$report")" -eq 4 ] || { echo "lines lost after the disk: $report" >&2; exit 1; }
written=$(awk '/whole lines/ && !/E[0-3]/ { n += $2 } END { print n }' <<<"$report")
[ "$written" -lt 48000 ] || { echo "the disk was never full" >&2; exit 1; }
echo "log ($system): 16 threads of 4 processes, $written of 48000 lines had room, $(grep -o '[0-9]* lines cut' <<<"$report")"
