// The partial ordering of the subinterval error list.
//
// After each bisection two intervals change: slot maxerr (the bisected
// interval, now holding the half with the larger error) and the new slot
// last-1.  iord lists interval numbers by decreasing error, but only its
// first jupbnd positions are kept in order: with k bisections left, only the
// k+1 largest errors can still be chosen, so once last > limit/2 + 2 the
// ordered part shrinks to limit + 3 - last.  The update
//   1. moves maxerr up if its error grew (possible for difficult integrands:
//      a bisection can increase the error estimate), starting from nrmax;
//   2. takes maxerr out and inserts it top-down from position nrmax + 1;
//   3. inserts the new interval bottom-up from position jupbnd - 1 (it has
//      the smaller of the two new errors, so it belongs below maxerr).
// An interval that falls below the ordered part is simply dropped from it.
//
// Positions here are 0-based; jupbnd and last are counts.

#include "quad_engine.h"

namespace zem::quad {

void order_update(int64_t limit, int64_t last, int64_t &maxerr, double &ermax, const double *elist,
                  int64_t *iord, int64_t &nrmax) {
  if (last <= 2) {
    iord[0] = 0;
    iord[1] = 1;
  } else {
    const double errmax = elist[maxerr];
    // 1. If the error of maxerr grew beyond entries above it, shift those down.
    for (int64_t steps = nrmax; steps > 0; --steps) {
      const int64_t above = iord[nrmax - 1];
      if (errmax <= elist[above]) break;
      iord[nrmax] = above;
      --nrmax;
    }
    const int64_t jupbnd = last > limit / 2 + 2 ? limit + 3 - last : last;
    const int64_t newest = last - 1;
    const double errmin = elist[newest];
    // 2. Top-down: entries below nrmax with a larger error move up one place;
    // maxerr goes where the first entry with an error not above its own stood.
    // Ordered positions are 0 .. jupbnd-1; maxerr may go as deep as jupbnd-2,
    // leaving at least jupbnd-1 for the new interval.
    const int64_t jbnd = jupbnd - 2;  // deepest position maxerr can take
    int64_t i = nrmax + 1;
    for (; i <= jbnd; ++i) {
      const int64_t isucc = iord[i];
      if (errmax >= elist[isucc]) break;
      iord[i - 1] = isucc;
    }
    if (i > jbnd) {
      iord[jbnd] = maxerr;
      iord[jbnd + 1] = newest;
    } else {
      iord[i - 1] = maxerr;
      // 3. Bottom-up from jbnd: entries with an error not above errmin move
      // down one place; the new interval goes above the first larger one.
      int64_t k = jbnd;
      bool placed = false;
      for (int64_t j = i; j <= jbnd; ++j) {
        const int64_t isucc = iord[k];
        if (errmin < elist[isucc]) {
          iord[k + 1] = newest;
          placed = true;
          break;
        }
        iord[k + 1] = isucc;
        --k;
      }
      if (!placed) iord[i] = newest;
    }
  }
  maxerr = iord[nrmax];
  ermax = elist[maxerr];
}

}  // namespace zem::quad
