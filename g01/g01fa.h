// g01fa: deviate of the standard Normal distribution for a tail probability.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/engine.h"

// result := the deviate x whose probability of the kind tail selects is p
// (the inverse of g01ea).  Status 1: tail invalid; status 2: p <= 0.0
// (detail 99998) or p >= 1.0 (detail 89998).  On failure result is 0.0.
ZEM_INTERNAL void g01fafn_(engine_data *en_data, const char *tail, const double *p, double *result,
                           char *errbuf, int64_t *ifail, size_t tail_len);
