// s14ac: f(x) = psi(x) - ln x, x > 0, the digamma function less its
// logarithmic growth (f(x) ~ -1/(2x) for large x, where psi and ln x
// themselves would cancel).
//
// x >= 12: the asymptotic series f = -1/(2x) - sum B_2k / (2k x^2k), twelve
// terms (below 1e-21 relatively at x = 12).  x < 12: with y = x + n >= 12,
//   f(x) = f(y) + ln y - ln x - sum_{k<n} 1/(x + k),
// whose terms cancel (f(1) = -0.577 from terms near 3): y, the logarithms and
// the reciprocals are carried as pairs of doubles.
#include "s14/s14ac.h"

#include <cmath>

#include "frame/constants.h"
#include "s14/gamma.h"

inline constexpr zem::message s14ac_messages[] = {
    {1, 1001, NE_REAL_ARG_LE, {"On entry, x = %s.", "Constraint: x > 0.0."}},
    {2, 1002, NE_UNDERFLOW_LIKELY, {"Computation halted due to likelihood of underflow. x may be", "too large. x = %s."}},
    {3, 1003, NE_OVERFLOW_LIKELY, {"Computation halted due to likelihood of overflow. x may be", "too small. x = %s."}},
};
ZEM_REGISTER_MESSAGES(s14ac)

ZEM_ENGINE_LAYERS(s14ac, S14AC_ARGS)

namespace zem::s14 {
namespace {

// Above this, -1/(2x) is below the smallest normal number.
constexpr double psi_x_underflow = 2.2e307;

double psi_minus_log_large(double x) {
  // B_2k / (2k), k = 1..12.
  static constexpr double c[12] = {1.0 / 12.0,
                                   -1.0 / 120.0,
                                   1.0 / 252.0,
                                   -1.0 / 240.0,
                                   1.0 / 132.0,
                                   -691.0 / 32760.0,
                                   1.0 / 12.0,
                                   -3617.0 / 8160.0,
                                   43867.0 / 14364.0,
                                   -174611.0 / 6600.0,
                                   77683.0 / 276.0,
                                   -236364091.0 / 65520.0};
  if (x > 1e17) return -0.5 / x;
  const double w = 1.0 / (x * x);
  double s = c[11];
  for (int k = 10; k >= 0; --k) s = s * w + c[k];
  return -0.5 / x - s * w;
}

double psi_minus_log(double x) {
  if (x >= 12.0) return psi_minus_log_large(x);
  // Below 1e-17, f = -1/x - ln x - Euler's constant to within 1e-34
  // relatively (and 1/x would not split safely below 1e-290).
  if (x < 1e-17) return -1.0 / x - (std::log(x) + 0.57721566490153286);
  const double n = std::ceil(12.0 - x);
  const dd y = two_sum(x, n);
  // ln y - ln x, y as a pair: ln(y.hi) + y.lo / y.hi.
  const dd ly = log_dd<false>(y.hi);
  const dd lx = log_dd<false>(x);
  dd s = two_sum(ly.hi, -lx.hi);
  s.lo += ly.lo - lx.lo + y.lo / y.hi;
  for (double k = 0.0; k < n; k += 1.0) {
    const dd vv = two_sum(x, k);  // x + k, exactly
    const double r = 1.0 / vv.hi;
    const dd rv = two_prod<false>(r, vv.hi);
    const double rl = ((1.0 - rv.hi) - rv.lo - r * vv.lo) / vv.hi;  // 1/v = r + rl
    const dd t = two_sum(s.hi, -r);
    s = {t.hi, t.lo + s.lo - rl};
  }
  const double fy = psi_minus_log_large(y.hi + y.lo);
  const dd t = two_sum(s.hi, fy);
  return t.hi + (t.lo + s.lo);
}

}  // namespace
}  // namespace zem::s14

ZEM_INTERNAL void s14acfn_(engine_data *, const double *x, double *result, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  const double v = *x;
  *result = 0.0;
  if (v <= 0.0) return zem::fail(errbuf, ifail, 1, 1001, v);
  if (v > zem::s14::psi_x_underflow) return zem::fail(errbuf, ifail, 2, 1002, v);
  if (v < zem::safe_min) {
    *result = -zem::max_double;
    return zem::fail(errbuf, ifail, 3, 1003, v);
  }
  *result = v != v ? v : zem::s14::psi_minus_log(v);
}

ZEM_API double s14acf_(const double *x, int64_t *ifail) {
  zem::f_entry call("s14acf", s14ac_messages);
  double result = 0.0;
  s14acft_(&call.en_data, x, &result, call.errbuf, &call.status);
  call.finish(ifail);
  return result;
}

ZEM_API double s14acc(double x, Zem_Fail *fail) {
  zem::c_entry call("s14acc", s14ac_messages, fail);
  double result = 0.0;
  s14acft_(&call.en_data, &x, &result, call.errbuf, &call.status);
  call.finish();
  return result;
}
