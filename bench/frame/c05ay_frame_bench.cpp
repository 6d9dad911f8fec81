// What the call frame costs: f(x) = x^3 - 2 on [0,2] with eps = 1e-12,
// solved through c05ayc, through c05ayf_, and by the same Brent iteration
// coded inline with no frame at all (no entries, no message record, no
// callback chain, no fail record), calling the user's function through a
// pointer as every solver must.  All three make the same evaluations.
//
//   build-bench/bench/frame/bench_c05ay_frame   (harness of bench/zem_bench.h:
//       repetitions, random interleaving, aggregates, JSON)
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <zem.h>

#include <string>

#include "zem_bench.h"

namespace {

int64_t evaluations;  // counts across millions of solves

double f_c(double x, Zem_Comm *) {
  ++evaluations;
  return x * x * x - 2.0;
}
double f_fortran(const double *x, int64_t *, double *) {
  ++evaluations;
  return *x * *x * *x - 2.0;
}
// The baselines call a user function through a pointer, as any solver
// handed a function must: the plain f(x), and the same two functions the
// library's entries call, with the calling convention of each interface
// (the C function takes x by value and the comm pointer, the Fortran one x
// by address and iuser, ruser).
double f_plain(double x) {
  ++evaluations;
  return x * x * x - 2.0;
}
double (*volatile f_plain_pointer)(double) = f_plain;
double (*volatile f_c_pointer)(double, Zem_Comm *) = f_c;
double (*volatile f_fortran_pointer)(const double *, int64_t *, double *) = f_fortran;

// c05ay's algorithm written out with no frame: the same checks (finite,
// distinct end points), the same iteration (absolute error control, the
// overflow-free half-width, the rounding-unit exit, the guards for a NaN
// tolerance or bracket, the bound on the iteration count), the same
// acceptance of |f| < eta or f = 0 and the same final evaluation with the
// pole test; status as c05ay's.
template <typename F>
double brent_inline(F f_inline, double a, double b, double eps, double eta, int &status) {
  status = 1;
  if (0.0 >= eps || a == b || !std::isfinite(a) || !std::isfinite(b)) return a;
  auto small = [eta](double v) { return std::fabs(v) < eta || v == 0.0; };
  double fa = f_inline(a);
  status = 0;
  if (small(fa)) return a;
  double fb = f_inline(b);
  if (small(fb)) return b;
  status = 1;
  if ((fa <= 0.0) == (fb <= 0.0)) return a;
  status = 0;
  const double fmax = std::max(std::fabs(fa), std::fabs(fb));
  double c = a, fc = fa, d = b - a, e = d;
  for (int64_t iteration = 0;; ++iteration) {
    if ((fb <= 0.0) == (fc <= 0.0)) {
      c = a;
      fc = fa;
      d = e = b - a;
    }
    if (std::fabs(fc) < std::fabs(fb)) {
      a = b;
      b = c;
      c = a;
      fa = fb;
      fb = fc;
      fc = fa;
    }
    const double tol = eps;
    double m = (c - b) * 0.5;
    if (__builtin_expect(std::fabs(m) > 0x1.fffffffffffffp+1022, 0)) m = c * 0.5 - b * 0.5;
    if (std::fabs(m) <= tol || fb == 0.0) {
      const double fx = f_inline(b);  // the final evaluation, for the pole test
      if (!small(fx) && std::fabs(fx) > fmax) status = 3;
      return b;
    }
    if (std::fabs(m) <= std::fabs(b) * 0x1p-53 || std::isnan(m) ||
        __builtin_expect(iteration == int64_t{2101} * 2101, 0)) {
      status = 2;
      return b;
    }
    const double d_old = d, e_old = e;
    d = e = m;
    if (std::fabs(e_old) >= tol && std::fabs(fb) < std::fabs(fa)) {
      const double s = fb / fa;
      double p, q;
      if (a == c) {
        p = 2.0 * m * s;
        q = 1.0 - s;
      } else {
        q = fa / fc;
        const double r = fb / fc;
        p = s * (2.0 * m * q * (q - r) - (b - a) * (r - 1.0));
        q = (q - 1.0) * (r - 1.0) * (s - 1.0);
      }
      if (p > 0.0) q = -q;
      p = std::fabs(p);
      if (2.0 * p < 3.0 * m * q - std::fabs(tol * q) && p < std::fabs(0.5 * e_old * q)) {
        e = d_old;
        d = p / q;
      }
    }
    a = b;
    fa = fb;
    b = std::fabs(d) > tol || std::isnan(tol) ? b + d : c <= b ? b - tol : b + tol;
    fb = f_inline(b);
    if (small(fb)) return b;
  }
}

void BM_c05ayc(benchmark::State &state, double eta_arg) {
  const double eta = eta_arg;
  Zem_Fail fail = ZEM_FAIL_INIT;
  Zem_Comm comm = {0, nullptr, nullptr, nullptr};
  double x = 0.0;
  evaluations = 0;
  for (auto _ : state) {
    c05ayc(0.0, 2.0, 1e-12, eta, f_c, &x, &comm, &fail);
    benchmark::DoNotOptimize(x);
  }
  state.counters["evals/solve"] = double(evaluations) / double(state.iterations());
}

void BM_c05ayf(benchmark::State &state, double eta_arg) {
  const double a = 0.0, b = 2.0, eps = 1e-12, eta = eta_arg;
  int64_t iuser[1] = {0}, ifail = 1;
  double ruser[1] = {0.0}, x = 0.0;
  evaluations = 0;
  for (auto _ : state) {
    ifail = 1;
    c05ayf_(&a, &b, &eps, &eta, f_fortran, &x, iuser, ruser, &ifail);
    benchmark::DoNotOptimize(x);
  }
  state.counters["evals/solve"] = double(evaluations) / double(state.iterations());
}

// The inline solve with f called as f_call(x); eta = 10 accepts f(a) at
// once (one evaluation: the cost of a call without its iteration).
template <typename F>
void inline_solve(benchmark::State &state, double eta_arg, F f_call) {
  // The end points are read from volatile storage so that nothing of the
  // solve can be worked out at compile time.
  volatile double lo = 0.0, hi = 2.0, eta = eta_arg;
  evaluations = 0;
  for (auto _ : state) {
    int status = 0;
    double x = brent_inline(f_call, lo, hi, 1e-12, eta, status);
    benchmark::DoNotOptimize(status);
    benchmark::DoNotOptimize(x);
  }
  state.counters["evals/solve"] = double(evaluations) / double(state.iterations());
}

void BM_inline(benchmark::State &state, double eta_arg) {
  double (*const f)(double) = f_plain_pointer;
  inline_solve(state, eta_arg, [f](double x) { return f(x); });
}

void BM_inline_c(benchmark::State &state, double eta_arg) {
  double (*const f)(double, Zem_Comm *) = f_c_pointer;
  Zem_Comm comm = {0, nullptr, nullptr, nullptr};
  inline_solve(state, eta_arg, [f, &comm](double x) { return f(x, &comm); });
}

void BM_inline_fortran(benchmark::State &state, double eta_arg) {
  double (*const f)(const double *, int64_t *, double *) = f_fortran_pointer;
  int64_t iuser[1] = {0};
  double ruser[1] = {0.0};
  double x_arg = 0.0;  // the solver's x, where the function reads the point
  inline_solve(state, eta_arg, [&](double x) {
    x_arg = x;
    return f(&x_arg, iuser, ruser);
  });
}

}  // namespace

// eta = 0: the solve of the target (10 evaluations); eta = 10 stops at the
// first evaluation.  Groups for tools/bench_report.py: ours (the entries)
// first, then the frameless iterations.
int main(int argc, char **argv) {
  for (const double eta : {0.0, 10.0}) {
    const std::string group = eta == 0.0 ? "c05ay frame, full solve" : "c05ay frame, first evaluation";
    benchmark::RegisterBenchmark((group + "/c05ayc").c_str(), BM_c05ayc, eta);
    benchmark::RegisterBenchmark((group + "/c05ayf_").c_str(), BM_c05ayf, eta);
    benchmark::RegisterBenchmark((group + "/inline").c_str(), BM_inline, eta);
    benchmark::RegisterBenchmark((group + "/inline, C callback").c_str(), BM_inline_c, eta);
    benchmark::RegisterBenchmark((group + "/inline, Fortran callback").c_str(), BM_inline_fortran, eta);
  }
  return zem_bench::run(argc, argv, "frame");
}
