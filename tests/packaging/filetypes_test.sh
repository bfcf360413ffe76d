#!/usr/bin/env bash
# Asks the desktop's file types what files are. usage: filetypes_test.sh SHARE
set -euo pipefail
share=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/share/mime/packages" "$folder/files"
cp /usr/share/mime/packages/freedesktop.org.xml "$share"/mime/packages/*.xml "$folder/share/mime/packages/"
PKGSYSTEM_ENABLE_FSYNC=0 update-mime-database "$folder/share/mime" >/dev/null

failed=0
while read -r name expected; do
    case $name in
    *.Z) printf '\037\235\220a\312\0\0' ;;
    *.png) printf '\211PNG\r\n\032\n' ;;
    *) printf 'a\n' ;;
    esac >"$folder/files/$name"
    type=$(cd "$folder/files" && GIO_USE_VFS=local XDG_DATA_HOME="$folder" XDG_DATA_DIRS="$folder/share" \
        gio info -a standard::content-type "$name" | sed -n 's/^ *standard::content-type: //p')
    if [ "$type" != "$expected" ]; then
        echo "$name is $type instead of $expected"
        failed=1
    fi
done <<'TABLE'
ETXYZ.OUT.turn         application/x-etxyz
ETXYZ.OUT.1            application/x-etxyz
ETXYZ.OUT.42           application/x-etxyz
ETXYZ.OUT.night.7      application/x-etxyz
ETXYZ.OUT.turn.Z       application/x-compressed-etxyz
ETXYZ.OUT.1.Z          application/x-compressed-etxyz
ETXYZ.OUT.turn.csv     text/csv
ETXYZ.OUT.turn.png     image/png
etxyz.out.turn         text/plain
notes.Z                application/x-compress
sorvane.1              application/x-troff-man
TABLE
exit $failed
