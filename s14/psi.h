// The psi (digamma) function and its derivatives psi^(k), k = 0..6, for real
// x (s14ae, s14ad).  Without the range checks of the routines.
//
// The kernel computes g_k(x) = (-1)^(k+1) psi^(k)(x), the sign-normalised
// derivative (positive for x > 0 and k >= 1), from three formulae:
//
//   recurrence   g_k(x) = g_k(x + n) + k! sum_{j<n} (x + j)^-(k+1),
//                with y = x + n >= 20, for -30 <= x < 20;
//   asymptotic   g_k(y) = (k-1)!/y^k + k!/(2 y^(k+1)) + sum_j c_kj / y^(2j+k)
//                (k >= 1), g_0(y) = -ln y + 1/(2y) + sum_j c_0j / y^2j,
//                c_kj = B_2j (2j+k-1)!/(2j)!, twelve terms (below 2^-60
//                relatively for y >= 20 and every k <= 6);
//   reflection   psi^(k)(x) = -g_k(1 - x) - pi^(k+1) cot^(k)(pi x), x < -30,
//                cot^(k) written as a polynomial in c = cot(pi x).
//
// Abramowitz and Stegun 6.3.5, 6.3.18, 6.4.6, 6.4.7, 6.4.11 and 6.3.7 give the
// formulae.  The recurrence and the two leading asymptotic terms are
// carried in pairs of doubles (s14/eft.h): every x + j is formed exactly,
// every reciprocal power to about 2^-100, so that the alternating terms of
// g_0 (psi(1.46...) = 0 comes from terms near 3) and of the negative
// arguments cancel without loss, and the result carries one rounding plus the
// error of the tail of the series.
//
// Next to a pole -m (m >= 0 an integer) where d = |x + m| makes the pole term
// k!/d^(k+1) exceed k! 2^600, every other term is below 2^-600 of it, and
// g_k(x) = k!/(x + m)^(k+1), formed from the mantissa of x + m.
#pragma once

#include <cmath>
#include <cstdint>

#include "s14/eft.h"
#include "s14/gamma.h"

namespace zem::s14 {

#include "s14/psi_coefficients.inc"

inline constexpr double factorial_table[8] = {1.0, 1.0, 2.0, 6.0, 24.0, 120.0, 720.0, 5040.0};

// Status of a psi^(k) evaluation: what the routines report.
enum class psi_status { ok = 0, pole = 1, underflow = 2, overflow = 3 };

// 1/v as a pair, v a pair with |v.hi| in [2^-996, 2^996].
template <bool Fma>
[[gnu::always_inline]] inline dd reciprocal(dd v) {
  return div<Fma>(dd{1.0, 0.0}, v);
}

// v^p for a pair v, p >= 1 (p <= 7): repeated pair products.
template <bool Fma>
[[gnu::always_inline]] inline dd power(dd v, int p) {
  dd r = v;
  for (int i = 1; i < p; ++i) r = mul<Fma>(r, v);
  return r;
}

// ln of a positive pair v, to about 2^-100: ln(v.hi) + v.lo/v.hi.
template <bool Fma>
[[gnu::always_inline]] inline dd log_pair(dd v) {
  const dd l = log_dd<Fma>(v.hi);
  return fast_two_sum(l.hi, l.lo + v.lo / v.hi);
}

// k! / e^(k+1) for e = x + m near a pole, without overflow in the
// intermediate powers: e = f 2^q, f in [1/2, 1), and the power of f^-1 is
// scaled back by 2^-q(k+1) at the end (exact while the result is normal).
template <bool Fma>
double pole_term(double e, int k) {
  int q = 0;
  const double f = std::frexp(std::fabs(e), &q);
  const dd r = power<Fma>(reciprocal<Fma>(dd{f, 0.0}), k + 1);
  const dd s = mul<Fma>(r, factorial_table[k]);
  double v = std::ldexp(s.hi + s.lo, -q * (k + 1));
  if (e < 0.0 && (k % 2 == 0)) v = -v;
  return v;
}

// g_k(y) for y >= 20 given as a pair (y.hi >= 20).
template <bool Fma>
dd g_asymptotic(dd y, int k) {
  const double kf = factorial_table[k];
  if (y.hi > 0x1p60) {
    // Beyond 2^60 the terms after the first are below 2^-61 of it.
    if (k == 0) {
      const dd l = log_pair<Fma>(y);
      return two_sum(-l.hi, 0.5 / y.hi - l.lo);
    }
    int q = 0;
    const double f = std::frexp(y.hi, &q);
    const dd r = power<Fma>(reciprocal<Fma>(dd{f, y.lo * std::ldexp(1.0, -q)}), k);
    const dd s = mul<Fma>(r, factorial_table[k - 1]);
    return dd{std::ldexp(s.hi + s.lo, -q * k), 0.0};
  }
  const dd u = reciprocal<Fma>(y);
  const double w = u.hi * u.hi;
  const double(&c)[12] = psi_series[k];
  double t = c[11];
  for (int j = 10; j >= 0; --j) t = t * w + c[j];
  // half = k!/2 u^(k+1); lead = (k-1)! u^k or -ln y.
  const dd uk = k == 0 ? dd{1.0, 0.0} : power<Fma>(u, k);
  const dd uk1 = mul<Fma>(uk, u);
  const dd half = mul<Fma>(uk1, 0.5 * kf);
  const double tail = t * w * uk.hi;
  dd lead;
  if (k == 0) {
    const dd l = log_pair<Fma>(y);
    lead = {-l.hi, -l.lo};
  } else {
    lead = mul<Fma>(uk, factorial_table[k - 1]);
  }
  const dd s = two_sum(lead.hi, half.hi);
  return fast_two_sum(s.hi, s.lo + lead.lo + half.lo + tail);
}

// pi^(k+1) cot^(k)(pi x) for x not an integer, |x| < 2^52; cot^(k) as the
// polynomial P_k(c), P_0 = c, P_(k+1) = -(1 + c^2) P_k'(c).
template <bool Fma>
double cot_derivative_term(double x, int k) {
  constexpr double pi_hi = 0x1.921fb54442d18p+1, pi_lo = 0x1.1a62633145c07p-53;
  const double r = x - std::nearbyint(x);  // exact, |r| <= 1/2
  const dd t = two_prod<Fma>(r, pi_hi);
  const double th = t.hi, tl = t.lo + r * pi_lo;
  const double c0 = 1.0 / std::tan(th);
  const double c = c0 - tl * (1.0 + c0 * c0);  // cot(th + tl)
  // Coefficients of P_k, lowest power first.
  double p[9] = {0.0, 1.0};
  int deg = 1;
  for (int i = 0; i < k; ++i) {
    double d[9] = {};
    for (int j = 1; j <= deg; ++j) d[j - 1] = j * p[j];  // P'
    double n[9] = {};
    for (int j = 0; j < deg; ++j) {  // -(1 + c^2) P'
      n[j] -= d[j];
      n[j + 2] -= d[j];
    }
    ++deg;
    for (int j = 0; j <= deg; ++j) p[j] = n[j];
  }
  double v = 0.0;
  for (int j = deg; j >= 0; --j) v = v * c + p[j];
  constexpr double pi_powers[7] = {0x1.921fb54442d18p+1, 9.869604401089358, 31.00627668029982,
                                   97.40909103400244,    306.01968478528147, 961.3891935753045,
                                   3020.2932277767923};
  return pi_powers[k] * v;
}

// The kernel for the processor in hand (s14/gamma_dispatch.cpp).
double psi_derivative(double x, int k, psi_status &status);

// psi^(k)(x), 0 <= k <= 6, x finite and not a non-positive integer; status
// overflow where the value exceeds the largest double (value then +-max),
// underflow where it is below the smallest normal number (value 0).
template <bool Fma>
double psi_derivative_t(double x, int k, psi_status &status) {
  status = psi_status::ok;
  const double sign = (k % 2 == 0) ? -1.0 : 1.0;  // psi^(k) = sign g_k
  const double kf = factorial_table[k];
  constexpr double max_double = 1.7976931348623157e308;
  constexpr double ln_max = 709.782712893384;
  constexpr double ln_min_normal = -708.3964185322641;  // ln 2^-1022
  if (x < 0.5) {
    const double m = std::nearbyint(x);  // the nearest non-positive integer
    const double d = std::fabs(x - m);   // exact
    const double lnpole = std::log(kf) - (k + 1) * std::log(d);
    if (lnpole > 600.0 * 0.6931471805599453) {
      if (lnpole > ln_max + 1.0) {
        status = psi_status::overflow;
        const double v = (x < m && k % 2 == 0) ? -max_double : max_double;
        return sign * v;
      }
      const double g = pole_term<Fma>(x - m, k);
      if (std::isinf(g)) {
        status = psi_status::overflow;
        return sign * std::copysign(max_double, g);
      }
      return sign * g;
    }
  }
  if (x > 0x1p60 && k >= 1 && std::log(factorial_table[k - 1]) - k * std::log(x) < ln_min_normal) {
    status = psi_status::underflow;
    return 0.0;
  }
  if (x < -30.0) {
    const double g1 = g_asymptotic<Fma>(dd{1.0 - x, 0.0}, k).hi;
    const double v = -g1 - cot_derivative_term<Fma>(x, k);
    if (std::isinf(v)) {
      status = psi_status::overflow;
      return std::copysign(max_double, v);
    }
    return v;
  }
  const double n = x >= 20.0 ? 0.0 : std::ceil(20.0 - x);
  const dd y = two_sum(x, n);
  dd s{0.0, 0.0};
  for (double j = 0.0; j < n; j += 1.0) {
    const dd v = two_sum(x, j);  // x + j exactly
    const dd r = power<Fma>(reciprocal<Fma>(v), k + 1);
    const dd t = two_sum(s.hi, r.hi);
    s = {t.hi, t.lo + s.lo + r.lo};
  }
  const dd sk = mul<Fma>(fast_two_sum(s.hi, s.lo), kf);
  const dd ga = g_asymptotic<Fma>(fast_two_sum(y.hi, y.lo), k);
  const double g = add_rounded(sk, ga);
  const double v = sign * g;
  if (std::isinf(v)) {
    status = psi_status::overflow;
    return std::copysign(max_double, v);
  }
  return v;
}

}  // namespace zem::s14
