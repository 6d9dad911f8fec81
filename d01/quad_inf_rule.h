// The 15-point Gauss-Kronrod rule applied to the transformed integrand of an
// infinite range (d01rm): see d01rm.cpp for the substitution.
#pragma once

#include <cmath>

#include "quad_rule.h"

namespace zem::quad {

// The 15-point Gauss-Kronrod pair applied to g on subintervals of (0, 1].
// Sums in the natural pair order (the published transformed rule sums its
// pairs in node order, not Gauss nodes first).
class infinite_range_rule {
 public:
  infinite_range_rule(double bound, int64_t inf, integrand_ref f, const rule_kernels &kern, const policy &P)
      : boun_(inf == 2 ? 0.0 : bound), dinf_(inf == -1 ? -1.0 : 1.0), both_(inf == 2), f_(f), kern_(kern),
        P_(P) {
    for (double &v : t_) v = 0.0;
    for (double &v : x_) v = 0.0;
    for (double &v : fv_) v = 0.0;
    for (double &v : g_) v = 0.0;
  }

  // Integrand evaluations per application: 15, or 30 for both half-lines.
  int64_t points() const { return both_ ? 2 * block_.points() : block_.points(); }

  int64_t operator()(double a, double b, rule_estimate &out) {
    const double centre = 0.5 * (a + b);
    const double hlgth = 0.5 * (b - a);
    const int64_t n = block_.points();
    kern_.abscissae(block_, centre, hlgth, t_);
    // (An abscissa beyond the largest double, from a bound near it, is
    //  taken as the largest double: f is never asked for an infinite x.)
    for (int64_t i = 0; i < n; ++i)
      x_[i] = std::fmax(-max_double, std::fmin(max_double, boun_ + dinf_ * (1.0 - t_[i]) / t_[i]));
    if (both_)
      for (int64_t i = 0; i < n; ++i) x_[n + i] = -x_[i];
    if (int64_t stop = f_(x_, both_ ? 2 * n : n, fv_)) return stop;
    for (int64_t i = 0; i < n; ++i) {
      double v = fv_[i];
      if (both_) v = v + fv_[n + i];
      g_[i] = (v / t_[i]) / t_[i];
    }
    const kernel_sums s = kern_.sums(block_, g_);
    out = estimate_from_sums(s.k, s.g, s.abs, s.asc, hlgth, P_);
    return 0;
  }

 private:
  static constexpr pair_block block_ = gk15.block(false);
  static constexpr double max_double = 1.7976931348623157e308;
  double boun_, dinf_;
  bool both_;
  integrand_ref f_;
  const rule_kernels &kern_;
  const policy &P_;
  alignas(64) double t_[block_buffer];
  alignas(64) double x_[2 * block_buffer];
  alignas(64) double fv_[2 * block_buffer];
  alignas(64) double g_[block_buffer];
};

}  // namespace zem::quad
