// g01ea: tail probabilities against the mpmath tables, the special values and
// the failure of an invalid tail, at the engine level.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "g01/g01ea.h"
#include "tests/g01/reference_data.h"

namespace {

struct outcome {
  double value;
  int64_t ifail;
  std::string record;  // the message record up to its last 0x01
};

outcome g01ea(char tail, double x) {
  engine_data en{};
  y90haan_(&en);
  char errbuf[200];
  std::memset(errbuf, '#', sizeof errbuf);
  outcome o{-1.0, -99, {}};
  g01eafn_(&en, &tail, &x, &o.value, errbuf, &o.ifail, 1);
  if (o.ifail != 0) o.record.assign(errbuf, std::strrchr(errbuf, '\x01') + 1);
  return o;
}

const std::string data = ZEM_TEST_DATA "/g01ea_reference.txt";

// Against the exact formula at the rounded argument fl(x c): the error of the
// platform's erfc/erf (and of halving a subnormal), a few units at most.
TEST(G01eaAccuracy, FormulaWithinThreeUlp) {
  for (const auto &r : zem::test::read_reference(data, true)) {
    const outcome o = g01ea(r.tail, r.input);
    ASSERT_EQ(o.ifail, 0);
    EXPECT_LE(zem::test::ulp_error(o.value, r.formula), 3.0) << r.tail << " x = " << r.input;
  }
}

// Against the exact probability: the rounding of x c (and c's own offset from
// 1/sqrt(2)), |d| <= 1.8 2^-53 relatively, perturbs erfc(z) by a factor
// (1 + s d) with s = |d ln erfc(z) / d ln z| <= 2 z^2 + 2.
TEST(G01eaAccuracy, ExactWithinArgumentRoundingBound) {
  for (const auto &r : zem::test::read_reference(data, true)) {
    const outcome o = g01ea(r.tail, r.input);
    const double z = std::fabs(r.input) * 0.7071067811865476;
    const double bound = 1.8 * (2.0 * z * z + 2.0) + 3.0;
    EXPECT_LE(zem::test::ulp_error(o.value, r.exact), bound) << r.tail << " x = " << r.input;
  }
}

// The central region, where no argument effect is large: within 2 units.
TEST(G01eaAccuracy, CentralRegionWithinTwoUlp) {
  for (const auto &r : zem::test::read_reference(data, true)) {
    if (std::fabs(r.input) > 0.5) continue;
    EXPECT_LE(zem::test::ulp_error(g01ea(r.tail, r.input).value, r.exact), 2.0) << r.tail << " x = " << r.input;
  }
}

struct special_case {
  char tail;
  double x;
  double expected;
  double rel_tol;  // 0: bit for bit
};

TEST(G01eaSpecial, Values) {
  const special_case cases[] = {
      {'L', 0.0, 0.5, 0.0},
      {'U', 0.0, 0.5, 0.0},
      {'S', 0.0, 1.0, 0.0},
      {'C', 0.0, 0.0, 0.0},
      // Tiny, not 0: through erfc.  The rounding of x c moves them by up to
      // about 3.6 z^2 units (z = x c), 2e-14 at x = 10 and 2e-13 at x = 30.
      {'U', 10.0, 7.61985302416052606597e-24, 2e-14},
      {'U', 30.0, 4.90671392714818705953e-198, 2e-13},
      {'L', -30.0, 4.90671392714818705953e-198, 2e-13},
      {'S', 30.0, 9.81342785429637411906e-198, 2e-13},
      {'C', 30.0, 1.0, 0.0},
      {'L', 40.0, 1.0, 0.0},
      {'U', 40.0, 0.0, 0.0},  // 3.7e-350 underflows
      {'S', 1.959963984540054, 0.05, 1e-15},
      {'C', 1.959963984540054, 0.95, 1e-15},
      {'l', -1.0, 0.158655253931457051, 1e-15},
      {'u', 1.0, 0.158655253931457051, 1e-15},
      {'s', 1.0, 0.317310507862914102, 1e-15},
      {'c', 1.0, 0.682689492137085898, 1e-15},
  };
  for (const auto &c : cases) {
    const outcome o = g01ea(c.tail, c.x);
    EXPECT_EQ(o.ifail, 0) << c.tail << " " << c.x;
    if (c.rel_tol == 0.0)
      EXPECT_EQ(o.value, c.expected) << c.tail << " " << c.x;
    else
      EXPECT_NEAR(o.value, c.expected, c.rel_tol * c.expected) << c.tail << " " << c.x;
  }
}

TEST(G01eaSpecial, TwoTailedAreEvenInX) {
  for (double x : {0.1, 0.7, 1.5, 3.0, 8.5, 26.0, 37.9}) {
    for (char t : {'S', 'C'}) {
      const double a = g01ea(t, x).value, b = g01ea(t, -x).value;
      EXPECT_EQ(std::memcmp(&a, &b, sizeof a), 0) << t << " " << x;
    }
  }
}

TEST(G01eaSpecial, NotANumberPassesThrough) {
  for (char t : {'L', 'U', 'S', 'C'}) {
    const outcome o = g01ea(t, std::nan(""));
    EXPECT_EQ(o.ifail, 0);
    EXPECT_TRUE(std::isnan(o.value));
  }
}

TEST(G01eaFailure, InvalidTailGivesStatusOneAndZero) {
  for (char t : {'X', ' ', 'm', '1', 'M'}) {
    const outcome o = g01ea(t, 1.5);
    EXPECT_EQ(o.ifail, 1);
    EXPECT_EQ(o.value, 0.0);
    EXPECT_EQ(o.record, std::string("\x01" "1\x01" "1001\x01") + t + "\x01") << t;
  }
}

TEST(G01eaFailure, EmptyTailIsInvalid) {
  engine_data en{};
  char errbuf[200];
  int64_t ifail = -99;
  double x = 1.0, v = -1.0;
  g01eafn_(&en, "L", &x, &v, errbuf, &ifail, 0);
  EXPECT_EQ(ifail, 1);
  EXPECT_EQ(v, 0.0);
}

}  // namespace
