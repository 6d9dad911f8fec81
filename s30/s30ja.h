// s30ja: European options in Merton's jump-diffusion model over a grid of
// strikes and expiries.
#pragma once

#include "frame/frame.h"

// p(i, j) := the price of a European call (calput 'C') or put ('P') with
// strike x(i) and expiry t(j), spot s, total volatility sigma, risk-free
// rate r, jump intensity lambda and jvol the share of the variance due to
// jumps; layout as s30aa.
#define S30JA_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, lambda)              \
  V(const double *, jvol) A(double *, p) V(const int64_t *, ldp) V(const int64_t *, order) V(char *, errbuf) \
  V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30jafn_(ZEM_PARAMS(S30JA_ARGS));
