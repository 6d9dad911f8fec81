// g01fa: deviates against the mpmath tables, the relations between the tails,
// and the failures with their detail codes, at the engine level.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "g01/g01fa.h"
#include "tests/g01/reference_data.h"

namespace {

struct outcome {
  double value;
  int64_t ifail;
  std::string record;  // the message record up to its last 0x01
};

outcome g01fa(char tail, double p) {
  engine_data en{};
  y90haan_(&en);
  char errbuf[200];
  std::memset(errbuf, '#', sizeof errbuf);
  outcome o{-1.0, -99, {}};
  g01fafn_(&en, &tail, &p, &o.value, errbuf, &o.ifail, 1);
  if (o.ifail != 0) o.record.assign(errbuf, std::strrchr(errbuf, '\x01') + 1);
  return o;
}

bool same_bits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

const std::string data = ZEM_TEST_DATA "/g01fa_reference.txt";

// Against the exact inverse at the argument the routine forms (p, p, p/2,
// fl(p/2 + 1/2)): the kernel's own error, AS 241's approximation plus the
// rounding of its evaluation.
TEST(G01faAccuracy, KernelWithinFiveUlp) {
  for (const auto &r : zem::test::read_reference(data, true)) {
    const outcome o = g01fa(r.tail, r.input);
    ASSERT_EQ(o.ifail, 0);
    EXPECT_LE(zem::test::ulp_error(o.value, r.formula), 5.0) << r.tail << " p = " << r.input;
  }
}

// The published approximation itself (evaluated exactly) stays within 1.5
// units of the true inverse: the coefficients are the right ones.
TEST(G01faAccuracy, As241ApproximationWithinOneAndAHalfUlp) {
  for (const auto &r : zem::test::read_reference(data, true))
    EXPECT_LE(zem::test::ulp_error(r.as241, r.formula), 1.5) << r.tail << " p = " << r.input;
}

// 'L', 'U' and 'S' form their kernel arguments exactly, so the error against
// the exact deviate is the kernel's.  ('C' rounds p/2 + 1/2; see
// docs/g01fa.md.)
TEST(G01faAccuracy, ExactWithinFiveUlpExceptConfidence) {
  for (const auto &r : zem::test::read_reference(data, true)) {
    if (r.tail == 'C') continue;
    EXPECT_LE(zem::test::ulp_error(g01fa(r.tail, r.input).value, r.exact), 5.0) << r.tail << " p = " << r.input;
  }
}

TEST(G01faSpecial, Values) {
  struct special_case {
    char tail;
    double p;
    double expected;
    double tol;  // absolute; 0: bit for bit
  };
  const special_case cases[] = {
      {'L', 0.5, 0.0, 0.0},
      {'U', 0.5, -0.0, 0.0},
      {'S', 0.05, 1.959963984540054, 1e-15},
      {'C', 0.95, 1.959963984540054, 1e-15},
      {'s', 0.05, 1.959963984540054, 1e-15},
      {'c', 0.95, 1.959963984540054, 1e-15},
      {'L', 0.975, 1.959963984540054, 1e-15},
      {'u', 0.025, 1.959963984540054, 1e-15},
      {'L', 1e-300, -37.047096299361201, 1e-13},  // Q(1e-300) is finite
      {'C', 1e-300, 0.0, 0.0},                     // 1e-300/2 + 1/2 rounds to 1/2
  };
  for (const auto &c : cases) {
    const outcome o = g01fa(c.tail, c.p);
    EXPECT_EQ(o.ifail, 0) << c.tail << " " << c.p;
    if (c.tol == 0.0)
      EXPECT_TRUE(same_bits(o.value, c.expected)) << c.tail << " " << c.p << " gave " << o.value;
    else
      EXPECT_NEAR(o.value, c.expected, c.tol) << c.tail << " " << c.p;
  }
}

TEST(G01faSpecial, UpperIsMinusLowerBitForBit) {
  for (double p : {1e-300, 1e-20, 3e-11, 0.01, 0.075, 0.2, 0.5, 0.6, 0.925, 0.99, 1.0 - 0x1p-53}) {
    EXPECT_TRUE(same_bits(g01fa('U', p).value, -g01fa('L', p).value)) << p;
  }
}

TEST(G01faSpecial, SignificanceIsNonNegative) {
  for (double p : {1e-300, 0.01, 0.5, 0.99, 1.0 - 0x1p-53}) EXPECT_GE(g01fa('S', p).value, 0.0) << p;
}

TEST(G01faSpecial, NotANumberPassesBothChecks) {
  const outcome o = g01fa('L', std::nan(""));
  EXPECT_EQ(o.ifail, 0);
  EXPECT_TRUE(std::isnan(o.value));
}

struct failure_case {
  char tail;
  double p;
  int64_t ifail;
  const char *record;
};

TEST(G01faFailure, StatusDetailAndZeroResult) {
  const failure_case cases[] = {
      {'L', 0.0, 2, "\x01" "2\x01" "99998\x01" "0.0\x01"},
      {'U', -0.0, 2, "\x01" "2\x01" "99998\x01" "-0.0\x01"},
      {'S', -1.5, 2, "\x01" "2\x01" "99998\x01" "-1.5\x01"},
      {'C', 1.0, 2, "\x01" "2\x01" "89998\x01" "1.0\x01"},
      {'l', 2.5, 2, "\x01" "2\x01" "89998\x01" "2.5\x01"},
      {'u', 1.0, 2, "\x01" "2\x01" "89998\x01" "1.0\x01"},
      {'s', 0.0, 2, "\x01" "2\x01" "99998\x01" "0.0\x01"},
      {'c', 1e300, 2, "\x01" "2\x01" "89998\x01" "1e+300\x01"},
      {'X', 0.5, 1, "\x01" "1\x01" "1001\x01" "X\x01"},
      {'X', 0.0, 1, "\x01" "1\x01" "1001\x01" "X\x01"},  // tail first
      {'*', 1.0, 1, "\x01" "1\x01" "1001\x01" "*\x01"},
  };
  for (const auto &c : cases) {
    const outcome o = g01fa(c.tail, c.p);
    EXPECT_EQ(o.ifail, c.ifail) << c.tail << " " << c.p;
    EXPECT_EQ(o.value, 0.0) << c.tail << " " << c.p;
    EXPECT_EQ(o.record, c.record) << c.tail << " " << c.p;
  }
}

}  // namespace
