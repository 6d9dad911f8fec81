// The rule kernel for the avx2 family (flags set by the build; see quad_kernel.h).
#define ZEM_QUAD_ISA avx2
#define ZEM_QUAD_ISA_NAME "avx2"
#include "quad_kernel.inc"
