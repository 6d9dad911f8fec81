#!/bin/sh
# Reference optima of the MPS examples that Debian's glpk-utils ships, for
# the e04st tests (tests/e04/data/glpk_mps_optima.txt).  The files are read
# as test input only; glpsol solves each one as a linear program (integer
# markers relaxed, --nomip) and its full-precision objective is recorded:
#     sh tools/glpk_mps_reference.sh > tests/e04/data/glpk_mps_optima.txt
# Columns: file, glpsol's status (f feasible optimal, u unbounded, n no
# feasible point), objective (0 when there is none).
set -e
dir=/usr/share/doc/glpk-utils/examples
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
echo "# file status objective   (sh tools/glpk_mps_reference.sh; glpsol $(glpsol --version | head -1 | sed 's/.* //'))"
for f in "$dir"/*.mps "$dir"/*.mps.gz; do
  [ -e "$f" ] || continue
  name=$(basename "$f" .gz)
  case "$f" in *.gz) gunzip -c "$f" > "$tmp/$name" ;; *) cp "$f" "$tmp/$name" ;; esac
  glpsol --mps "$tmp/$name" --nomip -w "$tmp/$name.sol" > "$tmp/$name.log" 2>&1 || true
  if grep -q 'UNBOUNDED PRIMAL' "$tmp/$name.log"; then
    echo "$name u 0"
  elif grep -q 'NO PRIMAL FEASIBLE' "$tmp/$name.log"; then
    echo "$name n 0"
  else
    awk -v n="$name" '$1 == "s" { print n, $6, $7 }' "$tmp/$name.sol"
  fi
done
