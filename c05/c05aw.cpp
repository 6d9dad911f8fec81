// c05aw: zero of f near a point by continuation, within nfmax calls of f.
//
// 1. eps > 0 (a NaN fails); nfmax > 0.
// 2. The continuation c05ax from x with tol = eps, absolute error control and
//    the internal scale scal = 2^-26 max(1, |x|), the usual increment of a
//    forward difference.  Each requested value is computed here, counted,
//    and accepted at once when it is an exact zero or |f| < eta.
// 3. When the continuation fails, it is restarted, for as long as calls of
//    f remain:
//    - no significant derivative at the start: the same start with scal
//      multiplied by 1000, at most four times (up to 2^-26 10^12 max(1,|x|));
//      beyond that, or when x + scal = x, the internal scale suits this
//      problem at no size and the routine gives up (status 2);
//    - any other failure (no step away, path lost, final problem unsolved):
//      from the point with the smallest |f| found so far, with its value
//      reused, and scal ten times larger at each such restart (up to 10^6
//      times, then from the start of that cycle again), so that a restart
//      does not repeat the previous attempt.  Every attempt costs at least
//      one call of f, so the restarts end within nfmax calls.
//    The solve ends with status 3 when f would have to be called more than
//    nfmax times; x is then the point with the smallest |f| found.
#include "c05/c05aw.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "c05/c05ax.h"
#include "frame/errbuf.h"

namespace {

constexpr double sqrt_eps = 1.4901161193847656e-08;  // 2^-26
constexpr int max_rescales = 4;
constexpr double rescale_factor = 1000.0;
constexpr double restart_factor = 10.0;
constexpr double max_restart_scale = 1e6;

bool usable_scale(double x, double s) { return std::isfinite(x + s) && x + s != x; }

}  // namespace

ZEM_INTERNAL void c05awzn_(engine_data *en_data, double *x, double eps, double eta,
                           const zem::c05::evaluator *f, int64_t nfmax, char *errbuf,
                           int64_t *ifail) {
  if (!(eps > 0.0)) return zem::fail(errbuf, ifail, 1, 1001, eps);
  if (nfmax <= 0) return zem::fail(errbuf, ifail, 1, 1002, nfmax);

  double start = *x;
  double scal = sqrt_eps * std::max(1.0, std::fabs(start));
  if (!usable_scale(start, scal)) return zem::fail(errbuf, ifail, 2, 1003);

  const int64_t absolute = 1;
  double state[zem::c05ax::state_len] = {};
  double best = start, f_best = std::numeric_limits<double>::infinity();
  bool start_known = false;
  double f_start = 0.0;
  int64_t calls = 0;
  int rescales = 0;
  double restart_scale = 1.0;

  for (;;) {
    double xs = start, fv = f_start;
    int64_t ind = start_known ? -1 : 1, status = 0;
    c05axfn_(en_data, &xs, &fv, &eps, &absolute, &scal, state, &ind, errbuf, &status);
    while (ind != 0) {
      if (calls >= nfmax) {
        *x = best;
        return zem::fail(errbuf, ifail, 3, 1004);
      }
      ++calls;
      if ((*f)(xs, &fv) != 0) {
        *x = xs;
        return zem::succeed(ifail);
      }
      if (fv == 0.0 || std::fabs(fv) < eta) {
        *x = xs;
        return zem::succeed(ifail);
      }
      if (!std::isnan(fv) && std::fabs(fv) < std::fabs(f_best)) {
        best = xs;
        f_best = fv;
      }
      if (xs == start) {
        start_known = true;
        f_start = fv;
      }
      c05axfn_(en_data, &xs, &fv, &eps, &absolute, &scal, state, &ind, errbuf, &status);
    }
    if (status == 0) {
      *x = xs;
      return zem::succeed(ifail);
    }
    if (status == 1) {  // x + scal = x at the start: the internal scale cannot work
      *x = best;
      return zem::fail(errbuf, ifail, 2, 1003);
    }
    if (status == 3) {  // no significant derivative: a larger increment
      scal *= rescale_factor;
      if (++rescales > max_rescales || !usable_scale(start, scal)) {
        *x = best;
        return zem::fail(errbuf, ifail, 2, 1003);
      }
      continue;
    }
    // The continuation failed: start again from the best point found.
    if (best != start) {
      start = best;
      f_start = f_best;
      start_known = std::isfinite(f_best);
    }
    // Coarser increments up to 10^6 times the first, then round again; every
    // attempt costs at least one call, so the loop ends within nfmax calls.
    restart_scale = restart_scale >= max_restart_scale ? 1.0 : restart_scale * restart_factor;
    scal = sqrt_eps * std::max(1.0, std::fabs(start)) * restart_scale;
    if (!usable_scale(start, scal)) {
      *x = best;
      return zem::fail(errbuf, ifail, 2, 1003);
    }
  }
}
