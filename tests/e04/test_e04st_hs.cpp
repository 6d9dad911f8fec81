// e04st on the Hock-Schittkowski problems 1 to 50 (tests/e04/hs): each
// problem is put into a handle as a client would (linear rows with e04rj,
// a linear or quadratic objective with e04re/e04rf, the rest as nonlinear
// functions with dense sparsity and the Lagrangian's Hessian by e04rl) and
// solved; the objective must match the published optimum within 1e-6
// relative (or the rounding of the published digits, where that is
// larger).  A few problems are solved again without second derivatives.
#include <gtest/gtest.h>
#include <zem.h>

#include <algorithm>
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
};

outcome solve(const Problem &p, bool second_derivatives) {
  const int n = p.n;
  void *h = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  fail.print = 0;
  e04rac(&h, n, &fail);
  e04rhc(h, n, p.bl.data(), p.bu.data(), &fail);
  hs_user u{&p, {}, std::vector<double>(p.m), std::vector<double>(p.m * n), std::vector<double>(p.m),
            std::vector<double>(n * n)};
  // Linear rows as linear constraints, the others as nonlinear ones.
  for (int i = 0; i < p.m; ++i) {
    if (!p.linear[i]) {
      u.nl.push_back(i);
      continue;
    }
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
  std::vector<double> x = p.x0;
  double rinfo[100], stats[100];
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = &u;
  fail.code = 0;
  e04stc(h, objfun, objgrd, confun, congrd, second_derivatives ? hess : nullptr, nullptr, n, x.data(), 0, nullptr,
         rinfo, stats, &comm, &fail);
  outcome r{fail.code, fail.message, rinfo[0] + f0, static_cast<int64_t>(stats[0])};
  e04rzc(&h, nullptr);
  return r;
}

double tolerance(const Problem &p) { return std::max({1e-6 * std::fabs(p.fstar), p.ftol, 1e-8}); }

// From the book's starting point the method converges, on these four, to a
// point that is not the published optimum: a local minimum (2: f = 4.9412,
// 20: f = 40.199, 44: f = -13) or, on the degenerate problem 13 (no
// constraint qualification at its optimum), a point near it that meets the
// constraints only to the tolerance (f = 0.9946).  They must still end
// without failure, the local minima not below the optimum.
constexpr int elsewhere[] = {2, 13, 20, 44};

TEST(E04stHs, Problems1To50) {
  ASSERT_EQ(zem_test::hs::problems().size(), 50u);
  int matched = 0;
  for (const Problem &p : zem_test::hs::problems()) {
    const outcome r = solve(p, true);
    // Problem 30 ends at an acceptable point (its optimum is degenerate):
    // the warning, with the optimum reached.
    EXPECT_TRUE(r.code == NE_NOERROR || (p.number == 30 && r.code == NW_NOT_CONVERGED))
        << "HS " << p.number << ": " << r.message;
    if (std::find(std::begin(elsewhere), std::end(elsewhere), p.number) != std::end(elsewhere)) {
      if (p.number != 13) {
        EXPECT_GT(r.f, p.fstar - tolerance(p)) << "HS " << p.number;
      }
      continue;
    }
    EXPECT_NEAR(r.f, p.fstar, tolerance(p)) << "HS " << p.number << " after " << r.iterations << " iterations";
    matched += std::fabs(r.f - p.fstar) <= tolerance(p);
  }
  EXPECT_EQ(matched, 46);
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
