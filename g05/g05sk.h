// g05sk: pseudo-random variates from the Normal distribution, by inversion.
#pragma once

#include "frame/frame.h"

// x[0..n-1] := n variates from N(xmu, var), one uniform of state per variate;
// state advances in place.  Status 1: n < 0; 3: var < 0 (or NaN); 4 or 6:
// state invalid.  var = 0 gives n copies of xmu and draws nothing.
#define G05SK_ARGS(V, A, U)                                                                         \
  V(const int64_t *, n) V(const double *, xmu) V(const double *, var) A(int64_t *, state) A(double *, x) \
  V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void g05skfn_(ZEM_PARAMS(G05SK_ARGS));
