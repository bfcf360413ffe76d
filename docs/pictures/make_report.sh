#!/usr/bin/env bash
# Makes the pictures of the guide's report: a night's runs, their table, the page, and what a browser shows of it.
# usage: make_report.sh SORVANE_PROGRAM DEMONSTRATION_FOLDER PICTURE_FOLDER
set -euo pipefail

sorvane=$(realpath "$1")
demonstration=$(realpath "$2")
pictures=$(realpath "$3")
here=$(dirname "$(realpath "$0")")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
PELSAR_DATA="$demonstration/data/"
export PELSAR_DATA
python3 "$here/make_night.py" "$demonstration" night 600
"$sorvane" runs night -o night.sqlite --unit m --name 'case(?<case>\d+)_flare(?<pattern>[A-Za-z]+)'
"$sorvane" report night.sqlite -o night.html --by pattern --miss 5,10,20 --terrain --allow-missing \
    --title "Flares against the shot from anywhere"
# A page as long as it is, cut into parts.
chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --force-color-profile=srgb --window-size=1200,3600 \
    --screenshot="$folder/page.png" "file://$folder/night.html" 2>/dev/null
cut() { # NAME TOP HEIGHT
    ffmpeg -v error -y -i page.png -vf "crop=1200:$3:0:$2,scale=900:-1" -frames:v 1 "$pictures/$1"
}
cut report.png 0 1515
cut report-runs.png 1584 1370
