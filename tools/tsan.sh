#!/usr/bin/env bash
# Builds the library and the concurrency tests with ThreadSanitizer and runs
# them: eight threads on distinct data (tests/threads, results bit for bit
# as in the serial run) and the nested and concurrent calls of tests/frame.
# A data race makes ThreadSanitizer report and the test fail.
set -eu
cd "$(dirname "$0")/.."
. tools/setup.sh
dir=build-tsan
cmake -S . -B "$dir" -DZEM_TESTS=ON -DZEM_TSAN=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$dir" -j"$(nproc)" --target threads_bitwise_c client_nested_and_threads_c
export TSAN_OPTIONS=halt_on_error=1:exitcode=66
cd "$dir"
ctest --output-on-failure -R '^(threads_bitwise_c|client_nested_and_threads_c)$'
