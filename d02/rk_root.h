// x^(1/K) for the step-size factor 0.8 (tol/err)^(1/K) of the d02p step
// machine, K = 3, 5 or 8 (q + 1 of the pair).  The factor is computed at
// every step and sits on the step's critical path (the next step's stages
// need the new size), so it is taken apart instead of handed to pow:
//
//   x = 2^e m, 1 <= m < 2;  e = K a + b, 0 <= b < K;
//   m = c_i (1 + d), c_i the midpoint of the i-th of 64 equal parts of
//   [1, 2), |d| <= 1/129;
//   x^(1/K) = 2^a * 2^(b/K) * c_i^(1/K) * (1 + d)^(1/K),
//
// with the last factor from its binomial series to d^6 (the first term
// left out is below 1e-16) and the others from tables built by the compiler
// (roots to 64-bit precision by Newton's method, then rounded).  The result
// is within a few units in the last place of the true root for every
// positive normal x; tests/d02 checks it.  x below 2^-1000 (and zero) give
// 0: the factor is then clamped to its least value anyway.
#pragma once

#include <bit>
#include <cstdint>

namespace zem::d02 {
namespace root_detail {

// v^(1/K) for v >= 1 by Newton's method from above (monotone: the first
// guess 1 + (v-1)/K is at least the root by Bernoulli's inequality).
constexpr long double newton_root(long double v, int k) {
  long double y = 1.0L + (v - 1.0L) / k;
  for (int it = 0; it < 200; ++it) {
    long double p = 1.0L;
    for (int j = 0; j < k - 1; ++j) p *= y;
    const long double next = y - (p * y - v) / (k * p);
    if (!(next < y)) break;
    y = next;
  }
  return y;
}

template <int K>
struct tables {
  double inv[64]{};   // 1 / c_i
  double root[64]{};  // c_i^(1/K)
  double frac[K]{};   // 2^(b/K)
  double c[7]{};      // binomial coefficients of (1 + d)^(1/K)
  constexpr tables() {
    for (int i = 0; i < 64; ++i) {
      const long double ci = 1.0L + (i + 0.5L) / 64.0L;
      inv[i] = static_cast<double>(1.0L / ci);
      root[i] = static_cast<double>(newton_root(ci, K));
    }
    long double p = 1.0L;
    for (int b = 0; b < K; ++b, p *= 2.0L) frac[b] = static_cast<double>(newton_root(p, K));
    long double cj = 1.0L;
    for (int j = 0; j < 7; ++j) {
      c[j] = static_cast<double>(cj);
      cj = cj * (1.0L / K - j) / (j + 1);
    }
  }
};
template <int K>
inline constexpr tables<K> tab{};

}  // namespace root_detail

// x^(1/K) for finite x >= 0 (see above).
template <int K>
inline double step_root(double x) {
  const auto &t = root_detail::tab<K>;
  const uint64_t u = std::bit_cast<uint64_t>(x);
  const int64_t e = static_cast<int64_t>(u >> 52) - 1023;
  if (e < -1000) return 0.0;
  const int i = static_cast<int>((u >> 46) & 63);
  const double m = std::bit_cast<double>((u & 0x000FFFFFFFFFFFFFull) | 0x3FF0000000000000ull);
  const double d = m * t.inv[i] - 1.0;
  const int64_t a = (e + 1024 * K) / K - 1024;  // floor(e / K)
  const double scale = std::bit_cast<double>(static_cast<uint64_t>(a + 1023) << 52) * t.frac[e - a * K] * t.root[i];
  const double d2 = d * d, d4 = d2 * d2;
  const double p = (1.0 + t.c[1] * d) + d2 * (t.c[2] + t.c[3] * d) + d4 * ((t.c[4] + t.c[5] * d) + d2 * t.c[6]);
  return scale * p;
}

}  // namespace zem::d02
