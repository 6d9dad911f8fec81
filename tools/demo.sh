#!/usr/bin/env bash
# Builds the library and runs every example program, printing its output.
set -eu
cd "$(dirname "$0")/.."
. tools/setup.sh
cmake -S . -B build -DZEM_TESTS=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build -j"$(nproc)"
for prog in build/examples/*; do
  [ -f "$prog" ] && [ -x "$prog" ] || continue
  echo "==== $(basename "$prog")"
  (cd build/examples && "./$(basename "$prog")") || echo "(exit status $?)"
done
