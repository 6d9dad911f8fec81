// c05ax, the reverse-communication continuation: the checks in order, the
// request codes, zeros against mpmath references (problems on which Newton's
// method fails among them), every failure, and callers who re-enter wrongly
// or change the state array.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "c05/c05ax.h"
#include "record.h"

namespace {

using c05test::parse;
namespace slot = zem::c05ax;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

// One caller of c05axfn_: its arguments and state array between entries,
// and the requests of a solve, in order.
struct caller {
  double c[slot::state_len] = {}, x = 0.0, tol = 1e-10, scal = 1e-8;
  int64_t ir = 1, ind = 1, status = 0;
  char eb[zem::errbuf_len] = {};
  std::vector<int64_t> requests;
  void enter(double fx) { c05axfn_(nullptr, &x, &fx, &tol, &ir, &scal, c, &ind, eb, &status); }
  c05test::record rec() const { return parse(eb); }
  size_t evals() const { return requests.size(); }
};

caller solve(const std::function<double(double)> &f, double x, double tol = 1e-12, int64_t ir = 1,
             double scal = 0x1p-26, bool start_known = false) {
  caller k;
  k.x = x, k.tol = tol, k.ir = ir, k.scal = scal, k.ind = start_known ? -1 : 1;
  for (k.enter(start_known ? f(x) : 0.0); k.ind != 0; k.enter(f(k.x))) k.requests.push_back(k.ind);
  return k;
}

// The functions of tests/c05/data/continuation_zeros.txt.
const std::map<std::string, std::function<double(double)>> functions = {
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

// Each reference zero is found from its start point, for each error control,
// to within the tolerance the Brent core guarantees (the final bracket has
// half-width at most tol * max(wr |x|, wa), and x is one of its ends).  The
// starts include points from which Newton's method diverges (atan from 10,
// tanh - 1/2 from -3), overflows (exp from 0), leaves the domain (log from
// 10) or lands on another zero (sin from 1.5 goes to -4 pi).
TEST(C05ax, ReachesTheReferenceZeros) {
  std::ifstream in(ZEM_TEST_DATA "/continuation_zeros.txt");
  int n = 0;
  double worst = 0.0;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    std::string name;
    double start, zero;
    s >> name >> start >> zero;
    ++n;
    for (int64_t ir : {0, 1, 2}) {
      const double tol = 1e-10;
      const caller o = solve(functions.at(name), start, tol, ir);
      ASSERT_EQ(o.status, 0) << name << " ir " << ir;
      const double wr = ir == 1 ? 0.0 : 1.0, wa = ir == 2 ? 0.0 : 1.0;
      // With relative control at a zero at 0 the bound is the spacing there.
      const double bound = std::max(2.0 * tol * std::max(wr * std::fabs(zero), wa), 1e-300);
      EXPECT_LE(std::fabs(o.x - zero), bound) << name << " ir " << ir;
      if (zero != 0.0) worst = std::max(worst, std::fabs(o.x - zero) / std::fabs(zero));
    }
  }
  EXPECT_EQ(n, 9);
  RecordProperty("worst_relative_error", std::to_string(worst));
}

TEST(C05ax, RequestCodesAndExactZeros) {
  const caller o = solve(functions.at("cubic"), 0.0);
  ASSERT_EQ(o.status, 0);
  ASSERT_GE(o.requests.size(), 3u);
  EXPECT_EQ(o.requests[0], 2);
  EXPECT_EQ(o.requests[1], 3);
  for (size_t i = 2; i < o.requests.size(); ++i) EXPECT_EQ(o.requests[i], 4);
  // f(x0) passed on the first entry (ind = -1) saves exactly that call.
  const caller a = solve(functions.at("tanh_minus_half"), -3.0);
  const caller b = solve(functions.at("tanh_minus_half"), -3.0, 1e-12, 1, 0x1p-26, true);
  ASSERT_EQ(b.status, 0);
  EXPECT_EQ(a.x, b.x);
  EXPECT_EQ(a.evals(), b.evals() + 1);
  // Exact zeros end at once: at x0, and at x0 + scal.
  EXPECT_EQ(solve([](double x) { return x - 2.0; }, 2.0).evals(), 1u);
  const double s = 0x1p-20;
  const caller z = solve([s](double x) { return x == 1.0 + s ? 0.0 : x - 1.0 - s; }, 1.0, 1e-12, 1, s);
  EXPECT_EQ(z.status, 0);
  EXPECT_EQ(z.x, 1.0 + s);
  EXPECT_EQ(z.evals(), 2u);
}

// Argument checks: ind first (its admissible values depend on whether a
// request is outstanding), then tol and ir on every entry, then scal on an
// initial entry.  The client programs show the plain violations with their
// messages.
TEST(C05ax, ArgumentChecksReportTheFirstViolation) {
  struct {
    const char *what;
    int64_t ind;
    double x, tol;
    int64_t ir;
    double scal;
    int64_t status, detail;
    std::vector<std::string> values;
  } cases[] = {
      {"ind 4 without a solve", 4, 1.0, 1e-8, 0, 1e-8, 2, 1001, {"4"}},
      {"ind before tol", 7, 1.0, -1.0, 0, 1e-8, 2, 1001, {"7"}},
      {"tol zero", 1, 1.0, 0.0, 0, 1e-8, 1, 1003, {"0.0"}},
      {"tol NaN", -1, 1.0, nan, 0, 1e-8, 1, 1003, {"nan"}},
      {"tol before ir", 1, 1.0, -2.0, 9, 1e-8, 1, 1003, {"-2.0"}},
      {"ir negative", 1, 1.0, 1e-8, -1, 1e-8, 1, 1004, {"-1"}},
      {"ir 3 before scal", 1, 1.0, 1e-8, 3, 0.0, 1, 1004, {"3"}},
      {"scal zero", 1, 1.0, 1e-8, 0, 0.0, 1, 1005, {"1.0", "0.0"}},
      {"scal below the spacing at x", 1, 1e8, 1e-8, 0, 1e-10, 1, 1005, {"1e+08", "1e-10"}},
      {"scal NaN", 1, 1.0, 1e-8, 0, nan, 1, 1005, {"1.0", "nan"}},
      {"scal infinite", 1, 1.0, 1e-8, 0, inf, 1, 1005, {"1.0", "inf"}},
      {"x NaN", 1, nan, 1e-8, 0, 1e-8, 1, 1005, {"nan", "1e-08"}},
      {"x infinite", -1, -inf, 1e-8, 0, 1e-8, 1, 1005, {"-inf", "1e-08"}},
  };
  for (const auto &t : cases) {
    caller k;
    k.x = t.x, k.tol = t.tol, k.ir = t.ir, k.scal = t.scal, k.ind = t.ind;
    k.enter(1.0);
    EXPECT_EQ(k.status, t.status) << t.what;
    EXPECT_EQ(k.ind, 0) << t.what;
    const auto r = parse(k.eb);
    EXPECT_EQ(r.detail, t.detail) << t.what;
    EXPECT_EQ(r.values, t.values) << t.what;
    EXPECT_TRUE(k.x == t.x || (std::isnan(k.x) && std::isnan(t.x))) << t.what;  // x untouched
  }
}

TEST(C05ax, IndAndIrDuringASolve) {
  caller k;
  k.enter(0.0);
  ASSERT_EQ(k.ind, 2);
  // While a request is outstanding a bad ind uses the intermediate wording;
  // ind = 1 restarts a solve, always allowed.
  for (int64_t ind : {0, 5, -2, 1}) {
    caller j = k;
    j.ind = ind;
    j.enter(0.0);
    EXPECT_EQ(j.status, ind == 1 ? 0 : 2) << ind;
    EXPECT_EQ(j.ind, ind == 1 ? 2 : 0) << ind;
    EXPECT_EQ(parse(j.eb).detail, ind == 1 ? 0 : 1002) << ind;
  }
  // ir changed during a solve ends it; the next entry needs ind = -1 or 1.
  k.enter(-1.0);
  ASSERT_EQ(k.ind, 3);
  k.ir = 5;
  k.enter(-1.0);
  EXPECT_EQ(k.status, 1);
  EXPECT_EQ(k.ind, 0);
  k.ir = 1;
  k.ind = 3;
  k.enter(-1.0);
  EXPECT_EQ(k.status, 2);
  EXPECT_EQ(parse(k.eb).detail, 1001);
}

// Failures of the method: status, detail and the point returned in x.
TEST(C05ax, FailuresOfTheMethod) {
  const double s = 1e-8, d = 0x1p-26;
  using fn = std::function<double(double)>;
  const fn root2 = [](double x) { return x * x - 2.0; };
  // A number only at x0 = 1 and x0 +- scal: every step of both branches
  // gives NaN, down to the resolution of x.
  const fn only_here = [s](double x) { return (x == 1.0 || x == 1.0 + s || x == 1.0 - s) ? x : nan; };
  struct {
    const char *what;
    fn f;
    double x0, tol, scal;
    bool start_known;
    int64_t status, detail;
    double x, x_tol;
  } cases[] = {
      // f(+-scal) - f(0) = scal^2, far below the rounding of f.
      {"no significant derivative", root2, 0.0, 1e-10, s, false, 3, 1006, 0.0, 0.0},
      {"no derivative from NaN values", [](double x) { return x == 0.0 ? 1.0 : nan; }, 0, 1e-12, d, 0, 3, 1006, 0, 0},
      {"f(x0) not a number: no path", [](double) { return nan; }, 1.0, 1e-10, s, true, 4, 1007, 1.0, 0.0},
      {"no step away", only_here, 1.0, 1e-10, s, false, 4, 1007, 1.0, 0.0},
      // The path passes the minimum at 0 and rises both ways; x is the point
      // with the smallest |f|.  At a zero of even multiplicity that is the
      // zero, to within the rounding of f.
      {"path lost at a minimum of |f|", [](double x) { return x * x + 1.0; }, 1.0, 1e-12, d, 0, 5, 1008, 0.0, 1e-4},
      {"path lost at a double zero", [](double x) { return (x - 1) * (x - 1); }, 3.0, 1e-12, d, 0, 5, 1008, 1, 1e-6},
      // The derivative points straddle the pole: the core converges to it.
      {"final problem across a pole", [](double x) { return 1 / (x - 0.5); }, 0.5 - s / 2, 1e-12, s, 0, 6, 1009, 0.5,
       1e-8},
      // No double makes x^2 - 2 vanish: the core runs into the rounding limit.
      {"final problem beyond machine accuracy", root2, 3.0, 1e-30, d, false, 6, 1010, std::sqrt(2.0), 4e-16},
  };
  for (const auto &t : cases) {
    const caller o = solve(t.f, t.x0, t.tol, 1, t.scal, t.start_known);
    EXPECT_EQ(o.status, t.status) << t.what;
    EXPECT_EQ(o.rec().detail, t.detail) << t.what;
    EXPECT_NEAR(o.x, t.x, t.x_tol) << t.what;
  }
  const caller o = solve(root2, 0.0, 1e-10, 1, s);
  EXPECT_EQ(o.rec().values, (std::vector<std::string>{"0.0", "1e-08"}));
  EXPECT_EQ(o.evals(), 3u);
}

// State changes between calls that the routine catches (detail 1011).
TEST(C05ax, ChangedStateIsCaught) {
  struct {
    const char *what;
    int calls;  // entries before the change: 1 derivative pending, 3 path
    std::function<void(double *c, int64_t *ind)> change;
  } cases[] = {
      {"ind 4 where 3 was asked", 1, [](double *, int64_t *ind) { *ind = 4; }},
      {"phase out of range", 1, [](double *c, int64_t *) { c[slot::phase] = 9; }},
      {"derivative point moved", 1, [](double *c, int64_t *) { c[slot::trial] += 1; }},
      {"f0 zero", 1, [](double *c, int64_t *) { c[slot::f_start] = 0; }},
      {"branch 2", 3, [](double *c, int64_t *) { c[slot::branch] = 2; }},
      {"direction 0", 3, [](double *c, int64_t *) { c[slot::dir] = 0; }},
      {"step count negative", 3, [](double *c, int64_t *) { c[slot::nsteps] = -1; }},
      {"step bound NaN", 3, [](double *c, int64_t *) { c[slot::step_len] = nan; }},
      {"current value of the wrong sign", 3, [](double *c, int64_t *) { c[slot::fi] = -c[slot::fi]; }},
      {"scal zero", 3, [](double *c, int64_t *) { c[slot::scale] = 0; }},
  };
  // x^3 - 2x - 5 from 0: the first continuation steps head for a turning
  // point, so the path phase lasts well beyond the third entry.
  const auto &f = functions.at("cubic");
  for (const auto &t : cases) {
    caller k;
    k.enter(0.0);
    for (int j = 0; j < t.calls; ++j) {
      k.enter(f(k.x));
      ASSERT_NE(k.ind, 0);
    }
    const double fx = f(k.x);
    t.change(k.c, &k.ind);
    k.enter(fx);
    EXPECT_EQ(k.status, 5) << t.what;
    EXPECT_EQ(k.ind, 0) << t.what;
    EXPECT_EQ(parse(k.eb).detail, 1011) << t.what;
  }
}

TEST(C05ax, MovedXIsIgnoredOnReentry) {
  // The point being evaluated lives in the state: the caller's x is output.
  const auto &f = functions.at("tanh_minus_half");
  caller k;
  k.x = -3.0, k.tol = 1e-12, k.scal = 0x1p-26;
  for (k.enter(0.0); k.ind != 0;) {
    const double fx = f(k.x);
    k.x = 1e300;
    k.enter(fx);
  }
  EXPECT_EQ(k.status, 0);
  EXPECT_NEAR(k.x, 0.5493061443340549, 1e-11);
}

}  // namespace
