// Failures of c05au (see c05/message_table.h for the layout).  Details
// 1002-1004 are those of c05av, whose search reports them; 1006 and 1007
// read as the eps-too-small and probable-pole messages of c05ay.
#pragma once

#include "c05/message_table.h"

namespace zem::c05 {

inline constexpr message c05au_messages[] = {
    {1, 1001, "NE_REAL",
     {"On entry, eps = %s.", "Constraint: eps > 0.0."},
     {"On entry, eps = %s", "Constraint: eps > 0.0."}},
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
     {"On entry, x = %s and h = %s.", "Constraint: x+h != x (to machine accuracy)."},
     {"On entry, x = %s and h = %s", "Constraint: x+h /= x (to machine accuracy)."}},
    {2, 1006, "NE_TOO_SMALL",
     {"No further improvement in the solution is possible.", "eps is too small: eps = %s.",
      "The final value of x returned is an accurate approximation to the zero."},
     {"No further improvement in the solution is possible.", "eps is too small: eps = %s",
      "The final value of x returned is an accurate approximation to the zero."}},
    {3, 1007, "NE_PROBABLE_POLE",
     {"The function values in the interval [a,b] might contain",
      "a pole rather than a zero. Reducing eps may help in distinguishing between", "a pole and a zero."},
     {}},
    {4, 1008, "NE_NO_BRACKET",
     {"An interval containing the zero could not be found.",
      "Increasing h and calling c05auc again will increase the range searched for",
      "the zero. Decreasing h and calling c05auc again will refine the mesh used",
      "in the search for the zero."},
     {"An interval containing the zero could not be found.",
      "Increasing h and calling c05auf again will increase the range searched for",
      "the zero. Decreasing h and calling c05auf again will refine the mesh used",
      "in the search for the zero."}},
};

}  // namespace zem::c05
