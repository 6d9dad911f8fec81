// g05sk: pseudo-random variates from the Normal distribution, by inversion.
#pragma once

#include <cstdint>

#include "frame/engine.h"

// x[0..n-1] := n variates from N(xmu, var), one uniform of state per variate;
// state advances in place.  Status 1: n < 0; 3: var < 0 (or NaN); 4 or 6:
// state invalid.  var = 0 gives n copies of xmu and draws nothing.
ZEM_INTERNAL void g05skfn_(engine_data *en_data, const int64_t *n, const double *xmu, const double *var,
                           int64_t *state, double *x, char *errbuf, int64_t *ifail);
