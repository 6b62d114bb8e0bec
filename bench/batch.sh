#!/usr/bin/env bash
# Batch runs against the ideal: times `veltor --batch` over COUNT generated drawings and
# compares it with one drawing's time x COUNT / JOBS (every core busy, no overhead).
#
#   bench/batch.sh [BUILD_DIR] [COUNT] [ENTITIES] [JOBS]
#
# Defaults: build, 200 drawings of 20000 entities, one job per core. The drawings are made
# once in $VELTOR_BENCH_DIR/batch-ENTITIES (default BUILD_DIR/bench-data). Not run by CI.
set -euo pipefail
build="${1:-build}"; count="${2:-200}"; entities="${3:-20000}"; jobs="${4:-$(nproc)}"
veltor="$build/bin/veltor"; gen="$build/bin/veltor-gen"
here="$(cd "$(dirname "$0")" && pwd)"
script="$here/../examples/batch/parcel_areas.scr"
data="${VELTOR_BENCH_DIR:-$build/bench-data}/batch-$entities"
mkdir -p "$data"
for i in $(seq 1 "$count"); do
  [ -f "$data/d$i.dxf" ] || "$gen" --entities "$entities" --seed "$i" -o "$data/d$i.dxf" >/dev/null
done
out="$(mktemp -d)"
trap 'rm -rf "$out"' EXIT
now() { date +%s.%N; }
calc() { awk "BEGIN { print $1 }"; }

# One drawing alone: the median of 5 runs, after one to warm the page cache.
"$veltor" "$data/d1.dxf" -s "$script" -o "$out/one.dxf" >/dev/null
times=()
for _ in 1 2 3 4 5; do
  t0=$(now); "$veltor" "$data/d1.dxf" -s "$script" -o "$out/one.dxf" >/dev/null; t1=$(now)
  times+=("$(calc "$t1 - $t0")")
done
single=$(printf '%s\n' "${times[@]}" | sort -g | sed -n 3p)

for i in $(seq 1 "$count"); do echo "$data/d$i.dxf"; done >"$out/list.txt"
t0=$(now)
"$veltor" --batch "$script" -j "$jobs" --out-dir "$out/results" --report "$out/report.jsonl" @"$out/list.txt" 2>/dev/null
t1=$(now)
batch=$(calc "$t1 - $t0")
ideal=$(calc "$single * $count / $jobs")
load=$(cut -d' ' -f1-3 /proc/loadavg 2>/dev/null || echo "?")
printf 'drawings %d x %d entities, %d jobs, load average at the end (1/5/15 min): %s\n' "$count" "$entities" "$jobs" "$load"
printf 'one drawing      %8.3f s (median of 5)\n' "$single"
printf 'ideal            %8.3f s (one x %d / %d)\n' "$ideal" "$count" "$jobs"
printf 'veltor --batch   %8.3f s (%.2f x ideal, %.1f drawings/s)\n' "$batch" "$(calc "$batch / $ideal")" \
  "$(calc "$count / $batch")"
