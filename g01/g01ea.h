// g01ea: tail probability of the standard Normal distribution.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/engine.h"

// result := the probability that tail selects for the deviate x
// ('L' P(X <= x), 'U' P(X >= x), 'S' P(|X| >= |x|), 'C' P(|X| <= |x|)).
// Status 1: tail is not one of 'L', 'U', 'S', 'C' (either case); result 0.0.
ZEM_INTERNAL void g01eafn_(engine_data *en_data, const char *tail, const double *x, double *result,
                           char *errbuf, int64_t *ifail, size_t tail_len);
