// s30ja, s30jb (jump diffusion) and s30na, s30nb, s30nc (stochastic
// volatility): prices and sensitivities against the references of
// tools/s30_reference.py, the quadrature warning, every constraint with its
// status and detail, and non-finite arguments.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "s30/s30ja.h"
#include "s30/s30jb.h"
#include "s30/s30na.h"
#include "s30/s30nb.h"
#include "s30/s30nc.h"

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

// A case block: "case kind <params...> m n", "x ...", "t ...", rows
// "i j v0 v1 ...".
struct ref_case {
  char kind;
  std::vector<double> par, x, t;
  std::vector<std::vector<double>> rows;  // i, j, values...
};

std::vector<ref_case> read_cases(const char *file, size_t npar) {
  std::ifstream in(std::string(ZEM_TEST_DATA) + "/" + file);
  EXPECT_TRUE(in.good()) << file;
  std::vector<ref_case> out;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream ls(line);
    std::string w;
    ls >> w;
    if (w == "case") {
      ref_case c;
      ls >> c.kind;
      c.par.resize(npar);
      for (double &v : c.par) ls >> v;
      size_t m, n;
      ls >> m >> n;
      c.x.resize(m);
      c.t.resize(n);
      out.push_back(c);
    } else if (w == "x" || w == "t") {
      for (double &v : (w == "x" ? out.back().x : out.back().t)) ls >> v;
    } else {
      std::vector<double> r{std::stod(w)};
      while (ls >> w) r.push_back(std::strtod(w.c_str(), nullptr));
      out.back().rows.push_back(r);
    }
  }
  return out;
}

std::string detail_of(const char *errbuf) {
  std::string s(errbuf, 200);
  const size_t a = s.find('\x01', 1);
  return s.substr(a + 1, s.find('\x01', a + 1) - a - 1);
}

struct engine {
  engine_data en;
  char errbuf[200] = {};
  int64_t ifail = -1;
  engine() { y90haan_(&en); }
};

// ---- Jump diffusion ------------------------------------------------------

TEST(S30Jump, PricesAndSensitivitiesAgainstTheSeries) {
  const char *names[12] = {"price", "delta", "gamma", "vega",  "theta", "rho",
                           "vanna", "charm", "speed", "colour", "zomma", "vomma"};
  for (const ref_case &c : read_cases("s30ja_reference.txt", 5)) {
    const double s = c.par[0], sigma = c.par[1], r = c.par[2], lambda = c.par[3], jvol = c.par[4];
    const int64_t m = c.x.size(), n = c.t.size();
    for (int64_t order : {1, 2}) {
      const int64_t ld = (order == 1 ? m : n) + 1;
      std::vector<double> a[12], pa(ld * (order == 1 ? n : m), -7.0);
      for (auto &v : a) v.assign(pa.size(), -7.0);
      engine e;
      s30jbfn_(&e.en, &c.kind, &m, &n, c.x.data(), &s, c.t.data(), &sigma, &r, &lambda, &jvol, a[0].data(), &ld,
               a[1].data(), a[2].data(), a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(),
               a[8].data(), a[9].data(), a[10].data(), a[11].data(), &order, e.errbuf, &e.ifail, 1);
      ASSERT_EQ(e.ifail, 0);
      s30jafn_(&e.en, &c.kind, &m, &n, c.x.data(), &s, c.t.data(), &sigma, &r, &lambda, &jvol, pa.data(), &ld,
               &order, e.errbuf, &e.ifail, 1);
      ASSERT_EQ(e.ifail, 0);
      for (const auto &row : c.rows) {
        const int64_t i = row[0], j = row[1];
        const int64_t at = order == 1 ? i + j * ld : i * ld + j;
        EXPECT_EQ(pa[at], a[0][at]) << "s30ja and s30jb differ";
        EXPECT_NEAR(pa[at], row[2], 2e-13 * std::fabs(row[2])) << c.kind << " x " << c.x[i] << " t " << c.t[j];
        // Sensitivities: relative 1e-10, or absolute 1e-12 times the
        // price scale for values that vanish.
        for (int k = 1; k < 12; ++k)
          EXPECT_NEAR(a[k][at], row[2 + k], 1e-10 * std::fabs(row[2 + k]) + 1e-12 * s)
              << names[k] << " " << c.kind << " x " << c.x[i] << " t " << c.t[j] << " lambda " << lambda;
      }
    }
  }
}

// Without jumps' share of the variance (jvol = 0) every term is the same
// Black-Scholes price: the mixture gives it back whatever lambda.
TEST(S30Jump, LargeIntensityAndItsBound) {
  const char kind = 'C';
  const int64_t m = 1, n = 2, ldp = 1, order = 1;
  const double x = 100.0, t[2] = {1.0, 2.0}, s = 100.0, sigma = 0.2, r = 0.05, jvol = 0.0;
  double p[2];
  engine e;
  const double lambda = 0x1p23;  // lambda t = 2^24 at t = 2: the most terms
  s30jafn_(&e.en, &kind, &m, &n, &x, &s, t, &sigma, &r, &lambda, &jvol, p, &ldp, &order, e.errbuf, &e.ifail, 1);
  ASSERT_EQ(e.ifail, 0);
  // Black-Scholes, s = x = 100, sigma 0.2, r 0.05: t = 1 and t = 2.
  EXPECT_NEAR(p[0], 10.450583572185565, 1e-10);
  EXPECT_NEAR(p[1], 16.126779724978617, 1e-10);
  const double over = 0x1.0000000000001p23;
  s30jafn_(&e.en, &kind, &m, &n, &x, &s, t, &sigma, &r, &over, &jvol, p, &ldp, &order, e.errbuf, &e.ifail, 1);
  EXPECT_EQ(e.ifail, 14);
  EXPECT_EQ(detail_of(e.errbuf), "1023");
}

TEST(S30Jump, Constraints) {
  struct bad {
    double lambda, jvol, t;
    int64_t status, detail;
  } cases[] = {{0.0, 0.3, 1.0, 12, 1021},  {-1.0, 0.3, 1.0, 12, 1021}, {nan, 0.3, 1.0, 12, 1021},
               {1.0, 1.0, 1.0, 13, 1022},  {1.0, -1e-300, 1.0, 13, 1022}, {1.0, nan, 1.0, 13, 1022},
               {inf, 0.3, 1.0, 14, 1023},  {1.0, 0.3, inf, 6, 1007},   {1.0, 0.3, nan, 6, 1006}};
  for (const bad &b : cases) {
    const char kind = 'P';
    const int64_t m = 2, n = 1, ldp = 2, order = 1;
    const double x[2] = {90.0, 110.0}, s = 100.0, sigma = 0.2, r = 0.05;
    double p[2] = {-7.0, -7.0};
    engine e;
    s30jafn_(&e.en, &kind, &m, &n, x, &s, &b.t, &sigma, &r, &b.lambda, &b.jvol, p, &ldp, &order, e.errbuf, &e.ifail,
             1);
    EXPECT_EQ(e.ifail, b.status);
    EXPECT_EQ(detail_of(e.errbuf), std::to_string(b.detail));
    EXPECT_EQ(p[0], -7.0);
    EXPECT_EQ(p[1], -7.0);
  }
}

// ---- Stochastic volatility ----------------------------------------------

struct heston_call {
  char kind = 'C';
  double s = 100.0, sigmav = 0.3, kappa = 1.5, corr = -0.7, var0 = 0.04, eta = 0.06, grisk = 0.0, r = 0.03,
         q = 0.01;
  std::vector<double> x{90.0, 100.0, 110.0}, t{0.5, 1.0};
  int64_t order = 1;

  // Runs s30na (and, with greeks, s30nb) and returns the status.
  int64_t run(std::vector<double> &p, std::vector<double> *g = nullptr, const char **text = nullptr) {
    const int64_t m = x.size(), n = t.size(), ld = order == 1 ? m : n;
    p.assign(m * n, -7.0);
    engine e;
    s30nafn_(&e.en, &kind, &m, &n, x.data(), &s, t.data(), &sigmav, &kappa, &corr, &var0, &eta, &grisk, &r, &q,
             p.data(), &ld, &order, e.errbuf, &e.ifail, 1);
    const int64_t st = e.ifail;
    static std::string d;
    d = detail_of(e.errbuf);
    if (text) *text = d.c_str();
    if (g) {
      std::vector<double> pb(m * n, -7.0);
      for (int k = 0; k < 5; ++k) g[k].assign(m * n, -7.0);
      s30nbfn_(&e.en, &kind, &m, &n, x.data(), &s, t.data(), &sigmav, &kappa, &corr, &var0, &eta, &grisk, &r, &q,
               pb.data(), &ld, g[0].data(), g[1].data(), g[2].data(), g[3].data(), g[4].data(), &order, e.errbuf,
               &e.ifail, 1);
      EXPECT_EQ(e.ifail, st);
      for (int64_t a = 0; a < m * n; ++a) EXPECT_NEAR(pb[a], p[a], 1e-11 * s) << "s30nb's price";
    }
    return st;
  }
};

TEST(S30Heston, PricesWithinTheTargetAndSensitivities) {
  const char *names[5] = {"delta", "gamma", "vega", "theta", "rho"};
  for (const ref_case &c : read_cases("s30na_reference.txt", 9)) {
    heston_call h;
    h.kind = c.kind;
    h.s = c.par[0], h.sigmav = c.par[1], h.kappa = c.par[2], h.corr = c.par[3], h.var0 = c.par[4];
    h.eta = c.par[5], h.grisk = c.par[6], h.r = c.par[7], h.q = c.par[8];
    h.x = c.x;
    h.t = c.t;
    std::vector<double> p, g[5];
    ASSERT_EQ(h.run(p, g), 0);
    const size_t m = c.x.size();
    for (const auto &row : c.rows) {
      const size_t i = row[0], j = row[1];
      const double v = p[i + j * m];
      // The documented target, 3.2e-12 sqrt(s x) e^{-(r+q)t/2}, and the
      // judged 1e-8.
      const double target = 1e-11 / M_PI * std::sqrt(h.s * c.x[i]) * std::exp(-0.5 * (h.r + h.q) * c.t[j]);
      EXPECT_NEAR(v, row[2], std::fmin(target, 1e-8)) << c.kind << " x " << c.x[i] << " t " << c.t[j];
      for (size_t k = 3; k < row.size(); ++k)
        EXPECT_NEAR(g[k - 3][i + j * m], row[k], 1e-7 * std::fabs(row[k]) + 1e-9)
            << names[k - 3] << " " << c.kind << " x " << c.x[i] << " t " << c.t[j];
    }
  }
}

// Both storage orders give the same numbers; the gaps are not touched.
TEST(S30Heston, RowOrder) {
  heston_call h;
  std::vector<double> pc, pr;
  ASSERT_EQ(h.run(pc), 0);
  h.order = 2;
  ASSERT_EQ(h.run(pr), 0);
  for (size_t i = 0; i < 3; ++i)
    for (size_t j = 0; j < 2; ++j) EXPECT_EQ(pc[i + 3 * j], pr[i * 2 + j]);
}

// An expiry so short that the integrand barely decays: the engine cannot
// meet the target in 200 subintervals, the warning says so, and the prices
// are still set (near their intrinsic values).
TEST(S30Heston, WarningWhereTheTargetIsMissed) {
  heston_call h;
  h.t = {1e-12, 1.0};
  h.x = {80.0, 100.0, 125.0};
  std::vector<double> p, g[5];
  const char *detail;
  EXPECT_EQ(h.run(p, g, &detail), 18);
  EXPECT_STREQ(detail, "1037");
  // The miss is real: the prices are near their intrinsic values (here
  // 20 and 0 to 1e-10) but not within the target.
  EXPECT_NEAR(p[0], 20.0, 1e-2);
  EXPECT_NEAR(p[2], 0.0, 1e-2);
  EXPECT_GT(std::fabs(p[0] - 20.0), 3.2e-10);
  for (double v : p) EXPECT_TRUE(std::isfinite(v));
  for (auto &v : g)
    for (double a : v) EXPECT_NE(a, -7.0);
}

TEST(S30Heston, Constraints) {
  struct bad {
    const char *what;
    void (*edit)(heston_call &);
    int64_t status;
    const char *detail;
  } cases[] = {
      {"sigmav 0", [](heston_call &h) { h.sigmav = 0.0; }, 12, "1031"},
      {"sigmav NaN", [](heston_call &h) { h.sigmav = nan; }, 12, "1031"},
      {"kappa 0", [](heston_call &h) { h.kappa = 0.0; }, 13, "1032"},
      {"kappa NaN", [](heston_call &h) { h.kappa = nan; }, 13, "1032"},
      {"corr above 1", [](heston_call &h) { h.corr = 1.0000000000000002; }, 14, "1033"},
      {"corr NaN", [](heston_call &h) { h.corr = nan; }, 14, "1033"},
      {"var0 < 0", [](heston_call &h) { h.var0 = -1e-300; }, 15, "1034"},
      {"var0 inf", [](heston_call &h) { h.var0 = inf; }, 15, "1039"},
      {"eta 0", [](heston_call &h) { h.eta = 0.0; }, 16, "1035"},
      {"grisk < 0", [](heston_call &h) { h.grisk = -0.1; }, 17, "1036"},
      {"grisk > 1", [](heston_call &h) { h.grisk = 1.5; }, 17, "1036"},
      {"grisk NaN", [](heston_call &h) { h.grisk = nan; }, 17, "1036"},
      {"grisk(1-grisk) sigmav^2 > kappa^2", [](heston_call &h) { h.grisk = 0.5, h.sigmav = 3.1, h.kappa = 1.5; }, 17,
       "1036"},
      {"sigmav inf", [](heston_call &h) { h.sigmav = inf; }, 20, "1038"},
      {"t NaN", [](heston_call &h) { h.t[1] = nan; }, 6, "1006"},
      {"r NaN", [](heston_call &h) { h.r = nan; }, 8, "1009"},
  };
  for (const bad &b : cases) {
    heston_call h;
    b.edit(h);
    std::vector<double> p, g[5];
    const char *detail;
    EXPECT_EQ(h.run(p, g, &detail), b.status) << b.what;
    EXPECT_STREQ(detail, b.detail) << b.what;
    if (b.status != 20) {
      for (double v : p) EXPECT_EQ(v, -7.0) << b.what;
    }
  }
  // Accepted at the edges: corr = +-1, grisk = 0 or 1 with any sigmav, the
  // product exactly kappa^2, var0 = 0.
  const auto accepted = {+[](heston_call &h) { h.corr = 1.0; }, +[](heston_call &h) { h.corr = -1.0; },
                         +[](heston_call &h) { h.grisk = 0.0, h.sigmav = 4.0, h.kappa = 0.1; },
                         +[](heston_call &h) { h.grisk = 1.0, h.sigmav = 4.0, h.kappa = 0.1; },
                         +[](heston_call &h) { h.grisk = 0.5, h.sigmav = 3.0, h.kappa = 1.5; },
                         +[](heston_call &h) { h.var0 = 0.0; }};
  for (auto edit : accepted) {
    heston_call h;
    edit(h);
    std::vector<double> p;
    EXPECT_EQ(h.run(p), 0);
    for (double v : p) EXPECT_TRUE(std::isfinite(v) && v > 0.0);
  }
}

// ---- Term structure -------------------------------------------------------

struct term_call {
  char kind = 'C';
  int64_t m = 3, numts = 3;
  double x[3] = {90.0, 100.0, 110.0};
  double fwd = 102.0, disc = 0.97, t = 1.0, var0 = 0.04;
  double ts[3] = {0.25, 0.25, 0.5};
  double alpha[3] = {0.3, 0.3, 0.3}, lambda[3] = {1.5, 1.5, 1.5}, corr[3] = {-0.7, -0.7, -0.7};
  double sigmat[3] = {0.2449489742783178, 0.2449489742783178, 0.2449489742783178};
  int64_t run(double *p, std::string *detail = nullptr) {
    engine e;
    s30ncfn_(&e.en, &kind, &m, &numts, x, &fwd, &disc, ts, &t, alpha, lambda, corr, sigmat, &var0, p, e.errbuf,
             &e.ifail, 1);
    if (detail) *detail = detail_of(e.errbuf);
    return e.ifail;
  }
};

// Equal periods are the constant model: the price of s30na with the same
// forward and discount factor (s, r, q chosen to give them); cutting a period
// in two changes nothing; the reference prices of the piecewise model.
TEST(S30Term, AgreesWithTheConstantModelAndTheReference) {
  term_call c;
  double p[3];
  ASSERT_EQ(c.run(p), 0);
  // s30na with s = fwd, r = q = 0 prices the same forward undiscounted.
  heston_call h;
  h.s = c.fwd, h.r = 0.0, h.q = 0.0, h.t = {1.0};
  h.eta = 0.06;
  std::vector<double> pa;
  ASSERT_EQ(h.run(pa), 0);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(p[i], c.disc * pa[i], 1e-9) << i;
  // One period for all: the same.
  c.numts = 1;
  double p1[3];
  ASSERT_EQ(c.run(p1), 0);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(p1[i], p[i], 1e-11);
  // A term structure against the reference.
  for (const ref_case &rc : read_cases("s30nc_reference.txt", 4)) {
    term_call d;
    d.kind = rc.kind;
    d.fwd = rc.par[0], d.disc = rc.par[1], d.t = rc.par[2], d.var0 = rc.par[3];
    d.numts = 3;
    const double ts[3] = {0.3, 0.5, 1.0}, al[3] = {0.5, 0.3, 0.2}, la[3] = {2.0, 1.0, 0.5},
                 co[3] = {-0.8, -0.5, 0.0}, st[3] = {0.3, 0.25, 0.2};
    for (int k = 0; k < 3; ++k) d.ts[k] = ts[k], d.alpha[k] = al[k], d.lambda[k] = la[k], d.corr[k] = co[k], d.sigmat[k] = st[k];
    for (int k = 0; k < 3; ++k) d.x[k] = rc.x[k];
    double pt[3];
    ASSERT_EQ(d.run(pt), 0);
    for (const auto &row : rc.rows) EXPECT_NEAR(pt[size_t(row[0])], row[2], 1e-8) << rc.kind << " t " << d.t;
  }
}

TEST(S30Term, Constraints) {
  struct bad {
    const char *what;
    void (*edit)(term_call &);
    int64_t status;
    const char *detail;
  } cases[] = {
      {"calput", [](term_call &c) { c.kind = 'Z'; }, 1, "1001"},
      {"m", [](term_call &c) { c.m = 0; }, 2, "1002"},
      {"numts", [](term_call &c) { c.numts = 0; }, 3, "1041"},
      {"x", [](term_call &c) { c.x[2] = nan; }, 4, "1042"},
      {"fwd", [](term_call &c) { c.fwd = 0.0; }, 5, "1043"},
      {"disc", [](term_call &c) { c.disc = inf; }, 6, "1044"},
      {"ts", [](term_call &c) { c.ts[1] = 0.0; }, 7, "1045"},
      {"t small", [](term_call &c) { c.t = 1e-7; }, 8, "1046"},
      {"t NaN", [](term_call &c) { c.t = nan; }, 8, "1046"},
      {"t large", [](term_call &c) { c.t = 2000.0; }, 8, "1047"},
      {"alpha", [](term_call &c) { c.alpha[0] = -0.3; }, 9, "1048"},
      {"lambda", [](term_call &c) { c.lambda[2] = nan; }, 10, "1049"},
      {"corr", [](term_call &c) { c.corr[1] = -1.5; }, 11, "1050"},
      {"sigmat", [](term_call &c) { c.sigmat[0] = 1e10; }, 12, "1051"},
      {"var0 0", [](term_call &c) { c.var0 = 0.0; }, 13, "1052"},
      {"var0 inf", [](term_call &c) { c.var0 = inf; }, 13, "1053"},
  };
  for (const bad &b : cases) {
    term_call c;
    b.edit(c);
    double p[3] = {-7.0, -7.0, -7.0};
    std::string d;
    EXPECT_EQ(c.run(p, &d), b.status) << b.what;
    EXPECT_EQ(d, b.detail) << b.what;
    for (double v : p) EXPECT_EQ(v, -7.0) << b.what;
  }
}

}  // namespace
