// The Normal inverse kernel Q(p): Wichura's AS 241 (PPND16).
//
// Method (M. J. Wichura, "Algorithm AS 241: The percentage points of the
// Normal distribution", Applied Statistics 37 (1988) 477-484):
//   1. q = p - 0.5.  Central region |q| <= 0.425 (0.075 <= p <= 0.925):
//      r = 0.180625 - q*q (0.180625 = 0.425^2, so r >= 0) and
//      Q = q * A(r) / B(r), A and B of degree 7, B(0) = 1.
//   2. Otherwise r = min(p, 1 - p), formed as p for q < 0 and 1 - p else,
//      so that 1 - p is exact (Sterbenz) where it is used.  r = 0 (p = 0 or
//      p = 1) is replaced by the safe-range value 2.225073858507202e-308, one
//      unit above the smallest normal double, so that the logarithm stays
//      finite and Q(0), Q(1) are -/+37.519... rather than infinities.
//      r := sqrt(-ln r).
//   3. Intermediate region r <= 5 (1.39e-11 < min(p, 1-p)): s = r - 1.6,
//      Q = C(s) / D(s); far tail r > 5: s = r - 5, Q = E(s) / F(s).
//   4. Q takes the sign of q.
// The published approximations have relative error below 1e-16; in double
// arithmetic the kernel stays within a few units in the last place (see
// docs/g01fa.md for the measured figures).
//
// Every polynomial is evaluated by Estrin's scheme,
//   P(r) = ((k0 + k1 r) + (k2 + k3 r) r^2) + ((k4 + k5 r) + (k6 + k7 r) r^2) r^4,
// in exactly this order and without contraction into fused multiply-adds, so
// that every build and every instruction-set variant gives the same bits.
// Its dependency chain is half as long as Horner's rule's; since in every
// region all coefficients and the argument are non-negative, no term
// cancels, and the measured rounding error is no larger than Horner's (at
// most 3.2 units in the last place against AS 241 evaluated exactly, where
// Horner's rule gave 4.0).
//
// Block kernel.  Uniforms fall into the central region with probability
// 0.85, so the block kernel works on chunks: it first lists the chunk's
// elements outside the central region (a branch-free compaction), then runs
// the central formula over the whole chunk in SIMD lanes, then overwrites the
// listed elements by the tail formula (logarithm and square root element by
// element, the rational function again in SIMD lanes).  Lane by lane these
// are the scalar kernel's own operations, hence its bits.
#include "g05/normal_inverse.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "frame/constants.h"

namespace zem::g05 {
namespace {

using detail::a;
using detail::b;
using detail::const1;
using detail::poly;
using detail::split1;

// The tails' boundaries (AS 241's SPLIT2 and CONST2).
constexpr double split2 = 5.0;  // r bound of the intermediate region
constexpr double const2 = 1.6;  // centre shift of the intermediate region

// Safe range (x02am): smallest positive double whose reciprocal does not
// overflow, 0x0010000000000001 = 2^-1022 (1 + 2^-52) = 2.225073858507202e-308.
constexpr double safe_range = zem::safe_min;

// Coefficients published with AS 241, constant term first (the central
// region's are in normal_inverse.h).
// Intermediate region, 1.6 <= r <= 5 (shifted by 1.6).
constexpr double c[8] = {
    1.42343711074968357734e0,  4.63033784615654529590e0,  5.76949722146069140550e0,
    3.64784832476320460504e0,  1.27045825245236838258e0,  2.41780725177450611770e-1,
    2.27238449892691845833e-2, 7.74545014278341407640e-4};
constexpr double d[8] = {
    1.0,                       2.05319162663775882187e0,  1.67638483018380384940e0,
    6.89767334985100004550e-1, 1.48103976427480074590e-1, 1.51986665636164571966e-2,
    5.47593808499534494600e-4, 1.05075007164441684324e-9};
// Far tail, r > 5 (shifted by 5).
constexpr double e[8] = {
    6.65790464350110377720e0,  5.46378491116411436990e0,  1.78482653991729133580e0,
    2.96560571828504891230e-1, 2.65321895265761230930e-2, 1.24266094738807843860e-3,
    2.71155556874348757815e-5, 2.01033439929228813265e-7};
constexpr double f[8] = {
    1.0,                       5.99832206555887937690e-1, 1.36929880922735805310e-1,
    1.48753612908506148525e-2, 7.86869131145613259100e-4, 1.84631831751005468180e-5,
    1.42151175831644588870e-7, 2.04426310338993978564e-15};

// q < 0 ? a : b, and q < 0 ? -x : x, by masks rather than branches: in the
// tails the side is as random as the uniforms, and a mispredicted branch
// costs more than the whole selection.  Same values as the selections the
// SIMD code makes.
[[gnu::always_inline]] inline double select_negative(double q, double a, double b) {
  const uint64_t m = -static_cast<uint64_t>(q < 0.0);
  return std::bit_cast<double>((std::bit_cast<uint64_t>(a) & m) | (std::bit_cast<uint64_t>(b) & ~m));
}
[[gnu::always_inline]] inline double negate_if_negative(double q, double x) {
  return std::bit_cast<double>(std::bit_cast<uint64_t>(x) ^ (static_cast<uint64_t>(q < 0.0) << 63));
}

// Step 2: r = sqrt(-ln min(p, 1 - p)), with the safe-range guard.
[[gnu::always_inline]] inline double tail_radius(double p, double q) {
  double r = select_negative(q, p, 1.0 - p);
  if (std::fabs(r) <= 0.0) r = safe_range;
  return std::sqrt(-std::log(r));
}

// Steps 3 and 4: the rational approximation of the region r falls in, and
// the sign of q.
[[gnu::always_inline]] inline double tail_finish(double r, double q) {
  double x;
  if (r <= split2) {
    r -= const2;
    x = poly(c, r) / poly(d, r);
  } else {
    r -= split2;
    x = poly(e, r) / poly(f, r);
  }
  return negate_if_negative(q, x);
}


// Chunk length of the block kernel: its index list and saved uniforms stay
// in the first-level cache.
constexpr int chunk = 256;

// The block kernel with SIMD vectors of W doubles (GCC vector extensions).
// It is instantiated inside functions compiled for each instruction set, so
// it must be inlined there.
typedef double vec2 __attribute__((vector_size(16)));
typedef double vec4 __attribute__((vector_size(32)));
typedef double vec8 __attribute__((vector_size(64)));

template <typename vec>
[[gnu::always_inline]] inline void affine_block(double *x, int64_t n, double sd, double xmu) {
  constexpr int W = sizeof(vec) / sizeof(double);
  int32_t idx[chunk];
  double saved[chunk + W];
  double radius[chunk + W];
  for (int64_t start = 0; start < n; start += chunk) {
    double *u = x + start;
    const int m = static_cast<int>(n - start < chunk ? n - start : chunk);
    // Pass 1: list the elements outside the central region (NaN included).
    int k = 0;
    for (int i = 0; i < m; ++i) {
      const double v = u[i];
      idx[k] = i;
      saved[k] = v;
      k += !(std::fabs(v - 0.5) <= split1);
    }
    // Pass 2: the central formula over the chunk, W lanes at a time.
    int i = 0;
    for (; i + W <= m; i += W) {
      vec v;
      std::memcpy(&v, u + i, sizeof v);
      const vec q = v - 0.5;
      const vec r = const1 - q * q;
      const vec r2 = r * r, r4 = r2 * r2;
      const vec y = q * ZEM_ESTRIN7(a, r, r2, r4) / ZEM_ESTRIN7(b, r, r2, r4);
      const vec z = sd * y + xmu;
      std::memcpy(u + i, &z, sizeof z);
    }
    for (; i < m; ++i) u[i] = sd * detail::central(u[i] - 0.5) + xmu;
    // Pass 3: the listed elements, by the tail formula.  The list is padded
    // to whole groups of W with a harmless value that is never stored.
    // (a) r = min(p, 1 - p) with the guard, in lanes (selections without
    //     branches, which random sides would mispredict; r == 0 is the
    //     scalar test |r| <= 0);
    // (b) r := sqrt(-ln r), element by element;
    // (c) the intermediate-region formula in lanes; a group with a lane in
    //     the far tail (r > 5, p < 1.4e-11) or a NaN is finished element by
    //     element.
    const int groups = (k + W - 1) / W;
    for (int j = k; j < groups * W; ++j) saved[j] = 0.25;
    for (int j = 0; j < groups * W; j += W) {
      vec p;
      std::memcpy(&p, saved + j, sizeof p);
      const vec q = p - 0.5;
      vec r = q < 0.0 ? p : 1.0 - p;
      r = r == 0.0 ? safe_range : r;
      std::memcpy(radius + j, &r, sizeof r);
    }
    for (int j = 0; j < k; ++j) radius[j] = std::sqrt(-std::log(radius[j]));
    for (int j = 0; j < groups * W; j += W) {
      vec r, p;
      std::memcpy(&r, radius + j, sizeof r);
      std::memcpy(&p, saved + j, sizeof p);
      const vec q = p - 0.5;
      const auto inside = r <= split2;
      bool all_inside = true;
      for (int l = 0; l < W; ++l) all_inside &= inside[l] != 0;
      if (!all_inside) {
        for (int l = 0; l < W && j + l < k; ++l) u[idx[j + l]] = sd * tail_finish(r[l], q[l]) + xmu;
        continue;
      }
      const vec s = r - const2;
      const vec s2 = s * s, s4 = s2 * s2;
      const vec y = ZEM_ESTRIN7(c, s, s2, s4) / ZEM_ESTRIN7(d, s, s2, s4);
      const vec z = sd * (q < 0.0 ? -y : y) + xmu;
      for (int l = 0; l < W && j + l < k; ++l) u[idx[j + l]] = z[l];
    }
  }
}

void affine_generic(double *x, int64_t n, double sd, double xmu) { affine_block<vec2>(x, n, sd, xmu); }

[[gnu::target("avx2")]] void affine_avx2(double *x, int64_t n, double sd, double xmu) {
  affine_block<vec4>(x, n, sd, xmu);
}

[[gnu::target("avx512f")]] void affine_avx512(double *x, int64_t n, double sd, double xmu) {
  affine_block<vec8>(x, n, sd, xmu);
}

bool supported(kernel_isa isa) {
  switch (isa) {
    case kernel_isa::avx512: return __builtin_cpu_supports("avx512f");
    case kernel_isa::avx2: return __builtin_cpu_supports("avx2");
    default: return true;
  }
}

kernel_isa choose_isa() {
  __builtin_cpu_init();
  if (const char *s = std::getenv("ZEM_ISA")) {
    const std::string_view v(s);
    if (v == "baseline") return kernel_isa::generic;
    if (v == "avx2" && supported(kernel_isa::avx2)) return kernel_isa::avx2;
    if (v == "avx512" && supported(kernel_isa::avx512)) return kernel_isa::avx512;
  }
  if (supported(kernel_isa::avx512)) return kernel_isa::avx512;
  if (supported(kernel_isa::avx2)) return kernel_isa::avx2;
  return kernel_isa::generic;
}

}  // namespace

double detail::tail(double p, double q) { return tail_finish(tail_radius(p, q), q); }

kernel_isa normal_inverse_isa() {
  // Decided once per process; immutable afterwards.
  static const kernel_isa isa = choose_isa();
  return isa;
}

void normal_inverse_affine(kernel_isa isa, double *x, int64_t n, double sd, double xmu) {
  if (!supported(isa)) isa = kernel_isa::generic;
  switch (isa) {
    case kernel_isa::avx512: affine_avx512(x, n, sd, xmu); break;
    case kernel_isa::avx2: affine_avx2(x, n, sd, xmu); break;
    default: affine_generic(x, n, sd, xmu); break;
  }
}

void normal_inverse_affine(double *x, int64_t n, double sd, double xmu) {
  normal_inverse_affine(normal_inverse_isa(), x, n, sd, xmu);
}

}  // namespace zem::g05
