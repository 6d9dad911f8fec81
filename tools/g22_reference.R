# Reference design matrices for chapter g22, written by R's model.matrix.
#
#   Rscript tools/g22_reference.R > tests/g22/data/design_reference.txt
#
# The data set: 24 observations of four categorical variables of 2, 3, 4
# and 5 levels (A, B, C, D; level numbers 1..L) and two continuous ones
# (x, z).  Each case gives the library's formula, the R formula it means,
# the default contrast and the per-variable contrasts, then R's matrix.
# Differences of spelling that the test maps: R's "(Intercept)" is the
# library's "Intercept".  The file is read by tests/g22/g22_reference_test.cpp;
# R is needed only to write it.
options(digits = 17)
set.seed(20261124)
n <- 24
A <- rep(1:2, length.out = n)
B <- rep(1:3, each = 2, length.out = n)
C <- sample(rep(1:4, length.out = n))
D <- sample(rep(1:5, length.out = n))
x <- round(rnorm(n), 3)
z <- round(runif(n, -2, 2), 3)
raw <- data.frame(A, B, C, D, x, z)
df <- data.frame(A = factor(A, levels = 1:2), B = factor(B, levels = 1:3), C = factor(C, levels = 1:4),
                 D = factor(D, levels = 1:5), x = x, z = z)

# The library's contrasts as R contrast functions; column names are the
# labels the library appends to the variable name.
contr.first <- function(n, contrasts = TRUE, sparse = FALSE) contr.treatment(n)
contr.last <- function(n, contrasts = TRUE, sparse = FALSE) contr.SAS(n)
contr.sumfirst <- function(n, contrasts = TRUE, sparse = FALSE) {
  levs <- if (length(n) <= 1L) as.character(seq_len(n)) else n
  k <- length(levs)
  m <- rbind(rep(-1, k - 1), diag(k - 1))
  dimnames(m) <- list(levs, levs[-1])
  m
}
contr.dummy <- function(n, contrasts = TRUE, sparse = FALSE) {
  levs <- if (length(n) <= 1L) as.character(seq_len(n)) else n
  m <- diag(length(levs))
  dimnames(m) <- list(levs, levs)
  m
}
rfun <- c("FIRST" = "contr.first", "LAST" = "contr.last", "SUM FIRST" = "contr.sumfirst",
          "SUM LAST" = "contr.sum", "HELMERT" = "contr.helmert", "POLYNOMIAL" = "contr.poly",
          "DUMMY" = "contr.dummy")

# formula (library) | formula (R) | default contrast | per-variable contrasts "A=HELMERT,B=DUMMY"
cases <- list(
  c("A", "~ A", "FIRST", ""),
  c("B", "~ B", "LAST", ""),
  c("C", "~ C", "SUM FIRST", ""),
  c("D", "~ D", "SUM LAST", ""),
  c("C", "~ C", "HELMERT", ""),
  c("D", "~ D", "POLYNOMIAL", ""),
  c("B", "~ B", "DUMMY", ""),
  c("x + z", "~ x + z", "FIRST", ""),
  c("A + B + C + D", "~ A + B + C + D", "FIRST", ""),
  c("A + B + C + D", "~ A + B + C + D", "LAST", ""),
  c("A + B + C + D", "~ A + B + C + D", "SUM FIRST", ""),
  c("A + B + C + D", "~ A + B + C + D", "SUM LAST", ""),
  c("A + B + C + D", "~ A + B + C + D", "HELMERT", ""),
  c("A + B + C + D", "~ A + B + C + D", "POLYNOMIAL", ""),
  c("A*B", "~ A*B", "FIRST", ""),
  c("A*B", "~ A*B", "SUM LAST", ""),
  c("B.C", "~ B*C", "HELMERT", ""),
  c("C*D", "~ C*D", "POLYNOMIAL", ""),
  c("B*C", "~ B*C", "LAST", ""),
  c("B*C", "~ B*C", "SUM FIRST", ""),
  c("A:B", "~ A:B", "FIRST", ""),
  c("A:B - 1", "~ A:B - 1", "FIRST", ""),
  c("A + B - 1", "~ A + B - 1", "FIRST", ""),
  c("B + C - 1", "~ B + C - 1", "SUM LAST", ""),
  c("C - 1", "~ C - 1", "POLYNOMIAL", ""),
  c("x*A", "~ x*A", "FIRST", ""),
  c("x:B", "~ x:B", "FIRST", ""),
  c("x:B + B", "~ x:B + B", "HELMERT", ""),
  c("A + B + A:B + x", "~ A + B + A:B + x", "FIRST", ""),
  c("A*B + x", "~ A*B + x", "SUM LAST", ""),
  c("A*B*C", "~ A*B*C", "FIRST", ""),
  c("A*B*C", "~ A*B*C", "HELMERT", ""),
  c("(A + B + C)^2", "~ (A + B + C)^2", "FIRST", ""),
  c("(A + B + x)^2", "~ (A + B + x)^2", "SUM FIRST", ""),
  c("(A + B + C + x)^3 - A:B:C", "~ (A + B + C + x)^3 - A:B:C", "FIRST", ""),
  c("A*B - A", "~ A*B - A", "FIRST", ""),
  c("A*B - B", "~ A*B - B", "LAST", ""),
  c("A:B + A", "~ A:B + A", "FIRST", ""),
  c("C:D", "~ C:D", "POLYNOMIAL", ""),
  c("x + x:z + z", "~ x + x:z + z", "FIRST", ""),
  c("x*z - 1", "~ x*z - 1", "FIRST", ""),
  c("A@HELMERT + B", "~ A + B", "FIRST", "A=HELMERT"),
  c("C@SUM FIRST + D@POLYNOMIAL", "~ C + D", "FIRST", "C=SUM FIRST,D=POLYNOMIAL"),
  c("B@DUMMY + C", "~ B + C", "FIRST", "B=DUMMY"),
  c("B@SUM LAST*C@LAST", "~ B*C", "FIRST", "B=SUM LAST,C=LAST"),
  c("D@HELMERT*x", "~ D*x", "SUM FIRST", "D=HELMERT"),
  c("A*(B + C)", "~ A*(B + C)", "FIRST", ""),
  c("A + B + C + D - C", "~ A + B + C + D - C", "HELMERT", ""),
  c("x + A:x - 1", "~ x + A:x - 1", "FIRST", ""),
  c("A:B:C - 1", "~ A:B:C - 1", "SUM LAST", "")
)

cat("# Written by: Rscript tools/g22_reference.R > tests/g22/data/design_reference.txt\n")
cat(sprintf("# %s\n", R.version.string))
cat(sprintf("DATA %d 6\n", n))
cat("NAMES A B C D x z\n")
cat("LEVELS 2 3 4 5 1 1\n")
for (i in seq_len(n)) cat(sprintf("%.17g", unlist(raw[i, ])), "\n")
for (cs in cases) {
  options(contrasts = rep(rfun[[cs[3]]], 2))
  carg <- list()
  if (nzchar(cs[4])) {
    for (p in strsplit(cs[4], ",")[[1]]) {
      kv <- strsplit(p, "=")[[1]]
      carg[[kv[1]]] <- rfun[[kv[2]]]
    }
  }
  mm <- if (length(carg)) model.matrix(as.formula(cs[2]), df, contrasts.arg = carg) else
    model.matrix(as.formula(cs[2]), df)
  cat(sprintf("CASE %s\n", cs[1]))
  cat(sprintf("CONTRAST %s\n", cs[3]))
  cat(sprintf("MX %d\n", ncol(mm)))
  cat("LABELS", colnames(mm), "\n")
  for (i in seq_len(n)) cat(sprintf("%.17g", mm[i, ]), "\n")
}
