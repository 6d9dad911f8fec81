// The six routines of chapter d01 through their C entries: the edge cases,
// the messages, the packed outputs and the family's agreements.
#include <gtest/gtest.h>

#include <zem.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "battery.h"
#include "battery_data.h"

namespace {

// What the integrand saw; comm->p points at one.
struct probe {
  double (*fs)(double) = nullptr;
  int64_t calls = 0;
  int64_t points = 0;
  int64_t stop_at_call = 0;  // set iflag = -1 on this call (1-based), 0: never
  int64_t flag_at_call = 0;  // set comm->flag = 7 on this call instead
  std::vector<int64_t> sizes;
  std::vector<double> last_x;
};

void vec_f(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  probe &p = *static_cast<probe *>(comm->p);
  ++p.calls;
  p.points += nx;
  p.sizes.push_back(nx);
  p.last_x.assign(x, x + nx);
  for (int64_t i = 0; i < nx; ++i) fv[i] = p.fs(x[i]);
  if (p.calls == p.stop_at_call) *iflag = -1;
  if (p.calls == p.flag_at_call) comm->flag = 7;
}

double scalar_f(double x, Zem_Comm *comm) {
  probe &p = *static_cast<probe *>(comm->p);
  ++p.calls;
  ++p.points;
  return p.fs(x);
}

struct call_result {
  double result = NAN, abserr = NAN;
  std::vector<double> rinfo;
  std::vector<int64_t> iinfo;
  Zem_Fail fail = ZEM_FAIL_INIT;
  probe p;
};

call_result rj(double (*fs)(double), double a, double b, double epsabs, double epsrel, int64_t maxsub,
               int64_t stop_at = 0, int64_t flag_at = 0) {
  call_result r;
  r.p.fs = fs;
  r.p.stop_at_call = stop_at;
  r.p.flag_at_call = flag_at;
  r.rinfo.assign(4 * std::max<int64_t>(maxsub, 1), -7.0);
  r.iinfo.assign(std::max<int64_t>(maxsub, 1), -7);
  Zem_Comm comm = {0, nullptr, nullptr, &r.p};
  d01rjc(vec_f, a, b, epsabs, epsrel, maxsub, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(), &comm,
         &r.fail);
  return r;
}

double exp_m_x2(double x) { return std::exp(-x * x); }
double inv_sqrt(double x) { return 1.0 / std::sqrt(x); }
double inv_x(double x) { return 1.0 / x; }
double zero(double) { return 0.0; }
double runge(double x) { return 1.0 / (1.0 + 25.0 * x * x); }
constexpr double jump_at = 0.7071067811865476;
double jump(double x) { return x < jump_at ? 0.0 : 1e10; }

// ---- d01rj: the edge cases -------------------------------------------------------

TEST(D01rj, MaxsubOneIsOneRuleApplication) {
  call_result r = rj(exp_m_x2, 0.0, 10.0, 0.0, 1e-14, 1);
  EXPECT_EQ(r.fail.code, NE_QUAD_MAX_SUBDIV);
  EXPECT_EQ(r.fail.errnum, 1);
  EXPECT_STREQ(r.fail.message,
               "NE_QUAD_MAX_SUBDIV:\n  The maximum number of subdivisions (maxsub) has been reached:\n"
               "  maxsub = 1.");
  EXPECT_EQ(r.p.calls, 1);
  EXPECT_EQ(r.p.points, 21);
  EXPECT_EQ(r.iinfo[0], 1);
  // Met at once: no failure.
  call_result ok = rj([](double x) { return std::exp(x); }, 0.0, 1.0, 0.0, 1e-10, 1);
  EXPECT_EQ(ok.fail.code, NE_NOERROR);
  EXPECT_NEAR(ok.result, std::exp(1.0) - 1.0, 1e-15);
}

TEST(D01rj, ZeroIntegrandAndEmptyInterval) {
  call_result z = rj(zero, 0.0, 1.0, 0.0, 1e-10, 50);
  EXPECT_EQ(z.fail.code, NE_NOERROR);
  EXPECT_EQ(z.result, 0.0);
  EXPECT_EQ(z.abserr, 0.0);
  EXPECT_EQ(z.iinfo[0], 1);
  call_result e = rj([](double x) { return std::exp(x); }, 1.0, 1.0, 0.0, 1e-10, 50);
  EXPECT_EQ(e.fail.code, NE_NOERROR);
  EXPECT_EQ(e.result, 0.0);
  EXPECT_EQ(e.abserr, 0.0);
}

TEST(D01rj, ZeroTolerancesRunToTheLimitOrRoundOff) {
  call_result r = rj([](double x) { return std::exp(x); }, 0.0, 1.0, 0.0, 0.0, 10);
  EXPECT_TRUE(r.fail.code == NE_QUAD_MAX_SUBDIV || r.fail.code == NE_QUAD_ROUNDOFF_TOL) << r.fail.message;
  if (r.fail.code == NE_QUAD_MAX_SUBDIV) {
    EXPECT_EQ(r.iinfo[0], 10);
  }
  EXPECT_NEAR(r.result, std::exp(1.0) - 1.0, 1e-14);
  // 1/sqrt(x): the extrapolation reaches the rounding level and reports it.
  call_result s = rj(inv_sqrt, 0.0, 1.0, 0.0, 0.0, 50);
  EXPECT_EQ(s.fail.code, NE_QUAD_ROUNDOFF_EXTRAPL);
  EXPECT_STREQ(s.fail.message, "NE_QUAD_ROUNDOFF_EXTRAPL:\n  Round-off error is detected in the extrapolation table.");
  EXPECT_LE(std::fabs(s.result - 2.0), s.abserr);
}

TEST(D01rj, InverseSquareRootConvergesThroughExtrapolation) {
  call_result r = rj(inv_sqrt, 0.0, 1.0, 0.0, 1e-10, 50);
  EXPECT_EQ(r.fail.code, NE_NOERROR);
  const int64_t n = r.iinfo[0];
  EXPECT_LE(n, 8);
  EXPECT_EQ(r.p.points, 42 * n - 21);  // 21 points, then 42 per bisection
  EXPECT_EQ(r.p.calls, 2 * n - 1);     // one call per rule application
  EXPECT_LE(std::fabs(r.result - 2.0), r.abserr);
  EXPECT_LE(r.abserr, 1e-10 * 2.0);
}

TEST(D01rj, InverseXNeverSucceeds) {
  for (int64_t maxsub : {10, 50, 200, 2000}) {
    call_result r = rj(inv_x, 0.0, 1.0, 0.0, 1e-10, maxsub);
    EXPECT_NE(r.fail.code, NE_NOERROR) << "maxsub " << maxsub;
    // The classic outcome (the limit) while maxsub is below ~1000; beyond,
    // the interval at 0 shrinks to the resolution of the numbers.
    EXPECT_EQ(r.fail.code, maxsub < 1000 ? NE_QUAD_MAX_SUBDIV : NE_QUAD_BAD_SUBDIV) << "maxsub " << maxsub;
  }
  // Stronger singularities are reported as divergent.
  call_result r = rj([](double x) { return 1.0 / (x * x); }, 0.0, 1.0, 0.0, 1e-10, 50);
  EXPECT_EQ(r.fail.code, NE_QUAD_NO_CONV);
  EXPECT_STREQ(r.fail.message, "NE_QUAD_NO_CONV:\n  The integral is probably divergent or slowly convergent.");
  EXPECT_EQ(r.fail.errnum, 5);
}

TEST(D01rj, UnresolvableJumpNamesItsInterval) {
  call_result r = rj(jump, 0.0, 1.0, 1e-10, 0.0, 100);
  ASSERT_EQ(r.fail.code, NE_QUAD_BAD_SUBDIV);
  EXPECT_EQ(r.fail.errnum, 3);
  const std::string m = r.fail.message;
  const std::string head = "NE_QUAD_BAD_SUBDIV:\n  Extremely bad integrand behaviour occurs around the sub-interval\n  (";
  ASSERT_EQ(m.substr(0, head.size()), head);
  // The two ends, as the message writes them, bracket the jump closely.
  char *end = nullptr;
  const double lo = std::strtod(m.c_str() + head.size(), &end);
  ASSERT_EQ(*end, ',');
  const double hi = std::strtod(end + 1, &end);
  EXPECT_STREQ(end, ").");
  EXPECT_LT(lo, jump_at);
  EXPECT_GT(hi, jump_at);
  EXPECT_LT((hi - lo) / jump_at, 1e-13);
  // Warnings keep every output: the estimate is close to 1e10 (1 - c).
  EXPECT_NEAR(r.result, 1e10 * (1.0 - jump_at), 1e-3);
}

TEST(D01rj, IflagOnTheSecondCallStopsAtOnce) {
  call_result r = rj(inv_sqrt, 0.0, 1.0, 0.0, 1e-10, 50, /*stop_at=*/2);
  EXPECT_EQ(r.fail.code, NE_USER_STOP);
  EXPECT_EQ(r.fail.errnum, -1);
  EXPECT_STREQ(r.fail.message, "NE_USER_STOP:\n  Exit from f with iflag < 0.");
  EXPECT_EQ(r.p.calls, 2);
  EXPECT_EQ(r.iinfo[0], 1);  // the bisection in progress is abandoned
  EXPECT_EQ(r.iinfo[1], 1);
  // The first rule's estimate, packed: a, b, e, r.
  EXPECT_EQ(r.rinfo[0], 0.0);
  EXPECT_EQ(r.rinfo[1], 1.0);
  EXPECT_EQ(r.abserr, r.rinfo[2]);
  EXPECT_EQ(r.result, r.rinfo[3]);
}

TEST(D01rj, CommFlagStopsWithItsValue) {
  call_result r = rj(inv_sqrt, 0.0, 1.0, 0.0, 1e-10, 50, 0, /*flag_at=*/3);
  EXPECT_EQ(r.fail.code, NE_USER_STOP);
  EXPECT_STREQ(r.fail.message, "NE_USER_STOP:\n  User requested termination, user flag value = 7.");
  EXPECT_EQ(r.p.calls, 3);
  EXPECT_EQ(r.iinfo[0], 1);
}

TEST(D01rj, MaxsubBelowOneIsRejectedBeforeAnyEvaluation) {
  call_result r = rj(exp_m_x2, 0.0, 1.0, 0.0, 1e-10, 0);
  EXPECT_EQ(r.fail.code, NE_INT);
  EXPECT_EQ(r.fail.errnum, 6);
  EXPECT_STREQ(r.fail.message, "NE_INT:\n  On entry, maxsub = 0.\n  Constraint: maxsub >= 1.");
  EXPECT_EQ(r.p.calls, 0);
}

TEST(D01rj, NullArgumentsAreRejectedByTheCEntry) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double result, abserr, rinfo[8];
  int64_t iinfo[2];
  d01rjc(vec_f, 0.0, 1.0, 0.0, 1e-8, 2, &result, &abserr, nullptr, iinfo, nullptr, &fail);
  EXPECT_EQ(fail.code, NE_BAD_PARAM);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter rinfo had an illegal value.");
  d01rjc(nullptr, 0.0, 1.0, 0.0, 1e-8, 2, &result, &abserr, rinfo, iinfo, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter f had an illegal value.");
}

// The packed lists describe the run: the n intervals tile [a, b], the
// ordering list is a permutation by decreasing error, and (for a run that
// ends with the global sum) result and abserr are the sums of the lists.
TEST(D01rj, PackedListsDescribeTheRun) {
  call_result r = rj([](double x) { return std::exp(20.0 * (x - 1.0)) * std::sin(256.0 * x); }, 0.0, 1.0,
                     0.0, 1e-10, 100);
  ASSERT_EQ(r.fail.code, NE_NOERROR);
  const int64_t n = r.iinfo[0];
  ASSERT_GT(n, 10);
  ASSERT_LT(n, 100);
  const double *al = &r.rinfo[0], *bl = &r.rinfo[n], *el = &r.rinfo[2 * n], *rl = &r.rinfo[3 * n];
  std::vector<std::pair<double, double>> iv;
  double esum = 0.0, rsum = 0.0;
  for (int64_t i = 0; i < n; ++i) {
    iv.emplace_back(al[i], bl[i]);
    esum += el[i];
    rsum += rl[i];
  }
  std::sort(iv.begin(), iv.end());
  EXPECT_EQ(iv.front().first, 0.0);
  EXPECT_EQ(iv.back().second, 1.0);
  for (std::size_t i = 1; i < iv.size(); ++i) EXPECT_EQ(iv[i].first, iv[i - 1].second);
  EXPECT_NEAR(rsum, r.result, 1e-15);
  // abserr is the engine's running error sum, which keeps the rounding
  // residue of the large early errors it subtracted (~eps times those).
  EXPECT_NEAR(esum, r.abserr, 1e-3 * r.abserr);
  std::vector<bool> seen(n + 1, false);
  for (int64_t i = 1; i <= n; ++i) {
    const int64_t k = r.iinfo[i];
    ASSERT_GE(k, 1);
    ASSERT_LE(k, n);
    EXPECT_FALSE(seen[k]);
    seen[k] = true;
    if (i > 1) {
      EXPECT_GE(el[r.iinfo[i - 1] - 1], el[k - 1]);
    }
  }
}

// Mirrored halves have equal errors; the right half keeps slot 1.
TEST(D01rj, TieGoesToTheRightHalf) {
  call_result r = rj(runge, -1.0, 1.0, 0.0, 1e-12, 2);
  ASSERT_EQ(r.iinfo[0], 2);
  EXPECT_EQ(r.rinfo[4], r.rinfo[5]);  // e_1 == e_2
  EXPECT_EQ(r.rinfo[0], 0.0);         // slot 1: [0, 1]
  EXPECT_EQ(r.rinfo[2], 1.0);
  EXPECT_EQ(r.rinfo[1], -1.0);        // slot 2: [-1, 0]
}

// ---- d01aj: the same engine with a scalar integrand --------------------------

TEST(D01aj, AgreesWithD01rjBitForBit) {
  const auto cases = d01test::read_battery(ZEM_TEST_DATA "/qags_battery.txt");
  int compared = 0;
  for (const auto &c : cases) {
    if (c.routine != "qags") continue;
    SCOPED_TRACE(c.name);
    call_result v = rj(d01test::battery_function(c.name), c.a, c.b, c.epsabs, c.epsrel, c.limit);
    call_result s;
    s.p.fs = d01test::battery_function(c.name);
    std::vector<double> w(4 * c.limit);
    std::vector<int64_t> iw(c.limit);
    Zem_Comm comm = {0, nullptr, nullptr, &s.p};
    d01ajc(scalar_f, c.a, c.b, c.epsabs, c.epsrel, &s.result, &s.abserr, w.data(), 4 * c.limit, iw.data(),
           c.limit, &comm, &s.fail);
    EXPECT_EQ(s.result, v.result);
    EXPECT_EQ(s.abserr, v.abserr);
    EXPECT_EQ(s.fail.errnum, v.fail.errnum);
    EXPECT_EQ(s.p.points, v.p.points);
    EXPECT_EQ(iw[0], v.iinfo[0]);
    for (int64_t i = 0; i < 4 * iw[0]; ++i) EXPECT_EQ(w[i], v.rinfo[i]);
    ++compared;
  }
  EXPECT_GE(compared, 30);
}

TEST(D01aj, WorkspaceSetsTheLimit) {
  probe p;
  p.fs = inv_x;
  Zem_Comm comm = {0, nullptr, nullptr, &p};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double result, abserr, w[40];
  int64_t iw[20];
  d01ajc(scalar_f, 0.0, 1.0, 0.0, 1e-10, &result, &abserr, w, 40, iw, 7, &comm, &fail);
  EXPECT_EQ(fail.code, NE_QUAD_MAX_SUBDIV);
  EXPECT_EQ(iw[0], 7);  // min(40/4, 7)
  EXPECT_STREQ(fail.message,
               "NE_QUAD_MAX_SUBDIV:\n  The maximum number of subdivisions, min(lw/4, liw), has been reached:\n"
               "  lw = 40 and liw = 7.");
  d01ajc(scalar_f, 0.0, 1.0, 0.0, 1e-10, &result, &abserr, w, 3, iw, 7, &comm, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, lw = 3.\n  Constraint: lw >= 4.");
  EXPECT_EQ(fail.errnum, 6);
  d01ajc(scalar_f, 0.0, 1.0, 0.0, 1e-10, &result, &abserr, w, 40, iw, 0, &comm, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, liw = 0.\n  Constraint: liw >= 1.");
}

// ---- d01rk --------------------------------------------------------------------

TEST(D01rk, EveryKeyConvergesWithItsPointCount) {
  const int64_t points[] = {15, 21, 31, 41, 51, 61};
  const double exact = 0.013492485649467772692;  // (atan 200 + atan 30) / 230
  auto peak = [](double x) { return 1.0 / (1.0 + (230.0 * x - 30.0) * (230.0 * x - 30.0)); };
  for (int64_t key = 1; key <= 6; ++key) {
    SCOPED_TRACE(key);
    probe p;
    p.fs = peak;
    Zem_Comm comm = {0, nullptr, nullptr, &p};
    Zem_Fail fail = ZEM_FAIL_INIT;
    double result, abserr, rinfo[400];
    int64_t iinfo[100];
    d01rkc(vec_f, 0.0, 1.0, 0.0, 1e-11, key, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
    ASSERT_EQ(fail.code, NE_NOERROR) << fail.message;
    EXPECT_LE(std::fabs(result - exact), abserr);
    EXPECT_LE(abserr, 1e-11 * exact);
    for (int64_t s : p.sizes) EXPECT_EQ(s, points[key - 1]);
    EXPECT_EQ(p.calls, 2 * iinfo[0] - 1);
  }
}

TEST(D01rk, KeyOutOfRange) {
  probe p;
  p.fs = zero;
  Zem_Comm comm = {0, nullptr, nullptr, &p};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double result, abserr, rinfo[8];
  int64_t iinfo[2];
  d01rkc(vec_f, 0.0, 1.0, 0.0, 1e-11, 7, 2, &result, &abserr, rinfo, iinfo, &comm, &fail);
  EXPECT_EQ(fail.code, NE_BAD_PARAM);
  EXPECT_EQ(fail.errnum, 7);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, key = 7.\n  Constraint: key = 1, 2, 3, 4, 5 or 6.");
  EXPECT_EQ(p.calls, 0);
}

// ---- d01rl ------------------------------------------------------------------

TEST(D01rl, BreakPointsAndTheirChecks) {
  probe p;
  p.fs = [](double x) { return std::log(std::fabs(x - 1.0 / 3.0)); };
  Zem_Comm comm = {0, nullptr, nullptr, &p};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double result, abserr, rinfo[200];
  int64_t iinfo[50];
  const double pt[] = {1.0 / 3.0};
  d01rlc(vec_f, 0.0, 1.0, 1, pt, 0.0, 1e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  const double c = 1.0 / 3.0, exact = c * std::log(c) + (1 - c) * std::log(1 - c) - 1;
  EXPECT_LE(std::fabs(result - exact), abserr + 1e-16);
  // b < a: the negative, from the same lists.
  double r2, e2;
  d01rlc(vec_f, 1.0, 0.0, 1, pt, 0.0, 1e-10, 50, &r2, &e2, rinfo, iinfo, &comm, &fail);
  EXPECT_EQ(r2, -result);
  EXPECT_EQ(e2, abserr);
  const double out[] = {1.5};
  d01rlc(vec_f, 0.0, 1.0, 1, out, 0.0, 1e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
  EXPECT_EQ(fail.code, NE_QUAD_BRKPTS_INVAL);
  EXPECT_EQ(fail.errnum, 8);
  EXPECT_STREQ(fail.message,
               "NE_QUAD_BRKPTS_INVAL:\n  On entry, break-points are specified outside (a,b):\n"
               "  a = 0.0 and b = 1.0.");
  d01rlc(vec_f, 0.0, 1.0, -1, pt, 0.0, 1e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, npts = -1.\n  Constraint: npts >= 0.");
  EXPECT_EQ(fail.errnum, 7);
  const double three[] = {0.2, 0.4, 0.6};
  d01rlc(vec_f, 0.0, 1.0, 3, three, 0.0, 1e-10, 3, &result, &abserr, rinfo, iinfo, &comm, &fail);
  EXPECT_STREQ(fail.message, "NE_INT_2:\n  On entry, maxsub = 3\n  and npts = 3.\n  Constraint: maxsub >= npts + 1.");
}

// ---- d01rm ------------------------------------------------------------------

TEST(D01rm, RangesAndTheirPoints) {
  struct {
    int64_t inf;
    double bound, exact;
  } cases[] = {{1, 0.0, 1.5707963267948966}, {-1, 0.0, 1.5707963267948966}, {2, 5.0, 3.141592653589793}};
  for (const auto &k : cases) {
    probe p;
    p.fs = [](double x) { return 1.0 / (1.0 + x * x); };
    Zem_Comm comm = {0, nullptr, nullptr, &p};
    Zem_Fail fail = ZEM_FAIL_INIT;
    double result, abserr, rinfo[200];
    int64_t iinfo[50];
    d01rmc(vec_f, k.bound, k.inf, 0.0, 1e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
    ASSERT_EQ(fail.code, NE_NOERROR) << k.inf;
    EXPECT_LE(std::fabs(result - k.exact), abserr + 4e-16) << k.inf;
    EXPECT_EQ(p.sizes[0], k.inf == 2 ? 30 : 15);
    for (int i = 0; i < 15; ++i) {
      if (k.inf == 2) {  // the second half of each call mirrors the first
        EXPECT_EQ(p.last_x[15 + i], -p.last_x[i]);
      } else if (k.inf == 1) {
        EXPECT_GT(p.last_x[i], k.bound);
      } else {
        EXPECT_LT(p.last_x[i], k.bound);
      }
    }
  }
  probe p;
  p.fs = zero;
  Zem_Comm comm = {0, nullptr, nullptr, &p};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double result, abserr, rinfo[8];
  int64_t iinfo[2];
  d01rmc(vec_f, 0.0, 3, 0.0, 1e-10, 2, &result, &abserr, rinfo, iinfo, &comm, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, inf = 3.\n  Constraint: inf = -1, 1 or 2.");
  EXPECT_EQ(fail.errnum, 7);
}

// ---- d01bd ------------------------------------------------------------------

struct bd_result {
  double result, abserr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  probe p;
};

bd_result bd(double (*fs)(double), double a, double b, double epsabs, double epsrel, int64_t stop_at = 0) {
  bd_result r;
  r.p.fs = fs;
  r.p.stop_at_call = stop_at;
  Zem_Comm comm = {0, nullptr, nullptr, &r.p};
  d01bdc(vec_f, a, b, epsabs, epsrel, &r.result, &r.abserr, &comm, &r.fail);
  return r;
}

TEST(D01bd, StopsAtTheFirstStageThatMeetsTheTolerance) {
  // Degree 30: exact for the 21-point rule; the Gauss 10 comparison alone
  // cannot tell, so a loose tolerance is met at 21 points, a tight one at 43.
  auto p30 = [](double x) { return std::pow(x, 30.0); };
  bd_result loose = bd(p30, 0.0, 1.0, 0.0, 1e-3);
  EXPECT_EQ(loose.fail.code, NE_NOERROR);
  EXPECT_EQ(loose.p.points, 21);
  EXPECT_NEAR(loose.result, 1.0 / 31.0, 1e-16);
  bd_result tight = bd(p30, 0.0, 1.0, 0.0, 1e-12);
  EXPECT_EQ(tight.fail.code, NE_NOERROR);
  EXPECT_EQ(tight.p.points, 43);
  EXPECT_EQ(tight.p.sizes, (std::vector<int64_t>{21, 22}));
  EXPECT_NEAR(tight.result, 1.0 / 31.0, 1e-16);
  bd_result g = bd(exp_m_x2, -6.0, 6.0, 0.0, 1e-14);
  EXPECT_EQ(g.fail.code, NE_NOERROR);
  EXPECT_EQ(g.p.points, 87);
  EXPECT_LE(std::fabs(g.result - 1.7724538509055159), g.abserr);  // sqrt(pi) erf(6)
}

TEST(D01bd, WarnsWhenEvenTheLastStageFallsShort) {
  bd_result r = bd(inv_sqrt, 0.0, 1.0, 0.0, 1e-10);
  EXPECT_EQ(r.fail.code, NW_TOO_MUCH_ACC_REQUESTED);
  EXPECT_EQ(r.fail.errnum, 1);
  EXPECT_EQ(r.p.points, 87);
  const std::string m = r.fail.message;
  EXPECT_EQ(m.substr(0, m.find("abserr = ")),
            "NW_TOO_MUCH_ACC_REQUESTED:\n  The requested accuracy could not be achieved with the 87-point rule:\n"
            "  epsabs = 0.0 and epsrel = 1e-10.\n  The error estimate is ");
  EXPECT_NEAR(r.result, 2.0, 0.2);
  EXPECT_LE(std::fabs(r.result - 2.0), r.abserr);
  bd_result s = bd(inv_sqrt, 0.0, 1.0, 0.0, 1e-10, /*stop_at=*/2);
  EXPECT_STREQ(s.fail.message, "NE_USER_STOP:\n  Exit from f with iflag < 0.");
  EXPECT_EQ(s.p.calls, 2);
}

}  // namespace
