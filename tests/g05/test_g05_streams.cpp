// Streams: skip-ahead equals drawing, g05kk(n) equals g05kj(2^n), leap-frog
// gives every n-th value, and the blocked fill equals value-by-value drawing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "g05_test_util.h"

using namespace g05test;

namespace {

struct generator_case {
  const char *name;
  int64_t genid;
  int64_t subid;
  std::vector<int64_t> seed;
  bool leapfrog;
};

const std::vector<generator_case> &generators() {
  static const std::vector<generator_case> all = {
      {"basic", 1, 0, {5}, true},
      {"wichmann-hill-1 member 41", 2, 41, {5}, true},
      {"mersenne-twister", 3, 0, {5}, true},
      {"wichmann-hill-2", 4, 0, {5}, true},
      {"acorn order 10", 5, 0, {5}, false},
      {"acorn order 3", 5, 0, {5, 3}, false},
      {"mrg32k3a", 6, 0, {5}, true},
  };
  return all;
}

// Draws n values in bounded pieces (large n would not fit in memory at once).
void draw_away(std::vector<int64_t> &state, int64_t n) {
  std::vector<double> x(1 << 16);
  caller c;
  while (n > 0) {
    const int64_t take = n < (1 << 16) ? n : (1 << 16);
    c.sa(take, state.data(), x.data());
    n -= take;
  }
}

}  // namespace

// Skip by n, then draw == draw n, then draw; for MT also from every kind of
// position in its block.  Except for the Mersenne Twister (whose jump lands on
// a different but equivalent representation) the states are equal too.
TEST(G05Streams, SkipAheadEqualsDrawing) {
  caller c;
  for (const generator_case &g : generators()) {
    for (int64_t before : {0, 5, 623, 624}) {
      for (int64_t n : {0, 1, 2, 1000, 1000000}) {
        SCOPED_TRACE(std::string(g.name) + " before " + std::to_string(before) + " n " +
                     std::to_string(n));
        std::vector<int64_t> skipped = make_state(g.genid, g.subid, g.seed);
        draw_away(skipped, before);
        std::vector<int64_t> drawn = skipped;
        ASSERT_EQ(c.kj(n, skipped.data()).ifail, 0);
        draw_away(drawn, n);
        if (g.genid != 3) {
          EXPECT_EQ(skipped, drawn);
        }
        EXPECT_EQ(draw(skipped, 700), draw(drawn, 700));
      }
    }
  }
}

TEST(G05Streams, SkipPowerOfTwoEqualsSkip) {
  caller c;
  for (const generator_case &g : generators()) {
    for (int64_t n = 0; n <= 62; n += (n < 12 ? 1 : 10)) {
      SCOPED_TRACE(std::string(g.name) + " n " + std::to_string(n));
      std::vector<int64_t> a = make_state(g.genid, g.subid, g.seed);
      draw_away(a, 3);
      std::vector<int64_t> b = a;
      ASSERT_EQ(c.kk(n, a.data()).ifail, 0);
      ASSERT_EQ(c.kj(int64_t{1} << n, b.data()).ifail, 0);
      EXPECT_EQ(a, b);
    }
  }
}

// Beyond 2^62: g05kk(n) twice equals g05kk(n + 1), and for the Mersenne
// Twister the Frobenius shortcut (n counted modulo 19937) agrees with the
// direct computation across its threshold.
TEST(G05Streams, SkipPowerOfTwoComposes) {
  caller c;
  for (const generator_case &g : generators()) {
    for (int64_t n : {63, 99, 100, 101, 150, 1000}) {
      SCOPED_TRACE(std::string(g.name) + " n " + std::to_string(n));
      std::vector<int64_t> a = make_state(g.genid, g.subid, g.seed);
      draw_away(a, 7);
      std::vector<int64_t> b = a;
      ASSERT_EQ(c.kk(n, a.data()).ifail, 0);
      ASSERT_EQ(c.kk(n, a.data()).ifail, 0);
      ASSERT_EQ(c.kk(n + 1, b.data()).ifail, 0);
      EXPECT_EQ(draw(a, 50), draw(b, 50));
    }
  }
}

// Leap-frog k of n: values k, k+n, k+2n, ... of the original stream,
// including k = n, from fresh states and mid-block positions, and nested.
TEST(G05Streams, LeapFrogGivesEveryNthValue) {
  caller c;
  struct kn {
    int64_t n, k;
  };
  const kn cases[] = {{1, 1}, {3, 1}, {3, 2}, {3, 3}, {7, 5}, {64, 64}, {1000, 999}};
  for (const generator_case &g : generators()) {
    if (!g.leapfrog) continue;
    for (int64_t before : {0, 11}) {
      for (const kn &p : cases) {
        SCOPED_TRACE(std::string(g.name) + " k " + std::to_string(p.k) + " of " +
                     std::to_string(p.n) + " after " + std::to_string(before));
        std::vector<int64_t> base = make_state(g.genid, g.subid, g.seed);
        draw_away(base, before);
        std::vector<int64_t> leap = base;
        ASSERT_EQ(c.kh(p.n, p.k, leap.data()).ifail, 0);
        EXPECT_EQ(leap[leap.size() - 3], p.n);
        EXPECT_EQ(leap[leap.size() - 2], p.k);
        const int64_t m = 40;
        const std::vector<double> all = draw(base, p.k + (m - 1) * p.n);
        const std::vector<double> mine = draw(leap, m);
        for (int64_t j = 0; j < m; ++j) ASSERT_EQ(bits(mine[j]), bits(all[p.k - 1 + j * p.n])) << j;
      }
    }
    // Nested: stream 2 of 3, then stream 3 of 4 of that: original values
    // 2 + 3 (3 - 1) + 12 j.
    SCOPED_TRACE(std::string(g.name) + " nested");
    std::vector<int64_t> base = make_state(g.genid, g.subid, g.seed);
    std::vector<int64_t> leap = base;
    ASSERT_EQ(c.kh(3, 2, leap.data()).ifail, 0);
    ASSERT_EQ(c.kh(4, 3, leap.data()).ifail, 0);
    EXPECT_EQ(leap[leap.size() - 3], 12);
    EXPECT_EQ(leap[leap.size() - 2], 8);
    const std::vector<double> all = draw(base, 8 + 12 * 30);
    const std::vector<double> mine = draw(leap, 30);
    for (int64_t j = 0; j < 30; ++j) ASSERT_EQ(bits(mine[j]), bits(all[7 + 12 * j])) << j;
  }
}

// On a leap-frogged stream, skip-ahead counts values of that stream.
TEST(G05Streams, SkipAheadAfterLeapFrog) {
  caller c;
  for (const generator_case &g : generators()) {
    if (!g.leapfrog) continue;
    for (int64_t n : {1, 5, 1000, 100000}) {
      SCOPED_TRACE(std::string(g.name) + " n " + std::to_string(n));
      std::vector<int64_t> a = make_state(g.genid, g.subid, g.seed);
      ASSERT_EQ(c.kh(5, 2, a.data()).ifail, 0);
      std::vector<int64_t> b = a, d = a;
      ASSERT_EQ(c.kj(n, a.data()).ifail, 0);
      draw_away(b, n);
      EXPECT_EQ(draw(a, 100), draw(b, 100));
      ASSERT_EQ(c.kk(3, d.data()).ifail, 0);
      std::vector<int64_t> e = make_state(g.genid, g.subid, g.seed);
      ASSERT_EQ(c.kh(5, 2, e.data()).ifail, 0);
      draw_away(e, 8);
      EXPECT_EQ(draw(d, 20), draw(e, 20));
    }
  }
}

// Long fills (blocked kernels, lanes started by jumps) give exactly the
// values of short fills (the one-value recurrence), for fresh and
// leap-frogged states, and every value lies strictly inside (0,1).
TEST(G05Streams, BlockedFillEqualsValueByValue) {
  caller c;
  for (const generator_case &g : generators()) {
    for (bool leap : {false, true}) {
      if (leap && !g.leapfrog) continue;
      SCOPED_TRACE(std::string(g.name) + (leap ? " leap-frogged" : ""));
      std::vector<int64_t> a = make_state(g.genid, g.subid, g.seed);
      if (leap) {
        ASSERT_EQ(c.kh(3, 3, a.data()).ifail, 0);
      }
      draw_away(a, 13);
      std::vector<int64_t> b = a;
      const int64_t n = 5 * 2048 + 77;
      const std::vector<double> whole = draw(a, n);
      std::vector<double> bits_by_one;
      for (int64_t i = 0; i < n; i += 97) {
        const std::vector<double> part = draw(b, std::min<int64_t>(97, n - i));
        bits_by_one.insert(bits_by_one.end(), part.begin(), part.end());
      }
      EXPECT_EQ(whole, bits_by_one);
      EXPECT_EQ(a, b);
      for (double u : whole) ASSERT_TRUE(u > 0.0 && u < 1.0) << u;
    }
  }
}

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
  outcome o = c.kj(10, small.data());
  EXPECT_EQ(o.ifail, 4);
  EXPECT_EQ(o.detail, 1004);
  o = c.kk(10, small.data());
  EXPECT_EQ(o.ifail, 4);
  EXPECT_EQ(o.detail, 1004);
  EXPECT_EQ(small, before);
}
