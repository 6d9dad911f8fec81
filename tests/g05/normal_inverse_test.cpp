// The Normal inverse kernel: guard values, symmetry, and the block kernel's
// bit-for-bit agreement with the scalar kernel on every instruction-set
// variant.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>
#include <random>
#include <vector>

#include "g05/normal_inverse.h"

namespace {

using zem::g05::kernel_isa;
using zem::g05::normal_inverse;

bool same_bits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// Accuracy is checked through g01fa against mpmath; here the values that
// only the kernel sees.  r = 0 is replaced by 2.225073858507202e-308:
// Q = -/+37.519379347144...
TEST(NormalInverse, GuardValuesCentreNotANumberAndSymmetry) {
  EXPECT_NEAR(normal_inverse(0.0), -37.5193793471445, 1e-12);
  EXPECT_TRUE(same_bits(normal_inverse(0.0), -normal_inverse(1.0)));
  EXPECT_TRUE(same_bits(normal_inverse(-0.0), normal_inverse(0.0)));
  EXPECT_TRUE(same_bits(normal_inverse(0.0), normal_inverse(2.225073858507202e-308)));
  EXPECT_TRUE(std::isfinite(normal_inverse(std::numeric_limits<double>::denorm_min())));
  EXPECT_TRUE(same_bits(normal_inverse(0.5), 0.0));
  EXPECT_TRUE(std::isnan(normal_inverse(std::nan(""))));
  // Odd about 1/2 where p and 1 - p are both exact: the same r on both sides.
  for (int k = 1; k <= 50; ++k) {
    const double p = std::ldexp(1.0, -k) * 0.75;
    EXPECT_TRUE(same_bits(normal_inverse(1.0 - p), -normal_inverse(p))) << p;
  }
}

// Uniforms as generators give them, plus every special and boundary value.
std::vector<double> test_uniforms() {
  std::mt19937_64 g(20240501);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  std::vector<double> v;
  for (int i = 0; i < 100003; ++i) v.push_back(u(g));
  v.insert(v.end(), {0.0, 1.0, -0.0, 0.5, 0.075, 0.925, 1e-300, 1e-20, 1.0 - 0x1p-53, 0x1p-1074, 2.0, -1.0,
                     std::nan(""), std::numeric_limits<double>::infinity()});
  for (double b : {0.075, 0.925, std::exp(-25.0), 1.0 - std::exp(-25.0)}) {
    v.push_back(std::nextafter(b, 0.0));
    v.push_back(std::nextafter(b, 1.0));
  }
  // Far-tail values inside whole SIMD groups and at chunk edges.
  for (int i = 0; i < 40; ++i) v.insert(v.begin() + 250 + i, 1e-15 * (i + 1));
  return v;
}

// Every variant (one the processor lacks falls back) on every length up to
// a few chunks, so that every tail of a SIMD loop runs.
TEST(BlockKernel, BitForBitEqualToScalarKernelOnEveryVariant) {
  const std::vector<double> u = test_uniforms();
  for (const kernel_isa isa : {kernel_isa::generic, kernel_isa::avx2, kernel_isa::avx512}) {
    for (const auto &[sd, xmu] : {std::pair{1.0, 0.0}, std::pair{2.5, -1.25}, std::pair{1e-3, 1e6}}) {
      for (const int64_t n : {int64_t{0}, int64_t{1}, int64_t{7}, int64_t{255}, int64_t{256}, int64_t{257},
                              int64_t{1000}, static_cast<int64_t>(u.size())}) {
        std::vector<double> x(u.begin(), u.begin() + n);
        zem::g05::normal_inverse_affine(isa, x.data(), n, sd, xmu);
        for (int64_t i = 0; i < n; ++i) {
          const double want = sd * normal_inverse(u[i]) + xmu;
          ASSERT_TRUE(same_bits(x[i], want) || (std::isnan(x[i]) && std::isnan(want)))
              << "isa " << static_cast<int>(isa) << " u = " << u[i] << " i = " << i << " n = " << n << " got "
              << x[i] << " want " << want;
        }
      }
    }
  }
}

}  // namespace
