// One application of a local quadrature rule, with the error estimate of the
// adaptive engines.
#pragma once

#include <cmath>

#include "quad_kernel.h"
#include "quad_rules.h"
#include "quad_types.h"

namespace zem::quad {

// The error estimate of a rule pair from its sums, on an interval of
// half-length hlgth (negative when b < a):
//   result = K * hlgth, resabs = ABS * |hlgth|, resasc = ASC * |hlgth|,
//   abserr = |(K - G) * hlgth|, then
//   abserr = resasc * min(1, (200 abserr / resasc)^1.5)   if both are non-zero
//            (the raw difference is pessimistic for smooth f: scaled by the
//            spread of f it behaves like the true error of the higher rule),
//   abserr = max(50 epmach resabs, abserr)                 if resabs > uflow / (50 epmach)
//            (no estimate below the rounding level of the sum).
// t^1.5 is formed by pow, as in the published evaluation (and only where it
// can matter, t < 1).
inline rule_estimate estimate_from_sums(double k, double g, double sabs, double sasc, double hlgth,
                                        const policy &P) {
  const double dhlgth = std::fabs(hlgth);
  rule_estimate r;
  r.result = k * hlgth;
  r.resabs = sabs * dhlgth;
  r.resasc = sasc * dhlgth;
  r.abserr = std::fabs((k - g) * hlgth);
  if (r.resasc != 0.0 && r.abserr != 0.0) {
    // min(1, t^1.5) is 1 for t >= 1 (pow is monotonic), so pow is needed
    // only below 1; the values are those of min(1, pow(t, 1.5)) in every
    // case (a NaN t still goes through pow and stays NaN).
    const double t = 200.0 * r.abserr / r.resasc;
    const double t15 = t >= 1.0 ? 1.0 : std::pow(t, 1.5);
    r.abserr = r.resasc * (t15 < 1.0 ? t15 : 1.0);
  }
  if (r.resabs > P.uflow / (50.0 * P.epmach)) {
    const double floor = (P.epmach * 50.0) * r.resabs;
    if (floor > r.abserr) r.abserr = floor;
  }
  return r;
}

// A Gauss-Kronrod pair applied to intervals: one call of the integrand on all
// the pair's points per interval.  Usable as a rule_ref.  F is the integrand:
// an integrand_ref, or (for a worker that wants the call seen through, as
// d01rj's first rule application) the worker's own callable, held by value
// (a small lambda: the caller's pointers and a reference to its stop flag).
template <typename F = integrand_ref>
class gk_rule {
 public:
  gk_rule(const pair_block &rule, F f, const rule_kernels &kern, const policy &P)
      : rule_(rule), f_(f), kern_(kern), P_(P) {
    // The kernel reads fv up to m + mpad; the integrand writes only the
    // block's points, so the lanes past them are set once here.
    for (int64_t i = rule_.points(); i < rule_.m + rule_.mpad; ++i) fv_[i] = 0.0;
  }

  int64_t points() const { return rule_.points(); }

  // In line wherever it is called directly (the first step of
  // adaptive_extrapolated_direct) or through a rule_ref's thunk.
  [[gnu::always_inline]] int64_t operator()(double a, double b, rule_estimate &out) {
    const double centre = 0.5 * (a + b);
    const double hlgth = 0.5 * (b - a);
    kern_.abscissae(rule_, centre, hlgth, x_);
    if (int64_t stop = f_(x_, rule_.points(), fv_)) return stop;
    const kernel_sums s = kern_.sums(rule_, fv_);
    out = estimate_from_sums(s.k, s.g, s.abs, s.asc, hlgth, P_);
    return 0;
  }

 private:
  pair_block rule_;
  F f_;
  const rule_kernels &kern_;
  const policy &P_;
  alignas(64) double x_[block_buffer];
  alignas(64) double fv_[block_buffer];
};

}  // namespace zem::quad
