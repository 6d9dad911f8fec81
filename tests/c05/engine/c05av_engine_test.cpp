// c05av, the reverse-communication search, driven as a caller would drive it:
// argument checks in order, the step rule (cut at the bounds, reversal,
// refinements by -0.1, failure after the fourth sweep), NaN values, and
// callers who re-enter wrongly or change the state array.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <ostream>
#include <limits>
#include <vector>

#include "c05/c05av.h"
#include "record.h"

namespace {

using c05test::parse;
using zem::c05av::state_len;
namespace slot = zem::c05av;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

struct outcome {
  int64_t status = 0;
  c05test::record rec;
  double x = 0, y = 0, fx = 0, fy = 0;
  std::vector<double> points;  // every point at which f was asked for, in order
};

// A complete search from x with step h in [lo, hi]; with start_known the
// first entry passes f(x) (ind = -1).
outcome search(const std::function<double(double)> &f, double x, double h, double lo, double hi,
               bool start_known = false) {
  outcome o;
  double c[state_len] = {};
  c05test::errbuf eb;
  double y = 0.0, fx = start_known ? f(x) : 0.0;
  int64_t ind = start_known ? -1 : 1;
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &o.status);
  while (ind != 0) {
    o.points.push_back(x);
    fx = f(x);
    c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &o.status);
  }
  o.rec = parse(eb.text);
  o.x = x;
  o.y = y;
  o.fx = fx;
  o.fy = c[slot::f_prev];
  return o;
}

// Argument checks, in their order: the first violated one is reported, with
// its values, before f is ever asked for.
struct bad_args {
  const char *what;
  double x, h, lo, hi;
  int64_t detail;
  std::vector<const char *> values;
};
// Test names print the case by its description (not the bytes of the struct).
std::ostream &operator<<(std::ostream &os, const bad_args &t) { return os << t.what; }

class C05avChecks : public ::testing::TestWithParam<bad_args> {};

TEST_P(C05avChecks, FirstViolationReported) {
  const bad_args &t = GetParam();
  for (bool known : {false, true}) {
    const outcome o = search([](double) { return 1.0; }, t.x, t.h, t.lo, t.hi, known);
    EXPECT_EQ(o.status, 1) << t.what;
    EXPECT_EQ(o.rec.detail, t.detail) << t.what;
    ASSERT_EQ(o.rec.values.size(), t.values.size()) << t.what;
    for (size_t i = 0; i < t.values.size(); ++i) EXPECT_EQ(o.rec.values[i], t.values[i]) << t.what;
    EXPECT_TRUE(o.points.empty()) << t.what;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, C05avChecks,
    ::testing::Values(
        bad_args{"boundl > boundu", 0.5, 0.1, 1.0, 0.0, 1002, {"1.0", "0.0"}},
        bad_args{"zero-width interval", 0.0, 0.1, 0.0, 0.0, 1002, {"0.0", "0.0"}},
        bad_args{"NaN bound", 0.0, 0.1, nan, 1.0, 1002, {"nan", "1.0"}},
        bad_args{"order: bounds before x", 7.0, nan, 1.0, 0.0, 1002, {"1.0", "0.0"}},
        bad_args{"x above boundu", 2.0, 0.1, 0.0, 1.0, 1003, {"2.0", "0.0", "1.0"}},
        bad_args{"x NaN", nan, 0.1, 0.0, 1.0, 1003, {"nan", "0.0", "1.0"}},
        bad_args{"x infinite", inf, 0.1, 0.0, 1.0, 1003, {"inf", "0.0", "1.0"}},
        bad_args{"x+h and x-h outside", 0.5, 2.0, 0.0, 1.0, 1004, {"0.5", "2.0", "0.0", "1.0"}},
        bad_args{"h NaN", 0.5, nan, 0.0, 1.0, 1004, {"0.5", "nan", "0.0", "1.0"}},
        bad_args{"h infinite", 0.5, inf, 0.0, 1.0, 1004, {"0.5", "inf", "0.0", "1.0"}},
        bad_args{"h zero", 0.5, 0.0, 0.0, 1.0, 1005, {"0.5", "0.0"}},
        bad_args{"h below the spacing at x", 1.0, 1e-17, 0.0, 2.0, 1005, {"1.0", "1e-17"}},
        bad_args{"x infinite with infinite bound", inf, 1.0, 0.0, inf, 1005, {"inf", "1.0"}}));

TEST(C05av, BadIndIsRejectedOnEveryEntry) {
  for (int64_t bad : {0, 4, -2, 5, 99}) {
    double c[state_len] = {}, x = 0.0, y = 0.0, fx = 1.0, h = 0.1, lo = -1.0, hi = 1.0;
    c05test::errbuf eb;
    int64_t ind = bad, status = 0;
    c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(ind, 0);
    const auto r = parse(eb.text);
    EXPECT_EQ(r.detail, 1001);
    ASSERT_EQ(r.values.size(), 1u);
    EXPECT_EQ(r.values[0], std::to_string(bad));
  }
}

TEST(C05av, WalksWithTheStepUntilTheSignChanges) {
  const outcome o = search([](double x) { return x - 0.37; }, 0.0, 0.1, -1.0, 1.0);
  ASSERT_EQ(o.status, 0);
  const std::vector<double> want = {0.0, 0.1, 0.2, 0.30000000000000004, 0.4};
  EXPECT_EQ(o.points, want);
  EXPECT_EQ(o.x, 0.4);
  EXPECT_EQ(o.y, 0.30000000000000004);
  EXPECT_EQ(o.fy, 0.30000000000000004 - 0.37);  // f(y) left in c(1) for the core
}

TEST(C05av, StepIsCutAtTheBoundThenTheWalkReverses) {
  const outcome o = search([](double x) { return x + 0.25; }, 0.0, 0.3, -1.0, 0.5);
  ASSERT_EQ(o.status, 0);
  const std::vector<double> want = {0.0, 0.3, 0.5, -0.3};
  EXPECT_EQ(o.points, want);
  EXPECT_EQ(o.x, -0.3);
  EXPECT_EQ(o.y, 0.0);  // the reverse walk compares with f(x0)
}

TEST(C05av, KnownStartValueSavesOneCall) {
  auto f = [](double x) { return x + 0.25; };
  const outcome a = search(f, 0.0, 0.3, -1.0, 0.5, false);
  const outcome b = search(f, 0.0, 0.3, -1.0, 0.5, true);
  ASSERT_EQ(b.status, 0);
  EXPECT_EQ(b.points.size() + 1, a.points.size());
  EXPECT_EQ(a.x, b.x);
  EXPECT_EQ(a.y, b.y);
}

TEST(C05av, StartAtABoundWalksInwardOnly) {
  const outcome o = search([](double x) { return x - 0.15; }, 1.0, 0.5, 0.0, 1.0);
  ASSERT_EQ(o.status, 0);
  // h points out of the interval: that walk is empty, the reverse one finds
  // the change between 0.5 and 0.0.
  const std::vector<double> want = {1.0, 0.5, 0.0};
  EXPECT_EQ(o.points, want);
}

TEST(C05av, RefinedSweepFindsTwoZerosInsideOneMeshCell) {
  // Zeros at 0.525 and 0.575: every point of the first sweep (step 0.1) sees
  // f > 0.  The second sweep (step -0.01) starts with the empty downward walk
  // from the lower bound, then walks up.
  const outcome o = search([](double x) { return (x - 0.525) * (x - 0.575); }, 0.0, 0.1, 0.0, 1.0);
  ASSERT_EQ(o.status, 0);
  EXPECT_NEAR(o.x, 0.53, 1e-15);
  EXPECT_NEAR(o.y, 0.52, 1e-15);
  EXPECT_EQ(o.points.size(), 1u + 10u + 53u);
}

TEST(C05av, FourSweepsWithoutSignChangeFail) {
  const outcome o = search([](double) { return 1.0; }, 0.0, 0.5, -1.0, 1.0);
  EXPECT_EQ(o.status, 3);
  EXPECT_EQ(o.rec.detail, 1006);
  EXPECT_TRUE(o.rec.values.empty());
  EXPECT_EQ(o.x, 0.0);  // back at the start for a restart
  // x0; then 2+2 points with 0.5; 20+20 with 0.05; the cap of 100 each way
  // with 0.005 and with 0.0005.
  EXPECT_EQ(o.points.size(), 1u + 4u + 40u + 200u + 200u);
  // Each refined sweep starts in the other direction.
  EXPECT_EQ(o.points[1], 0.5);
  EXPECT_EQ(o.points[5], -0.05);
  EXPECT_DOUBLE_EQ(o.points[45], 0.005);
  EXPECT_DOUBLE_EQ(o.points[245], -0.0005);
}

TEST(C05av, RefinedStepThatCannotMoveXFails) {
  // h = 3e-16 moves x = 1, h/10 does not: the search ends after one sweep.
  const outcome o = search([](double) { return 1.0; }, 1.0, 3e-16, 0.0, 2.0);
  EXPECT_EQ(o.status, 3);
  EXPECT_EQ(o.rec.detail, 1006);
  EXPECT_EQ(o.points.size(), 1u + 200u);
}

TEST(C05av, ExactZeroEndsTheSearch) {
  const outcome at_start = search([](double x) { return x; }, 0.0, 0.1, -1.0, 1.0);
  EXPECT_EQ(at_start.status, 0);
  EXPECT_EQ(at_start.points.size(), 1u);
  EXPECT_EQ(at_start.x, 0.0);
  EXPECT_EQ(at_start.y, 0.0);
  const outcome on_mesh = search([](double x) { return x - 0.5; }, 0.0, 0.25, -1.0, 1.0);
  EXPECT_EQ(on_mesh.status, 0);
  EXPECT_EQ(on_mesh.x, 0.5);
  EXPECT_EQ(on_mesh.y, 0.5);
}

TEST(C05av, NanValuesNeverEndABracket) {
  // f is NaN at 0.4, between the values of opposite sign at 0.3 and 0.5:
  // the first sweep cannot pair them; the refined sweep finds 0.34/0.35.
  auto f = [](double x) { return std::fabs(x - 0.4) < 1e-9 ? nan : x - 0.345; };
  const outcome o = search(f, 0.0, 0.1, 0.0, 1.0);
  ASSERT_EQ(o.status, 0);
  EXPECT_FALSE(std::isnan(f(o.x)));
  EXPECT_FALSE(std::isnan(o.fy));
  EXPECT_LE(std::min(o.x, o.y), 0.345);
  EXPECT_GE(std::max(o.x, o.y), 0.345);
  // f NaN everywhere: no sign anywhere, the search fails.
  const outcome all = search([](double) { return nan; }, 0.0, 0.5, -1.0, 1.0);
  EXPECT_EQ(all.status, 3);
}

TEST(C05av, InfiniteBoundsAreWalkedWithinTheCap) {
  const outcome o = search([](double x) { return x - 42.5; }, 0.0, 1.0, -inf, inf);
  ASSERT_EQ(o.status, 0);
  EXPECT_EQ(o.x, 43.0);
  EXPECT_EQ(o.y, 42.0);
}

// Re-entries that the state does not allow: each ends the search with
// detail 1007 and ind = 0.
struct tamper {
  const char *what;
  std::function<void(double *c, int64_t *ind)> change;
};
// Test names print the case by its description (not the bytes of the struct).
std::ostream &operator<<(std::ostream &os, const tamper &t) { return os << t.what; }

class C05avTamper : public ::testing::TestWithParam<tamper> {};

TEST_P(C05avTamper, ChangedStateIsCaught) {
  double c[state_len] = {}, x = 0.0, y = 0.0, fx = 0.0, h = 0.1, lo = -1.0, hi = 1.0;
  c05test::errbuf eb;
  int64_t ind = 1, status = 0;
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  fx = 1.0;  // f(x0)
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  ASSERT_EQ(ind, 3);
  fx = 1.0;
  GetParam().change(c, &ind);
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  EXPECT_EQ(status, 3) << GetParam().what;
  EXPECT_EQ(ind, 0) << GetParam().what;
  EXPECT_EQ(parse(eb.text).detail, 1007) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Table, C05avTamper,
    ::testing::Values(tamper{"ind 2 where 3 was asked", [](double *, int64_t *ind) { *ind = 2; }},
                      tamper{"request cleared", [](double *c, int64_t *) { c[slot::request] = 0; }},
                      tamper{"refinement counter 7", [](double *c, int64_t *) { c[slot::refine] = 7; }},
                      tamper{"side 0.5", [](double *c, int64_t *) { c[slot::side] = 0.5; }},
                      tamper{"step count beyond the cap", [](double *c, int64_t *) { c[slot::nsteps] = 1e6; }},
                      tamper{"start NaN", [](double *c, int64_t *) { c[slot::start] = nan; }},
                      tamper{"step zero", [](double *c, int64_t *) { c[slot::step0] = 0; }},
                      tamper{"bounds crossed", [](double *c, int64_t *) { c[slot::lower] = 5; }},
                      tamper{"point outside", [](double *c, int64_t *) { c[slot::current] = 3; }}));

TEST(C05av, ReentryAfterTheEndIsCaught) {
  double c[state_len] = {}, x = 0.0, y = 0.0, fx = 0.0, h = 0.1, lo = -1.0, hi = 1.0;
  c05test::errbuf eb;
  int64_t ind = -1, status = 0;
  fx = 0.0;  // exact zero at the start: done at once
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  ASSERT_EQ(ind, 0);
  ind = 3;
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  EXPECT_EQ(status, 3);
  EXPECT_EQ(parse(eb.text).detail, 1007);
}

TEST(C05av, MovedXIsIgnoredOnReentry) {
  // The point being evaluated lives in the state: a caller who moves x
  // between calls does not move the walk.
  double c[state_len] = {}, x = 0.0, y = 0.0, fx = 0.0, h = 0.1, lo = -1.0, hi = 1.0;
  c05test::errbuf eb;
  int64_t ind = 1, status = 0;
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  fx = -1.0;
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  ASSERT_EQ(x, 0.1);
  x = 0.77;
  fx = -1.0;
  c05avfn_(nullptr, &x, &fx, &h, &lo, &hi, &y, c, &ind, eb.text, &status);
  EXPECT_EQ(x, 0.2);
}

}  // namespace
