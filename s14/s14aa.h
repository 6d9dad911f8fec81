// s14aa: the gamma function Gamma(x).
#pragma once

#include "frame/frame.h"

// result := Gamma(x).  Status 1: x > 170 (result 4.3e304); 2: x < -170
// (result 0); 3: |x| < 2.23e-308 (result +-4.4843049327354256e307, + for 0);
// 4: x a negative integer (result 4.3e304).  A NaN gives a NaN, status 0.
#define S14AA_ARGS(V, A, U) V(const double *, x) V(double *, result) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14aafn_(ZEM_PARAMS(S14AA_ARGS));
