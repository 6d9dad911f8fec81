// s30fa: single-barrier options in the lognormal model over a grid.
#pragma once

#include "frame/frame.h"

// p(i, j) := the price of a call or put with strike x(i) and expiry t(j)
// that comes into existence (in) or ceases to exist (out) when the spot
// touches the barrier h from above (down) or below (up); btype 'DI', 'DO',
// 'UI' or 'UO'.  A knocked-out option pays the rebate k when the barrier is
// touched, a knock-in option that never came in pays k at expiry.  Layout
// as s30aa.
#define S30FA_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) A(const char *, btype) V(const int64_t *, m) V(const int64_t *, n)                 \
  A(const double *, x) V(const double *, s) V(const double *, h) V(const double *, k) A(const double *, t)   \
  V(const double *, sigma) V(const double *, r) V(const double *, q) A(double *, p) V(const int64_t *, ldp)  \
  V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len) U(size_t, btype_len)

ZEM_INTERNAL void s30fafn_(ZEM_PARAMS(S30FA_ARGS));
