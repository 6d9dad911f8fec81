// s30ac element by element and s30ca (binary options) against the
// references of tools/s30_reference.py; s30ac's bad elements.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "s30/s30aa.h"
#include "s30/s30ac.h"
#include "s30/s30ca.h"
#include "s30_data.h"

namespace {

// s30ac prices each element by the arithmetic of s30aa: bit for bit the
// same numbers as the grid routine (which the reference test checks).
TEST(S30ac, ElementsEqualTheGridRoutineBitForBit) {
  for (const auto &c : zem::test::read_s30_cases(ZEM_TEST_DATA "/s30aa_reference.txt")) {
    const int64_t m = c.x.size(), n = c.t.size(), one = 1;
    std::vector<double> grid(m * n), x, s, t, sigma, r, q, p(m * n);
    std::vector<int64_t> ivalid(m * n, -1);
    std::vector<char> kinds(m * n, c.kind == 'C' ? 'c' : 'p');  // lower case is accepted too
    for (int64_t j = 0; j < n; ++j)
      for (int64_t i = 0; i < m; ++i) {
        x.push_back(c.x[i]), s.push_back(c.s), t.push_back(c.t[j]);
        sigma.push_back(c.sigma), r.push_back(c.r), q.push_back(c.q);
      }
    engine_data en;
    y90haan_(&en);
    char errbuf[200];
    int64_t ifail = -1, mn = m * n;
    s30aafn_(&en, &c.kind, &m, &n, c.x.data(), &c.s, c.t.data(), &c.sigma, &c.r, &c.q, grid.data(), &m, &one,
             errbuf, &ifail, 1);
    ASSERT_EQ(ifail, 0);
    s30acfn_(&en, kinds.data(), &mn, x.data(), s.data(), t.data(), sigma.data(), r.data(), q.data(), p.data(),
             ivalid.data(), errbuf, &ifail, 1);
    ASSERT_EQ(ifail, 0);
    for (int64_t k = 0; k < mn; ++k) {
      EXPECT_EQ(p[k], grid[k]);
      EXPECT_EQ(ivalid[k], 0);
    }
  }
}

TEST(S30ac, BadElementsAreMarkedAndTheRestPriced) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
  struct row {
    char kind;
    double x, s, t, sigma, r, q;
    int64_t ivalid;
  } rows[] = {
      {'C', 100, 100, 1, 0.2, 0.05, 0, 0}, {'Z', 100, 100, 1, 0.2, 0.05, 0, 1}, {'P', nan, 100, 1, 0.2, 0.05, 0, 2},
      {'P', 100, inf, 1, 0.2, 0.05, 0, 3}, {'C', 100, 100, 0, 0.2, 0.05, 0, 4}, {'C', 100, 100, 1, -0.2, 0.05, 0, 5},
      {'C', 100, 100, 1, 0.2, -0.05, 0, 6}, {'C', 100, 100, 1, 0.2, 0.05, nan, 7}, {'P', -1, nan, 1, 0.2, 0.05, 0, 2},
  };
  const int64_t n = std::size(rows);
  std::vector<char> kinds;
  std::vector<double> x, s, t, sigma, r, q, p(n, -7.0);
  std::vector<int64_t> ivalid(n, -1);
  for (const row &w : rows) {
    kinds.push_back(w.kind), x.push_back(w.x), s.push_back(w.s), t.push_back(w.t);
    sigma.push_back(w.sigma), r.push_back(w.r), q.push_back(w.q);
  }
  engine_data en;
  y90haan_(&en);
  char errbuf[200];
  int64_t ifail = -1;
  s30acfn_(&en, kinds.data(), &n, x.data(), s.data(), t.data(), sigma.data(), r.data(), q.data(), p.data(),
           ivalid.data(), errbuf, &ifail, 1);
  EXPECT_EQ(ifail, 2);
  for (int64_t k = 0; k < n; ++k) {
    EXPECT_EQ(ivalid[k], rows[k].ivalid) << k;
    if (rows[k].ivalid) {
      EXPECT_EQ(p[k], 0.0) << k;
    }
  }
  EXPECT_NEAR(p[0], 10.450583572185565, 1e-12);  // the textbook at-the-money call
  const int64_t bad_n = -1;
  s30acfn_(&en, kinds.data(), &bad_n, x.data(), s.data(), t.data(), sigma.data(), r.data(), q.data(), p.data(),
           ivalid.data(), errbuf, &ifail, 1);
  EXPECT_EQ(ifail, 1);
}

// Binary prices are single products with no cancellation: within 1e-12
// relative wherever they exceed 1e-200.
TEST(S30ca, AgainstReferenceBothOrders) {
  const double k = 2.5;
  for (int64_t order : {1, 2})
    for (const auto &c : zem::test::read_s30_cases(ZEM_TEST_DATA "/s30ca_reference.txt", 1)) {
      const int64_t m = c.x.size(), n = c.t.size(), ld = order == 1 ? m : n;
      std::vector<double> p(m * n);
      engine_data en;
      y90haan_(&en);
      char errbuf[200];
      int64_t ifail = -1;
      s30cafn_(&en, &c.kind, &m, &n, c.x.data(), &c.s, c.t.data(), &c.sigma, &c.r, &c.q, &k, p.data(), &ld, &order,
               errbuf, &ifail, 1);
      ASSERT_EQ(ifail, 0);
      for (int64_t j = 0; j < n; ++j)
        for (int64_t i = 0; i < m; ++i) {
          const double ref = c.values[i + j * m];
          if (!(ref > 1e-200)) continue;
          const double got = p[order == 1 ? i + j * ld : i * ld + j];
          EXPECT_LE(std::fabs(got - ref) / ref, 1e-12) << c.kind << " x " << c.x[i] << " t " << c.t[j];
        }
    }
}

TEST(S30ca, PayoffChecks) {
  const char kind = 'C';
  const int64_t m = 1, n = 1, ld = 1, order = 1;
  const double x = 100, s = 100, t = 1, sigma = 0.2, r = 0.01, q = 0;
  double p = -7.0;
  struct {
    double k;
    int64_t ifail;
  } cases[] = {{-1.0, 10}, {std::numeric_limits<double>::quiet_NaN(), 10}, {1e200, 10}, {0.0, 0}};
  for (const auto &w : cases) {
    engine_data en;
    y90haan_(&en);
    char errbuf[200];
    int64_t ifail = -1;
    s30cafn_(&en, &kind, &m, &n, &x, &s, &t, &sigma, &r, &q, &w.k, &p, &ld, &order, errbuf, &ifail, 1);
    EXPECT_EQ(ifail, w.ifail) << w.k;
  }
  EXPECT_EQ(p, 0.0);  // k = 0 pays nothing
}

}  // namespace
