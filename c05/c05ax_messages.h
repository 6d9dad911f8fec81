// Failures of c05ax (see c05/message_table.h for the layout).
#pragma once

#include "c05/message_table.h"

namespace zem::c05 {

inline constexpr message c05ax_messages[] = {
    {2, 1001, "NE_INT",
     {"On initial entry, ind = %s.", "Constraint: ind = -1 or 1."},
     {"On initial entry, ind = %s", "Constraint: ind = -1 or 1."}},
    {2, 1002, "NE_INT",
     {"On intermediate entry, ind = %s.", "Constraint: ind = 2, 3 or 4."},
     {"On intermediate entry, ind = %s", "Constraint: ind = 2, 3 or 4."}},
    {1, 1003, "NE_REAL",
     {"On entry, tol = %s.", "Constraint: tol > 0.0."},
     {"On entry, tol = %s", "Constraint: tol > 0.0."}},
    {1, 1004, "NE_INT",
     {"On entry, ir = %s.", "Constraint: ir = 0, 1 or 2."},
     {"On entry, ir = %s", "Constraint: ir = 0, 1 or 2."}},
    {1, 1005, "NE_REAL_2",
     {"On entry, x = %s and scal = %s.", "Constraint: x+scal != x (to machine accuracy)."},
     {"On entry, x = %s and scal = %s", "Constraint: x+scal /= x (to machine accuracy)."}},
    {3, 1006, "NE_NO_SIGNIF_DERIV",
     {"Significant derivatives of f cannot be computed.",
      "f(x+scal) and f(x-scal) do not differ significantly from f(x),", "where x = %s and scal = %s."},
     {"Significant derivatives of f cannot be computed.",
      "f(x+scal) and f(x-scal) do not differ significantly from f(x),", "where x = %s and scal = %s"}},
    {4, 1007, "NE_CONT_AWAY_NOT_POSS",
     {"Continuation away from the initial point is not possible.",
      "No continuation step from the initial point x = %s", "could be taken in either direction."},
     {}},
    {5, 1008, "NE_CONT_PROB_NOT_SOLVED",
     {"Current problem in the continuation sequence cannot be solved.",
      "The path from the initial point was followed in both directions without",
      "reaching theta = 0. The point with the smallest |f| found is returned:", "x = %s, f(x) = %s."},
     {"Current problem in the continuation sequence cannot be solved.",
      "The path from the initial point was followed in both directions without",
      "reaching theta = 0. The point with the smallest |f| found is returned:", "x = %s, f(x) = %s"}},
    {5, 1011, "NE_CONT_PROB_NOT_SOLVED",
     {"Current problem in the continuation sequence cannot be solved.",
      "The state array c was changed between calls; restart the solve."},
     {}},
    {6, 1009, "NE_FINAL_PROB_NOT_SOLVED",
     {"Final problem (with theta_m = 0) cannot be solved.", "f changes sign at x = %s",
      "but |f| does not decrease there: f may have a pole or a jump at x."},
     {}},
    {6, 1010, "NE_FINAL_PROB_NOT_SOLVED",
     {"Final problem (with theta_m = 0) cannot be solved.", "The zero near x = %s",
      "cannot be located to within tol = %s:", "too much accuracy has been requested."},
     {}},
};

}  // namespace zem::c05
