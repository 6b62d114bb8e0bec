#!/bin/sh
# Copies the small drawings of the real-file corpus and the broken fixtures into a seed
# directory for the fuzzer. Usage: tests/fuzz/make_seeds.sh OUT_DIR [MAX_BYTES]
# (run from the repository root; MAX_BYTES defaults to 64 KiB, which keeps runs fast).
set -eu
out=${1:?usage: make_seeds.sh OUT_DIR [MAX_BYTES]}
max=${2:-65536}
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
corpus=${VELTOR_CORPUS_DIR:-$root/../shared/corpus}
mkdir -p "$out"
n=0
for f in "$corpus"/dxf/*.dxf "$corpus"/dxf-broken/*.dxf "$root"/tests/data/broken/*.dxf; do
  [ -f "$f" ] || continue
  [ "$(wc -c < "$f")" -le "$max" ] || continue
  cp "$f" "$out/$(basename "$f")"
  n=$((n + 1))
done
echo "make_seeds.sh: $n seed files in $out"
