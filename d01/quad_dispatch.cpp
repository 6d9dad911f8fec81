// Choosing the rule kernel's processor family (see quad_kernel.h).

#include <cctype>
#include <cstdlib>

#include "quad_kernel.h"

namespace zem::quad {

namespace baseline {
extern const rule_kernels kernels;
}
namespace avx2 {
extern const rule_kernels kernels;
}
namespace avx512 {
extern const rule_kernels kernels;
}

const rule_kernels &kernels_for(isa family) {
  switch (family) {
    case isa::avx512: return avx512::kernels;
    case isa::avx2: return avx2::kernels;
    default: return baseline::kernels;
  }
}

bool isa_supported(isa family) {
  // __builtin_cpu_supports also checks that the operating system saves the
  // wider registers (XCR0), not only the CPUID bits.
  switch (family) {
    case isa::avx512: return __builtin_cpu_supports("avx512f");
    case isa::avx2: return __builtin_cpu_supports("avx2");
    default: return true;
  }
}

std::optional<isa> parse_isa(std::string_view name) {
  auto same = [name](std::string_view w) {
    if (name.size() != w.size()) return false;
    for (std::size_t i = 0; i < w.size(); ++i)
      if (std::tolower(static_cast<unsigned char>(name[i])) != w[i]) return false;
    return true;
  };
  if (same("baseline")) return isa::baseline;
  if (same("avx2")) return isa::avx2;
  if (same("avx512")) return isa::avx512;
  return std::nullopt;
}

isa choose_isa(const char *forced) {
  if (forced != nullptr) {
    if (auto f = parse_isa(forced); f && isa_supported(*f)) return *f;
  }
  if (isa_supported(isa::avx512)) return isa::avx512;
  if (isa_supported(isa::avx2)) return isa::avx2;
  return isa::baseline;
}

const rule_kernels &active_kernels() {
  // Chosen once, on first use, and never changed: the only process-wide
  // value of the chapter, and it is constant after initialisation.
  static const rule_kernels &k = kernels_for(choose_isa(std::getenv("ZEM_ISA")));
  return k;
}

}  // namespace zem::quad
