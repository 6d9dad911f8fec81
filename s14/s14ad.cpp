// s14ad: w_k(x) = (-1)^(k+1) psi^(k)(x) / k!, k = n, ..., n + m - 1, x > 0.
//
// Orders up to 6 come from the psi kernel of s14ae (s14/psi.h), divided by
// k!.  Above, w_k(x) = zeta(k + 1, x) = sum_j (x + j)^-(k+1) (Abramowitz and
// Stegun 6.4.10), summed as x^-s S with s = k + 1 and
//   S = sum_{j<N} exp(-s log1p(j/x))
//       + (x/y)^s (y/(s - 1) + 1/2 + sum_i B_2i/(2i)! (s)_(2i-1) y^(1-2i)),
// y = x + N >= s + 20: the terms of the sum, scaled by x^s, are each accurate
// to about 2^-53 of S however large s is, and the Euler-Maclaurin tail at
// y >= s + 20 has twelve terms below 2^-60 of it.  The direct sum ends as
// soon as its terms fall below 2^-62 of S (at once for large s and small x).
// ln w_k = -s ln x + ln S decides underflow and overflow before the value
// is formed.
//
// The internal workspace is a block of 100 orders: m is limited to 100.
#include "s14/s14ad.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "frame/constants.h"
#include "s14/psi.h"

inline constexpr zem::message s14ad_messages[] = {
    {1, 1001, NE_REAL_ARG_LE, {"On entry, x = %s.", "Constraint: x > 0.0."}},
    {2, 1002, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
    {3, 1003, NE_INT, {"On entry, m = %s.", "Constraint: m >= 1."}},
    {4, 1004, NE_UNDERFLOW_LIKELY, {"Computation abandoned due to the likelihood of underflow."}},
    {5, 1005, NE_OVERFLOW_LIKELY, {"Computation abandoned due to the likelihood of overflow."}},
    {6, 1006, NE_INTERNAL_WORKSPACE,
     {"There is not enough internal workspace to continue computation.", "m is probably too large."}},
};
ZEM_REGISTER_MESSAGES(s14ad)

ZEM_ENGINE_LAYERS(s14ad, S14AD_ARGS)

namespace zem::s14 {
namespace {

constexpr int64_t workspace_orders = 100;

// B_2i/(2i)!, i = 1..12.
constexpr double bernoulli_over_factorial[12] = {
    0.08333333333333333,    -0.001388888888888889,  3.306878306878307e-05,   -8.267195767195768e-07,
    2.08767569878681e-08,   -5.284190138687493e-10, 1.3382536530684679e-11,  -3.3896802963225827e-13,
    8.586062056277845e-15,  -2.174868698558062e-16, 5.5090028283602295e-18,  -1.3954464685812522e-19};

enum class outcome { value, underflow, overflow };

// zeta(s, x) for s >= 8, x > 0 finite.
double hurwitz_zeta(double s, double x, outcome &out) {
  out = outcome::value;
  const double n_terms = std::max(0.0, std::ceil(s + 20.0 - x));
  double sum = 0.0, comp = 0.0;  // compensated sum of the scaled terms
  double j = 0.0;
  bool tail = true;
  for (; j < n_terms; j += 1.0) {
    const double t = j == 0.0 ? 1.0 : std::exp(-s * std::log1p(j / x));
    if (t < 0x1p-62 * sum) {
      tail = false;
      break;
    }
    const dd u = two_sum(sum, t);
    sum = u.hi;
    comp += u.lo;
  }
  if (tail) {
    const double y = x + n_terms;
    const double scale = n_terms == 0.0 ? 1.0 : std::exp(-s * std::log1p(n_terms / x));
    double em = 0.5;
    double ratio = s / y;  // (s)_(2i-1) / y^(2i-1), formed factor by factor (each below 1)
    for (int i = 0; i < 12; ++i) {
      const double term = bernoulli_over_factorial[i] * ratio;
      em += term;
      if (std::fabs(term) < 0x1p-64 * em) break;
      ratio *= ((s + 2 * i + 1) / y) * ((s + 2 * i + 2) / y);
    }
    const dd u = two_sum(sum, scale * (y / (s - 1.0) + em));
    sum = u.hi;
    comp += u.lo;
  }
  sum += comp;
  const double ln_value = -s * std::log(x) + std::log(sum);
  if (ln_value > 709.782712893384) {
    out = outcome::overflow;
    return max_double;
  }
  if (ln_value < -708.3964185322641) {
    out = outcome::underflow;
    return 0.0;
  }
  const double p = std::pow(x, -s);
  if (p >= 0x1p-1022 && p <= max_double) return p * sum;
  return std::exp(ln_value);
}

}  // namespace
}  // namespace zem::s14

ZEM_INTERNAL void s14adfn_(engine_data *, const double *x, const int64_t *n, const int64_t *m, double *ans,
                           char *errbuf, int64_t *ifail) {
  *ifail = 0;
  const double v = *x;
  const int64_t first = *n, count = *m;
  if (count <= zem::s14::workspace_orders)
    for (int64_t j = 0; j < count; ++j) ans[j] = 0.0;
  if (v <= 0.0) return zem::fail(errbuf, ifail, 1, 1001, v);
  if (first < 0) return zem::fail(errbuf, ifail, 2, 1002, first);
  if (count < 1) return zem::fail(errbuf, ifail, 3, 1003, count);
  if (count > zem::s14::workspace_orders) return zem::fail(errbuf, ifail, 6, 1006);
  bool under = false, over = false;
  for (int64_t j = 0; j < count; ++j) {
    if (v != v) {
      ans[j] = v;
      continue;
    }
    // Orders beyond 2^63 - 1 are taken as 2^63 - 1 (the values there are
    // 1 at x = 1, else 0 or beyond the largest double).
    const int64_t k = first > INT64_MAX - j ? INT64_MAX : first + j;
    if (std::isinf(v)) {  // x = +inf: -psi = -inf, the derivatives vanish
      if (k == 0) {
        ans[j] = -zem::max_double;
        over = true;
      } else {
        ans[j] = 0.0;
        under = true;
      }
      continue;
    }
    if (k <= 6) {
      zem::s14::psi_status s = zem::s14::psi_status::ok;
      const double psi = zem::s14::psi_derivative(v, static_cast<int>(k), s);
      const double g = (k % 2 == 0 ? -psi : psi) / zem::s14::factorial_table[k];
      if (s == zem::s14::psi_status::underflow) {
        ans[j] = 0.0;
        under = true;
      } else if (s == zem::s14::psi_status::overflow) {
        ans[j] = std::copysign(zem::max_double, g);
        over = true;
      } else {
        ans[j] = g;
      }
      continue;
    }
    zem::s14::outcome out = zem::s14::outcome::value;
    ans[j] = zem::s14::hurwitz_zeta(static_cast<double>(k) + 1.0, v, out);
    under |= out == zem::s14::outcome::underflow;
    over |= out == zem::s14::outcome::overflow;
  }
  if (over) return zem::fail(errbuf, ifail, 5, 1005);
  if (under) return zem::fail(errbuf, ifail, 4, 1004);
}

ZEM_API void s14adf_(const double *x, const int64_t *n, const int64_t *m, double *ans, int64_t *ifail) {
  zem::f_entry call("s14adf", s14ad_messages);
  s14adft_(&call.en_data, x, n, m, ans, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void s14adc(double x, int64_t n, int64_t m, double ans[], Zem_Fail *fail) {
  zem::c_entry call("s14adc", s14ad_messages, fail);
  if (m > 0 && !ans) return call.bad_param("ans");
  s14adft_(&call.en_data, &x, &n, &m, ans, call.errbuf, &call.status);
  call.finish();
}
