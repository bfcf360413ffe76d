#!/usr/bin/env bash
# Runs the real program on a file and without one, closes it with the keyboard's Ctrl+C through the X server, and checks
# its exit status. usage: viewer_process_test.sh PROGRAM
set -euo pipefail
program=$1
# At its end the process has unloaded drivers that keep allocations, and a leak checker can't tell whose those were.
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
printf 'a\nb\nc\n1 2 3\n1 2 3\nd\ne\nf\nwhite\n1\nx\n1.5\n0 0 0 0 -100 0 0 0\n0 0 -50 0 0 0\n0 0 0 0 0\n' >"$folder/ETXYZ.OUT.1"

run_and_close() {
    # Where nothing is installed.
    XDG_DATA_DIRS=/nonexistent "$program" "$@" 2>"$folder/messages" &
    local viewer=$! status=0 window
    window=$(timeout 20 xdotool search --sync --onlyvisible --pid "$viewer" --name '^new_sorvane$' | tail -n 1)
    [ "$(xprop -id "$window" -len 1000000 _NET_WM_ICON | grep -cE 'Icon \((16|32|48|256) x (16|32|48|256)\)')" -eq 4 ] ||
        { echo "the window lacks icons"; return 1; }
    xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+c
    wait "$viewer" || status=$?
    if [ "$status" -ne 0 ]; then
        cat "$folder/messages"
        echo "exit status $status with arguments: $*"
        return 1
    fi
}

# Options that print and end, and a machine without a display.
grep -qx 'new_sorvane [0-9.]*' <<<"$("$program" --version)"
grep -q '^Usage: new_sorvane ' <<<"$("$program" "$folder/missing" --help)"
for place in "" ":99999"; do
    status=0
    env -u WAYLAND_DISPLAY DISPLAY="$place" "$program" 2>"$folder/messages" || status=$?
    if [ "$status" -ne 1 ] || [ "$(grep -c '' "$folder/messages")" -ne 1 ] || ! grep -q '"sorvane render"' "$folder/messages"; then
        cat "$folder/messages"
        echo "exit status $status without a display"
        exit 1
    fi
done

run_and_close
run_and_close "$folder/ETXYZ.OUT.1" "$folder/missing" "$folder"
grep -q 'ETXYZ.OUT.1: .*stock target' "$folder/messages"
grep -q 'missing: there is no such file' "$folder/messages"
# Asked to end by a signal, it ends in order and then by that signal.
"$program" "$folder/ETXYZ.OUT.1" 2>"$folder/messages" &
viewer=$! status=0
timeout 20 xdotool search --sync --onlyvisible --pid "$viewer" --name '^new_sorvane$' >/dev/null
kill -s TERM "$viewer"
wait "$viewer" || status=$?
if [ "$status" -ne $((128 + $(kill -l TERM))) ]; then
    echo "exit status $status after SIGTERM"
    exit 1
fi
echo "closed with Ctrl+C, status 0"
