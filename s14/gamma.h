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
#include "s14/s14ab_log_table.inc"

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
// Below this x - 1/2 is exact, which the Stirling sum of the common range
// uses.
inline constexpr double lgamma_x_near = 0x1p52;
inline constexpr double lgamma_eps = 1.1102230246251565e-16;  // machine precision (x02aj)

template <int N>
[[gnu::always_inline]] inline double horner(const double (&c)[N], double t) {
  double s = c[N - 1];
  for (int i = N - 2; i >= 0; --i) s = s * t + c[i];
  return s;
}

// The coefficient set of Q serving the machine's decimal precision.
constexpr const auto &gamma_unit_set() {
  if constexpr (decimal_digits <= gamma_set1_digits) return gamma_set1;
  else if constexpr (decimal_digits <= gamma_set2_digits) return gamma_set2;
  else if constexpr (decimal_digits <= gamma_set3_digits) return gamma_set3;
  else if constexpr (decimal_digits <= gamma_set4_digits) return gamma_set4;
  else return gamma_set5;
}

// Gamma(3/2 + t) for t in [-1/2, 1/2]: Gamma(3/2) + t Q(t), Q taken from the
// shortest set that serves the machine's decimal precision.
[[gnu::always_inline]] inline double gamma_unit(double t) { return gamma_three_halves + t * horner(gamma_unit_set(), t); }

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
  if (x > 0.0) {
    // Gamma(1 + x)/x, with Gamma(1 + x) = G + t Q(t) as a pair so that the
    // division is the only rounding of note (the polynomial's own rounding
    // enters through t Q, below 0.13 relatively).  t = x - 1/2 is exact for
    // x >= 1/4 (and the fast two-sum then returns te = 0); below, its
    // rounding error te (|te| <= 2^-54, exact by the fast two-sum) is carried to first order with Gamma'(1 + x) from its
    // Taylor series to x^4 (within 3% for x < 1/4, so that te's share is
    // off by far less than 2^-60).
    const dd t = fast_two_sum(-0.5, x);
    const dd tq = two_prod<Fma>(t.hi, horner(gamma_unit_set(), t.hi));
    const dd g = fast_two_sum(gamma_three_halves, tq.hi);  // |t Q| < G
    double slope = 0.0;
    if (t.lo != 0.0)
      slope = -0.5772156649015329 +
              x * (1.9781119906559451 + x * (-2.7224372282426589 + x * (3.9269123473376007 + x * -4.909975344515726)));
    const double lo = g.lo + (tq.lo + t.lo * slope);
    return div<Fma>(dd{g.hi, lo}, dd{x, 0.0}).hi;
  }
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

// ln x for a positive normal x, from the table of s14/s14ab_log_table.inc:
// x = 2^e m, c_i near 1/m and -ln c_i = t_hi + t_lo from the table,
// r = m c_i - 1 formed with one rounding (a fused multiply-add, or Dekker's
// exact product and one sum: the same double), and ln(1 + r) = r + r^2 q(r)
// (|r| < 2^-8, the series to r^6: truncated at 2^-61 relatively).
// ln x = head + r + tail, with head = e ln2_hi + t_hi exact (a multiple of
// 2^-43 below 2^10) and tail = t_lo + e ln2_lo + r^2 q(r), below 2^-16 relatively.
struct log_parts {
  double head;
  double r;
  double tail;
};

template <bool Fma>
[[gnu::always_inline]] inline log_parts log_table_parts(double x) {
  const uint64_t bits = std::bit_cast<uint64_t>(x);
  const double e = static_cast<double>(static_cast<int>(bits >> 52) - 1023);
  const double *row = log_table[(bits >> 45) & 127];
  const double m = std::bit_cast<double>((bits & 0x000fffffffffffffull) | 0x3ff0000000000000ull);
  double r;
  if constexpr (Fma) {
    r = __builtin_fma(m, row[0], -1.0);
  } else {
    const dd p = two_prod<false>(m, row[0]);  // p.hi - 1 is exact: p.hi is within 2^-7 of 1
    r = (p.hi - 1.0) + p.lo;
  }
  const double r2 = r * r;
  const double q = (-0.5 + r * (1.0 / 3.0)) + r2 * ((-0.25 + r * 0.2) + r2 * (-1.0 / 6.0));  // short chain
  return {e * log_ln2_hi + row[1], r, (row[2] + e * log_ln2_lo) + r2 * q};
}

// ln x as an unnormalised pair, for a positive normal x with |ln x| >= 0.38
// (x < 0.68 or x >= 1.47), to about 2^-60 relatively: |r| < 2^-8 is below
// the head (the bound on |ln x|), so that one fast two-sum holds head + r
// exactly; the low part (below 2^-17 relatively) gathers the rest.
template <bool Fma>
[[gnu::always_inline]] inline dd log_table_pair(double x) {
  const log_parts l = log_table_parts<Fma>(x);
  const dd b = fast_two_sum(l.head, l.r);
  return {b.hi, b.lo + l.tail};
}

// The rational functions of ln Gamma as N(z)/Q(z) with N = z P, both of
// degree 8, split into even and odd parts in z: N = Ne(z^2) + z No(z^2),
// Q = Qe(z^2) + z Qo(z^2).  The four parts are evaluated side by side as the
// lanes of one vector (Ne, No, Qe, Qo), five coefficients each, highest
// first (the odd parts start with a 0).  lo holds the published digits
// beyond each double coefficient (zero where a block has none): coefficient
// = c + lo to about 2^-106.
struct rational_lanes {
  double c[5][4];
  double lo[5][4];
};

template <int N>
constexpr rational_lanes make_rational_lanes(const double (&p)[N], const double (&q)[N], double q_lead,
                                             const double (&p_lo)[N], const double (&q_lo)[N]) {
  static_assert(N == 8);
  double n[9] = {}, d[9] = {}, nl[9] = {}, dl[9] = {};  // coefficients of z^8 ... z^0
  for (int i = 0; i < 8; ++i) {
    n[i] = p[i];
    nl[i] = p_lo[i];
    d[i + 1] = q[i];
    dl[i + 1] = q_lo[i];
  }
  d[0] = q_lead;  // exact
  rational_lanes t{};
  for (int k = 0; k < 5; ++k) {
    t.c[k][0] = n[2 * k];
    t.c[k][2] = d[2 * k];
    t.c[k][1] = k == 0 ? 0.0 : n[2 * k - 1];
    t.c[k][3] = k == 0 ? 0.0 : d[2 * k - 1];
    t.lo[k][0] = nl[2 * k];
    t.lo[k][2] = dl[2 * k];
    t.lo[k][1] = k == 0 ? 0.0 : nl[2 * k - 1];
    t.lo[k][3] = k == 0 ? 0.0 : dl[2 * k - 1];
  }
  return t;
}

inline constexpr double no_low_parts[8] = {};
inline constexpr rational_lanes lg_lanes1 = make_rational_lanes(lg_p1, lg_q1, 1.0, lg_1_p_lo, lg_1_q_lo);
inline constexpr rational_lanes lg_lanes2 = make_rational_lanes(lg_p2, lg_q2, 1.0, lg_2_p_lo, lg_2_q_lo);
inline constexpr rational_lanes lg_lanes4 = make_rational_lanes(lg_p4, lg_q4, -1.0, no_low_parts, no_low_parts);

using lanes4 = double __attribute__((vector_size(32)));
using lanes2 = double __attribute__((vector_size(16)));

// e := the rounding error of the product p = a b of each lane, exactly (bh,
// bl: b split in halves, for Dekker's product).  Results go through a
// reference: a 32-byte vector is never passed by value.
template <bool Fma>
[[gnu::always_inline]] inline void product_error(const lanes4 &a, const lanes4 &b, const lanes4 &bh, const lanes4 &bl,
                                                 const lanes4 &p, lanes4 &e) {
  if constexpr (Fma) {
    for (int k = 0; k < 4; ++k) e[k] = __builtin_fma(a[k], b[k], -p[k]);
  } else {
    const lanes4 c = 134217729.0 * a;
    const lanes4 ah = c - (c - a);
    const lanes4 al = a - ah;
    e = ((ah * bh - p) + ah * bl + al * bh) + al * bl;
  }
}

// N(z)/Q(z) as an unnormalised pair.  Each part is a Horner scheme in the
// pair z^2 whose last three steps are compensated (the rounding error of
// every product and sum is gathered in a second lane set); N and Q are then
// joined as pairs and divided, the quotient corrected by its exact residual.
// With PlainFirst, the first step, c0 z^2 + c1, is plain: the terms it
// carries (z^8 and z^6 in the even parts, z^7 and z^5 in the odd ones, in
// absolute value) are at most 10% of |N| in the block of (4, 12] (at z = 8)
// and under 1.4% of |N| or |Q| in the block of (1.5, 4] (a scan of each
// block's interval), so that its two roundings move N by at most 0.2 ulp
// and Q by at most 0.03 ulp.  The later steps carry the rest to about
// 2^-100 relatively.
// With LowParts, each coefficient is the pair c + lo and the lo parts join
// the error lanes.  Below x = 1 the blocks around 1 and 2 are evaluated at
// z < 0, where the terms of N and Q alternate in sign and cancel: the
// rounding of the coefficients to doubles alone then moves the block around
// 1 by up to 2.6e-16 relatively near x = 0.68 (1.5 ulp), against 2.6e-19
// for the published digits.  Those blocks keep every step compensated.
template <bool Fma, bool PlainFirst, bool LowParts = false>
[[gnu::always_inline]] inline dd rational_pair(const rational_lanes &t, double z) {
  const dd z2 = two_prod<Fma>(z, z);
  const lanes4 zz = {z2.hi, z2.hi, z2.hi, z2.hi};
  const lanes4 zl = {z2.lo, z2.lo, z2.lo, z2.lo};
  lanes4 zh{}, zlo{};
  if constexpr (!Fma) {
    const lanes4 c = 134217729.0 * zz;
    zh = c - (c - zz);
    zlo = zz - zh;
  }
  const lanes4 c0 = {t.c[0][0], t.c[0][1], t.c[0][2], t.c[0][3]};
  lanes4 s = c0;
  if constexpr (PlainFirst) {
    const lanes4 c1 = {t.c[1][0], t.c[1][1], t.c[1][2], t.c[1][3]};
    s = c0 * zz + c1;
  }
  static_assert(!(PlainFirst && LowParts), "the low parts need every step compensated");
  lanes4 err = {0.0, 0.0, 0.0, 0.0};
  if constexpr (LowParts) err = lanes4{t.lo[0][0], t.lo[0][1], t.lo[0][2], t.lo[0][3]};
  constexpr int first = PlainFirst ? 2 : 1;
  for (int i = first; i < 5; ++i) {
    const lanes4 p = s * zz;
    lanes4 pe;
    product_error<Fma>(s, zz, zh, zlo, p, pe);
    const lanes4 c = {t.c[i][0], t.c[i][1], t.c[i][2], t.c[i][3]};
    const lanes4 u = p + c;
    const lanes4 v = u - p;
    const lanes4 se = (p - (u - v)) + (c - v);
    lanes4 e = (pe + se) + s * zl;
    if constexpr (LowParts) e += lanes4{t.lo[i][0], t.lo[i][1], t.lo[i][2], t.lo[i][3]};
    if (i == first && !LowParts)  // (a vector conditional ?: would choose lane by lane)
      err = e;
    else
      err = err * zz + e;
    s = u;
  }
  // N = Ne + z No, Q = Qe + z Qo, side by side in two lanes.
  const lanes2 eh = {s[0], s[2]}, oh = {s[1], s[3]}, el = {err[0], err[2]}, ol = {err[1], err[3]};
  const lanes2 zv = {z, z};
  const lanes2 a = zv * oh;
  lanes2 ae;
  if constexpr (Fma) {
    for (int k = 0; k < 2; ++k) ae[k] = __builtin_fma(z, oh[k], -a[k]);
  } else {
    const lanes2 c = 134217729.0 * oh;
    const lanes2 oh_h = c - (c - oh);
    const lanes2 oh_l = oh - oh_h;
    const dd zs = split(z);
    ae = ((oh_h * zs.hi - a) + oh_h * zs.lo + oh_l * zs.hi) + oh_l * zs.lo;
  }
  const lanes2 sum = eh + a;
  const lanes2 bb = sum - eh;
  const lanes2 lo = ((eh - (sum - bb)) + (a - bb) + ae) + (el + zv * ol);
  const dd n{sum[0], 0.0}, q{sum[1], 0.0};
  const double nl = lo[0], ql = lo[1];
  const double iq = 1.0 / q.hi;
  const double y = n.hi * iq;
  double rem;  // n.hi - y q.hi, rounded once (n.hi - y q.hi rounded is exact in practice)
  if constexpr (Fma) {
    rem = __builtin_fma(-y, q.hi, n.hi);
  } else {
    const dd yq = two_prod<false>(y, q.hi);  // n.hi - yq.hi is exact: y is within an ulp or two of n.hi/q.hi
    rem = (n.hi - yq.hi) - yq.lo;
  }
  return {y, ((rem + nl) - y * ql) * iq};
}

// z (d + d_lo + y), y a pair: the zeros of ln Gamma at 1 and 2 are the
// factor z, and the mild cancellation in d + y is carried in pairs.
template <bool Fma>
[[gnu::always_inline]] inline dd times_sum(double z, double d, dd y, double d_lo = 0.0) {
  const dd s = two_sum(d, y.hi);
  const double lo = s.lo + (y.lo + d_lo);
  const dd p = two_prod<Fma>(s.hi, z);
  return {p.hi, p.lo + lo * z};
}

// C(1/x^2)/x, the Stirling correction for 12 < x <= 2.24e76, by powers of
// w = 1/x^2 (Estrin's scheme): a short chain of operations after the
// division; C is below 0.04% of the result, so the order of its roundings
// does not show.
[[gnu::always_inline]] inline double lgamma_stirling_series(double x) {
  const double inv = 1.0 / x;
  const double w = inv * inv;
  const double w2 = w * w;
  const double lo = (lg_c[5] + w * lg_c[4]) + w2 * (lg_c[3] + w * lg_c[2]);
  const double hi = (lg_c[1] + w * lg_c[0]) + w2 * lg_c[6];
  return (lo + (w2 * w2) * hi) * inv;
}

// ln Gamma(x) for 2^52 <= x <= 2.55e305: (x - 1/2) ln x - x + ln sqrt(2 pi)
// + the Stirling correction (dropped above 2.24e76), as x ln x - x (exact
// product, and x ln x >= 36 x) + the small rest, whose rounding is far below
// the result's last place.
template <bool Fma>
[[gnu::always_inline]] inline double lgamma_far(double x) {
  const dd l = log_table_pair<Fma>(x);
  const double res = x <= lgamma_x_series ? lgamma_stirling_series(x) : 0.0;
  const double rest = (0.9189385332046728 - 0.5 * l.hi) + res;
  if (x > 0x1p900) return x * ((l.hi - 1.0) + l.lo) + rest;  // beyond Dekker's range; relatively tiny rest
  const dd p = two_prod<Fma>(x, l.hi);
  const dd s = fast_two_sum(p.hi, -x);
  return s.hi + (s.lo + (p.lo + (x - 0.5) * l.lo + rest));
}

// ln Gamma(x) for 0 < x <= 2.55e305 (a NaN gives a NaN), by the rational
// approximations of Cody and Hillstrom on (0, 12] and the Stirling series
// above.  The published coefficients are used as published (in the blocks
// around 1 and 2 below x = 1.5, as pairs of doubles that carry every digit).  Pairs of
// doubles are used where plain arithmetic would lose the last bits: the
// rational functions (compensated Horner, four parts side by side), the
// logarithm (a table, for x > 12 and x < 0.68) and the final sums; the
// Stirling correction (below 0.04% of the result) is plain.
template <bool Fma>
[[gnu::always_inline]] inline double lgamma_core_t(double x) {
  // x > 4 is tested first: on arguments spread over (1/2, 30) in random
  // order it is the better predicted split (88% of them above 4), and x > 12
  // then parts the rest.
  if (x > 4.0) {
    if (x > 12.0) {
      if (__builtin_expect(x >= lgamma_x_near, 0)) return lgamma_far<Fma>(x);
      // (x - 1/2) ln x - x + ln sqrt(2 pi) + C(1/x^2)/x, as (x - 1/2) head - x
      // (x - 1/2 is exact below 2^52; an exact product, at least 2.37 x, so
      // that one fast two-sum holds the difference) + the small rest.
      // ln x = head + lo, head exact: (x - 1/2) lo (|lo| < 2^-7) is rounded
      // once, far below the result's last place.
      const log_parts l = log_table_parts<Fma>(x);
      const double y = x - 0.5;
      const dd p = two_prod<Fma>(y, l.head);
      const double s = p.hi - x;
      const double s_lo = (p.hi - s) - x;
      return s + (s_lo + (p.lo + y * (l.r + l.tail) + (0.9189385332046728 + lgamma_stirling_series(x))));
    }
    const double z = x - 4.0;
    const dd y = rational_pair<Fma, true>(lg_lanes4, z);
    const dd s = two_sum(lg_d4, y.hi);
    return s.hi + (s.lo + y.lo);
  }
  if (x > 1.5) {
    const double z = x - 2.0;
    const dd r = times_sum<Fma>(z, lg_d2, rational_pair<Fma, true>(lg_lanes2, z));
    return r.hi + r.lo;
  }
  if (x <= lgamma_eps) return -std::log(x);
  // Below 0.6796875, -ln x is split off and ln Gamma(x + 1) approximated.
  dd corr{0.0, 0.0};
  double z = (x - 0.5) - 0.5;
  if (x < 0.6796875) {
    const dd l = log_table_pair<Fma>(x);
    corr = {-l.hi, -l.lo};
    if (x <= 0.5) z = x;
  }
  const bool first = x <= 0.5 || x >= 0.6796875;
  const dd r = times_sum<Fma>(z, first ? lg_d1 : lg_d2, rational_pair<Fma, false, true>(first ? lg_lanes1 : lg_lanes2, z),
                              first ? lg_1_d_lo : lg_2_d_lo);
  return add_rounded(corr, r);
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
// The variant for this process, chosen when the library is loaded (a
// pointer that never changes afterwards): one indirect call, no test.
extern double (*const gamma_kernel)(double);
extern double (*const lgamma_kernel)(double);
inline double gamma_core(double x) { return gamma_kernel(x); }
inline double lgamma_core(double x) { return lgamma_kernel(x); }
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
