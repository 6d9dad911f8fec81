#!/usr/bin/env bash
# Fuzzes the g22 formula parser and option strings with libFuzzer under
# AddressSanitizer and UndefinedBehaviorSanitizer.
#   bash tools/g22_fuzz.sh [seconds]      (default 600)
# Needs clang-14 and libclang-rt-14-dev (Debian); not part of the test
# suite.  The chapter and the frame are compiled with the sanitizers and
# coverage into one program with the target tests/g22/fuzz/g22_fuzz.cpp;
# the corpus starts from tests/g22/fuzz/corpus (new finds go to a scratch
# copy, so the repository's corpus stays small).  Any finding stops the
# run and leaves its input as crash-*/leak-* in the scratch directory.
set -eu
cd "$(dirname "$0")/.."
secs=${1:-600}
out=${ZEM_FUZZ_DIR:-build-fuzz}
mkdir -p "$out/corpus" "$out/obj"
cp -n tests/g22/fuzz/corpus/* "$out/corpus/" 2>/dev/null || true
cxx=clang++-14
flags="-std=c++20 -O1 -g -fno-omit-frame-pointer -fsanitize=address,undefined -fno-sanitize-recover=undefined"
# The build identification header the frame includes.
mkdir -p "$out/generated"
sed -e 's/@ZEM_RELEASE@/fuzz/g' -e 's/@[A-Z_]*@/fuzz/g' frame/build_info.h.in > "$out/generated/build_info.h"
gfortran -c -fdefault-integer-8 frame/x04io.f90 -J "$out/obj" -o "$out/obj/x04io.o"
objs="$out/obj/x04io.o"
for src in g22/*.cpp frame/*.cpp; do
  o="$out/obj/$(basename "$src" .cpp).o"
  $cxx $flags -fsanitize=fuzzer-no-link -I. -Iinclude -I"$out/generated" -c "$src" -o "$o"
  objs="$objs $o"
done
$cxx $flags -fsanitize=fuzzer -Iinclude tests/g22/fuzz/g22_fuzz.cpp $objs -lgfortran -o "$out/g22_fuzz"
cd "$out"
export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
./g22_fuzz -max_total_time="$secs" -max_len=512 -timeout=25 -rss_limit_mb=2048 -print_final_stats=1 corpus
