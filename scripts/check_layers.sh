#!/usr/bin/env bash
# Fails when a layer includes what the dependency rule (down only) forbids:
# - src/od, src/commands and src/ui know nothing of the drawing engine, Qt or the host SDK;
# - src/commands and src/ui never include the module shell (src/app);
# - src/commands and src/ui never include a front end (src/console);
# - src/od, the bottom of the module, includes none of the layers above it;
# - GDAL is reached only from the GIS layer (src/drawing/gis), above the session.
set -u
root="$(cd "$(dirname "$0")/.." && pwd)"
status=0

# check DIR PATTERN WHAT: every include of DIR's sources matching PATTERN is a violation.
check() {
  local dir=$1 pattern=$2 what=$3
  [ -d "$root/$dir" ] || return 0
  local hits
  hits=$(grep -rnE "#include *[<\"]($pattern)" "$root/$dir" --include='*.h' --include='*.cc' \
    || true)
  if [ -n "$hits" ]; then
    echo "layering: $dir must not include $what:"
    echo "$hits"
    status=1
  fi
}

engine='drawing/|Q[A-Za-z]+|qt|aced|acdb|acrx|acap|adesk|arx|rxregsvc|dbmain|AcMap|gdal|ogr_|cpl_'
for dir in src/od src/commands src/ui; do
  check "$dir" "$engine" "engine, Qt or SDK headers"
done
for dir in src/commands src/ui; do
  check "$dir" 'app/' "the module shell (app/)"
  check "$dir" 'console/' "front-end headers (console/)"
done
check src/od 'app/|commands/|ui/|console/' "the layers above it"
for dir in src/drawing/dxf src/drawing/geometry src/drawing/model src/drawing/objectdata \
           src/drawing/session; do
  check "$dir" 'gdal|ogr_|cpl_|drawing/gis/' "GDAL or the GIS layer above it"
done

# The Windows plug-in's adapter (src/arx, .cpp/.h) sits on the module alone: no embedded host,
# Qt or front end; and only its *_mfc.cpp files include MFC.
if [ -d "$root/src/arx" ]; then
  hits=$(grep -rnE '#include *[<"](drawing/|Q[A-Za-z]+|qt|console/|workbench/)' "$root/src/arx" \
    --include='*.h' --include='*.cpp' || true)
  if [ -n "$hits" ]; then
    echo "layering: src/arx must not include the embedded host, Qt or a front end:"
    echo "$hits"
    status=1
  fi
  hits=$(grep -rnE '#include *[<"](afx[a-z]*|adui|acui)\.h' "$root/src/arx" --include='*.h' \
    --include='*.cpp' | grep -v '_mfc\.cpp:' || true)
  if [ -n "$hits" ]; then
    echo "layering: only src/arx/*_mfc.cpp include MFC headers:"
    echo "$hits"
    status=1
  fi
fi

# The Windows plug-in's toolset has no std::to_chars(double, chars_format::fixed, precision):
# the module's portable layers reach it only through od/value.cc, behind the toolset check of
# od/fixed_format.h.
hits=$(grep -rn 'chars_format::fixed' "$root/src/od" "$root/src/commands" "$root/src/ui" \
  "$root/src/app" --include='*.h' --include='*.cc' | grep -v '^[^:]*/src/od/value.cc:' || true)
if [ -n "$hits" ]; then
  echo "portability: the fixed-precision std::to_chars overload is used outside od/value.cc:"
  echo "$hits"
  status=1
fi
if ! grep -q '#if !VELTOR_HAS_FIXED_TO_CHARS' "$root/src/od/value.cc"; then
  echo "portability: od/value.cc formats fixed reals without the toolset check"
  status=1
fi

[ $status -eq 0 ] && echo "layering: ok"
exit $status
