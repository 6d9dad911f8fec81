// The complete and incomplete beta functions (s14cc, s14cp, s14cq), without
// the range checks of the routines.
//
// ln B(a, b), a <= b:
//   b < 40          ln Gamma(1 + t) for each of a, b and c = a + b reduced to
//                   [1, 2) by the recurrence of Gamma, the factors exact and
//                   their product a pair, c as a pair (log_beta_moderate);
//   a < 10, 40 <= b ln Gamma(a) - a ln b + a - (a + b - 1/2) log1p(a/b)
//                   + c(b) - c(a + b);
//   10 <= a         -a log1p(b/a) - b log1p(a/b) + (log1p(b/a) - ln b)/2
//                   + ln sqrt(2 pi) + c(a) + c(b) - c(a + b),
// c(z) the Stirling correction ln Gamma(z) - (z - 1/2) ln z + z - ln sqrt(2 pi):
// no large terms cancel in the last two forms.
//
// I_x(a, b), both parameters at least 10 and one of them at least 1e5: the
// exponent of x^a y^b relative to its value at the mean x0 = a/(a + b),
// -a rlog1(d/a) - b rlog1(-d/b) with d = x b - y a formed from exact
// products, times a Laplace-type integral of unit scale summed by a fixed
// Gauss-Legendre rule (incomplete_beta_large): no continued fraction, whose
// length grows as sqrt(min(a, b)), and no difference of terms of size a, so
// that it holds up to the largest double.
// Otherwise: I_x(a, b) = x^a y^b / (a B(a, b)) K, y = 1 - x, K
// the continued fraction of Abramowitz and Stegun 26.5.8 (modified Lentz),
// used for I_x(a, b) where x <= (a + 1)/(a + b + 2) and for I_y(b, a) = 1 -
// I_x(a, b) elsewhere, so that the fraction converges fast and the value it
// gives is the smaller of the two, or close to 1/2.  The factor x^a y^b/(a B)
// is formed as exp(E), E carried as a pair wherever its parts are large and
// cancel (DiDonato and Morris, ACM TOMS 18 (1992) 360-373, section 3, form
// the factor the same way): for a, b >= 10, E = a (ln x - ln a + ln(a + b))
// + b (ln y - ln b + ln(a + b)) and the Stirling corrections, the first
// bracket a pair (it vanishes at x = a/(a + b)); with one parameter s < 10
// and the other L >= 10
// the terms s ln L and s ln x, or L ln x and ln L, are joined before they are
// rounded; with both below 10, E = a ln x + b ln y - ln a - ln B(a, b), ln B
// as above.  Where the fraction's first denominator 1 - (a + b) x/(a + 1) is
// small the fraction is evaluated backwards in pairs (its rounding errors
// would be multiplied by hundreds); for a parameter below 1 whose side holds
// the mass, the series of the integrand gives both values
// (beta_small_series).  One parameter below 10 beside one past 2^40: the
// regularised incomplete gamma function of the small parameter at
// (b + (a - 1)/2)(-ln(1 - x)) (incomplete_beta_gamma), exact to far below
// the rounding error there.
// Exact arguments of ln B with a simple answer (a or b = 1, small integers)
// are one rounding of that answer.
#pragma once

#include <array>
#include <cmath>
#include <limits>
#include <cstdint>
#include <utility>

#include "s14/eft.h"
#include "s14/gamma.h"
#include "s14/incomplete_gamma.h"

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

// u v exactly as a pair for |u| <= 1 and any finite v (Dekker's product
// needs both below 2^996; u 2^64 and v 2^-64 are exact).
template <bool Fma>
dd prod_big(double u, double v) {
  if (!Fma && std::fabs(v) > 0x1p990) return two_prod<Fma>(u * 0x1p64, v * 0x1p-64);
  return two_prod<Fma>(u, v);
}

// (t.hi + t.lo) p for p up to the largest double.
template <bool Fma>
dd mul_big(dd t, double p) {
  if (!Fma && p > 0x1p990) return mul<Fma>(dd{t.hi * 0x1p64, t.lo * 0x1p64}, p * 0x1p-64);
  return mul<Fma>(t, p);
}

// (d.hi + d.lo)/p for p up to the largest double.
template <bool Fma>
dd div_big(dd d, double p) {
  if (p > 0x1p990) return div<Fma>(dd{d.hi * 0x1p-64, d.lo * 0x1p-64}, dd{p * 0x1p-64, 0.0});
  return div<Fma>(d, dd{p, 0.0});
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
// a - (a + b - 1/2) log1p(a/b) = a (1 - rho - ((a - 1/2)/b) rho), rho =
// log1p(q)/q, q = a/b: the product form does not lose the term when q
// underflows (a tiny beside a huge b), where log1p(q) would be 0 and the
// difference a instead of about a/(2b).
inline double beta_bracket_log(double a, double b) {
  const double q = a / b;
  double rho, one_minus_rho;
  if (q < 0x1p-26) {
    one_minus_rho = q * (0.5 - q / 3.0);
    rho = 1.0 - one_minus_rho;
  } else {
    rho = std::log1p(q) / q;
    one_minus_rho = 1.0 - rho;
  }
  return a * (one_minus_rho - ((a - 0.5) / b) * rho);
}

inline double beta_bracket(double a, double b) {
  return beta_bracket_log(a, b) + stirling_c(b) - stirling_c(a + b);
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

// psi(z), 0 < z < 80, to about 1e-7 absolutely: only the first-order step of
// ln Gamma across the rounding error of a + b needs it.
inline double psi_rough(double z) {
  double s = 0.0;
  for (; z < 6.0; z += 1.0) s += 1.0 / z;
  const double w = 1.0 / (z * z);
  return std::log(z) - 0.5 / z - w * (1.0 / 12.0 - w / 120.0) - s;
}

// ln Gamma(z) - ln Gamma(1 + t), z in [1, 80), t = z - floor(z), as the
// product (z - 1)(z - 2)...(1 + t), its factors exact, the product a pair.
template <bool Fma>
dd gamma_factor(double z) {
  dd p{1.0, 0.0};
  for (double f = z - 1.0; f >= 1.0; f -= 1.0) {
    const dd m = mul<Fma>(p, f);
    p = fast_two_sum(m.hi, m.lo);
  }
  return p;
}

// ln B(a, b), a <= b < 40, as ln Gamma(1 + t_a) + ln Gamma(1 + t_b) -
// ln Gamma(1 + t_c) + ln(P(a) P(b)/P(c)) - [ln a, ln b where below 1] +
// [ln c where below 1] + psi(c) c_lo, each argument z >= 1 reduced by the
// recurrence of Gamma to 1 + t in [1, 2) (t = z - floor(z) and the factors
// z - 1, z - 2, ... exact), z < 1 taken as ln Gamma(1 + z) - ln z, and c =
// a + b = c_hi + c_lo a pair (ln Gamma at c_hi plus the first-order step
// psi(c_hi) c_lo).  The products and logarithms are pairs and the ln Gamma
// values on [1, 2) are at most 0.13 in size, so that the sum carries no
// error beyond its final rounding and a few units of 2^-60 (the sum of the
// three ln Gamma values, each about 1e-17 off), where forming ln Gamma(a) +
// ln Gamma(b) - ln Gamma(a + b) from values up to 100 would lose several
// units to their cancellation.
template <bool Fma>
double log_beta_moderate(double a, double b) {
  const dd c = two_sum(a, b);
  dd p{1.0, 0.0}, q{1.0, 0.0};
  double g = 0.0;
  dd logs{0.0, 0.0};
  auto add = [](dd u, dd v) {
    const dd s = two_sum(u.hi, v.hi);
    return fast_two_sum(s.hi, s.lo + (u.lo + v.lo));
  };
  auto reduce = [&](double z, dd &prod, double sign) {
    if (z < 1.0) {
      g += sign * lgamma1p_t<Fma>(z);
      const dd l = log_any<Fma>(z);
      logs = add(logs, dd{-sign * l.hi, -sign * l.lo});
      return;
    }
    const double t = z - std::floor(z);
    g += sign * lgamma1p_t<Fma>(t);
    prod = mul<Fma>(prod, gamma_factor<Fma>(z));
  };
  reduce(a, p, 1.0);
  reduce(b, p, 1.0);
  reduce(c.hi, q, -1.0);
  const dd r = div<Fma>(p, q);
  const dd lr0 = log_any<Fma>(r.hi);
  const dd lr = fast_two_sum(lr0.hi, lr0.lo + r.lo / r.hi);
  const dd s = add(logs, lr);
  return s.hi + (s.lo + (c.lo == 0.0 ? g : g - psi_rough(c.hi) * c.lo));
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
  if (b < 40.0) return log_beta_moderate<Fma>(a, b);
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

// exp(hi + lo), |lo| of the order of the unit of hi: for |hi| >= 4 as
// exp(hi) (1 + lo), so that an exponent of several hundred loses no more than
// its own error (adding lo to hi first would round the exponent, 2^-53 |hi|
// relatively in the result); below 4 that rounding costs about as much as the
// extra rounding of the product, and the sum is taken.
inline double exp_pair(double hi, double lo) {
  if (std::fabs(hi) < 4.0) return std::exp(hi + lo);
  const double h = std::exp(hi);
  return h + h * lo;
}

// x^a y^b / (a B(a, b)), a, b > 0 finite, both below beta_large_max where
// both are at least 10 (larger ones take incomplete_beta_large), 0 < x < 1,
// y = 1 - x given as a pair (y.hi + y.lo = 1 - x exactly).
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
    return exp_pair(f.hi, f.lo + r.lo - la.lo + e.lo + e1.lo + e2.lo);
  }
  if (a < 10.0) {  // b >= 10: a (ln x + ln b) + b ln y - ln Gamma(1 + a) - bracket
    const dd lb = log_dd<Fma>(b);
    const dd s1 = two_sum(lx.hi, lb.hi);
    const dd e1 = mul<Fma>(fast_two_sum(s1.hi, s1.lo + lx.lo + lb.lo), a);
    const dd e2 = mul<Fma>(ly, b);
    const dd e = two_sum(e1.hi, e2.hi);
    const double rest = -(lgamma_1p(a) + beta_bracket(a, b));
    const dd f = two_sum(e.hi, rest);
    return exp_pair(f.hi, f.lo + e.lo + e1.lo + e2.lo);
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
  return exp_pair(f.hi, f.lo + g.lo + e.lo + e1.lo + e2.lo + d.lo + lb.lo - la.lo);
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
  const double bracket = beta_bracket_log(a, l) + stirling_c_diff(l, a);
  const dd ep = two_sum(e1.hi, -(lgamma_1p(a) + bracket + sum));
  const double e_lo = ep.lo + e1.lo;
  const double e = ep.hi + e_lo;
  double t = 1.0, tsum = 0.0;
  for (int j = 1; j <= 4000; ++j) {
    t *= (j - b) * x.hi / j;
    const double term = t / (a + j);
    tsum += term;
    if (std::fabs(term) <= 0x1p-60 * std::fabs(tsum)) break;
  }
  const double f = exp_pair(ep.hi, e_lo);
  w = f + f * (a * tsum);
  w1 = -std::expm1(e) - f * (a * tsum);
}

// --- Large parameters: both a and b at least beta_large_min. ---
//
// Near the mean of large parameters the continued fraction needs about
// sqrt(min(a, b)) terms and the factor's logarithm is a difference of terms
// of size a; both fail long before the parameters overflow.  There
//   I_x(p, q) = exp(E) exp(c(p + q) - c(p) - c(q)) sqrt(r p/(2 pi)) J/g,
// on the side x <= x0 = p/(p + q) of the mean (the other side by symmetry,
// I_x(a, b) = 1 - I_y(b, a)), where, with y = 1 - x and d = x q - y p =
// (p + q)(x - x0),
//   E = -p rlog1(d/p) - q rlog1(-d/q),  rlog1(t) = t - ln(1 + t) >= 0
// (ln x^p y^q - ln x0^p y0^q, a sum of two terms of one sign: no
// cancellation), r = q/(p + q), and J is the Laplace-type integral
//   K = (p/y) int_0^inf exp(phi(u)) du = (p/g) J,  J = int_0^inf exp(phi(y v/g)) dv,
//   phi(u) = -(x - d)/y u - (q - 1) [rlog1(z) + (x/y)(u - 1 + e^-u)],
//   z = (x/y)(1 - e^-u),
// obtained from the integral of t^(p-1) (1 - t)^(q-1) over (0, x) by
// t = x e^-u.  phi is concave, 0 at 0 and decreasing on this side; the scale
// g = (x - d) + sqrt((q - 1) x) makes the linear and quadratic coefficients
// of phi in v at most 1 with c1 + sqrt(c2) = 1, so that J is a smooth
// integral of unit scale: composite 16-point Gauss-Legendre rule on
// [0, 1], [1, 3], ..., [31, 63] (the integrand below e^-63 beyond).
// d is formed from exact products, so that it keeps its relative accuracy
// however close x lies to the mean; rlog1 of it is carried as a pair, so
// that E (up to about 745 in size where the result is representable) is
// exact to about 2^-55 of itself.
// The form serves both parameters at least 10 with the larger at least
// beta_large_max; below that the continued fraction (about sqrt(min(a, b))
// terms near the mean, evaluated in pairs there) is both accurate and several
// times faster than the 32 to 64 points of the integral.
constexpr double beta_large_min = 10.0;
constexpr double beta_large_max = 1e5;

// t - ln(1 + t), t > -1, as a pair.  For -1/3 <= t <= 1/2 with s = t/(2 + t):
// ln(1 + t) = 2 atanh s, so t - ln(1 + t) = t s - 2 s^3 (1/3 + s^2/5 + ...),
// its first two terms in pairs, the rest (below 1/50 of it) in doubles; elsewhere t - ln(1 + t) with the logarithm as a pair.  +inf where
// 1 + t is not positive as computed (t next to -1: the results are 0 then).
template <bool Fma>
dd rlog1_dd(dd t) {
  if (t.hi >= -1.0 / 3.0 && t.hi <= 0.5) {  // |s| <= 1/5
    const dd two_t = two_sum(2.0, t.hi);
    const dd s = div<Fma>(t, fast_two_sum(two_t.hi, two_t.lo + t.lo));
    const double w = s.hi * s.hi;
    double r = 1.0 / 37.0;
    for (int k = 35; k >= 7; k -= 2) r = r * w + 1.0 / k;
    // t s - 2 s^3/3 in pairs, the rest 2 s^5 (1/5 + s^2/7 + ...) (below 1/50
    // of the whole) in doubles.
    const dd ts = mul<Fma>(t, s);
    const dd s3 = mul<Fma>(mul<Fma>(s, s), s);
    const dd c3 = div<Fma>(dd{2.0 * s3.hi, 2.0 * s3.lo}, dd{3.0, 0.0});
    const dd u = two_sum(ts.hi, -c3.hi);
    return fast_two_sum(u.hi, u.lo + (ts.lo - c3.lo - 2.0 * s.hi * w * w * (0.2 + w * r)));
  }
  const dd v0 = two_sum(1.0, t.hi);
  const dd v = fast_two_sum(v0.hi, v0.lo + t.lo);
  if (!(v.hi > 0.0)) return {std::numeric_limits<double>::infinity(), 0.0};
  const dd l0 = log_any<Fma>(v.hi);
  const dd u = two_sum(t.hi, -l0.hi);
  return fast_two_sum(u.hi, u.lo + (t.lo - l0.lo - v.lo / v.hi));
}

// t - ln(1 + t) in doubles, t >= 0 (the same forms).
inline double rlog1(double t) {
  if (t > 0.5) return t - std::log1p(t);
  const double s = t / (2.0 + t), w = s * s;
  double r = 1.0 / 37.0;
  for (int k = 35; k >= 3; k -= 2) r = r * w + 1.0 / k;
  return t * s - 2.0 * s * w * r;
}

// u - 1 + e^-u, u >= 0, without the cancellation of its terms for small u.
inline double exp_rest(double u) {
  if (u > 0.5) return u + std::expm1(-u);
  // sum_{k>=2} (-u)^k/k!, to k = 17 (the rest below 2^-60 of it for u <= 1/2).
  static constexpr auto inv_factorial = [] {
    std::array<double, 18> c{};
    double f = 1.0;
    for (int k = 1; k < 18; ++k) c[k] = 1.0 / (f *= k);
    return c;
  }();
  double r = inv_factorial[17];
  for (int k = 16; k >= 2; --k) r = inv_factorial[k] - u * r;
  return u * u * r;
}

// x q - y p as a pair (x, y pairs with |x|, |y| <= 1): the products exact,
// summed largest first with their rounding errors kept.
template <bool Fma>
dd beta_offset(double p, double q, dd x, dd y) {
  const dd p1 = prod_big<Fma>(x.hi, q), p2 = prod_big<Fma>(y.hi, p);
  const dd p3 = prod_big<Fma>(x.lo, q), p4 = prod_big<Fma>(y.lo, p);
  const dd s = two_sum(p1.hi, -p2.hi);
  const dd t = two_sum(p3.hi, -p4.hi);
  const dd u = two_sum(s.lo, t.hi);
  const dd v = two_sum(p1.lo, -p2.lo);
  const dd h = two_sum(s.hi, u.hi);
  const double rest = ((u.lo + v.hi) + (v.lo + t.lo)) + ((p3.lo - p4.lo) + h.lo);
  return fast_two_sum(h.hi, rest);
}

// I_x(p, q) for p, q >= beta_large_min on the side d = x q - y p <= 0 (the
// form above).
template <bool Fma>
double beta_large_side(double p, double q, dd x, dd y, dd d) {
  const dd r1 = rlog1_dd<Fma>(div_big<Fma>(d, p));
  const dd r2 = rlog1_dd<Fma>(div_big<Fma>(dd{-d.hi, -d.lo}, q));
  if (!(r1.hi < 1e6 && r2.hi < 1e6)) return 0.0;  // E below -1e10
  const dd e1 = mul_big<Fma>(r1, p), e2 = mul_big<Fma>(r2, q);
  const dd e = two_sum(-e1.hi, -e2.hi);
  const double el = e.lo - e1.lo - e2.lo;
  if (e.hi < -800.0) return 0.0;
  const double xd = x.hi - d.hi;  // (x - d), >= x > 0 on this side
  const double qx = (q - 1.0) * x.hi;
  const double g = xd + std::sqrt(qx);
  const double sigma = y.hi / g;   // u = sigma v
  const double ratio = x.hi / y.hi;
  const double c1 = xd / g;
  auto f = [&](double v) {
    const double u = sigma * v;
    const double z = -ratio * std::expm1(-u);
    return std::exp(-c1 * v - (q - 1.0) * (rlog1(z) + ratio * exp_rest(u)));
  };
  static constexpr double node[8][2] = {
      {0.0950125098376374401853, 0.189450610455068496285}, {0.28160355077925891323, 0.182603415044923588867},
      {0.458016777657227386342, 0.169156519395002538189}, {0.617876244402643748447, 0.149595988816576732082},
      {0.755404408355003033895, 0.124628971255533872052}, {0.86563120238783174388, 0.0951585116824927848099},
      {0.944575023073232576078, 0.0622535239386478928628}, {0.989400934991649932596, 0.0271524594117540948518}};
  double j = 0.0;
  for (double lo = 0.0, hi = 1.0; lo < 63.0; lo = hi, hi = 2.0 * hi + 1.0) {
    if (lo > 0.0 && f(lo) < 1e-20 * j) break;  // f decreases: the rest is below 1e-20 of j
    const double mid = 0.5 * (lo + hi), half = 0.5 * (hi - lo);
    double s = 0.0;
    for (const auto &n : node) s += n[1] * (f(mid - half * n[0]) + f(mid + half * n[0]));
    j += half * s;
  }
  const double r = 1.0 / (1.0 + p / q);
  const double front = std::sqrt(r) * std::sqrt(p / (2.0 * 3.14159265358979323846));
  const double corr = std::exp(stirling_c(p + q) - stirling_c(p) - stirling_c(q));
  return std::exp(e.hi) * (1.0 + el) * corr * front * (j / g);
}

// w = I_x(a, b) and w1 = 1 - w for a, b >= beta_large_min, 0 < x < 1.
template <bool Fma>
void incomplete_beta_large(double a, double b, double x, double &w, double &w1) {
  const dd xx{x, 0.0};
  const dd y = two_sum(1.0, -x);
  const dd d = beta_offset<Fma>(a, b, xx, y);
  if (d.hi <= 0.0) {
    w = beta_large_side<Fma>(a, b, xx, y, d);
    w1 = 1.0 - w;
  } else {
    w1 = beta_large_side<Fma>(b, a, y, xx, dd{-d.hi, -d.lo});
    w = 1.0 - w1;
  }
}

// --- One parameter below 10 beside one at least beta_gamma_min. ---
//
// With t = 1 - e^-v, t^(a-1) (1 - t)^(b-1) dt = v^(a-1) e^-(b' v) h(v)^(a-1) dv,
// b' = b + (a - 1)/2, h(v) = e^(v/2) (1 - e^-v)/v = 1 + v^2/24 + O(v^4), and
// Gamma(a + b)/Gamma(b) = b'^a (1 + O(a^3/b^2)), so that
//   I_x(a, b) = P(a, b' v_x),  1 - I_x(a, b) = Q(a, b' v_x),  v_x = -ln(1 - x),
// P and Q the regularised incomplete gamma functions, each to a relative
// O(a^3/b^2 + a v^2) where v is the part of (0, v_x) or (v_x, inf) that
// carries the integral: v below about 1000/b wherever the value exceeds
// 1e-300, below 1e-20 for b >= 2^40 and a < 10.  This is the form where the
// continued fraction fails: x below 2^-54 has 1 - x = 1 in doubles, and the
// mass of the small side (b x of order a) lies there once b passes 2^54.
// Both parameters at least 10 take incomplete_beta_large instead.
constexpr double beta_gamma_min = 0x1p40;

// -ln(1 - t) as a pair, 0 < t < 1.
template <bool Fma>
dd neg_log1m(double t) {
  if (t <= 0x1p-20) {
    // t + t^2/2 + t^3/3 + t^4/4, the rest below 2^-80 t.
    return fast_two_sum(t, t * t * (0.5 + t * (1.0 / 3.0 + t * 0.25)));
  }
  const dd y = two_sum(1.0, -t);
  const dd l = log_any<Fma>(y.hi);
  return fast_two_sum(-l.hi, -(l.lo + y.lo / y.hi));
}

// w = I_x(a, b), w1 = 1 - w for a < 10 <= beta_gamma_min <= b (lower) or the
// same with the roles swapped, I_y(b, a) = 1 - I_x(a, b), where v = -ln y =
// -ln(1 - (1 - x)).
template <bool Fma>
void incomplete_beta_gamma(double a, double b, double x, double &w, double &w1) {
  const bool swap = a > b;
  const double s = swap ? b : a, l = swap ? a : b;
  // v = -ln(1 - t), t = x (or 1 - x, exactly, where x >= 1/2; -ln x directly below).
  dd v;
  if (!swap) {
    v = neg_log1m<Fma>(x);
  } else if (x >= 0.5) {
    v = neg_log1m<Fma>(1.0 - x);
  } else {
    const dd lx = log_any<Fma>(x);
    v = dd{-lx.hi, -lx.lo};
  }
  const dd lp = two_sum(l, 0.5 * (s - 1.0));
  // z = l' v as a pair; past 1e6 P = 1 and Q underflows for s < 10.
  double p = 1.0, q = 0.0;
  if (v.hi * lp.hi < 1e6) {
    const dd z0 = prod_big<Fma>(v.hi, lp.hi);  // v.hi < 1e6/lp.hi
    const dd z = fast_two_sum(z0.hi, z0.lo + (v.hi * lp.lo + v.lo * lp.hi));
    const pq r = incomplete_gamma(s, z.hi, 0x1p-53);
    // The first-order step from z.hi to z: dP/dz = z^(s-1) e^-z/Gamma(s).
    const double step = z.lo == 0.0 ? 0.0 : incomplete_gamma_prefactor(s, z.hi) * (s / z.hi) * z.lo;
    p = r.p + step;
    q = r.q - step;
  }
  if (swap) {
    w = q;
    w1 = p;
  } else {
    w = p;
    w1 = q;
  }
}

// w = I_x(a, b) and w1 = 1 - w, a, b > 0 finite, 0 < x < 1.
template <bool Fma>
void incomplete_beta_t(double a, double b, double x, double &w, double &w1) {
  if (a >= beta_large_min && b >= beta_large_min && (a >= beta_large_max || b >= beta_large_max)) {
    return incomplete_beta_large<Fma>(a, b, x, w, w1);
  }
  if (a >= beta_gamma_min || b >= beta_gamma_min) return incomplete_beta_gamma<Fma>(a, b, x, w, w1);
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
