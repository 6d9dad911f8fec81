// s15ae: the error function erf(x).
#pragma once

#include "frame/frame.h"

// result := erf(x).  No failure exit.
#define S15AE_ARGS(V, A, U) V(const double *, x) V(double *, result) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s15aefn_(ZEM_PARAMS(S15AE_ARGS));
