// Constants of L'Ecuyer's MRG32k3a (genid 6), shared by the generator and
// its vector kernel.
//     x1(n) = (1403580 x1(n-2) - 810728 x1(n-3)) mod m1,  m1 = 2^32 - 209
//     x2(n) = ( 527612 x2(n-1) - 1370589 x2(n-3)) mod m2, m2 = 2^32 - 22853
//     u(n)  = ((x1(n) - x2(n)) mod m1, with 0 taken as m1) * norm
// norm is the published constant, 1/(m1 + 1) rounded; u lies in (0,1).
#pragma once

#include <cstdint>

#include "g05/modarith.h"

namespace zem::g05::mrg {

inline constexpr uint64_t m1 = 4294967087, m2 = 4294944443;
inline constexpr uint64_t a12 = 1403580, a13n = 810728, a21 = 527612, a23n = 1370589;
inline constexpr double norm = 2.328306549295727688e-10;

// The recurrences as matrices on (x(n-3), x(n-2), x(n-1)).
inline constexpr mat3 A1 = {{0, 1, 0, 0, 0, 1, m1 - a13n, a12, 0}};
inline constexpr mat3 A2 = {{0, 1, 0, 0, 0, 1, m2 - a23n, 0, a21}};

// Each matrix has order dividing m^3 - 1 (its characteristic polynomial is
// primitive, so the powers of A act as the powers of a generator of the
// multiplicative group of the field with m^3 elements).
inline constexpr u128 order1 = static_cast<u128>(m1) * m1 * m1 - 1;
inline constexpr u128 order2 = static_cast<u128>(m2) * m2 * m2 - 1;

// v = A v mod M for entries and v below M < 2^32: the products and the sum
// of three residues stay below 2^64.
template <uint64_t M>
[[gnu::always_inline]] inline void apply(const mat3 &A, uint64_t v[3]) {
  uint64_t w[3];
  for (int i = 0; i < 3; ++i)
    w[i] = (A.a[3 * i] * v[0] % M + A.a[3 * i + 1] * v[1] % M + A.a[3 * i + 2] * v[2] % M) % M;
  v[0] = w[0];
  v[1] = w[1];
  v[2] = w[2];
}

constexpr mat3 mat3_mul_c(const mat3 &x, const mat3 &y, uint64_t m) {
  mat3 z{};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      u128 s = 0;
      for (int k = 0; k < 3; ++k) s += static_cast<u128>(x.a[3 * i + k]) * y.a[3 * k + j];
      z.a[3 * i + j] = static_cast<uint64_t>(s % m);
    }
  return z;
}

// A^(2^e), at compile time.
constexpr mat3 mat3_pow2_c(mat3 x, int e, uint64_t m) {
  for (int i = 0; i < e; ++i) x = mat3_mul_c(x, x, m);
  return x;
}

}  // namespace zem::g05::mrg
