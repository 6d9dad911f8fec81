#!/usr/bin/env bash
# Builds and runs every benchmark program of bench/ (one folder per chapter,
# all on Google Benchmark through bench/zem_bench.h), then regenerates the
# tables of docs/benchmarks.md and the charts of docs/figures/ from their
# JSON with tools/bench_report.py.
#   bash tools/bench.sh [--benchmark_* options passed to every program]
# Needs the peers the programs compare with (Debian: libbenchmark-dev,
# libgsl-dev, libboost-dev, libquantlib0-dev for bench/s30), python3-matplotlib
# for the charts and python3-scipy for numpy's s30 figures and the e04kf
# comparison with L-BFGS-B.  R's model.matrix is timed beside g22 when R is
# installed (Debian's r-base-core; not installed by this script: without
# Rscript the g22 tables show the C++ contenders alone).  All of them are
# bench-only: the test suite needs none.
set -eu
cd "$(dirname "$0")/.."
. tools/setup.sh libbenchmark-dev libgsl-dev libboost-dev libquantlib0-dev python3-matplotlib python3-scipy
cmake -S . -B build-bench -DZEM_TESTS=OFF -DZEM_BENCH=ON -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build-bench -j"$(nproc)"
results=()
for dir in build-bench/bench/*/; do
  for prog in "$dir"*; do
    [ -f "$prog" ] && [ -x "$prog" ] || continue
    name=$(basename "$prog")
    echo "==== $name"
    if [ "$name" = bench_d02 ]; then
      # Work against accuracy: 360 runs, three short repetitions each; its
      # own script draws the diagrams and writes the tables.
      (cd "$dir" && "./$name" --benchmark_repetitions=3 --benchmark_min_time=0.02 "$@")
      /usr/bin/python3 tools/d02_work_precision.py "${dir}bench_d02.json" docs >/dev/null
      continue
    fi
    (cd "$dir" && "./$name" "$@")
    # numpy/scipy beside s30aa, added to the same JSON file in this session
    if [ "$name" = s30_bench ]; then /usr/bin/python3 bench/s30/s30_numpy.py "${dir}s30_bench.json"; fi
    # R's model.matrix on the same data and formulae as bench_g22, likewise
    # (only where R is installed)
    if [ "$name" = bench_g22 ]; then
      if command -v Rscript >/dev/null; then
        /usr/bin/python3 bench/g22/g22_model_matrix.py "$prog" "${dir}bench_g22.json"
      else
        echo "Rscript not found (Debian: r-base-core): g22 without R's model.matrix"
      fi
    fi
    [ -f "$dir$name.json" ] && results+=("$dir$name.json")
  done
done
/usr/bin/python3 tools/bench_report.py "${results[@]}"
# e04kf beside SciPy's L-BFGS-B on the same problems (a Markdown table, also
# written into docs/benchmarks.md and docs/e04kf.md).
if [ -x build-bench/bench/e04/bench_e04kf ]; then
  /usr/bin/python3 bench/e04/bench_e04kf_compare.py build-bench/bench/e04/bench_e04kf 5 --docs
fi
