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
// with both below 10, E = a ln x + b ln y - ln a - ln B(a, b), ln B as above.
// Where the fraction's first denominator 1 - (a + b) x/(a + 1) is small (near
// the mean of large parameters) the fraction is evaluated backwards in pairs
// (its rounding errors would be multiplied by hundreds); for a parameter
// below 1 whose side holds the mass, the series of the integrand gives both
// values (beta_small_series).
// Exact arguments of ln B with a simple answer (a or b = 1, small integers)
// are one rounding of that answer.
#pragma once

#include <cmath>
#include <cstdint>
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

// -ln(a C(a + b - 1, a)) = ln B(a, b) for integers 1 <= a <= b where that
// integer is below 2^53 (exact in a double, so that the result is its
// logarithm rounded once); 0 where it is not.
inline double integer_beta_reciprocal(double a, double b) {
  if (a > 60.0 || b > 0x1p52 || a != std::floor(a) || b != std::floor(b)) return 0.0;
  const uint64_t ia = static_cast<uint64_t>(a), ib = static_cast<uint64_t>(b);
  uint64_t c = 1;  // C(b - 1 + i, i), i = 0..a, each step exact
  for (uint64_t i = 1; i <= ia; ++i) {
    const uint64_t f = ib - 1 + i;
    if (c > (uint64_t{1} << 53) / f) return 0.0;
    c = c * f / i;
  }
  if (c > (uint64_t{1} << 53) / ia) return 0.0;
  return static_cast<double>(c * ia);
}

// ln B(a, b), a, b > 0 finite.
template <bool Fma>
double log_beta_t(double a, double b) {
  if (a > b) std::swap(a, b);
  // Exact arguments with a simple answer: ln B(a, 1) = -ln a, and for small
  // integers -ln of an integer (ln B(1, 1) = 0, ln B(1, b) = -ln b, ln B(2, 3) =
  // -ln 12).
  // (0 - ln: +0 rather than -0 at ln B(1, 1).)
  if (b == 1.0) return 0.0 - std::log(a);
  if (a == 1.0) return 0.0 - std::log(b);
  if (a == std::floor(a) && a <= 60.0) {
    const double n = integer_beta_reciprocal(a, b);
    if (n != 0.0) return 0.0 - std::log(n);
  }
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
    // a ln x + b ln y - ln a - ln B(a, b); ln B by its recurrence (log_beta_t),
    // not as ln Gamma(1 + a + b) - ..., whose argument 1 + a + b is rounded.
    const dd e1 = mul<Fma>(lx, a), e2 = mul<Fma>(ly, b);
    const dd e = two_sum(e1.hi, e2.hi);
    const dd la = log_any<Fma>(a);
    const dd r = two_sum(-log_beta_t<Fma>(a, b), -la.hi);
    const dd f = two_sum(e.hi, r.hi);
    return std::exp(f.hi + (f.lo + r.lo - la.lo + e.lo + e1.lo + e2.lo));
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

// The continued fraction K of I_x(a, b) = x^a y^b/(a B) K; iterations bounded
// (their number, m, in terms).
inline double beta_fraction(double a, double b, double x, int &terms) {
  constexpr double tiny = 1e-300;
  constexpr int max_terms = 1000000;
  auto guard = [](double v) { return std::fabs(v) < tiny ? tiny : v; };
  double c = 1.0;
  double d = 1.0 / guard(1.0 - (a + b) * x / (a + 1.0));
  double h = d;
  for (int m = 1; m <= max_terms; ++m) {
    const double m2 = 2.0 * m;
    // The ratios first: no product of two large parameters (it could overflow).
    const double even = (m / (a + m2 - 1.0)) * ((b - m) / (a + m2)) * x;
    d = 1.0 / guard(1.0 + even * d);
    c = guard(1.0 + even / c);
    h *= d * c;
    const double odd = -((a + m) / (a + m2)) * ((a + b + m) / (a + m2 + 1.0)) * x;
    d = 1.0 / guard(1.0 + odd * d);
    c = guard(1.0 + odd / c);
    const double del = d * c;
    h *= del;
    terms = m;
    if (std::fabs(del - 1.0) <= 0x1p-54) break;
  }
  return h;
}

// The same fraction, K = 1/(1 + d_0/(1 + e_1/(1 + d_1/(1 + e_2/ ...)))), d_m =
// -(a + m)(a + b + m) x/((a + 2m)(a + 2m + 1)), e_m = m (b - m) x/((a + 2m - 1)
// (a + 2m)), evaluated from its m-th terms back to the first with every
// coefficient and every step a pair, x given as a pair.  Near the mean
// x = a/(a + b) of large parameters 1 + d_m nearly cancels for the first
// sqrt(a) or so terms, and the fraction in doubles would carry errors of
// 2^-53 times the ratio of K to its first denominator (hundreds of units).
template <bool Fma>
double beta_fraction_pairs(double a, double b, dd x, int terms) {
  const dd ab = two_sum(a, b);
  const dd one{1.0, 0.0};
  auto add = [](dd u, dd v) {
    const dd s = two_sum(u.hi, v.hi);
    return fast_two_sum(s.hi, s.lo + (u.lo + v.lo));
  };
  // +-(p/q)(r/s) x/(1 + t), the ratios formed first (each near 1 or below:
  // no product of two large parameters, which could overflow).
  auto step = [&](dd p, dd q, dd r, dd s, dd t, bool negative) {
    const dd c = mul<Fma>(mul<Fma>(div<Fma>(p, q), div<Fma>(r, s)), x);
    const dd v = div<Fma>(c, add(one, t));
    return negative ? dd{-v.hi, -v.lo} : v;
  };
  dd t{0.0, 0.0};
  for (int m = terms; m >= 1; --m) {
    const double md = m, m2 = 2.0 * m;
    const dd a2m = two_sum(a, m2);
    t = step(two_sum(a, md), a2m, add(ab, dd{md, 0.0}), two_sum(a, m2 + 1.0), t, true);
    t = step(dd{md, 0.0}, two_sum(a, m2 - 1.0), two_sum(b, -md), a2m, t, false);
  }
  t = step(ab, two_sum(a, 1.0), one, one, t, true);
  return div<Fma>(one, add(one, t)).hi;
}

// K, in pairs where its first denominator 1 - (a + b) x/(a + 1) is below 1/16
// (so that the errors of the doubles would be amplified beyond 16 units).
template <bool Fma>
double beta_fraction_checked(double a, double b, dd x) {
  int terms = 0;
  const double k = beta_fraction(a, b, x.hi, terms);
  if (std::fabs(1.0 - (a + b) * x.hi / (a + 1.0)) >= 0.0625 || terms > 20000) return k;
  return beta_fraction_pairs<Fma>(a, b, x, terms + 8);
}

// c(L) - c(L + a) for L >= 10, a > 0, each term C_k (L^-(2k-1) - (L + a)^-(2k-1))
// as C_k L^-(2k-1) (1 - (1 + a/L)^-(2k-1)): relatively accurate however
// small a is (the plain difference would carry an error of 2^-53 c(L)).
inline double stirling_c_diff(double l, double a) {
  constexpr double c[7] = {1.0 / 12.0, -1.0 / 360.0, 1.0 / 1260.0, -1.0 / 1680.0, 1.0 / 1188.0, -691.0 / 360360.0, 1.0 / 156.0};
  const double lp = std::log1p(a / l), w = 1.0 / (l * l);
  double s = 0.0, p = 1.0 / l;
  for (int k = 0; k < 7; ++k, p *= w) s += c[k] * p * -std::expm1(-(2 * k + 1) * lp);
  return s;
}

// I_x(a, b) and its complement by the series of the integrand for a < 1,
// x <= 1/2 and b x <= 1 (x a pair):
//   I_x(a, b) = F (1 + a T),  T = sum_{j>=1} (1 - b)_j x^j / (j! (a + j)),
//   F = x^a / (a B(a, b)) = exp(E),
//   E = a (ln x + ln L) - lnGamma(1 + a) - [a - (a + L - 1/2) log1p(a/L)
//       + c(L) - c(a + L)] - sum_{j<n} log1p(a/(b + j)),  L = b + n >= 10,
// and 1 - I_x(a, b) = -expm1(E) - F a T: for small a both parts are of the
// size of a, each computed to its own relative accuracy, and they do not
// cancel while b x <= 1, where the continued fraction of the complement
// converges slowly and loses its accuracy.  Writes (w, w1) = (I, 1 - I).
template <bool Fma>
void beta_small_series(double a, double b, dd x, double &w, double &w1) {
  const double n = b < 10.0 ? std::ceil(10.0 - b) : 0.0;
  const double l = b + n;
  double sum = 0.0;
  for (double j = 0.0; j < n; j += 1.0) sum += std::log1p(a / (b + j));
  const dd lx0 = log_any<Fma>(x.hi);
  const dd lx = fast_two_sum(lx0.hi, lx0.lo + x.lo / x.hi);
  const dd ll = log_dd<Fma>(l);
  const dd s = two_sum(lx.hi, ll.hi);
  const dd e1 = mul<Fma>(fast_two_sum(s.hi, s.lo + lx.lo + ll.lo), a);
  const double bracket = a - (a + l - 0.5) * std::log1p(a / l) + stirling_c_diff(l, a);
  const double e = e1.hi + (e1.lo - (lgamma_1p(a) + bracket + sum));
  double t = 1.0, tsum = 0.0;
  for (int j = 1; j <= 4000; ++j) {
    t *= (j - b) * x.hi / j;
    const double term = t / (a + j);
    tsum += term;
    if (std::fabs(term) <= 0x1p-60 * std::fabs(tsum)) break;
  }
  const double f = std::exp(e);
  w = f + f * (a * tsum);
  w1 = -std::expm1(e) - f * (a * tsum);
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
  // A small parameter with the mass of the other side near its end.
  if (a < 1.0 && x <= 0.5 && b * x <= 1.0) return beta_small_series<Fma>(a, b, dd{x, 0.0}, w, w1);
  if (b < 1.0 && y.hi <= 0.5 && a * y.hi <= 1.0) return beta_small_series<Fma>(b, a, y, w1, w);
  auto lower = [&] {
    const double f = beta_factor<Fma>(a, b, x, y);
    return f == 0.0 ? 0.0 : f * beta_fraction_checked<Fma>(a, b, dd{x, 0.0});
  };
  auto upper = [&] {
    // I_y(b, a) at y.hi, and to first order the step y.lo to 1 - x:
    // dI_y(b, a)/dy = f b / (y (1 - y)).
    const dd yx = two_sum(1.0, -y.hi);  // 1 - y.hi exactly
    const double f = beta_factor<Fma>(b, a, y.hi, yx);
    return f == 0.0 ? 0.0 : f * (beta_fraction_checked<Fma>(b, a, dd{y.hi, 0.0}) + b * y.lo / (y.hi * (yx.hi + yx.lo)));
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
