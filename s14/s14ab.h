// s14ab: the logarithm of the gamma function, ln Gamma(x), x > 0.
#pragma once

#include "frame/frame.h"

// result := ln Gamma(x).  Status 1: x <= 0 (result 0); 2: x > 2.55e305
// (result the largest double).  A NaN gives a NaN, status 0.
#define S14AB_ARGS(V, A, U) V(const double *, x) V(double *, result) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14abfn_(ZEM_PARAMS(S14AB_ARGS));
