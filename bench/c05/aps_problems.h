// The test problems for bracketing zero finders of G. E. Alefeld, F. A. Potra
// and Y. Shi, "Algorithm 748: enclosing zeros of continuous functions", ACM
// Trans. Math. Software 21 (1995) 327-344: fifteen families of functions,
// each with its bracket and parameter values, 154 cases in all.
//
//  1  sin x - x/2                                  [pi/2, pi]
//  2  -2 sum_{i=1}^{20} (2i-5)^2 / (x-i^2)^3        [n^2+1e-9, (n+1)^2-1e-9], n = 1..10
//  3  a x e^{bx}                                   [-9, 31], (a,b) = (-40,-1), (-100,-2), (-200,-3)
//  4  x^n - a                                      [0, 5], a = 0.2 and 1, n = 4, 6, ..., 12;
//                                                  [-0.95, 4.05], a = 1, n = 8, 10, 12, 14
//  5  sin x - 1/2                                  [0, 1.5]
//  6  2x e^{-n} - 2 e^{-nx} + 1                    [0, 1], n = 1..5, 20, 40, ..., 100
//  7  (1 + (1-n)^2) x - (1-nx)^2                   [0, 1], n = 5, 10, 20
//  8  x^2 - (1-x)^n                                [0, 1], n = 2, 5, 10, 15, 20
//  9  (1 + (1-n)^4) x - (1-nx)^4                   [0, 1], n = 1, 2, 4, 5, 8, 15, 20
// 10  e^{-nx} (x-1) + x^n                          [0, 1], n = 1, 5, 10, 15, 20
// 11  (nx - 1) / ((n-1) x)                         [0.01, 1], n = 2, 5, 15, 20
// 12  x^{1/n} - n^{1/n}                            [1, 100], n = 2..7, 9, 11, ..., 33
// 13  x e^{-1/x^2} (0 at x = 0)                    [-1, 4]
// 14  (n/20)(x/1.5 + sin x - 1) for x >= 0,
//     -n/20 for x < 0                              [-1e4, pi/2], n = 1..40
// 15  -0.859 for x < 0, e^{500(n+1)x} - 1.859 for
//     0 <= x <= 0.002/(n+1), e - 1.859 beyond      [-1e4, 1e-4], n = 20..40, 100, 200, ..., 1000
//
// The zeros are computed with mpmath at 50 digits by tools/aps_roots.py and
// kept in aps_roots.inc.
#pragma once

#include <cmath>
#include <vector>

namespace aps {

struct problem {
  int family;           // 1..15
  double n;             // parameter n (or a for family 4, a of family 3)
  double p;             // second parameter (a of family 4, b of family 3), else 0
  double a, b;          // bracket
  double root;          // the zero in [a, b]
};

inline double f(const problem &q, double x) {
  const double n = q.n;
  switch (q.family) {
    case 1: return std::sin(x) - x / 2.0;
    case 2: {
      double s = 0.0;
      for (int i = 1; i <= 20; ++i) {
        const double t = 2.0 * i - 5.0, d = x - static_cast<double>(i * i);
        s += t * t / (d * d * d);
      }
      return -2.0 * s;
    }
    case 3: return n * x * std::exp(q.p * x);
    case 4: return std::pow(x, n) - q.p;
    case 5: return std::sin(x) - 0.5;
    case 6: return 2.0 * x * std::exp(-n) - 2.0 * std::exp(-n * x) + 1.0;
    case 7: {
      const double u = 1.0 - n * x;
      return (1.0 + (1.0 - n) * (1.0 - n)) * x - u * u;
    }
    case 8: return x * x - std::pow(1.0 - x, n);
    case 9: {
      const double u = 1.0 - n * x, v = 1.0 - n;
      return (1.0 + v * v * v * v) * x - u * u * u * u;
    }
    case 10: return std::exp(-n * x) * (x - 1.0) + std::pow(x, n);
    case 11: return (n * x - 1.0) / ((n - 1.0) * x);
    case 12: return std::pow(x, 1.0 / n) - std::pow(n, 1.0 / n);
    case 13: return x * std::exp(-1.0 / (x * x));  // exp(-inf) = 0 gives f(0) = 0
    case 14: return x >= 0.0 ? n / 20.0 * (x / 1.5 + std::sin(x) - 1.0) : -n / 20.0;
    case 15:
      if (x < 0.0) return -0.859;
      if (x <= 2e-3 / (n + 1.0)) return std::exp(500.0 * (n + 1.0) * x) - 1.859;
      return std::exp(1.0) - 1.859;
    default: return NAN;
  }
}

// All 154 cases, with the zeros from aps_roots.inc.
inline std::vector<problem> problems() {
  return {
#include "aps_roots.inc"
  };
}

}  // namespace aps
