// The same integrands compiled so that a loop over points may use the vector
// mathematical library (-O3 -ffast-math -mavx2): what a vectorised integrand
// can do and a scalar one cannot.
#define BENCH_NS simd
#include "integrands.inc"
