// The adaptive engines of chapter d01 and their two helpers.
//
//   adaptive_extrapolated  globally adaptive bisection with Wynn's epsilon
//                          algorithm on the sequence of partial sums
//                          (d01rj, d01aj, d01rm)
//   adaptive_plain         the same bisection without extrapolation (d01rk)
//   adaptive_breakpoints   extrapolated bisection that starts from a partition
//                          at the user's break points and measures the size of
//                          an interval by its bisection level (d01rl)
//   epsilon_extrapolate    one step of the epsilon algorithm
//   order_update           the partial ordering of the error list
//
// The engines allocate nothing: the lists live in the caller's quad_lists.
// Their codes are the reported ones (0 success, 1 subdivision limit, 2
// round-off, 3 bad integrand behaviour, 4 round-off in the extrapolation
// table, 5 divergence), or stop != 0 when the integrand asked to stop.
#pragma once

#include <cstdint>

#include "quad_types.h"

namespace zem::quad {

// The epsilon table: up to 50 entries and two working places.
struct epsilon_state {
  static constexpr int64_t limexp = 50;
  double tab[limexp + 2];
  int64_t n = 0;       // entries in use (numrl2)
  double res3la[3];    // the last three extrapolated values
  int64_t nres = 0;    // extrapolations done
};

// Appends nothing: the caller stores the newest partial sum at tab[n-1]
// first.  Returns the extrapolated value and its error estimate; shortens
// the table as the algorithm requires.
void epsilon_extrapolate(epsilon_state &E, double &result, double &abserr, const policy &P);

// Keeps iord in decreasing order of elist after a bisection.  `last` is the
// number of intervals (the new one is last-1, 0-based), `maxerr` the slot of
// the interval just bisected (it now holds the half with the larger error),
// `nrmax` its 0-based position in iord.  Only the first jupbnd positions are
// kept ordered, jupbnd = last, or limit + 3 - last once last > limit/2 + 2
// (fewer bisections remain than there are intervals to order).  On return
// maxerr = iord[nrmax] and ermax = its error.
void order_update(int64_t limit, int64_t last, int64_t &maxerr, double &ermax, const double *elist,
                  int64_t *iord, int64_t &nrmax);

// Finite interval [a, b] (b < a allowed), extrapolated.  `npoints` is the
// rule's point count: neval = npoints * (2 last - 1).
quad_outcome adaptive_extrapolated(rule_ref rule, int64_t npoints, double a, double b, double epsabs,
                                   double epsrel, const quad_lists &L, const policy &P);

// Finite interval, no extrapolation.
quad_outcome adaptive_plain(rule_ref rule, int64_t npoints, double a, double b, double epsabs,
                            double epsrel, const quad_lists &L, const policy &P);

// Break points: pts[0..nint] increasing (pts[0] = lower end, pts[nint] = upper
// end), nint >= 1 <= L.limit; level and ndin are work arrays of L.limit and
// nint elements.  The result is multiplied by `sign` (the lists keep the
// increasing orientation).  neval = 21 nint + 42 (last - nint) for the
// 21-point rule.
quad_outcome adaptive_breakpoints(rule_ref rule, int64_t npoints, const double *pts, int64_t nint,
                                  double sign, double epsabs, double epsrel, const quad_lists &L,
                                  int64_t *level, int64_t *ndin, const policy &P);

}  // namespace zem::quad
