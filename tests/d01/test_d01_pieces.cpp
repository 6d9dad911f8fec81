// The pieces of the quadrature engines: rule tables and kernel, the epsilon
// algorithm, the ordering routine, the compensated sum.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <random>
#include <vector>

#include "d01/quad_engine.h"
#include "d01/quad_rule.h"
#include "d01/zem_blas_dsum.h"

namespace {

namespace q = zem::quad;
namespace gkc = zem_quad_gk_consts;

// ---- Rule tables -----------------------------------------------------------

// Patterson's sequence starts from the 10-21 pair: the same doubles.
TEST(D01Rules, PattersonStartsFromTheKronrod21Pair) {
  for (int j = 0; j < 5; ++j) {
    EXPECT_EQ(gkc::x_10[j], gkc::xgk_21[2 * j + 1]);
    EXPECT_EQ(gkc::x_21[j], gkc::xgk_21[2 * j]);
    EXPECT_EQ(gkc::wgk_21_a[j], gkc::wgk_21[2 * j + 1]);
    EXPECT_EQ(gkc::wgk_21_b[j], gkc::wgk_21[2 * j]);
  }
  EXPECT_EQ(gkc::wgk_21_b[5], gkc::wgk_21[10]);
}

struct pair_case {
  const char *name;
  q::pair_block block;
  int degree;  // Kronrod degree of exactness
};

const pair_case pairs[] = {
    {"7-15", q::gk15.block(), 23},  {"10-21", q::gk21.block(), 31}, {"15-31", q::gk31.block(), 47},
    {"20-41", q::gk41.block(), 61}, {"25-51", q::gk51.block(), 77}, {"30-61", q::gk61.block(), 91},
};

// Each pair through the kernel: x^k on [0, 1] comes out exact (to rounding)
// up to the Kronrod rule's degree; the Gauss rule is exact to 2n - 1.
TEST(D01Rules, EveryPairIsExactToItsDegree) {
  for (const auto &p : pairs) {
    SCOPED_TRACE(p.name);
    const int n_gauss = static_cast<int>(p.block.m / 2);
    for (int k = 0; k <= p.degree; ++k) {
      auto f = [k](const double *x, int64_t n, double *fv) -> int64_t {
        for (int64_t i = 0; i < n; ++i) fv[i] = std::pow(x[i], k);
        return 0;
      };
      double x[q::block_buffer] = {}, fv[q::block_buffer] = {};
      const q::rule_kernels &kern = q::active_kernels();
      kern.abscissae(p.block, 0.5, 0.5, x);
      f(x, p.block.points(), fv);
      const q::kernel_sums s = kern.sums(p.block, fv);
      const double exact = 1.0 / (k + 1);
      EXPECT_NEAR(s.k * 0.5, exact, 4e-16 * p.block.m) << "Kronrod, k = " << k;
      if (k <= 2 * n_gauss - 1) {
        EXPECT_NEAR(s.g * 0.5, exact, 4e-16 * p.block.m) << "Gauss, k = " << k;
      }
    }
  }
}

TEST(D01Rules, PattersonStagesAreExactToTheirDegrees) {
  const q::patterson_layout &L = q::patterson;
  const q::rule_kernels &kern = q::active_kernels();
  for (int k = 0; k <= 131; ++k) {
    double x1[q::block_buffer] = {}, x2[q::block_buffer] = {}, x3[q::block_buffer] = {};
    double f1[q::block_buffer] = {}, f2[q::block_buffer] = {}, f3[q::block_buffer] = {};
    const q::pair_block b1 = L.b1.block(L.w21_1, L.w21_c, L.g10_1, 0.0);
    kern.abscissae(b1, 0.0, 1.0, x1);
    kern.abscissae(L.b2.block(L.w43_2, 0.0, L.zero, 0.0), 0.0, 1.0, x2);
    kern.abscissae(L.b3.block(L.w87_3, 0.0, L.zero, 0.0), 0.0, 1.0, x3);
    for (int i = 0; i < 21; ++i) f1[i] = std::pow(x1[i], k);
    for (int i = 0; i < 22; ++i) f2[i] = std::pow(x2[i], k);
    for (int i = 0; i < 44; ++i) f3[i] = std::pow(x3[i], k);
    const double exact = k % 2 ? 0.0 : 2.0 / (k + 1);
    const double k21 = kern.sums(b1, f1).k;
    const double k43 = kern.sums(L.b1.block(L.w43_1, L.w43_c, L.zero, 0.0), f1).k +
                       kern.sums(L.b2.block(L.w43_2, 0.0, L.zero, 0.0), f2).k;
    const double k87 = kern.sums(L.b1.block(L.w87_1, L.w87_c, L.zero, 0.0), f1).k +
                       kern.sums(L.b2.block(L.w87_2, 0.0, L.zero, 0.0), f2).k +
                       kern.sums(L.b3.block(L.w87_3, 0.0, L.zero, 0.0), f3).k;
    if (k <= 31) {
      EXPECT_NEAR(k21, exact, 2e-15) << "21 points, k = " << k;
    }
    if (k <= 65) {
      EXPECT_NEAR(k43, exact, 2e-15) << "43 points, k = " << k;
    }
    EXPECT_NEAR(k87, exact, 4e-15) << "87 points, k = " << k;
  }
}

// Mirrored intervals give bit-identical sums (pairs are summed first), so
// the bisection's tie rule sees equal errors as equal.
TEST(D01Rules, MirroredIntervalsGiveEqualSums) {
  auto f = [](const double *x, int64_t n, double *fv) -> int64_t {
    for (int64_t i = 0; i < n; ++i) fv[i] = 1.0 / (1.0 + 25.0 * x[i] * x[i]);
    return 0;
  };
  q::integrand_ref fr(f);
  for (const auto &p : pairs) {
    q::gk_rule rule(p.block, fr, q::active_kernels(), q::zem_policy);
    q::rule_estimate left, right;
    ASSERT_EQ(rule(-0.9, -0.1, left), 0);
    ASSERT_EQ(rule(0.1, 0.9, right), 0);
    EXPECT_EQ(left.result, right.result) << p.name;
    EXPECT_EQ(left.abserr, right.abserr) << p.name;
    EXPECT_EQ(left.resasc, right.resasc) << p.name;
  }
}

// ---- Epsilon algorithm ------------------------------------------------------

double extrapolate_sequence(const std::vector<double> &s, double &abserr, q::epsilon_state &E,
                            const q::policy &P = q::zem_policy) {
  double result = 0.0;
  for (double v : s) {
    E.tab[E.n++] = v;
    if (E.n >= 3) q::epsilon_extrapolate(E, result, abserr, P);
  }
  return result;
}

TEST(D01Epsilon, AcceleratesAnAlternatingSeries) {
  // Partial sums of 1 - 1/2 + 1/3 - ... -> log 2; the 14th is 0.03 off.
  std::vector<double> s;
  double sum = 0.0;
  for (int k = 1; k <= 14; ++k) s.push_back(sum += (k % 2 ? 1.0 : -1.0) / k);
  q::epsilon_state E;
  double abserr;
  const double result = extrapolate_sequence(s, abserr, E);
  const double exact = static_cast<double>(std::log(2.0L));
  EXPECT_LT(std::fabs(result - exact), 1e-10);
  EXPECT_LE(std::fabs(result - exact), abserr);  // the three-result estimate is safe
  EXPECT_LT(abserr, 1e-8);
}

TEST(D01Epsilon, GeometricSequenceConvergesToMachineAccuracy) {
  // s_n = 1 + 2^-n: every rhombus gives 1; once three extrapolants agree to
  // machine accuracy the error is the floor, half the machine precision
  // times |result| (five times it in the published scheme).
  q::epsilon_state E;
  double result = 0.0, abserr = 0.0;
  int n = 0;
  while (n < 20) {
    E.tab[E.n++] = 1.0 + std::ldexp(1.0, -++n);
    if (E.n < 3) continue;
    q::epsilon_extrapolate(E, result, abserr, q::zem_policy);
    if (abserr < 1e-10) break;
  }
  EXPECT_EQ(n, 5);
  EXPECT_EQ(result, 1.0);
  EXPECT_EQ(abserr, 5.551115123125783e-17);
}

TEST(D01Epsilon, TableNeverExceedsItsCapacity) {
  std::vector<double> s;
  double sum = 0.0;
  for (int k = 1; k <= 120; ++k) s.push_back(sum += 1.0 / (static_cast<double>(k) * k) * (k % 3 ? 1 : -1));
  q::epsilon_state E;
  double result = 0.0, abserr = 0.0;
  for (double v : s) {
    E.tab[E.n++] = v;
    if (E.n >= 3) q::epsilon_extrapolate(E, result, abserr, q::zem_policy);
    ASSERT_LE(E.n, q::epsilon_state::limexp);
    if (E.n == 1) break;  // the engines stop extrapolating here
  }
  EXPECT_TRUE(std::isfinite(result));
}

// Huge differences: the guarded sum leaves out reciprocals below
// 1/sqrt(oflow); the outcome stays finite and equals the unguarded one for
// ordinary magnitudes.
TEST(D01Epsilon, OverflowGuard) {
  const std::vector<double> huge = {1e300, -1e300, 1e300, -1e300, 1e300};
  q::epsilon_state E1, E2;
  double e1, e2;
  q::policy unguarded = q::zem_policy;
  unguarded.overflow_guard = false;
  const double r1 = extrapolate_sequence(huge, e1, E1);
  const double r2 = extrapolate_sequence(huge, e2, E2, unguarded);
  EXPECT_TRUE(std::isfinite(r1));
  EXPECT_TRUE(std::isfinite(r2));
  std::vector<double> s;
  double sum = 0.0;
  for (int k = 1; k <= 12; ++k) s.push_back(sum += (k % 2 ? 1.0 : -1.0) / k);
  q::epsilon_state E3, E4;
  double e3, e4;
  EXPECT_EQ(extrapolate_sequence(s, e3, E3), extrapolate_sequence(s, e4, E4, unguarded));
  EXPECT_EQ(e3, e4);
}

// ---- Ordering ------------------------------------------------------------

// Drives order_update as the engines do (always bisecting the head of the
// list, errors shrinking by random factors, sometimes growing) and checks
// that the ordered part of the list is a decreasing run of distinct
// intervals, and that it holds the largest errors while it is complete.
TEST(D01Order, KeepsTheOrderedPartDecreasing) {
  std::mt19937_64 gen(20240611);
  std::uniform_real_distribution<double> shrink(0.05, 1.2);
  for (int64_t limit : {4, 7, 20, 51, 200}) {
    std::vector<double> e(limit);
    std::vector<int64_t> iord(limit, -1);
    e[0] = 1.0;
    iord[0] = 0;
    int64_t maxerr = 0, nrmax = 0;
    double errmax = 1.0;
    for (int64_t last = 2; last <= limit; ++last) {
      const double parent = e[maxerr];
      double e1 = parent * shrink(gen), e2 = parent * shrink(gen);
      if (e2 > e1) std::swap(e1, e2);
      e[maxerr] = e1;
      e[last - 1] = e2;
      q::order_update(limit, last, maxerr, errmax, e.data(), iord.data(), nrmax);
      const int64_t jupbnd = last > limit / 2 + 2 ? limit + 3 - last : last;
      std::vector<bool> seen(limit, false);
      for (int64_t i = 0; i < jupbnd; ++i) {
        ASSERT_GE(iord[i], 0);
        ASSERT_LT(iord[i], last);
        ASSERT_FALSE(seen[iord[i]]) << "interval listed twice";
        seen[iord[i]] = true;
        if (i > 0) {
          ASSERT_GE(e[iord[i - 1]], e[iord[i]]) << "limit " << limit << " last " << last;
        }
      }
      if (jupbnd == last) {
        ASSERT_EQ(errmax, *std::max_element(e.begin(), e.begin() + last));
      }
      ASSERT_EQ(maxerr, iord[nrmax]);
    }
  }
}

// ---- Compensated sum -----------------------------------------------------------

TEST(D01Dsum, RecoversWhatNaiveSummationLoses) {
  const double x[] = {1e16, 1.0, -1e16};
  EXPECT_EQ(zem_blas_dsum(3, x, 1), 1.0);
  EXPECT_EQ(zem_blas_dsum(0, x, 1), 0.0);
  EXPECT_EQ(zem_blas_dsum(-2, x, 1), 0.0);
  const double y[] = {1.0, 99.0, 2.0, 99.0, 4.0};
  EXPECT_EQ(zem_blas_dsum(3, y, 2), 7.0);
  EXPECT_EQ(zem_blas_dsum(3, y, -2), 7.0);
}

TEST(D01Dsum, CancellingRandomSumsKeepTheirTinyRemainder) {
  // n random values, their negatives and one small t, shuffled: the exact
  // sum is t; the naive sum is typically off by ~1e-14.
  std::mt19937_64 gen(7);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  for (int trial = 0; trial < 20; ++trial) {
    std::vector<double> v;
    for (int i = 0; i < 500; ++i) {
      const double r = u(gen) * std::ldexp(1.0, static_cast<int>(gen() % 40));
      v.push_back(r);
      v.push_back(-r);
    }
    const double t = 1e-3 * (trial + 1);
    v.push_back(t);
    std::shuffle(v.begin(), v.end(), gen);
    const double s = zem_blas_dsum(static_cast<int64_t>(v.size()), v.data(), 1);
    EXPECT_LE(std::fabs(s - t), 2 * std::nextafter(t, 1.0) - 2 * t) << "trial " << trial;
  }
}

}  // namespace
