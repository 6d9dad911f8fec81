// ln Gamma(z) and psi^(k)(z), k <= 4, for complex z (s14ag, s14af), without
// the range checks of the routines.
//
// ln Gamma is the analytic continuation of ln Gamma from the positive reals
// to the plane cut along the non-positive real axis (its imaginary part is
// continuous there, not reduced to (-pi, pi]); on the cut itself the sign of
// the zero imaginary part says from which side the value is the limit.
//   Re z >= 1/2, |z| >= 15  Stirling's series, ten terms;
//   Re z >= 1/2, |z| < 15   ln Gamma(z) = ln Gamma(z + n) - sum_{j<n} Log(z + j),
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
//
// psi^(k): the recurrence psi^(k)(z) = psi^(k)(z + n) - (-1)^k k! sum_{j<n}
// (z + j)^-(k+1) up to |z + n| >= 20 in the right half plane, the asymptotic
// series of s14/psi.h there, and for Re z < -20 the reflection psi^(k)(z) =
// (-1)^k psi^(k)(1 - z) - pi^(k+1) cot^(k)(pi z) with
// cot(u + iv) = (2e sin 2u - i sgn(v) (1 - e)(1 + e)) / ((1 - e)^2 + 4e sin^2 u),
// e = exp(-2|v|), exact for every v (Abramowitz and Stegun 6.4.7, 6.4.6).
#pragma once

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

// ln Gamma(z), Re z >= 1/2, finite.
inline cplx lgamma_right(cplx z) {
  cplx shift{0.0, 0.0};
  if (std::abs(z) < 15.0) {
    const double n = std::ceil(15.0 - z.real());
    for (double j = 0.0; j < n; j += 1.0) shift += std::log(z + j);
    z += n;
  }
  const cplx r = 1.0 / z;
  const cplx r2 = r * r;
  cplx s = stirling_terms[9];
  for (int j = 8; j >= 0; --j) s = s * r2 + stirling_terms[j];
  s *= r;
  return (z - 0.5) * std::log(z) - z + (0.91893853320467274178 + s) - shift;
}

// S(pi z) = ln sin(pi z), analytic for Im z >= 0.
inline cplx log_sin_pi(cplx z) {
  const double x = z.real(), v = pi_d * z.imag();
  const double u = pi_d * (x - std::nearbyint(x));
  const double e = std::exp(-2.0 * v);
  const double su = std::sin(u);
  const cplx one_minus_q{-std::expm1(-2.0 * v) + 2.0 * e * su * su, -e * std::sin(2.0 * u)};
  return cplx{v - 0.69314718055994530942, pi_d / 2.0 - pi_d * x} + std::log(one_minus_q);
}

// ln Gamma(z), z finite, not a non-positive integer on the real axis.
inline cplx lgamma_complex(cplx z) {
  if (std::signbit(z.imag())) return std::conj(lgamma_complex(std::conj(z)));
  if (z.real() >= 0.5) return lgamma_right(z);
  return cplx{1.1447298858494002, 0.0} - log_sin_pi(z) - lgamma_right(1.0 - z);
}

// cot(u + iv) for real u, v (u reduced to [-pi/2, pi/2]).
inline cplx cot_complex(double u, double v) {
  const double e = std::exp(-2.0 * std::fabs(v));
  const double om = -std::expm1(-2.0 * std::fabs(v));  // 1 - e
  const double su = std::sin(u);
  const double den = om * om + 4.0 * e * su * su;
  return cplx{2.0 * e * std::sin(2.0 * u) / den, -std::copysign(1.0, v) * om * (1.0 + e) / den};
}

// pi^(k+1) cot^(k)(pi z).
inline cplx cot_derivative_complex(cplx z, int k) {
  const double x = z.real();
  const cplx c = cot_complex(pi_d * (x - std::nearbyint(x)), pi_d * z.imag());
  double p[9] = {0.0, 1.0};
  int deg = 1;
  for (int i = 0; i < k; ++i) {
    double d[9] = {}, n[9] = {};
    for (int j = 1; j <= deg; ++j) d[j - 1] = j * p[j];
    for (int j = 0; j < deg; ++j) {
      n[j] -= d[j];
      n[j + 2] -= d[j];
    }
    ++deg;
    for (int j = 0; j <= deg; ++j) p[j] = n[j];
  }
  cplx v = 0.0;
  for (int j = deg; j >= 0; --j) v = v * c + p[j];
  return std::pow(pi_d, k + 1) * v;
}

// g_k(y) = (-1)^(k+1) psi^(k)(y) by the asymptotic series, |y| >= 20,
// Re y >= 0.
inline cplx g_asymptotic_complex(cplx y, int k) {
  const cplx u = 1.0 / y;
  const cplx w = u * u;
  const double(&c)[12] = psi_series[k];
  cplx t = c[11];
  for (int j = 10; j >= 0; --j) t = t * w + c[j];
  cplx uk = 1.0;
  for (int i = 0; i < k; ++i) uk *= u;
  const cplx lead = k == 0 ? -std::log(y) : factorial_table[k - 1] * uk;
  return lead + (0.5 * factorial_table[k]) * (uk * u) + t * w * uk;
}

// psi^(k)(z), 0 <= k <= 4, z finite, not a pole.
inline cplx psi_complex(cplx z, int k) {
  const double sign = k % 2 == 0 ? -1.0 : 1.0;  // psi^(k) = sign g_k
  const double x = z.real(), y = std::fabs(z.imag());
  if (x < -20.0) {
    const cplx g1 = g_asymptotic_complex(1.0 - z, k);
    return -g1 - cot_derivative_complex(z, k);  // (-1)^k psi^(k)(1 - z) = -g_k(1 - z)
  }
  double n = 0.0;
  if (!(x >= 20.0 || (y >= 20.0 && x >= 0.0))) n = y < 20.0 ? std::ceil(20.0 - x) : std::ceil(-x);
  cplx s = 0.0, comp = 0.0;
  for (double j = 0.0; j < n; j += 1.0) {
    const cplx q = 1.0 / (z + j);
    cplx t = q;
    for (int i = 0; i < k; ++i) t *= q;
    // Compensated sum, real and imaginary parts apart.
    const dd re = two_sum(s.real(), t.real()), im = two_sum(s.imag(), t.imag());
    s = {re.hi, im.hi};
    comp += cplx{re.lo, im.lo};
  }
  const cplx g = g_asymptotic_complex(z + n, k) + factorial_table[k] * (s + comp);
  return sign * g;
}

}  // namespace zem::s14
