// s15ad: the complementary error function erfc(x).
#pragma once

#include "frame/frame.h"

// result := erfc(x).  No failure exit.
#define S15AD_ARGS(V, A, U) V(const double *, x) V(double *, result) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s15adfn_(ZEM_PARAMS(S15AD_ARGS));
