// The block kernels of the uniform fill, compiled once per instruction set
// (fill_kernels.inc in fill_generic.cpp, fill_avx2.cpp, fill_avx512.cpp).
//
// Every kernel gives exactly the numbers of the generator's one-value-at-a-
// time recurrence; they differ only in how many values are in flight:
// independent lanes, started by jumping ahead within the block, are advanced
// together without branches.  The set is chosen once per process, the best
// the processor supports; the environment variable ZEM_ISA (baseline,
// avx2, avx512) forces one, and the tests run every set against the others.
#pragma once

#include <cstdint>
#include <string_view>

namespace zem::g05 {

// Values per block of the blocked kernels.  Each instruction set splits a
// block into as many lanes as suit its registers.
inline constexpr int64_t kernel_block = 2048;

struct kernel_set {
  const char *isa;
  // Basic generator: n values of x' = a x mod 2^60 from x; returns the last x.
  uint64_t (*basic)(uint64_t a, uint64_t x, int64_t n, double *out);
  // Wichmann-Hill with multipliers below 2^21 and moduli below 2^31: as many
  // whole blocks as fit in n; advances x and returns the number written.
  int64_t (*wichmann_hill)(const uint64_t a[4], const uint64_t m[4], uint64_t x[4], int64_t n,
                           double *out);
  // MRG32k3a with its own recurrences: whole blocks, as above.
  int64_t (*mrg32k3a)(uint64_t s1[3], uint64_t s2[3], int64_t n, double *out);
  // Mersenne Twister: the next 624 words in place; doubles of n words.
  void (*mt_twist)(uint32_t w[624]);
  void (*mt_doubles)(const uint32_t *w, int64_t n, double *out);
  // acc[j] ^= src[j], j < n (the Mersenne Twister jump).
  void (*xor_words)(uint64_t *acc, const uint64_t *src, int64_t n);
};

// The set in use.
const kernel_set &kernels();
// The set of that name if this processor can run it, else null.
const kernel_set *kernels_named(std::string_view isa);

namespace isa_generic { extern const kernel_set kernel_table; }
namespace isa_avx2 { extern const kernel_set kernel_table; }
namespace isa_avx512 { extern const kernel_set kernel_table; }

}  // namespace zem::g05
