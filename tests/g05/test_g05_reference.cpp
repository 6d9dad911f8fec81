// Exactness of the six base generators against the Python-integer reference
// (tools/g05_reference_data.py, data/reference.txt): sequences from g05kf
// seeding and states after large skips; then every kernel set against the
// generic one.  (The file's MT19937 and MRG32k3a records come from the same
// Python cores as the sequences, the first checked by the script against the
// published 10000th value, so the sequences cover them.)
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "g05/fill_kernels.h"
#include "g05_test_util.h"

using namespace g05test;

namespace {

// One record of the data file (its header says what each kind holds):
// sequence: genid subid seed, values; skip: genid subid seed draws op n,
// ints (the own words) and values; words: ints; published: values.  The
// tests read sequences and skips.
struct record {
  std::string kind, label, op;
  int64_t genid = 0, subid = 0, draws = 0, n = 0;
  std::vector<int64_t> seed, ints;
  std::vector<uint64_t> values;  // bits of the doubles
};

std::vector<record> read(const std::string &kind) {
  std::ifstream in(ZEM_TEST_DATA "/reference.txt");
  std::string t;
  const auto num = [&](int base = 10) {
    in >> t;
    return static_cast<int64_t>(std::stoll(t, nullptr, base));
  };
  const auto list = [&](auto &v, int base) {
    for (int64_t k = num(); k > 0; --k) v.push_back(num(base));
  };
  std::vector<record> all;
  for (record r; in >> r.kind >> r.label; r = record()) {
    const bool skip = r.kind == "skip";
    if (r.kind == "#") {  // a comment line
      std::getline(in, t);
      continue;
    }
    if (r.kind == "sequence" || skip) {
      r.genid = num();
      r.subid = num();
      list(r.seed, 10);
    }
    if (skip) {
      r.draws = num();
      in >> r.op;
      r.n = num();
    }
    if (skip || r.kind == "words") list(r.ints, 10);
    if (r.kind != "words") list(r.values, 16);
    if (r.kind == kind) all.push_back(r);
  }
  return all;
}

std::vector<uint64_t> bits_of(const std::vector<double> &x) {
  std::vector<uint64_t> b;
  for (double u : x) b.push_back(std::bit_cast<uint64_t>(u));
  return b;
}

// Index of the first difference (-1: none), so that a failure names one value.
template <typename A, typename B>
int64_t first_difference(const A &a, const B &b) {
  const auto m = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                               [](auto x, auto y) { return static_cast<uint64_t>(x) == static_cast<uint64_t>(y); });
  return m.first == a.end() && m.second == b.end() ? -1 : m.first - a.begin();
}

}  // namespace

// Every sequence, drawn in one call (blocked kernels for the long ones) and
// in calls of awkward sizes (call boundaries, the one-value paths).
TEST(G05Reference, SequencesFromSeeding) {
  const std::vector<record> sequences = read("sequence");
  ASSERT_EQ(sequences.size(), 17u);
  for (const record &s : sequences) {
    SCOPED_TRACE(s.label);
    const int64_t n = static_cast<int64_t>(s.values.size());
    std::vector<int64_t> state = make_state(s.genid, s.subid, s.seed), again = state;
    EXPECT_EQ(first_difference(bits_of(draw(state, n)), s.values), -1);
    std::vector<uint64_t> pieces;
    const int64_t sizes[] = {1, 2, 623, 1, 2049, 7};
    for (int64_t done = 0, i = 0; done < n; ++i) {
      const int64_t take = std::min(sizes[i % 6], n - done);
      for (uint64_t b : bits_of(draw(again, take))) pieces.push_back(b);
      done += take;
    }
    EXPECT_EQ(first_difference(pieces, s.values), -1);
    EXPECT_EQ(state, again);
  }
}

// States after g05kj(2^40), g05kj(2^62) and g05kk(100), from a fresh state
// and after five draws: the generator's own words and the values that follow.
TEST(G05Reference, LargeSkipsMatchIndependentComputation) {
  const std::vector<record> skips = read("skip");
  ASSERT_EQ(skips.size(), 42u);
  caller c;
  for (const record &s : skips) {
    SCOPED_TRACE(s.label + " after " + std::to_string(s.draws) + " draws");
    std::vector<int64_t> state = make_state(s.genid, s.subid, s.seed);
    draw(state, s.draws);
    ASSERT_EQ((s.op == "kj" ? c.kj(s.n, state.data()) : c.kk(s.n, state.data())).ifail, 0);
    const std::vector<int64_t> own(state.begin() + 4, state.begin() + 4 + static_cast<int64_t>(s.ints.size()));
    EXPECT_EQ(first_difference(own, s.ints), -1);
    EXPECT_EQ(first_difference(bits_of(draw(state, static_cast<int64_t>(s.values.size()))), s.values), -1);
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
    EXPECT_EQ(generic->basic(302875106592253ull, 6, n, a.data()), k->basic(302875106592253ull, 6, n, b.data()));
    EXPECT_EQ(a, b);

    const uint64_t wa[4] = {11600, 47003, 23000, 33000};
    const uint64_t wm[4] = {2147483579, 2147483543, 2147483423, 2147483123};
    uint64_t x1[4] = {1, 2, 3, 4}, x2[4] = {1, 2, 3, 4};
    EXPECT_EQ(generic->wichmann_hill(wa, wm, x1, n, a.data()), 3 * kernel_block);
    EXPECT_EQ(k->wichmann_hill(wa, wm, x2, n, b.data()), 3 * kernel_block);
    EXPECT_TRUE(std::equal(x1, x1 + 4, x2));
    EXPECT_EQ(a, b);

    uint64_t s1[3] = {12345, 12345, 12345}, s2[3] = {12345, 12345, 12345};
    uint64_t t1[3] = {12345, 12345, 12345}, t2[3] = {12345, 12345, 12345};
    EXPECT_EQ(generic->mrg32k3a(s1, s2, n, a.data()), k->mrg32k3a(t1, t2, n, b.data()));
    EXPECT_TRUE(std::equal(s1, s1 + 3, t1) && std::equal(s2, s2 + 3, t2));
    EXPECT_EQ(a, b);

    uint32_t w1[624], w2[624];
    for (int j = 0; j < 624; ++j) w1[j] = w2[j] = static_cast<uint32_t>(j * 2654435761u);
    for (int r = 0; r < 3; ++r) {
      generic->mt_twist(w1);
      k->mt_twist(w2);
    }
    EXPECT_TRUE(std::equal(w1, w1 + 624, w2));
    generic->mt_doubles(w1, 624, a.data());
    k->mt_doubles(w2, 624, b.data());
    EXPECT_TRUE(std::equal(a.begin(), a.begin() + 624, b.begin()));

    std::vector<uint64_t> acc1(627, 5), acc2(627, 5), src(628);
    for (size_t j = 0; j < src.size(); ++j) src[j] = j * 0x9e3779b97f4a7c15ull;
    generic->xor_words(acc1.data(), src.data() + 1, 627);
    k->xor_words(acc2.data(), src.data() + 1, 627);
    EXPECT_EQ(acc1, acc2);
  }
}
