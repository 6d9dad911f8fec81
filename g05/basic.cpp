// The basic generator (genid 1): x' = 13^13 x mod 2^59 on odd values, kept
// as x = 2 (odd) mod 2^60 (see basic_core.h for the arithmetic and the double).
//
// Own words (0-based): [3] 0; [4..7] x as four 15-bit digits, least
// significant first; [8..11] the multiplier likewise (13^13 until a leap-frog
// replaces it by a power); [12] 0; [13] reserved, 0.  Own length 14.
//
// Leap-frog and skip-ahead are powers of the multiplier.  Every odd a has
// a^(2^58) = 1 modulo 2^60 (the unit group modulo 2^60 has exponent 2^58),
// which turns the backward move of a leap-frog and huge powers of two into
// small non-negative exponents.
#include <cstdint>

#include "g05/basic_core.h"
#include "g05/fill_kernels.h"
#include "g05/generators.h"

namespace zem::g05 {

namespace {

constexpr int64_t own_len = 14;
constexpr int64_t check_word = 1234;
constexpr int64_t pos_x = 4, pos_a = 8;

// a^e modulo 2^60.
uint64_t pow60(uint64_t a, uint64_t e) {
  uint64_t r = 1;
  for (; e != 0; e >>= 1) {
    if (e & 1) r = (r * a) & mask60;
    a = (a * a) & mask60;
  }
  return r;
}

int64_t init(const seed_array &s, int64_t *state, int64_t room, bool query, int64_t *own) {
  if (s.lseed < 1) return op_lseed;
  *own = own_len;
  if (query) return op_query;
  if (room < own_len) return op_lstate_small;
  if (s.seed[0] < 1) return op_invalid_seed;
  // Seed, then the one advance made at initialisation.
  const uint64_t x = (basic_seed_value(s.seed[0]) * basic_multiplier) & mask60;
  state[pos_length] = own_len;
  state[pos_check] = check_word;
  state[pos_genid] = gen_basic;
  state[pos_specific] = 0;
  to_digits(x, state + pos_x);
  to_digits(basic_multiplier, state + pos_a);
  state[12] = 0;
  state[13] = 0;
  return op_ok;
}

bool length_ok(const int64_t *, int64_t n) { return n == own_len + trailer_len; }

bool consistent(const int64_t *state, int64_t) {
  for (int i = 0; i < 8; ++i)
    if (state[pos_x + i] < 0 || state[pos_x + i] > 0x7fff) return false;
  // x = 2 mod 4 keeps the stream on its cycle (and away from 0); the
  // multiplier must be a unit.
  return (state[pos_x] & 3) == 2 && (state[pos_a] & 1) == 1;
}

void fill(int64_t *state, int64_t n, double *x) {
  const uint64_t a = from_digits(state + pos_a);
  const uint64_t v = from_digits(state + pos_x);
  to_digits(kernels().basic(a, v, n, x), state + pos_x);
}

int64_t leapfrog(int64_t *state, int64_t n, int64_t k) {
  const uint64_t a = from_digits(state + pos_a);
  // Values k, k+n, ...: step by a^n from a^(k-n) x, a move back by n - k.
  const uint64_t back = (static_cast<uint64_t>(k) - static_cast<uint64_t>(n)) & ((uint64_t{1} << 58) - 1);
  const uint64_t x = (pow60(a, back) * from_digits(state + pos_x)) & mask60;
  to_digits(x, state + pos_x);
  to_digits(pow60(a, static_cast<uint64_t>(n)), state + pos_a);
  return op_ok;
}

int64_t skip(int64_t *state, int64_t n) {
  const uint64_t a = from_digits(state + pos_a);
  to_digits((pow60(a, static_cast<uint64_t>(n)) * from_digits(state + pos_x)) & mask60,
            state + pos_x);
  return op_ok;
}

int64_t skip_pow2(int64_t *state, int64_t n) {
  // a^(2^n) by n squarings; from n = 58 on the power is 1.
  uint64_t b = from_digits(state + pos_a);
  for (int64_t i = 0; i < n && i < 58; ++i) b = (b * b) & mask60;
  if (n >= 58) b = 1;
  to_digits((b * from_digits(state + pos_x)) & mask60, state + pos_x);
  return op_ok;
}

}  // namespace

const generator basic_generator = {
    gen_basic, check_word, "basic", init, length_ok, consistent, fill, leapfrog, skip, skip_pow2,
};

}  // namespace zem::g05
