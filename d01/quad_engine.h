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

#include <algorithm>
#include <cmath>
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

// Steps 3 to 12 of adaptive_extrapolated: the bisections, after the first
// rule application on [a, b] gave `first` (stored in the lists' slot 0) and
// did not end the run.
quad_outcome extrapolated_bisection(rule_ref rule, int64_t npoints, double a, double b, double epsabs,
                                    double epsrel, const quad_lists &L, const policy &P,
                                    const rule_estimate &first);

// adaptive_extrapolated with the first rule application (steps 1 and 2) in
// line and the rule called directly, not through a rule_ref: an integral
// that the first application settles costs no indirect call besides the
// kernel's and the integrand's.  Same values as adaptive_extrapolated.
template <typename Rule>
[[gnu::always_inline]] inline quad_outcome adaptive_extrapolated_direct(Rule &rule, int64_t npoints, double a,
                                                                        double b, double epsabs, double epsrel,
                                                                        const quad_lists &L, const policy &P) {
  quad_outcome out;
  // Step 1: the rule on the whole interval.
  L.alist[0] = a;
  L.blist[0] = b;
  L.rlist[0] = 0.0;
  L.elist[0] = 0.0;
  L.iord[0] = 0;
  rule_estimate first;
  if (int64_t s = rule(a, b, first)) {
    out.stop = s;
    return out;
  }
  const double result = first.result, abserr = first.abserr, defabs = first.resabs;
  const double errbnd = std::max(epsabs, epsrel * std::fabs(result));
  L.rlist[0] = result;
  L.elist[0] = abserr;

  // Step 2: done already, or nothing more can be done.  The estimate is
  // accepted when it meets the bound and is not merely resasc (the rule's
  // pessimistic fallback for a rough f).  With a limit of one interval the
  // limit code is set only when the estimate is not accepted (the published
  // scheme sets it in any case).
  const bool met = (abserr <= errbnd && abserr != first.resasc) || abserr == 0.0;
  int64_t code = 0;
  if (abserr <= (100.0 * P.epmach) * defabs && abserr > errbnd) code = 2;
  if (L.limit == 1 && !(P.late_limit_test && met)) code = 1;
  if (code != 0 || met) {
    out.result = result;
    out.abserr = abserr;
    out.last = 1;
    out.code = code;
    out.neval = npoints;
    return out;
  }
  return extrapolated_bisection(rule, npoints, a, b, epsabs, epsrel, L, P, first);
}

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
