#!/usr/bin/env bash
# Builds the library and runs every example program, printing its output.
set -eu
cd "$(dirname "$0")/.."
. tools/setup.sh
cmake -S . -B build -DZEM_TESTS=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build -j"$(nproc)"
ran=0 failed=""
for prog in build/examples/*; do
  [ -f "$prog" ] && [ -x "$prog" ] || continue
  echo "==== $(basename "$prog")"
  ran=$((ran + 1))
  (cd build/examples && "./$(basename "$prog")") || { echo "(exit status $?)"; failed="$failed $(basename "$prog")"; }
done
echo "demo: $ran example programs ran, $([ -z "$failed" ] && echo "all ended normally" || echo "failed:$failed")"
