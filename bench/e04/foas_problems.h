// The bound-constrained test problems of the e04kf benchmark, the same as
// bench_e04kf_lbfgsb.py evaluates for the peer: extended Rosenbrock (free,
// and with every second variable bounded by 0.5), the generalized
// tridiagonal function with a quartic coupling, and a bound-active
// tridiagonal quadratic whose solution is built from its KKT conditions.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace foas_bench {

struct problem {
  std::string name;
  int64_t n;
  std::vector<double> x0, bl, bu, b;  // b: the quadratic's linear term
  int kind;                           // 0 Rosenbrock, 1 tridiagonal, 2 quadratic
};

inline problem make(int kind, bool bounded, int64_t n) {
  problem p{"", n, std::vector<double>(n), std::vector<double>(n, -1e20), std::vector<double>(n, 1e20), {}, kind};
  if (kind == 0) {
    p.name = bounded ? "rosenbrock_bounded" : "rosenbrock";
    for (int64_t i = 0; i < n; ++i) {
      p.x0[i] = i % 2 ? 1.0 : -1.2;
      if (bounded) {
        p.bl[i] = -10.0;
        p.bu[i] = i % 2 ? 0.5 : 10.0;
      }
    }
  } else if (kind == 1) {
    p.name = "tridiagonal";
    for (int64_t i = 0; i < n; ++i) p.x0[i] = i % 2 ? 2.0 : -1.0;
  } else {
    p.name = "bound_qp";
    p.b.resize(n);
    std::vector<double> xs(n), z(n);
    for (int64_t i = 0; i < n; ++i) {
      const int k = static_cast<int>(i % 3);
      xs[i] = k == 0 ? 0.0 : k == 1 ? 1.0 : 0.5;
      z[i] = k == 0 ? 1.0 : k == 1 ? -1.0 : 0.0;
      p.x0[i] = 0.3;
      p.bl[i] = 0.0;
      p.bu[i] = 1.0;
    }
    for (int64_t i = 0; i < n; ++i) {
      double hx = 4 * xs[i];
      if (i > 0) hx -= xs[i - 1];
      if (i + 1 < n) hx -= xs[i + 1];
      p.b[i] = hx - z[i];
    }
  }
  return p;
}

inline double f(const problem &p, const double *x) {
  const int64_t n = p.n;
  double s = 0;
  if (p.kind == 0) {
    for (int64_t i = 0; i + 1 < n; i += 2) {
      const double a = x[i + 1] - x[i] * x[i], c = 1 - x[i];
      s += 100 * a * a + c * c;
    }
  } else if (p.kind == 1) {
    for (int64_t i = 0; i + 1 < n; ++i) {
      const double a = x[i] + x[i + 1] - 2, c = x[i] - x[i + 1];
      s += a * a + c * c * (1 + c * c);
    }
  } else {
    for (int64_t i = 0; i < n; ++i) {
      double hx = 4 * x[i];
      if (i > 0) hx -= x[i - 1];
      if (i + 1 < n) hx -= x[i + 1];
      s += 0.5 * x[i] * hx - p.b[i] * x[i];
    }
  }
  return s;
}

inline void g(const problem &p, const double *x, double *gr) {
  const int64_t n = p.n;
  if (p.kind == 0) {
    for (int64_t i = 0; i + 1 < n; i += 2) {
      const double a = x[i + 1] - x[i] * x[i];
      gr[i] = -400 * a * x[i] - 2 * (1 - x[i]);
      gr[i + 1] = 200 * a;
    }
  } else if (p.kind == 1) {
    for (int64_t i = 0; i < n; ++i) gr[i] = 0;
    for (int64_t i = 0; i + 1 < n; ++i) {
      const double a = x[i] + x[i + 1] - 2, c = x[i] - x[i + 1];
      gr[i] += 2 * a + 2 * c + 4 * c * c * c;
      gr[i + 1] += 2 * a - 2 * c - 4 * c * c * c;
    }
  } else {
    for (int64_t i = 0; i < n; ++i) {
      double hx = 4 * x[i];
      if (i > 0) hx -= x[i - 1];
      if (i + 1 < n) hx -= x[i + 1];
      gr[i] = hx - p.b[i];
    }
  }
}

}  // namespace foas_bench
