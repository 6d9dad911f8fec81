// The Mersenne Twister MT19937 (genid 3): 624 words of 32 bits,
//     x(t) = x(t-227) xor twist(upper bit of x(t-624) | lower 31 bits of x(t-623)),
// twist(y) = y >> 1, xor 0x9908b0df when y is odd; each word is tempered
// (shifts 11, 7, 15, 18, masks 0x9d2c5680 and 0xefc60000) and becomes the
// double u = y 2^-32 + 2^-33, which is exact and lies strictly inside (0,1).
// One double per word: the stream's values are the tempered words.
//
// Own words (0-based): [3] 0; [4..627] the block of 624 words; [628] the
// index (0..624) of the next word of the block to deliver, 624 meaning that
// the next call regenerates the whole block; then, in a full state,
// [629..1252] working room for skip-ahead and [1253..1256] reserved, 0.
// Own length 1257 (total 1260, the length a query returns).  An lstate from
// 632 to 1259 gives a state without working room (own length 629), which
// generates and leap-frogs but cannot skip ahead.
//
// Seeding: the 624 words are the top 32 bits of successive values of the
// basic generator seeded with seed(1) (at least 1; further elements are
// ignored); the block is delivered after one regeneration (index 624).
//
// Leap-frog by n keeps the words and records the stride in the stream-control
// word state[n-3]: each value is one word followed by stride - 1 discarded
// words.  The stride is capped at 2^24 (beyond it the leap-frog is refused),
// since every value costs stride words.
//
// Skip-ahead by e words uses the jump polynomial g = x^e mod p
// (mersenne_twister_jump.h): with the block read as the window of the last
// 624 words, the window e words later is the XOR of the windows starting at
// the positions i with g_i = 1.  Those windows come from 19937 + 623 words
// generated ahead into scratch memory; the XOR accumulates in the working
// room and then becomes the new block (index 624).
#include <cstdint>
#include <memory>
#include <new>

#include "g05/basic_core.h"
#include "g05/fill_kernels.h"
#include "g05/generators.h"
#include "g05/mersenne_twister_jump.h"

namespace zem::g05 {

namespace {

constexpr int N = 624;
constexpr int64_t check_word = 3692;
constexpr int64_t pos_w = 4, pos_index = pos_w + N;
constexpr int64_t own_small = pos_index + 1;  // 629
constexpr int64_t pos_room = own_small;
constexpr int64_t own_full = pos_room + N + 4;  // 1257
constexpr int64_t stride_max = int64_t{1} << 24;

int64_t init(const seed_array &s, int64_t *state, int64_t room, bool query, int64_t *own) {
  if (s.lseed < 1) return op_lseed;
  *own = own_full;
  if (query) return op_query;
  if (room < own_small) {
    *own = own_small;
    return op_lstate_small;
  }
  if (s.seed[0] < 1) return op_invalid_seed;
  const int64_t len = room >= own_full ? own_full : own_small;
  seeder sd(s.seed[0]);
  bool zero = true;
  for (int j = 0; j < N; ++j) {
    state[pos_w + j] = sd.word32();
    zero = zero && state[pos_w + j] == 0;
  }
  // The all-zero block is the one state off the period; it cannot arise from
  // a seed in practice, but is excluded all the same.
  if (zero) state[pos_w] = 0x80000000;
  state[pos_index] = N;
  for (int64_t i = pos_room; i < len; ++i) state[i] = 0;
  state[pos_length] = len;
  state[pos_check] = check_word;
  state[pos_genid] = gen_mersenne_twister;
  state[pos_specific] = 0;
  *own = len;
  return op_ok;
}

bool length_ok(const int64_t *, int64_t n) {
  return n == own_small + trailer_len || n == own_full + trailer_len;
}

bool consistent(const int64_t *state, int64_t n) {
  if (state[pos_index] < 0 || state[pos_index] > N) return false;
  for (int j = 0; j < N; ++j)
    if (state[pos_w + j] < 0 || state[pos_w + j] > 0xffffffffll) return false;
  return state[n - 3] <= stride_max;
}

// The block as 32-bit words, worked on locally and written back.
struct block {
  uint32_t w[N];
  int64_t index;
  explicit block(const int64_t *state) : index(state[pos_index]) {
    for (int j = 0; j < N; ++j) w[j] = static_cast<uint32_t>(state[pos_w + j]);
  }
  void store(int64_t *state) const {
    for (int j = 0; j < N; ++j) state[pos_w + j] = w[j];
    state[pos_index] = index;
  }
  // Drops e words.
  void discard(int64_t e, const kernel_set &k) {
    while (e > 0) {
      if (index == N) {
        k.mt_twist(w);
        index = 0;
      }
      const int64_t step = e < N - index ? e : N - index;
      index += step;
      e -= step;
    }
  }
};

void fill(int64_t *state, int64_t n, double *out) {
  const kernel_set &k = kernels();
  const int64_t stride = stride_word(state);
  const int64_t index = state[pos_index];
  if (stride == 1 && n <= N - index) {
    // Within the current block: no regeneration, nothing to write back but
    // the index.
    uint32_t w[N];
    for (int64_t j = 0; j < n; ++j) w[j] = static_cast<uint32_t>(state[pos_w + index + j]);
    k.mt_doubles(w, n, out);
    state[pos_index] = index + n;
    return;
  }
  block b(state);
  for (int64_t done = 0; done < n;) {
    if (b.index == N) {
      k.mt_twist(b.w);
      b.index = 0;
    }
    const int64_t avail = N - b.index;
    const int64_t take = stride == 1 ? (n - done < avail ? n - done : avail) : 1;
    k.mt_doubles(b.w + b.index, take, out + done);
    b.index += take;
    done += take;
    b.discard(stride - 1, k);
  }
  b.store(state);
}

int64_t leapfrog(int64_t *state, int64_t n, int64_t k) {
  const int64_t stride = stride_word(state);
  int64_t wide;
  if (__builtin_mul_overflow(stride, n, &wide) || wide > stride_max) return op_unsupported;
  // Values k, k+n, ...: drop the first k - 1 values (k <= n, so at most
  // 2^24 words); the caller records the new stride.
  block b(state);
  b.discard((k - 1) * stride, kernels());
  b.store(state);
  return op_ok;
}

// The block moved on by the polynomial g, which must already account for
// the words still pending in the block: the block is taken as the window
// ending 624 - index words ahead of the current position.
int64_t jump(int64_t *state, const mt_jump::poly &g) {
  const kernel_set &k = kernels();
  // Windows start at 0 .. 19936 and are 624 words long.
  constexpr int64_t blocks = (mt_jump::degree + N - 1 + N - 1) / N;
  std::unique_ptr<uint64_t[]> ahead(new (std::nothrow) uint64_t[blocks * N]);
  if (!ahead) return op_no_memory;
  uint32_t w[N];
  for (int j = 0; j < N; ++j) w[j] = static_cast<uint32_t>(state[pos_w + j]);
  for (int64_t b = 0; b < blocks; ++b) {
    if (b > 0) k.mt_twist(w);
    for (int j = 0; j < N; ++j) ahead[b * N + j] = w[j];
  }
  uint64_t *acc = reinterpret_cast<uint64_t *>(state + pos_room);
  for (int j = 0; j < N; ++j) acc[j] = 0;
  for (int i = 0; i < mt_jump::degree; ++i)
    if (g.bit(i)) k.xor_words(acc, ahead.get() + i, N);
  for (int j = 0; j < N; ++j) {
    state[pos_w + j] = static_cast<int64_t>(acc[j]);
    acc[j] = 0;
  }
  state[pos_index] = N;
  return op_ok;
}

// Moves on by e words given exactly.
int64_t skip_words(int64_t *state, u128 e) {
  const int64_t pending = N - state[pos_index];
  if (e < static_cast<u128>(pending)) {
    state[pos_index] += static_cast<int64_t>(e);
    return op_ok;
  }
  return jump(state, mt_jump::x_power(e - pending));
}

int64_t skip(int64_t *state, int64_t n) {
  if (state[pos_length] != own_full + trailer_len) return op_too_small;
  return skip_words(state, static_cast<u128>(n) * static_cast<u128>(stride_word(state)));
}

int64_t skip_pow2(int64_t *state, int64_t n) {
  if (state[pos_length] != own_full + trailer_len) return op_too_small;
  const int64_t stride = stride_word(state);  // at most 2^24
  if (n <= 100) return skip_words(state, static_cast<u128>(stride) << n);
  // x^(stride 2^n) = (x^stride)^(2^n); p is primitive of degree 19937, so
  // squaring 19937 times is the identity and n counts modulo 19937.  Then
  // divide by x once for each word still pending in the block.
  mt_jump::poly g = mt_jump::x_power(static_cast<u128>(stride));
  for (int64_t i = 0; i < n % mt_jump::degree; ++i) mt_jump::square(g);
  for (int64_t i = state[pos_index]; i < N; ++i) mt_jump::divide_x(g);
  return jump(state, g);
}

}  // namespace

const generator mersenne_twister_generator = {
    gen_mersenne_twister, check_word, "Mersenne Twister", init, length_ok, consistent, fill,
    leapfrog,           skip,       skip_pow2,
};

}  // namespace zem::g05
