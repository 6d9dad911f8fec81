#!/usr/bin/env bash
# Runs Debian's dieharder on the stream of every g05 base generator and of
# ten Wichmann-Hill I members (not part of the test suite; minutes).
#   usage: tools/g05_dieharder.sh <build dir with libzem.so>   > results.txt
# Each stream is seed 1762 through g05kfc/g05sac, as 32-bit words
# floor(u 2^32) (tools/g05_stream.c).  The tests: birthdays, OPERM5, the two
# binary-rank tests, bitstream, count-the-1s (stream and byte), parking lot,
# minimum distance (2d circle), 3d spheres, squeeze, runs, craps, STS
# monobit, runs and serial, and the bit distribution test for 1 to 8 bits.
set -eu
build=${1:?build directory}
here=$(cd "$(dirname "$0")" && pwd)
prog=$(mktemp -d)/g05_stream
gcc -std=c99 -O2 -Wall -I"$here/../include" "$here/g05_stream.c" -L"$build" -lzem \
  -Wl,-rpath,"$(cd "$build" && pwd)" -o "$prog"
tests="0 1 2 3 4 8 9 10 11 12 13 15 16 100 101 102"
run() {
  echo "### $1"
  for d in $tests; do
    "$prog" $2 | nice dieharder -g 200 -d "$d" 2>/dev/null | grep -E '\|.*(PASSED|WEAK|FAILED)'
  done
  for n in 1 2 3 4 5 6 7 8; do
    "$prog" $2 | nice dieharder -g 200 -d 200 -n "$n" 2>/dev/null | grep -E '\|.*(PASSED|WEAK|FAILED)'
  done
}
names=("" "basic" "Wichmann-Hill I member 0" "Mersenne Twister" "Wichmann-Hill II" "ACORN" "MRG32k3a")
for g in 1 2 3 4 5 6; do run "genid $g: ${names[$g]}" "$g 0"; done
for m in 1 27 55 81 109 136 164 190 218 272; do run "genid 2: Wichmann-Hill I member $m" "2 $m"; done
