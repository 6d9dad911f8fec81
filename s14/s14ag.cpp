// s14ag: ln Gamma(z) for complex z (s14/complex_gamma.h), with the range
// checks first, each with its status and substitute result.
#include "s14/s14ag.h"

#include <cmath>

#include "frame/constants.h"
#include "s14/complex_gamma.h"

inline constexpr zem::message s14ag_messages[] = {
    {1, 1001, NE_TOO_CLOSE_INTEGER,
     {"On entry, z.re is 'too close' to a non-positive integer when", "z.im = 0.0: z.re = %s,", "ROUND(z.re) = %s."}},
    {2, 1002, NE_OVERFLOW_LIKELY, {"Evaluation abandoned due to likelihood of overflow."}},
};
ZEM_REGISTER_MESSAGES(s14ag)

ZEM_ENGINE_LAYERS(s14ag, S14AG_ARGS)

ZEM_INTERNAL void s14agfn_(engine_data *, const double *zr, const double *zi, double *rr, double *ri, char *errbuf,
                           int64_t *ifail) {
  using zem::s14::cplx;
  *ifail = 0;
  const double x = *zr, y = *zi;
  *rr = *ri = 0.0;
  if (x != x || y != y) {
    *rr = *ri = std::nan("");
    return;
  }
  if (y == 0.0 && x <= 0.0 && x == std::nearbyint(x)) {
    *rr = zem::max_double;
    return zem::fail(errbuf, ifail, 1, 1001, x, std::nearbyint(x));
  }
  const double r = std::hypot(x, y);
  if (!(r <= 2.55e305)) {
    // The sign of Re(z ln z - z) = |z| (cos t (ln|z| - 1) - t sin t), t = arg z.
    const double t = std::atan2(y, x);
    const double s = std::cos(t) * (std::log(std::fmin(r, zem::max_double)) - 1.0) - t * std::sin(t);
    *rr = std::copysign(zem::max_double, s);
    return zem::fail(errbuf, ifail, 2, 1002);
  }
  const cplx v = zem::s14::lgamma_complex(cplx{x, y});
  *rr = v.real();
  *ri = v.imag();
}

ZEM_API Zem_Complex s14agf_(const Zem_Complex *z, int64_t *ifail) {
  zem::f_entry call("s14agf", s14ag_messages);
  Zem_Complex r{0.0, 0.0};
  s14agft_(&call.en_data, &z->re, &z->im, &r.re, &r.im, call.errbuf, &call.status);
  call.finish(ifail);
  return r;
}

ZEM_API Zem_Complex s14agc(Zem_Complex z, Zem_Fail *fail) {
  zem::c_entry call("s14agc", s14ag_messages, fail);
  Zem_Complex r{0.0, 0.0};
  s14agft_(&call.en_data, &z.re, &z.im, &r.re, &r.im, call.errbuf, &call.status);
  call.finish();
  return r;
}
