// The reverse-communication core c05az and the direct solver c05ay, at the
// engine level: zeros against closed forms, and every exit of the state
// machine.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

#include "c05/c05az.h"

namespace {

struct outcome {
  double x, y;
  int64_t status;
  int evaluations;
};

// Drives c05azfn_ as a caller would, from ind = 1.
outcome solve(const std::function<double(double)> &f, double x, double y, double tolx, int64_t ir) {
  engine_data ed;
  y90haan_(&ed);
  char errbuf[zem::errbuf_len] = {};
  double c[10] = {}, fx = 0.0;
  int64_t ind = 1, status = 0;
  int n = 0;
  for (;;) {
    c05azfn_(&ed, &x, &y, &fx, &tolx, &ir, c, &ind, errbuf, &status);
    if (ind == 0) break;
    fx = f(x);
    if (++n > 500) break;
  }
  return {x, y, status, n};
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
  };
  for (const auto &c : cases) {
    for (int64_t ir : {0, 1, 2}) {
      const outcome r = solve(c.f, c.a, c.b, 1e-12, ir);
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

TEST(C05az, EveryExitOfTheStateMachine) {
  auto pole = [](double x) { return 1.0 / (x - 0.5); };
  auto square = [](double x) { return x * x - 2.0; };
  auto positive = [](double x) { return x * x + 1.0; };
  EXPECT_EQ(solve(pole, 0.0, 1.0, 1e-10, 0).status, 4);
  EXPECT_EQ(solve(square, 1.0, 2.0, 1e-30, 1).status, 5);
  EXPECT_EQ(solve(positive, -1.0, 1.0, 1e-10, 0).status, 1);
  // The "too small" exit leaves the last bracket, down to adjacent doubles.
  const outcome tight = solve(square, 1.0, 2.0, 1e-30, 2);
  EXPECT_EQ(tight.status, 5);
  EXPECT_LE(std::fabs(tight.x - tight.y), 2 * std::nextafter(std::numbers::sqrt2, 2.0) - 2 * std::numbers::sqrt2);
}

TEST(C05az, ArgumentChecksOnEveryEntryAndInOrder) {
  engine_data ed;
  y90haan_(&ed);
  char errbuf[zem::errbuf_len];
  double c[10] = {}, x = 0, y = 1, fx = 0;
  struct {
    int64_t ind;
    double tolx;
    int64_t ir;
    int64_t status;
  } cases[] = {
      {0, 1e-5, 0, 2}, {5, -1.0, 7, 2}, {-2, 1e-5, 0, 2},       // ind first
      {1, 0.0, 7, 3}, {1, -1e-5, 0, 3},                          // then tolx
      {1, 1e-5, -1, 3}, {1, 1e-5, 3, 3},                         // then ir, negative too
      {1, std::nan(""), 0, 0},                                   // a NaN tolx passes
  };
  for (const auto &k : cases) {
    int64_t ind = k.ind, status = -5;
    c05azfn_(&ed, &x, &y, &fx, &k.tolx, &k.ir, c, &ind, errbuf, &status);
    EXPECT_EQ(status, k.status) << k.ind << " " << k.tolx << " " << k.ir;
    if (k.status != 0) {
      EXPECT_EQ(ind, 0);
    }
  }
}

TEST(C05az, InitialEntryWithBothValuesKnown) {
  // ind = -1 with f(y) = 0: no exact-zero test of f(y); with f(x) < 0 the
  // sign test fails, with f(x) > 0 it converges at the first iteration.
  engine_data ed;
  y90haan_(&ed);
  char errbuf[zem::errbuf_len];
  const double tolx = 1e-8;
  const int64_t ir = 1;
  for (double fxv : {-1.0, 1.0}) {
    double x = 0.0, y = 1.0, c[10] = {0.0}, fx = fxv;
    int64_t ind = -1, status = 0;
    c05azfn_(&ed, &x, &y, &fx, &tolx, &ir, c, &ind, errbuf, &status);
    if (fxv < 0) {
      EXPECT_EQ(status, 1);
      EXPECT_EQ(ind, 0);
    } else {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(ind, 4);  // the final evaluation at the converged point
      EXPECT_EQ(x, 1.0);
      fx = 0.0;
      c05azfn_(&ed, &x, &y, &fx, &tolx, &ir, c, &ind, errbuf, &status);
      EXPECT_EQ(ind, 0);
      EXPECT_EQ(status, 0);
    }
  }
}

TEST(C05az, ExactZeroAtAStartingPointEndsAtOnce) {
  const outcome left = solve([](double x) { return x; }, 0.0, 1.0, 1e-8, 0);
  EXPECT_EQ(left.status, 0);
  EXPECT_EQ(left.x, 0.0);
  EXPECT_EQ(left.y, 0.0);
  EXPECT_EQ(left.evaluations, 1);
  const outcome right = solve([](double x) { return x - 1.0; }, 0.0, 1.0, 1e-8, 0);
  EXPECT_EQ(right.x, 1.0);
  EXPECT_EQ(right.evaluations, 2);
}

}  // namespace
