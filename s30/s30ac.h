// s30ac: European options element by element.
#pragma once

#include "frame/frame.h"

// For k < n: p(k) := the price of the option calput(k) ('C' or 'P') with
// strike x(k), spot s(k), expiry t(k), volatility sigma(k), rate r(k) and
// dividend yield q(k); ivalid(k) := 0, or the number of the first argument
// of element k that is out of range (p(k) = 0.0 then).  calput holds n
// strings of calput_len characters.
#define S30AC_ARGS(V, A, U)                                                                                  \
  A(const char *, calput) V(const int64_t *, n) A(const double *, x) A(const double *, s) A(const double *, t) \
  A(const double *, sigma) A(const double *, r) A(const double *, q) A(double *, p) A(int64_t *, ivalid)      \
  V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30acfn_(ZEM_PARAMS(S30AC_ARGS));
