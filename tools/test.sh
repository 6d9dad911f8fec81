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
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fi
cmake -S . -B "$dir" $flags >/dev/null
cmake --build "$dir" -j"$(nproc)"
cd "$dir"
if [ "${ZEM_VALGRIND:-0}" = 1 ]; then
  # Client programs run under valgrind inside their comparison (an error or
  # a leak changes the exit status); every unit-test program runs under it whole.
  vg="valgrind -q --leak-check=full --errors-for-leak-kinds=definite,indirect --error-exitcode=99"
  ZEM_RUN_PREFIX="$vg" ctest -j"$(nproc)" --output-on-failure -L client
  for prog in $(find tests -name '*_unit_tests' -type f -executable | sort); do
    echo "valgrind: $prog"
    $vg "$prog" --gtest_brief=1 || { echo "valgrind reports errors or leaks in $prog"; exit 1; }
  done
else
  ctest -j"$(nproc)" --output-on-failure
fi
