#!/usr/bin/env bash
# Makes the Debian packages of a finished build as FOLDER/sorvane.deb and FOLDER/python3-sorvane.deb, where there is a
# Python module, and unpacks them into FOLDER/stage and FOLDER/python.
# usage: build_package.sh CPACK CONFIG FOLDER
set -euo pipefail
cpack=$1 config=$2 folder=$3
rm -rf "$folder/stage" "$folder/python" "$folder"/*.deb
cd "$folder"
umask 077 # nothing of it may get into the package
"$cpack" --config "$config" -B "$folder"
mv "$folder"/sorvane_*.deb "$folder/sorvane.deb"
dpkg-deb -x "$folder/sorvane.deb" "$folder/stage"
for made in python3-sorvane_*.deb; do
    [ -e "$made" ] || continue
    mv "$made" python3-sorvane.deb
    dpkg-deb -x python3-sorvane.deb python
done
