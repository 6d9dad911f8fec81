// Failures of c05aw (see c05/message_table.h for the layout).
#pragma once

#include "c05/message_table.h"

namespace zem::c05 {

inline constexpr message c05aw_messages[] = {
    {1, 1001, "NE_REAL",
     {"On entry, eps = %s.", "Constraint: eps > 0.0."},
     {"On entry, eps = %s", "Constraint: eps > 0.0."}},
    {1, 1002, "NE_INT",
     {"On entry, nfmax = %s.", "Constraint: nfmax > 0."},
     {"On entry, nfmax = %s", "Constraint: nfmax > 0."}},
    {2, 1003, "NE_BAD_INTERNAL_SCALE",
     {"Internal scale factor invalid for this problem.", "Consider using c05axc instead and setting scal."},
     {"Internal scale factor invalid for this problem.", "Consider using c05axf instead and setting scal."}},
    {3, 1004, "NE_TOO_MANY_CALLS",
     {"More than nfmax calls have been made to f.",
      "Either f has no zero near x or too much accuracy has been requested.",
      "Check the coding of f or increase eps."},
     {}},
};

}  // namespace zem::c05
