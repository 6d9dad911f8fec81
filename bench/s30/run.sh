#!/bin/sh
# The s30 benchmarks and the numpy/scipy script, one after the other in one
# session, then their tables and charts in docs/ (tools/bench_report.py).
# Usage: sh bench/s30/run.sh <build dir configured with -DZEM_BENCH=ON>
set -e
here=$(cd "$(dirname "$0")" && pwd)
cd "$1/bench/s30"
./s30_bench
/usr/bin/python3 "$here/s30_numpy.py" s30_bench.json
./s30_models_bench
/usr/bin/python3 "$here/../../tools/bench_report.py" s30_bench.json s30_models_bench.json
