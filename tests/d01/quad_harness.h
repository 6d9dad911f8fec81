// Running a battery row through the engines directly, with a chosen policy
// and kernel build: the library's setting against the published scheme, and
// the processor families against one another.
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

// The published scheme: machine precision 2^-52, the largest double as
// "infinite" error, the early limit test, an epsilon-algorithm floor of five
// machine precisions, no overflow guard, plain sums, ties to the left half.
inline constexpr q::policy classic_policy{.epmach = 0x1p-52, .uflow = 0x1p-1022, .oflow = 1.7976931348623157e308,
                                          .late_limit_test = false, .eps_floor = 5 * 0x1p-52,
                                          .overflow_guard = false, .compensated_sum = false, .tie_to_right = false};

// The library's departures that change battery outcomes, each revertible
// alone (the overflow guard and the tie rule change none; see
// test_d01_pieces.cpp and test_d01_routines.cpp).
enum departure : unsigned {
  dep_epmach = 1,       // machine precision 2^-53 (and oflow = DBL_MAX / 4)
  dep_late_limit = 2,   // late limit test, code 1 cleared by a good extrapolation
  dep_eps_floor = 4,    // epsilon-algorithm floor 0.5 eps |result|
  dep_dsum = 8,         // global sums through zem_blas_dsum
};

inline q::policy zem_without(unsigned reverted) {
  q::policy P = q::zem_policy;
  if (reverted & dep_epmach) {
    P.epmach = classic_policy.epmach;
    P.oflow = classic_policy.oflow;
  }
  if (reverted & dep_late_limit) P.late_limit_test = false;
  if (reverted & dep_eps_floor) P.eps_floor = classic_policy.eps_floor;
  if (reverted & dep_dsum) P.compensated_sum = false;
  return P;
}

struct run_result {
  q::quad_outcome o;
  std::vector<double> alist, blist, elist, rlist;
  std::vector<int64_t> iord;  // -1 where the engine never wrote
};

inline run_result run_row(const battery_case &c, const q::policy &P, const q::rule_kernels &kern) {
  run_result r;
  const int64_t limit = c.limit;
  for (auto *v : {&r.alist, &r.blist, &r.elist, &r.rlist}) v->assign(limit, 0.0);
  r.iord.assign(limit, -1);
  const q::quad_lists L{r.alist.data(), r.blist.data(), r.elist.data(), r.rlist.data(), r.iord.data(), limit};
  auto fn = [fs = battery_function(c.name)](const double *x, int64_t n, double *fv) -> int64_t {
    for (int64_t i = 0; i < n; ++i) fv[i] = fs(x[i]);
    return 0;
  };
  q::integrand_ref f(fn);
  if (c.routine == "qagi") {
    q::infinite_range_rule rule(c.a, static_cast<int64_t>(c.b), f, kern, P);
    r.o = q::adaptive_extrapolated(rule, rule.points(), 0.0, 1.0, c.epsabs, c.epsrel, L, P);
    return r;
  }
  q::gk_rule rule(q::gk21.block(), f, kern, P);
  if (c.routine == "qags") {
    r.o = q::adaptive_extrapolated(rule, rule.points(), c.a, c.b, c.epsabs, c.epsrel, L, P);
    return r;
  }
  std::vector<double> pts = c.points;
  std::sort(pts.begin(), pts.end());
  pts.insert(pts.begin(), std::min(c.a, c.b));
  pts.push_back(std::max(c.a, c.b));
  const int64_t nint = static_cast<int64_t>(pts.size()) - 1;
  std::vector<int64_t> level(limit), ndin(nint);
  r.o = q::adaptive_breakpoints(rule, rule.points(), pts.data(), nint, c.a > c.b ? -1.0 : 1.0, c.epsabs,
                                c.epsrel, L, level.data(), ndin.data(), P);
  return r;
}

// Result and abserr to the bit, evaluation count, code and interval count.
inline bool same_as_classic(const run_result &r, const battery_case &c) {
  return r.o.result == c.result && r.o.abserr == c.abserr && r.o.neval == c.neval && r.o.code == c.ier &&
         r.o.last == c.last;
}

}  // namespace d01test
