// The reverse-communication core c05az at the engine level: zeros against
// closed forms, the argument checks, and the exits of the state machine that
// the client programs (c05_statuses.c, .f90) do not reach.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

#include "c05/c05az.h"

namespace {

// One caller of c05azfn_: its arguments and state array between entries.
struct caller {
  engine_data ed;
  double x, y, c[10] = {}, tolx;
  int64_t ir, ind = 1, status = 0;
  int evaluations = 0;
  char errbuf[zem::errbuf_len] = {};
  caller(double x0, double y0, double tol, int64_t r) : x(x0), y(y0), tolx(tol), ir(r) { y90haan_(&ed); }
  void enter(double fx) { c05azfn_(&ed, &x, &y, &fx, &tolx, &ir, c, &ind, errbuf, &status); }
};

// Drives c05azfn_ as a caller would, from ind = 1.
caller solve(const std::function<double(double)> &f, double x, double y, double tolx, int64_t ir) {
  caller k(x, y, tolx, ir);
  for (k.enter(0.0); k.ind != 0 && k.evaluations <= 500; ++k.evaluations) k.enter(f(k.x));
  return k;
}

TEST(C05az, ZerosAgainstClosedForms) {
  struct {
    const char *what;
    std::function<double(double)> f;
    double a, b, zero;
    int max_evaluations = 60;
  } cases[] = {
      {"x^2 - 2", [](double x) { return x * x - 2.0; }, 1.0, 2.0, std::numbers::sqrt2},
      {"exp(x) - 2", [](double x) { return std::exp(x) - 2.0; }, 0.0, 1.0, std::numbers::ln2},
      {"sin(x)", [](double x) { return std::sin(x); }, 3.0, 4.0, std::numbers::pi},
      {"(x-1)^5 (odd multiple zero)", [](double x) { return std::pow(x - 1.0, 5); }, 0.0, 3.0, 1.0, 120},
      {"x^3 - 2, bracket reversed", [](double x) { return x * x * x - 2.0; }, 2.0, 0.0, std::cbrt(2.0)},
      {"steep: 1e6 (x - 0.3)", [](double x) { return 1e6 * (x - 0.3); }, 0.0, 1.0, 0.3},
      // |f| near the zero stays below |f(a)|, though above |f(b)|: no pole.
      {"jump from -10 to 5", [](double x) { return x < 0.3 ? -10.0 : 5.0 - 4.0 * (x - 0.3) / 0.7; }, 0.0, 1.0, 0.3},
  };
  for (const auto &c : cases) {
    for (int64_t ir : {0, 1, 2}) {
      const caller r = solve(c.f, c.a, c.b, 1e-12, ir);
      SCOPED_TRACE(std::string(c.what) + " ir " + std::to_string(ir));
      EXPECT_EQ(r.status, 0);
      // The bracket [x,y] holds the zero, and it is as narrow as the
      // tolerance allows (tol = 1e-12 * max(|b|,1) at most, doubled by the
      // final step).
      EXPECT_LE(std::fabs(r.x - c.zero), 4e-12 * std::max(1.0, std::fabs(c.zero)));
      EXPECT_LE(r.evaluations, c.max_evaluations);
    }
  }
}

TEST(C05az, ArgumentChecksOnEveryEntryAndInOrder) {
  struct {
    int64_t ind;
    double tolx;
    int64_t ir;
    int64_t status;
  } cases[] = {
      {0, 1e-5, 0, 2}, {5, -1.0, 7, 2}, {-2, 1e-5, 0, 2},  // ind first
      {1, 0.0, 7, 3}, {1, -1e-5, 0, 3},                     // then tolx
      {1, 1e-5, -1, 3}, {1, 1e-5, 3, 3},                    // then ir, negative too
      {1, std::nan(""), 0, 0},                              // a NaN tolx passes
  };
  for (const auto &t : cases) {
    caller k(0.0, 1.0, t.tolx, t.ir);
    k.ind = t.ind;
    k.status = -5;
    k.enter(0.0);
    EXPECT_EQ(k.status, t.status) << t.ind << " " << t.tolx << " " << t.ir;
    if (t.status != 0) {
      EXPECT_EQ(k.ind, 0);
    }
  }
}

TEST(C05az, InitialEntryWithBothValuesKnown) {
  // ind = -1 with f(y) = 0 in c[0]: no exact-zero test of f(y); with
  // f(x) < 0 the sign test fails, with f(x) > 0 the first iteration
  // converges and asks for the final evaluation at y.
  for (double fx : {-1.0, 1.0}) {
    caller k(0.0, 1.0, 1e-8, 1);
    k.ind = -1;
    k.enter(fx);
    EXPECT_EQ(k.status, fx < 0 ? 1 : 0);
    EXPECT_EQ(k.ind, fx < 0 ? 0 : 4);
    if (fx > 0) {
      EXPECT_EQ(k.x, 1.0);
      k.enter(0.0);
      EXPECT_EQ(k.ind, 0);
      EXPECT_EQ(k.status, 0);
    }
  }
}

TEST(C05az, ExitsAndTheBracketLeft) {
  // An exact zero at a starting point ends at once, with y = x.
  const caller left = solve([](double x) { return x; }, 0.0, 1.0, 1e-8, 0);
  EXPECT_EQ(left.status, 0);
  EXPECT_EQ(left.x, 0.0);
  EXPECT_EQ(left.y, 0.0);
  EXPECT_EQ(left.evaluations, 1);
  const caller right = solve([](double x) { return x - 1.0; }, 0.0, 1.0, 1e-8, 0);
  EXPECT_EQ(right.x, 1.0);
  EXPECT_EQ(right.evaluations, 2);
  // The "too small" exit leaves the last bracket, down to adjacent doubles.
  const caller tight = solve([](double x) { return x * x - 2.0; }, 1.0, 2.0, 1e-30, 2);
  EXPECT_EQ(tight.status, 5);
  EXPECT_LE(std::fabs(tight.x - tight.y), 2 * std::nextafter(std::numbers::sqrt2, 2.0) - 2 * std::numbers::sqrt2);
}

}  // namespace
