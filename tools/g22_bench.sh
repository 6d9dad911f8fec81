#!/usr/bin/env bash
# The g22 design matrix benchmark side by side with R's model.matrix on the
# same data (A*B + x, A of 3 levels, B of 4, x continuous, 10^6
# observations):
#   bash tools/g22_bench.sh [repetitions]        (default 9)
# Needs libbenchmark-dev and r-base-core (bench only; the test suite needs
# neither).  Builds bench_g22 in build-bench (or $ZEM_BENCH_DIR), writes the data once, then runs
# bench_g22 and an Rscript one after the other and prints both medians, R's
# extra memory and the ratio.
set -eu
cd "$(dirname "$0")/.."
reps=${1:-9}
dir=${ZEM_BENCH_DIR:-build-bench}
cmake -S . -B "$dir" -DZEM_BENCH=ON -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" -j2 --target bench_g22 >/dev/null
data=$(mktemp /tmp/g22_bench.XXXXXX)
trap 'rm -f "$data"' EXIT
"$dir"/bench/g22/bench_g22 --write-data "$data"
"$dir"/bench/g22/bench_g22 --benchmark_repetitions="$reps" --benchmark_report_aggregates_only=true \
  --benchmark_filter='g22ycc_design|write_13_columns' | tee /tmp/g22_bench_zem.txt
Rscript - "$data" "$reps" <<'R' | tee /tmp/g22_bench_r.txt
args <- commandArgs(trailingOnly = TRUE)
n <- 1000000
v <- matrix(readBin(args[1], "double", 3 * n), ncol = 3, byrow = TRUE)
df <- data.frame(A = factor(v[, 1], levels = 1:3), B = factor(v[, 2], levels = 1:4), x = v[, 3])
rm(v)
options(contrasts = c("contr.treatment", "contr.poly"))
reps <- as.integer(args[2])
t <- numeric(reps)
for (k in seq_len(reps)) {
  gc()
  t[k] <- system.time(mm <- model.matrix(~ A*B + x, df))[["elapsed"]]
  rm(mm)
}
invisible(gc(reset = TRUE))
base <- sum(gc()[, 2])
mm <- model.matrix(~ A*B + x, df)
peak <- sum(gc()[, 6])
cat(sprintf("R model.matrix: median %.1f ms over %d runs (min %.1f, max %.1f)\n",
            1000 * median(t), reps, 1000 * min(t), 1000 * max(t)))
cat(sprintf("R model.matrix: %d columns; matrix %.1f MB; peak memory above the data %.1f MB\n",
            ncol(mm), as.numeric(object.size(mm)) / 2^20, peak - base))
R
zem=$(awk '/g22ycc_design\/real_time_median/ {print $2}' /tmp/g22_bench_zem.txt)
r=$(awk '/median/ {print $4; exit}' /tmp/g22_bench_r.txt)
awk -v z="$zem" -v r="$r" 'BEGIN { printf "ratio R / g22ycc (medians): %.1f\n", r / z }'
