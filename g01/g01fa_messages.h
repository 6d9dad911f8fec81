// g01fa's failures as each interface words them.  Both ends of 0 < p < 1
// share status 2; the detail code tells them apart (99998 p <= 0.0, 89998
// p >= 1.0).
#pragma once

#include "frame/messages.h"

inline constexpr zem::message g01fa_messages[] = {
    {1, 1001, NE_BAD_PARAM, {"On entry, parameter tail had an illegal value."},
     {"On entry, tail = '%s'.", "Constraint: tail = 'L', 'U', 'S' or 'C'."}},
    {2, 99998, NE_REAL_ARG_LE, {"On entry, p = %s.", "Constraint: p > 0.0."}},
    {2, 89998, NE_REAL_ARG_GE, {"On entry, p = %s.", "Constraint: p < 1.0."}},
};
