// s30na: European options in Heston's stochastic-volatility model over a
// grid of strikes and expiries, by numerical quadrature.
#pragma once

#include "frame/frame.h"

// p(i, j) := the price of a European call ('C') or put ('P') with strike
// x(i) and expiry t(j), spot s, volatility of variance sigmav, mean
// reversion kappa, correlation corr, initial variance var0, long-run
// variance eta, variance risk parameter grisk, rate r, dividend yield q;
// layout as s30aa.
#define S30NA_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigmav) V(const double *, kappa) V(const double *, corr)            \
  V(const double *, var0) V(const double *, eta) V(const double *, grisk) V(const double *, r)               \
  V(const double *, q) A(double *, p) V(const int64_t *, ldp) V(const int64_t *, order) V(char *, errbuf)    \
  V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30nafn_(ZEM_PARAMS(S30NA_ARGS));
