#!/usr/bin/env bash
# Runs the shell examples of docs/guide/7-batch.md, block by block, on the demonstration.
# usage: test_batch.sh SORVANE DOCUMENT
set -euo pipefail
fail() { echo "test_batch: $*" >&2; exit 1; }

PATH=$(realpath "$(dirname "$1")"):$PATH
document=$(realpath "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset DISPLAY WAYLAND_DISPLAY

# Block number $1 of the document.
block() { awk -v wanted="$1" '/^```sh$/ { inside = ++n == wanted; next } /^```$/ { inside = 0 } inside' "$document"; }

sorvane demo "$folder/demo"
export PELSAR_DATA="$folder/demo/data/"
cd "$folder/demo"
engagements=(ETXYZ.OUT.*)

echo nonsense >ETXYZ.OUT.broken
status=0
sh -c "$(block 1)" 2>"$folder/messages" || status=$?
[ "$status" -eq 123 ] || fail "the broken engagement went unnoticed: $status"
grep -qx 'sorvane render: ETXYZ.OUT.broken: holds no samples' "$folder/messages" || fail "$(cat "$folder/messages")"
for engagement in "${engagements[@]}"; do
    [ -s "movies/$engagement.avi" ] || fail "no movie of $engagement"
done
[ "$(find movies -type f | wc -l)" -eq "${#engagements[@]}" ] || fail "$(ls -A movies)"
[ "$(sh -c "$(block 2)")" = ETXYZ.OUT.broken ] || fail "the list of what is to be done is wrong"

rm ETXYZ.OUT.broken
SLURM_ARRAY_TASK_ID=1 sh -c "$(block 3)"
picture="pictures/${engagements[1]}.png"
cp "$picture" "$folder/first.png"
rm "$picture"
(cd / && env -u PELSAR_DATA sh "$folder/demo/pictures/${engagements[1]}.command")
cmp "$picture" "$folder/first.png" || fail "the command made another picture"
