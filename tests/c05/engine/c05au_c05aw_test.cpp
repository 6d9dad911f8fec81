// c05au and c05aw through their C entries, as a C++ caller uses them: the
// 154 test problems of Alefeld, Potra and Shi from the midpoint of each
// bracket (zeros from mpmath, bench/c05/aps_roots.inc), eta, the user stop,
// the evaluation limit, and null arguments of all four C entries.
#include <gtest/gtest.h>

#include <zem.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include "aps_problems.h"

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

// A user function of the C interface that calls a C++ callable through
// comm->p and counts the calls in comm->iuser[0].
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
  int64_t errnum;
  std::string message;
  int64_t calls;
};

result near_point(user_f &u, double x, double h, double eps, double eta, double lo, double hi) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05auc(&x, h, eps, eta, user_f::call, lo, hi, &u.comm, &fail);
  return {x, fail.code, fail.errnum, fail.message, u.calls};
}

result continuation(user_f &u, double x, double eps, double eta, int64_t nfmax) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05awc(&x, eps, eta, user_f::call, nfmax, &u.comm, &fail);
  return {x, fail.code, fail.errnum, fail.message, u.calls};
}

// Within the tolerance of the zero (the core stops with a bracket of
// half-width eps, x at one end), or an exact zero of f in floating point.
bool solved(const aps::problem &p, double x) {
  return std::fabs(x - p.root) <= 2e-12 + 4e-16 * std::fabs(p.root) || aps::f(p, x) == 0.0;
}

TEST(C05au, SolvesEveryTestProblemFromTheMidpoint) {
  int n = 0;
  for (const aps::problem &p : aps::problems()) {
    user_f u([&p](double x) { return aps::f(p, x); });
    const result r = near_point(u, 0.5 * (p.a + p.b), (p.b - p.a) / 10, 1e-12, 0.0, p.a, p.b);
    EXPECT_EQ(r.code, NE_NOERROR) << "family " << p.family << " n " << p.n;
    EXPECT_TRUE(solved(p, r.x)) << "family " << p.family << " n " << p.n << " x " << r.x;
    ++n;
  }
  EXPECT_EQ(n, 154);
}

TEST(C05aw, SolvesTheTestProblemsFromTheMidpointWithin1000Calls) {
  // Family 13, x exp(-1/x^2), has a zero of infinite order at 0: every
  // derivative vanishes there, the Newton directions along the path shrink
  // like x^3/2, and the path stalls before f changes sign.
  for (const aps::problem &p : aps::problems()) {
    user_f u([&p](double x) { return aps::f(p, x); });
    const result r = continuation(u, 0.5 * (p.a + p.b), 1e-12, 0.0, 1000);
    EXPECT_LE(r.calls, 1000);
    if (p.family == 13) {
      EXPECT_EQ(r.code, NE_TOO_MANY_CALLS);
      continue;
    }
    EXPECT_EQ(r.code, NE_NOERROR) << "family " << p.family << " n " << p.n;
    EXPECT_TRUE(solved(p, r.x)) << "family " << p.family << " n " << p.n << " x " << r.x;
  }
}

TEST(C05au, EtaAcceptsThePointAtOnce) {
  user_f u([](double x) { return x - 0.3; });
  const result r = near_point(u, 0.0, 0.1, 1e-12, 0.5, -1.0, 1.0);
  EXPECT_EQ(r.code, NE_NOERROR);
  EXPECT_EQ(r.x, 0.0);
  EXPECT_EQ(r.calls, 1);
}

TEST(C05aw, EtaAcceptsThePointAtOnce) {
  user_f u([](double x) { return x - 0.3; });
  const result r = continuation(u, 0.0, 1e-12, 0.5, 100);
  EXPECT_EQ(r.code, NE_NOERROR);
  EXPECT_EQ(r.calls, 1);
}

TEST(C05a, UserStopEndsTheSolveAfterThatCall) {
  user_f u([](double x) { return x - 0.37; });
  u.stop_at = 3;
  const result a = near_point(u, 0.0, 0.1, 1e-12, 0.0, -1.0, 1.0);
  EXPECT_EQ(a.code, NE_USER_STOP);
  EXPECT_EQ(a.errnum, -1);
  EXPECT_EQ(a.calls, 3);
  EXPECT_NE(a.message.find("user flag value = 7"), std::string::npos) << a.message;

  user_f w([](double x) { return std::atan(x); });
  w.stop_at = 2;
  const result b = continuation(w, 10.0, 1e-12, 0.0, 100);
  EXPECT_EQ(b.code, NE_USER_STOP);
  EXPECT_EQ(b.calls, 2);
}

TEST(C05aw, StopsAtNfmaxCalls) {
  for (int64_t nfmax : {1, 2, 30, 200}) {
    user_f u([](double x) { return x * x + 1.0; });
    const result r = continuation(u, 1.0, 1e-12, 0.0, nfmax);
    EXPECT_EQ(r.code, NE_TOO_MANY_CALLS);
    EXPECT_EQ(r.errnum, 3);
    EXPECT_EQ(r.calls, nfmax);
    if (nfmax >= 30) {
      EXPECT_NEAR(r.x, 0.0, 0.5);  // the point with the smallest |f| found
    }
  }
}

TEST(C05aw, FlatFunctionExhaustsTheInternalScale) {
  user_f u([](double) { return 1.0; });
  const result r = continuation(u, 2.0, 1e-12, 0.0, 1000);
  EXPECT_EQ(r.code, NE_BAD_INTERNAL_SCALE);
  EXPECT_EQ(r.errnum, 2);
  // One start value, then two derivative values at each of five scales.
  EXPECT_EQ(r.calls, 11);
}

TEST(C05aw, LargerScaleFindsTheSlopeOfAFlatStart) {
  // f is constant left of 0 (family 14 of the test set): the derivative
  // appears only once the increment reaches across.
  user_f u([](double x) { return x >= 0 ? x / 1.5 + std::sin(x) - 1.0 : -1.0; });
  const result r = continuation(u, -3.0, 1e-12, 0.0, 1000);
  EXPECT_EQ(r.code, NE_NOERROR);
  EXPECT_NEAR(r.x, 0.6238065189616123, 2e-12);
}

TEST(C05a, NullArgumentsOfTheCEntries) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = 0.0, y = 0.0, c[36] = {};
  int64_t ind = 1;
  user_f u([](double x) { return x; });
  c05auc(nullptr, 0.1, 1e-8, 0.0, user_f::call, -1.0, 1.0, &u.comm, &fail);
  EXPECT_EQ(fail.code, NE_BAD_PARAM);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter x had an illegal value.");
  c05auc(&x, 0.1, 1e-8, 0.0, nullptr, -1.0, 1.0, &u.comm, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter f had an illegal value.");
  c05awc(nullptr, 1e-8, 0.0, user_f::call, 10, &u.comm, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter x had an illegal value.");
  c05awc(&x, 1e-8, 0.0, nullptr, 10, &u.comm, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter f had an illegal value.");
  EXPECT_EQ(u.calls, 0);

  c05avc(&x, 0.0, 0.1, -1.0, 1.0, &y, c, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter ind had an illegal value.");
  for (const char *arg : {"x", "y", "c"}) {
    ind = 1;
    c05avc(arg[0] == 'x' ? nullptr : &x, 0.0, 0.1, -1.0, 1.0, arg[0] == 'y' ? nullptr : &y,
           arg[0] == 'c' ? nullptr : c, &ind, &fail);
    EXPECT_EQ(ind, 0);
    EXPECT_EQ(std::string(fail.message), std::string("NE_BAD_PARAM:\n  On entry, parameter ") + arg +
                                             " had an illegal value.");
  }
  c05axc(&x, 0.0, 1e-8, Zem_Absolute, 1e-8, c, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter ind had an illegal value.");
  for (const char *arg : {"x", "c", "ir"}) {
    ind = 1;
    c05axc(arg[0] == 'x' ? nullptr : &x, 0.0, 1e-8, arg[0] == 'i' ? static_cast<Zem_ErrorControl>(5) : Zem_Mixed,
           1e-8, arg[0] == 'c' ? nullptr : c, &ind, &fail);
    EXPECT_EQ(ind, 0);
    EXPECT_EQ(std::string(fail.message), std::string("NE_BAD_PARAM:\n  On entry, parameter ") + arg +
                                             " had an illegal value.");
  }
}

TEST(C05a, ReverseCommunicationCEntriesDriveTheSameEngine) {
  // c05avc finds the bracket, c05azc solves on it, started with ind = -1
  // from the values the search left.
  double x = 0.0, y = 0.0, fx = 0.0, c[12], cz[10];
  int64_t ind = 1;
  Zem_Fail fail = ZEM_FAIL_INIT;
  auto f = [](double t) { return std::exp(-t) - t; };
  for (;;) {
    c05avc(&x, fx, 0.25, -10.0, 10.0, &y, c, &ind, &fail);
    if (ind == 0) break;
    fx = f(x);
  }
  ASSERT_EQ(fail.code, NE_NOERROR);
  cz[0] = c[0];
  ind = -1;
  for (;;) {
    c05azc(&x, &y, fx, 1e-13, Zem_Absolute, cz, &ind, &fail);
    if (ind == 0) break;
    fx = f(x);
  }
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_NEAR(x, 0.5671432904097838, 2e-13);

  // c05axc with each error-control member.
  for (Zem_ErrorControl ir : {Zem_Mixed, Zem_Absolute, Zem_Relative}) {
    double xc = 5.0, cc[36];
    fx = 0.0;
    ind = 1;
    for (;;) {
      c05axc(&xc, fx, 1e-12, ir, 1e-7, cc, &ind, &fail);
      if (ind == 0) break;
      fx = f(xc);
    }
    EXPECT_EQ(fail.code, NE_NOERROR);
    EXPECT_NEAR(xc, 0.5671432904097838, 2e-12);
  }
  (void)nan;
}

}  // namespace
