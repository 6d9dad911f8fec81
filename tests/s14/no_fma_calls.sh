#!/bin/bash
# The fused multiply-add variants of the s14 kernels (s14/gamma_dispatch.cpp)
# are compiled for processors that have the instruction: a kernel piece left
# out of line is compiled for the baseline processor, and its fused
# multiply-adds become calls of the C library's fma, several times slower
# than the product they were meant to speed up.  No s14 function of the
# shared object ($1) may call fma.
set -euo pipefail
found=$(objdump -d -C --no-show-raw-insn "$1" |
  awk '/^[0-9a-f]+ <.*>:$/ { fn = $0 } /call.*<fma@plt>/ && fn ~ /zem::s14::/ { print fn }' | sort -u)
if [ -n "$found" ]; then
  echo "s14 functions calling fma out of line:"
  echo "$found"
  exit 1
fi
