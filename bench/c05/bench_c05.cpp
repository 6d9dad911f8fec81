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
// zero computed with mpmath, or when f(x) is exactly 0.  Times are per
// solve: each (case, solver) pair runs in batches of `reps` solves, the
// solvers interleaved case by case, and the median batch is taken.
//
// Usage: bench_c05 [reps] [batches]      (defaults 20 and 5)
#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>
#include <zem.h>

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "aps_problems.h"

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
  double seconds = 0.0;  // sum over cases of the median time per solve
  int cases = 0, failures = 0;
};

}  // namespace

int main(int argc, char **argv) {
  const int reps = argc > 1 ? std::atoi(argv[1]) : 20;
  const int batches = argc > 2 ? std::atoi(argv[2]) : 5;
  gsl_set_error_handler_off();
  gsl_solver = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  const auto problems = aps::problems();

  std::map<int, tally> by_family[nsolvers];
  tally total[nsolvers];
  std::vector<std::string> failures;

  for (const aps::problem &p : problems) {
    double median[nsolvers];
    std::vector<double> times[nsolvers];
    for (int b = 0; b < batches; ++b) {
      for (int s = 0; s < nsolvers; ++s) {
        counted k{&p};
        const auto t0 = std::chrono::steady_clock::now();
        for (int r = 0; r < reps; ++r) solvers[s].run(k);
        const auto t1 = std::chrono::steady_clock::now();
        times[s].push_back(std::chrono::duration<double>(t1 - t0).count() / reps);
      }
    }
    for (int s = 0; s < nsolvers; ++s) {
      std::sort(times[s].begin(), times[s].end());
      median[s] = times[s][times[s].size() / 2];
      counted k{&p};
      const outcome o = solvers[s].run(k);
      const bool ok = !o.failed_call && solved(p, o.x);
      for (tally *t : {&by_family[s][p.family], &total[s]}) {
        t->evals += k.calls;
        t->seconds += median[s];
        ++t->cases;
        t->failures += !ok;
      }
      if (!ok) {
        char line[200];
        std::snprintf(line, sizeof line, "  %-6s family %2d n = %g%s: x = %.17g (zero %.17g), f(x) = %.3g, %ld calls%s",
                      solvers[s].name, p.family, p.n, p.family == 3 || p.family == 4 ? (" p = " + std::to_string(p.p)).c_str() : "",
                      o.x, p.root, aps::f(p, o.x), k.calls, o.failed_call ? ", reported a failure" : "");
        failures.push_back(line);
      }
    }
  }
  gsl_root_fsolver_free(gsl_solver);

  std::printf("Test problems of Alefeld, Potra and Shi: %zu cases, absolute tolerance %g\n", problems.size(), tol);
  std::printf("(median of %d batches of %d solves per case and solver)\n\n", batches, reps);
  std::printf("Function evaluations per case (mean) | time per solve in microseconds (mean)\n");
  std::printf("family cases |");
  for (const solver &s : solvers) std::printf(" %7s", s.name);
  std::printf(" |");
  for (const solver &s : solvers) std::printf(" %7s", s.name);
  std::printf("\n");
  for (const auto &[family, t0] : by_family[0]) {
    std::printf("  %2d   %4d  |", family, t0.cases);
    for (int s = 0; s < nsolvers; ++s) std::printf(" %7.1f", double(by_family[s][family].evals) / t0.cases);
    std::printf(" |");
    for (int s = 0; s < nsolvers; ++s) std::printf(" %7.3f", 1e6 * by_family[s][family].seconds / t0.cases);
    std::printf("\n");
  }
  std::printf("  all  %4d  |", total[0].cases);
  for (int s = 0; s < nsolvers; ++s) std::printf(" %7.1f", double(total[s].evals) / total[s].cases);
  std::printf(" |");
  for (int s = 0; s < nsolvers; ++s) std::printf(" %7.3f", 1e6 * total[s].seconds / total[s].cases);
  std::printf("\n\nTotal evaluations:");
  for (int s = 0; s < nsolvers; ++s) std::printf("  %s %ld", solvers[s].name, total[s].evals);
  std::printf("\nTime ratio c05ay / GSL: %.3f, c05ay / GSL+a: %.3f, c05ay / Boost: %.3f\n",
              total[0].seconds / total[1].seconds, total[0].seconds / total[5].seconds,
              total[0].seconds / total[2].seconds);
  std::printf("\nFailures:");
  for (int s = 0; s < nsolvers; ++s) std::printf("  %s %d", solvers[s].name, total[s].failures);
  std::printf("\n");
  for (const std::string &f : failures) std::printf("%s\n", f.c_str());
  return 0;
}
