// The two Wichmann-Hill generators: four multiplicative congruential
// components x_j' = a_j x_j mod m_j with prime m_j < 2^31, combined as the
// fractional part of sum x_j / m_j (wichmann_hill_core.h).
//
// Wichmann-Hill I (genid 2): a family of 273 members, member = subid mod 273
// (so no subid is an error), each with its own four (a_j, m_j) from the table
// built by tools/g05_wh1_table.py.  Own words (0-based): [3] the member;
// [4..7] x_j; [8..11] a_j; [12..15] m_j; [16..17] reserved, 0.  Own length 18.
//
// Wichmann-Hill II (genid 4): the four-component generator of 2006, with
//     (a, m) = (11600, 2147483579), (47003, 2147483543),
//              (23000, 2147483423), (33000, 2147483123).
// Own words: [3] 0; [4..7] x_j; [8..11] a_j; [12..15] m_j; [16..19]
// q_j = m_j div a_j; [20..23] r_j = m_j mod a_j; [24..25] reserved, 0.
// Own length 26.  Its one-value step uses Schrage's method,
//     a x mod m = a (x mod q) - r (x div q)  (+ m if negative),
// which keeps every intermediate below m when r < q, as for these multipliers.
//
// Seeding: x_j = 1 + (w mod (m_j - 1)) for successive 60-bit values w of the
// basic generator seeded with seed(1); seed(1) must be at least 1, further
// seed elements are ignored.
//
// Leap-frog and skip-ahead are powers of the multipliers.  Each a_j is a unit
// modulo the prime m_j, so a_j^(m_j - 1) = 1: the exponents are reduced
// modulo m_j - 1, which also turns the backward move of a leap-frog and the
// power 2^n of the second skip-ahead into ordinary powers.
#include <cstdint>

#include "g05/basic_core.h"
#include "g05/fill_kernels.h"
#include "g05/generators.h"
#include "g05/modarith.h"
#include "g05/wichmann_hill_core.h"

namespace zem::g05 {

namespace {

constexpr int64_t wh1_members = 273;
constexpr uint64_t wh1_table[wh1_members][8] = {
#include "g05/wichmann_hill_1_table.inc"
};

constexpr uint64_t wh2_a[4] = {11600, 47003, 23000, 33000};
constexpr uint64_t wh2_m[4] = {2147483579, 2147483543, 2147483423, 2147483123};

constexpr int64_t pos_x = 4, pos_a = 8, pos_m = 12, pos_q = 16, pos_r = 20;

// The parts in which the two generators differ.
struct variant {
  int64_t genid;
  int64_t check_word;
  int64_t own_len;
  bool schrage;  // stores (q, r) and steps by Schrage's method
};
constexpr variant wh1 = {gen_wichmann_hill_1, 2468, 18, false};
constexpr variant wh2 = {gen_wichmann_hill_2, 4826, 26, true};

int64_t wh1_member(int64_t subid) { return (subid % wh1_members + wh1_members) % wh1_members; }

// The components' (a, m) of a fresh state.
void components(const variant &v, int64_t subid, uint64_t a[4], uint64_t m[4]) {
  for (int j = 0; j < 4; ++j) {
    if (v.schrage) {
      a[j] = wh2_a[j];
      m[j] = wh2_m[j];
    } else {
      a[j] = wh1_table[wh1_member(subid)][2 * j];
      m[j] = wh1_table[wh1_member(subid)][2 * j + 1];
    }
  }
}

// Writes the multipliers and what depends on them.
void set_multipliers(const variant &v, int64_t *state, const uint64_t a[4]) {
  for (int j = 0; j < 4; ++j) {
    state[pos_a + j] = static_cast<int64_t>(a[j]);
    if (v.schrage) {
      state[pos_q + j] = state[pos_m + j] / state[pos_a + j];
      state[pos_r + j] = state[pos_m + j] % state[pos_a + j];
    }
  }
}

int64_t init(const variant &v, const seed_array &s, int64_t *state, int64_t room, bool query,
             int64_t *own) {
  if (s.lseed < 1) return op_lseed;
  *own = v.own_len;
  if (query) return op_query;
  if (room < v.own_len) return op_lstate_small;
  if (s.seed[0] < 1) return op_invalid_seed;
  uint64_t a[4], m[4];
  components(v, s.subid, a, m);
  seeder sd(s.seed[0]);
  for (int64_t i = pos_own; i < v.own_len; ++i) state[i] = 0;
  state[pos_length] = v.own_len;
  state[pos_check] = v.check_word;
  state[pos_genid] = v.genid;
  state[pos_specific] = v.schrage ? 0 : wh1_member(s.subid);
  for (int j = 0; j < 4; ++j) {
    state[pos_m + j] = static_cast<int64_t>(m[j]);
    state[pos_x + j] = static_cast<int64_t>(1 + sd.word60() % (m[j] - 1));
  }
  set_multipliers(v, state, a);
  return op_ok;
}

bool consistent(const variant &v, const int64_t *state) {
  uint64_t a[4], m[4];
  if (!v.schrage && (state[pos_specific] < 0 || state[pos_specific] >= wh1_members)) return false;
  components(v, state[pos_specific], a, m);
  for (int j = 0; j < 4; ++j) {
    const int64_t mj = state[pos_m + j], aj = state[pos_a + j], xj = state[pos_x + j];
    if (mj != static_cast<int64_t>(m[j])) return false;
    if (aj < 1 || aj >= mj || xj < 1 || xj >= mj) return false;
    if (v.schrage && (state[pos_q + j] != mj / aj || state[pos_r + j] != mj % aj)) return false;
  }
  return true;
}

template <const variant &v>
void fill(int64_t *state, int64_t n, double *out) {
  uint64_t x[4], a[4], m[4];
  bool small = true;
  for (int j = 0; j < 4; ++j) {
    x[j] = static_cast<uint64_t>(state[pos_x + j]);
    a[j] = static_cast<uint64_t>(state[pos_a + j]);
    m[j] = static_cast<uint64_t>(state[pos_m + j]);
    small = small && a[j] < (uint64_t{1} << 21);
  }
  // Blocks: exact double arithmetic while a x < 2^52.
  const int64_t done = small ? kernels().wichmann_hill(a, m, x, n, out) : 0;
  double r[4];
  for (int j = 0; j < 4; ++j) r[j] = 1.0 / static_cast<double>(m[j]);
  int64_t q[4], rr[4];
  bool schrage = v.schrage;
  for (int j = 0; j < 4 && schrage; ++j) {
    q[j] = state[pos_q + j];
    rr[j] = state[pos_r + j];
    schrage = rr[j] < q[j];
  }
  for (int64_t i = done; i < n; ++i) {
    for (int j = 0; j < 4; ++j) {
      if (schrage) {
        const int64_t xj = static_cast<int64_t>(x[j]);
        const int64_t y = static_cast<int64_t>(a[j]) * (xj % q[j]) - rr[j] * (xj / q[j]);
        x[j] = static_cast<uint64_t>(y < 0 ? y + static_cast<int64_t>(m[j]) : y);
      } else {
        // a, x < 2^31: the product is exact in 64 bits.
        x[j] = a[j] * x[j] % m[j];
      }
    }
    out[i] = wh_double(static_cast<double>(x[0]), static_cast<double>(x[1]),
                       static_cast<double>(x[2]), static_cast<double>(x[3]), r);
  }
  for (int j = 0; j < 4; ++j) state[pos_x + j] = static_cast<int64_t>(x[j]);
}

// x_j <- a_j^e_j x_j with e_j given per modulus.
template <typename Exponent>
void advance(int64_t *state, Exponent exponent) {
  for (int j = 0; j < 4; ++j) {
    const uint64_t m = static_cast<uint64_t>(state[pos_m + j]);
    const uint64_t p = powmod(static_cast<uint64_t>(state[pos_a + j]), exponent(m - 1), m);
    state[pos_x + j] = static_cast<int64_t>(mulmod(p, static_cast<uint64_t>(state[pos_x + j]), m));
  }
}

template <const variant &v>
int64_t leapfrog(int64_t *state, int64_t n, int64_t k) {
  // Values k, k+n, ...: move back by n - k, then step by a^n.
  advance(state, [&](uint64_t order) {
    return static_cast<uint64_t>(backward_exponent(n, k, order));
  });
  uint64_t a[4];
  for (int j = 0; j < 4; ++j)
    a[j] = powmod(static_cast<uint64_t>(state[pos_a + j]), static_cast<uint64_t>(n),
                  static_cast<uint64_t>(state[pos_m + j]));
  set_multipliers(v, state, a);
  return op_ok;
}

int64_t skip(int64_t *state, int64_t n) {
  advance(state, [&](uint64_t order) { return static_cast<uint64_t>(n) % order; });
  return op_ok;
}

int64_t skip_pow2(int64_t *state, int64_t n) {
  advance(state, [&](uint64_t order) {
    return static_cast<uint64_t>(pow2mod_wide(static_cast<uint64_t>(n), order));
  });
  return op_ok;
}

}  // namespace

const generator wichmann_hill_1_generator = {
    gen_wichmann_hill_1,
    wh1.check_word,
    "Wichmann-Hill I",
    [](const seed_array &s, int64_t *st, int64_t room, bool q, int64_t *own) {
      return init(wh1, s, st, room, q, own);
    },
    [](const int64_t *, int64_t n) { return n == wh1.own_len + trailer_len; },
    [](const int64_t *st, int64_t) { return consistent(wh1, st); },
    fill<wh1>,
    leapfrog<wh1>,
    skip,
    skip_pow2,
};

const generator wichmann_hill_2_generator = {
    gen_wichmann_hill_2,
    wh2.check_word,
    "Wichmann-Hill II",
    [](const seed_array &s, int64_t *st, int64_t room, bool q, int64_t *own) {
      return init(wh2, s, st, room, q, own);
    },
    [](const int64_t *, int64_t n) { return n == wh2.own_len + trailer_len; },
    [](const int64_t *st, int64_t) { return consistent(wh2, st); },
    fill<wh2>,
    leapfrog<wh2>,
    skip,
    skip_pow2,
};

}  // namespace zem::g05
