// s14af: psi^(k)(z) for complex z, k <= 4 (s14/complex_gamma.h), with the
// range checks first, each with its status and substitute result.
#include "s14/s14af.h"

#include <cmath>

#include "frame/constants.h"
#include "s14/complex_gamma.h"

inline constexpr zem::message s14af_messages[] = {
    {1, 1001, NE_INT, {"On entry, k = %s.", "Constraint: k <= 4."}},
    {1, 1004, NE_INT, {"On entry, k = %s.", "Constraint: k >= 0."}},
    {2, 1002, NE_COMPLEX,
     {"On entry, z.re is 'too close' to a non-positive integer when", "z.im = 0.0: z.re = %s,", "ROUND(z.re) = %s."}},
    {3, 1003, NE_OVERFLOW_LIKELY, {"Evaluation abandoned due to likelihood of overflow."}},
};
ZEM_REGISTER_MESSAGES(s14af)

ZEM_ENGINE_LAYERS(s14af, S14AF_ARGS)

ZEM_INTERNAL void s14affn_(engine_data *, const double *zr, const double *zi, const int64_t *k, double *rr,
                           double *ri, char *errbuf, int64_t *ifail) {
  using zem::s14::cplx;
  *ifail = 0;
  const double x = *zr, y = *zi;
  const int64_t order = *k;
  *rr = *ri = 0.0;
  if (order > 4) return zem::fail(errbuf, ifail, 1, 1001, order);
  if (order < 0) return zem::fail(errbuf, ifail, 1, 1004, order);
  const int kk = static_cast<int>(order);
  if (x != x || y != y) {
    *rr = *ri = std::nan("");
    return;
  }
  if (y == 0.0 && x <= 0.0 && x == std::nearbyint(x)) {
    *rr = kk % 2 == 1 ? zem::max_double : 0.0;
    return zem::fail(errbuf, ifail, 2, 1002, x, std::nearbyint(x));
  }
  if (std::isinf(x) || std::isinf(y)) {
    if (kk == 0) {  // psi(z) ~ ln z
      *rr = zem::max_double;
      *ri = std::atan2(y, x);
      return zem::fail(errbuf, ifail, 3, 1003);
    }
    return;
  }
  // Next to a pole -m the value is about (-1)^(k+1) k! / (z + m)^(k+1).
  if (x < 0.5) {
    const double m = std::nearbyint(x);
    const double d = std::hypot(x - m, y);
    if (std::log(zem::s14::factorial_table[kk]) - (kk + 1) * std::log(d) > 709.0) {
      const double arg = -(kk + 1) * std::atan2(y, x - m);
      const double s = kk % 2 == 0 ? -1.0 : 1.0;
      *rr = s * zem::max_double * std::cos(arg);
      *ri = s * zem::max_double * std::sin(arg);
      return zem::fail(errbuf, ifail, 3, 1003);
    }
  }
  const cplx v = zem::s14::psi_complex(cplx{x, y}, kk);
  if (!std::isfinite(v.real()) || !std::isfinite(v.imag())) {
    const double a = std::arg(v);
    *rr = zem::max_double * (std::isnan(a) ? 1.0 : std::cos(a));
    *ri = std::isnan(a) ? 0.0 : zem::max_double * std::sin(a);
    return zem::fail(errbuf, ifail, 3, 1003);
  }
  *rr = v.real();
  *ri = v.imag();
}

ZEM_API Zem_Complex s14aff_(const Zem_Complex *z, const int64_t *k, int64_t *ifail) {
  zem::f_entry call("s14aff", s14af_messages);
  Zem_Complex r{0.0, 0.0};
  s14afft_(&call.en_data, &z->re, &z->im, k, &r.re, &r.im, call.errbuf, &call.status);
  call.finish(ifail);
  return r;
}

ZEM_API Zem_Complex s14afc(Zem_Complex z, int64_t k, Zem_Fail *fail) {
  zem::c_entry call("s14afc", s14af_messages, fail);
  Zem_Complex r{0.0, 0.0};
  s14afft_(&call.en_data, &z.re, &z.im, &k, &r.re, &r.im, call.errbuf, &call.status);
  call.finish();
  return r;
}
