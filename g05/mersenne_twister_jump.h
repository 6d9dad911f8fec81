// Jump polynomials of the Mersenne Twister MT19937 over GF(2).
//
// The recurrence is linear over GF(2) with characteristic polynomial p(x) of
// degree 19937 (mersenne_twister_charpoly.inc).  Moving the generator on by
// e words is T^e, and T^e = g(T) with g(x) = x^e mod p(x), so the state after
// the move is sum g_i T^i s: the XOR of the windows of 624 words starting at
// the positions i where g_i = 1.  The polynomials are computed here; the
// evaluation is in mersenne_twister.cpp.
//
// p is sparse: x^19937 plus 134 terms, the highest x^19314.  Reduction of a
// product therefore clears 576 high bits at a time, by adding that chunk
// times p shifted into place: each of the 135 terms contributes one shifted
// copy of the chunk, all of them at least 623 bits below the chunk.
#pragma once

#include <cstdint>

#include "g05/modarith.h"

namespace zem::g05::mt_jump {

inline constexpr int degree = 19937;
inline constexpr int words = (degree + 63) / 64;  // 312

// A polynomial of degree below 19937, bit i = coefficient of x^i.
struct poly {
  uint64_t w[words];
  bool bit(int i) const { return (w[i >> 6] >> (i & 63)) & 1; }
};

poly one();
// g^2 mod p.
void square(poly &g);
// g x mod p and g / x mod p (x is a unit: p(0) = 1).
void times_x(poly &g);
void divide_x(poly &g);
// x^e mod p.
poly x_power(u128 e);

}  // namespace zem::g05::mt_jump
