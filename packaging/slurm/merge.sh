#!/usr/bin/env bash
# A job of Slurm: joins the parts that the tasks of survey.sh have made.
#
#   sbatch --dependency=afterok:JOB merge.sh PARTS 100 night.sqlite
#SBATCH --job-name=sorvane-merge
#SBATCH --requeue
#SBATCH --open-mode=append
set -euo pipefail
if [ $# -ne 3 ]; then
    echo "usage: sbatch --dependency=afterok:JOB merge.sh PARTS COUNT OUTPUT" >&2
    exit 2
fi
parts=() missing=()
for number in $(seq "$2"); do
    part=$1/part-$number.sqlite
    if [ -e "$part" ]; then parts+=("$part"); else missing+=("$number"); fi
done
[ ${#missing[@]} -eq 0 ] || { echo "$1 lacks the parts ${missing[*]}" >&2; exit 1; }
# What an earlier merge has left would stay in a database.
whole=${3%.*}.merging-${SLURM_JOB_ID:-$$}.${3##*.}
trap 'rm -f "$whole" "$whole"-*' EXIT
rm -f "$whole" "$whole"-*
sorvane runs --merge "${parts[@]}" -o "$whole"
mv "$whole" "$3"
