#!/usr/bin/env bash
# run_mpi.sh <mpiexec> <np> <program> <expected>: runs the program on np
# processes and compares what it prints with the expected text.
# --oversubscribe: more processes than cores is fine for a test;
# --allow-run-as-root: test machines often run as root.
set -eu
mpiexec=$1 np=$2 prog=$3 expected=$4
export OMPI_MCA_btl_vader_single_copy_mechanism=none OMPI_MCA_rmaps_base_oversubscribe=1
out=$("$mpiexec" --oversubscribe --allow-run-as-root -np "$np" "$prog")
if [ "$out" != "$(cat "$expected")" ]; then
  diff <(echo "$out") "$expected" || true
  exit 1
fi
echo "$out"
