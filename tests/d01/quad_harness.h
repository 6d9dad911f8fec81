// Running a battery row through the engines directly, with a chosen policy
// and kernel build, so that the tests can compare the library's setting with
// the published scheme and the three processor families with one another.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "battery.h"
#include "battery_data.h"
#include "d01/quad_engine.h"
#include "d01/quad_inf_rule.h"
#include "d01/quad_rule.h"

namespace d01test {

namespace q = zem::quad;

// The published scheme as the classic code runs it: the spacing 2^-52 as
// machine precision, the largest double as "infinite" error, the limit test
// ending the step, a floor of five machine precisions, no overflow guard,
// plain global sums, ties to the left half.
inline constexpr q::policy classic_policy{
    .epmach = 0x1p-52,
    .uflow = 0x1p-1022,
    .oflow = 1.7976931348623157e308,
    .late_limit_test = false,
    .eps_floor = 5 * 0x1p-52,
    .overflow_guard = false,
    .compensated_sum = false,
    .tie_to_right = false,
};

// The library's deliberate choices, each of which a test can revert alone.
enum departure : unsigned {
  dep_epmach = 1,       // machine precision 2^-53 (and oflow = DBL_MAX / 4)
  dep_late_limit = 2,   // late limit test, code 1 cleared by a good extrapolation
  dep_eps_floor = 4,    // epsilon-algorithm floor 0.5 eps |result|
  dep_guard = 8,        // overflow guard in the epsilon algorithm
  dep_dsum = 16,        // global sums through zem_blas_dsum
  dep_tie = 32,         // ties to the right half
};

// The library's policy with the departures in `reverted` taken back.
inline q::policy zem_without(unsigned reverted) {
  q::policy P = q::zem_policy;
  if (reverted & dep_epmach) {
    P.epmach = classic_policy.epmach;
    P.oflow = classic_policy.oflow;
  }
  if (reverted & dep_late_limit) P.late_limit_test = false;
  if (reverted & dep_eps_floor) P.eps_floor = classic_policy.eps_floor;
  if (reverted & dep_guard) P.overflow_guard = false;
  if (reverted & dep_dsum) P.compensated_sum = false;
  if (reverted & dep_tie) P.tie_to_right = false;
  return P;
}

struct run_result {
  q::quad_outcome o;
  std::vector<double> alist, blist, elist, rlist;
  std::vector<int64_t> iord;  // -1 where the engine never wrote
};

// The integrand of a row, vectorised.
struct row_integrand {
  double (*fs)(double);
  int64_t operator()(const double *x, int64_t n, double *fv) const {
    for (int64_t i = 0; i < n; ++i) fv[i] = fs(x[i]);
    return 0;
  }
};

inline run_result run_row(const battery_case &c, const q::policy &P, const q::rule_kernels &kern) {
  run_result r;
  const int64_t limit = c.limit;
  r.alist.assign(limit, 0.0);
  r.blist.assign(limit, 0.0);
  r.elist.assign(limit, 0.0);
  r.rlist.assign(limit, 0.0);
  r.iord.assign(limit, -1);
  const q::quad_lists L{r.alist.data(), r.blist.data(), r.elist.data(), r.rlist.data(), r.iord.data(), limit};
  row_integrand fn{battery_function(c.name)};
  q::integrand_ref f(fn);
  if (c.routine == "qagi") {
    q::infinite_range_rule rule(c.a, static_cast<int64_t>(c.b), f, kern, P);
    r.o = q::adaptive_extrapolated(rule, rule.points(), 0.0, 1.0, c.epsabs, c.epsrel, L, P);
  } else if (c.routine == "qagp") {
    q::gk_rule rule(q::gk21.block(), f, kern, P);
    std::vector<double> pts{std::min(c.a, c.b)};
    std::vector<double> inner = c.points;
    std::sort(inner.begin(), inner.end());
    pts.insert(pts.end(), inner.begin(), inner.end());
    pts.push_back(std::max(c.a, c.b));
    const int64_t nint = static_cast<int64_t>(pts.size()) - 1;
    std::vector<int64_t> level(limit), ndin(nint);
    r.o = q::adaptive_breakpoints(rule, rule.points(), pts.data(), nint, c.a > c.b ? -1.0 : 1.0, c.epsabs,
                                  c.epsrel, L, level.data(), ndin.data(), P);
  } else {
    q::gk_rule rule(q::gk21.block(), f, kern, P);
    r.o = q::adaptive_extrapolated(rule, rule.points(), c.a, c.b, c.epsabs, c.epsrel, L, P);
  }
  return r;
}

// Whether a run reproduces the classic row exactly: result and abserr to the
// bit, evaluation count, code and subinterval count.
inline bool same_as_classic(const run_result &r, const battery_case &c) {
  return r.o.result == c.result && r.o.abserr == c.abserr && r.o.neval == c.neval && r.o.code == c.ier &&
         r.o.last == c.last;
}

}  // namespace d01test
