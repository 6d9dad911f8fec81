// The rule kernel for the baseline family (flags set by the build; see quad_kernel.h).
#define ZEM_QUAD_ISA baseline
#define ZEM_QUAD_ISA_NAME "baseline"
#include "quad_kernel.inc"
