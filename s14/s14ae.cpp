// s14ae: psi^(k)(x), the derivative of order k <= 6 of the digamma function,
// for real x: the recurrence, asymptotic series and reflection of s14/psi.h,
// with the range checks first, each with its status and substitute result.
#include "s14/s14ae.h"

#include <cmath>

#include "frame/constants.h"
#include "s14/psi.h"

inline constexpr zem::message s14ae_messages[] = {
    {1, 1001, NE_INT, {"On entry, k = %s.", "Constraint: k <= 6."}},
    {1, 1005, NE_INT, {"On entry, k = %s.", "Constraint: k >= 0."}},
    {2, 1002, NE_REAL, {"On entry, x is 'too close' to a non-positive integer:", "x = %s and ROUND(x) = %s."}},
    {3, 1003, NE_UNDERFLOW_LIKELY, {"Evaluation abandoned due to likelihood of underflow."}},
    {4, 1004, NE_OVERFLOW_LIKELY, {"Evaluation abandoned due to likelihood of overflow."}},
};
ZEM_REGISTER_MESSAGES(s14ae)

ZEM_ENGINE_LAYERS(s14ae, S14AE_ARGS)

ZEM_INTERNAL void s14aefn_(engine_data *, const double *x, const int64_t *k, double *result, char *errbuf,
                           int64_t *ifail) {
  *ifail = 0;
  const double v = *x;
  const int64_t order = *k;
  *result = 0.0;
  if (order > 6) return zem::fail(errbuf, ifail, 1, 1001, order);
  if (order < 0) return zem::fail(errbuf, ifail, 1, 1005, order);
  if (v != v) {
    *result = v;
    return;
  }
  const int kk = static_cast<int>(order);
  if (v <= 0.0 && v == std::nearbyint(v)) {
    *result = kk % 2 == 1 ? zem::max_double : 0.0;
    return zem::fail(errbuf, ifail, 2, 1002, v, std::nearbyint(v));
  }
  if (std::isinf(v)) {  // +inf: psi grows as ln x, its derivatives vanish
    if (kk == 0) {
      *result = zem::max_double;
      return zem::fail(errbuf, ifail, 4, 1004);
    }
    return zem::fail(errbuf, ifail, 3, 1003);
  }
  zem::s14::psi_status s = zem::s14::psi_status::ok;
  *result = zem::s14::psi_derivative(v, kk, s);
  if (s == zem::s14::psi_status::underflow) {
    *result = 0.0;
    return zem::fail(errbuf, ifail, 3, 1003);
  }
  if (s == zem::s14::psi_status::overflow) return zem::fail(errbuf, ifail, 4, 1004);
}

ZEM_API double s14aef_(const double *x, const int64_t *k, int64_t *ifail) {
  zem::f_entry call("s14aef", s14ae_messages);
  double result = 0.0;
  s14aeft_(&call.en_data, x, k, &result, call.errbuf, &call.status);
  call.finish(ifail);
  return result;
}

ZEM_API double s14aec(double x, int64_t k, Zem_Fail *fail) {
  zem::c_entry call("s14aec", s14ae_messages, fail);
  double result = 0.0;
  s14aeft_(&call.en_data, &x, &k, &result, call.errbuf, &call.status);
  call.finish();
  return result;
}
