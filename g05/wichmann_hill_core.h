// The double of the Wichmann-Hill generators (genid 2 and 4), shared by the
// scalar steps and the vector kernels so that both give the same bits.
#pragma once

#include <cstdint>

namespace zem::g05 {

inline constexpr int wh_components = 4;

// Written once for scalars and for vectors of doubles (GCC vector
// extensions), D being either.

// Nearest integer of 0 <= v < 2^51, ties to even: adding 2^52 leaves no
// fraction bits.  (No contraction and no reassociation: the two operations
// are evaluated as written.)
template <typename D>
[[gnu::always_inline]] inline D round_small(D v) {
  return (v + 0x1p52) - 0x1p52;
}

// u = s - floor(s) with s = ((x0 r0 + x1 r1) + x2 r2) + x3 r3, r_j = 1/m_j
// rounded, evaluated in that order.  The exact sum of x_j/m_j is never an
// integer (the m_j are distinct primes not dividing x_j), but rounding can
// make s one; that case gives 2^-53, so u lies strictly inside (0,1).  The
// subtraction is exact (s < 4), so u < 1.
template <typename D>
[[gnu::always_inline]] inline D wh_double(D x0, D x1, D x2, D x3, const double r[4]) {
  D s = x0 * r[0] + x1 * r[1];
  s = s + x2 * r[2];
  s = s + x3 * r[3];
  D f = round_small(s);
  f = f > s ? f - 1.0 : f;
  const D u = s - f;
  return u > 0.0 ? u : 0x1p-53;
}

}  // namespace zem::g05
