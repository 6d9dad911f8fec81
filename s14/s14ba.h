// s14ba: the regularised incomplete gamma functions P(a, x) and Q(a, x).
#pragma once

#include "frame/frame.h"

// p := P(a, x), q := Q(a, x) = 1 - P(a, x), to relative accuracy tol (machine
// precision where tol is below it or not below 1).  Status 1: a <= 0; 2:
// x < 0 (p = q = 0 for both); 3: the iteration did not end within its bound
// (p and q the last values).  a = inf gives p = 0, q = 1; x = inf gives p = 1,
// q = 0; a NaN argument gives NaNs with status 0.
#define S14BA_ARGS(V, A, U) \
  V(const double *, a) V(const double *, x) V(const double *, tol) V(double *, p) V(double *, q) \
  V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14bafn_(ZEM_PARAMS(S14BA_ARGS));
