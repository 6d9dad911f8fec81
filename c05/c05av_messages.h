// Failures of c05av (see c05/message_table.h for the layout).
#pragma once

#include "c05/message_table.h"

namespace zem::c05 {

inline constexpr message c05av_messages[] = {
    {2, 1001, "NE_INT",
     {"On entry, ind = %s.", "Constraint: ind = -1, 1, 2 or 3."},
     {"On entry, ind = %s", "Constraint: ind = -1, 1, 2 or 3."}},
    {1, 1002, "NE_REAL_2",
     {"On entry, boundl = %s,", "boundu = %s.", "Constraint: boundl < boundu."},
     {"On entry, boundl = %s,", "boundu = %s", "Constraint: boundl < boundu."}},
    {1, 1003, "NE_3_REAL_ARG_CONS",
     {"On entry, x = %s,", "boundl = %s and boundu = %s.", "Constraint: boundl <= x <= boundu."},
     {"On entry, x = %s,", "boundl = %s and boundu = %s", "Constraint: boundl <= x <= boundu."}},
    {1, 1004, "NE_4_REAL_ARG_CONS",
     {"On entry, x = %s and h = %s,", "boundl = %s and boundu = %s.",
      "Constraint: either x+h or x-h must lie inside the closed interval", "[boundl,boundu]."},
     {"On entry, x = %s and h = %s,", "boundl = %s and boundu = %s",
      "Constraint: either x+h or x-h must lie inside the closed interval", "[boundl,boundu]."}},
    {1, 1005, "NE_REAL_2",
     {"On entry, x = %s and h = %s.", "Constraint: h must be sufficiently large that x+h != x on the computer."},
     {"On entry, x = %s and h = %s", "Constraint: h must be sufficiently large that x+h /= x on the computer."}},
    {3, 1006, "NE_NO_BRACKET",
     {"An interval containing the zero could not be found.", "Try restarting with modified x and h."},
     {}},
    {3, 1007, "NE_NO_BRACKET",
     {"An interval containing the zero could not be found.",
      "The state array c was changed between calls; restart the search."},
     {}},
};

}  // namespace zem::c05
