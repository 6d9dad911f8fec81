// s14cc: the regularised incomplete beta function I_x(a, b) and 1 - I_x(a, b).
#pragma once

#include "frame/frame.h"

// w := I_x(a, b), w1 := 1 - I_x(a, b), each formed directly where it is the
// smaller (s14/beta.h).  Status 1: a < 0, b < 0, or x outside [0, 1]; 2: a =
// b = 0, x = a = 0, or 1 - x = b = 0 (w = w1 = 0 for both).  a = 0 or b =
// +inf give w = 1 (x > 0); b = 0 or a = +inf give w = 0 (x < 1); a NaN, or a
// = b = +inf, gives NaNs with status 0.
#define S14CC_ARGS(V, A, U) \
  V(const double *, a) V(const double *, b) V(const double *, x) V(double *, w) V(double *, w1) V(char *, errbuf) \
  V(int64_t *, ifail)

ZEM_INTERNAL void s14ccfn_(ZEM_PARAMS(S14CC_ARGS));
