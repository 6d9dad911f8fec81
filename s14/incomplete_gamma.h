// P(a, x) and Q(a, x), the regularised incomplete gamma functions, for a,
// x > 0 finite, a <= 2^900: the kernel of s14ba, also used by s14cc where a
// parameter is so large beside the other that I_x(a, b) is P or Q to far
// below the rounding error.  The regions and forms are described in
// s14/s14ba.cpp.
#pragma once

#include <cmath>

#include "s14/gamma.h"

namespace zem::s14 {

// Bound on the terms of the series and of the continued fraction: both need
// about sqrt(a) times a few terms near x = a.
inline constexpr int max_iterations = 1000000;

// ln Gamma(a + 1) - ((a + 1/2) ln a - a + ln sqrt(2 pi)), a >= 10 (Stirling).
inline double stirling_correction(double a) {
  const double w = 1.0 / (a * a);
  return (1.0 / 12.0 + w * (-1.0 / 360.0 + w * (1.0 / 1260.0 + w * (-1.0 / 1680.0 + w * (1.0 / 1188.0 +
          w * (-691.0 / 360360.0 + w * (1.0 / 156.0))))))) / a;
}

// x^a e^-x / Gamma(a + 1).
inline double incomplete_gamma_prefactor(double a, double x) {
  if (a < 10.0) return std::exp(a * std::log(x) - x - (a <= 1.0 ? lgamma1p(a) : lgamma_core(a + 1.0)));
  const dd e = log_ratio_term(a, x);
  return std::exp(e.hi - stirling_correction(a)) * (1.0 + e.lo) / std::sqrt(2.0 * 3.14159265358979323846 * a);
}

struct pq {
  double p, q;
  bool converged;
  int iterations;
};

inline pq incomplete_gamma(double a, double x, double eps) {
  if (a < 1.0 && x <= 1.5) {
    const double u = a * std::log(x) - lgamma1p(a);
    double term = 1.0, t = 0.0;
    int n = 1;
    for (; n < 200; ++n) {
      term *= -x / n;
      const double c = term / (a + n);
      t += c;
      if (std::fabs(c) <= eps * 0.01 * std::fabs(t)) break;
    }
    const double e = std::exp(u);
    return {e * (1.0 + a * t), -std::expm1(u) - e * a * t, true, n};
  }
  const double f = incomplete_gamma_prefactor(a, x);
  if (x < a + 1.0) {
    double term = 1.0, s = 1.0;
    int n = 1;
    for (; n <= max_iterations; ++n) {
      term *= x / (a + n);
      s += term;
      if (term <= eps * 0.25 * s) break;
    }
    const double p = f * s;
    return {p, 1.0 - p, n <= max_iterations, n};
  }
  // Q = f a / (x + 1 - a - 1 (1 - a)/(x + 3 - a - 2 (2 - a)/(x + 5 - a - ...))).
  constexpr double tiny = 1e-300;
  double b = x + 1.0 - a;
  double c = 1.0 / tiny;
  double d = 1.0 / b;
  double h = d;
  int n = 1;
  for (; n <= max_iterations; ++n) {
    const double an = -n * (n - a);
    b += 2.0;
    d = an * d + b;
    if (std::fabs(d) < tiny) d = tiny;
    c = b + an / c;
    if (std::fabs(c) < tiny) c = tiny;
    d = 1.0 / d;
    const double del = d * c;
    h *= del;
    if (std::fabs(del - 1.0) <= eps * 0.25) break;
  }
  const double q = f * a * h;
  return {1.0 - q, q, n <= max_iterations, n};
}

}  // namespace zem::s14
