// g05sk: the variates against the uniform fill of the same state (bit for
// bit), and the order of the checks in both entries' failure reports
// (var = 0, n = 0 and the null pointers are in the client programs).
#include <gtest/gtest.h>
#include <zem.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "g05/normal_inverse.h"
#include "g05_test_util.h"

namespace {

using g05test::make_state;

bool same_bits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// sd Q(u) + xmu for the uniforms g05sa draws from a copy of the same state,
// and the state left exactly as g05sa leaves it.
TEST(G05sk, EqualsInversionOfTheUniformFill) {
  struct variate_case {
    int64_t genid, n;
    double xmu, var;
  };
  const variate_case cases[] = {
      {1, 1000, 0.0, 1.0},   {3, 100003, 0.0, 1.0}, {3, 777, -3.5, 2.25}, {2, 513, 1e6, 1e-4},
      {4, 300, 0.5, 7.0},    {6, 4096, -1.0, 0.3},  {5, 257, 2.0, 1.0},
  };
  for (const variate_case &c : cases) {
    std::vector<int64_t> a = make_state(c.genid, 1, {1762543}), b = a;
    std::vector<double> u(c.n), x(c.n);
    Zem_Fail fail = ZEM_FAIL_INIT;
    g05sac(c.n, a.data(), u.data(), &fail);
    ASSERT_EQ(fail.code, NE_NOERROR);
    g05skc(c.n, c.xmu, c.var, b.data(), x.data(), &fail);
    ASSERT_EQ(fail.code, NE_NOERROR);
    for (int64_t i = 0; i < c.n; ++i)
      ASSERT_TRUE(same_bits(x[i], std::sqrt(c.var) * zem::g05::normal_inverse(u[i]) + c.xmu))
          << "genid " << c.genid << " i = " << i << " u = " << u[i];
    EXPECT_EQ(a, b) << "genid " << c.genid;
  }
}

// n, then var (a NaN fails too), then the state, even when var = 0 would
// draw nothing; nothing written; the same status in both entries.
TEST(G05sk, FailuresInOrder) {
  struct failure_case {
    const char *what;
    int64_t n;
    double var;
    int code;
    int64_t errnum;
    const char *message;
  };
  const failure_case cases[] = {
      {"n before var", -5, -1.0, NE_INT, 1, "NE_INT:\n  On entry, n = -5.\n  Constraint: n >= 0."},
      {"var before state", 10, -2.0, NE_REAL, 3, "NE_REAL:\n  On entry, var = -2.0.\n  Constraint: var >= 0.0."},
      {"NaN var", 10, std::nan(""), NE_REAL, 3, "NE_REAL:\n  On entry, var = nan.\n  Constraint: var >= 0.0."},
      {"state with var = 0", 10, 0.0, NE_INVALID_STATE, 4,
       "NE_INVALID_STATE:\n  On entry, state vector has been corrupted or not initialized."},
  };
  for (const failure_case &c : cases) {
    std::vector<int64_t> s = make_state(3, 1, {11});
    s[1] += 1;  // the check word: every case has a corrupted state
    std::vector<double> x(10, -7.0);
    Zem_Fail fail = ZEM_FAIL_INIT;
    g05skc(c.n, 0.0, c.var, s.data(), x.data(), &fail);
    EXPECT_EQ(fail.code, c.code) << c.what;
    EXPECT_EQ(fail.errnum, c.errnum) << c.what;
    EXPECT_STREQ(fail.message, c.message) << c.what;
    EXPECT_EQ(x, std::vector<double>(10, -7.0)) << c.what;
    int64_t ifail = 1;
    const double xmu = 0.0;
    g05skf_(&c.n, &xmu, &c.var, s.data(), x.data(), &ifail);
    EXPECT_EQ(ifail, c.errnum) << c.what;
  }
}

}  // namespace
