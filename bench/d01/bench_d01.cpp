// d01rjc against GSL's gsl_integration_qags: the same integrands, tolerances
// and subdivision limit, timed side by side in one run.
//
//   bench_d01 [--benchmark_* options]
//
// Google Benchmark through the harness of bench/zem_bench.h (repetitions,
// random interleaving, aggregates, JSON in bench_d01.json): for each
// integral a group with d01rjc first and GSL second; tools/bench_report.py
// gives the median time per integral of each and the ratios.
// The integrands are the same arithmetic in both: GSL calls a scalar
// function 21 times per rule, Zem a vectorised one once, whose body is the
// same expression in a loop (integrands.inc).  The cheap integrands are
// timed twice: compiled plainly (-O2: every value a scalar libm call), and
// compiled so that a loop over points may use the vector math library
// (-O3 -ffast-math -mavx2), which only the vectorised interface can exploit.
// The battery rows use plain scalar functions in both (Zem's integrand loops
// over them; GSL reaches them through a gsl_function trampoline).
#include <gsl/gsl_errno.h>
#include <gsl/gsl_integration.h>
#include <zem.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "battery.h"
#include "battery_data.h"
#include "zem_bench.h"

namespace {

// One integral: the scalar form for GSL and the vectorised form for Zem;
// `user` is passed to both (the battery's scalar function, or nothing).
struct integral {
  std::string name;
  double (*gsl_fn)(double, void *);
  Zem_D01_VecFun zem_fn;
  void *user;
  double a, b, epsabs, epsrel;
  int64_t limit;
};

double battery_gsl(double x, void *p) { return reinterpret_cast<double (*)(double)>(p)(x); }

void battery_zem(const double x[], int64_t nx, double fv[], int64_t *, Zem_Comm *comm) {
  double (*f)(double) = reinterpret_cast<double (*)(double)>(comm->p);
  for (int64_t i = 0; i < nx; ++i) fv[i] = f(x[i]);
}

// Both callers keep their work storage and failure record across calls, as
// a program that integrates repeatedly would.
struct runner {
  integral in;  // a copy: the runner outlives the list it came from
  gsl_integration_workspace *ws;
  std::vector<double> rinfo;
  std::vector<int64_t> iinfo;
  Zem_Fail fail = ZEM_FAIL_INIT;
  double result = 0, abserr = 0;

  double run_gsl() {
    gsl_function F{in.gsl_fn, in.user};
    gsl_integration_qags(&F, in.a, in.b, in.epsabs, in.epsrel, in.limit, ws, &result, &abserr);
    return result;
  }
  double run_zem() {
    Zem_Comm comm = {0, nullptr, nullptr, in.user};
    d01rjc(in.zem_fn, in.a, in.b, in.epsabs, in.epsrel, in.limit, &result, &abserr, rinfo.data(), iinfo.data(),
           &comm, &fail);
    return result;
  }
};

// The runners live until the benchmarks have run.
std::vector<std::unique_ptr<runner>> runners;

// Registers the integral as a group of two: d01rjc, then GSL.
void add_integral(const std::string &group, const integral &in, double min_time) {
  runners.push_back(std::make_unique<runner>(runner{in, gsl_integration_workspace_alloc(in.limit),
                                                    std::vector<double>(4 * in.limit), std::vector<int64_t>(in.limit)}));
  runner *r = runners.back().get();
  zem_bench::add(group, "d01rjc", 1, [r] { return r->run_zem(); })->MinTime(min_time);
  zem_bench::add(group, "GSL qags", 1, [r] { return r->run_gsl(); })->MinTime(min_time);
}

}  // namespace

#define BENCH_DECLARE(ns)                                                   \
  namespace ns {                                                            \
  double exp_m_x2(double, void *);                                          \
  double inv_sqrt(double, void *);                                          \
  double log_x(double, void *);                                             \
  double cos_100x(double, void *);                                          \
  void exp_m_x2_v(const double[], int64_t, double[], int64_t *, Zem_Comm *); \
  void inv_sqrt_v(const double[], int64_t, double[], int64_t *, Zem_Comm *); \
  void log_x_v(const double[], int64_t, double[], int64_t *, Zem_Comm *);    \
  void cos_100x_v(const double[], int64_t, double[], int64_t *, Zem_Comm *); \
  }
BENCH_DECLARE(plain)
BENCH_DECLARE(simd)

namespace {

std::vector<integral> cheap_integrals(double (*e)(double, void *), double (*s)(double, void *),
                                      double (*l)(double, void *), double (*c)(double, void *), Zem_D01_VecFun ev,
                                      Zem_D01_VecFun sv, Zem_D01_VecFun lv, Zem_D01_VecFun cv, double eps,
                                      int64_t limit) {
  return {{"exp(-x^2) [0,1]", e, ev, nullptr, 0.0, 1.0, 0.0, eps, limit},
          {"1/sqrt(x) (0,1]", s, sv, nullptr, 0.0, 1.0, 0.0, eps, limit},
          {"log(x) (0,1]", l, lv, nullptr, 0.0, 1.0, 0.0, eps, limit},
          {"cos(100x) [0,1]", c, cv, nullptr, 0.0, 1.0, 0.0, eps, limit}};
}

void cheap_table(const char *title, const std::vector<integral> &list) {
  for (const auto &in : list) add_integral(std::string("d01rj ") + title + " " + in.name, in, 0.2);
}

}  // namespace

int main(int argc, char **argv) {
  gsl_set_error_handler_off();
  const double eps = 1e-10;
  const int64_t limit = 100;
  // Integrals with epsabs 0, epsrel 1e-10, limit 100.
  cheap_table("plain -O2",
              cheap_integrals(plain::exp_m_x2, plain::inv_sqrt, plain::log_x, plain::cos_100x, plain::exp_m_x2_v,
                              plain::inv_sqrt_v, plain::log_x_v, plain::cos_100x_v, eps, limit));
  cheap_table("vector libm",
              cheap_integrals(simd::exp_m_x2, simd::inv_sqrt, simd::log_x, simd::cos_100x, simd::exp_m_x2_v,
                              simd::inv_sqrt_v, simd::log_x_v, simd::cos_100x_v, eps, limit));

  // The whole battery (finite intervals, its own tolerances and limits).
  for (const auto &c : d01test::read_battery(ZEM_TEST_DATA "/qags_battery.txt")) {
    if (c.routine != "qags" || c.limit < 1) continue;
    const integral in{c.name,   battery_gsl, battery_zem, reinterpret_cast<void *>(d01test::battery_function(c.name)),
                      c.a,      c.b,         c.epsabs,    c.epsrel,
                      c.limit};
    add_integral("d01rj battery " + c.name, in, 0.05);
  }
  const int status = zem_bench::run(argc, argv, "d01");
  for (auto &r : runners) gsl_integration_workspace_free(r->ws);
  return status;
}
