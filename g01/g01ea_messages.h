// g01ea's failures as each interface words them.  The C entry rejects an
// unknown tail enumeration member itself (NE_BAD_PARAM naming "tail"), so the
// row's C text only serves a record that reaches the C entry regardless.
#pragma once

#include "frame/messages.h"

inline constexpr zem::message g01ea_messages[] = {
    {1, 1001, NE_BAD_PARAM, {"On entry, parameter tail had an illegal value."},
     {"On entry, tail = '%s'.", "Constraint: tail = 'L', 'U', 'S' or 'C'."}},
};
