#!/usr/bin/env bash
# Fuzzes the option routines and the problem-file readers of chapter e04
# with libFuzzer under AddressSanitizer and UBSan:
#   bash tools/fuzz_e04.sh [seconds per target, default 600] [target ...]
# Targets (all by default, run one after the other, niced):
#   e04zm        option strings for e04zmc/e04znc   (tests/e04/fuzz/zm)
#   e04zp        option files for e04zpc            (tests/e04/fuzz/zp)
#   mps          MPS files for e04sac               (tests/e04/fuzz/mps)
#   sdpa         SDPA files for e04sac              (tests/e04/fuzz/sdpa)
#   sdpa_stream  SDPA streams for e04rdc            (tests/e04/fuzz/sdpa_stream;
#                the first three bytes of an input are the limits)
# Builds the frame and chapter e04 with clang (coverage-instrumented) and the
# Fortran record writer with gfortran; each target starts from its seed
# corpus (and the keyword dictionary tests/e04/fuzz/<target>.dict when there
# is one).  New inputs go to build-fuzz/corpus-<target>; a finding stops the
# run with the crashing input saved in build-fuzz/.
# Needs clang-14, libclang-rt-14-dev and libfuzzer-14-dev.
set -eu
cd "$(dirname "$0")/.."
secs=${1:-600}
shift || true
targets=${*:-e04zm e04zp mps sdpa sdpa_stream}
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
  if [ ! -e "$obj" ] || [ "$src" -nt "$obj" ] || [ -n "$(find e04 frame -name '*.h' -newer "$obj" | head -1)" ]; then
    nice -n 19 $cxx $flags -fsanitize=fuzzer-no-link $incs -c "$src" -o "$obj"
  fi
  objs="$objs $obj"
done
for target in $targets; do
  case $target in
    e04zm | e04zp) harness=tests/e04/fuzz/fuzz_e04_options.cpp seeds=tests/e04/fuzz/${target#e04} ;;
    mps | sdpa | sdpa_stream) harness=tests/e04/fuzz/fuzz_e04_readers.cpp seeds=tests/e04/fuzz/$target ;;
    *) echo "unknown target $target"; exit 2 ;;
  esac
  macro=ZEM_FUZZ_$(echo "$target" | tr a-z A-Z)
  nice -n 19 $cxx $flags -fsanitize=fuzzer $incs -D"$macro" "$harness" $objs -lgfortran -o "$out/fuzz_$target"
  mkdir -p "$out/corpus-$target"
  dict=
  [ -e "tests/e04/fuzz/${target%_stream}.dict" ] && dict="-dict=tests/e04/fuzz/${target%_stream}.dict"
  echo "== fuzz_$target for $secs s"
  ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    nice -n 19 "$out/fuzz_$target" -max_total_time="$secs" -max_len=4096 -timeout=10 -print_final_stats=1 $dict \
      -artifact_prefix="$out/" "$out/corpus-$target" "$seeds" 2>&1 |
    grep -E "^#[0-9]+ *DONE|stat::number_of_executed_units|stat::peak_rss|ERROR|SUMMARY|Test unit written|runtime error" || true
  ls "$out"/crash-* "$out"/leak-* "$out"/timeout-* "$out"/oom-* 2>/dev/null && { echo "finding in fuzz_$target"; exit 1; }
done
echo "no findings"
