#!/usr/bin/env bash
# Export to and import from PostGIS, on a throwaway cluster: initdb and pg_ctl in a temporary
# folder, listening on 127.0.0.1 at a free port (run as the postgres user, or nobody, when
# started as root: initdb refuses root). Checks the tables with ogrinfo PG:..., the refusal of
# existing tables without --overwrite, and that importing gives back every record.
# Exits 77 (skipped) saying why when no cluster can be started.
# Usage: postgis_exchange.sh VELTOR SOURCE_DIR
set -u
veltor="$1"; source_dir="$2"
bin=/usr/lib/postgresql/15/bin
skip() { echo "skipped: $*"; exit 77; }
[ -x "$bin/initdb" ] && [ -x "$bin/pg_ctl" ] || skip "PostgreSQL 15 is not installed ($bin)"
ls /usr/share/postgresql/15/extension/postgis.control >/dev/null 2>&1 || skip "PostGIS is not installed"
command -v ogrinfo >/dev/null || skip "ogrinfo (gdal-bin) is not installed"

scratch="$(mktemp -d)"
chmod 755 "$scratch"
as_owner=()
if [ "$(id -u)" = 0 ]; then
  owner=postgres
  id "$owner" >/dev/null 2>&1 || owner=nobody
  chown "$owner" "$scratch"
  as_owner=(runuser -u "$owner" --)
fi
port=$(/usr/bin/python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
stop() {
  "${as_owner[@]}" "$bin/pg_ctl" -D "$scratch/data" -m immediate stop >/dev/null 2>&1
  rm -rf "$scratch"
}
trap stop EXIT
"${as_owner[@]}" "$bin/initdb" -D "$scratch/data" -A trust -U veltor >"$scratch/initdb.log" 2>&1 \
  || skip "initdb failed: $(tail -3 "$scratch/initdb.log")"
"${as_owner[@]}" "$bin/pg_ctl" -D "$scratch/data" -l "$scratch/server.log" -w \
  -o "-c listen_addresses=127.0.0.1 -p $port -k $scratch" start >/dev/null 2>&1 \
  || skip "the server did not start: $(tail -3 "$scratch/server.log")"
psql=(psql -X -q -h 127.0.0.1 -p "$port" -U veltor)
"${psql[@]}" -d postgres -c "CREATE DATABASE gis" || skip "cannot create a database"
"${psql[@]}" -d gis -c "CREATE EXTENSION postgis" || skip "CREATE EXTENSION postgis failed"

pg="PG:host=127.0.0.1 port=$port user=veltor dbname=gis"
work="$(mktemp -d)"
trap 'stop; rm -rf "$work"' EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
expect() { case "$2" in *"$1"*) ;; *) fail "expected '$1' in: $2" ;; esac; }
city="$source_dir/examples/city.dxf"

out=$("$veltor" --export "$pg" --tables Parcels,Roads --srs EPSG:2056 "$city" 2>&1) || fail "export exited $?: $out"
expect "Exported: 123 features in 2 layers." "$out"
info=$(ogrinfo -ro -so -al "$pg" Parcels Roads 2>&1)
expect "Layer name: Parcels" "$info"
expect "Feature Count: 69" "$info"
expect "Feature Count: 54" "$info"
expect "PARCEL_ID: Integer" "$info"
expect "CENTROID_X: Real" "$info"
expect "veltor_handle: String" "$info"
expect 'ID["EPSG",2056]' "$info"

# Tables that exist are refused unless --overwrite; the refusal changes nothing.
"$veltor" --export "$pg" --tables Parcels "$city" 2>"$work/err"
[ $? = 9 ] || fail "existing table: exit status"
expect "table 'Parcels' exists in the database (give --overwrite to replace it)" "$(cat "$work/err")"
expect "Feature Count: 69" "$(ogrinfo -ro -so "$pg" Parcels 2>&1)"
out=$("$veltor" --export "$pg" --tables Parcels --overwrite "$city" 2>&1) || fail "overwrite exited $?: $out"
expect "Feature Count: 69" "$(ogrinfo -ro -so "$pg" Parcels 2>&1)"

# A failed export (a table name the drawing lacks) creates no table.
"$veltor" --export "$pg" --tables Trees,Nope "$city" 2>/dev/null
[ $? = 9 ] || fail "unknown table: exit status"
case "$(ogrinfo -ro -q "$pg" 2>&1)" in *Trees*) fail "a failed export left the table Trees" ;; esac

# Import back and compare every record with the drawing's own, through a GeoPackage of each.
for table in Parcels Roads; do
  out=$("$veltor" --import "$pg" --layer "$table" -o "$work/back-$table.dxf" 2>&1) || fail "import exited $?: $out"
  "$veltor" --export "$work/orig-$table.gpkg" --tables "$table" "$city" >/dev/null || fail "export $table"
  "$veltor" --export "$work/back-$table.gpkg" --tables "$table" "$work/back-$table.dxf" >/dev/null \
    || fail "export back $table"
  columns=$(ogrinfo -ro -so "$work/orig-$table.gpkg" "$table" | sed -n '/^Geometry Column/,$p' \
            | sed -n 's/^\([A-Za-z_]*\): .*/\1/p' \
            | grep -v '^veltor_' | paste -sd, -)
  dump() { ogrinfo -ro -q "$1" -sql "SELECT $columns FROM \"$table\" ORDER BY $columns" | grep ' = '; }
  if ! diff <(dump "$work/orig-$table.gpkg") <(dump "$work/back-$table.gpkg") >"$work/diff"; then
    fail "$table records differ after the PostGIS round trip: $(head -20 "$work/diff")"
  fi
  [ "$(dump "$work/orig-$table.gpkg" | wc -l)" -gt 0 ] || fail "$table: nothing compared"
done

[ $failures = 0 ] && echo "postgis exchange: ok"
exit $((failures > 0))
