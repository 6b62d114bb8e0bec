#!/usr/bin/env bash
# Fails when the portable layers include what they must not: src/od, src/commands and src/ui
# know nothing of the drawing engine, Qt or the host SDK.
set -u
root="$(cd "$(dirname "$0")/.." && pwd)"
status=0
for dir in src/od src/commands src/ui; do
  [ -d "$root/$dir" ] || continue
  hits=$(grep -rnE '#include *[<"](drawing/|Q[A-Za-z]+|qt|aced|acdb|acrx|acap|adesk|arx|rxregsvc|dbmain|AcMap)' \
    "$root/$dir" --include='*.h' --include='*.cc' || true)
  if [ -n "$hits" ]; then
    echo "layering: $dir must not include engine, Qt or SDK headers:"
    echo "$hits"
    status=1
  fi
done
[ $status -eq 0 ] && echo "layering: ok"
exit $status
