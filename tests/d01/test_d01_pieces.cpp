// The pieces of the quadrature engines: rule tables and kernel, the epsilon
// algorithm, the compensated sum.  (The ordering routine is pinned by the
// battery's ordering lists, test_d01_battery.cpp.)
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "d01/quad_engine.h"
#include "d01/quad_rule.h"
#include "d01/zem_blas_dsum.h"

namespace {

namespace q = zem::quad;

// ---- Rule tables -----------------------------------------------------------

// Each pair through the kernel: x^k on [0, 1] comes out exact (to rounding)
// up to the Kronrod rule's degree, the n-point Gauss rule to 2n - 1.  Mirrored
// intervals give bit-identical estimates (pairs are summed first), so the
// bisection's tie rule sees equal errors as equal.
TEST(D01Rules, EveryPairIsExactToItsDegreeAndSymmetric) {
  const struct {
    const char *name;
    q::pair_block block;
    int degree;  // Kronrod degree of exactness
  } pairs[] = {
      {"7-15", q::gk15.block(), 23},  {"10-21", q::gk21.block(), 31}, {"15-31", q::gk31.block(), 47},
      {"20-41", q::gk41.block(), 61}, {"25-51", q::gk51.block(), 77}, {"30-61", q::gk61.block(), 91},
  };
  const q::rule_kernels &kern = q::active_kernels();
  for (const auto &p : pairs) {
    SCOPED_TRACE(p.name);
    for (int k = 0; k <= p.degree; ++k) {
      double x[q::block_buffer] = {}, fv[q::block_buffer] = {};
      kern.abscissae(p.block, 0.5, 0.5, x);
      for (int64_t i = 0; i < p.block.points(); ++i) fv[i] = std::pow(x[i], k);
      const q::kernel_sums s = kern.sums(p.block, fv);
      EXPECT_NEAR(s.k * 0.5, 1.0 / (k + 1), 4e-16 * p.block.m) << "Kronrod, k = " << k;
      if (k < 2 * p.block.m) { EXPECT_NEAR(s.g * 0.5, 1.0 / (k + 1), 4e-16 * p.block.m) << "Gauss, k = " << k; }
    }
    auto runge = [](const double *x, int64_t n, double *fv) -> int64_t {
      for (int64_t i = 0; i < n; ++i) fv[i] = 1.0 / (1.0 + 25.0 * x[i] * x[i]);
      return 0;
    };
    q::integrand_ref fr(runge);
    q::gk_rule rule(p.block, fr, kern, q::zem_policy);
    q::rule_estimate l, r;
    ASSERT_EQ(rule(-0.9, -0.1, l) + rule(0.1, 0.9, r), 0);
    EXPECT_EQ(std::tie(l.result, l.abserr, l.resasc), std::tie(r.result, r.abserr, r.resasc));
  }
}

// Patterson's 21-, 43- and 87-point stages on [-1, 1], each built from the
// blocks of the stages before: exact to degrees 31, 65 and 131 (the Gauss
// 10 rule inside the first to 19).
TEST(D01Rules, PattersonStagesAreExactToTheirDegrees) {
  const q::patterson_layout &L = q::patterson;
  const q::rule_kernels &kern = q::active_kernels();
  const q::pair_block b1 = L.b1.block(L.w21_1, L.w21_c, L.g10_1, 0.0), b2 = L.b2.block(L.w43_2, 0.0, L.zero, 0.0),
                      b3 = L.b3.block(L.w87_3, 0.0, L.zero, 0.0);
  for (int k = 0; k <= 131; ++k) {
    double x[q::block_buffer] = {}, f1[q::block_buffer] = {}, f2[q::block_buffer] = {}, f3[q::block_buffer] = {};
    kern.abscissae(b1, 0.0, 1.0, x);
    for (int i = 0; i < 21; ++i) f1[i] = std::pow(x[i], k);
    kern.abscissae(b2, 0.0, 1.0, x);
    for (int i = 0; i < 22; ++i) f2[i] = std::pow(x[i], k);
    kern.abscissae(b3, 0.0, 1.0, x);
    for (int i = 0; i < 44; ++i) f3[i] = std::pow(x[i], k);
    const double exact = k % 2 ? 0.0 : 2.0 / (k + 1);
    const q::kernel_sums s21 = kern.sums(b1, f1);
    const double k43 = kern.sums(L.b1.block(L.w43_1, L.w43_c, L.zero, 0.0), f1).k + kern.sums(b2, f2).k;
    const double k87 = kern.sums(L.b1.block(L.w87_1, L.w87_c, L.zero, 0.0), f1).k +
                       kern.sums(L.b2.block(L.w87_2, 0.0, L.zero, 0.0), f2).k + kern.sums(b3, f3).k;
    if (k <= 19) { EXPECT_NEAR(s21.g, exact, 2e-15) << "Gauss 10, k = " << k; }
    if (k <= 31) { EXPECT_NEAR(s21.k, exact, 2e-15) << "21 points, k = " << k; }
    if (k <= 65) { EXPECT_NEAR(k43, exact, 2e-15) << "43 points, k = " << k; }
    EXPECT_NEAR(k87, exact, 4e-15) << "87 points, k = " << k;
  }
}

// ---- Epsilon algorithm ------------------------------------------------------

// Feeds the sequence as the engines do: extrapolates from the third entry on.
double extrapolate(const std::vector<double> &s, double &abserr, const q::policy &P = q::zem_policy) {
  q::epsilon_state E;
  double result = 0.0;
  for (double v : s) {
    E.tab[E.n++] = v;
    if (E.n >= 3) q::epsilon_extrapolate(E, result, abserr, P);
  }
  return result;
}

TEST(D01Epsilon, GeometricSequenceConvergesToMachineAccuracy) {
  // s_n = 1 + 2^-n: with five terms three extrapolants agree and the error
  // is the floor, half the machine precision times |result| (five times it
  // classically); with four they do not yet.
  std::vector<double> s;
  for (int n = 1; n <= 5; ++n) s.push_back(1.0 + std::ldexp(1.0, -n));
  double abserr = 0.0;
  extrapolate({s.begin(), s.end() - 1}, abserr);
  EXPECT_GE(abserr, 1e-10);
  EXPECT_EQ(extrapolate(s, abserr), 1.0);
  EXPECT_EQ(abserr, 5.551115123125783e-17);
}

// A sequence the algorithm neither accelerates nor gives up on fills the
// table; it is cut, never overrun.
TEST(D01Epsilon, TableNeverExceedsItsCapacity) {
  q::epsilon_state E;
  double result = 0.0, abserr = 0.0, sum = 0.0;
  int64_t deepest = 0;
  for (int k = 1; k <= 120; ++k) {
    E.tab[E.n++] = sum += 1.0 / (static_cast<double>(k) * k) * (k % 3 ? 1 : -1);
    ASSERT_LE(E.n, q::epsilon_state::limexp);
    deepest = std::max(deepest, E.n);
    if (E.n >= 3) q::epsilon_extrapolate(E, result, abserr, q::zem_policy);
  }
  EXPECT_EQ(deepest, q::epsilon_state::limexp);  // the table did fill
}

// Huge differences: the guarded sum leaves out reciprocals below
// 1/sqrt(oflow) and stays finite; for ordinary magnitudes it equals the
// unguarded one.
TEST(D01Epsilon, OverflowGuard) {
  q::policy unguarded = q::zem_policy;
  unguarded.overflow_guard = false;
  const std::vector<double> huge = {1e300, -1e300, 1e300, -1e300, 1e300};
  double e1, e2;
  EXPECT_TRUE(std::isfinite(extrapolate(huge, e1)));
  EXPECT_TRUE(std::isfinite(extrapolate(huge, e2, unguarded)));
  std::vector<double> s;  // partial sums of 1 - 1/2 + 1/3 - ...
  for (int k = 1; k <= 12; ++k) s.push_back((k > 1 ? s.back() : 0.0) + (k % 2 ? 1.0 : -1.0) / k);
  EXPECT_EQ(extrapolate(s, e1), extrapolate(s, e2, unguarded));
  EXPECT_EQ(e1, e2);
}

// ---- Compensated sum -----------------------------------------------------------

TEST(D01Dsum, RecoversWhatNaiveSummationLoses) {
  const double x[] = {1e16, 1.0, -1e16}, y[] = {1.0, 99.0, 2.0, 99.0, 4.0};
  EXPECT_EQ(zem_blas_dsum(3, x, 1), 1.0);
  EXPECT_EQ(zem_blas_dsum(0, x, 1), 0.0);
  EXPECT_EQ(zem_blas_dsum(-2, x, 1), 0.0);
  EXPECT_EQ(zem_blas_dsum(3, y, 2), 7.0);
  EXPECT_EQ(zem_blas_dsum(3, y, -2), 7.0);
  // n random values, their negatives and one small t, shuffled: the exact
  // sum is t; the naive sum is typically off by ~1e-14.
  std::mt19937_64 gen(7);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  for (int trial = 0; trial < 20; ++trial) {
    std::vector<double> v;
    for (int i = 0; i < 500; ++i) {
      const double r = u(gen) * std::ldexp(1.0, static_cast<int>(gen() % 40));
      v.insert(v.end(), {r, -r});
    }
    const double t = 1e-3 * (trial + 1);
    v.push_back(t);
    std::shuffle(v.begin(), v.end(), gen);
    const double s = zem_blas_dsum(static_cast<int64_t>(v.size()), v.data(), 1);
    EXPECT_LE(std::fabs(s - t), 2 * std::nextafter(t, 1.0) - 2 * t) << "trial " << trial;
  }
}

}  // namespace
