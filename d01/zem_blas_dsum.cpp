// Compensated summation (see zem_blas_dsum.h).

#include "zem_blas_dsum.h"

ZEM_INTERNAL double zem_blas_dsum(int64_t n, const double *x, int64_t incx) {
  if (n <= 0) return 0.0;
  const double *p = incx >= 0 ? x : x + (n - 1) * (-incx);
  double s = 0.0, c = 0.0;
  for (int64_t i = 0; i < n; ++i, p += incx) {
    // TwoSum: t + e == s + v exactly, e the rounding error of t.
    const double v = *p;
    const double t = s + v;
    const double z = t - s;
    const double e = (s - (t - z)) + (v - z);
    s = t;
    c += e;
  }
  return s + c;
}
