// c05av, the reverse-communication search, driven as a caller would drive it:
// argument checks in order, the step rule (cut at the bounds, reversal,
// refinements by -0.1, failure after the fourth sweep), NaN values, and
// callers who re-enter wrongly or change the state array.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "c05/c05av.h"
#include "record.h"

namespace {

using c05test::parse;
namespace slot = zem::c05av;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

// One caller of c05avfn_: its arguments and state array between entries,
// and the points at which a search asked for f, in order.
struct caller {
  double c[slot::state_len] = {}, x = 0.0, y = 0.0, h = 0.1, lo = -1.0, hi = 1.0;
  char eb[zem::errbuf_len] = {};
  int64_t ind = 1, status = 0;
  std::vector<double> points;
  void enter(double fx) { c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb, &status); }
  c05test::record rec() const { return parse(eb); }
};

// A complete search; with start_known the first entry passes f(x) (ind = -1).
caller search(const std::function<double(double)> &f, double x, double h, double lo, double hi,
              bool start_known = false) {
  caller k;
  k.x = x, k.h = h, k.lo = lo, k.hi = hi, k.ind = start_known ? -1 : 1;
  for (k.enter(start_known ? f(x) : 0.0); k.ind != 0; k.enter(f(k.x))) k.points.push_back(k.x);
  return k;
}

// The edge cases of the checks, and their order; the client programs show
// the plain violations with their messages.
TEST(C05av, ArgumentChecksReportTheFirstViolation) {
  struct {
    const char *what;
    double x, h, lo, hi;
    int64_t detail;
    std::vector<std::string> values;
  } cases[] = {
      {"zero-width interval", 0.0, 0.1, 0.0, 0.0, 1002, {"0.0", "0.0"}},
      {"NaN bound", 0.0, 0.1, nan, 1.0, 1002, {"nan", "1.0"}},
      {"order: bounds before x", 7.0, nan, 1.0, 0.0, 1002, {"1.0", "0.0"}},
      {"x above boundu", 2.0, 0.1, 0.0, 1.0, 1003, {"2.0", "0.0", "1.0"}},
      {"x infinite", inf, 0.1, 0.0, 1.0, 1003, {"inf", "0.0", "1.0"}},
      {"h NaN", 0.5, nan, 0.0, 1.0, 1004, {"0.5", "nan", "0.0", "1.0"}},
      {"h infinite", 0.5, inf, 0.0, 1.0, 1004, {"0.5", "inf", "0.0", "1.0"}},
      {"h below the spacing at x", 1.0, 1e-17, 0.0, 2.0, 1005, {"1.0", "1e-17"}},
      {"h half the spacing at x: x+h rounds to x", 1.0, 0x1p-53, 0.0, 2.0, 1005, {"1.0", "1.1102230246251565e-16"}},
      {"x infinite with infinite bound", inf, 1.0, 0.0, inf, 1005, {"inf", "1.0"}},
  };
  for (const auto &t : cases) {
    for (bool known : {false, true}) {
      const caller o = search([](double) { return 1.0; }, t.x, t.h, t.lo, t.hi, known);
      EXPECT_EQ(o.status, 1) << t.what;
      EXPECT_EQ(o.rec().detail, t.detail) << t.what;
      EXPECT_EQ(o.rec().values, t.values) << t.what;
      EXPECT_TRUE(o.points.empty()) << t.what;
    }
  }
}

TEST(C05av, BadIndIsRejectedOnEveryEntry) {
  for (int64_t bad : {0, 4, -2, 5, 99}) {
    caller k;
    k.ind = bad;
    k.enter(1.0);
    EXPECT_EQ(k.status, 2);
    EXPECT_EQ(k.ind, 0);
    const auto r = parse(k.eb);
    EXPECT_EQ(r.detail, 1001);
    EXPECT_EQ(r.values, std::vector<std::string>{std::to_string(bad)});
  }
}

// Searches that succeed: the points asked for, the bracket returned, and
// f(y) left in c(1) for the Brent core.  Each is run again with f(x0)
// passed on the first entry (ind = -1), which saves exactly that call.
TEST(C05av, TheWalkAndItsBracket) {
  struct {
    const char *what;
    std::function<double(double)> f;
    double x0, h, lo, hi, x, y;
    size_t npoints;
    std::vector<double> points;  // the first points asked for
  } cases[] = {
      {"walk with the step", [](double x) { return x - 0.37; }, 0.0, 0.1, -1.0, 1.0, 0.4, 0.3, 5,
       {0.0, 0.1, 0.2, 0.3, 0.4}},
      {"step cut at the bound, then the walk reverses", [](double x) { return x + 0.25; }, 0.0, 0.3, -1.0, 0.5,
       -0.3, 0.0, 4, {0.0, 0.3, 0.5, -0.3}},
      {"start at a bound walks inward only", [](double x) { return x - 0.15; }, 1.0, 0.5, 0.0, 1.0, 0.0, 0.5, 3,
       {1.0, 0.5, 0.0}},
      // Every point of the first sweep sees f > 0; the second (step -0.01)
      // starts with the empty downward walk from the lower bound.
      {"two zeros in one mesh cell: the refined sweep", [](double x) { return (x - 0.525) * (x - 0.575); }, 0.0,
       0.1, 0.0, 1.0, 0.53, 0.52, 64, {0.0, 0.1}},
      // NaN at 0.4 between values of opposite sign: no bracket there.
      {"a NaN value never ends a bracket",
       [](double x) { return std::fabs(x - 0.4) < 1e-9 ? nan : x - 0.345; }, 0.0, 0.1, 0.0, 1.0, 0.35, 0.34, 46,
       {0.0, 0.1}},
      {"exact zero at the start", [](double x) { return x - 0.5; }, 0.5, 0.1, -1.0, 1.0, 0.5, 0.5, 1, {0.5}},
      {"exact zero on the mesh", [](double x) { return x - 0.5; }, 0.0, 0.25, -1.0, 1.0, 0.5, 0.5, 3,
       {0.0, 0.25, 0.5}},
      {"infinite bounds", [](double x) { return x - 42.5; }, 0.0, 1.0, -inf, inf, 43.0, 42.0, 44, {0.0, 1.0}},
  };
  for (const auto &t : cases) {
    for (bool known : {false, true}) {
      const caller o = search(t.f, t.x0, t.h, t.lo, t.hi, known);
      ASSERT_EQ(o.status, 0) << t.what;
      EXPECT_NEAR(o.x, t.x, 1e-15) << t.what;
      EXPECT_NEAR(o.y, t.y, 1e-15) << t.what;
      EXPECT_EQ(o.c[slot::f_prev], t.f(o.y)) << t.what;
      ASSERT_EQ(o.points.size() + known, t.npoints) << t.what;
      for (size_t i = known; i < t.points.size(); ++i) EXPECT_NEAR(o.points[i - known], t.points[i], 1e-15) << t.what;
      if (!o.points.empty()) {
        EXPECT_EQ(o.x, o.points.back()) << t.what;
      }
    }
  }
}

TEST(C05av, SearchesThatFindNoSignChange) {
  // f = 1 from 0 with h = 0.5: x0; then 2+2 points with 0.5; 20+20 with
  // 0.05; the cap of 100 each way with 0.005 and with 0.0005.  h = 3e-16
  // moves x = 1, h/10 does not: one sweep only.
  struct {
    const char *what;
    double f, x0, h, lo, hi;
    size_t npoints;
  } cases[] = {{"four sweeps", 1.0, 0.0, 0.5, -1.0, 1.0, 445},
               {"NaN everywhere", nan, 0.0, 0.5, -1.0, 1.0, 445},
               {"refined step that cannot move x", 1.0, 1.0, 3e-16, 0.0, 2.0, 201}};
  for (const auto &t : cases) {
    const caller o = search([&](double) { return t.f; }, t.x0, t.h, t.lo, t.hi);
    EXPECT_EQ(o.status, 3) << t.what;
    EXPECT_EQ(o.rec().detail, 1006) << t.what;
    EXPECT_TRUE(o.rec().values.empty()) << t.what;
    EXPECT_EQ(o.x, t.x0) << t.what;  // back at the start for a restart
    EXPECT_EQ(o.points.size(), t.npoints) << t.what;
  }
  // Each refined sweep starts in the other direction.
  const caller o = search([](double) { return 1.0; }, 0.0, 0.5, -1.0, 1.0);
  EXPECT_EQ(o.points[1], 0.5);
  EXPECT_EQ(o.points[5], -0.05);
  EXPECT_DOUBLE_EQ(o.points[45], 0.005);
  EXPECT_DOUBLE_EQ(o.points[245], -0.0005);
}

// Re-entries that the state does not allow: each ends the search with
// detail 1007 and ind = 0.
TEST(C05av, ChangedStateIsCaught) {
  struct {
    const char *what;
    std::function<void(double *c, int64_t *ind)> change;
  } cases[] = {{"ind 2 where 3 was asked", [](double *, int64_t *ind) { *ind = 2; }},
               {"request cleared", [](double *c, int64_t *) { c[slot::request] = 0; }},
               {"refinement counter 7", [](double *c, int64_t *) { c[slot::refine] = 7; }},
               {"side 0.5", [](double *c, int64_t *) { c[slot::side] = 0.5; }},
               {"step count beyond the cap", [](double *c, int64_t *) { c[slot::nsteps] = 1e6; }},
               {"start NaN", [](double *c, int64_t *) { c[slot::start] = nan; }},
               {"step zero", [](double *c, int64_t *) { c[slot::step0] = 0; }},
               {"bounds crossed", [](double *c, int64_t *) { c[slot::lower] = 5; }},
               {"point outside", [](double *c, int64_t *) { c[slot::current] = 3; }}};
  for (const auto &t : cases) {
    caller k;
    k.enter(0.0);
    k.enter(1.0);  // f(x0)
    ASSERT_EQ(k.ind, 3);
    t.change(k.c, &k.ind);
    k.enter(1.0);
    EXPECT_EQ(k.status, 3) << t.what;
    EXPECT_EQ(k.ind, 0) << t.what;
    EXPECT_EQ(parse(k.eb).detail, 1007) << t.what;
  }
  // Re-entry after a search has ended with a sign change.
  caller k;
  for (double fx : {0.0, 1.0, -1.0}) k.enter(fx);
  ASSERT_EQ(k.ind, 0);
  k.ind = 3;
  k.enter(-1.0);
  EXPECT_EQ(k.status, 3);
  EXPECT_EQ(parse(k.eb).detail, 1007);
}

TEST(C05av, MovedXIsIgnoredOnReentry) {
  // The point being evaluated lives in the state: a caller who moves x
  // between calls does not move the walk.
  caller k;
  k.enter(0.0);
  k.enter(-1.0);
  ASSERT_EQ(k.x, 0.1);
  k.x = 0.77;
  k.enter(-1.0);
  EXPECT_EQ(k.x, 0.2);
}

}  // namespace
