// Arithmetic modulo the characteristic polynomial of MT19937 (see the header).
#include "g05/mersenne_twister_jump.h"

#include <cstring>

namespace zem::g05::mt_jump {

namespace {

// Exponents of p(x) below its degree, increasing; x^19937 is implicit.
constexpr int terms[] = {
#include "g05/mersenne_twister_charpoly.inc"
};
constexpr int nterms = sizeof terms / sizeof terms[0];
static_assert(terms[0] == 0 && terms[nterms - 1] < degree);

// The gap between x^19937 and the next term bounds the chunk that one pass
// of the reduction may clear.
constexpr int gap = degree - terms[nterms - 1];
constexpr int chunk = 576;
static_assert(chunk <= gap && chunk % 64 == 0);
constexpr int chunk_words = chunk / 64 + 1;

// A product before reduction: degree at most 2 (19937 - 1), plus one spare
// word so that reads of word i + 1 stay inside.
constexpr int wide_words = 2 * words + 1;

// r ^= h x^shift, h of hw words.
void xor_shifted(uint64_t *r, const uint64_t *h, int hw, int shift) {
  const int q = shift >> 6, b = shift & 63;
  if (b == 0) {
    for (int i = 0; i < hw; ++i) r[q + i] ^= h[i];
    return;
  }
  for (int i = 0; i < hw; ++i) {
    r[q + i] ^= h[i] << b;
    r[q + i + 1] ^= h[i] >> (64 - b);
  }
}

// Moves bits lo .. lo + len - 1 of r (len <= chunk) into h and clears them.
void take_bits(uint64_t *r, int lo, int len, uint64_t h[chunk_words]) {
  const int q = lo >> 6, b = lo & 63;
  const int hw = (len + 63) / 64;
  for (int i = 0; i < hw; ++i)
    h[i] = b == 0 ? r[q + i] : (r[q + i] >> b) | (r[q + i + 1] << (64 - b));
  for (int i = hw; i < chunk_words; ++i) h[i] = 0;
  if (len % 64) h[hw - 1] &= (uint64_t{1} << (len % 64)) - 1;
  xor_shifted(r, h, hw, lo);
}

// r (wide, bits up to `top`) modulo p, into g.
void reduce(uint64_t *r, int top, poly &g) {
  for (int hi = top; hi >= degree;) {
    const int lo = hi - chunk + 1 > degree ? hi - chunk + 1 : degree;
    uint64_t h[chunk_words];
    take_bits(r, lo, hi - lo + 1, h);
    // h x^lo = h x^(lo - 19937) (p(x) - x^19937) modulo p.
    const int hw = (hi - lo + 1 + 63) / 64;
    for (int k = 0; k < nterms; ++k) xor_shifted(r, h, hw, lo - degree + terms[k]);
    hi = lo - 1;
  }
  std::memcpy(g.w, r, sizeof g.w);
}

// The 32 bits of v spread to the even positions of a 64-bit word.
uint64_t spread(uint64_t v) {
  v = (v | v << 16) & 0x0000ffff0000ffffull;
  v = (v | v << 8) & 0x00ff00ff00ff00ffull;
  v = (v | v << 4) & 0x0f0f0f0f0f0f0f0full;
  v = (v | v << 2) & 0x3333333333333333ull;
  v = (v | v << 1) & 0x5555555555555555ull;
  return v;
}

void flip_terms(poly &g) {
  for (int k = 0; k < nterms; ++k) g.w[terms[k] >> 6] ^= uint64_t{1} << (terms[k] & 63);
}

}  // namespace

poly one() {
  poly g{};
  g.w[0] = 1;
  return g;
}

// Over GF(2) the square of sum g_i x^i is sum g_i x^(2i).
void square(poly &g) {
  uint64_t r[wide_words];
  for (int i = 0; i < words; ++i) {
    r[2 * i] = spread(g.w[i] & 0xffffffffu);
    r[2 * i + 1] = spread(g.w[i] >> 32);
  }
  r[wide_words - 1] = 0;
  reduce(r, 2 * (degree - 1), g);
}

void times_x(poly &g) {
  const bool overflow = g.bit(degree - 1);
  for (int i = words - 1; i > 0; --i) g.w[i] = g.w[i] << 1 | g.w[i - 1] >> 63;
  g.w[0] <<= 1;
  if (overflow) {
    g.w[degree >> 6] &= ~(uint64_t{1} << (degree & 63));  // x^19937 ...
    flip_terms(g);                                        // ... = the other terms
  }
}

void divide_x(poly &g) {
  // Make g divisible by x by adding p when g(0) = 1; the quotient then has
  // degree at most 19936.
  uint64_t top = 0;
  if (g.w[0] & 1) {
    flip_terms(g);
    top = 1;
  }
  for (int i = 0; i < words - 1; ++i) g.w[i] = g.w[i] >> 1 | g.w[i + 1] << 63;
  g.w[words - 1] >>= 1;
  if (top) g.w[(degree - 1) >> 6] |= uint64_t{1} << ((degree - 1) & 63);
}

poly x_power(u128 e) {
  poly g = one();
  int top = 127;
  while (top >= 0 && !((e >> top) & 1)) --top;
  for (int i = top; i >= 0; --i) {
    square(g);
    if ((e >> i) & 1) times_x(g);
  }
  return g;
}

}  // namespace zem::g05::mt_jump
