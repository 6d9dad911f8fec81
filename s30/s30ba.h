// s30ba: floating-strike lookback options in the lognormal model over a grid.
#pragma once

#include "frame/frame.h"

// p(i, j) := the price of a floating-strike lookback call (calput 'C',
// sm(i) the minimum of the spot so far) or put ('P', sm(i) the maximum so
// far) with expiry t(j); layout as s30aa, the sm(i) down a column.
#define S30BA_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, sm) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) A(double *, p)     \
  V(const int64_t *, ldp) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30bafn_(ZEM_PARAMS(S30BA_ARGS));
