// The six routines of chapter d01 through their C entries: agreement with
// the engines they drive, the packed outputs, the edge cases and messages.
#include <gtest/gtest.h>

#include <zem.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "quad_harness.h"

namespace {

// What the integrand saw; comm->p points at one.
struct probe {
  double (*fs)(double) = nullptr;
  int64_t calls = 0, points = 0;
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
  return p.fs(x);
}

struct call_result {
  double result = NAN, abserr = NAN;
  std::vector<double> rinfo;
  std::vector<int64_t> iinfo;
  Zem_Fail fail = ZEM_FAIL_INIT;
  probe p;
  Zem_Comm comm = {0, nullptr, nullptr, nullptr};
  call_result(double (*fs)(double), int64_t maxsub) : rinfo(4 * maxsub, -7.0), iinfo(maxsub, -7) {
    p.fs = fs;
    comm.p = &p;
  }
};

double exp_m_x2(double x) { return std::exp(-x * x); }
double inv_sqrt(double x) { return 1.0 / std::sqrt(x); }
double inv_x(double x) { return 1.0 / x; }

// ---- Every entry against its engine, on the whole battery -------------------

// d01rj and d01aj on finite intervals, d01rl with break points, d01rm on
// infinite ranges, each against the engine run of the same row (checked
// against the classic code and the exact integrals in test_d01_battery.cpp):
// result and abserr to the bit, the status, one call of f per rule
// application, and rinfo/iinfo packed from the engine's lists, which tile
// the range, with the ordering list where the engine wrote it (0 elsewhere).
TEST(D01Entries, AgreeWithTheirEngineOnTheBattery) {
  for (const auto &c : d01test::read_battery(ZEM_TEST_DATA "/qags_battery.txt")) {
    SCOPED_TRACE(c.name);
    const d01test::run_result e = d01test::run_row(c, zem::quad::zem_policy, zem::quad::active_kernels());
    const int64_t n = e.o.last, limit = c.limit;
    call_result r(d01test::battery_function(c.name), limit);
    int64_t per_call = 21, calls = 2 * n - 1;
    double lo = std::min(c.a, c.b), hi = std::max(c.a, c.b);
    if (c.routine == "qags") {
      d01rjc(vec_f, c.a, c.b, c.epsabs, c.epsrel, limit, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(),
             &r.comm, &r.fail);
    } else if (c.routine == "qagp") {
      const int64_t npts = static_cast<int64_t>(c.points.size());
      d01rlc(vec_f, c.a, c.b, npts, c.points.data(), c.epsabs, c.epsrel, limit, &r.result, &r.abserr,
             r.rinfo.data(), r.iinfo.data(), &r.comm, &r.fail);
      calls = 2 * n - (npts + 1);  // the initial partition, then two per bisection
    } else {
      const int64_t inf = static_cast<int64_t>(c.b);
      d01rmc(vec_f, c.a, inf, c.epsabs, c.epsrel, limit, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(),
             &r.comm, &r.fail);
      per_call = inf == 2 ? 30 : 15;  // for inf = 2, x(t) and -x(t) in one call
      lo = 0.0, hi = 1.0;
      for (int64_t i = 0; inf == 2 && i < 15; ++i) EXPECT_EQ(r.p.last_x[15 + i], -r.p.last_x[i]);
    }
    EXPECT_EQ(std::tie(r.result, r.abserr, r.fail.errnum, r.p.points),
              std::tie(e.o.result, e.o.abserr, e.o.code, e.o.neval));
    EXPECT_EQ(r.p.sizes, std::vector<int64_t>(calls, per_call));
    std::vector<double> packed;
    for (auto *l : {&e.alist, &e.blist, &e.elist, &e.rlist}) packed.insert(packed.end(), l->data(), l->data() + n);
    std::vector<int64_t> order{n};
    for (int64_t i = 0; i < std::min(n, limit - 1); ++i) order.push_back(e.iord[i] >= 0 ? e.iord[i] + 1 : 0);
    EXPECT_EQ(std::vector<double>(r.rinfo.begin(), r.rinfo.begin() + 4 * n), packed);
    EXPECT_EQ(std::vector<int64_t>(r.iinfo.begin(), r.iinfo.begin() + order.size()), order);
    std::vector<std::pair<double, double>> tiles;
    for (int64_t i = 0; i < n; ++i) tiles.emplace_back(std::minmax(packed[i], packed[n + i]));
    std::sort(tiles.begin(), tiles.end());
    EXPECT_EQ(tiles.front().first, lo);
    EXPECT_EQ(tiles.back().second, hi);
    for (int64_t i = 1; i < n; ++i) EXPECT_EQ(tiles[i].first, tiles[i - 1].second);
    if (c.routine != "qags") continue;
    // d01aj: the same engine with a scalar f and workspace for rinfo/iinfo.
    call_result s(d01test::battery_function(c.name), limit);
    d01ajc(scalar_f, c.a, c.b, c.epsabs, c.epsrel, &s.result, &s.abserr, s.rinfo.data(), 4 * limit,
           s.iinfo.data(), limit, &s.comm, &s.fail);
    EXPECT_EQ(std::tie(s.result, s.abserr, s.fail.errnum, s.p.calls),
              std::tie(r.result, r.abserr, r.fail.errnum, r.p.points));
    EXPECT_EQ(std::vector<double>(s.rinfo.begin(), s.rinfo.begin() + 4 * n), packed);
    EXPECT_EQ(std::vector<int64_t>(s.iinfo.begin(), s.iinfo.begin() + order.size()), order);
  }
}

// ---- d01rj: failures, stops and ties -------------------------------------------

// Status and exact message (the limit's is in client_d01c.out); a stop
// abandons the bisection in progress and leaves the first estimate packed
// as a, b, abserr, result.
TEST(D01rj, FailuresReportStatusMessageAndProgress) {
  const struct {
    const char *name;
    double (*fs)(double);
    double epsabs, epsrel;
    int64_t maxsub, stop_at, flag_at;  // f stops by iflag, or by comm->flag, on this call
    int code, errnum;
    const char *message;  // nullptr: not checked
  } cases[] = {
      {"round-off", [](double x) { return x < d01test::third ? -1.0 : 1.0; }, 1e-15, 0.0, 200, 0, 0,
       NE_QUAD_ROUNDOFF_TOL, 2,
       "NE_QUAD_ROUNDOFF_TOL:\n  Round-off error prevents the requested tolerance from being achieved:\n"
       "  epsabs = 1e-15 and epsrel = 0.0."},
      {"extrapolation", inv_sqrt, 0.0, 0.0, 50, 0, 0, NE_QUAD_ROUNDOFF_EXTRAPL, 4,
       "NE_QUAD_ROUNDOFF_EXTRAPL:\n  Round-off error is detected in the extrapolation table."},
      {"divergent", [](double x) { return 1.0 / (x * x); }, 0.0, 1e-10, 50, 0, 0, NE_QUAD_NO_CONV, 5,
       "NE_QUAD_NO_CONV:\n  The integral is probably divergent or slowly convergent."},
      // Beyond ~1000 intervals (work storage on the heap) the one at 0
      // shrinks to the resolution of the numbers; below, the battery's rows
      // give the classic outcome, the limit.
      {"1/x, maxsub 2000", inv_x, 0.0, 1e-10, 2000, 0, 0, NE_QUAD_BAD_SUBDIV, 3, nullptr},
      {"iflag", inv_sqrt, 0.0, 1e-10, 50, 2, 0, NE_USER_STOP, -1, "NE_USER_STOP:\n  Exit from f with iflag < 0."},
      {"comm flag", inv_sqrt, 0.0, 1e-10, 50, 0, 3, NE_USER_STOP, -1,
       "NE_USER_STOP:\n  User requested termination, user flag value = 7."},
  };
  for (const auto &k : cases) {
    SCOPED_TRACE(k.name);
    call_result r(k.fs, k.maxsub);
    r.p.stop_at_call = k.stop_at;
    r.p.flag_at_call = k.flag_at;
    d01rjc(vec_f, 0.0, 1.0, k.epsabs, k.epsrel, k.maxsub, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(),
           &r.comm, &r.fail);
    EXPECT_EQ(r.fail.code, k.code) << r.fail.message;
    EXPECT_EQ(r.fail.errnum, k.errnum);
    if (k.message) { EXPECT_STREQ(r.fail.message, k.message); }
    if (k.code != NE_USER_STOP) continue;
    EXPECT_EQ(r.p.calls, k.stop_at + k.flag_at);
    EXPECT_EQ(std::vector<int64_t>(r.iinfo.begin(), r.iinfo.begin() + 2), (std::vector<int64_t>{1, 1}));
    EXPECT_EQ(std::vector<double>(r.rinfo.begin(), r.rinfo.begin() + 4), (std::vector{0.0, 1.0, r.abserr, r.result}));
  }
}

TEST(D01rj, UnresolvableJumpNamesItsInterval) {
  constexpr double jump_at = d01test::r2;
  call_result r([](double x) { return x < jump_at ? 0.0 : 1e10; }, 100);
  d01rjc(vec_f, 0.0, 1.0, 1e-10, 0.0, 100, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(), &r.comm,
         &r.fail);
  ASSERT_EQ(r.fail.code, NE_QUAD_BAD_SUBDIV);
  EXPECT_EQ(r.fail.errnum, 3);
  const std::string m = r.fail.message;
  const std::string head =
      "NE_QUAD_BAD_SUBDIV:\n  Extremely bad integrand behaviour occurs around the sub-interval\n  (";
  ASSERT_EQ(m.substr(0, head.size()), head);
  // The two ends, as the message writes them, bracket the jump closely.
  double lo = 0.0, hi = 0.0;
  int used = 0;
  ASSERT_EQ(std::sscanf(m.c_str() + head.size(), "%lf,%lf%n", &lo, &hi, &used), 2);
  EXPECT_EQ(m.substr(head.size() + used), ").");
  EXPECT_LT(lo, jump_at);
  EXPECT_GT(hi, jump_at);
  EXPECT_LT((hi - lo) / jump_at, 1e-13);
  // Warnings keep every output: the estimate is close to 1e10 (1 - c).
  EXPECT_NEAR(r.result, 1e10 * (1.0 - jump_at), 1e-3);
}

// Mirrored halves have equal errors; the right half keeps slot 1.  (The run
// ends with n = maxsub - 1 intervals: the last case where rinfo is packed.)
TEST(D01rj, TieGoesToTheRightHalf) {
  call_result r([](double x) { return 1.0 / (1.0 + 25.0 * x * x); }, 3);
  d01rjc(vec_f, -1.0, 1.0, 0.0, 1e-4, 3, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(), &r.comm, &r.fail);
  ASSERT_EQ(r.iinfo[0], 2);
  EXPECT_EQ(r.rinfo[4], r.rinfo[5]);  // e_1 == e_2
  EXPECT_EQ(r.rinfo[0], 0.0);         // slot 1: [0, 1]
  EXPECT_EQ(r.rinfo[2], 1.0);
  EXPECT_EQ(r.rinfo[1], -1.0);  // slot 2: [-1, 0]
  EXPECT_EQ(r.rinfo[3], 0.0);
}

// ---- Argument checks of every entry ---------------------------------------------

// Caught before any evaluation, with the status and the exact message; and
// d01aj's subdivision limit min(lw/4, liw) with its own message.
TEST(D01Entries, ArgumentChecksAndMessages) {
  call_result r(inv_x, 100);
  double *ri = r.rinfo.data(), res, err;
  int64_t *ii = r.iinfo.data();
  Zem_Comm *cm = &r.comm;
  const double half[] = {0.5}, out[] = {1.5}, three[] = {0.2, 0.4, 0.6};
  const struct {
    std::function<void(Zem_Fail *)> call;
    int code, errnum;
    const char *message;
    bool evaluates = false;
  } cases[] = {
      {[&](Zem_Fail *f) { d01rjc(vec_f, 0, 1, 0, 1e-8, 0, &res, &err, ri, ii, cm, f); }, NE_INT, 6,
       "NE_INT:\n  On entry, maxsub = 0.\n  Constraint: maxsub >= 1."},
      {[&](Zem_Fail *f) { d01rjc(vec_f, 0, 1, 0, 1e-8, 2, &res, &err, nullptr, ii, cm, f); }, NE_BAD_PARAM, 0,
       "NE_BAD_PARAM:\n  On entry, parameter rinfo had an illegal value."},
      {[&](Zem_Fail *f) { d01ajc(scalar_f, 0, 1, 0, 1e-10, &res, &err, ri, 3, ii, 7, cm, f); }, NE_INT, 6,
       "NE_INT:\n  On entry, lw = 3.\n  Constraint: lw >= 4."},
      {[&](Zem_Fail *f) { d01ajc(scalar_f, 0, 1, 0, 1e-10, &res, &err, ri, 40, ii, 0, cm, f); }, NE_INT, 6,
       "NE_INT:\n  On entry, liw = 0.\n  Constraint: liw >= 1."},
      {[&](Zem_Fail *f) {
         d01ajc(scalar_f, 0, 1, 0, 1e-10, &res, &err, ri, 40, ii, 7, cm, f);
         EXPECT_EQ(ii[0], 7);  // min(40/4, 7)
       },
       NE_QUAD_MAX_SUBDIV, 1,
       "NE_QUAD_MAX_SUBDIV:\n  The maximum number of subdivisions, min(lw/4, liw), has been reached:\n"
       "  lw = 40 and liw = 7.",
       true},
      {[&](Zem_Fail *f) { d01rkc(vec_f, 0, 1, 0, 1e-11, 7, 2, &res, &err, ri, ii, cm, f); }, NE_BAD_PARAM, 7,
       "NE_BAD_PARAM:\n  On entry, key = 7.\n  Constraint: key = 1, 2, 3, 4, 5 or 6."},
      {[&](Zem_Fail *f) { d01rlc(vec_f, 0, 1, 1, out, 0, 1e-10, 50, &res, &err, ri, ii, cm, f); },
       NE_QUAD_BRKPTS_INVAL, 8,
       "NE_QUAD_BRKPTS_INVAL:\n  On entry, break-points are specified outside (a,b):\n  a = 0.0 and b = 1.0."},
      {[&](Zem_Fail *f) { d01rlc(vec_f, 0, 1, -1, half, 0, 1e-10, 50, &res, &err, ri, ii, cm, f); }, NE_INT, 7,
       "NE_INT:\n  On entry, npts = -1.\n  Constraint: npts >= 0."},
      {[&](Zem_Fail *f) { d01rlc(vec_f, 0, 1, 3, three, 0, 1e-10, 3, &res, &err, ri, ii, cm, f); }, NE_INT_2, 6,
       "NE_INT_2:\n  On entry, maxsub = 3\n  and npts = 3.\n  Constraint: maxsub >= npts + 1."},
      {[&](Zem_Fail *f) { d01rmc(vec_f, 0, 3, 0, 1e-10, 2, &res, &err, ri, ii, cm, f); }, NE_BAD_PARAM, 7,
       "NE_BAD_PARAM:\n  On entry, inf = 3.\n  Constraint: inf = -1, 1 or 2."},
  };
  for (const auto &k : cases) {
    SCOPED_TRACE(k.message);
    Zem_Fail fail = ZEM_FAIL_INIT;
    const int64_t before = r.p.calls;
    k.call(&fail);
    EXPECT_EQ(fail.code, k.code);
    EXPECT_EQ(fail.errnum, k.errnum);
    EXPECT_STREQ(fail.message, k.message);
    EXPECT_EQ(r.p.calls > before, k.evaluates);
  }
}

// ---- d01rk, d01bd --------------------------------------------------------------

TEST(D01rk, EveryKeyConvergesWithItsPointCount) {
  const int64_t points[] = {15, 21, 31, 41, 51, 61};
  const double exact = 0.013492485649467772692;  // (atan 200 + atan 30) / 230
  for (int64_t key = 1; key <= 6; ++key) {
    SCOPED_TRACE(key);
    call_result r(d01test::battery_function("runge_230"), 100);
    d01rkc(vec_f, 0.0, 1.0, 0.0, 1e-11, key, 100, &r.result, &r.abserr, r.rinfo.data(), r.iinfo.data(), &r.comm,
           &r.fail);
    ASSERT_EQ(r.fail.code, NE_NOERROR) << r.fail.message;
    EXPECT_LE(std::fabs(r.result - exact), r.abserr);
    EXPECT_LE(r.abserr, 1e-11 * exact);
    EXPECT_EQ(r.p.sizes, std::vector<int64_t>(2 * r.iinfo[0] - 1, points[key - 1]));
  }
}

// Patterson's stages: the first whose estimate meets the tolerance ends the
// run.  x^30 is exact for the 21-point rule, but the Gauss 10 comparison
// cannot tell, so a loose tolerance is met at 21 points, a tight one at 43.
TEST(D01bd, StopsAtTheFirstStageThatMeetsTheTolerance) {
  auto p30 = [](double x) { return std::pow(x, 30.0); };
  const struct {
    const char *name;
    double (*fs)(double);
    double a, b, epsrel, exact, err_bound;  // err_bound 0: abserr
    int64_t stop_at;
    int code;
    std::vector<int64_t> sizes;
  } cases[] = {
      {"x^30 loose", p30, 0.0, 1.0, 1e-3, 1.0 / 31.0, 1e-16, 0, NE_NOERROR, {21}},
      {"x^30 tight", p30, 0.0, 1.0, 1e-12, 1.0 / 31.0, 1e-16, 0, NE_NOERROR, {21, 22}},
      {"exp(-x^2)", exp_m_x2, -6.0, 6.0, 1e-14, 1.7724538509055159, 0.0, 0, NE_NOERROR, {21, 22, 44}},
      {"1/sqrt(x)", inv_sqrt, 0.0, 1.0, 1e-10, 2.0, 0.0, 0, NW_TOO_MUCH_ACC_REQUESTED, {21, 22, 44}},
      {"iflag stop", inv_sqrt, 0.0, 1.0, 1e-10, 2.0, 0.0, 2, NE_USER_STOP, {21, 22}},
  };
  for (const auto &k : cases) {
    SCOPED_TRACE(k.name);
    call_result r(k.fs, 1);
    r.p.stop_at_call = k.stop_at;
    d01bdc(vec_f, k.a, k.b, 0.0, k.epsrel, &r.result, &r.abserr, &r.comm, &r.fail);
    EXPECT_EQ(r.fail.code, k.code);
    EXPECT_EQ(r.p.sizes, k.sizes);
    if (k.stop_at) {
      EXPECT_STREQ(r.fail.message, "NE_USER_STOP:\n  Exit from f with iflag < 0.");
      continue;
    }
    EXPECT_EQ(r.fail.errnum, k.code == NE_NOERROR ? 0 : 1);
    EXPECT_LE(std::fabs(r.result - k.exact), k.err_bound > 0 ? k.err_bound : r.abserr);
  }
}

}  // namespace
