// Choice of the uniform-fill kernel set, made once per process.
#include <cstdlib>
#include <string_view>

#include "g05/fill_kernels.h"

namespace zem::g05 {

namespace {

bool supported(std::string_view isa) {
  if (isa == "generic") return true;
  if (isa == "avx2") return __builtin_cpu_supports("avx2");
  if (isa == "avx512")
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw");
  return false;
}

const kernel_set *choose() {
  // ZEM_ISA, the library's one instruction-set switch, says "baseline" for
  // the set this chapter calls generic.
  if (const char *forced = std::getenv("ZEM_ISA")) {
    const std::string_view f(forced);
    if (const kernel_set *k = kernels_named(f == "baseline" ? "generic" : f)) return k;
  }
  for (std::string_view isa : {"avx512", "avx2"})
    if (const kernel_set *k = kernels_named(isa)) return k;
  return &isa_generic::kernel_table;
}

}  // namespace

const kernel_set *kernels_named(std::string_view isa) {
  if (!supported(isa)) return nullptr;
  if (isa == "avx512") return &isa_avx512::kernel_table;
  if (isa == "avx2") return &isa_avx2::kernel_table;
  return &isa_generic::kernel_table;
}

const kernel_set &kernels() {
  static const kernel_set *const chosen = choose();
  return *chosen;
}

}  // namespace zem::g05
