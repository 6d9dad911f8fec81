// The rule kernel for the avx512 family (flags set by the build; see quad_kernel.h).
#define ZEM_QUAD_ISA avx512
#define ZEM_QUAD_ISA_NAME "avx512"
#include "quad_kernel.inc"
