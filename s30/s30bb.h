// s30bb: floating-strike lookback options with sensitivities.
#pragma once

#include "frame/frame.h"

// As s30ba, and delta, gamma, vega, theta and rho of each price, each an m
// by n matrix of the layout of p (docs/s30bb.md).
#define S30BB_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, sm) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) A(double *, p)     \
  V(const int64_t *, ldp) A(double *, delta) A(double *, gamma) A(double *, vega) A(double *, theta)         \
  A(double *, rho) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30bbfn_(ZEM_PARAMS(S30BB_ARGS));
