# R's model.matrix on the data and formulae of bench_g22, for
# bench/g22/g22_model_matrix.py (which runs this and adds the figures to
# bench_g22's JSON):
#   Rscript bench/g22/g22_model_matrix.R DATA NOBS REPS FORMULA...
# DATA: NOBS observations of five doubles each (A, B, C as level numbers,
# x, z), as `bench_g22 --write-data` writes them.  Prints a line a run:
#   run <formula index> <repetition> <CPU seconds> <columns>
# (the repetitions of all formulae shuffled, as the harness shuffles its
# own), then a line a formula:
#   memory <formula index> <bytes held at the peak of one call beyond the data>
# Treatment contrasts are R's default and the library's ("FIRST").
args <- commandArgs(trailingOnly = TRUE)
nobs <- as.integer(args[2])
reps <- as.integer(args[3])
formulae <- args[-(1:3)]
v <- matrix(readBin(args[1], "double", 5 * nobs), ncol = 5, byrow = TRUE)
df <- data.frame(A = factor(v[, 1], levels = 1:3), B = factor(v[, 2], levels = 1:4),
                 C = factor(v[, 3], levels = 1:5), x = v[, 4], z = v[, 5])
rm(v)
options(contrasts = c("contr.treatment", "contr.poly"))
fs <- lapply(formulae, function(f) as.formula(paste("~", f)))
set.seed(20261124)
for (k in seq_len(reps)) {
  for (i in sample(seq_along(fs))) {
    invisible(gc())
    t0 <- proc.time()
    mm <- model.matrix(fs[[i]], df)
    t1 <- proc.time()
    cpu <- (t1 - t0)[["user.self"]] + (t1 - t0)[["sys.self"]]
    cat(sprintf("run %d %d %.6f %d\n", i, k, cpu, ncol(mm)))
    rm(mm)
  }
}
for (i in seq_along(fs)) {
  invisible(gc())
  base <- sum(gc(reset = TRUE)[, 2])
  mm <- model.matrix(fs[[i]], df)
  peak <- sum(gc()[, 6])
  cat(sprintf("memory %d %.0f\n", i, (peak - base) * 2^20))
  rm(mm)
}
