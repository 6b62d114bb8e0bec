#!/usr/bin/env bash
# Runs one console transcript: NAME.scr is the script, NAME.args the command line before it
# (paths relative to the source tree; empty for a new drawing), NAME.out what the console must
# print, NAME.exit its exit status when not 0, NAME.err what it must print on standard error
# (when given). "@SCRATCH@" stands for the scratch folder in NAME.args, NAME.scr, NAME.out and
# NAME.err; "@SOURCE@" for the source tree in NAME.out (file dialogs give full paths). A run
# that does not exit with 0 must not have saved @SCRATCH@/out.dxf. Prints a diff on mismatch.
set -u
veltor="$1"; source_dir="$2"; name="$3"
here="$source_dir/tests/scripts"
args=""
[ -f "$here/$name.args" ] && args="$(cat "$here/$name.args")"
expected_exit=0
[ -f "$here/$name.exit" ] && expected_exit="$(cat "$here/$name.exit")"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
cd "$source_dir"
source_real="$(pwd -P)"
# shellcheck disable=SC2086
sed "s|@SCRATCH@|$scratch|g" "$here/$name.scr" >"$scratch/script.scr"
"$veltor" ${args//@SCRATCH@/$scratch} -s "$scratch/script.scr" >"$scratch/raw" 2>"$scratch/err"
status=$?
# The About box names the day the program was built; transcripts show it as @BUILD_DATE@.
sed -E -e 's/^Built [A-Z][a-z]{2} [ 0-9][0-9] [0-9]{4}\.$/Built @BUILD_DATE@./' \
  -e "s|$scratch|@SCRATCH@|g" -e "s|$source_real/|@SOURCE@/|g" "$scratch/raw" >"$scratch/out"
if ! diff -u "$here/$name.out" "$scratch/out"; then
  echo "transcript $name: output differs (stderr follows)"; cat "$scratch/err"; exit 1
fi
if [ "$status" != "$expected_exit" ]; then
  echo "transcript $name: exit status $status, expected $expected_exit"; cat "$scratch/err"; exit 1
fi
if [ -f "$here/$name.err" ]; then
  if ! diff -u "$here/$name.err" <(sed "s|$scratch|@SCRATCH@|g" "$scratch/err"); then
    echo "transcript $name: standard error differs"; exit 1
  fi
fi
if [ "$status" != 0 ] && [ -e "$scratch/out.dxf" ]; then
  echo "transcript $name: exit status $status, but out.dxf was saved"; exit 1
fi
if [ -f "$here/$name.saved" ]; then
  "$veltor" --info "$scratch/out.dxf" | sed "s|$scratch/||" >"$scratch/saved" 2>&1
  if ! diff -u "$here/$name.saved" "$scratch/saved"; then
    echo "transcript $name: the saved drawing differs"; exit 1
  fi
fi
echo "transcript $name: ok"
