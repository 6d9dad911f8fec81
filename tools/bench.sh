#!/usr/bin/env bash
# Builds and runs every benchmark program of bench/ (one folder per chapter,
# all on Google Benchmark through bench/zem_bench.h), then regenerates the
# tables of docs/benchmarks.md and the charts of docs/figures/ from their
# JSON with tools/bench_report.py (and the peers' accuracy tables of s14 with
# tools/doc_tables.py).
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
tables=()
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
    if [ "$name" = s14_peer_accuracy ]; then
      # Not timed: the errors of the peers on the reference points, tables
      # that tools/doc_tables.py puts into docs/benchmarks.md and
      # docs/s14-family-accuracy.md.
      "$prog" "$PWD" > "${dir}s14_peer_accuracy.txt"
      tables+=("${dir}s14_peer_accuracy.txt")
      continue
    fi
    (cd "$dir" && "./$name" "$@")
    # The g05 fill once more with each kernel set the processor runs, forced
    # by ZEM_ISA, each into a file of its own that says its set (the table
    # of docs/g05-generators.md, "bench-isa" markers).
    if [ "$name" = bench_g05 ]; then
      for isa in avx512 avx2 baseline; do
        case $isa in
          avx512) grep -qw avx512f /proc/cpuinfo || continue ;;
          avx2) grep -qw avx2 /proc/cpuinfo || continue ;;
        esac
        (cd "$dir" && ZEM_ISA=$isa "./$name" --benchmark_filter='^g05sa uniform fill' \
           --benchmark_context=zem_isa=$isa --benchmark_out="bench_g05_isa_$isa.json" "$@")
        results+=("${dir}bench_g05_isa_$isa.json")
      done
    fi
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
[ ${#tables[@]} = 0 ] || /usr/bin/python3 tools/doc_tables.py "${tables[@]}"
# e04kf beside SciPy's L-BFGS-B on the same problems (a Markdown table, also
# written into docs/benchmarks.md and docs/e04kf.md).
if [ -x build-bench/bench/e04/bench_e04kf ]; then
  /usr/bin/python3 bench/e04/bench_e04kf_compare.py build-bench/bench/e04/bench_e04kf 5 --docs
fi
