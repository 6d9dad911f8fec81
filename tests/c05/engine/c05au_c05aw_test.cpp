// c05au and c05aw through their C entries, as a C++ caller uses them: the
// 154 test problems of Alefeld, Potra and Shi from the midpoint of each
// bracket (zeros from mpmath, bench/c05/aps_roots.inc), eta, the user stop,
// the evaluation limit; null arguments of all four C entries, and the
// reverse-communication entries handing on to each other.
#include <gtest/gtest.h>

#include <zem.h>

#include <cmath>
#include <functional>
#include <string>

#include "aps_problems.h"

namespace {

// A user function of the C interface that calls a C++ callable through
// comm->p and counts the calls.
struct user_f {
  std::function<double(double)> f;
  int64_t calls = 0;
  int64_t stop_at = 0;  // set comm->flag = 7 at this call (0: never)
  Zem_Comm comm{0, nullptr, nullptr, nullptr};

  explicit user_f(std::function<double(double)> g) : f(std::move(g)) { comm.p = this; }
  static double call(double x, Zem_Comm *comm) {
    auto *u = static_cast<user_f *>(comm->p);
    if (++u->calls == u->stop_at) comm->flag = 7;
    return u->f(x);
  }
};

struct result {
  double x;
  int code;
  int64_t calls;
};

result near_point(user_f &u, double x, double h, double eps, double eta, double lo, double hi) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05auc(&x, h, eps, eta, user_f::call, lo, hi, &u.comm, &fail);
  return {x, fail.code, u.calls};
}

result continuation(user_f &u, double x, double eps, double eta, int64_t nfmax) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05awc(&x, eps, eta, user_f::call, nfmax, &u.comm, &fail);
  return {x, fail.code, u.calls};
}

// Within the tolerance of the zero (the core stops with a bracket of
// half-width eps, x at one end), or an exact zero of f in floating point.
bool solved(const aps::problem &p, double x) {
  return std::fabs(x - p.root) <= 2e-12 + 4e-16 * std::fabs(p.root) || aps::f(p, x) == 0.0;
}

TEST(C05a, SolveTheTestProblemsFromTheMidpoint) {
  // c05aw within 1000 calls.  Family 13, x exp(-1/x^2), has a zero of
  // infinite order at 0: every derivative vanishes there, the Newton
  // directions along the path shrink like x^3/2, and the path stalls before
  // f changes sign.
  int n = 0;
  for (const aps::problem &p : aps::problems()) {
    ++n;
    user_f u([&p](double x) { return aps::f(p, x); }), w(u.f);
    const result r = near_point(u, 0.5 * (p.a + p.b), (p.b - p.a) / 10, 1e-12, 0.0, p.a, p.b);
    EXPECT_EQ(r.code, NE_NOERROR) << "c05auc family " << p.family << " n " << p.n;
    EXPECT_TRUE(solved(p, r.x)) << "c05auc family " << p.family << " n " << p.n << " x " << r.x;
    const result s = continuation(w, 0.5 * (p.a + p.b), 1e-12, 0.0, 1000);
    EXPECT_LE(s.calls, 1000);
    EXPECT_EQ(s.code, p.family == 13 ? NE_TOO_MANY_CALLS : NE_NOERROR) << "c05awc family " << p.family << " n " << p.n;
    if (p.family != 13) {
      EXPECT_TRUE(solved(p, s.x)) << "c05awc family " << p.family << " n " << p.n << " x " << s.x;
    }
  }
  EXPECT_EQ(n, 154);
}

TEST(C05a, EtaAndTheUserStop) {
  // |f(x0)| < eta: x0 is accepted after one call.
  user_f a([](double x) { return x - 0.3; }), b(a.f);
  const result ra = near_point(a, 0.0, 0.1, 1e-12, 0.5, -1.0, 1.0);
  EXPECT_EQ(ra.code, NE_NOERROR);
  EXPECT_EQ(ra.x, 0.0);
  EXPECT_EQ(ra.calls, 1);
  const result rb = continuation(b, 0.0, 1e-12, 0.5, 100);
  EXPECT_EQ(rb.code, NE_NOERROR);
  EXPECT_EQ(rb.calls, 1);
  // The flag set at a call ends the solve right after it.
  user_f u([](double x) { return x - 0.37; }), w([](double x) { return std::atan(x); });
  u.stop_at = 3;
  w.stop_at = 2;
  const result su = near_point(u, 0.0, 0.1, 1e-12, 0.0, -1.0, 1.0), sw = continuation(w, 10.0, 1e-12, 0.0, 100);
  EXPECT_EQ(su.code, NE_USER_STOP);
  EXPECT_EQ(su.calls, 3);
  EXPECT_EQ(sw.code, NE_USER_STOP);
  EXPECT_EQ(sw.calls, 2);
}

TEST(C05aw, CallLimitAndInternalScale) {
  for (int64_t nfmax : {1, 2, 30, 200}) {
    user_f u([](double x) { return x * x + 1.0; });
    const result r = continuation(u, 1.0, 1e-12, 0.0, nfmax);
    EXPECT_EQ(r.code, NE_TOO_MANY_CALLS);
    EXPECT_EQ(r.calls, nfmax);
    if (nfmax >= 30) {
      EXPECT_NEAR(r.x, 0.0, 0.5);  // the point with the smallest |f| found
    }
  }
  // A flat f: one start value, then two derivative values at each of five
  // scales.
  user_f flat([](double) { return 1.0; });
  const result r = continuation(flat, 2.0, 1e-12, 0.0, 1000);
  EXPECT_EQ(r.code, NE_BAD_INTERNAL_SCALE);
  EXPECT_EQ(r.calls, 11);
  // f constant left of 0 (family 14 of the test set): the derivative
  // appears only once the increment reaches across.
  user_f step([](double x) { return x >= 0 ? x / 1.5 + std::sin(x) - 1.0 : -1.0; });
  const result s = continuation(step, -3.0, 1e-12, 0.0, 1000);
  EXPECT_EQ(s.code, NE_NOERROR);
  EXPECT_NEAR(s.x, 0.6238065189616123, 2e-12);
}

TEST(C05a, NullArgumentsOfTheCEntries) {
  double x = 0.0, y = 0.0, c[36] = {};
  int64_t ind = 1;
  user_f u([](double x) { return x; });
  Zem_Comm *comm = &u.comm;
  const auto ctl = static_cast<Zem_ErrorControl>(5);
  // The reverse-communication entries also end the exchange (ind = 0).
  struct {
    const char *routine, *arg;
    std::function<void(Zem_Fail *)> call;
    bool ends = true;
  } cases[] = {
      {"c05auc", "f", [&](Zem_Fail *f) { c05auc(&x, 0.1, 1e-8, 0.0, nullptr, -1.0, 1.0, comm, f); }, false},
      {"c05awc", "x", [&](Zem_Fail *f) { c05awc(nullptr, 1e-8, 0.0, user_f::call, 10, comm, f); }, false},
      {"c05awc", "f", [&](Zem_Fail *f) { c05awc(&x, 1e-8, 0.0, nullptr, 10, comm, f); }, false},
      {"c05avc", "ind", [&](Zem_Fail *f) { c05avc(&x, 0.0, 0.1, -1.0, 1.0, &y, c, nullptr, f); }, false},
      {"c05avc", "x", [&](Zem_Fail *f) { c05avc(nullptr, 0.0, 0.1, -1.0, 1.0, &y, c, &ind, f); }},
      {"c05avc", "y", [&](Zem_Fail *f) { c05avc(&x, 0.0, 0.1, -1.0, 1.0, nullptr, c, &ind, f); }},
      {"c05avc", "c", [&](Zem_Fail *f) { c05avc(&x, 0.0, 0.1, -1.0, 1.0, &y, nullptr, &ind, f); }},
      {"c05axc", "ind", [&](Zem_Fail *f) { c05axc(&x, 0.0, 1e-8, Zem_Absolute, 1e-8, c, nullptr, f); }, false},
      {"c05axc", "x", [&](Zem_Fail *f) { c05axc(nullptr, 0.0, 1e-8, Zem_Mixed, 1e-8, c, &ind, f); }},
      {"c05axc", "c", [&](Zem_Fail *f) { c05axc(&x, 0.0, 1e-8, Zem_Mixed, 1e-8, nullptr, &ind, f); }},
      {"c05axc", "ir", [&](Zem_Fail *f) { c05axc(&x, 0.0, 1e-8, ctl, 1e-8, c, &ind, f); }},
  };
  for (const auto &k : cases) {
    Zem_Fail fail = ZEM_FAIL_INIT;
    ind = 1;
    k.call(&fail);
    EXPECT_EQ(fail.code, NE_BAD_PARAM) << k.routine << " " << k.arg;
    EXPECT_EQ(std::string(fail.message), std::string("NE_BAD_PARAM:\n  On entry, parameter ") + k.arg +
                                             " had an illegal value.")
        << k.routine;
    EXPECT_EQ(ind, k.ends ? 0 : 1) << k.routine << " " << k.arg;
  }
  EXPECT_EQ(u.calls, 0);
}

TEST(C05a, ReverseCommunicationCEntries) {
  // c05avc finds the bracket, c05azc solves on it, started with ind = -1
  // from the values the search left.
  double x = 0.0, y = 0.0, fx = 0.0, c[12], cz[10];
  int64_t ind = 1;
  Zem_Fail fail = ZEM_FAIL_INIT;
  auto f = [](double t) { return std::exp(-t) - t; };
  auto search = [&] { return c05avc(&x, fx, 0.25, -10.0, 10.0, &y, c, &ind, &fail), ind != 0; };
  while (search()) fx = f(x);
  ASSERT_EQ(fail.code, NE_NOERROR);
  cz[0] = c[0];
  ind = -1;
  auto solve = [&] { return c05azc(&x, &y, fx, 1e-13, Zem_Absolute, cz, &ind, &fail), ind != 0; };
  while (solve()) fx = f(x);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_NEAR(x, 0.5671432904097838, 2e-13);

  // c05axc with each error-control member, on a jump through zero at z
  // that the final solve can only bracket: the error is up to the bound of
  // that member, tol * max(wr |z|, wa), which tells absolute control apart
  // at z = 1000 and relative control at z = 1e-3.
  struct {
    Zem_ErrorControl ir;
    double wr, wa;
  } members[] = {{Zem_Mixed, 1, 1}, {Zem_Absolute, 0, 1}, {Zem_Relative, 1, 0}};
  for (const auto &m : members) {
    for (double z : {1000.0, 1e-3}) {
      const double tol = z > 1 ? 1e-6 : 1e-3;
      auto jump = [z](double t) { return t > z ? 2.0 + (t - z) : -1.0 + (t - z); };
      double xc = z + 1.3, cc[36];
      fx = 0.0;
      ind = 1;
      while (c05axc(&xc, fx, tol, m.ir, 1e-7, cc, &ind, &fail), ind != 0) fx = jump(xc);
      EXPECT_EQ(fail.code, NE_NOERROR) << m.ir << " z " << z;
      EXPECT_LE(std::fabs(xc - z), 2 * tol * std::max(m.wr * z, m.wa)) << m.ir << " z " << z;
    }
  }
}

}  // namespace
