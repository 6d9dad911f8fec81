// The Normal inverse kernel: the deviate x with P(X <= x) = p for the
// standard Normal distribution, by Wichura's algorithm AS 241 (PPND16).
//
// One scalar kernel serves g01fa and every Normal variate generator of g05;
// g05sk transforms whole arrays of uniforms through the block kernel, which
// gives, bit for bit, the scalar kernel's numbers (the same operations in the
// same order, lane by lane; see normal_inverse.cpp).
#pragma once

#include <cstdint>

namespace zem::g05 {

// Q(p) for 0 < p < 1.  There is no failure exit: callers check p.  p = 0 and
// p = 1 give about -37.52 and +37.52 (the safe-range guard), a NaN gives NaN.
double normal_inverse(double p);

// Instruction-set variants of the block kernel.  All give the same bits.
enum class kernel_isa : int { generic = 0, avx2 = 1, avx512 = 2 };

// The variant chosen for this process: the best one the processor runs,
// unless the environment variable ZEM_NORMAL_ISA names another one
// ("generic", "avx2" or "avx512"; a variant the processor lacks is ignored).
kernel_isa normal_inverse_isa();

// x[i] := sd * Q(x[i]) + xmu for i < n, in place, each value formed exactly
// as the scalar expression sd * normal_inverse(x[i]) + xmu.
void normal_inverse_affine(double *x, int64_t n, double sd, double xmu);

// The same with a given variant (for tests and benchmarks); a variant the
// processor cannot run falls back to the generic one.
void normal_inverse_affine(kernel_isa isa, double *x, int64_t n, double sd, double xmu);

}  // namespace zem::g05
