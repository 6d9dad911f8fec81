// s30ab: European options in the lognormal model with eleven sensitivities.
#pragma once

#include "frame/frame.h"

// As s30aa, and the sensitivities of each price, each an m by n matrix of
// the same layout as p (docs/s30ab.md gives the formulas).
#define S30AB_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) A(double *, p)     \
  V(const int64_t *, ldp) A(double *, delta) A(double *, gamma) A(double *, vega) A(double *, theta)         \
  A(double *, rho) A(double *, vanna) A(double *, charm) A(double *, speed) A(double *, colour)              \
  A(double *, zomma) A(double *, vomma) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail)      \
  U(size_t, calput_len)

ZEM_INTERNAL void s30abfn_(ZEM_PARAMS(S30AB_ARGS));
