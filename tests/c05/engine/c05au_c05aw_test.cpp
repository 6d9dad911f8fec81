// c05au and c05aw through their C entries, as a C++ caller uses them: the
// 154 test problems of Alefeld, Potra and Shi from the midpoint of each
// bracket (zeros from mpmath, bench/c05/aps_roots.inc), eta, the user stop,
// the evaluation limit; null arguments of all four C entries, and the
// error-control members of c05axc.
#include <gtest/gtest.h>

#include <zem.h>

#include <cmath>
#include <functional>
#include <string>

#include "aps_problems.h"

namespace {

// A user function of the C interface that calls a C++ callable through
// comm->p and counts the calls; near and cont run c05auc and c05awc with it.
struct user_f {
  std::function<double(double)> f;
  int64_t calls = 0, stop_at = 0;  // stop_at: set comm->flag = 7 at this call (0: never)
  Zem_Comm comm{0, nullptr, nullptr, nullptr};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = 0.0, last = 0.0;  // x as returned; the point of the last call

  explicit user_f(std::function<double(double)> g) : f(std::move(g)) { comm.p = this; }
  static double call(double x, Zem_Comm *comm) {
    auto *u = static_cast<user_f *>(comm->p);
    if (++u->calls == u->stop_at) comm->flag = 7;
    return u->f(u->last = x);
  }
  user_f &near(double x0, double h, double eps, double eta, double lo, double hi) {
    x = x0;
    c05auc(&x, h, eps, eta, call, lo, hi, &comm, &fail);
    return *this;
  }
  user_f &cont(double x0, double eps, double eta, int64_t nfmax) {
    x = x0;
    c05awc(&x, eps, eta, call, nfmax, &comm, &fail);
    return *this;
  }
};

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
    SCOPED_TRACE(testing::Message() << "family " << p.family << " n " << p.n);
    user_f u([&p](double x) { return aps::f(p, x); }), w(u.f);
    const user_f &r = u.near(0.5 * (p.a + p.b), (p.b - p.a) / 10, 1e-12, 0.0, p.a, p.b);
    EXPECT_EQ(r.fail.code, NE_NOERROR) << "c05auc";
    EXPECT_TRUE(solved(p, r.x)) << "c05auc x " << r.x;
    const user_f &s = w.cont(0.5 * (p.a + p.b), 1e-12, 0.0, 1000);
    EXPECT_LE(s.calls, 1000);
    EXPECT_EQ(s.fail.code, p.family == 13 ? NE_TOO_MANY_CALLS : NE_NOERROR) << "c05awc";
    if (p.family != 13) {
      EXPECT_TRUE(solved(p, s.x)) << "c05awc x " << s.x;
    }
  }
  EXPECT_EQ(n, 154);
}

TEST(C05a, EtaAndTheUserStop) {
  // |f(x0)| < eta accepts x0 after one call; the flag set at a call ends the
  // solve right after it.  Either way x is the point of the last call.
  struct {
    const char *what;
    bool aw;
    double x0, eta;
    int64_t stop_at;
    int code;
    int64_t calls;
  } cases[] = {{"c05auc eta", false, 0.0, 0.5, 0, NE_NOERROR, 1},
               {"c05awc eta", true, 0.0, 0.5, 0, NE_NOERROR, 1},
               {"c05auc stop", false, 0.0, 0.0, 3, NE_USER_STOP, 3},
               {"c05awc stop", true, 10.0, 0.0, 2, NE_USER_STOP, 2}};
  for (const auto &t : cases) {
    user_f u([](double x) { return std::atan(x - 0.3); });
    u.stop_at = t.stop_at;
    const user_f &r = t.aw ? u.cont(t.x0, 1e-12, t.eta, 100) : u.near(t.x0, 0.1, 1e-12, t.eta, -1, 1);
    EXPECT_EQ(r.fail.code, t.code) << t.what;
    EXPECT_EQ(r.calls, t.calls) << t.what;
    EXPECT_EQ(r.x, r.last) << t.what;
  }
}

TEST(C05aw, CallLimitAndInternalScale) {
  for (int64_t nfmax : {1, 2, 30, 200}) {
    user_f u([](double x) { return x * x + 1.0; });
    const user_f &r = u.cont(1.0, 1e-12, 0.0, nfmax);
    EXPECT_EQ(r.fail.code, NE_TOO_MANY_CALLS);
    EXPECT_EQ(r.calls, nfmax);
    if (nfmax >= 30) {
      EXPECT_NEAR(r.x, 0.0, 0.5);  // the point with the smallest |f| found
    }
  }
  // A flat f: one start value, then two derivative values at each of five
  // scales.
  user_f flat([](double) { return 1.0; });
  const user_f &r = flat.cont(2.0, 1e-12, 0.0, 1000);
  EXPECT_EQ(r.fail.code, NE_BAD_INTERNAL_SCALE);
  EXPECT_EQ(r.calls, 11);
  // f constant left of 0 (family 14 of the test set): the derivative
  // appears only once the increment reaches across.
  user_f step([](double x) { return x >= 0 ? x / 1.5 + std::sin(x) - 1.0 : -1.0; });
  const user_f &s = step.cont(-3.0, 1e-12, 0.0, 1000);
  EXPECT_EQ(s.fail.code, NE_NOERROR);
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

TEST(C05a, ErrorControlMembersOfC05axc) {
  // A jump through zero at z, which the final solve can only bracket: the
  // error is up to the bound of each member, tol * max(wr |z|, wa), which
  // tells absolute control apart at z = 1000 and relative control at
  // z = 1e-3.
  struct {
    Zem_ErrorControl ir;
    double wr, wa;
  } members[] = {{Zem_Mixed, 1, 1}, {Zem_Absolute, 0, 1}, {Zem_Relative, 1, 0}};
  for (const auto &m : members) {
    for (double z : {1000.0, 1e-3}) {
      const double tol = z > 1 ? 1e-6 : 1e-3;
      auto jump = [z](double t) { return t > z ? 2.0 + (t - z) : -1.0 + (t - z); };
      double x = z + 1.3, fx = 0.0, c[36];
      int64_t ind = 1;
      Zem_Fail fail = ZEM_FAIL_INIT;
      while (c05axc(&x, fx, tol, m.ir, 1e-7, c, &ind, &fail), ind != 0) fx = jump(x);
      EXPECT_EQ(fail.code, NE_NOERROR) << m.ir << " z " << z;
      EXPECT_LE(std::fabs(x - z), 2 * tol * std::max(m.wr * z, m.wa)) << m.ir << " z " << z;
    }
  }
}

}  // namespace
