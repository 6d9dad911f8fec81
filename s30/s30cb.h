// s30cb: cash-or-nothing binary options with sensitivities over a grid.
#pragma once

#include "frame/frame.h"

// As s30ca, and delta, gamma, vega, theta and rho of each price, each an m
// by n matrix of the layout of p (docs/s30cb.md).
#define S30CB_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) V(const double *, k) \
  A(double *, p) V(const int64_t *, ldp) A(double *, delta) A(double *, gamma) A(double *, vega)             \
  A(double *, theta) A(double *, rho) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail)        \
  U(size_t, calput_len)

ZEM_INTERNAL void s30cbfn_(ZEM_PARAMS(S30CB_ARGS));
