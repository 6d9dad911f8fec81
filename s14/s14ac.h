// s14ac: psi(x) - ln x for x > 0.
#pragma once

#include "frame/frame.h"

// result := psi(x) - ln x.  Status 1: x <= 0 (result 0); 2: x so large that
// the result underflows (x > 2.2e307; result 0); 3: x so small that it
// overflows (x < 2.2250738585072014e-308; result minus the largest double).
// A NaN gives a NaN with status 0.
#define S14AC_ARGS(V, A, U) V(const double *, x) V(double *, result) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14acfn_(ZEM_PARAMS(S14AC_ARGS));
