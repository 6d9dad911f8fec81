// s14ad, s14ae, s14af, s14ag, s14cc, s14cp, s14cq at the engine level:
// accuracy per region against the mpmath tables of tests/s14/data
// (tools/s14_reference.py), the range checks with their substitute results,
// non-finite arguments, and the vector routines element by element.  The
// messages are checked by the clients.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "s14/s14ad.h"
#include "s14/s14ae.h"
#include "s14/s14af.h"
#include "s14/s14ag.h"
#include "s14/s14cc.h"
#include "s14/s14cp.h"
#include "s14/s14cq.h"
#include "tests/g01/reference_data.h"

namespace {

using zem::test::reference;

const std::string dir = ZEM_TEST_DATA "/";
const double inf = std::numeric_limits<double>::infinity();
const double nan = std::numeric_limits<double>::quiet_NaN();
const double big = std::numeric_limits<double>::max();

// Rows of a table: the region, then numbers (hexadecimal or decimal) and
// "hi units" pairs; `inputs` numbers come first, the pairs after.
struct row {
  std::string region;
  std::vector<double> in;
  std::vector<reference> out;
};

std::vector<row> read_table(const std::string &name, int inputs) {
  std::vector<row> rows;
  std::ifstream f(dir + name);
  EXPECT_TRUE(f.good()) << name;
  std::string line;
  while (std::getline(f, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    row r;
    s >> r.region;
    std::string t, u;
    for (int i = 0; i < inputs && s >> t; ++i) r.in.push_back(std::strtod(t.c_str(), nullptr));
    while (s >> t >> u) r.out.push_back({std::strtod(t.c_str(), nullptr), std::strtod(u.c_str(), nullptr)});
    rows.push_back(r);
  }
  return rows;
}

// Error of a complex value in units of the last place of its modulus.
double complex_ulp(double re, double im, const reference &er, const reference &ei) {
  const double mag = std::hypot(er.hi, ei.hi);
  const double u = zem::test::ulp_at({mag, 0.0});
  const double dr = (re - er.hi) / u - er.units * zem::test::ulp_at(er) / u;
  const double di = (im - ei.hi) / u - ei.units * zem::test::ulp_at(ei) / u;
  return std::hypot(dr, di);
}

struct call_status {
  int64_t ifail = -99;
  engine_data en{};
  char errbuf[200];
};

double psi_k(double x, int64_t k, int64_t &status) {
  call_status c;
  double r = -1.0;
  s14aefn_(&c.en, &x, &k, &r, c.errbuf, &c.ifail);
  status = c.ifail;
  return r;
}

// psi^(k)(x) within 4 units in the last place away from the zeros.
TEST(S14ae, AgainstTable) {
  std::map<std::string, zem::test::error_summary> worst;
  int rows = 0;
  for (const auto &r : read_table("s14ae_reference.txt", 2)) {
    int64_t status = 0;
    const double v = psi_k(r.in[1], static_cast<int64_t>(r.in[0]), status);
    ASSERT_EQ(status, 0) << r.in[1];
    const double e = zem::test::ulp_error(v, r.out[0]);
    EXPECT_LE(e, 4.0) << r.region << " k = " << r.in[0] << " x = " << r.in[1];
    ++rows;
  }
  EXPECT_GT(rows, 800);
}

TEST(S14ae, RangesStatusesAndSubstitutes) {
  struct {
    double x;
    int64_t k;
    double value;
    int64_t status;
  } rows[] = {
      {1.0, 7, 0.0, 1},       {1.0, -1, 0.0, 1},      {0.0, 0, 0.0, 2},      {-3.0, 1, big, 2},
      {-3.0, 2, 0.0, 2},      {-inf, 3, big, 2},      {-0x1p53, 0, 0.0, 2},  {inf, 0, big, 4},
      {inf, 2, 0.0, 3},       {1e300, 6, 0.0, 3},     {1e-310, 0, -big, 4},  {-1e-160, 1, big, 4},
      {1.0, 0, -0.57721566490153286, 0},            {1.0, 1, 1.6449340668482264, 0},
      {0.5, 2, -16.828796644234319, 0},             {-0.5, 0, 0.036489973978576520, 0},
  };
  for (const auto &r : rows) {
    int64_t status = 0;
    const double v = psi_k(r.x, r.k, status);
    EXPECT_EQ(status, r.status) << r.x << " " << r.k;
    EXPECT_NEAR(v, r.value, 4e-16 * std::fabs(r.value)) << r.x << " " << r.k;
  }
  int64_t status = -1;
  EXPECT_TRUE(std::isnan(psi_k(nan, 3, status)));
  EXPECT_EQ(status, 0);
}

void scaled(double x, int64_t n, int64_t m, double *ans, int64_t &status) {
  call_status c;
  s14adfn_(&c.en, &x, &n, &m, ans, c.errbuf, &c.ifail);
  status = c.ifail;
}

// The orders above 6 against zeta(k + 1, x); those up to 6 are psi^(k)/k!
// (the kernel of s14ae, whose table covers them).
TEST(S14ad, AgainstTableAndEdges) {
  int rows = 0;
  for (const auto &r : read_table("s14ad_reference.txt", 2)) {
    double ans[2] = {-1.0, -1.0};
    int64_t status = -1;
    scaled(r.in[1], static_cast<int64_t>(r.in[0]), 1, ans, status);
    ASSERT_EQ(status, 0) << r.in[1];
    EXPECT_LE(zem::test::ulp_error(ans[0], r.out[0]), 4.0) << r.region << " k = " << r.in[0] << " x = " << r.in[1];
    ++rows;
  }
  EXPECT_GT(rows, 150);
  // Orders 0..3 at x = 1: -psi(1) = Euler's constant, zeta(2), zeta(3), zeta(4).
  double ans[4];
  int64_t status = -1;
  scaled(1.0, 0, 4, ans, status);
  EXPECT_EQ(status, 0);
  const double want[4] = {0.57721566490153286, 1.6449340668482264, 1.2020569031595943, 1.0823232337111382};
  for (int j = 0; j < 4; ++j) EXPECT_NEAR(ans[j], want[j], 2.3e-16 * want[j]) << j;
  struct {
    double x;
    int64_t n, m, status;
    double first;
  } edges[] = {{0.0, 0, 2, 1, 0.0},     {-inf, 0, 2, 1, 0.0},   {1.0, -1, 2, 2, 0.0},  {1.0, 0, 0, 3, -1.0},
               {1.0, 0, 101, 6, -1.0},  {1e-200, 5, 1, 5, big}, {1e200, 5, 1, 4, 0.0}, {inf, 0, 2, 5, -big},
               {1.0, INT64_MAX, 2, 0, 1.0}};
  for (const auto &e : edges) {
    double a[2] = {-1.0, -1.0};
    int64_t st = -1;
    std::vector<double> many(e.m > 2 ? e.m : 2, -1.0);
    scaled(e.x, e.n, e.m, e.m > 2 ? many.data() : a, st);
    EXPECT_EQ(st, e.status) << e.x << " " << e.n << " " << e.m;
    EXPECT_EQ(e.m > 2 ? many[0] : a[0], e.first) << e.x << " " << e.n << " " << e.m;
  }
}

// psi^(k)(z), k = 0..4, and ln Gamma(z) within 4 units in the last place of
// the modulus of the value, in every region of the tables (next to the poles,
// tiny and huge arguments included); the tables leave out the neighbourhoods
// of the zeros.
TEST(S14afAg, AgainstTables) {
  int rows = 0;
  for (const auto &r : read_table("s14ag_reference.txt", 2)) {
    call_status c;
    double re = 0.0, im = 0.0;
    s14agfn_(&c.en, &r.in[0], &r.in[1], &re, &im, c.errbuf, &c.ifail);
    ASSERT_EQ(c.ifail, 0);
    EXPECT_LE(complex_ulp(re, im, r.out[0], r.out[1]), 4.0) << r.region << " z = " << r.in[0] << " " << r.in[1];
    ++rows;
  }
  EXPECT_GT(rows, 350);
  for (const auto &r : read_table("s14af_reference.txt", 3)) {
    call_status c;
    double re = 0.0, im = 0.0;
    const int64_t k = static_cast<int64_t>(r.in[0]);
    s14affn_(&c.en, &r.in[1], &r.in[2], &k, &re, &im, c.errbuf, &c.ifail);
    ASSERT_EQ(c.ifail, 0);
    EXPECT_LE(complex_ulp(re, im, r.out[0], r.out[1]), 4.0)
        << r.region << " k = " << k << " z = " << r.in[1] << " " << r.in[2];
    ++rows;
  }
  EXPECT_GT(rows, 1100);
}

TEST(S14afAg, EdgesAndFailures) {
  struct {
    double x, y;
    int64_t k;
    double re, im;
    int64_t status;
  } af[] = {{1.0, 0.0, 5, 0.0, 0.0, 1},  {1.0, 0.0, -1, 0.0, 0.0, 1}, {-2.0, 0.0, 1, big, 0.0, 2},
            {0.0, 0.0, 0, 0.0, 0.0, 2},  {inf, 0.0, 0, big, 0.0, 3},  {inf, 1.0, 2, 0.0, 0.0, 0},
            {1.0, 0.0, 0, -0.57721566490153286, 0.0, 0}};
  for (const auto &r : af) {
    call_status c;
    double re = -1.0, im = -1.0;
    s14affn_(&c.en, &r.x, &r.y, &r.k, &re, &im, c.errbuf, &c.ifail);
    EXPECT_EQ(c.ifail, r.status) << r.x << " " << r.y << " " << r.k;
    EXPECT_NEAR(re, r.re, 4e-16 * std::fabs(r.re)) << r.x << " " << r.y << " " << r.k;
    EXPECT_NEAR(im, r.im, 1e-300) << r.x << " " << r.y << " " << r.k;
  }
  struct {
    double x, y, re, im;
    int64_t status;
  } ag[] = {{-3.0, 0.0, big, 0.0, 1},
            {0.0, 0.0, big, 0.0, 1},
            {inf, 0.0, big, 0.0, 2},
            {0.0, -inf, -big, 0.0, 2},
            {-2.5, 0.0, -0.056243716497674054, -3 * M_PI, 0},
            {-2.5, -0.0, -0.056243716497674054, 3 * M_PI, 0},
            {0.5, 0.0, 0.57236494292470008707, 0.0, 0}};
  for (const auto &r : ag) {
    call_status c;
    double re = -1.0, im = -1.0;
    s14agfn_(&c.en, &r.x, &r.y, &re, &im, c.errbuf, &c.ifail);
    EXPECT_EQ(c.ifail, r.status) << r.x << " " << r.y;
    EXPECT_NEAR(re, r.re, 1.5e-14 + 4e-16 * std::fabs(r.re)) << r.x << " " << r.y;
    EXPECT_NEAR(im, r.im, 1.5e-14 + 4e-16 * std::fabs(r.im)) << r.x << " " << r.y;
  }
  call_status c;
  double re = 0.0, im = 0.0;
  s14agfn_(&c.en, &nan, &nan, &re, &im, c.errbuf, &c.ifail);
  EXPECT_TRUE(std::isnan(re) && std::isnan(im));
  EXPECT_EQ(c.ifail, 0);
}

// w and w1 of a table (region, a, b, x, w, w1) each to a relative error below
// 1e-13 wherever it exceeds 1e-300, status 0, both in [0, 1]; values the
// table has below 1e-300 come out below 1e-290.  Returns the number of rows.
int check_incomplete_beta_table(const std::string &name) {
  int rows = 0;
  for (const auto &r : read_table(name, 3)) {
    call_status c;
    double w = -1.0, w1 = -1.0;
    s14ccfn_(&c.en, &r.in[0], &r.in[1], &r.in[2], &w, &w1, c.errbuf, &c.ifail);
    std::ostringstream where;
    where << r.region << " a = " << r.in[0] << " b = " << r.in[1] << " x = " << r.in[2];
    EXPECT_EQ(c.ifail, 0) << where.str();
    EXPECT_TRUE(w >= 0.0 && w <= 1.0 && w1 >= 0.0 && w1 <= 1.0) << where.str() << " " << w << " " << w1;
    const double got[2] = {w, w1};
    for (int i = 0; i < 2; ++i) {
      if (r.out[i].hi > 1e-300) {
        EXPECT_LT(zem::test::relative_error(got[i], r.out[i]), 1e-13) << (i ? "w1 " : "w ") << where.str();
      } else {
        EXPECT_LT(got[i], 1e-290) << (i ? "w1 " : "w ") << where.str();
      }
    }
    ++rows;
  }
  return rows;
}

// Every region: next to the mean of moderate parameters and with one
// parameter small and the other large ("mixed", "small-large": the series of
// the small side) included.
TEST(S14cc, AgainstTable) { EXPECT_GT(check_incomplete_beta_table("s14cc_reference.txt"), 1100); }

// Large parameters next to the mean, up to the largest double (where a
// continued fraction would need about sqrt(min(a, b)) terms and the factor's
// logarithm is a difference of terms of size a), and a small parameter beside
// one past 2^990 with x of the order of their ratio (the mass of the small
// side, not a step at the mean).
TEST(S14cc, LargeParametersAgainstTable) {
  EXPECT_GT(check_incomplete_beta_table("s14cc_large_reference.txt"), 300);
}

// The wide sweep of tools/s14_beta_sweep.py: a and b from 1e-300 to 1e300,
// x from 1e-300 to 1 - 2^-53.
TEST(S14cc, WideSweepAgainstTable) { EXPECT_GT(check_incomplete_beta_table("s14cc_sweep_reference.txt"), 1000); }

TEST(S14cc, DomainAndDegenerateEnds) {
  struct {
    double a, b, x, w, w1;
    int64_t status;
  } rows[] = {
      {-1.0, 1.0, 0.5, 0.0, 0.0, 1}, {1.0, -1.0, 0.5, 0.0, 0.0, 1}, {1.0, 1.0, 1.5, 0.0, 0.0, 1},
      {1.0, 1.0, -0.1, 0.0, 0.0, 1}, {0.0, 0.0, 0.5, 0.0, 0.0, 2},  {0.0, 1.0, 0.0, 0.0, 0.0, 2},
      {1.0, 0.0, 1.0, 0.0, 0.0, 2},  {0.0, 2.0, 0.5, 1.0, 0.0, 0},  {2.0, 0.0, 0.5, 0.0, 1.0, 0},
      {2.0, 3.0, 0.0, 0.0, 1.0, 0},  {2.0, 3.0, 1.0, 1.0, 0.0, 0},  {inf, 3.0, 0.5, 0.0, 1.0, 0},
      {2.0, inf, 0.5, 1.0, 0.0, 0},  {1.0, 1.0, 0.25, 0.25, 0.75, 0}, {2.0, 3.0, 0.5, 0.6875, 0.3125, 0},
      {1e300, 1e300, 0.25, 0.0, 1.0, 0},
  };
  for (const auto &r : rows) {
    call_status c;
    double w = -1.0, w1 = -1.0;
    s14ccfn_(&c.en, &r.a, &r.b, &r.x, &w, &w1, c.errbuf, &c.ifail);
    EXPECT_EQ(c.ifail, r.status) << r.a << " " << r.b << " " << r.x;
    EXPECT_NEAR(w, r.w, 1e-15) << r.a << " " << r.b << " " << r.x;
    EXPECT_NEAR(w1, r.w1, 1e-15) << r.a << " " << r.b << " " << r.x;
  }
  call_status c;
  double w = 0.0, w1 = 0.0;
  const double one = 1.0, half = 0.5;
  s14ccfn_(&c.en, &nan, &one, &half, &w, &w1, c.errbuf, &c.ifail);
  EXPECT_TRUE(std::isnan(w) && std::isnan(w1));
  EXPECT_EQ(c.ifail, 0);
}

// ln B within 5 units of 2^-53 max(1, |ln B|) (2 where both parameters are
// below 40): relative above 1, absolute below, where the terms of the sum
// (about 1) cancel; exact arguments with a simple answer within one unit.
TEST(S14cp, AgainstTableAndIvalid) {
  std::vector<double> a, b;
  std::vector<reference> want;
  std::vector<bool> exact;
  std::vector<double> bound;
  for (const auto &r : read_table("s14cp_reference.txt", 2)) {
    a.push_back(r.in[0]);
    b.push_back(r.in[1]);
    want.push_back(r.out[0]);
    exact.push_back(r.region == "exact");
    // Both parameters below 40 (one moderate, the other small or moderate):
    // ln Gamma reduced to [1, 2) with exact factors, within 2 units.
    bound.push_back(r.region == "a,b<1" || r.region == "a,b<10" || r.region == "moderate" ? 2.0 : 5.0);
  }
  ASSERT_GT(want.size(), 250u);
  const int64_t n = static_cast<int64_t>(want.size());
  std::vector<double> f(want.size());
  std::vector<int64_t> iv(want.size(), -1);
  call_status c;
  s14cpfn_(&c.en, &n, a.data(), b.data(), f.data(), iv.data(), c.errbuf, &c.ifail);
  EXPECT_EQ(c.ifail, 0);
  for (size_t i = 0; i < want.size(); ++i) {
    const double err = std::fabs((f[i] - want[i].hi) - want[i].units * zem::test::ulp_at(want[i]));
    EXPECT_LE(err / (0x1p-53 * std::max(1.0, std::fabs(want[i].hi))), bound[i]) << "a = " << a[i] << " b = " << b[i];
    // Exact arguments with a simple answer (ln B(1, b) = -ln b, integers):
    // the logarithm of an exact number, one rounding; ln B(1, 1) = +0.
    if (exact[i]) {
      if (want[i].hi == 0.0) {
        EXPECT_EQ(f[i], 0.0);
        EXPECT_FALSE(std::signbit(f[i]));
      } else {
        EXPECT_LE(zem::test::ulp_error(f[i], want[i]), 1.0) << "a = " << a[i] << " b = " << b[i];
      }
    }
  }
  const double ba[] = {0.0, 1.0, -1.0, inf, nan, 2.0};
  const double bb[] = {1.0, 1.0, 2.0, 1.0, 1.0, 3.0};
  double bf[6];
  int64_t biv[6];
  const int64_t six = 6;
  s14cpfn_(&c.en, &six, ba, bb, bf, biv, c.errbuf, &c.ifail);
  EXPECT_EQ(c.ifail, 1);
  const int64_t want_iv[] = {1, 0, 1, 2, 0, 0};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(biv[i], want_iv[i]) << i;
  EXPECT_EQ(bf[0], 0.0);
  EXPECT_EQ(bf[1], 0.0);  // ln B(1, 1)
  EXPECT_EQ(bf[3], -big);
  EXPECT_TRUE(std::isnan(bf[4]));
  EXPECT_NEAR(bf[5], std::log(1.0 / 12.0), 1e-15);
  const int64_t minus = -1;
  s14cpfn_(&c.en, &minus, ba, bb, bf, biv, c.errbuf, &c.ifail);
  EXPECT_EQ(c.ifail, 2);
}

// The wide sweep of tools/s14_beta_sweep.py (a and b from 1e-300 to 1e300):
// within 3 units of 2^-53 max(1, |ln B|), ivalid 0.
TEST(S14cp, WideSweepAgainstTable) {
  int rows = 0;
  for (const auto &r : read_table("s14cp_sweep_reference.txt", 2)) {
    const int64_t one = 1;
    double f = 0.0;
    int64_t iv = -1;
    call_status c;
    s14cpfn_(&c.en, &one, &r.in[0], &r.in[1], &f, &iv, c.errbuf, &c.ifail);
    EXPECT_EQ(iv, 0) << r.region << " a = " << r.in[0] << " b = " << r.in[1];
    const double err = std::fabs((f - r.out[0].hi) - r.out[0].units * zem::test::ulp_at(r.out[0]));
    EXPECT_LE(err / (0x1p-53 * std::max(1.0, std::fabs(r.out[0].hi))), 3.0)
        << r.region << " a = " << r.in[0] << " b = " << r.in[1];
    ++rows;
  }
  EXPECT_GT(rows, 700);
}

// s14cq gives each element what s14cc gives, and goes on past bad ones.
TEST(S14cq, ElementsAsScalars) {
  const std::vector<double> a = {2.0, -1.0, 0.0, 0.5, 30.0, 1.0, nan};
  const std::vector<double> b = {3.0, 1.0, 0.0, 0.5, 40.0, 1.0, 1.0};
  const std::vector<double> x = {0.5, 0.5, 0.5, 0.1, 0.45, 2.0, 0.5};
  const int64_t n = static_cast<int64_t>(a.size());
  std::vector<double> w(a.size(), -7.0), w1(a.size(), -7.0);
  std::vector<int64_t> iv(a.size(), -7);
  call_status c;
  s14cqfn_(&c.en, &n, a.data(), b.data(), x.data(), w.data(), w1.data(), iv.data(), c.errbuf, &c.ifail);
  EXPECT_EQ(c.ifail, 1);
  for (size_t i = 0; i < a.size(); ++i) {
    call_status s;
    double sw = 0.0, sw1 = 0.0;
    s14ccfn_(&s.en, &a[i], &b[i], &x[i], &sw, &sw1, s.errbuf, &s.ifail);
    EXPECT_EQ(iv[i], s.ifail) << i;
    if (std::isnan(sw)) {
      EXPECT_TRUE(std::isnan(w[i]) && std::isnan(w1[i])) << i;
    } else {
      EXPECT_EQ(w[i], sw) << i;
      EXPECT_EQ(w1[i], sw1) << i;
    }
  }
  const int64_t zero = 0, minus = -3;
  s14cqfn_(&c.en, &zero, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, c.errbuf, &c.ifail);
  EXPECT_EQ(c.ifail, 0);
  s14cqfn_(&c.en, &minus, a.data(), b.data(), x.data(), w.data(), w1.data(), iv.data(), c.errbuf, &c.ifail);
  EXPECT_EQ(c.ifail, 2);
}

}  // namespace

// The variants of the complex kernels for processors with and without fused
// multiply-add (s14/gamma_dispatch.cpp) give the same bits on every reference
// point: their pair products are exact either way.
#include <bit>
#include <cstdint>

#include "s14/complex_gamma.h"

namespace zem::s14 {
cplx psi_complex_variant(cplx z, int k, bool fma);
cplx lgamma_complex_variant(cplx z, bool fma);
}  // namespace zem::s14

namespace {

TEST(S14afAg, FmaAndPlainVariantsAgree) {
  using zem::s14::cplx;
  auto same = [](cplx a, cplx b) {
    return std::bit_cast<uint64_t>(a.real()) == std::bit_cast<uint64_t>(b.real()) &&
           std::bit_cast<uint64_t>(a.imag()) == std::bit_cast<uint64_t>(b.imag());
  };
  int rows = 0;
  for (const auto &r : read_table("s14ag_reference.txt", 2)) {
    const cplx z{r.in[0], r.in[1]};
    EXPECT_TRUE(same(zem::s14::lgamma_complex_variant(z, true), zem::s14::lgamma_complex_variant(z, false))) << z;
    ++rows;
  }
  for (const auto &r : read_table("s14af_reference.txt", 3)) {
    const cplx z{r.in[1], r.in[2]};
    const int k = static_cast<int>(r.in[0]);
    EXPECT_TRUE(same(zem::s14::psi_complex_variant(z, k, true), zem::s14::psi_complex_variant(z, k, false)))
        << "k = " << k << " z = " << z;
    ++rows;
  }
  EXPECT_GT(rows, 1100);
}

}  // namespace
