// s14ad: scaled derivatives of the psi function, m consecutive orders.
#pragma once

#include "frame/frame.h"

// ans[j] := (-1)^(k+1) psi^(k)(x) / k!, k = n + j, j < m, x > 0: -psi(x) for
// k = 0 and the Hurwitz zeta function zeta(k + 1, x) for k >= 1, all positive
// but the first.  Status 1: x <= 0 (also -inf); 2: n < 0; 3: m < 1; 4: some
// ans[j] below the smallest normal number (those set to 0, the others
// computed); 5: some ans[j] above the largest double (those set to the largest
// double, or -max for -psi(+inf)); 6: m > 100, the internal workspace.
// Statuses 1-3 set every ans[j] to 0 when 1 <= m <= 100; with m > 100
// nothing is written.  A NaN x gives NaNs with status 0.
#define S14AD_ARGS(V, A, U) \
  V(const double *, x) V(const int64_t *, n) V(const int64_t *, m) A(double *, ans) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14adfn_(ZEM_PARAMS(S14AD_ARGS));
