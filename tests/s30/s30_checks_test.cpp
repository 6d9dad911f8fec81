// The argument checks of the grid routines: each constraint, NaN and the
// infinities give their documented status and detail, in argument order,
// and a failing call writes nothing into p or the sensitivity arrays.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "s30/s30aa.h"
#include "s30/s30ab.h"

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

struct grid_call {
  char calput = 'C';
  int64_t m = 3, n = 2;
  double x[3] = {90.0, 100.0, 110.0};
  double s = 100.0;
  double t[2] = {0.5, 1.0};
  double sigma = 0.2, r = 0.05, q = 0.01;
  int64_t ldp = 3, order = 1;
};

struct bad_case {
  const char *what;
  void (*edit)(grid_call &);
  int64_t status, detail;
};

const bad_case bad_cases[] = {
    {"calput", [](grid_call &g) { g.calput = 'X'; }, 1, 1001},
    {"m = 0", [](grid_call &g) { g.m = 0; }, 2, 1002},
    {"n = -1", [](grid_call &g) { g.n = -1; }, 3, 1003},
    {"x NaN", [](grid_call &g) { g.x[1] = nan; }, 4, 1004},
    {"x 0", [](grid_call &g) { g.x[2] = 0.0; }, 4, 1004},
    {"x inf", [](grid_call &g) { g.x[0] = inf; }, 4, 1004},
    {"x above 2^511", [](grid_call &g) { g.x[0] = 0x1.0000000000001p511; }, 4, 1004},
    {"s below 2^-511", [](grid_call &g) { g.s = 0x1.fffffffffffffp-512; }, 5, 1005},
    {"s NaN", [](grid_call &g) { g.s = nan; }, 5, 1005},
    {"t 0", [](grid_call &g) { g.t[1] = 0.0; }, 6, 1006},
    {"t NaN", [](grid_call &g) { g.t[0] = nan; }, 6, 1006},
    {"t inf", [](grid_call &g) { g.t[0] = inf; }, 6, 1007},
    {"sigma 0", [](grid_call &g) { g.sigma = 0.0; }, 7, 1008},
    {"sigma NaN", [](grid_call &g) { g.sigma = nan; }, 7, 1008},
    {"sigma huge", [](grid_call &g) { g.sigma = 1e77; }, 7, 1008},
    {"r < 0", [](grid_call &g) { g.r = -1e-300; }, 8, 1009},
    {"r NaN", [](grid_call &g) { g.r = nan; }, 8, 1009},
    {"r inf", [](grid_call &g) { g.r = inf; }, 8, 1010},
    {"q < 0", [](grid_call &g) { g.q = -0.01; }, 9, 1011},
    {"q NaN", [](grid_call &g) { g.q = nan; }, 9, 1011},
    {"ldp < m", [](grid_call &g) { g.ldp = 2; }, 11, 1012},
    {"ldp < n, by rows", [](grid_call &g) { g.order = 2; g.ldp = 1; }, 11, 1013},
    // The first violation in argument order is the one reported.
    {"x and r", [](grid_call &g) { g.x[0] = -1.0; g.r = -1.0; }, 4, 1004},
    // ldp is checked before any array is read.
    {"ldp and x", [](grid_call &g) { g.ldp = 1; g.x[0] = nan; }, 11, 1012},
    {"ldp n overflows", [](grid_call &g) { g.m = 1; g.ldp = int64_t{1} << 62; }, 11, 1014},
};

std::string detail_of(const char *errbuf) {
  std::string s(errbuf, 200);
  const size_t a = s.find('\x01', 1);
  return s.substr(a + 1, s.find('\x01', a + 1) - a - 1);
}

TEST(S30Checks, EveryConstraintBothRoutinesNothingWritten) {
  for (const bad_case &b : bad_cases) {
    grid_call g;
    b.edit(g);
    double out[12][8];
    for (auto &o : out)
      for (double &v : o) v = -7.0;
    engine_data en;
    y90haan_(&en);
    char errbuf[200];
    int64_t ifail = 0;
    s30aafn_(&en, &g.calput, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, out[0], &g.ldp, &g.order, errbuf,
             &ifail, 1);
    EXPECT_EQ(ifail, b.status) << b.what;
    EXPECT_EQ(detail_of(errbuf), std::to_string(b.detail)) << b.what;
    ifail = 0;
    s30abfn_(&en, &g.calput, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, out[0], &g.ldp, out[1], out[2],
             out[3], out[4], out[5], out[6], out[7], out[8], out[9], out[10], out[11], &g.order, errbuf, &ifail, 1);
    EXPECT_EQ(ifail, b.status) << b.what;
    for (auto &o : out)
      for (double v : o) EXPECT_EQ(v, -7.0) << b.what;
  }
}

// At the ends of the ranges every output is finite (or the limit the
// formulas give), never NaN.
TEST(S30Checks, ExtremeAcceptedArgumentsGiveNoNaN) {
  const double xs[] = {0x1p-511, 1.0, 0x1p511};
  const double ts[] = {0x1p-511, 1.0, 0x1p511};
  const double sigmas[] = {0x1p-511, 0.3, 0x1p255};
  const double rates[] = {0.0, 0.05, 0x1p255};
  for (char kind : {'C', 'P'})
    for (double s : xs)
      for (double sigma : sigmas)
        for (double r : rates)
          for (double q : rates) {
            const int64_t m = 3, n = 3, ldp = 3, order = 1;
            double out[12][9];
            engine_data en;
            y90haan_(&en);
            char errbuf[200];
            int64_t ifail = 0;
            s30abfn_(&en, &kind, &m, &n, xs, &s, ts, &sigma, &r, &q, out[0], &ldp, out[1], out[2], out[3], out[4],
                     out[5], out[6], out[7], out[8], out[9], out[10], out[11], &order, errbuf, &ifail, 1);
            ASSERT_EQ(ifail, 0);
            for (int k = 0; k < 12; ++k)
              for (double v : out[k]) ASSERT_FALSE(std::isnan(v)) << kind << " k " << k << " s " << s << " sigma " << sigma
                                                                  << " r " << r << " q " << q;
            for (double v : out[0]) EXPECT_TRUE(std::isfinite(v) && v >= 0.0);
          }
}

}  // namespace
