#!/usr/bin/env bash
# Makes the Debian package of a finished build as FOLDER/sorvane.deb and unpacks it into FOLDER/stage.
# usage: build_package.sh CPACK CONFIG FOLDER
set -euo pipefail
cpack=$1 config=$2 folder=$3
rm -rf "$folder/stage" "$folder"/*.deb
cd "$folder"
umask 077 # nothing of it may get into the package
"$cpack" --config "$config" -B "$folder"
mv "$folder"/sorvane_*.deb "$folder/sorvane.deb"
dpkg-deb -x "$folder/sorvane.deb" "$folder/stage"
