// Arithmetic of the basic generator (genid 1), shared by the generator itself
// and by the seeding of generators 2 to 6.
//
// The basic generator is x' = 13^13 x mod 2^59 on odd x, carried one bit
// higher: the engine keeps x = 2 (odd) modulo 2^60, so x = 2 mod 4 always,
// and steps x' = a x mod 2^60.  The state array stores x and the multiplier
// as four base-2^15 digits, least significant first; a 64-bit product
// truncated to 60 bits gives the same numbers as the digit arithmetic.
#pragma once

#include <bit>
#include <cstdint>

namespace zem::g05 {

inline constexpr uint64_t mask60 = (uint64_t{1} << 60) - 1;
inline constexpr uint64_t basic_multiplier = 302875106592253ull;  // 13^13
static_assert(basic_multiplier == 13ull * 13 * 13 * 13 * 13 * 13 * 13 * 13 * 13 * 13 * 13 * 13 * 13);

// Four 15-bit digits <-> one 60-bit value.
inline uint64_t from_digits(const int64_t *d) {
  return static_cast<uint64_t>(d[0]) | static_cast<uint64_t>(d[1]) << 15 |
         static_cast<uint64_t>(d[2]) << 30 | static_cast<uint64_t>(d[3]) << 45;
}
inline void to_digits(uint64_t v, int64_t *d) {
  for (int i = 0; i < 4; ++i) d[i] = static_cast<int64_t>((v >> (15 * i)) & 0x7fff);
}

// The double helpers below are written once for scalars and for the vector
// types of the fill kernels (GCC vector extensions): D is double or a vector
// of doubles, U the unsigned 64-bit integers of the same shape.

// A non-negative integer below 2^52 as a double, exactly, by placing it in the
// significand of 2^52 (the form vectorises where integer conversions do not).
template <typename D, typename U>
[[gnu::always_inline]] inline D small_to_double(U v) {
  return std::bit_cast<D>(v | 0x4330000000000000ull) - 0x1p52;
}

// The initial value from seed s >= 1: x = 4 s + 2 modulo 2^60.
inline uint64_t basic_seed_value(int64_t s) {
  return (4 * static_cast<uint64_t>(s) + 2) & mask60;
}

// The double of a freshly stepped x: u = 1 - (h 2^-30 + l 2^-60), where
// l and h are the low and high 30 bits of x, evaluated in double arithmetic
// in that order.  The sum rounds to 1.0 when x >= 2^60 - 2^6 (u would be 0):
// then u is the exact (2^60 - x) 2^-60, which is at least 2^-59 since
// x = 2 mod 4.  So u lies strictly inside (0,1).
template <typename D, typename U>
[[gnu::always_inline]] inline D basic_double(U x) {
  const D h = small_to_double<D>(x >> 30);
  const D l = small_to_double<D>(x & 0x3fffffff);
  const D t = h * 0x1p-30 + l * 0x1p-60;
  const D u = 1.0 - t;
  // (2^60 - x) is at most 64 when it is used; the mask keeps the conversion
  // exact in the other case, whose value is discarded.
  const D tail = small_to_double<D>(((uint64_t{1} << 60) - x) & 0xfff) * 0x1p-60;
  return u == 0.0 ? tail : u;
}
inline double basic_double(uint64_t x) { return basic_double<double>(x); }

// The basic generator that seeds generators 2 to 6.  It starts exactly as a
// basic generator initialised with seed(1) (including the advance made at
// initialisation) and hands out its successive values.
class seeder {
 public:
  explicit seeder(int64_t s) : x_((basic_seed_value(s) * basic_multiplier) & mask60) {}
  // The next 60-bit value x (x = 2 mod 4).
  uint64_t next() {
    x_ = (x_ * basic_multiplier) & mask60;
    return x_;
  }
  // 32 bits: the top of one value.
  uint32_t word32() { return static_cast<uint32_t>(next() >> 28); }
  // 60 bits: the top 30 bits of two successive values (the low bits of a
  // power-of-two congruential generator have short periods).
  uint64_t word60() {
    const uint64_t hi = next() >> 30;
    const uint64_t lo = next() >> 30;
    return hi << 30 | lo;
  }

 private:
  uint64_t x_;
};

}  // namespace zem::g05
