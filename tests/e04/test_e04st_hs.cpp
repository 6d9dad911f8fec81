// e04st on the Hock-Schittkowski problems 1 to 50 (tests/e04/hs): each
// problem is put into a handle as a client would (linear rows with e04rj,
// a linear or quadratic objective with e04re/e04rf, the rest as nonlinear
// functions with dense sparsity and the Lagrangian's Hessian by e04rl) and
// solved; the objective must match the published optimum within 1e-6
// relative (or the rounding of the published digits, where that is
// larger): 46 from the book's start with the defaults, the other four as
// said below.  A few problems are solved again without second derivatives.
#include <gtest/gtest.h>
#include <zem.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <cmath>
#include <string>
#include <vector>

#include "hs_problems.h"

namespace {

using zem_test::hs::Objective;
using zem_test::hs::Problem;

struct hs_user {
  const Problem *p;
  std::vector<int> nl;  // the problem's index of each nonlinear constraint
  std::vector<double> c, jac, lam, hfull;
};

hs_user *user(Zem_Comm *comm) { return static_cast<hs_user *>(comm->p); }

void objfun(int64_t, const double x[], double *fx, int64_t *, Zem_Comm *comm) { *fx = user(comm)->p->f(x); }
void objgrd(int64_t, const double x[], int64_t, double g[], int64_t *, Zem_Comm *comm) { user(comm)->p->grad(x, g); }
void confun(int64_t, const double x[], int64_t, double gx[], int64_t *, Zem_Comm *comm) {
  hs_user *u = user(comm);
  u->p->cons(x, u->c.data());
  for (size_t i = 0; i < u->nl.size(); ++i) gx[i] = u->c[u->nl[i]];
}
void congrd(int64_t, const double x[], int64_t, double gdx[], int64_t *, Zem_Comm *comm) {
  hs_user *u = user(comm);
  const int n = u->p->n;
  u->p->jac(x, u->jac.data());
  for (size_t i = 0; i < u->nl.size(); ++i)
    for (int j = 0; j < n; ++j) gdx[i * n + j] = u->jac[u->nl[i] * n + j];
}
void hess(int64_t, const double x[], int64_t, int64_t idf, double sigma, const double lambda[], int64_t, double hx[],
          int64_t *inform, Zem_Comm *comm) {
  hs_user *u = user(comm);
  if (idf != -1) {
    *inform = -77;  // only the Lagrangian's structure was declared
    return;
  }
  const int n = u->p->n;
  std::fill(u->lam.begin(), u->lam.end(), 0.0);
  for (size_t i = 0; i < u->nl.size(); ++i) u->lam[u->nl[i]] = lambda[i];
  u->p->hess(x, sigma, u->p->m ? u->lam.data() : nullptr, u->hfull.data());
  int k = 0;
  for (int i = 0; i < n; ++i)
    for (int j = i; j < n; ++j) hx[k++] = u->hfull[i * n + j];
}

struct outcome {
  int code;
  std::string message;
  double f;
  int64_t iterations;
  std::vector<double> x;
  double kkt;  // max |grad f - u_x - J'u_c| / max(1, |grad f|, |u|), u the solver's multipliers
};

// Solves p from x0 (the book's start when empty) with the options given
// beside the test's own.
outcome solve(const Problem &p, bool second_derivatives, std::vector<double> x0 = {},
              std::initializer_list<const char *> more = {}) {
  const int n = p.n;
  void *h = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  fail.print = 0;
  e04rac(&h, n, &fail);
  e04rhc(h, n, p.bl.data(), p.bu.data(), &fail);
  hs_user u{&p, {}, std::vector<double>(p.m), std::vector<double>(p.m * n), std::vector<double>(p.m),
            std::vector<double>(n * n)};
  // Linear rows as linear constraints, the others as nonlinear ones; rows
  // lists the problem's row of each multiplier after the bounds'.
  std::vector<int> rows;
  for (int i = 0; i < p.m; ++i) {
    if (!p.linear[i]) {
      u.nl.push_back(i);
      continue;
    }
    rows.push_back(i);
    std::vector<int64_t> ir, ic;
    std::vector<double> b;
    for (int j = 0; j < n; ++j)
      if (p.a[i * n + j] != 0.0) {
        ir.push_back(1);
        ic.push_back(j + 1);
        b.push_back(p.a[i * n + j]);
      }
    int64_t id = 0;
    e04rjc(h, 1, &p.cl[i], &p.cu[i], static_cast<int64_t>(b.size()), ir.data(), ic.data(), b.data(), &id, &fail);
    EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  }
  // The objective: its constant f(0) is not part of a linear or quadratic
  // model and is added back below.
  std::vector<double> zero(n, 0.0), g0(n), h0(n * n);
  double f0 = 0.0;
  std::vector<int64_t> all(n);
  for (int j = 0; j < n; ++j) all[j] = j + 1;
  if (p.objective == Objective::linear) {
    f0 = p.f(zero.data());
    p.grad(zero.data(), g0.data());
    e04rec(h, n, g0.data(), &fail);
  } else if (p.objective == Objective::quadratic) {
    f0 = p.f(zero.data());
    p.grad(zero.data(), g0.data());
    std::vector<double> lam0(p.m, 0.0);
    p.hess(zero.data(), 1.0, p.m ? lam0.data() : nullptr, h0.data());
    std::vector<int64_t> hr, hc;
    std::vector<double> hv;
    for (int i = 0; i < n; ++i)
      for (int j = i; j < n; ++j)
        if (h0[i * n + j] != 0.0) {
          hr.push_back(i + 1);
          hc.push_back(j + 1);
          hv.push_back(h0[i * n + j]);
        }
    e04rfc(h, n, all.data(), g0.data(), static_cast<int64_t>(hv.size()), hr.data(), hc.data(), hv.data(), &fail);
  } else {
    e04rgc(h, n, all.data(), &fail);
  }
  EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  const int64_t ncn = static_cast<int64_t>(u.nl.size());
  if (ncn > 0) {
    std::vector<double> bl, bu;
    std::vector<int64_t> ir, ic;
    for (int64_t i = 0; i < ncn; ++i) {
      bl.push_back(p.cl[u.nl[i]]);
      bu.push_back(p.cu[u.nl[i]]);
      for (int j = 0; j < n; ++j) {
        ir.push_back(i + 1);
        ic.push_back(j + 1);
      }
    }
    e04rkc(h, ncn, bl.data(), bu.data(), ncn * n, ir.data(), ic.data(), &fail);
    EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  }
  const bool nonlinear = p.objective == Objective::nonlinear || ncn > 0;
  if (nonlinear && second_derivatives) {
    std::vector<int64_t> hr, hc;
    for (int i = 0; i < n; ++i)
      for (int j = i; j < n; ++j) {
        hr.push_back(i + 1);
        hc.push_back(j + 1);
      }
    e04rlc(h, -1, static_cast<int64_t>(hr.size()), hr.data(), hc.data(), &fail);
    EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  }
  for (const char *o : {"Print Level = 0", "Stop Tolerance 1 = 1e-10", "Outer Iteration Limit = 3000"})
    e04zmc(h, o, &fail);
  if (!second_derivatives) e04zmc(h, "Hessian Mode = Approximate", &fail);
  for (const char *o : more) {
    e04zmc(h, o, &fail);
    EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  }
  rows.insert(rows.end(), u.nl.begin(), u.nl.end());
  std::vector<double> x = x0.empty() ? p.x0 : x0, mult(n + rows.size());
  double rinfo[100], stats[100];
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = &u;
  fail.code = 0;
  e04stc(h, objfun, objgrd, confun, congrd, second_derivatives ? hess : nullptr, nullptr, n, x.data(),
         static_cast<int64_t>(mult.size()), mult.data(), rinfo, stats, &comm, &fail);
  outcome r{fail.code, fail.message, rinfo[0] + f0, static_cast<int64_t>(stats[0]), x, 0.0};
  std::vector<double> g(n), J(p.m * n);
  p.grad(x.data(), g.data());
  if (p.m) p.jac(x.data(), J.data());
  double scale = 1.0;
  for (double v : g) scale = std::max(scale, std::fabs(v));
  for (double v : mult) scale = std::max(scale, std::fabs(v));
  for (int j = 0; j < n; ++j) {
    double res = g[j] - mult[j];
    for (size_t k = 0; k < rows.size(); ++k) res -= mult[n + k] * J[rows[k] * n + j];
    r.kkt = std::max(r.kkt, std::fabs(res) / scale);
  }
  e04rzc(&h, nullptr);
  return r;
}

double tolerance(const Problem &p) { return std::max({1e-6 * std::fabs(p.fstar), p.ftol, 1e-8}); }

// Three problems have a second strict local minimum, and from the book's
// start the method ends there (as it does with every setting of scaling,
// barrier update and bound push we tried; only the trajectory decides).
// Each is a KKT point with multipliers of the right signs and a positive
// definite reduced Hessian (the record's xlocal; tests/e04/hs/hs_check.cpp
// checks them without any solver):
//  - HS 2 at (-1.2210262, 1.5), f = 4.9412293: x2 >= 1.5 active with
//    multiplier 1.82, d2f/dx1^2 = 1191; the start (-2, 1) lies on that side.
//  - HS 20 at (-0.5, sqrt(3)/2), f = 40.198727: x1 >= -0.5 and
//    x1^2 + x2^2 >= 1 active with multipliers 191.3 and 71.1 (a vertex);
//    the start (-2, 1) is pushed onto x1 = -0.5.
//  - HS 44 at (3, 0, 4, 0), f = -13: x2, x4 >= 0, 4x1 + x2 <= 12 and
//    2x3 + x4 <= 8 active with multipliers 3.75, 5, 0.75, 2 (a vertex of
//    the polytope); the start 0 is a corner, moved inside by the method.
// With the solver's own multipliers there the residual of grad f - A'u,
// relative to the largest gradient or multiplier, is 4.0e-6 (HS 2, where
// the objective's scaling by its large starting gradient loosens the
// unscaled test), 1.1e-8 (HS 20) and 2.0e-9 (HS 44); checked below 1e-5.  A start in the basin of the optimum, as a user would
// give one, reaches the published optimum: an interior start on the
// optimum's side for 2 and 20, the centre-most point (1, 1, 1, 1) for 44.
struct elsewhere {
  int number;
  std::vector<double> start;
};
const elsewhere other_minimum[] = {{2, {1, 2}}, {20, {0, 1.5}}, {44, {1, 1, 1, 1}}};

// HS 13 is degenerate: at its optimum (1, 0) the constraint (1-x1)^3 >= x2
// has a cusp and no multipliers exist.  A point with x1 = 1 + t meets the
// constraint to t^3 only, so the feasibility an interior-point method
// reaches, r, leaves f = 1 - 2 r^(1/3).  With the defaults the bounds are
// relaxed by 'Bound Relax Factor' = 1e-8 (and the row with them): r = 2e-8,
// x1 = 1.0027, f = 0.99458.  With 'Bound Relax Factor' = 0 no relaxation
// is left but the solver's own, r = 1.2e-12 with the exact Hessian (f =
// 0.99979); with the limited-memory Hessian it approaches from the
// feasible side, f = 1 + 9.4e-7, the published optimum within 1e-6.
constexpr std::initializer_list<const char *> hs13_options = {"Bound Relax Factor = 0",
                                                              "Hessian Mode = Approximate"};

bool listed(int number) {
  if (number == 13) return true;
  for (const elsewhere &e : other_minimum)
    if (e.number == number) return true;
  return false;
}

TEST(E04stHs, Problems1To50) {
  ASSERT_EQ(zem_test::hs::problems().size(), 50u);
  int matched = 0;
  for (const Problem &p : zem_test::hs::problems()) {
    if (listed(p.number)) continue;
    const outcome r = solve(p, true);
    // Problem 30 ends at an acceptable point (its optimum is degenerate):
    // the warning, with the optimum reached.
    EXPECT_TRUE(r.code == NE_NOERROR || (p.number == 30 && r.code == NW_NOT_CONVERGED))
        << "HS " << p.number << ": " << r.message;
    EXPECT_NEAR(r.f, p.fstar, tolerance(p)) << "HS " << p.number << " after " << r.iterations << " iterations";
    matched += std::fabs(r.f - p.fstar) <= tolerance(p);
  }
  EXPECT_EQ(matched, 46);
}

TEST(E04stHs, OtherLocalMinimumFromTheBookStart) {
  for (const elsewhere &e : other_minimum) {
    const Problem &p = zem_test::hs::problem(e.number);
    ASSERT_EQ(p.xlocal.size(), 1u);
    const outcome book = solve(p, true);
    EXPECT_EQ(book.code, NE_NOERROR) << "HS " << p.number << ": " << book.message;
    for (int j = 0; j < p.n; ++j) EXPECT_NEAR(book.x[j], p.xlocal[0][j], 1e-6) << "HS " << p.number << " x" << j + 1;
    EXPECT_LT(book.kkt, 1e-5) << "HS " << p.number;
    const outcome r = solve(p, true, e.start);
    EXPECT_EQ(r.code, NE_NOERROR) << "HS " << p.number << ": " << r.message;
    EXPECT_NEAR(r.f, p.fstar, tolerance(p)) << "HS " << p.number << " from the other start";
    EXPECT_LT(r.kkt, 1e-5) << "HS " << p.number;
  }
}

TEST(E04stHs, DegenerateProblem13) {
  const Problem &p = zem_test::hs::problem(13);
  const outcome relaxed = solve(p, true);
  EXPECT_EQ(relaxed.code, NE_NOERROR) << relaxed.message;
  EXPECT_NEAR(relaxed.f, 1 - 2 * std::cbrt(2e-8), 1e-4);  // what the default relaxation allows
  const outcome r = solve(p, false, {}, hs13_options);
  EXPECT_EQ(r.code, NE_NOERROR) << r.message;
  EXPECT_NEAR(r.f, p.fstar, tolerance(p));
  EXPECT_GE((1 - r.x[0]) * (1 - r.x[0]) * (1 - r.x[0]) - r.x[1], -1e-15);  // feasible
}

TEST(E04stHs, LimitedMemory) {
  for (int k : {6, 10, 14, 26, 35, 43, 46, 48}) {
    const Problem &p = zem_test::hs::problem(k);
    const outcome r = solve(p, false);
    EXPECT_EQ(r.code, NE_NOERROR) << "HS " << p.number << ": " << r.message;
    EXPECT_NEAR(r.f, p.fstar, tolerance(p)) << "HS " << p.number << " after " << r.iterations << " iterations";
  }
}

}  // namespace
