// Uniform-fill kernels compiled for the avx512 instruction set (see fill_kernels.inc).
#include <cstdint>

#include "g05/basic_core.h"
#include "g05/fill_kernels.h"
#include "g05/mrg32k3a_core.h"
#include "g05/wichmann_hill_core.h"

namespace zem::g05::isa_avx512 {

#define ZEM_G05_KERNEL_SET_NAME "avx512"
#define ZEM_G05_VECTOR_BYTES 64
#include "g05/fill_kernels.inc"
#undef ZEM_G05_KERNEL_SET_NAME
#undef ZEM_G05_VECTOR_BYTES

}  // namespace zem::g05::isa_avx512
