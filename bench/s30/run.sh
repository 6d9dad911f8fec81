#!/bin/sh
# The s30 benchmark and the numpy/scipy script, one after the other in one
# session.  Usage: sh bench/s30/run.sh <build dir configured with -DZEM_BENCH=ON>
set -e
here=$(dirname "$0")
"$1/bench/s30/s30_bench" --benchmark_repetitions=9 --benchmark_report_aggregates_only=true
/usr/bin/python3 "$here/s30_numpy.py"
"$1/bench/s30/s30_models_bench" --benchmark_repetitions=9 --benchmark_report_aggregates_only=true
