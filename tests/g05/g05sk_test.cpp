// g05sk: the variates against the uniform fill of the same state (bit for
// bit), var = 0 and n = 0 drawing nothing, the order of the checks, and both
// entries' failure reports.
#include <gtest/gtest.h>
#include <zem.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "g05/normal_inverse.h"

namespace {

bool same_bits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

std::vector<int64_t> make_state(Zem_BaseRNG genid, int64_t seed) {
  int64_t lstate = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;
  g05kfc(genid, 1, &seed, 1, nullptr, &lstate, &fail);  // query the length
  std::vector<int64_t> state(lstate);
  g05kfc(genid, 1, &seed, 1, state.data(), &lstate, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  return state;
}

struct variate_case {
  Zem_BaseRNG genid;
  int64_t n;
  double xmu, var;
};

// sd Q(u) + xmu for the uniforms g05sa draws from a copy of the same state,
// and the state left exactly as g05sa leaves it.
TEST(G05sk, EqualsInversionOfTheUniformFill) {
  const variate_case cases[] = {
      {Zem_Basic, 1000, 0.0, 1.0},        {Zem_MersenneTwister, 100003, 0.0, 1.0},
      {Zem_MersenneTwister, 777, -3.5, 2.25}, {Zem_WichmannHill_I, 513, 1e6, 1e-4},
      {Zem_WichmannHill_II, 300, 0.5, 7.0},   {Zem_MRG32k3a, 4096, -1.0, 0.3},
      {Zem_ACORN, 257, 2.0, 1.0},
  };
  for (const auto &c : cases) {
    std::vector<int64_t> a = make_state(c.genid, 1762543), b = a;
    std::vector<double> u(c.n), x(c.n);
    Zem_Fail fail = ZEM_FAIL_INIT;
    g05sac(c.n, a.data(), u.data(), &fail);
    ASSERT_EQ(fail.code, NE_NOERROR);
    g05skc(c.n, c.xmu, c.var, b.data(), x.data(), &fail);
    ASSERT_EQ(fail.code, NE_NOERROR);
    const double sd = std::sqrt(c.var);
    for (int64_t i = 0; i < c.n; ++i)
      ASSERT_TRUE(same_bits(x[i], sd * zem::g05::normal_inverse(u[i]) + c.xmu))
          << "genid " << c.genid << " i = " << i << " u = " << u[i];
    EXPECT_EQ(a, b) << "genid " << c.genid;
  }
}

// Two calls continue the stream exactly as one call of the total length.
TEST(G05sk, ConsecutiveCallsContinueTheStream) {
  std::vector<int64_t> a = make_state(Zem_MersenneTwister, 42), b = a;
  std::vector<double> one(2000), two(2000);
  Zem_Fail fail = ZEM_FAIL_INIT;
  g05skc(2000, 0.0, 1.0, a.data(), one.data(), &fail);
  g05skc(613, 0.0, 1.0, b.data(), two.data(), &fail);
  g05skc(1387, 0.0, 1.0, b.data(), two.data() + 613, &fail);
  EXPECT_EQ(one, two);
  EXPECT_EQ(a, b);
}

TEST(G05sk, ZeroVarianceDrawsNothing) {
  std::vector<int64_t> s = make_state(Zem_MersenneTwister, 7);
  const std::vector<int64_t> before = s;
  std::vector<double> x(50, -1.0);
  Zem_Fail fail = ZEM_FAIL_INIT;
  g05skc(50, 3.25, 0.0, s.data(), x.data(), &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(x, std::vector<double>(50, 3.25));
  EXPECT_EQ(s, before);
}

TEST(G05sk, NoVariatesDrawNothing) {
  std::vector<int64_t> s = make_state(Zem_Basic, 7);
  const std::vector<int64_t> before = s;
  double x = -1.0;
  Zem_Fail fail = ZEM_FAIL_INIT;
  g05skc(0, 0.0, 1.0, s.data(), &x, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(x, -1.0);
  EXPECT_EQ(s, before);
}

struct failure_case {
  const char *what;
  int64_t n;
  double var;
  bool corrupt;  // break the state's check word
  int code;
  int64_t errnum;
  const char *message;
};

TEST(G05sk, FailuresInOrder) {
  const failure_case cases[] = {
      {"n < 0", -1, 1.0, false, NE_INT, 1, "NE_INT:\n  On entry, n = -1.\n  Constraint: n >= 0."},
      {"n before var", -5, -1.0, true, NE_INT, 1, "NE_INT:\n  On entry, n = -5.\n  Constraint: n >= 0."},
      {"var < 0", 10, -0.5, false, NE_REAL, 3, "NE_REAL:\n  On entry, var = -0.5.\n  Constraint: var >= 0.0."},
      {"var before state", 10, -2.0, true, NE_REAL, 3,
       "NE_REAL:\n  On entry, var = -2.0.\n  Constraint: var >= 0.0."},
      {"NaN var", 10, std::nan(""), false, NE_REAL, 3,
       "NE_REAL:\n  On entry, var = nan.\n  Constraint: var >= 0.0."},
      {"state", 10, 1.0, true, NE_INVALID_STATE, 4,
       "NE_INVALID_STATE:\n  On entry, state vector has been corrupted or not initialized."},
      {"state with var = 0", 10, 0.0, true, NE_INVALID_STATE, 4,
       "NE_INVALID_STATE:\n  On entry, state vector has been corrupted or not initialized."},
  };
  for (const auto &c : cases) {
    std::vector<int64_t> s = make_state(Zem_MersenneTwister, 11);
    if (c.corrupt) s[1] += 1;
    std::vector<double> x(10, -7.0);
    Zem_Fail fail = ZEM_FAIL_INIT;
    g05skc(c.n, 0.0, c.var, s.data(), x.data(), &fail);
    EXPECT_EQ(fail.code, c.code) << c.what;
    EXPECT_EQ(fail.errnum, c.errnum) << c.what;
    EXPECT_STREQ(fail.message, c.message) << c.what;
    EXPECT_EQ(x, std::vector<double>(10, -7.0)) << c.what;  // nothing written

    int64_t ifail = 1;
    const double xmu = 0.0;
    g05skf_(&c.n, &xmu, &c.var, s.data(), x.data(), &ifail);
    EXPECT_EQ(ifail, c.errnum) << c.what;
  }
}

TEST(G05sk, NullPointersInTheCEntry) {
  std::vector<int64_t> s = make_state(Zem_Basic, 3);
  double x[4];
  Zem_Fail fail = ZEM_FAIL_INIT;
  g05skc(4, 0.0, 1.0, nullptr, x, &fail);
  EXPECT_EQ(fail.code, NE_BAD_PARAM);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter state had an illegal value.");
  g05skc(4, 0.0, 1.0, s.data(), nullptr, &fail);
  EXPECT_EQ(fail.code, NE_BAD_PARAM);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter x had an illegal value.");
  g05skc(0, 0.0, 1.0, s.data(), nullptr, &fail);  // nothing to write: accepted
  EXPECT_EQ(fail.code, NE_NOERROR);
}

}  // namespace
