// The Normal inverse kernel: the deviate x with P(X <= x) = p for the
// standard Normal distribution, by Wichura's algorithm AS 241 (PPND16).
//
// One scalar kernel serves g01fa and every Normal variate generator of g05;
// g05sk transforms whole arrays of uniforms through the block kernel, which
// gives, bit for bit, the scalar kernel's numbers (the same operations in the
// same order, lane by lane; see normal_inverse.cpp for the method).  The
// central region, where 85% of uniform arguments fall, is inline here; the
// tails are in normal_inverse.cpp.
#pragma once

#include <cmath>
#include <cstdint>

namespace zem::g05 {

namespace detail {

// The central region |q| <= 0.425, q = p - 0.5 (AS 241's SPLIT1; CONST1 is
// its square, so r = CONST1 - q^2 >= 0 there).
inline constexpr double split1 = 0.425;
inline constexpr double const1 = 0.180625;

// Coefficients published with AS 241, constant term first: the central
// region's numerator A and denominator B (B's constant term is 1).
inline constexpr double a[8] = {
    3.3871328727963666080e0,  1.3314166789178437745e+2, 1.9715909503065514427e+3,
    1.3731693765509461125e+4, 4.5921953931549871457e+4, 6.7265770927008700853e+4,
    3.3430575583588128105e+4, 2.5090809287301226727e+3};
inline constexpr double b[8] = {
    1.0,                      4.2313330701600911252e+1, 6.8718700749205790830e+2,
    5.3941960214247511077e+3, 2.1213794301586595867e+4, 3.9307895800092710610e+4,
    2.8729085735721942674e+4, 5.2264952788528545610e+3};

// Estrin's scheme for a polynomial of degree 7 with coefficients k[0..7],
// given r, r2 = r^2 and r4 = r2^2, in exactly this order.  One expression
// for the scalar and the SIMD code (a vector-valued helper function would
// change its calling convention with the instruction set), so both round
// alike.
#define ZEM_ESTRIN7(k, r, r2, r4)                                      \
  ((((k)[0] + (k)[1] * (r)) + ((k)[2] + (k)[3] * (r)) * (r2)) +        \
   (((k)[4] + (k)[5] * (r)) + ((k)[6] + (k)[7] * (r)) * (r2)) * (r4))

[[gnu::always_inline]] inline double poly(const double (&k)[8], double r) {
  const double r2 = r * r, r4 = r2 * r2;
  return ZEM_ESTRIN7(k, r, r2, r4);
}

// Step 1, |q| <= split1: Q = q A(r) / B(r), r = const1 - q^2.
[[gnu::always_inline]] inline double central(double q) {
  const double r = const1 - q * q;
  return q * poly(a, r) / poly(b, r);
}

// Steps 2 to 4, |q| > split1 or p not a number.
double tail(double p, double q);

}  // namespace detail

// Q(p) for 0 < p < 1.  There is no failure exit: callers check p.  p = 0 and
// p = 1 give about -37.52 and +37.52 (the safe-range guard), a NaN gives NaN.
inline double normal_inverse(double p) {
  const double q = p - 0.5;
  if (std::fabs(q) <= detail::split1) return detail::central(q);
  return detail::tail(p, q);
}

// Instruction-set variants of the block kernel.  All give the same bits.
enum class kernel_isa : int { generic = 0, avx2 = 1, avx512 = 2 };

// The variant chosen for this process: the best one the processor runs,
// unless the environment variable ZEM_ISA names another one
// ("baseline", "avx2" or "avx512"; a variant the processor lacks is ignored).
kernel_isa normal_inverse_isa();

// x[i] := sd * Q(x[i]) + xmu for i < n, in place, each value formed exactly
// as the scalar expression sd * normal_inverse(x[i]) + xmu.
void normal_inverse_affine(double *x, int64_t n, double sd, double xmu);

// The same with a given variant (for tests and benchmarks); a variant the
// processor cannot run falls back to the generic one.
void normal_inverse_affine(kernel_isa isa, double *x, int64_t n, double sd, double xmu);

}  // namespace zem::g05
