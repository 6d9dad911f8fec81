// ACORN, the additive congruential generator (genid 5), of order k on
// integers modulo 2^60:
//     Y^0(n) = Y^0(0)                        (the odd "seed", constant)
//     Y^m(n) = Y^(m-1)(n) + Y^m(n-1) mod 2^60,  m = 1 .. k,
// and the value is Y^k(n).  Its double takes the top 52 bits v of Y^k:
// u = (2 v + 1) 2^-53, exact and strictly inside (0,1).
//
// Own words (0-based): [3] the order k; [4 + 2m], [5 + 2m] the low and high
// 30 bits of Y^m, m = 0 .. k.  Own length 2 k + 6 (k = 10: 26, total 29).
//
// Seed array:
//   seed(1) >= 1 seeds the basic generator that supplies whatever the seed
//           array leaves open;
//   seed(2), if lseed >= 2, is the order k, 1 <= k <= 1000 (default 10);
//   seed(3), if lseed >= 3, is Y^0(0): odd, below 2^60 (default: a 60-bit
//           value of the basic generator with its lowest bit set);
//   seed(4) .. seed(3 + k) give Y^1(0), Y^2(0), ... (each 0 <= v < 2^60);
//           the rest of the first row are 60-bit values of the basic
//           generator, and seed elements past 3 + k are ignored.
// A length query needs the order, so a bad seed(2) is reported even then.
//
// One step multiplies the row (Y^0 .. Y^k) by the lower triangular matrix of
// ones, a Toeplitz matrix; such matrices multiply like power series truncated
// after z^k, this one being 1/(1 - z).  Skipping n steps applies the series
// (1 - z)^(-n), whose coefficients are C(n - 1 + d, d), computed by repeated
// squaring of series modulo 2^64 (which reduces correctly modulo 2^60).
// ACORN has no leap-frog.
#include <cstdint>

#include "g05/basic_core.h"
#include "g05/generators.h"

namespace zem::g05 {

namespace {

constexpr int64_t check_word = 5050;
constexpr int64_t default_order = 10, max_order = 1000;
constexpr int64_t pos_y = 4;
constexpr uint64_t half_mask = (uint64_t{1} << 30) - 1;

constexpr int64_t own_length(int64_t k) { return 2 * k + 6; }

// Order from the seed array, or 0 if it is out of range.
int64_t order_of(const seed_array &s) {
  if (s.lseed < 2) return default_order;
  return s.seed[1] >= 1 && s.seed[1] <= max_order ? s.seed[1] : 0;
}

struct row {
  int64_t k;
  uint64_t y[max_order + 1];
  explicit row(const int64_t *state) : k(state[pos_specific]) {
    for (int64_t m = 0; m <= k; ++m)
      y[m] = static_cast<uint64_t>(state[pos_y + 2 * m]) |
             static_cast<uint64_t>(state[pos_y + 2 * m + 1]) << 30;
  }
  row() = default;
  void store(int64_t *state) const {
    for (int64_t m = 0; m <= k; ++m) {
      state[pos_y + 2 * m] = static_cast<int64_t>(y[m] & half_mask);
      state[pos_y + 2 * m + 1] = static_cast<int64_t>((y[m] >> 30) & half_mask);
    }
  }
};

int64_t init(const seed_array &s, int64_t *state, int64_t room, bool query, int64_t *own) {
  if (s.lseed < 1) return op_lseed;
  const int64_t k = order_of(s);
  if (k == 0) return op_invalid_seed;
  *own = own_length(k);
  if (query) return op_query;
  if (room < own_length(k)) return op_lstate_small;
  if (s.seed[0] < 1) return op_invalid_seed;
  if (s.lseed >= 3 && (s.seed[2] < 1 || s.seed[2] > static_cast<int64_t>(mask60) || s.seed[2] % 2 == 0))
    return op_invalid_seed;
  const int64_t given = s.lseed - 3 < k ? s.lseed - 3 : k;  // Y^1 .. Y^given from the seed
  for (int64_t m = 1; m <= given; ++m)
    if (s.seed[2 + m] < 0 || s.seed[2 + m] > static_cast<int64_t>(mask60)) return op_invalid_seed;
  row r;
  r.k = k;
  seeder sd(s.seed[0]);
  r.y[0] = s.lseed >= 3 ? static_cast<uint64_t>(s.seed[2]) : sd.word60() | 1;
  for (int64_t m = 1; m <= k; ++m)
    r.y[m] = m <= given ? static_cast<uint64_t>(s.seed[2 + m]) : sd.word60();
  state[pos_length] = own_length(k);
  state[pos_check] = check_word;
  state[pos_genid] = gen_acorn;
  state[pos_specific] = k;
  r.store(state);
  return op_ok;
}

bool length_ok(const int64_t *state, int64_t n) {
  const int64_t k = state[pos_specific];
  return k >= 1 && k <= max_order && n == own_length(k) + trailer_len;
}

bool consistent(const int64_t *state, int64_t) {
  const int64_t k = state[pos_specific];
  for (int64_t i = pos_y; i < pos_y + 2 * (k + 1); ++i)
    if (state[i] < 0 || state[i] > static_cast<int64_t>(half_mask)) return false;
  return (state[pos_y] & 1) == 1;  // Y^0 odd: full period
}

void fill(int64_t *state, int64_t n, double *out) {
  row r(state);
  const int64_t k = r.k;
  // Sums are kept modulo 2^64 and reduced modulo 2^60 when read.
  for (int64_t i = 0; i < n; ++i) {
    for (int64_t m = 1; m <= k; ++m) r.y[m] += r.y[m - 1];
    const uint64_t v = (r.y[k] & mask60) >> 8;
    out[i] = static_cast<double>(static_cast<int64_t>(2 * v + 1)) * 0x1p-53;
  }
  r.store(state);
}

int64_t leapfrog(int64_t *, int64_t, int64_t) { return op_unsupported; }

// Truncated power series modulo 2^64, degree <= k.
struct series {
  int64_t k;
  uint64_t c[max_order + 1];
};

void multiply(series &a, const series &b) {
  for (int64_t d = a.k; d >= 0; --d) {  // downwards, so a[0..d] is still intact
    uint64_t s = 0;
    for (int64_t i = 0; i <= d; ++i) s += a.c[i] * b.c[d - i];
    a.c[d] = s;
  }
}

bool is_one(const series &a) {
  if ((a.c[0] & mask60) != 1) return false;
  for (int64_t d = 1; d <= a.k; ++d)
    if ((a.c[d] & mask60) != 0) return false;
  return true;
}

// The series of one step, 1/(1 - z).
void one_step(series &a, int64_t k) {
  a.k = k;
  for (int64_t d = 0; d <= k; ++d) a.c[d] = 1;
}

void apply(int64_t *state, const series &t) {
  row r(state);
  row s = r;
  for (int64_t m = 1; m <= r.k; ++m) {
    uint64_t v = 0;
    for (int64_t j = 0; j <= m; ++j) v += t.c[m - j] * r.y[j];
    s.y[m] = v;
  }
  s.store(state);
}

int64_t skip(int64_t *state, int64_t n) {
  const int64_t k = state[pos_specific];
  series t, b;
  t.k = k;
  t.c[0] = 1;
  for (int64_t d = 1; d <= k; ++d) t.c[d] = 0;
  one_step(b, k);
  for (uint64_t e = static_cast<uint64_t>(n); e != 0; e >>= 1) {
    if (e & 1) multiply(t, b);
    if (e > 1) multiply(b, b);
  }
  apply(state, t);
  return op_ok;
}

int64_t skip_pow2(int64_t *state, int64_t n) {
  // T^(2^n): square n times.  The coefficients of (1 - z)^(-2^j) up to z^k
  // are divisible by 2^(j - log2 k), so the series reaches 1 (modulo 2^60)
  // after at most about 70 squarings and stays there.
  series t;
  one_step(t, state[pos_specific]);
  for (int64_t i = 0; i < n && !is_one(t); ++i) multiply(t, t);
  apply(state, t);
  return op_ok;
}

}  // namespace

const generator acorn_generator = {
    gen_acorn, check_word, "ACORN", init, length_ok, consistent, fill, leapfrog, skip, skip_pow2,
};

}  // namespace zem::g05
