// Exactness of the six base generators, under every kernel set, against the
// Python-integer reference (tools/g05_reference_data.py): sequences from g05kf
// seeding, the published MT19937 and MRG32k3a sequences, and states after
// large skips.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "g05/fill_kernels.h"
#include "g05_test_util.h"

using namespace g05test;

namespace {

// One record of the data file (its header describes each kind).
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

// The cores from the published starting points: MT19937 with its 624 words
// as the reference initialisation from 5489 sets them (the 10000th output is
// 4123659995), and MRG32k3a with 12345 in all six words (the blocked kernels
// are in the longer sequences above).
TEST(G05Reference, PublishedSequences) {
  const std::vector<record> words = read("words");
  ASSERT_TRUE(words.size() >= 2 && words[0].label == "mt-init-5489" && words[1].label == "mt-out-5489");
  std::vector<int64_t> mt = make_state(3, 0, {1}), out;
  std::copy(words[0].ints.begin(), words[0].ints.end(), mt.begin() + 4);
  mt[628] = 624;
  for (double u : draw(mt, 10000)) out.push_back(static_cast<int64_t>((u - 0x1p-33) * 0x1p32));
  EXPECT_EQ(first_difference(std::vector<int64_t>(out.begin(), out.begin() + 1000), words[1].ints), -1);
  EXPECT_EQ(out[9999], 4123659995);
  const std::vector<uint64_t> ref = read("published").at(0).values;
  std::vector<int64_t> mrg = make_state(6, 0, {1});
  std::fill(mrg.begin() + 4, mrg.begin() + 10, 12345);
  EXPECT_EQ(first_difference(bits_of(draw(mrg, 1000)), ref), -1);
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

// CMakeLists.txt reruns this file under each forced kernel set (ZEM_ISA):
// the set asked for, when the processor runs it, is the one in use.
TEST(G05Kernels, ForcedSetIsInUse) {
  const char *env = std::getenv("ZEM_ISA");
  const std::string forced = env == nullptr ? "" : std::string(env) == "baseline" ? "generic" : env;
  if (env != nullptr && zem::g05::kernels_named(forced) != nullptr) {
    EXPECT_STREQ(zem::g05::kernels().isa, forced.c_str());
  }
}
