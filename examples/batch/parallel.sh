#!/usr/bin/env bash
# One veltor script over many drawings with GNU parallel, on this machine or across machines.
#
#   parallel.sh SCRIPT LIST OUT_DIR [SSHLOGINFILE]
#
# LIST has one drawing path per line. Each drawing is one job: `veltor --batch SCRIPT -j 1
# --out-dir OUT_DIR --report ...` on that drawing alone, so each job writes the same JSON
# report line as a local batch run; the lines are gathered into OUT_DIR/report.jsonl.
# GNU parallel's own log of the jobs is OUT_DIR/joblog.tsv; run again with
# PARALLEL_OPTS=--resume-failed to redo only the jobs that failed.
#
# With SSHLOGINFILE (GNU parallel's --sshloginfile: one "[N/]host" per line, ":" for this
# machine) the jobs run on those machines. Every machine must see the drawings, the script
# and OUT_DIR at the same absolute paths (a shared file system) and have veltor in its PATH;
# VELTOR names another program.
#
# Exit status: 0 when every drawing was done, 7 when any failed (as `veltor --batch`),
# 8 when nothing was run (two drawings with the same file name, a missing list).
set -euo pipefail

if [ $# -lt 3 ] || [ $# -gt 4 ]; then
  echo "usage: parallel.sh SCRIPT LIST OUT_DIR [SSHLOGINFILE]" >&2
  exit 2
fi
veltor="${VELTOR:-veltor}"
script="$(realpath "$1")"
list="$2"
[ -r "$list" ] || { echo "parallel.sh: $list: cannot read the list" >&2; exit 8; }

# Results are OUT_DIR/<file name>: two drawings with the same file name would overwrite each
# other, so they are refused before anything runs.
clashes="$(grep -v '^[[:space:]]*$' "$list" | sed 's|.*/||' | sort | uniq -d)"
if [ -n "$clashes" ]; then
  echo "parallel.sh: these file names appear more than once in $list:" >&2
  echo "$clashes" >&2
  exit 8
fi

mkdir -p "$3"
out="$(realpath "$3")"
# Paths made absolute, so that a job means the same file on any machine.
absolute="$out/drawings.txt"
grep -v '^[[:space:]]*$' "$list" | while IFS= read -r path; do realpath -m -- "$path"; done >"$absolute"

remote=()
[ $# -eq 4 ] && remote=(--sshloginfile "$4")
mkdir -p "$out/reports"
status=0
# shellcheck disable=SC2086
parallel --joblog "$out/joblog.tsv" ${PARALLEL_OPTS:-} "${remote[@]}" -a "$absolute" \
  "$veltor" --batch "$script" -j 1 --out-dir "$out" --report "$out/reports/{#}.jsonl" -- {} || status=$?
find "$out/reports" -name '*.jsonl' -print0 | sort -zV | xargs -0 cat >"$out/report.jsonl"
# GNU parallel exits with the number of failed jobs (at most 100), 101 and up for its own errors.
if [ "$status" -eq 0 ]; then exit 0; fi
if [ "$status" -le 100 ]; then exit 7; fi
exit "$status"
