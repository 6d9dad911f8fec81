#!/usr/bin/env bash
# Fuzzes the option routines with libFuzzer under AddressSanitizer and UBSan:
#   bash tools/fuzz_e04_options.sh [seconds per target, default 600]
# Builds the frame and chapter e04 with clang (coverage-instrumented), the
# Fortran record writer with gfortran, and runs two targets, each from its
# seed corpus in tests/e04/fuzz/: option strings for e04zmc/e04znc, and
# option files for e04zpc.  New inputs go to build-fuzz/corpus-*; a finding
# stops the run with the crashing input saved in build-fuzz/.
# Needs clang-14, libclang-rt-14-dev and libfuzzer-14-dev.
set -eu
cd "$(dirname "$0")/.."
secs=${1:-600}
out=build-fuzz
mkdir -p "$out/obj" "$out/generated"
cxx=clang++-14
flags="-std=c++20 -g -O1 -fno-omit-frame-pointer -fsanitize=address,undefined -fno-sanitize-recover=undefined"
incs="-I. -Iinclude -I$out/generated"
: > "$out/generated/build_info.h"
gfortran -c -O1 -fdefault-integer-8 frame/x04io.f90 -o "$out/obj/x04io.o"
objs="$out/obj/x04io.o"
for src in frame/engine.cpp frame/report.cpp frame/tables.cpp frame/units.cpp frame/x04.cpp e04/*.cpp; do
  obj="$out/obj/$(echo "$src" | tr / _).o"
  if [ ! -e "$obj" ] || [ "$src" -nt "$obj" ]; then
    $cxx $flags -fsanitize=fuzzer-no-link $incs -c "$src" -o "$obj"
  fi
  objs="$objs $obj"
done
for target in E04ZM E04ZP; do
  lower=$(echo $target | tr A-Z a-z)
  $cxx $flags -fsanitize=fuzzer $incs -DZEM_FUZZ_$target tests/e04/fuzz/fuzz_e04_options.cpp $objs \
    -lgfortran -o "$out/fuzz_$lower"
  mkdir -p "$out/corpus-$lower"
  seeds=tests/e04/fuzz/${lower#e04}
  echo "== fuzz_$lower for $secs s"
  ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    "$out/fuzz_$lower" -max_total_time="$secs" -max_len=4096 -timeout=10 -print_final_stats=1 \
      -artifact_prefix="$out/" "$out/corpus-$lower" "$seeds" 2>&1 | grep -E "^#[0-9]+ *DONE|stat::number_of_executed_units|stat::peak_rss|ERROR|SUMMARY|Test unit written" || true
  ls "$out"/crash-* "$out"/leak-* "$out"/timeout-* 2>/dev/null && { echo "finding in fuzz_$lower"; exit 1; }
done
echo "no findings"
