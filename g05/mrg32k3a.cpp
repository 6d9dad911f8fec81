// L'Ecuyer's combined multiple recursive generator MRG32k3a (genid 6); the
// recurrences, the combination and the published scaling are in
// mrg32k3a_core.h.
//
// Own words (0-based): [3] 0; [4..6] x1(n-3), x1(n-2), x1(n-1); [7..9] the
// same for x2; [10..18] and [19..27] the step matrices B1, B2 (row-major, on
// the vectors above): the recurrence matrices A1, A2 until a leap-frog
// replaces them by their n-th powers; [28..57] reserved, 0.  Own length 58.
//
// Seeding: x1(n-3), x1(n-2), x1(n-1) are successive 60-bit values of the
// basic generator seeded with seed(1) (at least 1; further elements are
// ignored) reduced modulo m1, then x2 likewise modulo m2; a component that
// came out all zero gets x(n-1) = 1.
//
// With the step matrices equal to A1, A2 the fill runs the recurrences
// themselves (in vector lanes, each started by a jump of A^256, for long
// fills); after a leap-frog it multiplies by the dense B1, B2.  Leap-frog and
// skip-ahead are matrix powers; exponents are reduced modulo m^3 - 1, which
// the order of every power of A divides.
#include <cstdint>

#include "g05/basic_core.h"
#include "g05/fill_kernels.h"
#include "g05/generators.h"
#include "g05/mrg32k3a_core.h"

namespace zem::g05 {

namespace {

constexpr int64_t own_len = 58;
constexpr int64_t check_word = 4826;
constexpr int64_t pos_x1 = 4, pos_x2 = 7, pos_b1 = 10, pos_b2 = 19;

mat3 load_matrix(const int64_t *p) {
  mat3 b;
  for (int i = 0; i < 9; ++i) b.a[i] = static_cast<uint64_t>(p[i]);
  return b;
}
void store_matrix(const mat3 &b, int64_t *p) {
  for (int i = 0; i < 9; ++i) p[i] = static_cast<int64_t>(b.a[i]);
}
bool same(const mat3 &x, const mat3 &y) {
  for (int i = 0; i < 9; ++i)
    if (x.a[i] != y.a[i]) return false;
  return true;
}

int64_t init(const seed_array &s, int64_t *state, int64_t room, bool query, int64_t *own) {
  if (s.lseed < 1) return op_lseed;
  *own = own_len;
  if (query) return op_query;
  if (room < own_len) return op_lstate_small;
  if (s.seed[0] < 1) return op_invalid_seed;
  seeder sd(s.seed[0]);
  for (int64_t i = pos_own; i < own_len; ++i) state[i] = 0;
  for (int i = 0; i < 3; ++i) state[pos_x1 + i] = static_cast<int64_t>(sd.word60() % mrg::m1);
  for (int i = 0; i < 3; ++i) state[pos_x2 + i] = static_cast<int64_t>(sd.word60() % mrg::m2);
  if ((state[pos_x1] | state[pos_x1 + 1] | state[pos_x1 + 2]) == 0) state[pos_x1 + 2] = 1;
  if ((state[pos_x2] | state[pos_x2 + 1] | state[pos_x2 + 2]) == 0) state[pos_x2 + 2] = 1;
  store_matrix(mrg::A1, state + pos_b1);
  store_matrix(mrg::A2, state + pos_b2);
  state[pos_length] = own_len;
  state[pos_check] = check_word;
  state[pos_genid] = gen_mrg32k3a;
  state[pos_specific] = 0;
  return op_ok;
}

bool length_ok(const int64_t *, int64_t n) { return n == own_len + trailer_len; }

bool in_range(const int64_t *p, int count, uint64_t m) {
  for (int i = 0; i < count; ++i)
    if (p[i] < 0 || static_cast<uint64_t>(p[i]) >= m) return false;
  return true;
}

bool consistent(const int64_t *state, int64_t) {
  return in_range(state + pos_x1, 3, mrg::m1) && in_range(state + pos_x2, 3, mrg::m2) &&
         (state[pos_x1] | state[pos_x1 + 1] | state[pos_x1 + 2]) != 0 &&
         (state[pos_x2] | state[pos_x2 + 1] | state[pos_x2 + 2]) != 0 &&
         in_range(state + pos_b1, 9, mrg::m1) && in_range(state + pos_b2, 9, mrg::m2);
}

// u from the newest values of the two components.
double combine(uint64_t p1, uint64_t p2) {
  return p1 <= p2 ? (static_cast<double>(p1) - static_cast<double>(p2) + static_cast<double>(mrg::m1)) * mrg::norm
                  : (static_cast<double>(p1) - static_cast<double>(p2)) * mrg::norm;
}

void fill(int64_t *state, int64_t n, double *out) {
  uint64_t s1[3], s2[3];
  for (int i = 0; i < 3; ++i) {
    s1[i] = static_cast<uint64_t>(state[pos_x1 + i]);
    s2[i] = static_cast<uint64_t>(state[pos_x2 + i]);
  }
  const mat3 b1 = load_matrix(state + pos_b1), b2 = load_matrix(state + pos_b2);
  if (same(b1, mrg::A1) && same(b2, mrg::A2)) {
    int64_t i = kernels().mrg32k3a(s1, s2, n, out);
    // One value at a time, as published: the products are exact in double,
    // k is the quotient truncated toward zero.
    double x10 = static_cast<double>(s1[0]), x11 = static_cast<double>(s1[1]),
           x12 = static_cast<double>(s1[2]);
    double x20 = static_cast<double>(s2[0]), x21 = static_cast<double>(s2[1]),
           x22 = static_cast<double>(s2[2]);
    constexpr double m1 = static_cast<double>(mrg::m1), m2 = static_cast<double>(mrg::m2);
    for (; i < n; ++i) {
      double p1 = static_cast<double>(mrg::a12) * x11 - static_cast<double>(mrg::a13n) * x10;
      p1 -= static_cast<double>(static_cast<int64_t>(p1 / m1)) * m1;
      if (p1 < 0.0) p1 += m1;
      x10 = x11;
      x11 = x12;
      x12 = p1;
      double p2 = static_cast<double>(mrg::a21) * x22 - static_cast<double>(mrg::a23n) * x20;
      p2 -= static_cast<double>(static_cast<int64_t>(p2 / m2)) * m2;
      if (p2 < 0.0) p2 += m2;
      x20 = x21;
      x21 = x22;
      x22 = p2;
      out[i] = combine(static_cast<uint64_t>(p1), static_cast<uint64_t>(p2));
    }
    s1[0] = static_cast<uint64_t>(x10), s1[1] = static_cast<uint64_t>(x11), s1[2] = static_cast<uint64_t>(x12);
    s2[0] = static_cast<uint64_t>(x20), s2[1] = static_cast<uint64_t>(x21), s2[2] = static_cast<uint64_t>(x22);
  } else {
    for (int64_t i = 0; i < n; ++i) {
      mrg::apply<mrg::m1>(b1, s1);
      mrg::apply<mrg::m2>(b2, s2);
      out[i] = combine(s1[2], s2[2]);
    }
  }
  for (int i = 0; i < 3; ++i) {
    state[pos_x1 + i] = static_cast<int64_t>(s1[i]);
    state[pos_x2 + i] = static_cast<int64_t>(s2[i]);
  }
}

// x <- B^e x for both components, e given per component by its group order.
template <typename Exponent>
void advance(int64_t *state, Exponent exponent) {
  uint64_t v[3];
  for (int c = 0; c < 2; ++c) {
    const int64_t px = c == 0 ? pos_x1 : pos_x2, pb = c == 0 ? pos_b1 : pos_b2;
    const uint64_t m = c == 0 ? mrg::m1 : mrg::m2;
    const u128 order = c == 0 ? mrg::order1 : mrg::order2;
    for (int i = 0; i < 3; ++i) v[i] = static_cast<uint64_t>(state[px + i]);
    mat3_apply(mat3_pow(load_matrix(state + pb), exponent(order), m), v, m);
    for (int i = 0; i < 3; ++i) state[px + i] = static_cast<int64_t>(v[i]);
  }
}

int64_t leapfrog(int64_t *state, int64_t n, int64_t k) {
  // Values k, k+n, ...: move back by n - k, then step by B^n.
  advance(state, [&](u128 order) { return backward_exponent(n, k, order); });
  store_matrix(mat3_pow(load_matrix(state + pos_b1), static_cast<u128>(n), mrg::m1), state + pos_b1);
  store_matrix(mat3_pow(load_matrix(state + pos_b2), static_cast<u128>(n), mrg::m2), state + pos_b2);
  return op_ok;
}

int64_t skip(int64_t *state, int64_t n) {
  advance(state, [&](u128) { return static_cast<u128>(n); });
  return op_ok;
}

int64_t skip_pow2(int64_t *state, int64_t n) {
  advance(state, [&](u128 order) { return pow2mod_wide(static_cast<uint64_t>(n), order); });
  return op_ok;
}

}  // namespace

const generator mrg32k3a_generator = {
    gen_mrg32k3a, check_word, "MRG32k3a", init, length_ok, consistent, fill, leapfrog, skip, skip_pow2,
};

}  // namespace zem::g05
