#!/usr/bin/env bash
# The scale-out recipes of docs/batch.md run here: examples/batch/parallel.sh under GNU
# parallel on this machine, and examples/batch/slurm-array.sh run task by task the way Slurm
# would run it (SLURM_ARRAY_TASK_ID set; no Slurm is needed for that). Both must give the
# results and report lines of `veltor --batch`, and the same exit statuses.
#   batch_recipes.sh VELTOR VELTOR_GEN SOURCE_DIR
set -u
veltor="$1"; gen="$2"; source_dir="$3"
fail() { echo "batch_recipes: $*" >&2; exit 1; }
command -v parallel >/dev/null || { echo "batch_recipes: GNU parallel is not installed, skipped"; exit 77; }
[ -x /usr/bin/python3 ] || { echo "batch_recipes: /usr/bin/python3 missing, skipped"; exit 77; }
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
export VELTOR="$veltor"
script="$source_dir/examples/batch/parcel_areas.scr"

mkdir in
for i in 1 2 3 4 5 6; do "$gen" --entities 200 --seed "$i" -o "in/d$i.dxf" >/dev/null || fail "veltor-gen failed"; done
printf 'not a drawing\n' >"in/d4.dxf"
cp in/d1.dxf "in/with space.dxf"
ls in/*.dxf >list.txt
"$veltor" --batch "$script" --out-dir local --report local.jsonl @list.txt 2>/dev/null
[ $? = 7 ] || fail "veltor --batch: expected exit status 7"

# Compares a recipe's results and report with the local batch run's.
same_as_local() {
  local dir="$1" report="$2"
  for f in local/*.dxf; do cmp -s "$f" "$dir/${f#local/}" || fail "$dir/${f#local/} differs from veltor --batch"; done
  [ ! -e "$dir/d4.dxf" ] || fail "$dir/d4.dxf written for a broken drawing"
  /usr/bin/python3 - local.jsonl "$report" "$scratch" <<'PY' || fail "$report differs from the local report"
import json, os, sys
def load(path, absolute):
    out = {}
    for line in open(path, encoding="utf-8"):
        d = json.loads(line)
        name = os.path.basename(d["path"])
        assert not absolute or d["path"] == os.path.join(sys.argv[3], "in", name), d["path"]
        out[name] = (d["status"], d["exit"], d["results"], d["output"] and os.path.basename(d["output"]))
    return out
local, recipe = load(sys.argv[1], False), load(sys.argv[2], True)
assert local == recipe, (local, recipe)
assert local["d4.dxf"][0] == "failed" and local["with space.dxf"][0] == "done"
PY
}

"$source_dir/examples/batch/parallel.sh" "$script" list.txt gnu 2>parallel.err
status=$?
[ "$status" = 7 ] || { cat parallel.err; fail "parallel.sh: exit status $status, expected 7"; }
same_as_local gnu gnu/report.jsonl
[ "$(tail -n +2 gnu/joblog.tsv | wc -l)" = 7 ] || fail "parallel.sh: joblog does not list 7 jobs"

# Two drawings with the same file name are refused before any job runs.
mkdir other && cp in/d1.dxf other/d1.dxf && { cat list.txt; echo other/d1.dxf; } >clash.txt
"$source_dir/examples/batch/parallel.sh" "$script" clash.txt clash 2>/dev/null
[ $? = 8 ] || fail "parallel.sh: a file name clash was not refused"
[ ! -e clash ] || fail "parallel.sh: a refused run made its output folder"

# Slurm runs the array script once per task with SLURM_ARRAY_TASK_ID set.
n=$(grep -c . list.txt)
failed=0
for id in $(seq 1 "$n"); do
  SLURM_ARRAY_TASK_ID=$id "$source_dir/examples/batch/slurm-array.sh" "$script" "$scratch/list.txt" slurm 2>/dev/null \
    || failed=$((failed + 1))
done
[ "$failed" = 1 ] || fail "slurm-array.sh: $failed tasks failed, expected 1"
find slurm/reports -name '*.jsonl' -print0 | sort -zV | xargs -0 cat >slurm/report.jsonl
# The array tasks ran with relative paths from here; make the report's paths absolute to compare.
/usr/bin/python3 - slurm/report.jsonl "$scratch" <<'PY'
import json, os, sys
lines = [json.loads(l) for l in open(sys.argv[1], encoding="utf-8")]
with open(sys.argv[1], "w", encoding="utf-8") as f:
    for d in lines:
        d["path"] = os.path.join(sys.argv[2], d["path"])
        f.write(json.dumps(d, ensure_ascii=False) + "\n")
PY
same_as_local slurm slurm/report.jsonl

echo "batch_recipes: ok"
