// zem_blas_dsum: the library's compensated sum of a strided vector.
//
// Engine routine shared by the chapters (the quadrature engines form their
// global sums with it).  Not part of the public interface.
#pragma once

#include <cstdint>

#include "frame/engine.h"

// Sum of x[0], x[incx], ..., x[(n-1)*incx] (for incx < 0 the elements are
// taken from the far end, as in the BLAS).  Returns 0 for n <= 0.
// Each addition's rounding error is recovered exactly (Knuth's TwoSum) and the
// errors are summed apart and added at the end, so the result is as accurate
// as if the naive sum were formed in twice the working precision and then
// rounded: |error| <= eps |s| + (n eps)^2 sum |x_i|, eps = 2^-53.  The order
// of the additions is fixed, so the result is reproducible.
ZEM_INTERNAL double zem_blas_dsum(int64_t n, const double *x, int64_t incx);
