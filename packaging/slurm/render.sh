#!/usr/bin/env bash
# A task of a Slurm job array: renders every COUNT-th engagement below DATA, one that has its picture or movie already not
# again.
#
#   sbatch --array=1-100 render.sh DATA PICTURES 100 .png --view threat --at 5
#
# The suffix says what is made of each: a picture (.png) or a movie (.avi, .mp4, …).
#SBATCH --job-name=sorvane-render
#SBATCH --requeue
#SBATCH --open-mode=append
set -euo pipefail
if [ $# -lt 4 ] || [ "${SLURM_ARRAY_TASK_ID:-0}" -lt 1 ] || [ "$SLURM_ARRAY_TASK_ID" -gt "$3" ]; then
    echo "usage: sbatch --array=1-COUNT render.sh DATA PICTURES COUNT SUFFIX [OPTION of sorvane render…]" >&2
    exit 2
fi
data=$1 pictures=$2 count=$3 suffix=$4
shift 4
[ -d "$data" ] || { echo "$data: there is no such directory on $(uname -n)" >&2; exit 2; }
# Threads of Mesa's software renderer gain nothing.
export LP_NUM_THREADS=${LP_NUM_THREADS-0}

mapfile -d '' files < <(cd "$data" && find . -type f -name '*ETXYZ.OUT.*' -printf '%P\0' | LC_ALL=C sort -z)
failed=0
for ((i = SLURM_ARRAY_TASK_ID - 1; i < ${#files[@]}; i += count)); do
    picture=$pictures/${files[i]}$suffix
    [ ! -e "$picture" ] || continue
    mkdir -p "$(dirname "$picture")"
    sorvane render "$data/${files[i]}" -o "$picture" "$@" || failed=1
done
exit $failed
