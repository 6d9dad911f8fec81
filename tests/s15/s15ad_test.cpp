// s15ad and s15ae: the error functions against the mpmath tables and at
// their special values, at the engine level.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "s15/s15ad.h"
#include "s15/s15ae.h"
#include "tests/g01/reference_data.h"

namespace {

double s15ad(double x) {
  engine_data en{};
  char errbuf[200];
  int64_t ifail = -99;
  double y = -1.0;
  s15adfn_(&en, &x, &y, errbuf, &ifail);
  EXPECT_EQ(ifail, 0);
  return y;
}

double s15ae(double x) {
  engine_data en{};
  char errbuf[200];
  int64_t ifail = -99;
  double y = -1.0;
  s15aefn_(&en, &x, &y, errbuf, &ifail);
  EXPECT_EQ(ifail, 0);
  return y;
}

const std::string dir = ZEM_TEST_DATA "/";

// The platform's erfc and erf: a few units in the last place.
TEST(S15adAccuracy, WithinThreeUlp) {
  for (const auto &r : zem::test::read_reference(dir + "s15ad_reference.txt", false))
    EXPECT_LE(zem::test::ulp_error(s15ad(r.input), r.exact), 3.0) << "x = " << r.input;
}

TEST(S15aeAccuracy, WithinThreeUlp) {
  for (const auto &r : zem::test::read_reference(dir + "s15ae_reference.txt", false))
    EXPECT_LE(zem::test::ulp_error(s15ae(r.input), r.exact), 3.0) << "x = " << r.input;
}

TEST(S15adSpecial, Values) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(s15ad(0.0), 1.0);
  EXPECT_EQ(s15ad(inf), 0.0);
  EXPECT_EQ(s15ad(-inf), 2.0);
  EXPECT_EQ(s15ad(-30.0), 2.0);
  EXPECT_GT(s15ad(27.0), 0.0);  // 5.2e-319, subnormal but not 0
  EXPECT_EQ(s15ad(27.5), 0.0);  // 2.5e-331 underflows
  EXPECT_TRUE(std::isnan(s15ad(std::nan(""))));
}

TEST(S15aeSpecial, ValuesAndOddness) {
  EXPECT_EQ(s15ae(0.0), 0.0);
  EXPECT_TRUE(std::signbit(s15ae(-0.0)));
  EXPECT_EQ(s15ae(6.0), 1.0);
  EXPECT_EQ(s15ae(-std::numeric_limits<double>::infinity()), -1.0);
  EXPECT_DOUBLE_EQ(s15ae(1e-300), 1e-300 * 1.1283791670955126);  // 2 x / sqrt(pi)
  for (double x : {1e-10, 0.3, 1.7, 4.2}) EXPECT_EQ(s15ae(-x), -s15ae(x)) << x;
}

}  // namespace
