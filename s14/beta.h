// The complete and incomplete beta functions (s14cc, s14cp, s14cq), without
// the range checks of the routines.
//
// ln B(a, b), a <= b:
//   b < 10          the next form at L = b + n >= 10, plus
//                   sum_{j<n} log1p(a/(b + j)) (the recurrence of Gamma);
//   a < 10 <= b     ln Gamma(a) - a ln b + a - (a + b - 1/2) log1p(a/b)
//                   + c(b) - c(a + b);
//   10 <= a         -a log1p(b/a) - b log1p(a/b) + (log1p(b/a) - ln b)/2
//                   + ln sqrt(2 pi) + c(a) + c(b) - c(a + b),
// c(z) the Stirling correction ln Gamma(z) - (z - 1/2) ln z + z - ln sqrt(2 pi):
// no large terms cancel in the last two forms.
//
// I_x(a, b) = x^a y^b / (a B(a, b)) K, y = 1 - x, K the continued fraction
// of Abramowitz and Stegun 26.5.8 (modified Lentz), used for I_x(a, b) where
// x <= (a + 1)/(a + b + 2) and for I_y(b, a) = 1 - I_x(a, b) elsewhere, so
// that the fraction converges fast and the value it gives is the smaller
// of the two, or close to 1/2.  The factor x^a y^b/(a B) is formed as
// exp(E), E carried as a pair wherever its parts are large and cancel
// (DiDonato and Morris, ACM TOMS 18 (1992) 360-373, section 3, form the
// factor the same way): for a, b >= 10
//   E = a (ln x + log1p(b/a)) + b (ln y + log1p(a/b)), times
//       sqrt(ab / (2 pi (a + b))) exp(c(a + b) - c(a) - c(b)) / a,
// with ln x + log1p(b/a) = ln x - ln a + ln(a + b) as a pair (it vanishes at
// x = a/(a + b)); with one parameter s < 10 and the other L >= 10 the terms
// s ln L and s ln x, or L ln x and ln L, are joined before they are rounded;
// with both below 10, ln Gamma(1 + .) replaces ln Gamma(.), which is large
// near 0.
#pragma once

#include <cmath>
#include <utility>

#include "s14/eft.h"
#include "s14/gamma.h"

namespace zem::s14 {

// ln v as a pair for any finite v > 0 (subnormal v scaled first).
template <bool Fma>
inline dd log_any(double v) {
  if (v >= 0x1p-1022) return log_dd<Fma>(v);
  const dd l = log_dd<Fma>(v * 0x1p54);
  constexpr double ln2_54_hi = 0x1.2b708872320e2p+5, ln2_54_lo = -0x1.570da7e077bcbp-50;  // 54 ln 2
  const dd s = two_sum(l.hi, -ln2_54_hi);
  return fast_two_sum(s.hi, s.lo + l.lo - ln2_54_lo);
}

// Stirling's correction c(z), z >= 10: below 3e-17 absolutely in error.
inline double stirling_c(double z) {
  const double w = 1.0 / (z * z);
  return (1.0 / 12.0 + w * (-1.0 / 360.0 + w * (1.0 / 1260.0 + w * (-1.0 / 1680.0 + w * (1.0 / 1188.0 +
          w * (-691.0 / 360360.0 + w * (1.0 / 156.0))))))) / z;
}

// ln Gamma(1 + t), 0 <= t < 20.
inline double lgamma_1p(double t) { return t <= 1.0 ? lgamma1p(t) : lgamma_core(1.0 + t); }

// a - (a + b - 1/2) log1p(a/b) + c(b) - c(a + b), a < 10 <= b: ln Gamma(b) -
// ln Gamma(a + b) + a ln b.
inline double beta_bracket(double a, double b) {
  return a - (a + b - 0.5) * std::log1p(a / b) + stirling_c(b) - stirling_c(a + b);
}

constexpr double ln_sqrt_2pi = 0.91893853320467274178;

// ln B(a, b), a, b > 0 finite.
template <bool Fma>
double log_beta_t(double a, double b) {
  if (a > b) std::swap(a, b);
  if (b < 10.0) {
    // ln Gamma(b) - ln Gamma(a + b) = [that at L = b + n >= 10] + sum_{j<n}
    // log1p(a/(b + j)), the sum's terms all positive; ln Gamma(a) =
    // ln Gamma(1 + a) - ln a.
    const double n = std::ceil(10.0 - b);
    const double l = b + n;
    double sum = 0.0;
    for (double j = 0.0; j < n; j += 1.0) sum += std::log1p(a / (b + j));
    const dd la = log_any<Fma>(a);
    const dd alb = mul<Fma>(log_dd<Fma>(l), a);
    const dd s = two_sum(-la.hi, -alb.hi);
    return s.hi + ((lgamma_1p(a) + beta_bracket(a, l) + sum) + (s.lo - la.lo - alb.lo));
  }
  if (a < 10.0) {
    const dd la = log_any<Fma>(a);
    const dd alb = mul<Fma>(log_dd<Fma>(b), a);
    const dd s = two_sum(-la.hi, -alb.hi);
    return s.hi + ((lgamma_1p(a) + beta_bracket(a, b)) + (s.lo - la.lo - alb.lo));
  }
  const double r1 = std::log1p(b / a), r2 = std::log1p(a / b);
  if (b > 0x1p990)  // no pairs (their products would overflow); the two terms do not cancel
    return -a * r1 - b * r2 + (0.5 * (r1 - std::log(b)) + ln_sqrt_2pi + stirling_c(a) + stirling_c(b));
  const dd t1 = two_prod<Fma>(-a, r1), t2 = two_prod<Fma>(-b, r2);
  const dd s = two_sum(t1.hi, t2.hi);
  return s.hi + (s.lo + t1.lo + t2.lo + 0.5 * (r1 - std::log(b)) + ln_sqrt_2pi + stirling_c(a) + stirling_c(b) -
                 stirling_c(a + b));
}

// x^a y^b / (a B(a, b)), a, b > 0 finite, 0 < x < 1, y = 1 - x given as a
// pair (y.hi + y.lo = 1 - x exactly).
template <bool Fma>
double beta_factor(double a, double b, double x, dd y) {
  const dd lx = log_any<Fma>(x);
  const dd ly0 = log_any<Fma>(y.hi);
  const dd ly = fast_two_sum(ly0.hi, ly0.lo + y.lo / y.hi);
  if (a >= 10.0 && b >= 10.0) {
    const dd ab = two_sum(a, b);
    const dd lab0 = log_dd<Fma>(ab.hi);
    const dd lab = fast_two_sum(lab0.hi, lab0.lo + ab.lo / ab.hi);
    const dd la = log_dd<Fma>(a), lb = log_dd<Fma>(b);
    // ln x - ln a + ln(a + b) and ln y - ln b + ln(a + b), as pairs.
    const dd u1 = two_sum(lx.hi, lab.hi - la.hi), u2 = two_sum(ly.hi, lab.hi - lb.hi);
    // lab.hi - la.hi is exact where it matters (the two within a factor 2).
    const dd v1 = fast_two_sum(u1.hi, u1.lo + (lx.lo + lab.lo - la.lo));
    const dd v2 = fast_two_sum(u2.hi, u2.lo + (ly.lo + lab.lo - lb.lo));
    const dd e1 = mul<Fma>(v1, a), e2 = mul<Fma>(v2, b);
    const dd e = two_sum(e1.hi, e2.hi);
    const double el = e.lo + e1.lo + e2.lo;
    const double front = std::sqrt(a * (b / (2.0 * 3.14159265358979323846 * (a + b)))) / a;
    return std::exp(e.hi) * (1.0 + el) * front * std::exp(stirling_c(a + b) - stirling_c(a) - stirling_c(b));
  }
  if (a < 10.0 && b < 10.0) {
    const dd e1 = mul<Fma>(lx, a), e2 = mul<Fma>(ly, b);
    const dd e = two_sum(e1.hi, e2.hi);
    const double rest = std::log(b / (a + b)) + lgamma_core(1.0 + (a + b)) - lgamma_1p(a) - lgamma_1p(b);
    const dd f = two_sum(e.hi, rest);
    return std::exp(f.hi + (f.lo + e.lo + e1.lo + e2.lo));
  }
  if (a < 10.0) {  // b >= 10: a (ln x + ln b) + b ln y - ln Gamma(1 + a) - bracket
    const dd lb = log_dd<Fma>(b);
    const dd s1 = two_sum(lx.hi, lb.hi);
    const dd e1 = mul<Fma>(fast_two_sum(s1.hi, s1.lo + lx.lo + lb.lo), a);
    const dd e2 = mul<Fma>(ly, b);
    const dd e = two_sum(e1.hi, e2.hi);
    const double rest = -(lgamma_1p(a) + beta_bracket(a, b));
    const dd f = two_sum(e.hi, rest);
    return std::exp(f.hi + (f.lo + e.lo + e1.lo + e2.lo));
  }
  // a >= 10 > b: a ln x + b (ln y + ln a) + ln b - ln a - ln Gamma(1 + b) - bracket
  const dd la = log_dd<Fma>(a), lb = log_any<Fma>(b);
  const dd s2 = two_sum(ly.hi, la.hi);
  const dd e1 = mul<Fma>(lx, a);
  const dd e2 = mul<Fma>(fast_two_sum(s2.hi, s2.lo + ly.lo + la.lo), b);
  const dd d = two_sum(lb.hi, -la.hi);
  const dd e = two_sum(e1.hi, e2.hi);
  const dd g = two_sum(e.hi, d.hi);
  const double rest = -(lgamma_1p(b) + beta_bracket(b, a));
  const dd f = two_sum(g.hi, rest);
  return std::exp(f.hi + (f.lo + g.lo + e.lo + e1.lo + e2.lo + d.lo + lb.lo - la.lo));
}

// The continued fraction K of I_x(a, b) = x^a y^b/(a B) K; iterations bounded.
inline double beta_fraction(double a, double b, double x) {
  constexpr double tiny = 1e-300;
  constexpr int max_terms = 1000000;
  auto guard = [](double v) { return std::fabs(v) < tiny ? tiny : v; };
  double c = 1.0;
  double d = 1.0 / guard(1.0 - (a + b) * x / (a + 1.0));
  double h = d;
  for (int m = 1; m <= max_terms; ++m) {
    const double m2 = 2.0 * m;
    const double even = m * (b - m) * x / ((a + m2 - 1.0) * (a + m2));
    d = 1.0 / guard(1.0 + even * d);
    c = guard(1.0 + even / c);
    h *= d * c;
    const double odd = -(a + m) * (a + b + m) * x / ((a + m2) * (a + m2 + 1.0));
    d = 1.0 / guard(1.0 + odd * d);
    c = guard(1.0 + odd / c);
    const double del = d * c;
    h *= del;
    if (std::fabs(del - 1.0) <= 0x1p-54) break;
  }
  return h;
}

// w = I_x(a, b) and w1 = 1 - w, a, b > 0 finite, 0 < x < 1.
template <bool Fma>
void incomplete_beta_t(double a, double b, double x, double &w, double &w1) {
  if (a > 0x1p990 || b > 0x1p990) {
    // A huge parameter: the distribution is a step at a/(a + b), its spread
    // below 2^-495 (and the pairs' products would overflow).
    const double p = 1.0 / (1.0 + b / a);
    w = x > p ? 1.0 : x < p ? 0.0 : 0.5;
    w1 = 1.0 - w;
    return;
  }
  const dd y = two_sum(1.0, -x);
  auto lower = [&] {
    const double f = beta_factor<Fma>(a, b, x, y);
    return f == 0.0 ? 0.0 : f * beta_fraction(a, b, x);
  };
  auto upper = [&] {
    // I_y(b, a) at y.hi, and to first order the step y.lo to 1 - x:
    // dI_y(b, a)/dy = f b / (y (1 - y)).
    const dd yx = two_sum(1.0, -y.hi);  // 1 - y.hi exactly
    const double f = beta_factor<Fma>(b, a, y.hi, yx);
    return f == 0.0 ? 0.0 : f * (beta_fraction(b, a, y.hi) + b * y.lo / (y.hi * (yx.hi + yx.lo)));
  };
  // The side whose fraction converges fast; where its value exceeds 0.9
  // (a small parameter), the other side is computed too rather than taken as
  // the complement, which would lose its relative accuracy.
  // Below 2^-54, y rounds to 1 and its complement to 0: only the lower side.
  if (x <= (a + 1.0) / (a + b + 2.0) || y.hi == 1.0) {
    w = lower();
    w1 = w > 0.9 && y.hi < 1.0 ? upper() : 1.0 - w;
  } else {
    w1 = upper();
    w = w1 > 0.9 ? lower() : 1.0 - w1;
  }
}

// The kernels for the processor in hand (s14/gamma_dispatch.cpp).
double log_beta(double a, double b);
void incomplete_beta(double a, double b, double x, double &w, double &w1);

// I_x(a, b) with the checks of s14cc: code 0, 1 (a < 0, b < 0, or x outside
// [0, 1]; detail which) or 2 (a = b = 0, x = a = 0, 1 - x = b = 0).
// Substitutes 0 for both; a NaN gives NaNs with code 0; a = b = +inf gives
// NaNs with code 0 (no limit).
inline int incomplete_beta_checked(double a, double b, double x, double &w, double &w1, int &which) {
  w = w1 = 0.0;
  which = 0;
  if (a < 0.0) return which = 1, 1;
  if (b < 0.0) return which = 2, 1;
  if (x < 0.0 || x > 1.0) return which = 3, 1;
  if (a == 0.0 && b == 0.0) return which = 4, 2;
  if (x == 0.0 && a == 0.0) return which = 5, 2;
  if (x == 1.0 && b == 0.0) return which = 6, 2;
  if (a != a || b != b || x != x || (std::isinf(a) && std::isinf(b))) {
    w = w1 = std::nan("");
    return 0;
  }
  // The degenerate ends: mass at 0 (a = 0 or b = inf) or at 1 (b = 0 or a = inf).
  if (x == 0.0 || b == 0.0 || std::isinf(a)) {
    w = x == 1.0 ? 1.0 : 0.0;
    w1 = 1.0 - w;
    return 0;
  }
  if (x == 1.0 || a == 0.0 || std::isinf(b)) {
    w = 1.0;
    w1 = 0.0;
    return 0;
  }
  incomplete_beta(a, b, x, w, w1);
  return 0;
}

}  // namespace zem::s14
