// s30ca: binary (cash-or-nothing) options in the lognormal model over a grid.
#pragma once

#include "frame/frame.h"

// p(i, j) := the price of an option paying the amount k at expiry t(j) if
// the spot ends above (call) or below (put) x(i); layout as s30aa.
#define S30CA_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) V(const double *, k) \
  A(double *, p) V(const int64_t *, ldp) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail)     \
  U(size_t, calput_len)

ZEM_INTERNAL void s30cafn_(ZEM_PARAMS(S30CA_ARGS));
