// Uniform-fill kernels compiled for the generic instruction set (see fill_kernels.inc).
#include <cstdint>

#include "g05/basic_core.h"
#include "g05/fill_kernels.h"
#include "g05/mrg32k3a_core.h"
#include "g05/wichmann_hill_core.h"

namespace zem::g05::isa_generic {

#define ZEM_G05_KERNEL_SET_NAME "generic"
#define ZEM_G05_VECTOR_BYTES 16
#include "g05/fill_kernels.inc"
#undef ZEM_G05_KERNEL_SET_NAME
#undef ZEM_G05_VECTOR_BYTES

}  // namespace zem::g05::isa_generic
