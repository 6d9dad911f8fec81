// The gamma function kernels of chapter s14: Gamma(x) (s14aa, s14an) and
// ln Gamma(x) (s14ab, s14ap), without the range checks of the routines.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

#include "s14/eft.h"

namespace zem::s14 {

#include "s14/s14aa_coefficients.inc"
#include "s14/s14ab_coefficients.inc"

// Decimal digits of the machine's precision (x02be); it chooses the
// coefficient set of Gamma on [1, 2].
inline constexpr int decimal_digits = 15;

// The largest argument of Gamma, and the value returned above it (Gamma(170)
// rounded; also the "large positive value" at the poles).
inline constexpr double gamma_x_max = 170.0;
inline constexpr double gamma_big = 4.3e304;
// |x| below this is too close to the pole at 0; the value returned there is
// 1/2.23e-308.
inline constexpr double gamma_x_tiny = 2.23e-308;
inline constexpr double gamma_tiny_value = 4.4843049327354256e307;
// At or below this, Gamma(x) = 1/x to within half a unit in the last place
// (the next term is -Euler's constant, relatively 5.8e-18 at most).
inline constexpr double gamma_x_reciprocal = 1e-17;

// ln Gamma: above x_big the result overflows; above 2.24e76 the Stirling
// correction is below half a unit in the last place and is dropped.
inline constexpr double lgamma_x_big = 2.55e305;
inline constexpr double lgamma_x_series = 2.24e76;
inline constexpr double lgamma_eps = 1.1102230246251565e-16;  // machine precision (x02aj)

template <int N>
[[gnu::always_inline]] inline double horner(const double (&c)[N], double t) {
  double s = c[N - 1];
  for (int i = N - 2; i >= 0; --i) s = s * t + c[i];
  return s;
}

// Gamma(3/2 + t) for t in [-1/2, 1/2]: Gamma(3/2) + t Q(t), Q taken from the
// shortest set that serves the machine's decimal precision.
[[gnu::always_inline]] inline double gamma_unit(double t) {
  if constexpr (decimal_digits <= gamma_set1_digits) return gamma_three_halves + t * horner(gamma_set1, t);
  else if constexpr (decimal_digits <= gamma_set2_digits) return gamma_three_halves + t * horner(gamma_set2, t);
  else if constexpr (decimal_digits <= gamma_set3_digits) return gamma_three_halves + t * horner(gamma_set3, t);
  else if constexpr (decimal_digits <= gamma_set4_digits) return gamma_three_halves + t * horner(gamma_set4, t);
  else return gamma_three_halves + t * horner(gamma_set5, t);
}

// Gamma(x) for finite x, 1e-17 < |x| <= 170, x not a negative integer.
//
// x is moved into y = x + m in [1, 2) by the recurrence Gamma(x + 1) =
// x Gamma(x), and Gamma(y) comes from the polynomial in t = y - 3/2.  Every
// factor x - k (x >= 2) and x + k (x < -1) is exact (it is a multiple of the
// spacing of doubles at x and smaller in magnitude than x), and so is t.  The
// product of up to 169 factors is kept exactly as a pair of doubles (two
// chains of alternate factors, each below 2^996, so that Dekker's product
// cannot overflow and the two chains run side by side); the result carries
// the polynomial's error and one rounding.
template <bool Fma>
[[gnu::always_inline]] inline double gamma_core_t(double x) {
  if (x >= 2.0) {
    const double m = std::floor(x) - 1.0;  // y = x - m in [1, 2)
    const double p = gamma_unit(x - (m + 1.5));
    dd a{p, 0.0};
    dd b{1.0, 0.0};
    double k = 1.0;
    for (; k < m; k += 2.0) {
      a = mul<Fma>(a, x - k);
      b = mul<Fma>(b, x - (k + 1.0));
    }
    if (k == m) a = mul<Fma>(a, x - k);
    const dd r = mul<Fma>(fast_two_sum(a.hi, a.lo), fast_two_sum(b.hi, b.lo));
    return r.hi;
  }
  if (x >= 1.0) return gamma_unit(x - 1.5);
  if (x > 0.0) return gamma_unit(x - 0.5) / x;  // y = x + 1
  if (x > -1.0) {
    // y = x + 2; the factor x + 1 is not exact when x > -1/2: kept as a pair.
    const dd d = mul<Fma>(fast_two_sum(1.0, x), x);
    return div<Fma>(dd{gamma_unit(x + 0.5), 0.0}, fast_two_sum(d.hi, d.lo)).hi;
  }
  const double m = 1.0 - std::floor(x);  // y = x + m in [1, 2)
  const double p = gamma_unit(x + (m - 1.5));
  dd a{1.0, 0.0};
  dd b{1.0, 0.0};
  double k = 0.0;
  for (; k + 1.0 < m; k += 2.0) {
    a = mul<Fma>(a, x + k);
    b = mul<Fma>(b, x + (k + 1.0));
  }
  if (k + 1.0 == m) a = mul<Fma>(a, x + k);
  const dd q = div<Fma>(dd{p, 0.0}, fast_two_sum(a.hi, a.lo));
  return div<Fma>(q, fast_two_sum(b.hi, b.lo)).hi;
}

// The natural logarithm of a positive normal x as a pair, to about 2^-100
// relatively: x = m 2^e with m in [1/sqrt 2, sqrt 2), ln m = 2 atanh(s),
// s = (m - 1)/(m + 1) formed as a pair; the series beyond 2s is below 1% of
// it (|s| < 0.172), so double arithmetic suffices there.
template <bool Fma>
[[gnu::always_inline]] inline dd log_dd(double x) {
  const uint64_t bits = std::bit_cast<uint64_t>(x);
  int e = static_cast<int>(bits >> 52) - 1022;
  double m = std::bit_cast<double>((bits & 0x000fffffffffffffull) | 0x3fe0000000000000ull);  // [1/2, 1)
  if (m < 0.70710678118654752) {
    m *= 2.0;
    --e;
  }
  const dd s = div<Fma>(dd{m - 1.0, 0.0}, two_sum(m, 1.0));
  const double w = s.hi * s.hi;
  // 2 atanh(s) - 2 s = 2 s^3 (1/3 + w/5 + w^2/7 + ...), |w| < 0.0295.
  double t = 1.0 / 25.0;
  for (int k = 23; k >= 3; k -= 2) t = t * w + 1.0 / k;
  const double tail = 2.0 * s.hi * w * t;
  constexpr double ln2_hi = 0x1.62e42fefa3800p-1;  // ln 2, trailing bits zero: e ln2_hi is exact
  constexpr double ln2_lo = 0x1.ef35793c7673p-45;
  const double de = e;
  const dd a = two_sum(de * ln2_hi, 2.0 * s.hi);
  return fast_two_sum(a.hi, a.lo + (2.0 * s.lo + tail + de * ln2_lo));
}

// A polynomial with double coefficients at z, evaluated so that the result
// is as accurate as in twice the working precision (compensated Horner: the
// rounding error of every product and sum is gathered and added at the end).
// c[0] is the highest coefficient; lead, if not zero, is a leading 1 or -1
// before c[0].
template <bool Fma, int N>
[[gnu::always_inline]] inline dd comp_horner(const double (&c)[N], double lead, double z) {
  [[maybe_unused]] const dd zs = split(z);
  double s = lead;
  double err = 0.0;
  int i = 0;
  if (lead == 0.0) s = c[i++];
  for (; i < N; ++i) {
    const double p = s * z;
    double pe;
    if constexpr (Fma) {
      pe = __builtin_fma(s, z, -p);
    } else {
      const dd ss = split(s);
      pe = ((ss.hi * zs.hi - p) + ss.hi * zs.lo + ss.lo * zs.hi) + ss.lo * zs.lo;
    }
    const dd q = two_sum(p, c[i]);
    s = q.hi;
    err = err * z + (pe + q.lo);
  }
  return fast_two_sum(s, err);
}

template <bool Fma, int N>
[[gnu::always_inline]] inline dd rational(const double (&p)[N], const double (&q)[N], double lead, double z) {
  return div<Fma>(comp_horner<Fma>(p, 0.0, z), comp_horner<Fma>(q, lead, z));
}

// z (d + z r) as a pair, with r a pair: the cancellation in d + z r near the
// minimum of Gamma is then harmless.
template <bool Fma>
[[gnu::always_inline]] inline dd near_zero_form(double z, double d, dd r) {
  const dd zr = mul<Fma>(r, z);
  const dd s = two_sum(d, zr.hi);
  const dd n = fast_two_sum(s.hi, s.lo + zr.lo);
  return mul<Fma>(n, z);
}

[[gnu::always_inline]] inline double add_rounded(dd a, dd b) {
  const dd s = two_sum(a.hi, b.hi);
  return s.hi + (s.lo + (a.lo + b.lo));
}

// ln Gamma(x) for 0 < x <= 2.55e305 (a NaN gives a NaN), by the rational
// approximations of Cody and Hillstrom on (0, 12] and the Stirling series
// above.  The published coefficients are used as published; the arithmetic
// around them is carried in pairs of doubles (the logarithm, the rational
// functions, the final sums), so that the result carries the
// approximations' own error and one rounding.
template <bool Fma>
[[gnu::always_inline]] inline double lgamma_core_t(double x) {
  if (x <= lgamma_eps) return -std::log(x);
  if (x <= 1.5) {
    // Below 0.6796875, -ln x is split off and ln Gamma(x + 1) approximated.
    dd corr{0.0, 0.0};
    double z = (x - 0.5) - 0.5;
    if (x < 0.6796875) {
      const dd l = log_dd<Fma>(x);
      corr = {-l.hi, -l.lo};
      if (x <= 0.5) z = x;
    }
    if (x <= 0.5 || x >= 0.6796875) return add_rounded(corr, near_zero_form<Fma>(z, lg_d1, rational<Fma>(lg_p1, lg_q1, 1.0, z)));
    return add_rounded(corr, near_zero_form<Fma>(z, lg_d2, rational<Fma>(lg_p2, lg_q2, 1.0, z)));
  }
  if (x <= 4.0) {
    const double z = x - 2.0;
    const dd r = near_zero_form<Fma>(z, lg_d2, rational<Fma>(lg_p2, lg_q2, 1.0, z));
    return r.hi + r.lo;
  }
  if (x <= 12.0) {
    const double z = x - 4.0;
    return add_rounded(dd{lg_d4, 0.0}, mul<Fma>(rational<Fma>(lg_p4, lg_q4, -1.0, z), z));
  }
  double res = 0.0;
  if (x <= lgamma_x_series) {
    const double w = 1.0 / (x * x);
    res = lg_c[6];
    for (int i = 0; i < 6; ++i) res = res * w + lg_c[i];
    res /= x;
  }
  // (x - 1/2) ln x - x + ln sqrt(2 pi) + res = x (ln x - 1) + (ln sqrt(2 pi) - ln x / 2 + res).
  const dd l = log_dd<Fma>(x);
  const dd lm1 = two_sum(l.hi, -1.0);
  const dd main = x > 0x1p900 ? dd{x * (lm1.hi + (lm1.lo + l.lo)), 0.0}
                              : mul<Fma>(fast_two_sum(lm1.hi, lm1.lo + l.lo), x);
  return add_rounded(main, dd{0.9189385332046728 - 0.5 * l.hi + res, 0.0});
}

// ln Gamma(1 + a) for -0.3203125 <= a <= 1, from a itself (1 + a would lose
// the low bits of a small a): the first or second block of the rational
// approximations with z = a or z = a - 1.
template <bool Fma>
[[gnu::always_inline]] inline double lgamma1p_t(double a) {
  if (a <= 0.5) {
    const dd r = near_zero_form<Fma>(a, lg_d1, rational<Fma>(lg_p1, lg_q1, 1.0, a));
    return r.hi + r.lo;
  }
  const double z = a - 1.0;
  const dd r = near_zero_form<Fma>(z, lg_d2, rational<Fma>(lg_p2, lg_q2, 1.0, z));
  return r.hi + r.lo;
}

template <bool Fma>
[[gnu::always_inline]] inline dd log_ratio_term_t(double a, double x) {
  const double q = x / a;
  const dd qa = two_prod<Fma>(q, a);
  const double r = ((x - qa.hi) - qa.lo) / a;  // x/a = q + r
  const dd l = log_dd<Fma>(q);
  const dd lq = fast_two_sum(l.hi, l.lo + r / q);
  const dd al = mul<Fma>(lq, a);
  const dd d = two_sum(a, -x);
  const dd s = two_sum(al.hi, d.hi);
  return fast_two_sum(s.hi, s.lo + al.lo + d.lo);
}

// The kernels, compiled for the processor in hand (s14/gamma_dispatch.cpp).
double gamma_core(double x);
double lgamma_core(double x);
double lgamma1p(double a);
// a ln(x/a) + a - x as a pair, a, x > 0 normal: the exponent of the factor
// x^a e^-x of the incomplete gamma functions, relative to a^a e^-a.
dd log_ratio_term(double a, double x);
// Either variant on request (the tests compare them); fma is ignored where
// the processor lacks it.
double gamma_core_variant(double x, bool fma);
double lgamma_core_variant(double x, bool fma);

// Gamma(x) with the range checks of s14aa, in their order: code 0 (a value),
// 1 (x > 170), 2 (x < -170), 3 (|x| < 2.23e-308), 4 (x a negative integer),
// each with its substitute value.  A NaN gives a NaN with code 0.
inline double gamma_checked(double x, int &code) {
  code = 0;
  const double a = std::fabs(x);
  if (__builtin_expect(a > gamma_x_max, 0)) {
    code = x > 0.0 ? 1 : 2;
    return x > 0.0 ? gamma_big : 0.0;
  }
  if (__builtin_expect(a <= gamma_x_reciprocal, 0)) {
    if (a < gamma_x_tiny) {
      code = 3;
      return std::signbit(x) && x != 0.0 ? -gamma_tiny_value : gamma_tiny_value;
    }
    return 1.0 / x;
  }
  // A negative integer, tested as x - (trunc(x) - 1) = 1.
  if (x < 0.0 && x - (std::trunc(x) - 1.0) == 1.0) {
    code = 4;
    return gamma_big;
  }
  if (__builtin_expect(x != x, 0)) return x;
  return gamma_core(x);
}

// ln Gamma(x) with the range checks of s14ab: code 0 (a value), 1 (x <= 0,
// value 0), 2 (x > 2.55e305, value the largest double).  A NaN gives a NaN
// with code 0.
inline double lgamma_checked(double x, int &code) {
  code = 0;
  if (__builtin_expect(x <= 0.0, 0)) {
    code = 1;
    return 0.0;
  }
  if (__builtin_expect(x > lgamma_x_big, 0)) {
    code = 2;
    return 0x1.fffffffffffffp1023;
  }
  return lgamma_core(x);
}

}  // namespace zem::s14
