// Streams: skip-ahead equals drawing, g05kk(n) equals g05kj(2^n), leap-frog
// gives every n-th value (through the blocked fills too), and a Mersenne
// Twister state without working room.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "g05_test_util.h"

using namespace g05test;

namespace {

struct generator_case {
  const char *name;
  int64_t genid, subid;
  std::vector<int64_t> seed;
  bool leapfrog;
};

const generator_case generators[] = {
    {"basic", 1, 0, {5}, true},           {"wichmann-hill-1 member 41", 2, 41, {5}, true},
    {"mersenne-twister", 3, 0, {5}, true}, {"wichmann-hill-2", 4, 0, {5}, true},
    {"acorn order 10", 5, 0, {5}, false},  {"acorn order 3", 5, 0, {5, 3}, false},
    {"mrg32k3a", 6, 0, {5}, true},
};

// A state of g after `drawn` values.
std::vector<int64_t> state_after(const generator_case &g, int64_t drawn) {
  std::vector<int64_t> state = make_state(g.genid, g.subid, g.seed);
  draw(state, drawn);
  return state;
}

}  // namespace

// Skip by n, then draw == draw n, then draw; for MT also from every kind of
// position in its block.  Except for the Mersenne Twister (whose jump lands on
// a different but equivalent representation) the states are equal too.
// g05kk(n) is g05kj(2^n) up to 2^62; beyond, g05kk(n) twice is g05kk(n + 1)
// (for the Mersenne Twister across the threshold of its Frobenius shortcut),
// and the Mersenne Twister's n counts modulo 19937 (x^(2^19937) = x modulo
// its primitive characteristic polynomial).
TEST(G05Streams, SkipAheadEqualsDrawing) {
  caller c;
  for (const generator_case &g : generators) {
    for (int64_t before : {0, 5, 623, 624}) {
      for (int64_t n : {0, 1, 2, 1000, 1000000}) {
        SCOPED_TRACE(std::string(g.name) + " before " + std::to_string(before) + " n " + std::to_string(n));
        std::vector<int64_t> skipped = state_after(g, before), drawn = skipped;
        ASSERT_EQ(c.kj(n, skipped.data()).ifail, 0);
        draw(drawn, n);
        if (g.genid != 3) {
          EXPECT_EQ(skipped, drawn);
        }
        EXPECT_EQ(draw(skipped, 700), draw(drawn, 700));
      }
    }
    for (int64_t n = 0; n <= 62; n += (n < 12 ? 1 : 10)) {
      SCOPED_TRACE(std::string(g.name) + " 2^" + std::to_string(n));
      std::vector<int64_t> a = state_after(g, 3), b = a;
      ASSERT_EQ(c.kk(n, a.data()).ifail, 0);
      ASSERT_EQ(c.kj(int64_t{1} << n, b.data()).ifail, 0);
      EXPECT_EQ(a, b);
    }
    for (int64_t n : {63, 99, 100, 101, 150, 1000}) {
      SCOPED_TRACE(std::string(g.name) + " 2^" + std::to_string(n) + " twice");
      std::vector<int64_t> a = state_after(g, 7), b = a;
      ASSERT_EQ(c.kk(n, a.data()).ifail, 0);
      ASSERT_EQ(c.kk(n, a.data()).ifail, 0);
      ASSERT_EQ(c.kk(n + 1, b.data()).ifail, 0);
      EXPECT_EQ(draw(a, 50), draw(b, 50));
    }
  }
  std::vector<int64_t> a = state_after(generators[2], 7), b = a;
  ASSERT_EQ(c.kk(19937 + 40, a.data()).ifail, 0);
  ASSERT_EQ(c.kk(40, b.data()).ifail, 0);
  EXPECT_EQ(draw(a, 50), draw(b, 50));
}

// Leap-frog k of n: values k, k+n, k+2n, ... of the original stream,
// including k = n, from fresh states and mid-block positions, drawn in one
// call long enough for the blocked fills, and nested; then skip-ahead counts
// values of the leap-frogged stream.
TEST(G05Streams, LeapFrogGivesEveryNthValue) {
  caller c;
  struct kn {
    int64_t n, k;
    bool nested;  // then stream 3 of 4 of that: values 8 + 12 j
  };
  const kn cases[] = {{1, 1, false},  {3, 1, false},      {3, 2, false},     {3, 3, false},
                      {7, 5, false},  {64, 64, false},    {1000, 999, false}, {3, 2, true}};
  for (const generator_case &g : generators) {
    if (!g.leapfrog) continue;
    for (int64_t before : {0, 11}) {
      for (const kn &p : cases) {
        SCOPED_TRACE(std::string(g.name) + " k " + std::to_string(p.k) + " of " + std::to_string(p.n) + " after " +
                     std::to_string(before) + (p.nested ? " nested" : ""));
        std::vector<int64_t> base = state_after(g, before), leap = base;
        ASSERT_EQ(c.kh(p.n, p.k, leap.data()).ifail, 0);
        if (p.nested) {
          ASSERT_EQ(c.kh(4, 3, leap.data()).ifail, 0);
        }
        const int64_t n = p.nested ? 12 : p.n, k = p.nested ? 8 : p.k;
        EXPECT_EQ(leap[leap.size() - 3], n);
        EXPECT_EQ(leap[leap.size() - 2], k);
        const int64_t m = n < 100 ? 2 * 2048 + 77 : 40;
        const std::vector<double> all = draw(base, k + (m - 1) * n), mine = draw(leap, m);
        for (int64_t j = 0; j < m; ++j) ASSERT_EQ(mine[j], all[k - 1 + j * n]) << j;
        EXPECT_EQ(draw(leap, 1)[0], draw(base, n)[n - 1]);  // both states moved on as far
      }
    }
    for (int64_t n : {1, 5, 1000, 100000}) {
      SCOPED_TRACE(std::string(g.name) + " skip " + std::to_string(n) + " after leap-frog");
      std::vector<int64_t> a = make_state(g.genid, g.subid, g.seed);
      ASSERT_EQ(c.kh(5, 2, a.data()).ifail, 0);
      std::vector<int64_t> b = a, d = a, e = a;
      ASSERT_EQ(c.kj(n, a.data()).ifail, 0);
      draw(b, n);
      EXPECT_EQ(draw(a, 100), draw(b, 100));
      ASSERT_EQ(c.kk(3, d.data()).ifail, 0);
      draw(e, 8);
      EXPECT_EQ(draw(d, 20), draw(e, 20));
    }
  }
}

// A Mersenne Twister state without working room (lstate 632 to 1259)
// generates and leap-frogs as a full one but refuses to skip ahead.
TEST(G05Streams, MersenneTwisterWithoutWorkingRoom) {
  caller c;
  std::vector<int64_t> small(700, 0);
  int64_t lstate = 700;
  ASSERT_EQ(c.kf(3, 0, {5}, small.data(), &lstate).ifail, 0);
  EXPECT_EQ(lstate, 700);
  EXPECT_EQ(small[0], 632);
  small.resize(632);
  std::vector<int64_t> full = make_state(3, 0, {5});
  EXPECT_EQ(draw(small, 3000), draw(full, 3000));
  ASSERT_EQ(c.kh(4, 2, small.data()).ifail, 0);
  ASSERT_EQ(c.kh(4, 2, full.data()).ifail, 0);
  EXPECT_EQ(draw(small, 100), draw(full, 100));
  const std::vector<int64_t> before = small;
  EXPECT_EQ(c.kj(10, small.data()).ifail, 4);  // the messages: client_g05c.c
  EXPECT_EQ(c.kk(10, small.data()).ifail, 4);
  EXPECT_EQ(small, before);
}
