// ln Gamma(z) and psi^(k)(z), k <= 4, for complex z (s14ag, s14af), without
// the range checks of the routines.
//
// ln Gamma is the analytic continuation of ln Gamma from the positive reals
// to the plane cut along the non-positive real axis (its imaginary part is
// continuous there, not reduced to (-pi, pi]); on the cut itself the sign of
// the zero imaginary part says from which side the value is the limit.
//   Re z >= 1/2, |z| >= 15  Stirling's series, ten terms;
//   Re z >= 1/2, |z| < 15   ln Gamma(z) = ln Gamma(z + n) - ln prod_{j<n} (z + j),
//                           Re(z + n) >= 15 (every z + j in the right half
//                           plane, where the principal logarithm is analytic);
//   Re z < 1/2, Im z >= 0   ln Gamma(z) = ln pi - S(pi z) - ln Gamma(1 - z),
//                           S(w) = -i w + i pi/2 - ln 2 + Log(1 - e^(2iw)),
//                           a logarithm of sin w analytic in the upper half
//                           plane, so that no multiple of 2 pi i is to be
//                           added (Hare, J. Algorithms 25 (1997) 221-236,
//                           discusses the branch; the form here is ours);
//   Im z < 0                the conjugate of the value at the conjugate.
// 1 - e^(2iw) is formed as (-expm1(-2v) + 2 e^(-2v) sin^2 u) - i e^(-2v) sin 2u,
// w = u + iv, without cancellation.
// The real part of ln Gamma is a sum of terms much larger than itself near
// its zeros (about 30 beside a value near 0.1 for |z| < 15): the terms, the
// product of the shift (its modulus) and Re z + n are carried as pairs of
// doubles (s14/eft.h), and so is the imaginary part's sum, its argument of the
// product taken once (the whole turns counted from the sum of the arguments
// in doubles).  What remains is one rounding of each sum, the
// double-precision arguments and the Stirling tail (below 0.006).
//
// psi^(k): the recurrence psi^(k)(z) = psi^(k)(z + n) - (-1)^k k! sum_{j<n}
// (z + j)^-(k+1) up to |z + n| >= 20 in the right half plane, the asymptotic
// series of s14/psi.h there, and for Re z < -40 the reflection psi^(k)(z) =
// (-1)^k psi^(k)(1 - z) - pi^(k+1) cot^(k)(pi z) (Abramowitz and Stegun
// 6.4.7, 6.4.6, 6.4.11).  The recurrence reaches down to -40 (60 terms at
// most) because the reflection's two terms, each with the error of a
// double-precision cot, cancel near the zeros of psi^(k) between the poles.
// The sum, every reciprocal power and the two leading asymptotic terms are
// pairs, so that the alternating terms cancel without loss (as in the real
// kernel).  cot^(k) is the polynomial P_k of c = cot w, P_0 = c, P_(k+1) =
// -(1 + c^2) P_k'; away from the real axis (Im w >= 1) written in powers of
// d = c + i = -2i q/(1 - q), q = e^(2iw), small where c is near -i, with
// P_k(-i) = 0 for k >= 1, so that no 1 + c^2 cancels.  Next to a pole, pi z =
// w with |w| < pi/4, the pole term (-1)^k k!/(z + m)^(k+1) is split off as a
// pair and cot w - 1/w = -sum_n a_n w^(2n-1), a_n = 2 zeta(2n)/pi^(2n),
// differentiated term by term.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cmath>
#include <complex>

#include "s14/psi.h"

namespace zem::s14 {

using cplx = std::complex<double>;

// B_2j / (2j (2j - 1)), j = 1..10.
inline constexpr double stirling_terms[10] = {
    0.08333333333333333,   -0.002777777777777778, 0.0007936507936507937, -0.0005952380952380953,
    0.0008417508417508417, -0.0019175269175269176, 0.00641025641025641,  -0.029550653594771242,
    0.17964437236883057,   -1.3924322169059011};

inline constexpr double pi_d = 3.14159265358979323846;
inline constexpr dd pi_dd{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
inline constexpr dd ln_sqrt_2pi_dd{0x1.d67f1c864beb5p-1, -0x1.65b5a1b7ff5dfp-55};
inline constexpr dd ln_pi_dd{0x1.250d048e7a1bdp+0, 0x1.7abf2ad8d5088p-57};
inline constexpr dd ln2_dd{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};

// Pair arithmetic on complex numbers.  Every function that forms an
// error-free product takes Fma (s14/eft.h): the routines call the variant
// chosen for the processor (s14/gamma_dispatch.cpp), where with Fma = true
// the whole evaluation is compiled for fused multiply-add; both give the same
// bits.
struct cdd {
  dd re;
  dd im;
};

inline dd dd_add(dd a, dd b) {
  const dd s = two_sum(a.hi, b.hi);
  return fast_two_sum(s.hi, s.lo + (a.lo + b.lo));
}
inline dd dd_neg(dd a) { return {-a.hi, -a.lo}; }
// a 2^e.  Where 2^e is a normal double the product is the correctly rounded
// a 2^e, as ldexp gives it, without the call (these scalings sit in the
// innermost loop of psi^(k)); ldexp beyond.
inline dd dd_scale(dd a, int e) {
  if (e >= -1022 && e <= 1023) {
    const double f = std::bit_cast<double>(static_cast<uint64_t>(e + 1023) << 52);
    return {a.hi * f, a.lo * f};
  }
  return {std::ldexp(a.hi, e), std::ldexp(a.lo, e)};
}
inline double dd_round(dd a) { return a.hi + a.lo; }

inline cdd cadd(cdd a, cdd b) { return {dd_add(a.re, b.re), dd_add(a.im, b.im)}; }
template <bool Fma>
inline cdd cmul(cdd a, cdd b) {
  return {dd_add(mul<Fma>(a.re, b.re), dd_neg(mul<Fma>(a.im, b.im))),
          dd_add(mul<Fma>(a.re, b.im), mul<Fma>(a.im, b.re))};
}
template <bool Fma>
inline cdd cmul(cdd a, double b) {
  const dd r = mul<Fma>(a.re, b), i = mul<Fma>(a.im, b);
  return {fast_two_sum(r.hi, r.lo), fast_two_sum(i.hi, i.lo)};
}
// |a|^2 as a pair; the parts of a below 2^490 in magnitude.
template <bool Fma>
inline dd cnorm(cdd a) { return dd_add(mul<Fma>(a.re, a.re), mul<Fma>(a.im, a.im)); }

// ilogb of the larger part: read from the bits of a normal number, ilogb
// for zero and subnormals.
inline int cdd_exponent(cdd v) {
  const double m = std::max(std::fabs(v.re.hi), std::fabs(v.im.hi));
  const int e = static_cast<int>(std::bit_cast<uint64_t>(m) >> 52) - 1023;
  return e == -1023 ? std::ilogb(m) : e;
}
inline cdd cdd_scale(cdd v, int e) { return {dd_scale(v.re, e), dd_scale(v.im, e)}; }

// v^-p, p >= 1, for any finite nonzero v: v is scaled to modulus near 1
// first and the power scaled back at the end (inf or 0 where it leaves the
// doubles).
template <bool Fma>
inline cdd inv_power(cdd v, int p) {
  const int q = cdd_exponent(v);
  const cdd s = cdd_scale(v, -q);
  const dd n = cnorm<Fma>(s);
  const cdd r{div<Fma>(s.re, n), dd_neg(div<Fma>(s.im, n))};
  cdd t = r;
  for (int i = 1; i < p; ++i) t = cmul<Fma>(t, r);
  return cdd_scale(t, -q * p);
}

// ln |v| as a pair, v finite and nonzero.
template <bool Fma>
inline dd log_modulus(cdd v) {
  const int q = cdd_exponent(v);
  const dd l = log_pair<Fma>(cnorm<Fma>(cdd_scale(v, -q)));
  constexpr double ln2_hi = 0x1.62e42fefa3800p-1;  // trailing bits zero: q ln2_hi is exact
  constexpr double ln2_lo = 0x1.ef35793c7673p-45;
  const dd ql = two_sum(q * ln2_hi, 0.5 * l.hi);
  return fast_two_sum(ql.hi, ql.lo + (q * ln2_lo + 0.5 * l.lo));
}

inline cdd to_cdd(cplx z) { return {{z.real(), 0.0}, {z.imag(), 0.0}}; }
inline cplx round_cdd(cdd v) { return {dd_round(v.re), dd_round(v.im)}; }

// ln Gamma(x + iy), x >= 1/2 given as a pair, below 2^900 in modulus: the
// real part as a pair.
struct lgamma_parts {
  dd re;
  double im;
};

template <bool Fma>
inline lgamma_parts lgamma_right_dd(dd x, double y) {
  cdd p{{1.0, 0.0}, {0.0, 0.0}};
  double arg_sum = 0.0;
  double n = 0.0;
  if (std::hypot(x.hi, y) < 15.0) {
    n = std::ceil(15.0 - x.hi);
    for (double j = 0.0; j < n; j += 1.0) {
      const dd xj = dd_add(x, dd{j, 0.0});
      p = cmul<Fma>(p, cdd{xj, {y, 0.0}});
      arg_sum += std::atan2(y, xj.hi);
    }
  }
  const dd w = dd_add(x, dd{n, 0.0});
  const cdd wc{w, {y, 0.0}};
  const dd l = log_modulus<Fma>(wc);
  const double theta = std::atan2(y, w.hi);
  // The Stirling tail at w (below 0.006 in modulus).
  const cplx r = 1.0 / cplx{w.hi, y};
  const cplx r2 = r * r;
  cplx s = stirling_terms[9];
  for (int j = 8; j >= 0; --j) s = s * r2 + stirling_terms[j];
  s *= r;
  // Re: (w - 1/2) ln|w| - y theta - w + ln sqrt(2 pi) + Re s - ln|p|.
  const dd wh = dd_add(w, dd{-0.5, 0.0});
  dd re = mul<Fma>(l, wh);
  re = dd_add(re, dd_neg(two_prod<Fma>(y, theta)));
  re = dd_add(re, dd_neg(w));
  re = dd_add(re, ln_sqrt_2pi_dd);
  re = dd_add(re, dd{s.real(), 0.0});
  if (n > 0.0) re = dd_add(re, dd_neg(log_modulus<Fma>(p)));
  // Im: (w - 1/2) theta + y ln|w| - y + Im s - arg p, arg p = sum arg(z + j):
  // the principal argument of the pair p (one rounding) plus the whole turns
  // that the sum of the arguments in doubles shows.
  dd im = mul<Fma>(wh, theta);
  im = dd_add(im, mul<Fma>(l, y));
  im = dd_add(im, dd{-y, 0.0});
  im = dd_add(im, dd{s.imag(), 0.0});
  if (n > 0.0) {
    const double ap = std::atan2(p.im.hi, p.re.hi);
    const double turns = std::nearbyint((arg_sum - ap) / (2.0 * pi_d));
    im = dd_add(im, dd{-ap, 0.0});
    if (turns != 0.0) im = dd_add(im, dd_neg(mul<Fma>(dd{2.0 * pi_dd.hi, 2.0 * pi_dd.lo}, turns)));
  }
  return {re, dd_round(im)};
}

// ln Gamma(z), Re z >= 1/2, finite, |z| beyond 2^900: no pair arithmetic
// (its products would overflow) and no cancellation at such sizes.
inline cplx lgamma_right_huge(cplx z) {
  const cplx r = 1.0 / z;
  return (z - 0.5) * std::log(z) - z + (0.91893853320467274178 + r / 12.0);
}

// S(pi z) = ln sin(pi z), analytic for Im z >= 0; the real part as a pair.
// Beyond 2^900 the products are plain doubles (pairs would overflow).
template <bool Fma>
inline lgamma_parts log_sin_pi(double x, double y) {
  const bool huge = std::fabs(x) > 0x1p900 || std::fabs(y) > 0x1p900;
  const double u = pi_d * (x - std::nearbyint(x));
  const dd v0 = huge ? dd{pi_d * y, 0.0} : two_prod<Fma>(pi_dd.hi, y);
  const dd v = fast_two_sum(v0.hi, v0.lo + pi_dd.lo * y);  // pi y
  const double e = std::exp(-2.0 * v.hi);
  const double su = std::sin(u);
  const double a = -std::expm1(-2.0 * v.hi) + 2.0 * e * su * su, b = -e * std::sin(2.0 * u);
  const dd l = log_modulus<Fma>(cdd{{a, 0.0}, {b, 0.0}});
  const dd re = dd_add(dd_add(v, dd_neg(ln2_dd)), l);
  // Im: pi/2 - pi x + arg(1 - q).
  const dd px0 = huge ? dd{pi_d * x, 0.0} : two_prod<Fma>(pi_dd.hi, x);
  const dd px = fast_two_sum(px0.hi, px0.lo + pi_dd.lo * x);
  const double im = dd_round(dd_add(dd{pi_d / 2.0, 6.123233995736766e-17}, dd_neg(px))) + std::atan2(b, a);
  return {re, im};
}

// ln Gamma(z), z finite, not a non-positive integer on the real axis, |z| <=
// 2.55e305, Im z >= 0 (with its sign bit clear).
template <bool Fma>
inline cplx lgamma_complex_upper(cplx z) {
  const double x = z.real(), y = z.imag();
  if (x >= 0.5) {
    if (std::hypot(x, y) > 0x1p900) return lgamma_right_huge(z);
    const lgamma_parts g = lgamma_right_dd<Fma>(dd{x, 0.0}, y);
    return {dd_round(g.re), g.im};
  }
  if (std::hypot(x, y) > 0x1p900) {
    const lgamma_parts s = log_sin_pi<Fma>(x, y);
    return cplx{1.1447298858494002 - dd_round(s.re), -s.im} - lgamma_right_huge(1.0 - z);
  }
  const lgamma_parts g = lgamma_right_dd<Fma>(two_sum(1.0, -x), -y);
  const lgamma_parts s = log_sin_pi<Fma>(x, y);
  const dd re = dd_add(dd_add(ln_pi_dd, dd_neg(s.re)), dd_neg(g.re));
  return {dd_round(re), -s.im - g.im};
}

// ln Gamma(z), z finite, not a non-positive integer on the real axis, |z| <=
// 2.55e305.
template <bool Fma>
inline cplx lgamma_complex_t(cplx z) {
  if (std::signbit(z.imag())) return std::conj(lgamma_complex_upper<Fma>(std::conj(z)));
  return lgamma_complex_upper<Fma>(z);
}

// a_n = 2 zeta(2n) / pi^(2n), n = 1..20: cot w - 1/w = -sum_n a_n w^(2n-1),
// |w| < pi (a_1 = 1/3, a_2 = 1/45, a_3 = 2/945 exactly; the rest from
// zeta(2n) = sum_j j^-2n, 60 terms and the integral of the tail).
struct cot_series_table {
  double a[20];
  constexpr cot_series_table() : a{} {
    a[0] = 1.0 / 3.0;
    a[1] = 1.0 / 45.0;
    a[2] = 2.0 / 945.0;
    double pi2n = pi_d * pi_d * pi_d * pi_d * pi_d * pi_d;
    for (int n = 4; n <= 20; ++n) {
      pi2n *= pi_d * pi_d;
      double zeta = 0.0;
      for (int j = 60; j >= 1; --j) {
        double t = 1.0;
        for (int i = 0; i < 2 * n; ++i) t /= j;
        zeta += t;
      }
      a[n - 1] = 2.0 * zeta / pi2n;
    }
  }
};
inline constexpr cot_series_table cot_series{};

// pi^(k+1) cot^(k)(pi z), z = x + iy finite, not an integer, |x| < 2^52, as
// a pair.
template <bool Fma>
inline cdd cot_derivative_complex(double x, double y, int k) {
  const double m = std::nearbyint(x);
  const double r = x - m;  // exact
  if (std::hypot(r, y) < 0.25) {
    // (-1)^k k!/(z - m)^(k+1) + pi^(k+1) R^(k)(pi (z - m)), R(w) = cot w - 1/w.
    const cdd pole = cmul<Fma>(inv_power<Fma>(cdd{{r, 0.0}, {y, 0.0}}, k + 1), k % 2 == 0 ? factorial_table[k] : -factorial_table[k]);
    const cplx w = pi_d * cplx{r, y};
    const cplx w2 = w * w;
    // sum_n a_n (2n-1)!/(2n-1-k)! w^(2n-1-k) over 2n - 1 >= k, by Horner in w^2.
    cplx s = 0.0;
    for (int n = 20; 2 * n - 1 >= k; --n) {
      double f = cot_series.a[n - 1];
      for (int i = 0; i < k; ++i) f *= 2 * n - 1 - i;
      s = s * w2 + f;
    }
    if (k % 2 == 0) s *= w;  // the powers 2n - 1 - k are odd for even k
    const double pk = std::pow(pi_d, k + 1);
    return cadd(pole, to_cdd(-pk * s));
  }
  // w = pi (r + i|y|) = wh + wl, wh the rounded parts, wl their errors; a
  // function f of w is f(wh) + wl f'(wh) to the working precision.
  const dd uw = two_prod<Fma>(pi_dd.hi, r);
  const dd vw = std::fabs(y) < 0x1p900 ? two_prod<Fma>(pi_dd.hi, std::fabs(y)) : dd{pi_d * std::fabs(y), 0.0};
  const double u = uw.hi, v = vw.hi;
  const cplx wl{uw.lo + pi_dd.lo * r, vw.lo + pi_dd.lo * std::fabs(y)};
  // Coefficients of P_k, lowest power first.
  double p[9] = {0.0, 1.0};
  int deg = 1;
  for (int i = 0; i < k; ++i) {
    double dp[9] = {}, nx[9] = {};
    for (int j = 1; j <= deg; ++j) dp[j - 1] = j * p[j];
    for (int j = 0; j < deg; ++j) {
      nx[j] -= dp[j];
      nx[j + 2] -= dp[j];
    }
    ++deg;
    for (int j = 0; j <= deg; ++j) p[j] = nx[j];
  }
  const double e = std::exp(-2.0 * v);
  const double su = std::sin(u);
  const cplx one_minus_q{-std::expm1(-2.0 * v) + 2.0 * e * su * su, -e * std::sin(2.0 * u)};
  cplx t;
  if (v < 1.0) {
    // Near the real axis c is far from -i and 1 + c^2 does not cancel: P_k(c),
    // c = cot w = -i (1 + q)/(1 - q) = (2e sin 2u - i (1 - e)(1 + e)) / |1 - q|^2.
    const double om = -std::expm1(-2.0 * v);
    const double den = std::norm(one_minus_q);
    const cplx c0{2.0 * e * std::sin(2.0 * u) / den, -om * (1.0 + e) / den};
    const cplx c = c0 - wl * (1.0 + c0 * c0);  // cot' = -(1 + cot^2)
    t = p[deg];
    for (int j = deg - 1; j >= 0; --j) t = t * c + p[j];
  } else {
    // d = -2i q/(1 - q), q = e^(2iw); c = cot w = -i + d.  P_k(-i + d) =
    // sum_j b_j d^j, b_j = sum_{l>=j} C(l, j) p_l (-i)^(l-j), by repeated
    // synthetic division (a Taylor shift, exact in complex integers).
    const cplx d0 = cplx{2.0 * e * std::sin(2.0 * u), -2.0 * e * std::cos(2.0 * u)} / one_minus_q;
    const cplx d = d0 - wl * (d0 * d0 - 2.0 * cplx{0.0, 1.0} * d0);  // d' = c' = -(1 + c^2) = -(d^2 - 2id)
    cplx b[9];
    for (int j = 0; j <= deg; ++j) b[j] = p[j];
    const cplx c0{0.0, -1.0};
    for (int i = 0; i < deg; ++i)
      for (int j = deg - 1; j >= i; --j) b[j] += c0 * b[j + 1];
    if (k >= 1) b[0] = 0.0;  // P_k(-i) = 0 exactly; the shift gives it so
    t = b[deg];
    for (int j = deg - 1; j >= 0; --j) t = t * d + b[j];
  }
  t *= std::pow(pi_d, k + 1);
  if (std::signbit(y)) t = std::conj(t);
  return to_cdd(t);
}

// g_k(y) = (-1)^(k+1) psi^(k)(y) by the asymptotic series, |y| >= 20,
// Re y >= 0, y = (pair, double); the two leading terms as pairs.
template <bool Fma>
inline cdd g_asymptotic_complex(dd yr, double yi, int k) {
  const cdd y{yr, {yi, 0.0}};
  const cdd u1 = inv_power<Fma>(y, 1);
  const cplx u{u1.re.hi, u1.im.hi};
  const cplx w = u * u;
  const double(&c)[12] = psi_series[k];
  cplx t = c[11];
  for (int j = 10; j >= 0; --j) t = t * w + c[j];
  const cdd uk = k == 0 ? cdd{{1.0, 0.0}, {0.0, 0.0}} : inv_power<Fma>(y, k);
  const cdd half = cmul<Fma>(inv_power<Fma>(y, k + 1), 0.5 * factorial_table[k]);
  const cplx tail = t * w * cplx{uk.re.hi, uk.im.hi};
  cdd lead;
  if (k == 0) {
    lead = {dd_neg(log_modulus<Fma>(y)), {-std::atan2(yi, yr.hi), 0.0}};
  } else {
    lead = cmul<Fma>(uk, factorial_table[k - 1]);
  }
  return cadd(cadd(lead, half), to_cdd(tail));
}

// psi^(k)(z), 0 <= k <= 4, z finite, not a pole.
template <bool Fma>
inline cplx psi_complex_t(cplx z, int k) {
  const double sign = k % 2 == 0 ? -1.0 : 1.0;  // psi^(k) = sign g_k
  const double x = z.real(), y = z.imag();
  if (x < -40.0) {
    // (-1)^k psi^(k)(1 - z) = -g_k(1 - z).
    const cdd g1 = g_asymptotic_complex<Fma>(two_sum(1.0, -x), -y, k);
    const cdd c = cot_derivative_complex<Fma>(x, y, k);
    const cdd v = cadd(g1, c);
    return -round_cdd(v);
  }
  const double ay = std::fabs(y);
  double n = 0.0;
  if (!(x >= 20.0 || (ay >= 20.0 && x >= 0.0))) n = ay < 20.0 ? std::ceil(20.0 - x) : std::ceil(-x);
  cdd s{{0.0, 0.0}, {0.0, 0.0}};
  for (double j = 0.0; j < n; j += 1.0) s = cadd(s, inv_power<Fma>(cdd{two_sum(x, j), {y, 0.0}}, k + 1));
  const cdd g = cadd(g_asymptotic_complex<Fma>(two_sum(x, n), y, k), cmul<Fma>(s, factorial_table[k]));
  return sign * round_cdd(g);
}

// The variant for this processor (s14/gamma_dispatch.cpp).
cplx psi_complex(cplx z, int k);
cplx lgamma_complex(cplx z);

}  // namespace zem::s14
