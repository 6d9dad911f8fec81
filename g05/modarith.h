// Modular arithmetic for leap-frog and skip-ahead: powers of multipliers and
// of 3 by 3 recurrence matrices, and reductions of huge exponents by the
// order of the group they act in.
#pragma once

#include <cstdint>

namespace zem::g05 {

using u128 = unsigned __int128;

// a b mod m for a, b < m < 2^64.
inline uint64_t mulmod(uint64_t a, uint64_t b, uint64_t m) {
  return static_cast<uint64_t>(static_cast<u128>(a) * b % m);
}

// a^e mod m, m >= 2.
inline uint64_t powmod(uint64_t a, uint64_t e, uint64_t m) {
  uint64_t r = 1 % m;
  a %= m;
  for (; e != 0; e >>= 1) {
    if (e & 1) r = mulmod(r, a, m);
    a = mulmod(a, a, m);
  }
  return r;
}

// a b mod M for a, b < M < 2^126, by doubling and adding (2r + a < 2^127).
inline u128 mulmod_wide(u128 a, u128 b, u128 M) {
  u128 r = 0;
  for (int bit = 127; bit >= 0; --bit) {
    r <<= 1;
    if (r >= M) r -= M;
    if ((b >> bit) & 1) {
      r += a;
      if (r >= M) r -= M;
    }
  }
  return r;
}

// 2^n mod M for M < 2^126: the exponent that replaces 2^n when the group
// acted on has an order dividing M.
inline u128 pow2mod_wide(uint64_t n, u128 M) {
  u128 r = 1 % M, b = 2 % M;
  for (; n != 0; n >>= 1) {
    if (n & 1) r = mulmod_wide(r, b, M);
    b = mulmod_wide(b, b, M);
  }
  return r;
}

// (k - n) mod M for 1 <= k <= n: the power that moves a stream back by n - k.
inline u128 backward_exponent(int64_t n, int64_t k, u128 M) {
  const u128 d = static_cast<u128>(static_cast<uint64_t>(n - k)) % M;
  return d == 0 ? 0 : M - d;
}

// 3 by 3 matrices modulo m < 2^63, row-major, acting on column vectors.
struct mat3 {
  uint64_t a[9];
};

inline mat3 mat3_mul(const mat3 &x, const mat3 &y, uint64_t m) {
  mat3 z{};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      uint64_t s = 0;
      for (int k = 0; k < 3; ++k) s = (s + mulmod(x.a[3 * i + k], y.a[3 * k + j], m)) % m;
      z.a[3 * i + j] = s;
    }
  return z;
}

inline mat3 mat3_identity() { return mat3{{1, 0, 0, 0, 1, 0, 0, 0, 1}}; }

inline mat3 mat3_pow(mat3 x, u128 e, uint64_t m) {
  mat3 r = mat3_identity();
  for (; e != 0; e >>= 1) {
    if (e & 1) r = mat3_mul(r, x, m);
    x = mat3_mul(x, x, m);
  }
  return r;
}

inline void mat3_apply(const mat3 &x, uint64_t v[3], uint64_t m) {
  uint64_t w[3];
  for (int i = 0; i < 3; ++i) {
    uint64_t s = 0;
    for (int k = 0; k < 3; ++k) s = (s + mulmod(x.a[3 * i + k], v[k], m)) % m;
    w[i] = s;
  }
  for (int i = 0; i < 3; ++i) v[i] = w[i];
}

// Saturating arithmetic for the stream-control words (informative for the
// generators whose leap-frog changes their multiplier).
inline int64_t sat_mul(int64_t a, int64_t b) {
  int64_t r;
  return __builtin_mul_overflow(a, b, &r) ? INT64_MAX : r;
}
inline int64_t sat_add(int64_t a, int64_t b) {
  int64_t r;
  return __builtin_add_overflow(a, b, &r) ? INT64_MAX : r;
}

}  // namespace zem::g05
