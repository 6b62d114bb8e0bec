#!/usr/bin/env bash
# One veltor script over many drawings as a Slurm array job: array task N runs the script on
# line N of LIST. Submit with one task per line:
#
#   n=$(grep -c . LIST)
#   sbatch --array=1-"$n"%50 slurm-array.sh SCRIPT LIST OUT_DIR
#
# (%50: at most 50 tasks at once). LIST must hold no blank lines, so that task N is line N.
# Each task writes its result as OUT_DIR/<file name> and one JSON report line, the same as
# `veltor --batch`, as OUT_DIR/reports/N.jsonl; gather them when the array has finished:
#
#   sbatch --dependency=afterany:JOBID --wrap \
#     "find OUT_DIR/reports -name '*.jsonl' -print0 | sort -zV | xargs -0 cat >OUT_DIR/report.jsonl"
#
# A failed task shows in `sacct -j JOBID` with veltor's exit status (7: the drawing failed);
# resubmit only those with --array=LIST_OF_IDS. Every node must see LIST, SCRIPT, the drawings
# and OUT_DIR at the same paths; VELTOR names the program when it is not veltor in PATH.
# Two drawings with the same file name would overwrite each other's result: check LIST first
# (`sed 's|.*/||' LIST | sort | uniq -d` prints nothing).
#SBATCH --job-name=veltor-batch
#SBATCH --cpus-per-task=1
#SBATCH --output=veltor-batch-%A_%a.log
set -euo pipefail

if [ $# -ne 3 ] || [ -z "${SLURM_ARRAY_TASK_ID:-}" ]; then
  echo "usage: sbatch --array=1-N slurm-array.sh SCRIPT LIST OUT_DIR" >&2
  exit 2
fi
script="$1"; list="$2"; out="$3"
drawing="$(sed -n "${SLURM_ARRAY_TASK_ID}p" "$list")"
if [ -z "$drawing" ]; then
  echo "slurm-array.sh: $list has no line ${SLURM_ARRAY_TASK_ID}" >&2
  exit 8
fi
mkdir -p "$out/reports"
exec "${VELTOR:-veltor}" --batch "$script" -j 1 --out-dir "$out" \
  --report "$out/reports/${SLURM_ARRAY_TASK_ID}.jsonl" -- "$drawing"
