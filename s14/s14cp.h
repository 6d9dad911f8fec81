// s14cp: ln B(a[i], b[i]), the logarithm of the complete beta function, for a
// vector of pairs.
#pragma once

#include "frame/frame.h"

// f[i] := ln B(a[i], b[i]) = ln Gamma(a) + ln Gamma(b) - ln Gamma(a + b),
// i < n, with ivalid[i]: 0, 1 (a[i] <= 0 or b[i] <= 0; f[i] = 0), 2 (a[i] or
// b[i] = +inf, where ln B tends to -inf, or ln B below -1.7976931348623157e308;
// f[i] = -1.7976931348623157e308).  A
// NaN gives a NaN with ivalid 0.  Status 1: some ivalid[i] not 0 (a warning:
// f fully set); 2: n < 0.
#define S14CP_ARGS(V, A, U) \
  V(const int64_t *, n) A(const double *, a) A(const double *, b) A(double *, f) A(int64_t *, ivalid) \
  V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14cpfn_(ZEM_PARAMS(S14CP_ARGS));
