#!/bin/bash
# Whole-process comparison of exporting a drawing to GeoPackage: veltor --export against
# GDAL's own ogr2ogr reading the DXF, on the same generated drawing.
#
#   bench/gis_export.sh      (from the repository root, after building veltor and veltor-gen:
#                             ninja -C build veltor veltor-gen)
#
# The drawing is city-N.dxf (N = VELTOR_GIS_ENTITIES, default 1000000), made with
# veltor-gen --seed 7 in $VELTOR_BENCH_DIR (default build/bench-data) when missing. Each
# run is measured once with /usr/bin/time (wall and CPU seconds, peak RSS):
#   veltor-records  veltor --export out.gpkg city-N.dxf             (one layer per table)
#   veltor-all      veltor --export out.gpkg --without-records ...   (every entity)
#   ogr2ogr         ogr2ogr -f GPKG out.gpkg city-N.dxf              (every entity, one layer)
# ogr2ogr writes every entity without its Object Data; veltor-all is the comparable run.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${VELTOR_BUILD_DIR:-$root/build}
data=${VELTOR_BENCH_DIR:-$build/bench-data}
n=${VELTOR_GIS_ENTITIES:-1000000}
die() { echo "gis_export.sh: $*" >&2; exit 1; }
[ -x /usr/bin/time ] || die "needs /usr/bin/time (Debian package: time)"
[ -x "$build/bin/veltor" ] || die "$build/bin/veltor is missing: build it"
command -v ogr2ogr >/dev/null || die "needs ogr2ogr (Debian package: gdal-bin)"
drawing=$data/city-$n.dxf
if [ ! -f "$drawing" ]; then
  [ -x "$build/bin/veltor-gen" ] || die "$build/bin/veltor-gen is missing: build it"
  mkdir -p "$data"
  "$build/bin/veltor-gen" --entities "$n" --seed 7 -o "$drawing"
fi
work=$(mktemp -d "${TMPDIR:-/tmp}/veltor-gis-bench-XXXXXX")
trap 'rm -rf "$work"' EXIT

printf "%-16s %9s %9s %9s %9s  %s\n" run wall_s user_s sys_s rss_MB features
measure() {  # measure NAME OUTPUT COMMAND...
  local name=$1 out=$2; shift 2
  /usr/bin/time -o "$work/time" -f "%e %U %S %M" "$@" >/dev/null
  read -r wall user sys rss <"$work/time"
  local features
  features=$(ogrinfo -ro -so -al "$out" | awk '/^Feature Count:/ { n += $3 } END { print n }')
  printf "%-16s %9s %9s %9s %9d  %s\n" "$name" "$wall" "$user" "$sys" $((rss / 1024)) "$features"
  rm -f "$out"
}
measure veltor-records "$work/r.gpkg" "$build/bin/veltor" --export "$work/r.gpkg" "$drawing"
measure veltor-all "$work/a.gpkg" "$build/bin/veltor" --export "$work/a.gpkg" --without-records "$drawing"
measure ogr2ogr "$work/o.gpkg" ogr2ogr -f GPKG "$work/o.gpkg" "$drawing"
