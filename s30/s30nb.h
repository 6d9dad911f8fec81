// s30nb: European options in Heston's stochastic-volatility model with
// sensitivities, by numerical quadrature.
#pragma once

#include "frame/frame.h"

// As s30na, and delta, gamma, vega (d/d sqrt(var0)), theta (-d/dt) and rho,
// each an m by n matrix of the layout of p (docs/s30nb.md).
#define S30NB_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigmav) V(const double *, kappa) V(const double *, corr)            \
  V(const double *, var0) V(const double *, eta) V(const double *, grisk) V(const double *, r)               \
  V(const double *, q) A(double *, p) V(const int64_t *, ldp) A(double *, delta) A(double *, gamma)          \
  A(double *, vega) A(double *, theta) A(double *, rho) V(const int64_t *, order) V(char *, errbuf)          \
  V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30nbfn_(ZEM_PARAMS(S30NB_ARGS));
