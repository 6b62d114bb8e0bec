#!/bin/sh
# Compiles (syntax only) the tests of the Windows plug-in's host, tests/arx/*.cpp, for the
# Windows target against the SDK declarations of src/arx/sdk, as the Windows check compiles
# src/arx. GoogleTest's headers come from the system (libgtest-dev), seen through a folder
# that holds only them so no other Linux header is on the path.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
gtest_dir=/usr/include/gtest
if [ ! -d "$gtest_dir" ]; then
  echo "check_arx_tests: skipped ($gtest_dir not found)"
  exit 0
fi
only_gtest=$(mktemp -d)
trap 'rm -rf "$only_gtest"' EXIT
ln -s "$gtest_dir" "$only_gtest/gtest"
mingw_cxx=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++
status=0
for f in tests/arx/*.cpp; do
  clang++ -fsyntax-only --target=x86_64-w64-windows-gnu -std=c++17 -fms-extensions \
    -fms-compatibility-version=19.16 -D_MSC_VER=1916 -DUNICODE -D_UNICODE -D_WIN64 \
    -DVELTOR_ARX_CHECK -nostdinc++ -isystem "$mingw_cxx" -isystem "$mingw_cxx/x86_64-w64-mingw32" \
    -isystem "$only_gtest" -I src -I src/arx/sdk -Wall "$f" || status=1
done
[ "$status" -eq 0 ] && echo "check_arx_tests: ok"
exit "$status"
