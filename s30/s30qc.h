// s30qc: American options by a closed-form approximation over a grid.
#pragma once

#include "frame/frame.h"

// p(i, j) := the approximate price of an American call (calput 'C') or put
// ('P') with strike x(i) and expiry t(j); layout as s30aa.
#define S30QC_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, q) A(double *, p)     \
  V(const int64_t *, ldp) V(const int64_t *, order) V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30qcfn_(ZEM_PARAMS(S30QC_ARGS));
