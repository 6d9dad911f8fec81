// c05au: zero of f near a point.
//
// 1. eps > 0 (a NaN fails).
// 2. The search of c05av from x with step h inside [boundl, boundu]; its
//    argument checks are this routine's checks 2-5, reported with the same
//    values.  Every point it asks for is evaluated here; a value with
//    |f| < eta, or an exact zero, ends the solve at once.
// 3. On the interval [x, y] found, the Brent core c05az with tolx = eps and
//    absolute error control, started with both end values known (ind = -1),
//    so that no value is computed twice.  Its probable-pole and
//    tolerance-too-small outcomes become statuses 3 and 2, as in c05ay.
#include "c05/c05au.h"

#include <cmath>

#include "c05/c05av.h"
#include "c05/c05ax.h"
#include "frame/errbuf.h"

namespace {

// The point is acceptable as it stands: an exact zero, or |f| < eta.
bool acceptable(double fv, double eta) { return fv == 0.0 || std::fabs(fv) < eta; }

}  // namespace

ZEM_INTERNAL void c05auzn_(engine_data *en_data, double *x, double h, double eps, double eta,
                           double boundl, double boundu, const zem::c05::evaluator *f,
                           char *errbuf, int64_t *ifail) {
  if (!(eps > 0.0)) return zem::fail(errbuf, ifail, 1, 1001, eps);

  // Search.  c05av checks boundl < boundu, boundl <= x <= boundu, x+h or
  // x-h inside, and |h| > |x| 2^-53, in that order, before any evaluation.
  double search[zem::c05av::state_len] = {};
  double xs = *x, ys = *x, fv = 0.0;
  int64_t ind = 1, status = 0;
  c05avfn_(en_data, &xs, &fv, &h, &boundl, &boundu, &ys, search, &ind, errbuf, &status);
  // The search fails on its initial entry only through the argument checks,
  // whose details (1002-1005) and values are the same in both routines, so
  // its message record stands as this routine's.
  if (status != 0) {
    *ifail = status;
    return;
  }
  while (ind != 0) {
    if ((*f)(xs, &fv) != 0) {
      *x = xs;
      return zem::succeed(ifail);
    }
    if (acceptable(fv, eta)) {
      *x = xs;
      return zem::succeed(ifail);
    }
    c05avfn_(en_data, &xs, &fv, &h, &boundl, &boundu, &ys, search, &ind, errbuf, &status);
  }
  *x = xs;
  if (status != 0) return zem::fail(errbuf, ifail, 4, 1008);
  if (fv == 0.0) return zem::succeed(ifail);

  // Solve on the bracket [xs, ys]: f(xs) = fv, f(ys) = search[f_prev].
  double brent[10] = {};
  brent[0] = search[zem::c05av::f_prev];
  const double tolx = eps;
  const int64_t absolute = 1;
  ind = -1;
  c05azfn_(en_data, &xs, &ys, &fv, &tolx, &absolute, brent, &ind, errbuf, &status);
  while (ind != 0) {
    if ((*f)(xs, &fv) != 0) {
      *x = xs;
      return zem::succeed(ifail);
    }
    if (acceptable(fv, eta)) {
      *x = xs;
      return zem::succeed(ifail);
    }
    c05azfn_(en_data, &xs, &ys, &fv, &tolx, &absolute, brent, &ind, errbuf, &status);
  }
  *x = xs;
  switch (status) {
    case 0: return zem::succeed(ifail);
    case 4: return zem::fail(errbuf, ifail, 3, 1007);
    case 5: return zem::fail(errbuf, ifail, 2, 1006, eps);
    default: return zem::fail(errbuf, ifail, 5, 1999);  // unreachable: the core's own checks pass
  }
}
