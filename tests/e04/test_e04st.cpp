// e04st: small nonlinear, quadratic and linear programs with known optima,
// the linear programs of glpk-utils' MPS examples against glpsol's optima
// (tests/e04/data/glpk_mps_optima.txt, tools/glpk_mps_reference.sh), and
// every failure the routine reports, with the handle usable afterwards.
#include <gtest/gtest.h>
#include <zem.h>

#include "e04/handle.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct handle_guard {
  void *h = nullptr;
  ~handle_guard() {
    if (h) e04rzc(&h, nullptr);
  }
};

void set(void *h, const char *opt) {
  Zem_Fail fail{};
  fail.print = 0;
  e04zmc(h, opt, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR) << opt << ": " << fail.message;
}

// The n values the handle's result store holds under name.
std::vector<double> stored(void *h, const char *name, int64_t n) {
  std::vector<double> v(n);
  Zem_Fail fail{};
  fail.print = 0;
  e04rxc(h, name, 0, n, v.data(), &fail);
  EXPECT_EQ(fail.code, NE_NOERROR) << name << ": " << fail.message;
  return v;
}

// e04stc on a model the library evaluates alone (no user functions, no
// multipliers asked for); the objective comes back in rinfo[0].
Zem_Fail solve_model(void *h, int64_t n, double x[], double rinfo[100], Zem_Comm *comm = nullptr) {
  double stats[100];
  Zem_Fail fail{};
  fail.print = 0;
  e04stc(h, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, n, x, 0, nullptr, rinfo, stats, comm, &fail);
  return fail;
}

// ---- HS 71: min x1 x4 (x1 + x2 + x3) + x3,  x1 x2 x3 x4 >= 25,
// x1^2 + x2^2 + x3^2 + x4^2 = 40,  1 <= x <= 5.  f* = 17.0140172891519.
struct hs71_data {
  int calls = 0;
  int stop_at = -1;     // objfun call on which comm->flag changes
  bool nan_at_start = false;
  bool wrong_gradient = false;  // d f / d x2 off by a factor 1.5
  void *handle = nullptr;  // for calls back into the library
  int64_t reentry_code = -1, option_code = -1;
};

void hs71_objfun(int64_t, const double x[], double *fx, int64_t *, Zem_Comm *comm) {
  auto *d = static_cast<hs71_data *>(comm->p);
  ++d->calls;
  *fx = x[0] * x[3] * (x[0] + x[1] + x[2]) + x[2];
  if (d->nan_at_start) *fx = NAN;
  if (d->calls == d->stop_at) comm->flag = 7;
  if (d->handle && d->calls == 3) {
    // A solve, and an option setting, from inside the solve.
    double x2[4] = {1, 5, 5, 1}, ri[100];
    d->reentry_code = solve_model(d->handle, 4, x2, ri, comm).code;
    Zem_Fail f{};
    f.print = 0;
    e04zmc(d->handle, "Print Level = 1", &f);
    d->option_code = f.code;
  }
}
void hs71_objgrd(int64_t, const double x[], int64_t, double g[], int64_t *, Zem_Comm *comm) {
  const bool wrong = comm && comm->p && static_cast<hs71_data *>(comm->p)->wrong_gradient;
  g[0] = x[3] * (2 * x[0] + x[1] + x[2]);
  g[1] = x[0] * x[3] * (wrong ? 1.5 : 1.0);
  g[2] = x[0] * x[3] + 1;
  g[3] = x[0] * (x[0] + x[1] + x[2]);
}
void hs71_confun(int64_t, const double x[], int64_t, double g[], int64_t *, Zem_Comm *) {
  g[0] = x[0] * x[1] * x[2] * x[3];
  g[1] = x[0] * x[0] + x[1] * x[1] + x[2] * x[2] + x[3] * x[3];
}
void hs71_congrd(int64_t, const double x[], int64_t, double j[], int64_t *, Zem_Comm *) {
  // Dense 2 x 4, row by row, as declared.
  j[0] = x[1] * x[2] * x[3];
  j[1] = x[0] * x[2] * x[3];
  j[2] = x[0] * x[1] * x[3];
  j[3] = x[0] * x[1] * x[2];
  for (int k = 0; k < 4; ++k) j[4 + k] = 2 * x[k];
}
// Lagrangian Hessian, upper triangle row by row (10 elements).
void hs71_hess(int64_t, const double x[], int64_t, int64_t idf, double s, const double l[], int64_t, double h[],
               int64_t *, Zem_Comm *) {
  ASSERT_EQ(idf, -1);
  const double a = x[0], b = x[1], c = x[2], d = x[3];
  // (1,1) (1,2) (1,3) (1,4) (2,2) (2,3) (2,4) (3,3) (3,4) (4,4)
  h[0] = s * 2 * d + 2 * l[1];
  h[1] = s * d + l[0] * c * d;
  h[2] = s * d + l[0] * b * d;
  h[3] = s * (2 * a + b + c) + l[0] * b * c;
  h[4] = 2 * l[1];
  h[5] = l[0] * a * d;
  h[6] = s * a + l[0] * a * c;
  h[7] = 2 * l[1];
  h[8] = s * a + l[0] * a * b;
  h[9] = 2 * l[1];
}
void stop_monit(int64_t, const double[], int64_t *inform, const double[], const double stats[], Zem_Comm *) {
  if (stats[0] >= 2) *inform = -3;
}

void make_hs71(handle_guard &g, bool hessian) {
  e04rac(&g.h, 4, nullptr);
  const double bl[4] = {1, 1, 1, 1}, bu[4] = {5, 5, 5, 5};
  e04rhc(g.h, 4, bl, bu, nullptr);
  const int64_t idx[4] = {1, 2, 3, 4};
  e04rgc(g.h, 4, idx, nullptr);
  const double cl[2] = {25, 40}, cu[2] = {1e20, 40};
  const int64_t ir[8] = {1, 1, 1, 1, 2, 2, 2, 2}, ic[8] = {1, 2, 3, 4, 1, 2, 3, 4};
  e04rkc(g.h, 2, cl, cu, 8, ir, ic, nullptr);
  if (hessian) {
    const int64_t hr[10] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 4}, hc[10] = {1, 2, 3, 4, 2, 3, 4, 3, 4, 4};
    e04rlc(g.h, -1, 10, hr, hc, nullptr);
  }
  set(g.h, "Print Level = 0");
  set(g.h, "Stop Tolerance 1 = 1e-10");
}

struct run_out {
  int code;
  std::string message;
  std::vector<double> x, u;
  double rinfo[100], stats[100];
};

// From x0 (the book's start by default); nnzu = 0 leaves u out.
run_out solve_hs71(void *h, hs71_data &d, bool hessian, Zem_E04ST_Monit monit = nullptr,
                   std::vector<double> x0 = {1, 5, 5, 1}, int64_t nnzu = 6) {
  run_out r;
  r.x = x0;
  r.u.assign(4 + 2, 0.0);
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = &d;
  Zem_Fail fail{};
  fail.print = 0;
  e04stc(h, hs71_objfun, hs71_objgrd, hs71_confun, hs71_congrd, hessian ? hs71_hess : nullptr, monit, 4, r.x.data(),
         nnzu, r.u.data(), r.rinfo, r.stats, &comm, &fail);
  r.code = fail.code;
  r.message = fail.message;
  return r;
}

// HS 71 with the exact Hessian and with the limited-memory one: the
// optimum, the multipliers and the results kept in the handle; then a warm
// start: "Initial U" = "User" with nnzu = 0 takes the multipliers from the
// store, x from the last solve (read back from the store, as a program that
// no longer holds it would); from the optimum the solver confirms it in a
// few iterations, with the same answer.
TEST(E04st, Hs71ExactAndLimitedMemoryThenWarmStart) {
  for (bool hessian : {true, false}) {
    SCOPED_TRACE(hessian ? "exact Hessian" : "limited memory");
    handle_guard g;
    make_hs71(g, hessian);
    hs71_data d;
    const run_out r = solve_hs71(g.h, d, hessian);
    ASSERT_EQ(r.code, NE_NOERROR) << r.message;
    EXPECT_NEAR(r.rinfo[0], 17.0140172891519, 1e-8 * 17.014);
    const double xs[4] = {1.0, 4.74299963, 3.82114998, 1.37940829};
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(r.x[k], xs[k], 1e-6);
    // Multipliers: u = z_L - z_U for the bounds; x1 sits on its lower bound.
    EXPECT_GT(r.u[0], 0.0);
    // The results are in the handle.
    EXPECT_EQ(stored(g.h, "PRIMAL", 4), r.x);
    EXPECT_EQ(stored(g.h, "DUAL VARIABLES", 6), r.u);
    const std::vector<double> cv = stored(g.h, "CONSTRAINT VALUES", 2);
    EXPECT_NEAR(cv[0], 25.0, 1e-6);
    EXPECT_NEAR(cv[1], 40.0, 1e-6);
    EXPECT_GT(r.stats[0], 3);
    EXPECT_EQ(hessian, r.stats[5] > 0);

    set(g.h, "Initial U = User");
    const run_out warm = solve_hs71(g.h, d, hessian, nullptr, stored(g.h, "PRIMAL", 4), 0);
    ASSERT_EQ(warm.code, NE_NOERROR) << warm.message;
    EXPECT_LE(warm.stats[0], 3) << "cold start: " << r.stats[0];
    EXPECT_NEAR(warm.rinfo[0], r.rinfo[0], 1e-9 * 17.014);
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(warm.x[k], r.x[k], 1e-7);
    const std::vector<double> u = stored(g.h, "DUAL VARIABLES", 6);
    for (int k = 0; k < 6; ++k) EXPECT_NEAR(u[k], r.u[k], 1e-5 * (1 + std::fabs(r.u[k])));
  }
}

// "Verify Derivatives": the dependency's check runs at the start and its
// findings are printed on the print file; a wrong derivative ends the call
// with NE_DERIV_ERRORS before any step, x as on entry and the handle usable.
void fortran_objfun(const int64_t *n, const double x[], double *fx, int64_t *inform, int64_t *, double *ruser) {
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = ruser;
  hs71_objfun(*n, x, fx, inform, &comm);
}
void fortran_objgrd(const int64_t *n, const double x[], const int64_t *nz, double g[], int64_t *inform, int64_t *,
                    double *ruser) {
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = ruser;
  hs71_objgrd(*n, x, *nz, g, inform, &comm);
}
void fortran_confun(const int64_t *n, const double x[], const int64_t *m, double g[], int64_t *inform, int64_t *,
                    double *) {
  hs71_confun(*n, x, *m, g, inform, nullptr);
}
void fortran_congrd(const int64_t *n, const double x[], const int64_t *nz, double j[], int64_t *inform, int64_t *,
                    double *) {
  hs71_congrd(*n, x, *nz, j, inform, nullptr);
}
void fortran_hess(const int64_t *, const double[], const int64_t *, const int64_t *, const double *, const double[],
                  const int64_t *, double[], int64_t *, int64_t *, double *) {}
void fortran_monit(const int64_t *, const double[], int64_t *, const double[], const double[], int64_t *, double *) {}

TEST(E04st, VerifyDerivatives) {
  handle_guard g;
  make_hs71(g, true);
  set(g.h, "Verify Derivatives = Yes");
  set(g.h, "Print Level = 1");
  {
    hs71_data d;
    testing::internal::CaptureStdout();
    const run_out r = solve_hs71(g.h, d, true);
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(r.code, NE_NOERROR) << r.message;
    EXPECT_NE(out.find("No errors detected by derivative checker."), std::string::npos) << out;
  }
  for (bool hessian : {true, false}) {
    hs71_data d;
    d.wrong_gradient = true;
    testing::internal::CaptureStdout();
    const run_out r = solve_hs71(g.h, d, hessian);
    const std::string out = testing::internal::GetCapturedStdout();
    // With second derivatives the Hessian's entries (1,2) and (2,4) are
    // checked against differences of the wrong gradient too.
    EXPECT_EQ(r.message,
              std::string("NE_DERIV_ERRORS:\n  The user-supplied derivatives appear to be wrong: 'Verify Derivatives'\n"
                          "  found entries that differ from their finite-difference estimates at x\n"
                          "  (listed on 'Print File' when 'Print Level' >= 1).\n  Entries flagged: ") +
                  (hessian ? "3" : "1") + ".\n  No step was taken; x is unchanged.");
    EXPECT_NE(out.find("* grad_f[          1]"), std::string::npos) << out;
    EXPECT_EQ(r.x, std::vector<double>({1, 5, 5, 1}));
    EXPECT_EQ(r.stats[0], 0);
  }
  // The Fortran entry: the same failure as ifail = 7.
  {
    hs71_data d;
    d.wrong_gradient = true;
    set(g.h, "Print Level = 0");
    double x[4] = {1, 5, 5, 1}, rinfo[100], stats[100];
    const int64_t nvar = 4, nnzu = 0;
    int64_t iuser[1] = {0}, ifail = 1;
    e04stf_(&g.h, fortran_objfun, fortran_objgrd, fortran_confun, fortran_congrd, fortran_hess, fortran_monit, &nvar,
            x, &nnzu, nullptr, rinfo, stats, iuser, reinterpret_cast<double *>(&d), &ifail);
    EXPECT_EQ(ifail, 7);
    // With the check off, the handle solves as before.
    set(g.h, "Verify Derivatives = No");
    hs71_data ok;
    const run_out r = solve_hs71(g.h, ok, true);
    EXPECT_EQ(r.code, NE_NOERROR) << r.message;
  }
}

// ---- Linear and quadratic models: evaluated by the library alone -------
TEST(E04st, LinearQuadraticModels) {
  struct model_case {
    const char *what;
    void (*build)(void *);
    int64_t n;
    std::vector<double> xstar;
    double fstar;
  };
  const model_case cases[] = {
      {"LP maximised: max x+y, x+2y<=4, 3x+y<=6, x,y>=0",
       [](void *h) {
         const double c[2] = {1, 1};
         e04rec(h, 2, c, nullptr);
         const double bl[2] = {0, 0}, bu[2] = {1e20, 1e20};
         e04rhc(h, 2, bl, bu, nullptr);
         const double rl[2] = {-1e20, -1e20}, ru[2] = {4, 6};
         const int64_t ir[4] = {1, 1, 2, 2}, ic[4] = {1, 2, 1, 2};
         const double b[4] = {1, 2, 3, 1};
         int64_t id = 0;
         e04rjc(h, 2, rl, ru, 4, ir, ic, b, &id, nullptr);
         set(h, "Task = Maximize");
       },
       2, {1.6, 1.2}, 2.8},
      {"QP: (x1-1)^2+(x2-2.5)^2 - 7.25 with three rows",
       [](void *h) {
         const int64_t idxc[2] = {1, 2};
         const double c[2] = {-2, -5};
         const int64_t hr[2] = {1, 2}, hc[2] = {1, 2};
         const double hv[2] = {2, 2};
         e04rfc(h, 2, idxc, c, 2, hr, hc, hv, nullptr);
         const double bl[2] = {0, 0}, bu[2] = {1e20, 1e20};
         e04rhc(h, 2, bl, bu, nullptr);
         const double rl[3] = {-2, -6, -2}, ru[3] = {1e20, 1e20, 1e20};
         const int64_t ir[6] = {1, 1, 2, 2, 3, 3}, ic[6] = {1, 2, 1, 2, 1, 2};
         const double b[6] = {1, -2, -1, -2, -1, 2};
         int64_t id = 0;
         e04rjc(h, 3, rl, ru, 6, ir, ic, b, &id, nullptr);
       },
       2, {1.4, 1.7}, 0.8 - 7.25},
      {"quadratic constraint: min x1+x2, x1^2+x2^2 <= 2",
       [](void *h) {
         const double c[2] = {1, 1};
         e04rec(h, 2, c, nullptr);
         const int64_t qr[2] = {1, 2}, qc[2] = {1, 2};
         const double q[2] = {2, 2};
         int64_t id = 0;
         e04rsc(h, 2, qr, qc, q, 0, nullptr, nullptr, -1e20, 2.0, &id, nullptr);
       },
       2, {-1, -1}, -2},
      {"factored quadratic: 0.5||(x1-x2, x2)||^2 - x1, x1 <= 3",
       [](void *h) {
         const int64_t fr[3] = {1, 1, 2}, fc[3] = {1, 2, 2};
         const double f[3] = {1, -1, 1};
         const int64_t idxr[1] = {1};
         const double r[1] = {-1};
         e04rtc(h, 2, 3, fr, fc, f, 1, idxr, r, nullptr);
         const double bl[2] = {-1e20, -1e20}, bu[2] = {3, 1e20};
         e04rhc(h, 2, bl, bu, nullptr);
       },
       // unconstrained minimiser (2, 1) ... f = 0.5(1 + 1) - 2 = -1
       2, {2, 1}, -1},
  };
  for (const auto &c : cases) {
    handle_guard g;
    e04rac(&g.h, c.n, nullptr);
    c.build(g.h);
    set(g.h, "Print Level = 0");
    set(g.h, "Stop Tolerance 1 = 1e-10");
    std::vector<double> x(c.n, 0.5);
    double ri[100];
    const Zem_Fail fail = solve_model(g.h, c.n, x.data(), ri);
    ASSERT_EQ(fail.code, NE_NOERROR) << c.what << fail.message;
    EXPECT_NEAR(ri[0], c.fstar, 1e-7 * std::max(1.0, std::fabs(c.fstar))) << c.what;
    for (int64_t k = 0; k < c.n; ++k) EXPECT_NEAR(x[k], c.xstar[k], 1e-6) << c.what;
  }
}

// ---- The MPS examples of glpk-utils against glpsol --------------------
TEST(E04st, GlpkMpsExamples) {
  std::ifstream ref(std::string(ZEM_TEST_DATA) + "/glpk_mps_optima.txt");
  ASSERT_TRUE(ref.good());
  const std::string dir = "/usr/share/doc/glpk-utils/examples/";
  std::string line;
  int solved = 0;
  while (std::getline(ref, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream in(line);
    std::string name, status;
    double fstar = 0;
    in >> name >> status >> fstar;
    handle_guard g;
    Zem_Fail fail{};
    fail.print = 0;
    e04sac(&g.h, "MPS", (dir + name).c_str(), &fail);
    ASSERT_EQ(fail.code, NE_NOERROR) << name << fail.message;
    char eb[200];
    int64_t st0 = 0;
    const int64_t n = zem::e04::num_vars(*zem::e04::open_problem(g.h, eb, &st0));
    // Integer markers are relaxed, as glpsol --nomip does.
    std::vector<int64_t> all(n);
    for (int64_t k = 0; k < n; ++k) all[k] = k + 1;
    e04rcc(g.h, "CONT", n, all.data(), nullptr);
    set(g.h, "Print Level = 0");
    set(g.h, "Outer Iteration Limit = 500");
    set(g.h, "Stop Tolerance 1 = 1e-10");
    std::vector<double> x(n, 0.0);
    double ri[100];
    fail = solve_model(g.h, n, x.data(), ri);
    if (status == "u") {
      EXPECT_TRUE(fail.code == NE_UNBOUNDED || fail.code == NE_TOO_MANY_ITER) << name << fail.message;
      continue;
    }
    ASSERT_EQ(fail.code, NE_NOERROR) << name << fail.message;
    EXPECT_NEAR(ri[0], fstar, 1e-6 * std::fabs(fstar)) << name;
    ++solved;
  }
  EXPECT_GE(solved, 6);
}

// ---- Failures, each leaving the handle usable -------------------------
TEST(E04st, FailuresLeaveTheHandleUsable) {
  handle_guard g;
  make_hs71(g, true);
  // Each case on the same handle, one after the other: options set before
  // the solve and put back after it, the user functions' behaviour, the
  // code, the message (whole, or a part of it), and what else must hold.
  struct failure_case {
    const char *what;
    const char *option, *restore;  // null: none
    void (*prepare)(hs71_data &, void *handle);
    Zem_E04ST_Monit monit;
    int code;
    const char *message;  // the whole message if it starts with "NE_", else a part of it
    void (*check)(const hs71_data &);
  };
  const failure_case cases[] = {
      {"comm->flag at the 5th objfun call", nullptr, nullptr, [](hs71_data &d, void *) { d.stop_at = 5; }, nullptr,
       NE_USER_STOP, "user flag value = 7.", [](const hs71_data &d) { EXPECT_EQ(d.calls, 5); }},
      {"inform = -3 from the monitor", "Monitor Frequency = 1", "Monitor Frequency = 0", nullptr, stop_monit,
       NE_USER_STOP, "user flag value = -3.", nullptr},
      {"a solve and an option setting from inside the solve", nullptr, nullptr,
       [](hs71_data &d, void *h) { d.handle = h; }, nullptr, NE_NOERROR, "",
       [](const hs71_data &d) {
         EXPECT_EQ(d.reentry_code, NE_PHASE);
         EXPECT_EQ(d.option_code, NE_PHASE);
       }},
      {"NaN at the start", nullptr, nullptr, [](hs71_data &d, void *) { d.nan_at_start = true; }, nullptr,
       NE_USER_NAN, "", nullptr},
      {"iteration limit", "Outer Iteration Limit = 2", "Outer Iteration Limit = 100", nullptr, nullptr,
       NE_TOO_MANY_ITER,
       "NE_TOO_MANY_ITER:\n  The iteration limit was reached:\n  'Outer Iteration Limit' = 2.\n"
       "  x holds the last iterate.",
       nullptr},
      {"incompatible options", "Bound Relax Factor = 1e-3", "Bound Relax Factor = 1e-8", nullptr, nullptr, NE_REAL_2,
       "NE_REAL_2:\n  On entry, 'Bound Relax Factor' = 0.001 and\n  'Stop Tolerance Feasibility' = 1e-07.\n"
       "  Constraint: 'Bound Relax Factor' <= 'Stop Tolerance Feasibility'.\n"
       "  Use zem_opt_handle_opt_set (e04zmc) to set compatible option values.",
       nullptr},
  };
  for (const failure_case &c : cases) {
    SCOPED_TRACE(c.what);
    if (c.option) set(g.h, c.option);
    hs71_data d;
    if (c.prepare) c.prepare(d, g.h);
    const run_out r = solve_hs71(g.h, d, true, c.monit);
    EXPECT_EQ(r.code, c.code) << r.message;
    if (std::string(c.message).rfind("NE_", 0) == 0) {
      EXPECT_EQ(r.message, c.message);
    } else {
      EXPECT_NE(r.message.find(c.message), std::string::npos) << r.message;
    }
    if (c.check) c.check(d);
    if (c.restore) set(g.h, c.restore);
  }
  {
    // Wrong nvar, wrong nnzu.
    double x[3] = {1, 1, 1}, ri[100], st[100], u[5];
    Zem_Fail f{};
    f.print = 0;
    e04stc(g.h, hs71_objfun, hs71_objgrd, hs71_confun, hs71_congrd, nullptr, nullptr, 3, x, 0, nullptr, ri, st,
           nullptr, &f);
    EXPECT_EQ(f.code, NE_REF_MATCH);
    double x4[4] = {1, 5, 5, 1};
    e04stc(g.h, hs71_objfun, hs71_objgrd, hs71_confun, hs71_congrd, nullptr, nullptr, 4, x4, 5, u, ri, st, nullptr,
           &f);
    EXPECT_EQ(std::string(f.message), "NE_INT:\n  On entry, nnzu = 5.\n  Constraint: nnzu = 0 or nnzu = 6.");
    // The nonlinear objective needs its functions.
    e04stc(g.h, nullptr, hs71_objgrd, hs71_confun, hs71_congrd, nullptr, nullptr, 4, x4, 0, nullptr, ri, st, nullptr,
           &f);
    EXPECT_EQ(f.code, NE_SETUP_ERROR);
  }
  // After all of that, a clean solve.
  hs71_data d;
  const run_out r = solve_hs71(g.h, d, true);
  ASSERT_EQ(r.code, NE_NOERROR) << r.message;
  EXPECT_NEAR(r.rinfo[0], 17.0140172891519, 1e-6 * 17.014);
}

TEST(E04st, InfeasibleUnboundedUnsupported) {
  // min -(x1 + x2) subject to lo <= x1 - x2 <= hi, x >= 0 (and x <= 1 when
  // bounded), with x1 integer where asked.
  struct lp_case {
    const char *what;
    double lo, hi;
    bool bounded, integer;
    int64_t nvar;  // as passed to e04stc
    int code;
    const char *message;  // the whole message, or null
  };
  const lp_case cases[] = {
      {"x1 - x2 >= 3 within the unit box", 3, 1e20, true, false, 2, NE_INFEASIBLE, nullptr},
      {"|x1 - x2| <= 1 without upper bounds", -1, 1, false, false, 2, NE_UNBOUNDED, nullptr},
      // The model is refused before nvar is looked at.
      {"an integer variable", -1, 1, true, true, 3, NE_SETUP_ERROR,
       "NE_SETUP_ERROR:\n  This solver does not support the model defined in the handle."},
  };
  for (const lp_case &c : cases) {
    SCOPED_TRACE(c.what);
    handle_guard g;
    e04rac(&g.h, 2, nullptr);
    const double obj[2] = {-1, -1};
    e04rec(g.h, 2, obj, nullptr);
    const double bl[2] = {0, 0}, bu[2] = {c.bounded ? 1.0 : 1e20, c.bounded ? 1.0 : 1e20};
    e04rhc(g.h, 2, bl, bu, nullptr);
    const double rl[1] = {c.lo}, ru[1] = {c.hi};
    const int64_t ir[2] = {1, 1}, ic[2] = {1, 2};
    const double b[2] = {1, -1};
    int64_t id = 0;
    e04rjc(g.h, 1, rl, ru, 2, ir, ic, b, &id, nullptr);
    if (c.integer) {
      const int64_t idx[1] = {1};
      e04rcc(g.h, "INT", 1, idx, nullptr);
    }
    set(g.h, "Print Level = 0");
    set(g.h, "Outer Iteration Limit = 3000");
    double x[3] = {0.5, 0.5, 0.5}, ri[100];
    const Zem_Fail f = solve_model(g.h, c.nvar, x, ri);
    EXPECT_EQ(f.code, c.code) << f.message;
    if (c.message) {
      EXPECT_EQ(std::string(f.message), c.message);
    }
  }
}

}  // namespace
