// Types shared by the one-dimensional quadrature engines of chapter d01.
//
// The engines know the integrand only as a vectorised callable (fill fv[i]
// with f(x[i]) for i < n, answer 0 to go on or non-zero to stop), and the
// local rule only as a callable that integrates over one interval and reports
// the Kronrod estimate, its error estimate, resabs and resasc.  Both are
// passed as non-owning references (function_ref), so that the call frame's
// callback chain, the scalar adaptor of d01aj and the range transformation of
// d01rm plug in without the engines being templates.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

namespace zem::quad {

// A non-owning reference to a callable with signature R(Args...).  The
// referenced object must outlive the reference (it always lives in the
// caller's frame here).
template <typename Sig>
class function_ref;

template <typename R, typename... Args>
class function_ref<R(Args...)> {
 public:
  template <typename F>
    requires(!std::is_same_v<std::remove_cvref_t<F>, function_ref>)
  function_ref(F &f) noexcept
      : obj_(static_cast<void *>(&f)), call_([](void *o, Args... a) -> R {
          return (*static_cast<F *>(o))(std::forward<Args>(a)...);
        }) {}

  R operator()(Args... a) const { return call_(obj_, std::forward<Args>(a)...); }

 private:
  void *obj_;
  R (*call_)(void *, Args...);
};

// The integrand: fv[0..n) = f(x[0..n)); returns 0, or the non-zero value by
// which the user asked to stop (the iflag or the callback status).
using integrand_ref = function_ref<int64_t(const double *x, int64_t n, double *fv)>;

// What one application of a local rule on [a, b] gives.
struct rule_estimate {
  double result;  // the Kronrod (higher-order) estimate of the integral
  double abserr;  // its error estimate
  double resabs;  // estimate of the integral of |f|
  double resasc;  // estimate of the integral of |f - mean of f|
};

// A local rule: integrates over [a, b] into `out`; returns 0, or the
// integrand's request to stop (then `out` is undefined).
using rule_ref = function_ref<int64_t(double a, double b, rule_estimate &out)>;

// The machine quantities and the deliberate choices of the engines.  The
// library runs with `zem_policy` only; the other settings exist so that the
// tests can reproduce the published scheme count for count and show which
// choice changes which outcome.
struct policy {
  double epmach;   // relative machine precision
  double uflow;    // smallest normal number
  double oflow;    // "infinite" error: no estimate yet
  // The subdivision-limit test comes after the other failure tests and does
  // not end the step: the last subdivision still gets its extrapolation, and
  // an extrapolation that meets the tolerance clears the limit code; nor
  // does a limit of one interval count when the first estimate is accepted.
  bool late_limit_test;
  // Floor of the epsilon algorithm's error, as a multiple of |result|.
  double eps_floor;
  // Leave out terms 1/delta with |delta| > sqrt(oflow) in the epsilon
  // algorithm's sum, so that no reciprocal of a huge difference is formed.
  bool overflow_guard;
  // Global sums of the subinterval results through zem_blas_dsum.
  bool compensated_sum;
  // On equal error estimates the right half keeps the bisected interval's
  // slot (else the left half does).
  bool tie_to_right;
};

// The library's setting.  epmach = 2^-53 and uflow = 2^-1022 are the x02
// values; oflow is a quarter of the largest double, so that sums of a few
// "infinite" errors stay finite; the floor 5.551115123125783e-17 is half the
// machine precision.
inline constexpr policy zem_policy{
    .epmach = 1.1102230246251565e-16,
    .uflow = 2.2250738585072014e-308,
    .oflow = 4.494232837155789e307,
    .late_limit_test = true,
    .eps_floor = 5.551115123125783e-17,
    .overflow_guard = true,
    .compensated_sum = true,
    .tie_to_right = true,
};

// Storage of the subdivision lists: caller-owned or worker-owned arrays of
// `limit` elements each.  Interval i (0-based) is [alist[i], blist[i]] with
// integral estimate rlist[i] and error estimate elist[i]; iord holds interval
// numbers in decreasing order of error as far as the engine maintains it.
struct quad_lists {
  double *alist;
  double *blist;
  double *elist;
  double *rlist;
  int64_t *iord;
  int64_t limit;
};

// Outcome of an adaptive engine.
struct quad_outcome {
  double result = 0.0;
  double abserr = 0.0;
  int64_t last = 0;     // subintervals in the lists
  int64_t code = 0;     // reported exit code (0 success, 1..5 warnings)
  int64_t neval = 0;    // integrand evaluations (rule points; see each engine)
  int64_t stop = 0;     // non-zero: the integrand asked to stop with this value
  double bad_a = 0.0;   // for code 3: ends of the interval being bisected
  double bad_b = 0.0;
};

}  // namespace zem::quad
