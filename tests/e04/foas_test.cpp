// e04kf against problems whose solutions are known in closed form or by
// construction (KKT conditions written into the problem), the effect of
// its options, its failures, and the handle's phase and result store.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

extern "C" {
#include "zem.h"
}

namespace {

Zem_Fail quiet_fail() {
  Zem_Fail f = ZEM_FAIL_INIT;
  return f;
}

// The problem the C callbacks evaluate, reached through comm->p.
struct problem_def {
  std::function<double(const double *)> f;
  std::function<void(const double *, double *)> g;
  int64_t nf = 0, ng = 0, nmon = 0;
  int stop_f_at = -1;          // objfun asks to stop (comm->flag) at this call
  int inform_f_at = -1;        // objfun sets inform = -3 at this call
  int nan_f_at = -1, nan_g_at = -1;
  void *handle = nullptr;      // for calls back into the suite
  int reenter = 0;             // 1: e04kfc from objfun, 2: e04zmc from objfun
  int reentry_code = -1;
};

void objfun(int64_t, const double x[], double *fx, int64_t *inform, Zem_Comm *comm) {
  auto *p = static_cast<problem_def *>(comm->p);
  ++p->nf;
  *fx = p->f(x);
  if (p->nf == p->stop_f_at) comm->flag = 7;
  if (p->nf == p->inform_f_at) *inform = -3;
  if (p->nf == p->nan_f_at) *fx = std::nan("");
  if (p->reenter && p->nf == 3) {
    Zem_Fail f = quiet_fail();
    if (p->reenter == 1) {
      double rinfo[100], stats[100], xx[2] = {0, 0};
      e04kfc(p->handle, objfun, nullptr, nullptr, 2, xx, rinfo, stats, comm, &f);
    } else {
      e04zmc(p->handle, "FOAS Memory = 3", &f);
    }
    p->reentry_code = f.code;
  }
}
void objgrd(int64_t n, const double x[], int64_t nnz, double fdx[], int64_t *, Zem_Comm *comm) {
  auto *p = static_cast<problem_def *>(comm->p);
  ++p->ng;
  ASSERT_EQ(nnz, n);
  p->g(x, fdx);
  if (p->ng == p->nan_g_at) fdx[n / 2] = INFINITY;
}
void monit(int64_t, const double[], int64_t *inform, const double rinfo[], const double stats[], Zem_Comm *comm) {
  auto *p = static_cast<problem_def *>(comm->p);
  ++p->nmon;
  EXPECT_TRUE(std::isfinite(rinfo[0]));
  EXPECT_GE(stats[0], 1.0);
  if (p->nmon == 3 && p->stop_f_at == -2) *inform = -5;
}

struct solve_result {
  int code = 0;
  std::string message;
  std::vector<double> x;
  double rinfo[100] = {}, stats[100] = {};
};

// A handle with n variables, bounds bl/bu (empty: none), a nonlinear
// objective with a dense gradient, the options given, solved from x0.
solve_result solve(problem_def &p, int64_t n, const std::vector<double> &x0, const std::vector<double> &bl,
                   const std::vector<double> &bu, const std::vector<std::string> &opts, bool with_monit = false) {
  void *h = nullptr;
  Zem_Fail f = quiet_fail();
  e04rac(&h, n, &f);
  std::vector<int64_t> idx(n);
  for (int64_t i = 0; i < n; ++i) idx[i] = i + 1;
  e04rgc(h, n, idx.data(), &f);
  if (!bl.empty()) e04rhc(h, n, bl.data(), bu.data(), &f);
  e04zmc(h, "Print Level = 0", &f);
  for (const std::string &o : opts) {
    e04zmc(h, o.c_str(), &f);
    EXPECT_EQ(f.code, NE_NOERROR) << o;
  }
  solve_result r;
  r.x = x0;
  Zem_Comm comm{};
  comm.p = &p;
  p.handle = h;
  f = quiet_fail();
  e04kfc(h, objfun, objgrd, with_monit ? monit : nullptr, n, r.x.data(), r.rinfo, r.stats, &comm, &f);
  r.code = f.code;
  r.message = f.message;
  // The handle is editable again and holds the results.
  Zem_Fail g = quiet_fail();
  e04zmc(h, "FOAS Memory = 5", &g);
  EXPECT_EQ(g.code, NE_NOERROR);
  std::vector<double> stored(n);
  e04rxc(h, "PRIMAL", 0, n, stored.data(), &g);
  EXPECT_EQ(g.code, NE_NOERROR);
  EXPECT_EQ(stored, r.x);
  e04rzc(&h, &g);
  return r;
}

// Extended Rosenbrock: sum over pairs of 100 (x2 - x1^2)^2 + (1 - x1)^2;
// minimum 0 at x = 1.
double rosen_f(const double *x, int64_t n) {
  double s = 0;
  for (int64_t i = 0; i + 1 < n; i += 2) {
    const double a = x[i + 1] - x[i] * x[i], b = 1 - x[i];
    s += 100 * a * a + b * b;
  }
  return s;
}
void rosen_g(const double *x, double *g, int64_t n) {
  for (int64_t i = 0; i + 1 < n; i += 2) {
    const double a = x[i + 1] - x[i] * x[i];
    g[i] = -400 * a * x[i] - 2 * (1 - x[i]);
    g[i + 1] = 200 * a;
  }
}
problem_def make_rosen(int64_t n) {
  problem_def p;
  p.f = [n](const double *x) { return rosen_f(x, n); };
  p.g = [n](const double *x, double *g) { rosen_g(x, g, n); };
  return p;
}
std::vector<double> rosen_start(int64_t n) {
  std::vector<double> x(n);
  for (int64_t i = 0; i < n; ++i) x[i] = i % 2 ? 1.0 : -1.2;
  return x;
}

// Generalized tridiagonal: sum (x_i + x_{i+1} - 2)^2 + b^2 (1 + b^2) with
// b = x_i - x_{i+1}; every term vanishes only at x = 1 (a strict minimum:
// the quadratic part alone is positive definite).
problem_def make_tridiag(int64_t n) {
  problem_def p;
  p.f = [n](const double *x) {
    double s = 0;
    for (int64_t i = 0; i + 1 < n; ++i) {
      const double a = x[i] + x[i + 1] - 2, b = x[i] - x[i + 1];
      s += a * a + b * b * (1 + b * b);
    }
    return s;
  };
  p.g = [n](const double *x, double *g) {
    for (int64_t i = 0; i < n; ++i) g[i] = 0;
    for (int64_t i = 0; i + 1 < n; ++i) {
      const double a = x[i] + x[i + 1] - 2, b = x[i] - x[i + 1];
      g[i] += 2 * a + 2 * b + 4 * b * b * b;
      g[i + 1] += 2 * a - 2 * b - 4 * b * b * b;
    }
  };
  return p;
}

// Bound-active quadratic 0.5 x'Hx - b'x, H = tridiag(-1, 4, -1), with a
// solution x* built to meet the KKT conditions: every third variable at its
// lower bound 0 with multiplier 1, every third at its upper bound 1 with
// multiplier -1, the rest free at 0.5 (b = H x* - z).
struct bound_qp {
  int64_t n;
  std::vector<double> xs, b, bl, bu;
  explicit bound_qp(int64_t n_) : n(n_), xs(n_), b(n_), bl(n_, 0.0), bu(n_, 1.0) {
    std::vector<double> z(n);
    for (int64_t i = 0; i < n; ++i) {
      const int k = static_cast<int>(i % 3);
      xs[i] = k == 0 ? 0.0 : k == 1 ? 1.0 : 0.5;
      z[i] = k == 0 ? 1.0 : k == 1 ? -1.0 : 0.0;
    }
    for (int64_t i = 0; i < n; ++i) {
      double hx = 4 * xs[i];
      if (i > 0) hx -= xs[i - 1];
      if (i + 1 < n) hx -= xs[i + 1];
      b[i] = hx - z[i];
    }
  }
  problem_def def() const {
    problem_def p;
    const bound_qp *q = this;
    p.f = [q](const double *x) {
      double s = 0;
      for (int64_t i = 0; i < q->n; ++i) {
        double hx = 4 * x[i];
        if (i > 0) hx -= x[i - 1];
        if (i + 1 < q->n) hx -= x[i + 1];
        s += 0.5 * x[i] * hx - q->b[i] * x[i];
      }
      return s;
    };
    p.g = [q](const double *x, double *g) {
      for (int64_t i = 0; i < q->n; ++i) {
        double hx = 4 * x[i];
        if (i > 0) hx -= x[i - 1];
        if (i + 1 < q->n) hx -= x[i + 1];
        g[i] = hx - q->b[i];
      }
    };
    return p;
  }
};

double max_err(const std::vector<double> &x, double v) {
  double e = 0;
  for (double xi : x) e = std::max(e, std::fabs(xi - v));
  return e;
}

struct size_case {
  int64_t n;
  const char *subsolver;
};

class ByProblemSize : public ::testing::TestWithParam<size_case> {};

TEST_P(ByProblemSize, ExtendedRosenbrockReachesOnes) {
  const auto [n, sub] = GetParam();
  problem_def p = make_rosen(n);
  const std::vector<double> bl(n, -5.0), bu(n, 5.0);
  auto r = solve(p, n, rosen_start(n), bl, bu, {std::string("FOAS Subsolver = ") + sub, "FOAS Stop Tolerance = 1e-9"});
  ASSERT_EQ(r.code, NE_NOERROR);
  EXPECT_LT(max_err(r.x, 1.0), 1e-6);
  EXPECT_LT(r.rinfo[0], 1e-12);
  EXPECT_LE(r.rinfo[1], 1e-9);
}

TEST_P(ByProblemSize, GeneralizedTridiagonalReachesOnes) {
  const auto [n, sub] = GetParam();
  problem_def p = make_tridiag(n);
  std::vector<double> x0(n);
  for (int64_t i = 0; i < n; ++i) x0[i] = i % 2 ? 2.0 : -1.0;
  auto r = solve(p, n, x0, {}, {}, {std::string("FOAS Subsolver = ") + sub, "FOAS Stop Tolerance = 1e-9"});
  ASSERT_EQ(r.code, NE_NOERROR);
  EXPECT_LT(max_err(r.x, 1.0), 1e-8);
  EXPECT_LT(r.rinfo[0], 1e-15);
}

TEST_P(ByProblemSize, BoundActiveQuadraticMeetsKkt) {
  const auto [n, sub] = GetParam();
  bound_qp q(n);
  problem_def p = q.def();
  std::vector<double> x0(n, 0.3);
  auto r = solve(p, n, x0, q.bl, q.bu, {std::string("FOAS Subsolver = ") + sub, "FOAS Stop Tolerance = 1e-10"});
  ASSERT_EQ(r.code, NE_NOERROR);
  double e = 0;
  for (int64_t i = 0; i < n; ++i) e = std::max(e, std::fabs(r.x[i] - q.xs[i]));
  EXPECT_LT(e, 1e-9);
  EXPECT_EQ(r.stats[7], static_cast<double>(n - n / 3));  // variables at a bound
}

INSTANTIATE_TEST_SUITE_P(Sizes, ByProblemSize,
                         ::testing::Values(size_case{10, "BOTH"}, size_case{1000, "BOTH"},
                                           size_case{100000, "BOTH"}, size_case{1000, "NPG"},
                                           size_case{1000, "CG"}));

TEST(E04kf, BoundActiveRosenbrockMeetsKkt) {
  // Rosenbrock on pairs with x2 <= 0.5: the minimizer of each pair lies on
  // the bound x2 = 0.5 with x1 the positive root of the stationarity
  // equation 200 (x1^2 - 0.5) x1 ... solved here by bisection, independent
  // of the solver: d/dx1 [100 (0.5 - x1^2)^2 + (1 - x1)^2] = 0.
  const int64_t n = 100;
  problem_def p = make_rosen(n);
  std::vector<double> bl(n, -10.0), bu(n, 10.0);
  for (int64_t i = 1; i < n; i += 2) bu[i] = 0.5;
  auto dphi = [](double t) { return -400 * t * (0.5 - t * t) - 2 * (1 - t); };
  double a = 0.5, b = 1.0;
  for (int k = 0; k < 200; ++k) {
    const double m = 0.5 * (a + b);
    (dphi(m) > 0 ? b : a) = m;
  }
  auto r = solve(p, n, rosen_start(n), bl, bu, {"FOAS Stop Tolerance = 1e-10"});
  ASSERT_EQ(r.code, NE_NOERROR);
  for (int64_t i = 0; i < n; i += 2) {
    EXPECT_NEAR(r.x[i], a, 1e-8);
    EXPECT_EQ(r.x[i + 1], 0.5);
  }
}

TEST(E04kf, QuadraticFromTheModelNeedsNoUserFunctions) {
  // The same bound-active quadratic given by e04rf: the solver evaluates it.
  const int64_t n = 30;
  bound_qp q(n);
  void *h = nullptr;
  Zem_Fail f = quiet_fail();
  e04rac(&h, n, &f);
  std::vector<int64_t> idxc(n), ir, ic;
  std::vector<double> hv;
  for (int64_t i = 0; i < n; ++i) {
    idxc[i] = i + 1;
    ir.push_back(i + 1), ic.push_back(i + 1), hv.push_back(4.0);
    if (i + 1 < n) ir.push_back(i + 1), ic.push_back(i + 2), hv.push_back(-1.0);
  }
  std::vector<double> c(n);
  for (int64_t i = 0; i < n; ++i) c[i] = -q.b[i];
  e04rfc(h, n, idxc.data(), c.data(), static_cast<int64_t>(hv.size()), ir.data(), ic.data(), hv.data(), &f);
  e04rhc(h, n, q.bl.data(), q.bu.data(), &f);
  e04zmc(h, "Print Level = 0", &f);
  e04zmc(h, "FOAS Stop Tolerance = 1e-12", &f);
  std::vector<double> x(n, 0.5), z(n);
  double rinfo[100], stats[100], obj = 0;
  e04kfc(h, nullptr, nullptr, nullptr, n, x.data(), rinfo, stats, nullptr, &f);
  ASSERT_EQ(f.code, NE_NOERROR) << f.message;
  for (int64_t i = 0; i < n; ++i) EXPECT_NEAR(x[i], q.xs[i], 1e-10);
  e04rxc(h, "DUAL VARIABLES", 0, n, z.data(), &f);
  ASSERT_EQ(f.code, NE_NOERROR);
  for (int64_t i = 0; i < n; ++i) EXPECT_NEAR(z[i], i % 3 == 0 ? 1.0 : i % 3 == 1 ? -1.0 : 0.0, 1e-9);
  e04rxc(h, "OBJECTIVE VALUE", 0, 1, &obj, &f);
  EXPECT_EQ(obj, rinfo[0]);
  // Maximizing -f gives the same point.
  e04zmc(h, "Task = Maximize", &f);
  std::vector<double> mc(c);
  for (double &v : mc) v = -v;
  std::vector<double> mh(hv);
  for (double &v : mh) v = -v;
  e04rfc(h, n, idxc.data(), mc.data(), static_cast<int64_t>(mh.size()), ir.data(), ic.data(), mh.data(), &f);
  std::fill(x.begin(), x.end(), 0.5);
  e04kfc(h, nullptr, nullptr, nullptr, n, x.data(), rinfo, stats, nullptr, &f);
  ASSERT_EQ(f.code, NE_NOERROR);
  for (int64_t i = 0; i < n; ++i) EXPECT_NEAR(x[i], q.xs[i], 1e-10);
  e04rzc(&h, &f);
}

TEST(E04kf, OptionsChangeTheIteration) {
  const int64_t n = 100;
  // One option (or two) on the extended Rosenbrock problem: the code and
  // what the statistics or the answer must show.
  struct option_case {
    std::vector<std::string> opts;
    int code;
    void (*check)(const solve_result &);
  };
  const option_case cases[] = {
      {{"FOAS Iteration Limit = 5"}, NW_TOO_MANY_ITER, [](const solve_result &r) { EXPECT_EQ(r.stats[0], 5.0); }},
      // no CG iterations
      {{"FOAS Subsolver = NPG"}, NE_NOERROR, [](const solve_result &r) { EXPECT_EQ(r.stats[4], 0.0); }},
      // no projected-gradient iterations
      {{"FOAS Subsolver = CG"}, NE_NOERROR, [](const solve_result &r) { EXPECT_EQ(r.stats[3], 0.0); }},
      // Plain Hager-Zhang conjugate gradients (no pairs), restarted each 2n.
      {{"FOAS Memory = 0", "FOAS Restart Factor = 2"}, NE_NOERROR,
       [](const solve_result &r) { EXPECT_LT(max_err(r.x, 1.0), 1e-4); }},
  };
  for (const option_case &c : cases) {
    SCOPED_TRACE(c.opts[0]);
    problem_def p = make_rosen(n);
    auto r = solve(p, n, rosen_start(n), {}, {}, c.opts);
    EXPECT_EQ(r.code, c.code) << r.message;
    c.check(r);
  }
  {
    // With memory the CG phase is a limited-memory quasi-Newton method on
    // the face (unit steps; about 45 gradient evaluations here, as such a
    // method needs from this start); without, plain conjugate gradients
    // need about twice as many.  A preconditioner that stops acting, or a
    // CG parameter that spoils its unit step, shows here.
    problem_def p1 = make_rosen(n), p2 = make_rosen(n);
    auto qn = solve(p1, n, rosen_start(n), {}, {}, {});
    auto cg = solve(p2, n, rosen_start(n), {}, {}, {"FOAS Memory = 0"});
    EXPECT_EQ(qn.code, NE_NOERROR);
    EXPECT_EQ(cg.code, NE_NOERROR);
    EXPECT_LE(qn.stats[2], 50.0);
    EXPECT_GT(cg.stats[2], 1.5 * qn.stats[2]);
  }
  {
    // Finite differences: objgrd is never called.
    problem_def p = make_rosen(10);
    auto r = solve(p, 10, rosen_start(10), {}, {}, {"FOAS Estimate Derivatives = Yes"});
    EXPECT_EQ(r.code, NE_NOERROR);
    EXPECT_EQ(p.ng, 0);
    EXPECT_LT(max_err(r.x, 1.0), 1e-4);
  }
  {
    // The two-norm test is stricter than the infinity norm at one tolerance.
    problem_def p1 = make_tridiag(n), p2 = make_tridiag(n);
    std::vector<double> x0(n, 3.0);
    auto a = solve(p1, n, x0, {}, {}, {"FOAS Tolerance Norm = Inf", "FOAS Stop Tolerance = 1e-5"});
    auto b = solve(p2, n, x0, {}, {}, {"FOAS Tolerance Norm = Two", "FOAS Stop Tolerance = 1e-5"});
    EXPECT_EQ(a.code, NE_NOERROR);
    EXPECT_EQ(b.code, NE_NOERROR);
    EXPECT_LE(b.rinfo[1], 1e-5);
    EXPECT_GE(b.stats[0], a.stats[0]);
  }
  {
    // The monitor is called every 'FOAS Monitor Frequency' iterations.
    problem_def p = make_rosen(n);
    auto r = solve(p, n, rosen_start(n), {}, {}, {"FOAS Monitor Frequency = 2"}, true);
    EXPECT_EQ(r.code, NE_NOERROR);
    EXPECT_EQ(p.nmon, static_cast<int64_t>(r.stats[0]) / 2);
  }
}

TEST(E04kf, FailuresLeaveTheHandleUsable) {
  // Each case from a fresh handle (solve() checks that the handle is
  // editable afterwards and holds x): the problem (the extended Rosenbrock
  // function unless the case changes it), the options, the code, a part of
  // the message, and what else must hold.
  struct failure_case {
    const char *what;
    int64_t n;
    void (*prepare)(problem_def &);
    std::vector<double> x0;  // empty: Rosenbrock's start
    std::vector<std::string> opts;
    bool with_monit;
    int code;
    const char *message;
    void (*check)(const problem_def &, const solve_result &);
  };
  const failure_case cases[] = {
      {"comm->flag at the 4th objfun call", 10, [](problem_def &p) { p.stop_f_at = 4; }, {}, {}, false, NE_USER_STOP,
       "user flag value = 7.", [](const problem_def &p, const solve_result &) { EXPECT_EQ(p.nf, 4); }},
      {"inform = -3 at the 4th objfun call", 10, [](problem_def &p) { p.inform_f_at = 4; }, {}, {}, false, NE_USER_STOP,
       "user flag value = -3.", [](const problem_def &p, const solve_result &) { EXPECT_EQ(p.nf, 4); }},
      // Both in one call: the change of comm->flag is the one reported.
      {"comm->flag and inform in one call", 10,
       [](problem_def &p) {
         p.stop_f_at = 4;
         p.inform_f_at = 4;
       },
       {}, {}, false, NE_USER_STOP, "user flag value = 7.", nullptr},
      {"inform = -5 from the monitor at its third call", 10, [](problem_def &p) { p.stop_f_at = -2; }, {},
       {"FOAS Monitor Frequency = 1"}, true, NE_USER_STOP, "user flag value = -5.",
       [](const problem_def &p, const solve_result &) { EXPECT_EQ(p.nmon, 3); }},
      {"NaN objective at the 5th call", 10, [](problem_def &p) { p.nan_f_at = 5; }, {}, {}, false, NE_USER_NAN, "",
       [](const problem_def &, const solve_result &r) { EXPECT_TRUE(std::isfinite(r.rinfo[0])); }},
      {"infinite gradient at the 3rd call", 10, [](problem_def &p) { p.nan_g_at = 3; }, {}, {}, false, NE_USER_NAN, "",
       nullptr},
      // f = -sum x_i^3 / 3 + sum x_i: unbounded below as x grows.
      {"unbounded", 10,
       [](problem_def &p) {
         p.f = [](const double *x) {
           double s = 0;
           for (int i = 0; i < 10; ++i) s += -x[i] * x[i] * x[i] / 3 + x[i];
           return s;
         };
         p.g = [](const double *x, double *g) {
           for (int i = 0; i < 10; ++i) g[i] = -x[i] * x[i] + 1;
         };
       },
       std::vector<double>(10, 2.0), {}, false, NE_UNBOUNDED, "", nullptr},
      {"e04kfc from inside the solve", 2, [](problem_def &p) { p.reenter = 1; }, {}, {}, false, NE_NOERROR, "",
       [](const problem_def &p, const solve_result &) { EXPECT_EQ(p.reentry_code, NE_PHASE); }},
      {"e04zmc from inside the solve", 2, [](problem_def &p) { p.reenter = 2; }, {}, {}, false, NE_NOERROR, "",
       [](const problem_def &p, const solve_result &) { EXPECT_EQ(p.reentry_code, NE_PHASE); }},
  };
  for (const failure_case &c : cases) {
    SCOPED_TRACE(c.what);
    problem_def p = make_rosen(c.n);
    c.prepare(p);
    auto r = solve(p, c.n, c.x0.empty() ? rosen_start(c.n) : c.x0, {}, {}, c.opts, c.with_monit);
    EXPECT_EQ(r.code, c.code) << r.message;
    EXPECT_NE(r.message.find(c.message), std::string::npos) << r.message;
    if (c.check) c.check(p, r);
  }
}

TEST(E04kf, RefusesModelsItCannotSolve) {
  void *h = nullptr;
  Zem_Fail f = quiet_fail();
  double x[3] = {0, 0, 0}, rinfo[100], stats[100];
  e04rac(&h, 3, &f);
  const int64_t idx[3] = {1, 2, 3};
  e04kfc(h, objfun, objgrd, nullptr, 3, x, rinfo, stats, nullptr, &f);
  EXPECT_EQ(f.code, NE_SETUP_ERROR);  // no objective
  EXPECT_STREQ(f.message, "NE_SETUP_ERROR:\n  This solver does not support the model defined in the handle.");
  e04rgc(h, 3, idx, &f);
  f = quiet_fail();
  e04kfc(h, objfun, objgrd, nullptr, 2, x, rinfo, stats, nullptr, &f);
  EXPECT_EQ(f.code, NE_REF_MATCH);
  f = quiet_fail();
  e04kfc(h, nullptr, objgrd, nullptr, 3, x, rinfo, stats, nullptr, &f);
  EXPECT_EQ(f.code, NE_BAD_PARAM);
  const double bl[1] = {0}, bu[1] = {1}, b[2] = {1, 1};
  const int64_t ir[2] = {1, 1}, ic[2] = {1, 2};
  int64_t idlc = 0;
  e04rjc(h, 1, bl, bu, 2, ir, ic, b, &idlc, &f);
  f = quiet_fail();
  e04kfc(h, objfun, objgrd, nullptr, 3, x, rinfo, stats, nullptr, &f);
  EXPECT_EQ(f.code, NE_SETUP_ERROR);
  // Deleting the constraint makes the model acceptable again.
  e04tbc(h, "LC", 1, &idlc, &f);
  problem_def p = make_rosen(2);
  p.f = [](const double *x) { return (x[0] - 1) * (x[0] - 1) + x[1] * x[1] + x[2] * x[2]; };
  p.g = [](const double *x, double *g) { g[0] = 2 * (x[0] - 1), g[1] = 2 * x[1], g[2] = 2 * x[2]; };
  Zem_Comm comm{};
  comm.p = &p;
  e04zmc(h, "Print Level = 0", &f);
  f = quiet_fail();
  e04kfc(h, objfun, objgrd, nullptr, 3, x, rinfo, stats, &comm, &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  EXPECT_NEAR(x[0], 1.0, 1e-9);
  e04rzc(&h, &f);
}

}  // namespace
