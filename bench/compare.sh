#!/bin/bash
# Whole-process comparison of veltor with ezdxf and GDAL on generated drawings.
#
#   bench/compare.sh            (from the repository root, after building veltor-gen and
#                                veltor_roundtrip: ninja -C build veltor-gen veltor_roundtrip)
#
# For each drawing (city-10000, city-100000, city-1000000; made with veltor-gen --seed 7 in
# $VELTOR_BENCH_DIR, default build/bench-data, when missing) it measures, once each, with
# /usr/bin/time -f "%e %M" (wall seconds, peak RSS):
#   veltor       load + count model space entities with Object Data records + save
#   veltor-load  load + count model space entities (what ogrinfo -so does)
#   ezdxf        readfile + count entities whose extension dictionary has VELTOR_OBJECT_DATA
#                + saveas (Debian's python3-ezdxf through /usr/bin/python3)
#   ogrinfo      ogrinfo -ro -al -so (GDAL's DXF driver reads every feature to count them)
# and prints a table with seconds, MB/s (file bytes / 10^6 / seconds) and peak RSS, then the
# ratios ezdxf/veltor and ogrinfo/veltor-load.
#
# Environment: VELTOR_BUILD_DIR (default build), VELTOR_BENCH_DIR (default
# $VELTOR_BUILD_DIR/bench-data), VELTOR_COMPARE_SIZES (default "10000 100000 1000000"),
# VELTOR_COMPARE_SKIP_EZDXF_ABOVE (skip ezdxf on larger drawings; default: never skip).
# ezdxf on the 1M drawing takes several minutes and about 6 GB of memory.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${VELTOR_BUILD_DIR:-$root/build}
data=${VELTOR_BENCH_DIR:-$build/bench-data}
sizes=${VELTOR_COMPARE_SIZES:-"10000 100000 1000000"}
skip_ezdxf_above=${VELTOR_COMPARE_SKIP_EZDXF_ABOVE:-0}
gen=$build/bin/veltor-gen
roundtrip=$build/bin/veltor_roundtrip
python=/usr/bin/python3

die() { echo "compare.sh: $*" >&2; exit 1; }
[ -x /usr/bin/time ] || die "needs /usr/bin/time (Debian package: time)"
[ -x "$gen" ] || die "$gen is missing: build it (ninja -C $build veltor-gen)"
[ -x "$roundtrip" ] || die "$roundtrip is missing: build it (ninja -C $build veltor_roundtrip)"
have_ezdxf=yes; $python -c 'import ezdxf' 2>/dev/null || have_ezdxf=
have_ogr=yes; command -v ogrinfo >/dev/null || have_ogr=

work=$(mktemp -d "${TMPDIR:-/tmp}/veltor-compare-XXXXXX")
trap 'rm -rf "$work"' EXIT

# The ezdxf workload, the same as veltor_roundtrip's.
cat > "$work/ezdxf_roundtrip.py" <<'PY'
import sys
import ezdxf
doc = ezdxf.readfile(sys.argv[1])
n = 0
for e in doc.modelspace():
    if e.has_extension_dict and "VELTOR_OBJECT_DATA" in e.get_extension_dict():
        n += 1
doc.saveas(sys.argv[2])
print("with_records %d" % n)
PY

mkdir -p "$data"
for n in $sizes; do
  f=$data/city-$n.dxf
  if [ ! -f "$f" ]; then
    echo "generating $f" >&2
    "$gen" --entities "$n" --seed 7 -o "$f"
  fi
done

# measure NAME COMMAND...: runs once; sets secs, rss_mb and out (standard output).
measure() {
  local name=$1; shift
  if ! /usr/bin/time -f "%e %M" -o "$work/time" "$@" > "$work/out" 2> "$work/err"; then
    echo "compare.sh: $name failed:" >&2; cat "$work/err" >&2; secs=NA; rss_mb=NA; out=; return
  fi
  read -r secs kb < <(tail -n 1 "$work/time")
  rss_mb=$(awk -v k="$kb" 'BEGIN { printf "%.0f", k / 1024 }')
  out=$(cat "$work/out")
}
mbps() { awk -v b="$1" -v s="$2" 'BEGIN { if (s == "NA" || s <= 0) print "NA"; else printf "%.1f", b / 1e6 / s }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (a == "NA" || b == "NA" || b <= 0) print "NA"; else printf "%.1f", a / b }'; }
field() { sed -n "s/.*$1 \([0-9.]*\).*/\1/p" <<< "$out"; }

echo "veltor whole-process comparison, $(date -u '+%Y-%m-%d %H:%M UTC')"
echo "machine: $(nproc) cores, $(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -n 1)"
build_type=$(sed -n 's/^CMAKE_BUILD_TYPE:STRING=//p' "$build/CMakeCache.txt" 2>/dev/null || true)
echo "veltor: $(git -C "$root" rev-parse --short HEAD 2>/dev/null || echo '?'), build type ${build_type:-RelWithDebInfo (the default)}"
[ -n "$have_ezdxf" ] && echo "ezdxf: $($python -c 'import ezdxf; print(ezdxf.__version__)') (/usr/bin/python3 $($python -c 'import platform; print(platform.python_version())'))"
[ -n "$have_ogr" ] && echo "ogrinfo: $(ogrinfo --version)"
echo
printf '%-14s %-12s %10s %9s %10s %14s\n' drawing tool seconds MB/s "RSS MB" "with records"
summary=()
for n in $sizes; do
  f=$data/city-$n.dxf
  bytes=$(stat -c %s "$f")
  name="city-$n ($(awk -v b="$bytes" 'BEGIN { printf "%.0f MB", b / 1e6 }'))"

  measure veltor "$roundtrip" "$f"
  v_secs=$secs; v_rss=$rss_mb; v_records=$(field with_records)
  printf '%-14s %-12s %10s %9s %10s %14s\n' "city-$n" veltor "$v_secs" "$(mbps "$bytes" "$v_secs")" "$v_rss" "$v_records"

  measure veltor-load "$roundtrip" --load-only "$f"
  l_secs=$secs; l_rss=$rss_mb
  printf '%-14s %-12s %10s %9s %10s %14s\n' "" veltor-load "$l_secs" "$(mbps "$bytes" "$l_secs")" "$l_rss" "-"

  e_secs=NA; e_rss=NA
  if [ -n "$have_ezdxf" ] && { [ "$skip_ezdxf_above" -eq 0 ] || [ "$n" -le "$skip_ezdxf_above" ]; }; then
    measure ezdxf $python "$work/ezdxf_roundtrip.py" "$f" "$work/ezdxf-out.dxf"
    rm -f "$work/ezdxf-out.dxf"
    e_secs=$secs; e_rss=$rss_mb; e_records=$(field with_records)
    printf '%-14s %-12s %10s %9s %10s %14s\n' "" ezdxf "$e_secs" "$(mbps "$bytes" "$e_secs")" "$e_rss" "$e_records"
    if [ -n "$e_records" ] && [ "$e_records" != "$v_records" ]; then
      echo "compare.sh: ezdxf counts $e_records entities with records, veltor $v_records" >&2
    fi
  else
    printf '%-14s %-12s %10s\n' "" ezdxf "skipped"
  fi

  o_secs=NA; o_rss=NA
  if [ -n "$have_ogr" ]; then
    measure ogrinfo ogrinfo -ro -al -so "$f"
    o_secs=$secs; o_rss=$rss_mb
    features=$(awk '/^Feature Count:/ { s += $3 } END { print s + 0 }' <<< "$out")
    printf '%-14s %-12s %10s %9s %10s %14s\n' "" ogrinfo "$o_secs" "$(mbps "$bytes" "$o_secs")" "$o_rss" "($features features)"
  else
    printf '%-14s %-12s %10s\n' "" ogrinfo "skipped"
  fi
  summary+=("$(printf '%-24s %14s %14s %18s %18s' "$name" "$(ratio "$e_secs" "$v_secs")x" \
    "$(ratio "$e_rss" "$v_rss")x" "$(ratio "$o_secs" "$l_secs")x" "$(ratio "$o_rss" "$l_rss")x")")
done

echo
printf '%-24s %14s %14s %18s %18s\n' drawing "ezdxf/veltor" "(RSS)" "ogrinfo/v-load" "(RSS)"
for line in "${summary[@]}"; do echo "$line"; done
