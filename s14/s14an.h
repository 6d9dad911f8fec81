// s14an: Gamma of each element of a vector.
#pragma once

#include "frame/frame.h"

// f[i] := Gamma(x[i]), i < n, with ivalid[i] the status s14aa would give for x[i]:
// 0, or 1 (x > 170, 4.3e304), 2 (x < -170, 0), 3 (|x| < 2.23e-308, +-4.4843049327354256e307), 4 (a negative integer, 4.3e304), f[i] then the substitute value.
// Status 1: at least one ivalid[i] is not 0 (a warning: f is fully set);
// 2: n < 0.
#define S14AN_ARGS(V, A, U) \
  V(const int64_t *, n) A(const double *, x) A(double *, f) A(int64_t *, ivalid) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14anfn_(ZEM_PARAMS(S14AN_ARGS));
