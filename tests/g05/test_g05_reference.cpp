// Exactness of the six base generators against the Python-integer reference
// (tools/g05_reference.py): sequences from g05kf seeding, the reference
// sequences of MT19937 and MRG32k3a, and states after large skips.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "g05/fill_kernels.h"
#include "g05_test_util.h"

using namespace g05test;

namespace {

// Index of the first difference, or -1.
template <typename A, typename B>
int64_t first_difference(const A &a, const B &b) {
  for (size_t i = 0; i < a.size() && i < b.size(); ++i)
    if (static_cast<uint64_t>(a[i]) != static_cast<uint64_t>(b[i])) return static_cast<int64_t>(i);
  return a.size() == b.size() ? -1 : static_cast<int64_t>(std::min(a.size(), b.size()));
}

std::vector<uint64_t> bits_of(const std::vector<double> &x) {
  std::vector<uint64_t> b;
  for (double u : x) b.push_back(bits(u));
  return b;
}

}  // namespace

TEST(G05Reference, DataFileIsComplete) {
  const reference &r = reference_data();
  EXPECT_EQ(r.sequences.size(), 17u);
  EXPECT_EQ(r.skips.size(), 42u);
  EXPECT_EQ(r.words.count("mt-init-5489"), 1u);
  EXPECT_EQ(r.published.count("mrg-12345"), 1u);
}

// Every sequence, drawn in one call (blocked kernels for the long ones) and
// in calls of awkward sizes (call boundaries, the one-value paths).
TEST(G05Reference, SequencesFromSeeding) {
  for (const sequence_record &s : reference_data().sequences) {
    SCOPED_TRACE(s.label);
    const int64_t n = static_cast<int64_t>(s.values.size());
    std::vector<int64_t> state = make_state(s.genid, s.subid, s.seed);
    std::vector<int64_t> again = state;
    EXPECT_EQ(first_difference(bits_of(draw(state, n)), s.values), -1);
    std::vector<uint64_t> pieces;
    const int64_t sizes[] = {1, 2, 623, 1, 2049, 7};
    for (int64_t done = 0, i = 0; done < n; ++i) {
      const int64_t take = std::min(sizes[i % 6], n - done);
      for (double u : draw(again, take)) pieces.push_back(bits(u));
      done += take;
    }
    EXPECT_EQ(first_difference(pieces, s.values), -1);
    EXPECT_EQ(state, again);
  }
}

// The basic generator from seed 1, as fixed digit by digit: x = 6 advanced
// once, stored as 15-bit digits, then u = 1 - (x 13^13 mod 2^60) / 2^60.
TEST(G05Reference, BasicSeedOne) {
  std::vector<int64_t> state = make_state(1, 0, {1});
  const uint64_t a = 302875106592253ull, m = (uint64_t{1} << 60) - 1;
  const uint64_t x1 = (6 * a) & m;
  ASSERT_EQ(state.size(), 17u);
  EXPECT_EQ(state[0], 17);
  EXPECT_EQ(state[1], 1234);
  EXPECT_EQ(state[2], 1);
  EXPECT_EQ(state[3], 0);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(state[4 + i], static_cast<int64_t>((x1 >> (15 * i)) & 0x7fff));
  const int64_t digits[4] = {17917, 13895, 19930, 8};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(state[8 + i], digits[i]);
  EXPECT_EQ(state[12], 0);
  EXPECT_EQ(state[14], 1);
  EXPECT_EQ(state[15], 1);
  EXPECT_EQ(state[16], 1234);
  const uint64_t x2 = (x1 * a) & m;
  const double expect = 1.0 - (static_cast<double>(x2 >> 30) * 0x1p-30 +
                               static_cast<double>(x2 & 0x3fffffff) * 0x1p-60);
  EXPECT_EQ(bits(draw(state, 1)[0]), bits(expect));
}

// MT19937 core: with its 624 words set as the reference initialisation from
// 5489 sets them, the tempered words are the reference sequence.
TEST(G05Reference, MersenneTwisterReferenceSequence) {
  const reference &r = reference_data();
  std::vector<int64_t> state = make_state(3, 0, {1});
  const std::vector<int64_t> &init = r.words.at("mt-init-5489");
  for (int j = 0; j < 624; ++j) state[4 + j] = init[j];
  state[628] = 624;
  const std::vector<double> x = draw(state, 10000);
  std::vector<int64_t> words;
  for (double u : x) words.push_back(static_cast<int64_t>((u - 0x1p-33) * 0x1p32));
  const std::vector<int64_t> &out = r.words.at("mt-out-5489");
  EXPECT_EQ(first_difference(std::vector<int64_t>(words.begin(), words.begin() + 1000), out), -1);
  EXPECT_EQ(words[9999], 4123659995);
  EXPECT_EQ(r.words.at("mt-out-5489-10000th")[0], 4123659995);
}

// MRG32k3a with 12345 in all six words gives the published sequence, both
// one value at a time and through the blocked kernel.
TEST(G05Reference, Mrg32k3aPublishedSequence) {
  const std::vector<uint64_t> &ref = reference_data().published.at("mrg-12345");
  std::vector<int64_t> state = make_state(6, 0, {1});
  for (int i = 0; i < 6; ++i) state[4 + i] = 12345;
  std::vector<int64_t> blocked = state;
  EXPECT_EQ(first_difference(bits_of(draw(state, 1000)), ref), -1);
  std::vector<uint64_t> b = bits_of(draw(blocked, 3 * 2048));
  b.resize(1000);
  EXPECT_EQ(first_difference(b, ref), -1);
}

// States after g05kj(2^40), g05kj(2^62) and g05kk(100), from a fresh state
// and after five draws: the generator's own words and the values that follow.
TEST(G05Reference, LargeSkipsMatchIndependentComputation) {
  caller c;
  for (const skip_record &s : reference_data().skips) {
    SCOPED_TRACE(s.label + " after " + std::to_string(s.draws) + " draws");
    std::vector<int64_t> state = make_state(s.genid, s.subid, s.seed);
    draw(state, s.draws);
    const outcome o = s.kind == "kj" ? c.kj(s.n, state.data()) : c.kk(s.n, state.data());
    ASSERT_EQ(o.ifail, 0);
    const std::vector<int64_t> own(state.begin() + 4, state.begin() + 4 + static_cast<int64_t>(s.own.size()));
    EXPECT_EQ(first_difference(own, s.own), -1);
    EXPECT_EQ(first_difference(bits_of(draw(state, static_cast<int64_t>(s.next.size()))), s.next), -1);
  }
}

// Every kernel set this processor runs gives the generic set's numbers.
TEST(G05Kernels, EverySetGivesTheSameNumbers) {
  using namespace zem::g05;
  const kernel_set *generic = kernels_named("generic");
  ASSERT_NE(generic, nullptr);
  const int64_t n = 3 * kernel_block + 5;
  for (const char *isa : {"avx2", "avx512"}) {
    const kernel_set *k = kernels_named(isa);
    if (k == nullptr) continue;
    SCOPED_TRACE(isa);
    std::vector<double> a(n), b(n);
    EXPECT_EQ(generic->basic(302875106592253ull, 6, n, a.data()),
              k->basic(302875106592253ull, 6, n, b.data()));
    EXPECT_EQ(a, b);

    const uint64_t wa[4] = {11600, 47003, 23000, 33000};
    const uint64_t wm[4] = {2147483579, 2147483543, 2147483423, 2147483123};
    uint64_t x1[4] = {1, 2, 3, 4}, x2[4] = {1, 2, 3, 4};
    EXPECT_EQ(generic->wichmann_hill(wa, wm, x1, n, a.data()), 3 * kernel_block);
    EXPECT_EQ(k->wichmann_hill(wa, wm, x2, n, b.data()), 3 * kernel_block);
    EXPECT_EQ(std::vector<uint64_t>(x1, x1 + 4), std::vector<uint64_t>(x2, x2 + 4));
    EXPECT_EQ(a, b);

    uint64_t s1[3] = {12345, 12345, 12345}, s2[3] = {12345, 12345, 12345};
    uint64_t t1[3] = {12345, 12345, 12345}, t2[3] = {12345, 12345, 12345};
    EXPECT_EQ(generic->mrg32k3a(s1, s2, n, a.data()), k->mrg32k3a(t1, t2, n, b.data()));
    EXPECT_EQ(std::vector<uint64_t>(s1, s1 + 3), std::vector<uint64_t>(t1, t1 + 3));
    EXPECT_EQ(std::vector<uint64_t>(s2, s2 + 3), std::vector<uint64_t>(t2, t2 + 3));
    EXPECT_EQ(a, b);

    uint32_t w1[624], w2[624];
    for (int j = 0; j < 624; ++j) w1[j] = w2[j] = static_cast<uint32_t>(j * 2654435761u);
    for (int r = 0; r < 3; ++r) {
      generic->mt_twist(w1);
      k->mt_twist(w2);
    }
    EXPECT_EQ(std::vector<uint32_t>(w1, w1 + 624), std::vector<uint32_t>(w2, w2 + 624));
    generic->mt_doubles(w1, 624, a.data());
    k->mt_doubles(w2, 624, b.data());
    EXPECT_EQ(std::vector<double>(a.begin(), a.begin() + 624), std::vector<double>(b.begin(), b.begin() + 624));
  }
}
