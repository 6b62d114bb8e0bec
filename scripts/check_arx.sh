#!/usr/bin/env bash
# Checks on Linux what can be checked of the Windows plug-in without Windows:
#   1. every source of the portable layers (src/od, src/ui, src/commands, src/app) and every
#      src/arx/*.cpp except the MFC ones (*_mfc.cpp) compiles for 64-bit Windows as the v141
#      toolset sees it (clang in MSVC-compatible mode over the MinGW-w64 headers), with our
#      declaration headers of the host SDK (src/arx/sdk);
#   2. the same with the real SDK headers when ARX_SDK (and MAP_SDK) name an SDK folder, else
#      "skipped";
#   3. the Win32 smoke program (tests/arx/win32_smoke.cpp) links with lld into a .exe that
#      imports DialogBoxIndirectParamW from USER32.dll;
#   4. the tests that run inside the host (tests/arx/*.cpp) compile for Windows.
# Output: one line per failure and a count. Exit status 0 when nothing failed.
# Usage: scripts/check_arx.sh [BUILD_DIR]   (environment: ARX_SDK, MAP_SDK, JOBS, VERBOSE=1)
set -u
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$(cd "$root" && mkdir -p "${1:-build}/arx-check" && cd "${1:-build}/arx-check" && pwd)"
jobs="${JOBS:-$(nproc)}"
cd "$root"

for tool in clang++ ld.lld; do
  if ! command -v "$tool" >/dev/null; then
    echo "check-arx: $tool is missing (scripts/setup.sh installs it)"
    exit 1
  fi
done
mingw_cxx=/usr/lib/gcc/x86_64-w64-mingw32/12-posix
if [ ! -d "$mingw_cxx/include/c++" ] || [ ! -f /usr/x86_64-w64-mingw32/include/windows.h ]; then
  echo "check-arx: the MinGW-w64 headers are missing (scripts/setup.sh installs them)"
  exit 1
fi

# The flags that make clang read the sources as v141 does: MSVC 19.16 with its language
# extensions on (as without /Za, which the Windows headers' anonymous unions need), Unicode,
# 64-bit.
flags=(--target=x86_64-w64-windows-gnu -std=c++17 -fms-extensions -fms-compatibility-version=19.16
       -D_MSC_VER=1916 -D_MSC_EXTENSIONS=1 -DUNICODE -D_UNICODE -D_WIN64 -DVELTOR_ARX_CHECK
       -nostdinc++ -isystem "$mingw_cxx/include/c++"
       -isystem "$mingw_cxx/include/c++/x86_64-w64-mingw32" -I src -Wall -Werror)
export_flags() { printf '%q ' "${flags[@]}"; }

sources() {
  find src/od src/ui src/commands src/app -name '*.cc' ! -name '*_test.cc' | sort
  find src/arx -maxdepth 1 -name '*.cpp' ! -name '*_mfc.cpp' | sort
}

# check_all LABEL INCLUDE_FLAGS...: syntax-checks every source in parallel; one line per
# failing file, its first error after it when VERBOSE is unset.
failures=0
check_all() {
  local label=$1; shift
  local log="$out/$label.log"
  : >"$log"
  sources | xargs -P "$jobs" -I{} sh -c '
    if ! clang++ -fsyntax-only '"$(export_flags)"' "$@" {} >"$0/$(echo {} | tr / _).err" 2>&1; then
      echo "{}" >>"$0/'"$label"'.log"
    fi' "$out" "$@"
  local failed
  failed=$(sort "$log")
  for file in $failed; do
    local first
    first=$(grep -m1 -E 'error:' "$out/$(echo "$file" | tr / _).err" | sed "s|^$root/||")
    echo "check-arx ($label): ${first:-$file: failed}"
    [ -n "${VERBOSE:-}" ] && cat "$out/$(echo "$file" | tr / _).err"
    failures=$((failures + 1))
  done
  echo "check-arx ($label): $(sources | wc -l) files, $(echo -n "$failed" | grep -c .) failed"
}

# 1. Against our declaration headers.
check_all sdk-decl -I src/arx/sdk

# 2. Against the real SDK, when given. Windows finds a header whatever the case of its name;
# the SDKs' headers include each other, and we include them, in cases that differ from their
# file names. A generated folder links every header under each spelling that some include
# uses (and under its lower-case name), so the same includes resolve here. The SDKs are
# system headers to the check: their own warnings are not ours to fix.
if [ -n "${ARX_SDK:-}" ]; then
  sdk_dirs=("$ARX_SDK/inc")
  [ -n "${MAP_SDK:-}" ] && sdk_dirs+=("$MAP_SDK/inc")
  missing=0
  for dir in "${sdk_dirs[@]}"; do
    [ -d "$dir" ] || { echo "check-arx: no SDK headers in $dir"; missing=1; }
  done
  # The 64-bit platform's few headers of their own, when the SDK has them.
  [ -d "$ARX_SDK/inc-x64" ] && sdk_dirs+=("$ARX_SDK/inc-x64")
  if [ $missing -eq 0 ]; then
    folded="$out/sdk-folded"
    rm -rf "$folded" && mkdir -p "$folded"
    declare -A by_lower=()
    includes=(-isystem "$folded")
    for dir in "${sdk_dirs[@]}"; do
      includes+=(-isystem "$dir")
      for header in "$dir"/*; do
        [ -f "$header" ] || continue
        name=$(basename "$header")
        lower=${name,,}
        [ -n "${by_lower[$lower]:-}" ] && continue
        by_lower[$lower]=$header
        ln -s "$header" "$folded/$lower"
      done
    done
    while IFS= read -r name; do
      case "$name" in */*|'') continue ;; esac
      target=${by_lower[${name,,}]:-}
      if [ -n "$target" ] && [ ! -e "$folded/$name" ]; then ln -s "$target" "$folded/$name"; fi
    done < <(grep -rhoE '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"][^>"]+[>"]' \
               "${sdk_dirs[@]}" src/od src/ui src/commands src/app src/arx 2>/dev/null \
             | sed -E 's/.*[<"]([^>"]+)[>"]/\1/' | sort -u)
    # The links' names differ in case from the files they point to, as Windows allows.
    check_all real-sdk "${includes[@]}" -Wno-nonportable-include-path
  else
    failures=$((failures + 1))
  fi
else
  echo "check-arx (real-sdk): skipped (set ARX_SDK, and MAP_SDK, to an SDK folder)"
fi

# 3. The smoke program, linked for Windows.
if [ -f tests/arx/win32_smoke.cpp ]; then
  if ! tests/arx/build_smoke.sh "$out" >"$out/smoke.log" 2>&1; then
    echo "check-arx (smoke): $(grep -m1 -E 'error|missing|not' "$out/smoke.log" || echo failed)"
    [ -n "${VERBOSE:-}" ] && cat "$out/smoke.log"
    failures=$((failures + 1))
  else
    echo "check-arx (smoke): $(tail -n1 "$out/smoke.log")"
  fi
fi

# 4. The plug-in's tests that run only inside the host (tests/arx/*.cpp: the host contract over
# the adapter), compiled for Windows. GoogleTest's headers come from the system through a
# folder that holds only them, so no other Linux header is on the path.
if [ -d /usr/include/gtest ]; then
  only_gtest="$out/only-gtest"
  mkdir -p "$only_gtest" && ln -sfn /usr/include/gtest "$only_gtest/gtest"
  tests=0
  for f in tests/arx/*.cpp; do
    tests=$((tests + 1))
    if ! clang++ -fsyntax-only "${flags[@]}" -isystem "$only_gtest" -I src/arx/sdk "$f" \
        >"$out/test.err" 2>&1; then
      echo "check-arx (host tests): $f: $(grep -m1 -E 'error:' "$out/test.err")"
      [ -n "${VERBOSE:-}" ] && cat "$out/test.err"
      failures=$((failures + 1))
    fi
  done
  echo "check-arx (host tests): $tests files compiled"
else
  echo "check-arx (host tests): skipped (/usr/include/gtest not found)"
fi

echo "check-arx: $failures failure(s)"
[ $failures -eq 0 ]
