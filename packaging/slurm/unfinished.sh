#!/usr/bin/env bash
# Prints which of COUNT parts survey.sh has not finished, as a job array takes them: "3,7,12".
# usage: unfinished.sh PARTS COUNT
set -euo pipefail
[ $# -eq 2 ] || { sed -n 's/^# \(usage\)/\1/p' "$0" >&2; exit 2; }
list=
for number in $(seq "$2"); do
    [ -e "$1/part-$number.sqlite" ] || list+=${list:+,}$number
done
echo "$list"
