#!/usr/bin/env bash
# Builds the library and runs the whole test suite.
#   ZEM_SANITIZE=1  build and run under AddressSanitizer and UBSan
#   ZEM_VALGRIND=1  run the suite's programs under valgrind's leak check
set -eu
cd "$(dirname "$0")/.."
extra=""
[ "${ZEM_VALGRIND:-0}" = 1 ] && extra="valgrind"
# The site, its browser check, the Debian packages and the MPI example need
# these too.
. tools/setup.sh $extra python3-sphinx python3-myst-parser chromium dpkg-dev libopenmpi-dev openmpi-bin
dir=build-test
flags="-DZEM_TESTS=ON -DCMAKE_BUILD_TYPE=Release"
if [ "${ZEM_SANITIZE:-0}" = 1 ]; then
  dir=build-sanitize
  flags="-DZEM_TESTS=ON -DZEM_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug"
  # (allocator_may_return_null: a request for memory that cannot exist
  #  must reach the library as a failed allocation, as it does in a
  #  normal run, where the library reports NE_ALLOC_FAIL.)
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:allocator_may_return_null=1
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fi
cmake -S . -B "$dir" $flags >/dev/null
cmake --build "$dir" -j"$(nproc)"
cd "$dir"
if [ "${ZEM_VALGRIND:-0}" = 1 ]; then
  # Client programs run under valgrind inside their comparison (an error or
  # a leak changes the exit status); every GoogleTest program of the suite
  # (the list CMake writes from zem_unit_test and the bad-input sweep, so
  # none is missed) runs under it whole.  The sweep runs in an empty
  # directory, as in ctest, with a longer alarm.
  # The processor-specific variants are chosen at run time; valgrind's
  # decoder (3.19) stops at the register form of vmovq that the compiler
  # emits in the AVX2 variant of the gamma kernels, so under valgrind the
  # library runs its baseline variants (the same bits; the tests still call
  # each random-number kernel set explicitly, and the sanitizer run covers
  # the AVX2 variants natively).
  export ZEM_ISA=baseline
  vg="valgrind -q --leak-check=full --errors-for-leak-kinds=definite,indirect --error-exitcode=99"
  ZEM_RUN_PREFIX="$vg" ctest -j"$(nproc)" --output-on-failure -L client
  while read -r prog; do
    echo "valgrind: $prog"
    (cd "$(mktemp -d)" && ZEM_BADINPUT_TIMEOUT=300 $vg "$prog" --gtest_brief=1) ||
      { echo "valgrind reports errors or leaks in $prog"; exit 1; }
  done < test_programs.txt
else
  # The wall time of the whole run, for tools/test_times.py (the cost table
  # of docs/guarantees.md).
  rm -f Testing/Temporary/ZemWallTime.txt
  t0=$(date +%s)
  ctest -j"$(nproc)" --output-on-failure
  echo "$(($(date +%s) - t0)) $(nproc)" > Testing/Temporary/ZemWallTime.txt
fi
