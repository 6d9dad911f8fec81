// s14ae: the derivative of order k of the psi function, real x.
#pragma once

#include "frame/frame.h"

// result := psi^(k)(x), 0 <= k <= 6 (s14/psi.h).  Status 1: k > 6 or k < 0
// (result 0); 2: x a non-positive integer (every x <= -2^52 is one; result
// the largest double for odd k, where psi^(k) tends to +inf from both sides,
// 0 for even k, where the sides differ); 3: |result| below the smallest normal
// number (x large, k >= 1; result 0); 4: |result| above the largest double
// (x next to a pole, or x = +inf with k = 0; result +-1.7976931348623157e308
// with the sign of psi^(k)).  A NaN gives a NaN with status 0.
#define S14AE_ARGS(V, A, U) V(const double *, x) V(const int64_t *, k) V(double *, result) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14aefn_(ZEM_PARAMS(S14AE_ARGS));
