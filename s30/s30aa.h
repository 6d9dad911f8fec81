// s30aa: European options in the lognormal model, over a grid of strikes and
// expiries.
#pragma once

#include "frame/frame.h"

// p(i, j) := the price of a European call (calput 'C') or put ('P') with
// strike x(i) and expiry t(j), spot s, volatility sigma, risk-free rate r and
// dividend yield q; p(i, j) at position i*ri + j*cj (0-based), ri = 1 and
// cj = ldp for order 1 (column by column), ri = ldp and cj = 1 for order 2.
#define S30AA_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) A(double *, p)     \
  V(const int64_t *, ldp) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30aafn_(ZEM_PARAMS(S30AA_ARGS));
