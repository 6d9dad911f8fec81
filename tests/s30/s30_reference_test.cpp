// s30aa and s30ab against the high-precision references of
// tools/s30_reference.py, in both storage orders.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "s30/s30aa.h"
#include "s30/s30ab.h"
#include "s30_data.h"

namespace {

const char *const names[12] = {"price", "delta", "gamma", "vega",  "theta", "rho",
                               "vanna", "charm", "speed", "colour", "zomma", "vomma"};

std::vector<zem::test::s30_case> cases() {
  static const auto c = zem::test::read_s30_cases(ZEM_TEST_DATA "/s30aa_reference.txt");
  return c;
}

double rel(double a, double b) { return b == 0.0 ? std::fabs(a) : std::fabs(a - b) / std::fabs(b); }

struct grid_run {
  std::vector<double> out[12];
};

// Runs s30ab (and s30aa) on a case, in the given order; out[k] column by
// column whatever the order.
grid_run run(const zem::test::s30_case &c, int64_t order, bool check_aa) {
  const int64_t m = c.x.size(), n = c.t.size();
  const int64_t ld = (order == 1 ? m : n) + 2;  // a leading dimension with a gap
  std::vector<double> a[12];
  for (auto &v : a) v.assign(ld * (order == 1 ? n : m), -7.0);
  engine_data en;
  y90haan_(&en);
  char errbuf[200];
  int64_t ifail = -1;
  s30abfn_(&en, &c.kind, &m, &n, c.x.data(), &c.s, c.t.data(), &c.sigma, &c.r, &c.q, a[0].data(), &ld,
           a[1].data(), a[2].data(), a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(), a[8].data(),
           a[9].data(), a[10].data(), a[11].data(), &order, errbuf, &ifail, 1);
  EXPECT_EQ(ifail, 0);
  std::vector<double> paa(ld * (order == 1 ? n : m), -7.0);
  if (check_aa) {
    s30aafn_(&en, &c.kind, &m, &n, c.x.data(), &c.s, c.t.data(), &c.sigma, &c.r, &c.q, paa.data(), &ld, &order,
             errbuf, &ifail, 1);
    EXPECT_EQ(ifail, 0);
  }
  grid_run g;
  for (int k = 0; k < 12; ++k) {
    for (int64_t j = 0; j < n; ++j)
      for (int64_t i = 0; i < m; ++i) {
        const int64_t at = order == 1 ? i + j * ld : i * ld + j;
        g.out[k].push_back(a[k][at]);
        if (k == 0 && check_aa) {
          EXPECT_EQ(paa[at], a[0][at]) << "s30aa and s30ab differ";
        }
      }
    // The gaps between the columns (rows) are left alone.
    for (size_t at = 0; at < a[k].size(); ++at) {
      if (static_cast<int64_t>(at % ld) >= (order == 1 ? m : n)) {
        EXPECT_EQ(a[k][at], -7.0) << names[k] << " written in the gap";
      }
    }
  }
  return g;
}

// The amplification of rounding errors in a price: the price is the
// difference of two terms T1 = s e^{-qt} Phi(d1), T2 = x e^{-rt} Phi(d2)
// (with -d for a put), each carrying a relative error of about
// (1 + 2 z^2) eps from the rounded erfc argument z = d c; the difference
// magnifies them by (T1 + T2) / price.  Deep out of the money that factor
// reaches several hundred (docs/s30aa.md).
double price_tolerance(const zem::test::s30_case &c, double x, double t, double price) {
  const double v = c.sigma * std::sqrt(t);
  const double d1 = (std::log(c.s) - std::log(x) + t * (c.r - c.q + c.sigma * c.sigma / 2)) / v;
  const double d2 = d1 - v;
  const double sg = c.kind == 'C' ? 1.0 : -1.0;
  const double t1 = c.s * std::exp(-c.q * t) * 0.5 * std::erfc(-sg * d1 * M_SQRT1_2);
  const double t2 = x * std::exp(-c.r * t) * 0.5 * std::erfc(-sg * d2 * M_SQRT1_2);
  const double kappa = (t1 + t2) / price;
  const double z2 = std::fmax(d1 * d1, d2 * d2) / 2;
  return std::fmax(1e-12, 4e-16 * kappa * (1 + 2 * z2));
}

// Prices within 1e-12 relative where the price exceeds 1e-200 (or within
// the bound above where the two terms cancel deeply); each
// sensitivity within 1e-10 relative, or, where it passes through zero, of
// 1e-10 times the size of its own terms (measured by the largest value of
// the same sensitivity over the strikes of that expiry, times 1e-3).
TEST(S30Reference, PricesAndSensitivitiesBothOrders) {
  double worst[12] = {}, worst_plain = 0.0;
  for (int64_t order : {1, 2}) {
    for (const auto &c : cases()) {
      const grid_run g = run(c, order, true);
      const size_t m = c.x.size(), n = c.t.size();
      for (size_t j = 0; j < n; ++j) {
        for (int k = 0; k < 12; ++k) {
          double scale = 0.0;
          for (size_t i = 0; i < m; ++i) scale = std::fmax(scale, std::fabs(c.values[(i + j * m) * 12 + k]));
          for (size_t i = 0; i < m; ++i) {
            const double ref = c.values[(i + j * m) * 12 + k];
            const double got = g.out[k][i + j * m];
            const double price = c.values[(i + j * m) * 12];
            if (!(price > 1e-200)) continue;
            const double err = k == 0 ? rel(got, ref) : std::fabs(got - ref) / std::fmax(std::fabs(ref), 1e-3 * scale);
            worst[k] = std::fmax(worst[k], err);
            if (k == 0 && price_tolerance(c, c.x[i], c.t[j], ref) == 1e-12) worst_plain = std::fmax(worst_plain, err);
            EXPECT_LE(err, k == 0 ? price_tolerance(c, c.x[i], c.t[j], ref) : 1e-10)
                << names[k] << " " << c.kind << " s=" << c.s << " x=" << c.x[i] << " t=" << c.t[j] << " got " << got
                << " ref " << ref;
          }
        }
      }
    }
  }
  std::printf("price worst relative error where the cancellation bound is below 1e-12: %.3g\n", worst_plain);
  for (int k = 0; k < 12; ++k) std::printf("%-7s worst relative error %.3g\n", names[k], worst[k]);
}

}  // namespace
