// s14ag: ln Gamma(z) for complex z.
#pragma once

#include "frame/frame.h"

// (rr, ri) := ln Gamma(z), z = zr + i zi, the analytic continuation from the
// positive reals (imaginary part continuous off the non-positive real axis;
// on it the limit from the side of the sign of zi) (s14/complex_gamma.h).
// Status 1: z a non-positive integer on the real axis (every real z <= -2^52
// is one; result the largest double, 0); 2: |z| > 2.55e305 or infinite
// (result +-the largest double with the sign of Re(z ln z - z), 0).  A NaN
// part gives NaNs with status 0.
#define S14AG_ARGS(V, A, U) \
  V(const double *, zr) V(const double *, zi) V(double *, rr) V(double *, ri) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14agfn_(ZEM_PARAMS(S14AG_ARGS));
