// Zero finders on the 154 test problems of Alefeld, Potra and Shi
// (aps_problems.h), all asked for the same absolute accuracy: the final
// bracket's half-width at most 1e-12.
//
//   c05ayc   the bracket [a,b], eps = 1e-12 (through the C entry, frame
//            included: fail record, message exit)
//   GSL      gsl_root_fsolver_brent on [a,b], stopped when
//            gsl_root_test_interval(lo, hi, 2e-12, 0) succeeds (the solver
//            is allocated once and set for each solve; GSL+a allocates and
//            frees it in each solve)
//   Boost    boost::math::tools::toms748_solve on [a,b], stopped when
//            |b - a| <= 2e-12
//   c05auc   from the midpoint of [a,b] with h = (b-a)/10, bounds [a,b]
//   c05awc   from the midpoint, nfmax = 1000
//
// A solve counts as a success when x lies within 2e-12 (plus 4 ulps) of the
// zero computed with mpmath, or when f(x) is exactly 0.  Each solver is
// checked once on every case first (failures are listed); then Google
// Benchmark, through the harness of bench/zem_bench.h (repetitions, random
// interleaving, aggregates, JSON in bench_c05.json), times one pass over the
// cases of each family and over all cases, per solver, with the counters
// "evals" (function evaluations per solve) and "failures".
//
// Usage: bench_c05 [--benchmark_* options]
#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>
#include <zem.h>

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "aps_problems.h"
#include "zem_bench.h"

namespace {

struct counted {
  const aps::problem *p;
  long calls = 0;
  double operator()(double x) {
    ++calls;
    return aps::f(*p, x);
  }
};

double zem_f(double x, Zem_Comm *comm) { return (*static_cast<counted *>(comm->p))(x); }
double gsl_f(double x, void *params) { return (*static_cast<counted *>(params))(x); }

constexpr double tol = 1e-12;

struct outcome {
  double x;
  bool failed_call;  // the solver itself reported a failure
};

outcome run_c05ay(counted &k) {
  Zem_Comm comm = {0, nullptr, nullptr, &k};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = 0.0;
  c05ayc(k.p->a, k.p->b, tol, 0.0, zem_f, &x, &comm, &fail);
  return {x, fail.code != NE_NOERROR};
}

gsl_root_fsolver *gsl_solver;

outcome run_gsl(counted &k) {
  gsl_function F{gsl_f, &k};
  gsl_root_fsolver_set(gsl_solver, &F, k.p->a, k.p->b);
  for (int it = 0; it < 1000; ++it) {
    if (gsl_root_fsolver_iterate(gsl_solver) != GSL_SUCCESS) return {gsl_root_fsolver_root(gsl_solver), true};
    const double lo = gsl_root_fsolver_x_lower(gsl_solver), hi = gsl_root_fsolver_x_upper(gsl_solver);
    if (gsl_root_test_interval(lo, hi, 2 * tol, 0.0) == GSL_SUCCESS) return {gsl_root_fsolver_root(gsl_solver), false};
  }
  return {gsl_root_fsolver_root(gsl_solver), true};
}

// The same, with the solver allocated and freed for each solve.
outcome run_gsl_alloc(counted &k) {
  gsl_root_fsolver *saved = gsl_solver;
  gsl_solver = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  const outcome o = run_gsl(k);
  gsl_root_fsolver_free(gsl_solver);
  gsl_solver = saved;
  return o;
}

outcome run_boost(counted &k) {
  std::uintmax_t it = 1000;
  try {
    auto r = boost::math::tools::toms748_solve([&k](double x) { return k(x); }, k.p->a, k.p->b,
                                               [](double a, double b) { return std::fabs(b - a) <= 2 * tol; }, it);
    return {0.5 * (r.first + r.second), it >= 1000};
  } catch (...) {
    return {NAN, true};
  }
}

outcome run_c05au(counted &k) {
  Zem_Comm comm = {0, nullptr, nullptr, &k};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = 0.5 * (k.p->a + k.p->b);
  c05auc(&x, (k.p->b - k.p->a) / 10, tol, 0.0, zem_f, k.p->a, k.p->b, &comm, &fail);
  return {x, fail.code != NE_NOERROR};
}

outcome run_c05aw(counted &k) {
  Zem_Comm comm = {0, nullptr, nullptr, &k};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = 0.5 * (k.p->a + k.p->b);
  c05awc(&x, tol, 0.0, zem_f, 1000, &comm, &fail);
  return {x, fail.code != NE_NOERROR};
}

struct solver {
  const char *name;
  outcome (*run)(counted &);
};
const solver solvers[] = {{"c05ay", run_c05ay}, {"GSL", run_gsl}, {"Boost", run_boost},
                          {"c05au", run_c05au}, {"c05aw", run_c05aw}, {"GSL+a", run_gsl_alloc}};
constexpr int nsolvers = sizeof(solvers) / sizeof(solvers[0]);

bool solved(const aps::problem &p, double x) {
  return std::fabs(x - p.root) <= 2 * tol + 4 * 0x1p-52 * std::fabs(p.root) || aps::f(p, x) == 0.0;
}

struct tally {
  long evals = 0;
  int cases = 0, failures = 0;
};

}  // namespace

int main(int argc, char **argv) {
  gsl_set_error_handler_off();
  gsl_solver = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  const auto problems = aps::problems();

  // Evaluations and failures, once per case and solver.
  std::map<int, std::vector<const aps::problem *>> families;
  std::map<int, tally> by_family[nsolvers];
  tally total[nsolvers];
  for (const aps::problem &p : problems) {
    families[p.family].push_back(&p);
    for (int s = 0; s < nsolvers; ++s) {
      counted k{&p};
      const outcome o = solvers[s].run(k);
      const bool ok = !o.failed_call && solved(p, o.x);
      for (tally *t : {&by_family[s][p.family], &total[s]}) {
        t->evals += k.calls;
        ++t->cases;
        t->failures += !ok;
      }
      if (!ok)
        std::printf("failure: %-6s family %2d n = %g%s: x = %.17g (zero %.17g), f(x) = %.3g, %ld calls%s\n",
                    solvers[s].name, p.family, p.n,
                    p.family == 3 || p.family == 4 ? (" p = " + std::to_string(p.p)).c_str() : "", o.x, p.root,
                    aps::f(p, o.x), k.calls, o.failed_call ? ", reported a failure" : "");
    }
  }

  // One pass over a list of cases: the time per solve is the time over "items".
  auto pass = [](int s, const std::vector<const aps::problem *> &cases) {
    double sum = 0.0;
    for (const aps::problem *p : cases) {
      counted k{p};
      sum += solvers[s].run(k).x;
    }
    return sum;
  };
  std::vector<const aps::problem *> all;
  for (const aps::problem &p : problems) all.push_back(&p);
  for (int s = 0; s < nsolvers; ++s)
    zem_bench::add("c05 APS all cases", solvers[s].name, static_cast<int64_t>(all.size()),
                   [&pass, &all, s] { return pass(s, all); },
                   {{"evals", double(total[s].evals) / total[s].cases}, {"failures", double(total[s].failures)}});
  for (const auto &[family, cases] : families)
    for (int s = 0; s < nsolvers; ++s) {
      const tally &t = by_family[s][family];
      zem_bench::add("c05 APS family " + std::to_string(family), solvers[s].name, static_cast<int64_t>(cases.size()),
                     [&pass, &cases, s] { return pass(s, cases); },
                     {{"evals", double(t.evals) / t.cases}, {"failures", double(t.failures)}})
          ->MinTime(0.05);
    }
  const int status = zem_bench::run(argc, argv, "c05");
  gsl_root_fsolver_free(gsl_solver);
  return status;
}
