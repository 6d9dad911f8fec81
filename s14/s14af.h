// s14af: the derivative of order k of the psi function, complex z.
#pragma once

#include "frame/frame.h"

// (rr, ri) := psi^(k)(z), z = zr + i zi, 0 <= k <= 4 (s14/complex_gamma.h).
// Status 1: k > 4 or k < 0 (result 0); 2: z a non-positive integer on the
// real axis (result the largest double for odd k, 0 for even k, imaginary
// part 0); 3: |psi^(k)(z)| beyond the largest double (z next to a pole, or
// |z| = inf with k = 0; result the largest double in the direction of the
// value).  |z| = inf with k >= 1 gives 0; a NaN part gives NaNs; status 0.
#define S14AF_ARGS(V, A, U) \
  V(const double *, zr) V(const double *, zi) V(const int64_t *, k) V(double *, rr) V(double *, ri) \
  V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14affn_(ZEM_PARAMS(S14AF_ARGS));
