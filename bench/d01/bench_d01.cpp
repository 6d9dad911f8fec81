// d01rjc against GSL's gsl_integration_qags: the same integrands, tolerances
// and subdivision limit, timed side by side in one run.
//
//   bench_d01 [samples]
//
// For each integral the two are timed in alternation, each sample repeating
// the integral enough times to last about a millisecond; the tables give the
// median time per integral of each and the ratio of the medians (Zem / GSL).
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

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "battery.h"
#include "battery_data.h"

namespace {

using clock_type = std::chrono::steady_clock;

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
  const integral &in;
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

template <typename F>
double seconds_per_call(F f, int reps) {
  volatile double sink = 0;
  const auto t0 = clock_type::now();
  for (int i = 0; i < reps; ++i) sink = sink + f();
  return std::chrono::duration<double>(clock_type::now() - t0).count() / reps;
}

double median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

struct timing {
  double zem, gsl;
};

timing time_integral(const integral &in, int samples) {
  runner r{in, gsl_integration_workspace_alloc(in.limit), std::vector<double>(4 * in.limit),
           std::vector<int64_t>(in.limit)};
  // Repetitions for a sample of about 1 ms.
  const double once = seconds_per_call([&] { return r.run_gsl(); }, 3);
  const int reps = std::max(1, static_cast<int>(1e-3 / std::max(once, 1e-8)));
  std::vector<double> tz, tg;
  for (int s = 0; s < samples; ++s) {
    tg.push_back(seconds_per_call([&] { return r.run_gsl(); }, reps));
    tz.push_back(seconds_per_call([&] { return r.run_zem(); }, reps));
  }
  gsl_integration_workspace_free(r.ws);
  return {median(tz), median(tg)};
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

void cheap_table(const char *title, const std::vector<integral> &list, int samples) {
  std::printf("%s\n\n%-24s %12s %12s %8s\n", title, "integrand", "Zem (ns)", "GSL (ns)", "ratio");
  for (const auto &in : list) {
    const timing t = time_integral(in, samples);
    std::printf("%-24s %12.0f %12.0f %8.3f\n", in.name.c_str(), t.zem * 1e9, t.gsl * 1e9, t.zem / t.gsl);
  }
  std::printf("\n");
}

}  // namespace

int main(int argc, char **argv) {
  const int samples = argc > 1 ? std::atoi(argv[1]) : 15;
  gsl_set_error_handler_off();
  const double eps = 1e-10;
  const int64_t limit = 100;
  std::printf("d01rjc against gsl_integration_qags: epsabs 0, epsrel %g, limit %ld; %d samples, medians\n\n",
              eps, static_cast<long>(limit), samples);
  cheap_table("Cheap integrands, compiled plainly (-O2)",
              cheap_integrals(plain::exp_m_x2, plain::inv_sqrt, plain::log_x, plain::cos_100x, plain::exp_m_x2_v,
                              plain::inv_sqrt_v, plain::log_x_v, plain::cos_100x_v, eps, limit),
              samples);
  cheap_table("Cheap integrands, compiled for the vector math library (-O3 -ffast-math -mavx2)",
              cheap_integrals(simd::exp_m_x2, simd::inv_sqrt, simd::log_x, simd::cos_100x, simd::exp_m_x2_v,
                              simd::inv_sqrt_v, simd::log_x_v, simd::cos_100x_v, eps, limit),
              samples);

  // The whole battery (finite intervals, its own tolerances and limits).
  std::printf("The battery of tests/d01/data (finite intervals, each row's tolerances and limit)\n\n");
  std::printf("%-24s %12s %12s %8s\n", "row", "Zem (ns)", "GSL (ns)", "ratio");
  double log_sum = 0.0, zem_total = 0.0, gsl_total = 0.0;
  int rows = 0;
  for (const auto &c : d01test::read_battery(ZEM_TEST_DATA "/qags_battery.txt")) {
    if (c.routine != "qags" || c.limit < 1) continue;
    const integral in{c.name,   battery_gsl, battery_zem, reinterpret_cast<void *>(d01test::battery_function(c.name)),
                      c.a,      c.b,         c.epsabs,    c.epsrel,
                      c.limit};
    const timing t = time_integral(in, std::max(5, samples / 3));
    std::printf("%-24s %12.0f %12.0f %8.3f\n", c.name.c_str(), t.zem * 1e9, t.gsl * 1e9, t.zem / t.gsl);
    log_sum += std::log(t.zem / t.gsl);
    zem_total += t.zem;
    gsl_total += t.gsl;
    ++rows;
  }
  std::printf("\n%d rows: geometric mean of the ratios %.3f; total time ratio %.3f\n", rows,
              std::exp(log_sum / rows), zem_total / gsl_total);
  return 0;
}
