#!/usr/bin/env bash
# Regenerates every accuracy figure of docs/ from one run against the
# checked-in reference data (tests/*/data, mpmath values made by the
# tools/*_reference.py scripts):
#   bash tools/accuracy_tables.sh [build dir]      (default build; configured
#                                                   with -DZEM_TESTS=ON)
# The report programs print their tables with <!-- table:<key> --> lines
# (kept in <build dir>/accuracy/*.txt) and tools/doc_tables.py puts each
# between the markers <!-- table:<key> begin/end --> of the pages:
#   tests/s14/s14_accuracy_report   docs/s14aa.md, docs/s14ab.md
#   tests/g01/g01_accuracy_report   docs/g01ea.md, docs/g01fa.md, docs/s15ad.md, docs/s15ae.md
#   tools/s30fa_accuracy.py         docs/s30fa.md
#   tools/s14_beta_sweep.py report  docs/s14cc.md, docs/s14cp.md
#   tools/g05_dieharder_table.py    docs/g05-generators.md (the summary of
#                                   docs/g05-dieharder.txt, tools/g05_dieharder.sh's
#                                   output, which takes too long to rerun here)
# then tools/accuracy_plots.py redraws docs/accuracy.md and its plots.  The
# tables beside the peers (GSL, Boost) come from the bench-only program
# bench/s14/s14_peer_accuracy, which tools/bench.sh runs.
#   bash tools/accuracy_tables.sh --check <build dir> <scratch dir>
# (the test docs_accuracy_tables) runs the same programs, except the sweep
# and the plots (which need mpmath), on a built tree, writes nothing in
# docs/ and fails unless the pages show exactly their tables.
# Needs: python3-mpmath, python3-matplotlib (the plots), GSL's shared library
# for the plots' GSL column (optional).
set -eu
cd "$(dirname "$0")/.."
check=0
if [ "${1:-}" = --check ]; then
  check=1
  build=$2
  out=$3
else
  build=${1:-build}
  out="$build/accuracy"
  . tools/setup.sh python3-mpmath python3-matplotlib
  cmake --build "$build" -j"$(nproc)" --target zem s14_accuracy_report g01_accuracy_report
fi
mkdir -p "$out"
rm -f "$out"/*.txt
"$build/tests/s14/s14_accuracy_report" "$PWD" > "$out/s14_accuracy_report.txt"
"$build/tests/g01/g01_accuracy_report" "$PWD/tests" > "$out/g01_accuracy_report.txt"
/usr/bin/python3 tools/s30fa_accuracy.py "$build/libzem.so" . > "$out/s30fa_accuracy.txt"
/usr/bin/python3 tools/g05_dieharder_table.py docs/g05-dieharder.txt > "$out/g05_dieharder_table.txt"
if [ $check = 1 ]; then
  /usr/bin/python3 tools/doc_tables.py --check "$out"/*.txt ||
    { echo "regenerate them: bash tools/accuracy_tables.sh $build"; exit 1; }
  exit 0
fi
/usr/bin/python3 tools/s14_beta_sweep.py report "$build/libzem.so" . > "$out/s14_beta_sweep.txt"
/usr/bin/python3 tools/doc_tables.py "$out"/*.txt
/usr/bin/python3 tools/accuracy_plots.py "$build/libzem.so" docs >/dev/null
echo "accuracy tables and plots regenerated from $build"
