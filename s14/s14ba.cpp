// s14ba: the regularised incomplete gamma functions
//   P(a, x) = gamma(a, x)/Gamma(a),  Q(a, x) = Gamma(a, x)/Gamma(a) = 1 - P,
// each computed directly where it is the smaller, so that neither loses its
// relative accuracy to the subtraction from 1.
//
// Regions (x > 0, a > 0):
//   a < 1, x <= 1.5   Q = -expm1(u) - e^u a T, P = e^u (1 + a T), with
//                     u = a ln x - ln Gamma(1 + a) (from a, not 1 + a) and T = sum_{n>=1}
//                     (-x)^n/(n!(a + n)); no cancellation even for a -> 0.
//   x < a + 1         P by the series  e^-x x^a/Gamma(a+1) sum x^n/((a+1)...(a+n)).
//   otherwise         Q by the continued fraction of Legendre (modified Lentz).
// The factor x^a e^-x/Gamma(a + 1) is formed as exp(a ln x - x - ln Gamma(a+1))
// for a < 10, and for a >= 10 as exp(a ln(x/a) + a - x - c(a)) / sqrt(2 pi a),
// c(a) the Stirling correction of ln Gamma(a + 1), with a ln(x/a) + a - x
// carried as a pair (s14/gamma.h): the large terms a ln x and x, and near
// x = a the terms a ln(x/a) and x - a, cancel without loss.
#include "s14/s14ba.h"

#include <cmath>

#include "s14/incomplete_gamma.h"

inline constexpr zem::message s14ba_messages[] = {
    {1, 1001, NE_REAL_ARG_LE, {"On entry, a = %s.", "Constraint: a > 0.0."}},
    {2, 1002, NE_REAL_ARG_LT, {"On entry, x = %s.", "Constraint: x >= 0.0."}},
    {3, 1003, NE_ALG_NOT_CONV, {"Algorithm fails to terminate in %s iterations."}},
};
ZEM_REGISTER_MESSAGES(s14ba)

ZEM_ENGINE_LAYERS(s14ba, S14BA_ARGS)


ZEM_INTERNAL void s14bafn_(engine_data *, const double *a, const double *x, const double *tol, double *p, double *q,
                           char *errbuf, int64_t *ifail) {
  *ifail = 0;
  const double av = *a, xv = *x;
  *p = 0.0;
  *q = 0.0;
  if (av <= 0.0) return zem::fail(errbuf, ifail, 1, 1001, av);
  if (xv < 0.0) return zem::fail(errbuf, ifail, 2, 1002, xv);
  if (av != av || xv != xv) {
    *p = *q = std::nan("");
    return;
  }
  if (xv == 0.0 || std::isinf(av)) {
    *q = 1.0;
    return;
  }
  if (std::isinf(xv)) {
    *p = 1.0;
    return;
  }
  const double t = *tol;
  const double eps = (t >= 0x1p-53 && t < 1.0) ? t : 0x1p-53;
  // Beyond 2^900 the pairs of the exponent would overflow: the iteration is
  // not attempted (status 3), and the step function P = [x > a] is returned.
  if (av > 0x1p900) {
    *p = xv > av ? 1.0 : 0.0;
    *q = 1.0 - *p;
    return zem::fail(errbuf, ifail, 3, 1003, static_cast<int64_t>(0));
  }
  const zem::s14::pq r = zem::s14::incomplete_gamma(av, xv, eps);
  *p = r.p;
  *q = r.q;
  if (!r.converged) zem::fail(errbuf, ifail, 3, 1003, static_cast<int64_t>(zem::s14::max_iterations));
}

ZEM_API void s14baf_(const double *a, const double *x, const double *tol, double *p, double *q, int64_t *ifail) {
  zem::f_entry call("s14baf", s14ba_messages);
  s14baft_(&call.en_data, a, x, tol, p, q, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void s14bac(double a, double x, double tol, double *p, double *q, Zem_Fail *fail) {
  zem::c_entry call("s14bac", s14ba_messages, fail);
  if (!p) return call.bad_param("p");
  if (!q) return call.bad_param("q");
  s14baft_(&call.en_data, &a, &x, &tol, p, q, call.errbuf, &call.status);
  call.finish();
}
