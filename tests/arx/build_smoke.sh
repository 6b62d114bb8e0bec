#!/usr/bin/env bash
# Builds the Win32 smoke program (win32_smoke.cpp with the plug-in's dialog code) into
# OUT/win32_smoke.exe with clang and lld against the MinGW-w64 import libraries and a static
# libstdc++, then checks that the result is a 64-bit Windows GUI program importing the
# dialog, list view subclassing and file functions it needs. Prints one line on success.
# Usage: tests/arx/build_smoke.sh OUT   (environment: JOBS)
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
out="$1/smoke"
mkdir -p "$out"
gcc_dir=/usr/lib/gcc/x86_64-w64-mingw32/12-posix
target=(--target=x86_64-w64-windows-gnu)
compile=("${target[@]}" -std=c++17 -O1 -DUNICODE -D_UNICODE -nostdinc++
         -isystem "$gcc_dir/include/c++" -isystem "$gcc_dir/include/c++/x86_64-w64-mingw32"
         -I "$root/src" -Wall -Werror)
sources=(tests/arx/win32_smoke.cpp src/arx/win32_dialog.cpp src/arx/dialog_driver.cpp src/arx/cell_editor.cpp
         src/arx/dialog_layout.cpp src/arx/dialog_template.cpp src/arx/wide_text.cpp src/od/dialog_model.cc
         src/od/text.cc src/od/format.cc src/od/lower_case_table.cc)

objects=()
for source in "${sources[@]}"; do objects+=("$out/$(basename "$source").o"); done
printf '%s\n' "${sources[@]}" | (cd "$root" && xargs -P "${JOBS:-$(nproc)}" -I{} \
  sh -c 'clang++ -c "$@" {} -o "'"$out"'/$(basename {}).o"' sh "${compile[@]}")

exe="$out/win32_smoke.exe"
clang++ "${target[@]}" -municode -mwindows -fuse-ld=lld -static -L "$gcc_dir" \
  -L /usr/x86_64-w64-mingw32/lib "${objects[@]}" -lcomctl32 -lpthread -o "$exe"

kind=$(file -b "$exe")
case "$kind" in
  "PE32+ executable (GUI) x86-64"*) ;;
  *) echo "smoke: $exe is not a 64-bit Windows GUI program: $kind"; exit 1 ;;
esac
imports=$(x86_64-w64-mingw32-objdump -p "$exe")
# dll:function pairs the program must import.
for pair in USER32.dll:DialogBoxIndirectParamW USER32.dll:EndDialog COMCTL32.dll:SetWindowSubclass \
            COMCTL32.dll:InitCommonControlsEx; do
  dll=${pair%%:*} function=${pair#*:}
  listed=$(echo "$imports" | awk -v dll="$dll" '/DLL Name:/ {in_dll = ($3 == dll)} in_dll {print $3}')
  if ! grep -qx "$function" <<<"$listed"; then
    echo "smoke: $exe does not import $function from $dll"
    exit 1
  fi
done
echo "$(basename "$exe") built: $kind, imports DialogBoxIndirectParamW from USER32.dll"
