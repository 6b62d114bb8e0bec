#!/usr/bin/env bash
# The console's --export and --import end to end, checked with ogrinfo: two drawings into one
# GeoPackage (each feature naming its drawing), a table list, the entities without records,
# an SRS, the import saved with -o; bad input, or no GIS module beside the program, exits 9 and
# writes nothing.
# Usage: console_exchange.sh VELTOR SOURCE_DIR
set -u
veltor="$1"; source_dir="$2"
command -v ogrinfo >/dev/null || { echo "skipped: ogrinfo (gdal-bin) is not installed"; exit 77; }
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
expect() {  # expect WHAT TEXT: TEXT holds WHAT
  case "$2" in *"$1"*) ;; *) fail "expected '$1' in: $2" ;; esac
}

city="$source_dir/examples/city.dxf"
cp "$city" "$scratch/north.dxf"
cp "$city" "$scratch/south.dxf"

out=$("$veltor" --export "$scratch/both.gpkg" --tables Roads,Pipes --srs EPSG:2056 \
      "$scratch/north.dxf" "$scratch/south.dxf" 2>&1) || fail "export exited $?: $out"
expect "Exported: 200 features in 2 layers." "$out"
info=$(ogrinfo -ro -so -al "$scratch/both.gpkg")
expect "Layer name: Roads" "$info"
expect "Layer name: Pipes" "$info"
expect "Feature Count: 108" "$info"   # 54 roads in each drawing
expect "Feature Count: 92" "$info"    # 46 pipes in each drawing
expect 'ID["EPSG",2056]' "$info"
per_drawing=$(ogrinfo -ro -q "$scratch/both.gpkg" -sql \
  "SELECT veltor_drawing, COUNT(*) AS n FROM Roads GROUP BY veltor_drawing ORDER BY veltor_drawing")
expect "veltor_drawing (String) = north.dxf" "$per_drawing"
expect "veltor_drawing (String) = south.dxf" "$per_drawing"
[ "$(grep -c 'n (Integer) = 54' <<<"$per_drawing")" = 2 ] || fail "54 roads per drawing: $per_drawing"

# Entities without records, flattened with a coarse precision.
out=$("$veltor" --export "$scratch/all.gpkg" --without-records --precision 0.5 "$city" 2>&1) \
  || fail "export --without-records exited $?: $out"
expect "in 10 layers." "$out"
expect "Layer name: veltor_no_records" "$(ogrinfo -ro -so -al "$scratch/all.gpkg")"

# A shapefile folder: one .shp per table; a second export replaces the folder whole.
"$veltor" --export "$scratch/shapes" --format "ESRI Shapefile" --tables Roads,Pipes "$city" >/dev/null \
  || fail "shapefile export"
[ "$(ls "$scratch/shapes" | tr '\n' ' ')" = "Pipes.dbf Pipes.shp Pipes.shx Roads.dbf Roads.shp Roads.shx " ] \
  || fail "shapefile folder: $(ls "$scratch/shapes")"
"$veltor" --export "$scratch/shapes" --format "ESRI Shapefile" --tables Notes "$city" >/dev/null \
  || fail "shapefile export again"
[ "$(ls "$scratch/shapes" | tr '\n' ' ')" = "Notes.dbf Notes.shp Notes.shx " ] \
  || fail "shapefile folder not replaced: $(ls "$scratch/shapes")"
expect "Feature Count: 22" "$(ogrinfo -ro -so -al "$scratch/shapes")"

# Import into a new drawing, saved with -o.
out=$("$veltor" --import "$scratch/both.gpkg" --layer Pipes --target-layer GIS --table Sewer \
      -o "$scratch/imported.dxf" 2>&1) || fail "import exited $?: $out"
expect "Imported: 92 features as 92 entities with records of table Sewer (new)." "$out"
listed=$("$veltor" "$scratch/imported.dxf" -c ODTABLE -c List 2>&1)
expect "Sewer (2 columns)" "$listed"
expect "DIAMETER             Integer" "$listed"

# Bad input: exit status 9, nothing written.
"$veltor" --export "$scratch/bad.xyz" --format NoSuchFormat "$city" 2>"$scratch/err"
[ $? = 9 ] || fail "unknown format: exit status"
expect "format 'NoSuchFormat': not a vector format GDAL knows" "$(cat "$scratch/err")"
"$veltor" --export "$scratch/none/out.gpkg" "$city" 2>/dev/null
[ $? = 9 ] || fail "missing folder: exit status"
"$veltor" --import "$scratch/nothing.gpkg" -o "$scratch/never.dxf" 2>"$scratch/err"
[ $? = 9 ] || fail "missing source: exit status"
expect "cannot be opened as vector data" "$(cat "$scratch/err")"
"$veltor" --import "$scratch/both.gpkg" --layer Nope -o "$scratch/never.dxf" 2>"$scratch/err"
[ $? = 9 ] || fail "missing layer: exit status"
expect "no layer named 'Nope'" "$(cat "$scratch/err")"
[ -e "$scratch/never.dxf" ] && fail "a failed import saved its drawing"
"$veltor" --format GPKG "$city" 2>/dev/null
[ $? = 2 ] || fail "--format without --export: exit status"
# The exchange lives in a module beside the program, loaded on first use: a console without it
# still runs scripts, and says why an exchange cannot be made.
mkdir "$scratch/alone" && cp "$veltor" "$scratch/alone/veltor"
"$scratch/alone/veltor" --export "$scratch/alone.gpkg" "$city" 2>"$scratch/err"
[ $? = 9 ] || fail "export without the module: exit status"
expect "GIS module:" "$(cat "$scratch/err")"
expect "veltor-gis.so" "$(cat "$scratch/err")"
out=$("$scratch/alone/veltor" "$city" -c ODEXPORT -c LIST -c L 2>&1)
[ $? = 5 ] || fail "ODEXPORT without the module: the script must stop there (exit 5)"
expect "GIS module:" "$out"
leftovers=$(ls "$scratch" | grep -c veltor-tmp)
[ "$leftovers" = 0 ] || fail "temporary files left: $(ls "$scratch")"

[ $failures = 0 ] && echo "console exchange: ok"
exit $((failures > 0))
