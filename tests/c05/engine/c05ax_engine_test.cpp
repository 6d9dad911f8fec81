// c05ax, the reverse-communication continuation: the checks in order, the
// request codes, zeros against mpmath references (problems on which Newton's
// method fails among them), every failure, and callers who re-enter wrongly
// or change the state array.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <ostream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "c05/c05ax.h"
#include "record.h"

namespace {

using c05test::parse;
using zem::c05ax::state_len;
namespace slot = zem::c05ax;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

struct outcome {
  int64_t status = 0;
  c05test::record rec;
  double x = 0;
  int evals = 0;
  std::vector<int64_t> requests;
};

outcome solve(const std::function<double(double)> &f, double x, double tol = 1e-12, int64_t ir = 1,
              double scal = 0x1p-26, bool start_known = false) {
  outcome o;
  double c[state_len] = {};
  c05test::errbuf eb;
  double fx = start_known ? f(x) : 0.0;
  int64_t ind = start_known ? -1 : 1;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &o.status);
  while (ind != 0) {
    o.requests.push_back(ind);
    fx = f(x);
    ++o.evals;
    c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &o.status);
  }
  o.rec = parse(eb.text);
  o.x = x;
  return o;
}

// The functions of tests/c05/data/continuation_zeros.txt.
const std::map<std::string, std::function<double(double)>> &functions() {
  static const std::map<std::string, std::function<double(double)>> fs = {
      {"atan", [](double x) { return std::atan(x); }},
      {"cubic", [](double x) { return x * x * x - 2.0 * x - 5.0; }},
      {"x_minus_exp", [](double x) { return x - std::exp(-x); }},
      {"exp_minus_1e6", [](double x) { return std::exp(x) - 1e6; }},
      {"sin", [](double x) { return std::sin(x); }},
      {"tanh_minus_half", [](double x) { return std::tanh(x) - 0.5; }},
      {"log", [](double x) { return std::log(x); }},
      {"triple", [](double x) { return (x - 1.0) * (x - 1.0) * (x - 1.0); }},
      {"square_minus_4", [](double x) { return x * x - 4.0; }},
  };
  return fs;
}

struct reference {
  std::string name;
  double start, zero;
};

std::vector<reference> references() {
  std::ifstream in(ZEM_TEST_DATA "/continuation_zeros.txt");
  std::vector<reference> refs;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    reference r;
    s >> r.name >> r.start >> r.zero;
    refs.push_back(r);
  }
  return refs;
}

// Each reference zero is found from its start point, for each error control,
// to within the tolerance the Brent core guarantees (the final bracket has
// half-width at most tol * max(wr |x|, wa), and x is one of its ends).
TEST(C05ax, ReachesTheReferenceZeros) {
  const auto refs = references();
  ASSERT_EQ(refs.size(), 9u);
  double worst = 0.0;
  for (const reference &r : refs) {
    for (int64_t ir : {0, 1, 2}) {
      const double tol = 1e-10;
      const outcome o = solve(functions().at(r.name), r.start, tol, ir);
      ASSERT_EQ(o.status, 0) << r.name << " ir " << ir;
      const double wr = ir == 1 ? 0.0 : 1.0, wa = ir == 2 ? 0.0 : 1.0;
      // With relative control at a zero at 0 the bound is the spacing there.
      const double bound = std::max(2.0 * tol * std::max(wr * std::fabs(r.zero), wa), 1e-300);
      EXPECT_LE(std::fabs(o.x - r.zero), bound) << r.name << " ir " << ir;
      if (r.zero != 0.0) worst = std::max(worst, std::fabs(o.x - r.zero) / std::fabs(r.zero));
    }
  }
  RecordProperty("worst_relative_error", std::to_string(worst));
}

// Newton's method from the same starts, with the exact derivative: where it
// fails, the continuation above still succeeds.
TEST(C05ax, NewtonFailsWhereTheContinuationDoesNot) {
  auto newton = [](const std::function<double(double)> &f, const std::function<double(double)> &df, double x) {
    for (int k = 0; k < 100; ++k) {
      const double step = f(x) / df(x);
      x -= step;
      if (!std::isfinite(x)) return nan;
      if (std::fabs(step) <= 1e-14 * std::max(1.0, std::fabs(x))) return x;
    }
    return nan;
  };
  EXPECT_TRUE(std::isnan(newton([](double x) { return std::atan(x); }, [](double x) { return 1 / (1 + x * x); }, 10)));
  EXPECT_TRUE(std::isnan(newton([](double x) { return std::exp(x) - 1e6; }, [](double x) { return std::exp(x); }, 0)));
  EXPECT_TRUE(std::isnan(newton([](double x) { return std::log(x); }, [](double x) { return 1 / x; }, 10)));
  // sin from 1.5: Newton lands on another zero, -4 pi; the path leads to 0.
  EXPECT_NEAR(newton([](double x) { return std::sin(x); }, [](double x) { return std::cos(x); }, 1.5),
              -4 * M_PI, 1e-12);
  EXPECT_EQ(solve(functions().at("sin"), 1.5).x, 0.0);
}

TEST(C05ax, RequestCodesFollowThePhases) {
  const outcome o = solve([](double x) { return x * x * x - 2.0 * x - 5.0; }, 0.0);
  ASSERT_EQ(o.status, 0);
  ASSERT_GE(o.requests.size(), 3u);
  EXPECT_EQ(o.requests[0], 2);
  EXPECT_EQ(o.requests[1], 3);
  for (size_t i = 2; i < o.requests.size(); ++i) EXPECT_EQ(o.requests[i], 4);
}

TEST(C05ax, KnownStartValueSavesOneCall) {
  auto f = [](double x) { return std::tanh(x) - 0.5; };
  const outcome a = solve(f, -3.0), b = solve(f, -3.0, 1e-12, 1, 0x1p-26, true);
  ASSERT_EQ(b.status, 0);
  EXPECT_EQ(a.x, b.x);
  EXPECT_EQ(a.evals, b.evals + 1);
}

TEST(C05ax, ExactZerosEndAtOnce) {
  EXPECT_EQ(solve([](double x) { return x - 2.0; }, 2.0).evals, 1);
  // f(x0 + scal) = 0.
  const outcome o = solve([](double x) { return x == 1.0 + 0x1p-20 ? 0.0 : x - 1.0 - 0x1p-20; }, 1.0, 1e-12, 1,
                          0x1p-20);
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.x, 1.0 + 0x1p-20);
  EXPECT_EQ(o.evals, 2);
}

// Argument checks: ind first (its admissible values depend on whether a
// request is outstanding), then tol and ir on every entry, then scal on an
// initial entry.
struct bad_args {
  const char *what;
  int64_t ind;
  double x, tol;
  int64_t ir;
  double scal;
  int64_t status, detail;
  std::vector<const char *> values;
};
// Test names print the case by its description (not the bytes of the struct).
std::ostream &operator<<(std::ostream &os, const bad_args &t) { return os << t.what; }

class C05axChecks : public ::testing::TestWithParam<bad_args> {};

TEST_P(C05axChecks, FirstViolationReported) {
  const bad_args &t = GetParam();
  double c[state_len] = {}, x = t.x, fx = 1.0, tol = t.tol, scal = t.scal;
  int64_t ir = t.ir, ind = t.ind, status = 0;
  c05test::errbuf eb;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  EXPECT_EQ(status, t.status) << t.what;
  EXPECT_EQ(ind, 0) << t.what;
  const auto r = parse(eb.text);
  EXPECT_EQ(r.detail, t.detail) << t.what;
  ASSERT_EQ(r.values.size(), t.values.size()) << t.what;
  for (size_t i = 0; i < t.values.size(); ++i) EXPECT_EQ(r.values[i], t.values[i]) << t.what;
  EXPECT_TRUE(x == t.x || (std::isnan(x) && std::isnan(t.x))) << t.what;  // x untouched
}

INSTANTIATE_TEST_SUITE_P(
    Table, C05axChecks,
    ::testing::Values(
        bad_args{"ind 0 without a solve", 0, 1.0, 1e-8, 0, 1e-8, 2, 1001, {"0"}},
        bad_args{"ind 4 without a solve", 4, 1.0, 1e-8, 0, 1e-8, 2, 1001, {"4"}},
        bad_args{"ind before tol", 7, 1.0, -1.0, 0, 1e-8, 2, 1001, {"7"}},
        bad_args{"tol zero", 1, 1.0, 0.0, 0, 1e-8, 1, 1003, {"0.0"}},
        bad_args{"tol NaN", -1, 1.0, nan, 0, 1e-8, 1, 1003, {"nan"}},
        bad_args{"tol before ir", 1, 1.0, -2.0, 9, 1e-8, 1, 1003, {"-2.0"}},
        bad_args{"ir negative", 1, 1.0, 1e-8, -1, 1e-8, 1, 1004, {"-1"}},
        bad_args{"ir 3 before scal", 1, 1.0, 1e-8, 3, 0.0, 1, 1004, {"3"}},
        bad_args{"scal zero", 1, 1.0, 1e-8, 0, 0.0, 1, 1005, {"1.0", "0.0"}},
        bad_args{"scal below the spacing at x", 1, 1e8, 1e-8, 0, 1e-10, 1, 1005, {"1e+08", "1e-10"}},
        bad_args{"scal NaN", 1, 1.0, 1e-8, 0, nan, 1, 1005, {"1.0", "nan"}},
        bad_args{"scal infinite", 1, 1.0, 1e-8, 0, inf, 1, 1005, {"1.0", "inf"}},
        bad_args{"x NaN", 1, nan, 1e-8, 0, 1e-8, 1, 1005, {"nan", "1e-08"}},
        bad_args{"x infinite", -1, -inf, 1e-8, 0, 1e-8, 1, 1005, {"-inf", "1e-08"}}));

TEST(C05ax, BadIndDuringASolveUsesTheIntermediateWording) {
  double c[state_len] = {}, x = 0.0, fx = 0.0, tol = 1e-10, scal = 1e-8;
  int64_t ir = 1, ind = 1, status = 0;
  c05test::errbuf eb;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  ASSERT_EQ(ind, 2);
  for (int64_t bad : {0, 5, -2}) {
    double cc[state_len];
    std::copy(c, c + state_len, cc);
    int64_t i = bad;
    c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, cc, &i, eb.text, &status);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(i, 0);
    EXPECT_EQ(parse(eb.text).detail, 1002);
  }
  // ind = 1 instead restarts a solve: always allowed.
  ind = 1;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ind, 2);
}

TEST(C05ax, IrChangedDuringASolveEndsIt) {
  double c[state_len] = {}, x = 0.0, fx = 0.0, tol = 1e-10, scal = 1e-8;
  int64_t ir = 1, ind = 1, status = 0;
  c05test::errbuf eb;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  fx = -1.0;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  ASSERT_EQ(ind, 3);
  ir = 5;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  EXPECT_EQ(status, 1);
  EXPECT_EQ(ind, 0);
  // The solve is over: the next entry needs ind = -1 or 1.
  ir = 1;
  ind = 3;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  EXPECT_EQ(status, 2);
  EXPECT_EQ(parse(eb.text).detail, 1001);
}

// Failures of the method, each with its status, detail and values.
TEST(C05ax, NoSignificantDerivative) {
  // x^2 - 2 at 0: f(+-scal) - f(0) = scal^2, far below the rounding of f.
  const outcome o = solve([](double x) { return x * x - 2.0; }, 0.0, 1e-10, 1, 1e-8);
  EXPECT_EQ(o.status, 3);
  EXPECT_EQ(o.rec.detail, 1006);
  EXPECT_EQ(o.rec.values, (std::vector<std::string>{"0.0", "1e-08"}));
  EXPECT_EQ(o.evals, 3);
  // Values that are not numbers give no derivative either.
  EXPECT_EQ(solve([](double x) { return x == 0.0 ? 1.0 : nan; }, 0.0).status, 3);
}

TEST(C05ax, NoStepAway) {
  // f is a number only at x0 and x0 +- scal: every step of both branches
  // gives NaN, down to the resolution of x.
  const double s = 1e-8;
  auto f = [s](double x) { return (x == 1.0 || x == 1.0 + s || x == 1.0 - s) ? x : nan; };
  const outcome o = solve(f, 1.0, 1e-10, 1, s);
  EXPECT_EQ(o.status, 4);
  EXPECT_EQ(o.rec.detail, 1007);
  EXPECT_EQ(o.rec.values, (std::vector<std::string>{"1.0"}));
  EXPECT_EQ(o.x, 1.0);
  // f(x0) itself not a number: there is no path to follow.
  EXPECT_EQ(solve([](double) { return nan; }, 1.0, 1e-10, 1, s, true).status, 4);
}

TEST(C05ax, PathLostWithoutAZero) {
  // x^2 + 1 from 1: the path passes the minimum at 0 and rises both ways.
  const outcome o = solve([](double x) { return x * x + 1.0; }, 1.0);
  EXPECT_EQ(o.status, 5);
  EXPECT_EQ(o.rec.detail, 1008);
  ASSERT_EQ(o.rec.values.size(), 2u);
  EXPECT_NEAR(o.x, 0.0, 1e-4);  // the point with the smallest |f|
  EXPECT_EQ(o.rec.values[0], std::string(zem::format_value(o.x).text, zem::format_value(o.x).len));
  // A zero of even multiplicity shows no sign change: the path is lost too,
  // but the best point is the zero to within the rounding of f.
  const outcome d = solve([](double x) { return (x - 1.0) * (x - 1.0); }, 3.0);
  EXPECT_EQ(d.status, 5);
  EXPECT_NEAR(d.x, 1.0, 1e-6);
}

TEST(C05ax, FinalProblemAcrossAPole) {
  // The derivative points straddle the pole of 1/(x - 0.5): the Brent core
  // converges to the pole and its test fails.
  const double s = 1e-8;
  const outcome o = solve([](double x) { return 1.0 / (x - 0.5); }, 0.5 - s / 2, 1e-12, 1, s);
  EXPECT_EQ(o.status, 6);
  EXPECT_EQ(o.rec.detail, 1009);
  EXPECT_NEAR(o.x, 0.5, 1e-8);
}

TEST(C05ax, FinalProblemBeyondMachineAccuracy) {
  // No double makes x^2 - 2 vanish: the core runs into the rounding limit.
  const outcome o = solve([](double x) { return x * x - 2.0; }, 3.0, 1e-30, 1);
  EXPECT_EQ(o.status, 6);
  EXPECT_EQ(o.rec.detail, 1010);
  ASSERT_EQ(o.rec.values.size(), 2u);
  EXPECT_EQ(o.rec.values[1], "1e-30");
  EXPECT_NEAR(o.x, std::sqrt(2.0), 4e-16);
}

// State changes between calls that the routine catches (detail 1011).
struct tamper {
  const char *what;
  int calls;  // entries before the change: 1 derivative pending, 3 path
  std::function<void(double *c, int64_t *ind)> change;
};
// Test names print the case by its description (not the bytes of the struct).
std::ostream &operator<<(std::ostream &os, const tamper &t) { return os << t.what; }

class C05axTamper : public ::testing::TestWithParam<tamper> {};

TEST_P(C05axTamper, ChangedStateIsCaught) {
  const tamper &t = GetParam();
  // x^3 - 2x - 5 from 0: the first continuation steps head for a turning
  // point, so the path phase lasts well beyond the third entry.
  auto f = [](double x) { return x * x * x - 2.0 * x - 5.0; };
  double c[state_len] = {}, x = 0.0, fx = 0.0, tol = 1e-10, scal = 1e-8;
  int64_t ir = 1, ind = 1, status = 0;
  c05test::errbuf eb;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  for (int k = 0; k < t.calls; ++k) {
    fx = f(x);
    c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
    ASSERT_NE(ind, 0);
  }
  fx = f(x);
  t.change(c, &ind);
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  EXPECT_EQ(status, 5) << t.what;
  EXPECT_EQ(ind, 0) << t.what;
  EXPECT_EQ(parse(eb.text).detail, 1011) << t.what;
}

INSTANTIATE_TEST_SUITE_P(
    Table, C05axTamper,
    ::testing::Values(tamper{"ind 4 where 3 was asked", 1, [](double *, int64_t *ind) { *ind = 4; }},
                      tamper{"phase out of range", 1, [](double *c, int64_t *) { c[slot::phase] = 9; }},
                      tamper{"derivative point moved", 1, [](double *c, int64_t *) { c[slot::trial] += 1; }},
                      tamper{"f0 zero", 1, [](double *c, int64_t *) { c[slot::f_start] = 0; }},
                      tamper{"branch 2", 3, [](double *c, int64_t *) { c[slot::branch] = 2; }},
                      tamper{"direction 0", 3, [](double *c, int64_t *) { c[slot::dir] = 0; }},
                      tamper{"step count negative", 3, [](double *c, int64_t *) { c[slot::nsteps] = -1; }},
                      tamper{"step bound NaN", 3, [](double *c, int64_t *) { c[slot::step_len] = nan; }},
                      tamper{"current value of the wrong sign", 3,
                             [](double *c, int64_t *) { c[slot::fi] = -c[slot::fi]; }},
                      tamper{"scal zero", 3, [](double *c, int64_t *) { c[slot::scale] = 0; }}));

TEST(C05ax, MovedXIsIgnoredOnReentry) {
  // The point being evaluated lives in the state: the caller's x is output.
  auto f = [](double x) { return std::tanh(x) - 0.5; };
  double c[state_len] = {}, x = -3.0, fx = 0.0, tol = 1e-12, scal = 0x1p-26;
  int64_t ir = 1, ind = 1, status = 0;
  c05test::errbuf eb;
  c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  while (ind != 0) {
    fx = f(x);
    x = 1e300;
    c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb.text, &status);
  }
  EXPECT_EQ(status, 0);
  EXPECT_NEAR(x, 0.5493061443340549, 1e-11);
}

}  // namespace
