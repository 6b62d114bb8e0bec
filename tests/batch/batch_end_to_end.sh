#!/usr/bin/env bash
# Batch over generated drawings, end to end: 40 drawings of a few hundred entities, two of
# them broken and one on which the script's line is refused, plus a worker that is killed by
# a signal. Checks the exit status, the report (read with Python's json), that every other
# result is byte-identical to a run of the console on that drawing alone, resume, and
# --in-place.
#   batch_end_to_end.sh VELTOR VELTOR_GEN
set -u
veltor="$1"; gen="$2"
fail() { echo "batch_end_to_end: $*" >&2; exit 1; }
[ -x /usr/bin/python3 ] || { echo "batch_end_to_end: /usr/bin/python3 missing, skipped"; exit 77; }
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
mkdir in

# The script: select what has Object Data, then write each parcel's area into its record.
# On a drawing without the Parcels table the dialog has no items, so "Parcels" answers the
# precision prompt and is refused.
printf 'VELTOR_HAS_OD\n\nVELTOR_SETPROP\nParcels\n\nAREA\n\n2\n\n' >job.scr

names=()
for i in $(seq -w 1 40); do
  name="d$i.dxf"
  [ "$i" = 40 ] && name='zone Łódź "40".dxf'   # a name that JSON must escape
  "$gen" --entities 300 --seed "$i" -o "in/$name" >/dev/null || fail "veltor-gen failed"
  names+=("$name")
done
head -c 5000 in/d07.dxf >in/d07.tmp && mv in/d07.tmp in/d07.dxf   # cut off mid-file
printf 'not a drawing\n' >in/d19.dxf
"$veltor" -s /dev/null -o in/d23.dxf 2>/dev/null || fail "could not write an empty drawing"
for n in "${names[@]}"; do printf 'in/%s\n' "$n"; done >list.txt

"$veltor" --batch job.scr -j 3 --out-dir out --report report.jsonl @list.txt 2>stderr.txt
status=$?
[ "$status" = 7 ] || { cat stderr.txt; fail "exit status $status, expected 7 (some failed)"; }
grep -q 'batch: 37 done, 3 failed' stderr.txt || { cat stderr.txt; fail "no summary"; }
if grep -q $'\r' stderr.txt; then fail "a progress line was drawn although standard error is not a terminal"; fi

# The report: one line per drawing, each as the drawing went.
/usr/bin/python3 - report.jsonl <<'PY' || fail "report check failed"
import json, sys
lines = [json.loads(l) for l in open(sys.argv[1], encoding="utf-8")]
assert len(lines) == 40, len(lines)
by = {d["path"]: d for d in lines}
assert len(by) == 40
failed = {p: d for p, d in by.items() if d["status"] == "failed"}
assert sorted(failed) == ["in/d07.dxf", "in/d19.dxf", "in/d23.dxf"], sorted(failed)
assert failed["in/d07.dxf"]["exit"] == 3 and "in/d07.dxf" in failed["in/d07.dxf"]["error"]
assert failed["in/d19.dxf"]["exit"] == 3
assert failed["in/d23.dxf"]["exit"] == 5 and "script line 4 refused" in failed["in/d23.dxf"]["error"]
assert failed["in/d23.dxf"]["results"] == ["Selected: 0"]
for d in failed.values():
    assert d["output"] is None and d["signal"] is None
odd = by['in/zone Łódź "40".dxf']
assert odd["output"] == 'out/zone Łódź "40".dxf', odd
for p, d in by.items():
    if d["status"] != "done":
        continue
    assert d["exit"] == 0 and d["error"] is None and d["signal"] is None, d
    assert d["results"][0].startswith("Selected: ") and d["results"][1].startswith("Completed"), d
    assert d["size"] > 0 and d["mtime_ns"] > 0 and d["seconds"] >= 0
PY

# Every result equals what the console writes for that drawing alone; failures wrote nothing.
mkdir single
for n in "${names[@]}"; do
  case "$n" in
    d07.dxf|d19.dxf|d23.dxf) [ ! -e "out/$n" ] || fail "out/$n written for a failed drawing"; continue ;;
  esac
  "$veltor" "in/$n" -s job.scr -o "single/$n" >/dev/null 2>&1 || fail "single run of $n failed"
  cmp -s "out/$n" "single/$n" || fail "out/$n differs from a single run"
done

# Resume: unchanged done drawings are skipped, a changed one and the failed ones run again.
"$gen" --entities 300 --seed 99 -o in/d02.dxf >/dev/null
"$veltor" --batch job.scr --out-dir out --report report.jsonl --resume @list.txt 2>stderr.txt
status=$?
[ "$status" = 7 ] || { cat stderr.txt; fail "resume: exit status $status, expected 7"; }
/usr/bin/python3 - report.jsonl <<'PY' || fail "resume report check failed"
import json, sys
lines = [json.loads(l) for l in open(sys.argv[1], encoding="utf-8")]
assert len(lines) == 80, len(lines)
new = lines[40:]
status = {d["path"]: d["status"] for d in new}
assert status["in/d02.dxf"] == "done", status["in/d02.dxf"]
assert sorted(p for p, s in status.items() if s == "failed") == ["in/d07.dxf", "in/d19.dxf", "in/d23.dxf"]
assert sum(1 for s in status.values() if s == "skipped") == 36
PY
"$veltor" in/d02.dxf -s job.scr -o single/d02.dxf >/dev/null 2>&1
cmp -s out/d02.dxf single/d02.dxf || fail "the changed drawing's result is not the new one"

# Two drawings with the same file name: refused before anything runs.
mkdir other && cp in/d01.dxf other/d01.dxf
"$veltor" --batch job.scr --out-dir clash in/d01.dxf other/d01.dxf 2>stderr.txt
status=$?
[ "$status" = 8 ] || fail "same file name: exit status $status, expected 8"
grep -q 'have the same file name' stderr.txt || fail "same file name: no clear message"
[ ! -e clash ] || fail "same file name: the output folder was made"

# In place: the same bytes as -o, the old drawing kept as .bak, and resume sees the result
# as unchanged. A worker killed by a signal is reported and the others go on: a wrapper
# that is "veltor" for the batch and its workers kills itself on crash.dxf.
mkdir inplace && cp in/d03.dxf in/d04.dxf inplace/ && cp in/d05.dxf inplace/crash.dxf
cat >wrapper.sh <<WRAP
#!/usr/bin/env bash
case " \$* " in *crash.dxf*) [[ " \$* " == *--batch* ]] || kill -SEGV \$\$ ;; esac
exec -a "\$0" "$veltor" "\$@"
WRAP
chmod +x wrapper.sh
./wrapper.sh --batch job.scr --in-place --report inplace.jsonl inplace/d03.dxf inplace/d04.dxf inplace/crash.dxf \
  2>stderr.txt
status=$?
[ "$status" = 7 ] || { cat stderr.txt; fail "in place: exit status $status, expected 7"; }
cmp -s inplace/d03.dxf out/d03.dxf || fail "in place: d03 differs from its -o result"
cmp -s inplace/d04.dxf out/d04.dxf || fail "in place: d04 differs from its -o result"
cmp -s inplace/d03.bak in/d03.dxf || fail "in place: d03.bak is not the original"
cmp -s inplace/crash.dxf in/d05.dxf || fail "in place: the crashed drawing changed"
/usr/bin/python3 - inplace.jsonl <<'PY' || fail "in place report check failed"
import json, sys
by = {d["path"]: d for d in map(json.loads, open(sys.argv[1], encoding="utf-8"))}
crash = by["inplace/crash.dxf"]
assert crash["status"] == "failed" and crash["signal"] == 11 and crash["exit"] is None, crash
assert "signal 11" in crash["error"], crash
assert by["inplace/d03.dxf"]["status"] == "done" and by["inplace/d03.dxf"]["output"] == "inplace/d03.dxf"
PY
"$veltor" --batch job.scr --in-place --report inplace.jsonl --resume inplace/d03.dxf inplace/d04.dxf 2>stderr.txt
status=$?
[ "$status" = 0 ] || fail "in place resume: exit status $status, expected 0"
grep -q '0 done, 0 failed, 2 skipped' stderr.txt || { cat stderr.txt; fail "in place resume ran a drawing again"; }
cmp -s inplace/d03.dxf out/d03.dxf || fail "in place resume changed d03"

echo "batch_end_to_end: ok"
