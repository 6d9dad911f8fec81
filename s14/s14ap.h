// s14ap: ln Gamma of each element of a vector.
#pragma once

#include "frame/frame.h"

// f[i] := ln Gamma(x[i]), i < n, with ivalid[i] the status s14ab would give for x[i]:
// 0, or 1 (x <= 0, 0), 2 (x > 2.55e305, the largest double), f[i] then the substitute value.
// Status 1: at least one ivalid[i] is not 0 (a warning: f is fully set);
// 2: n < 0.
#define S14AP_ARGS(V, A, U) \
  V(const int64_t *, n) A(const double *, x) A(double *, f) A(int64_t *, ivalid) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14apfn_(ZEM_PARAMS(S14AP_ARGS));
