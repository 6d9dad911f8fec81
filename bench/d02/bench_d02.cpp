// Work against accuracy: Zem's three pairs (d02pe to tend) against GSL's
// rk8pd, rkf45 and rk2 (gsl_odeiv2_driver) and Boost.Odeint's
// runge_kutta_dopri5 and runge_kutta_fehlberg78 (controlled steppers,
// integrate_adaptive), on the non-stiff test problems of tests/d02, for
// tol = 1e-3 .. 1e-12.  Every run reports its counters: evaluations of f
// ("fevals"), the error at tend ("error", max-norm against the mpmath
// reference); tools/d02_work_precision.py derives the time per evaluation.  All solvers get
// relative tolerance tol and absolute tolerance 1e-3 tol (Zem: thresh 1e-3).
//
//   bench_d02 --benchmark_repetitions=3 --benchmark_min_time=0.02
//   python3 tools/d02_work_precision.py bench_d02.json docs
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_odeiv2.h>
#include <zem.h>
#include "zem_bench.h"

#include <array>
#include <boost/numeric/odeint.hpp>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using state = std::array<double, 4>;

struct problem {
  const char *name;
  int n;
  double tend;
  state y0;
  void (*f)(double, const double *, double *);
  state yref;
};

void harmonic(double, const double *y, double *yp) {
  yp[0] = y[1];
  yp[1] = -y[0];
}
void kepler(double, const double *y, double *yp) {
  const double r = std::sqrt(y[0] * y[0] + y[1] * y[1]), r3 = r * r * r;
  yp[0] = y[2];
  yp[1] = y[3];
  yp[2] = -y[0] / r3;
  yp[3] = -y[1] / r3;
}
void euler_body(double, const double *y, double *yp) {
  yp[0] = y[1] * y[2];
  yp[1] = -y[0] * y[2];
  yp[2] = -0.51 * y[0] * y[1];
}
void arenstorf(double, const double *y, double *yp) {
  const double mu = 0.012277471, mp = 1 - mu;
  const double d1 = std::pow((y[0] + mu) * (y[0] + mu) + y[1] * y[1], 1.5);
  const double d2 = std::pow((y[0] - mp) * (y[0] - mp) + y[1] * y[1], 1.5);
  yp[0] = y[2];
  yp[1] = y[3];
  yp[2] = y[0] + 2 * y[3] - mp * (y[0] + mu) / d1 - mu * (y[0] - mp) / d2;
  yp[3] = y[1] - 2 * y[2] - mp * y[1] / d1 - mu * y[1] / d2;
}

std::vector<double> reference(const char *name, double t) {
  std::ifstream in(ZEM_TEST_DATA "/reference.txt");
  std::string line;
  while (std::getline(in, line)) {
    std::istringstream s(line);
    std::string nm;
    double tt, v;
    s >> nm >> tt;
    if (nm != name || tt != t) continue;
    std::vector<double> y;
    while (s >> v) y.push_back(v);
    return y;
  }
  return {};
}

std::vector<problem> problems() {
  std::vector<problem> p = {
      {"harmonic", 2, 20.0, {1, 0, 0, 0}, harmonic, {}},
      {"kepler05", 4, 20.0, {0.5, 0, 0, std::sqrt(3.0)}, kepler, {}},
      {"kepler09", 4, 20.0, {0.1, 0, 0, std::sqrt(19.0)}, kepler, {}},
      {"euler", 3, 20.0, {0, 1, 1, 0}, euler_body, {}},
      {"arenstorf", 4, 17.0652165601579625588917206249, {0.994, 0, 0, -2.00158510637908252240537862224}, arenstorf,
       {0.994, 0, 0, -2.00158510637908252240537862224}},
  };
  for (problem &q : p)
    if (std::string(q.name) != "arenstorf") {
      const std::vector<double> r = reference(q.name, 20.0);
      for (int i = 0; i < q.n; ++i) q.yref[i] = r[i];
    }
  return p;
}

double error(const problem &p, const double *y) {
  double e = 0;
  for (int i = 0; i < p.n; ++i) e = std::max(e, std::fabs(y[i] - p.yref[i]));
  return e;
}

// ---- Zem ---------------------------------------------------------------
struct zem_user {
  const problem *p;
  int64_t evals;
};
void zem_f(double t, int64_t, const double y[], double yp[], Zem_Comm *comm) {
  auto *u = static_cast<zem_user *>(comm->p);
  ++u->evals;
  u->p->f(t, y, yp);
}
double run_zem(const problem &p, int method, double tol, int64_t &evals) {
  static const Zem_RK_method m[] = {Zem_RK_2_3, Zem_RK_4_5, Zem_RK_7_8};
  int64_t iw[ZEM_D02P_LIWSAV], lrw = 1024;
  double rw[1024], thresh[4] = {1e-3, 1e-3, 1e-3, 1e-3}, tgot, y[4], yp[4], ym[4];
  Zem_Fail fail = ZEM_FAIL_INIT;
  d02pqc(p.n, 0.0, p.tend, p.y0.data(), tol, thresh, m[method], Zem_ErrorAssess_off, 0.0, iw, rw, &lrw, &fail);
  zem_user u{&p, 0};
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = &u;
  do d02pec(zem_f, p.n, p.tend, &tgot, y, yp, ym, &comm, iw, rw, &fail);
  while (fail.code == NW_RK_TOO_MANY || fail.code == NE_STIFF_PROBLEM);
  evals = u.evals;
  return error(p, y);
}

// The same through d02pg (reverse communication): every evaluation returns
// to this loop.  Step by step to tend (harmonic oscillator only, for the
// per-evaluation overhead table; not part of the work-precision tables).
double run_zem_rc(const problem &p, int method, double tol, int64_t &evals) {
  static const Zem_RK_method m[] = {Zem_RK_2_3, Zem_RK_4_5, Zem_RK_7_8};
  int64_t iw[ZEM_D02P_LIWSAV], lrw = 1024, irevcm = 0;
  double rw[1024], thresh[4] = {1e-3, 1e-3, 1e-3, 1e-3}, t = 0, y[4], yp[4], tnow = 0, ynow[4], ypnow[4];
  Zem_Fail fail = ZEM_FAIL_INIT;
  d02pqc(p.n, 0.0, p.tend, p.y0.data(), tol, thresh, m[method], Zem_ErrorAssess_off, 0.0, iw, rw, &lrw, &fail);
  evals = 0;
  for (;;) {
    d02pgc(&irevcm, p.n, &t, y, yp, &tnow, ynow, ypnow, iw, rw, &fail);
    if (irevcm != 0) {
      ++evals;
      p.f(t, y, yp);
      continue;
    }
    if (tnow == p.tend || (fail.code != 0 && fail.code != NW_RK_TOO_MANY && fail.code != NE_STIFF_PROBLEM)) break;
  }
  return error(p, ynow);
}

// ---- GSL ---------------------------------------------------------------
struct gsl_user {
  const problem *p;
  int64_t evals;
};
int gsl_f(double t, const double y[], double yp[], void *params) {
  auto *u = static_cast<gsl_user *>(params);
  ++u->evals;
  u->p->f(t, y, yp);
  return GSL_SUCCESS;
}
double run_gsl(const problem &p, const gsl_odeiv2_step_type *T, double tol, int64_t &evals) {
  gsl_user u{&p, 0};
  gsl_odeiv2_system sys{gsl_f, nullptr, static_cast<size_t>(p.n), &u};
  gsl_odeiv2_driver *d = gsl_odeiv2_driver_alloc_y_new(&sys, T, 1e-6, 1e-3 * tol, tol);
  gsl_odeiv2_driver_set_nmax(d, 0);
  double t = 0, y[4];
  for (int i = 0; i < 4; ++i) y[i] = p.y0[i];
  gsl_odeiv2_driver_apply(d, &t, p.tend, y);
  gsl_odeiv2_driver_free(d);
  evals = u.evals;
  return error(p, y);
}

// ---- Boost.Odeint ------------------------------------------------------
template <int N>
using bstate = std::array<double, N>;
template <int N, typename Stepper>
double run_boost(const problem &p, double tol, int64_t &evals) {
  namespace ode = boost::numeric::odeint;
  int64_t count = 0;
  auto sys = [&](const bstate<N> &y, bstate<N> &yp, double t) {
    ++count;
    p.f(t, y.data(), yp.data());
  };
  bstate<N> y;
  for (int i = 0; i < N; ++i) y[i] = p.y0[i];
  ode::integrate_adaptive(ode::make_controlled(1e-3 * tol, tol, Stepper()), sys, y, 0.0, p.tend, 1e-6);
  evals = count;
  return error(p, y.data());
}
template <int N>
double run_boost_pair(const problem &p, int which, double tol, int64_t &evals) {
  namespace ode = boost::numeric::odeint;
  if (which == 0) return run_boost<N, ode::runge_kutta_dopri5<bstate<N>>>(p, tol, evals);
  return run_boost<N, ode::runge_kutta_fehlberg78<bstate<N>>>(p, tol, evals);
}

enum solver { zem23, zem45, zem78, gsl_rk2, gsl_rkf45, gsl_rk8pd, boost_dopri5, boost_fehlberg78 };
const char *const solver_names[] = {"zem_rk23", "zem_rk45", "zem_rk78", "gsl_rk2",
                                    "gsl_rkf45", "gsl_rk8pd", "boost_dopri5", "boost_fehlberg78"};

double run(const problem &p, int s, double tol, int64_t &evals) {
  switch (s) {
    case zem23: case zem45: case zem78: return run_zem(p, s, tol, evals);
    case gsl_rk2: return run_gsl(p, gsl_odeiv2_step_rk2, tol, evals);
    case gsl_rkf45: return run_gsl(p, gsl_odeiv2_step_rkf45, tol, evals);
    case gsl_rk8pd: return run_gsl(p, gsl_odeiv2_step_rk8pd, tol, evals);
    default: break;
  }
  const int which = s == boost_dopri5 ? 0 : 1;
  switch (p.n) {
    case 2: return run_boost_pair<2>(p, which, tol, evals);
    case 3: return run_boost_pair<3>(p, which, tol, evals);
    default: return run_boost_pair<4>(p, which, tol, evals);
  }
}

// One integration per iteration through Run (the callback integrators or
// reverse communication), with its evaluations and error as counters.
template <double (*Run)(const problem &, int, double, int64_t &)>
void bench(benchmark::State &st, problem p, int s, double tol) {
  int64_t evals = 0;
  double err = 0;
  for (auto _ : st) {
    err = Run(p, s, tol, evals);
    benchmark::DoNotOptimize(err);
  }
  st.counters["fevals"] = static_cast<double>(evals);
  st.counters["error"] = err;
  st.counters["tol"] = tol;
}

// The low-order peers stop at 1e-8: below it they take millions of steps.
const bool registered = [] {
  for (const problem &p : problems())
    for (int s = 0; s < 8; ++s)
      for (int k = 3; k <= 12; ++k) {
        if ((s == zem23 || s == gsl_rk2) && k > 8) continue;
        const double tol = std::pow(10.0, -k);
        const std::string name = std::string(p.name) + "/" + solver_names[s] + "/1e-" + std::to_string(k);
        benchmark::RegisterBenchmark(name.c_str(), bench<run>, p, s, tol)->Unit(benchmark::kMicrosecond);
      }
  for (const problem &p : problems())
    if (std::string(p.name) == "harmonic")
      for (int s : {zem45, zem78}) {
        const std::string name = std::string("harmonic/") + solver_names[s] + "_revcomm/1e-12";
        benchmark::RegisterBenchmark(name.c_str(), bench<run_zem_rc>, p, s, 1e-12)->Unit(benchmark::kMicrosecond);
      }
  return true;
}();

}  // namespace

// On the harness (nine interleaved repetitions unless told otherwise, JSON
// in bench_d02.json); tools/bench.sh asks for three short ones, enough for
// the evaluation counts, which do not vary, and for medians of the times.
//
//   bench_d02 --sweep=<problem>/<solver>
// prints instead, for tol = 10^(-k/8), k = 24 .. 80, the evaluations and
// the error at tend of one solver on one problem (how smoothly the error
// follows tol; docs/benchmarks.md, d02 section).
//
//   bench_d02 --results
// prints, for every Zem run of the work-precision tables and the two
// reverse-communication runs, the evaluations and the error at tend in
// hexadecimal (%a): two versions of the library give the same numbers to
// the last bit exactly when the two outputs are the same text.
int main(int argc, char **argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    if (a == "--results") {
      for (const problem &p : problems())
        for (int s = zem23; s <= zem78; ++s)
          for (int k = 3; k <= 12; ++k) {
            if (s == zem23 && k > 8) continue;
            int64_t evals = 0;
            const double err = run(p, s, std::pow(10.0, -k), evals);
            std::printf("%s/%s/1e-%d %lld %a\n", p.name, solver_names[s], k, static_cast<long long>(evals), err);
          }
      for (const problem &p : problems())
        if (std::string(p.name) == "harmonic")
          for (int s : {zem45, zem78}) {
            int64_t evals = 0;
            const double err = run_zem_rc(p, s, 1e-12, evals);
            std::printf("harmonic/%s_revcomm/1e-12 %lld %a\n", solver_names[s], static_cast<long long>(evals), err);
          }
      return 0;
    }
    if (a.rfind("--sweep=", 0) != 0) continue;
    const std::string what = a.substr(8), prob = what.substr(0, what.find('/')),
                      name = what.substr(what.find('/') + 1);
    for (const problem &p : problems())
      for (int s = 0; s < 8; ++s)
        if (prob == p.name && name == solver_names[s])
          for (int k = 24; k <= 80; ++k) {
            const double tol = std::pow(10.0, -k / 8.0);
            int64_t evals = 0;
            const double err = run(p, s, tol, evals);
            std::printf("%.3e %lld %.3e\n", tol, static_cast<long long>(evals), err);
          }
    return 0;
  }
  return zem_bench::run(argc, argv, "d02");
}
