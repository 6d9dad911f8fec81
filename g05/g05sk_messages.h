// g05sk's failures as each interface words them.
#pragma once

#include "frame/messages.h"

inline constexpr zem::message g05sk_messages[] = {
    {1, 1001, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
    {3, 1002, NE_REAL, {"On entry, var = %s.", "Constraint: var >= 0.0."}},
    {4, 1003, NE_INVALID_STATE, {"On entry, state vector has been corrupted or not initialized."}},
    {6, 1004, NE_INVALID_STATE, {"On entry, state vector has been corrupted or not initialized."}},
};
