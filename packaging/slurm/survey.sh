#!/usr/bin/env bash
# A task of a Slurm job array: makes the table of one part of a set, PARTS/part-NUMBER.sqlite.
#
#   sbatch --array=1-100 survey.sh DATA PARTS 100 [OPTION of sorvane runs…]
#
# The tasks may be submitted again, all or some: each goes on where it was.
#SBATCH --job-name=sorvane-survey
#SBATCH --requeue
#SBATCH --open-mode=append
set -euo pipefail
if [ $# -lt 3 ] || [ "${SLURM_ARRAY_TASK_ID:-0}" -lt 1 ] || [ "$SLURM_ARRAY_TASK_ID" -gt "$3" ]; then
    echo "usage: sbatch --array=1-COUNT survey.sh DATA PARTS COUNT [OPTION of sorvane runs…]" >&2
    exit 2
fi
data=$1 parts=$2 part=$SLURM_ARRAY_TASK_ID/$3
shift 3
# Without this a node that lacks the file system would bring an empty part.
[ -e "$data" ] || { echo "$data: there is no such file or directory on $(uname -n)" >&2; exit 2; }

# A part has its name only once it is whole.
mkdir -p "$parts"
whole=$parts/part-${part%/*}.sqlite
begun=$parts/begun-${part%/*}.sqlite
[ ! -e "$whole" ] || mv "$whole" "$begun"
status=0
sorvane runs "$data" -o "$begun" --shard "$part" "$@" || status=$?
# Files with faults are rows, too: no reason to keep the others from being merged.
[ "$status" -le 1 ] || exit "$status"
mv "$begun" "$whole"
