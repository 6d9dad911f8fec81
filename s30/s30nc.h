// s30nc: European options in Heston's stochastic-volatility model with
// piecewise-constant parameters (a term structure), by numerical quadrature.
#pragma once

#include "frame/frame.h"

// p(i) := the price of a European call ('C') or put ('P') with strike x(i)
// and expiry t, forward fwd and discount factor disc to t, initial variance
// var0, and in period k (of length ts(k)) volatility of variance alpha(k),
// mean reversion lambda(k), correlation corr(k) and long-run volatility
// sigmat(k).
#define S30NC_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, numts) A(const double *, x)              \
  V(const double *, fwd) V(const double *, disc) A(const double *, ts) V(const double *, t)                 \
  A(const double *, alpha) A(const double *, lambda) A(const double *, corr) A(const double *, sigmat)      \
  V(const double *, var0) A(double *, p) V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30ncfn_(ZEM_PARAMS(S30NC_ARGS));
