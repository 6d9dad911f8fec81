// The state array: length queries and fresh layouts, bad arguments and
// corrupted states (each with its status, detail code and values, and the
// state left exactly as it was), and the Wichmann-Hill I family's members.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "g05/state.h"
#include "g05_test_util.h"

using namespace g05test;

// Initialisation: the length query (lstate <= 0: status -1, the length
// returned, even with a seed initialisation would refuse) and the failures
// (status, detail, values, lstate unchanged) write nothing; a state then
// initialised in a larger array has the length queried, its trailer, and
// nothing written beyond it.
TEST(G05State, Initialisation) {
  struct init_case {
    const char *what;
    int64_t genid;
    std::vector<int64_t> seed;
    int64_t lseed;  // -1: seed.size()
    int64_t lstate, ifail, detail;
    std::vector<std::string> values;
    int64_t length = 0;  // returned by a query
  };
  const init_case cases[] = {
      {"query", 1, {1}, -1, 0, -1, 1005, {}, 17},
      {"query", 2, {1}, -1, -100, -1, 1005, {}, 21},
      {"query", 3, {1}, -1, 0, -1, 1005, {}, 1260},
      {"query", 4, {1}, -1, 0, -1, 1005, {}, 29},
      {"query", 5, {1}, -1, 0, -1, 1005, {}, 29},
      {"query order 3", 5, {1, 3}, -1, 0, -1, 1005, {}, 15},
      {"query order 1000", 5, {1, 1000}, -1, -1, -1, 1005, {}, 2009},
      {"query", 6, {1}, -1, 0, -1, 1005, {}, 61},
      {"query before seed", 1, {-4}, -1, 0, -1, 1005, {}, 17},
      {"genid 0", 0, {1}, -1, 100, 1, 1001, {"0"}},
      {"genid 7 before query", 7, {1}, -1, 0, 1, 1001, {"7"}},
      {"lseed 0 before the seed", 1, {-3}, 0, 100, 4, 1002, {"0"}},
      {"lseed 0 before the query", 3, {1}, 0, 0, 4, 1002, {"0"}},
      {"lseed -2", 6, {1}, -2, 100, 4, 1002, {"-2"}},
      {"lstate 1", 1, {1}, -1, 1, 6, 1004, {"1", "17"}},
      {"lstate 16", 1, {1}, -1, 16, 6, 1004, {"16", "17"}},
      {"lstate 20", 2, {1}, -1, 20, 6, 1004, {"20", "21"}},
      {"lstate 631", 3, {1}, -1, 631, 6, 1004, {"631", "632"}},
      {"lstate 28", 4, {1}, -1, 28, 6, 1004, {"28", "29"}},
      {"lstate 28 acorn", 5, {1}, -1, 28, 6, 1004, {"28", "29"}},
      {"lstate 60", 6, {1}, -1, 60, 6, 1004, {"60", "61"}},
      {"lstate before seed", 1, {0}, -1, 16, 6, 1004, {"16", "17"}},
  };
  // Seeds that no generator takes (ifail 3, detail 1003), and ACORN's own:
  // order 0 or above 1000, Y^0 even or beyond 2^60, a negative first row.
  std::vector<init_case> all(std::begin(cases), std::end(cases));
  for (int64_t genid = 1; genid <= 6; ++genid)
    for (int64_t s : {int64_t{0}, int64_t{-1}, INT64_MIN}) all.push_back({"seed", genid, {s}, -1, 2100, 3, 1003, {}});
  const std::vector<std::vector<int64_t>> acorn = {{1, 0}, {1, 1001}, {1, 10, 4}, {1, 10, int64_t{1} << 60 | 1},
                                                   {1, 2, 3, 5, -1}};
  for (const std::vector<int64_t> &s : acorn) all.push_back({"acorn seed", 5, s, -1, 2100, 3, 1003, {}});
  caller c;
  for (const init_case &t : all) {
    SCOPED_TRACE(std::string(t.what) + " genid " + std::to_string(t.genid) + " seed(1) " + std::to_string(t.seed[0]));
    std::vector<int64_t> state(2100, -7);
    int64_t lstate = t.lstate;
    const outcome o = c.kf(t.genid, 0, t.seed, state.data(), &lstate, t.lseed);
    EXPECT_EQ(o.ifail, t.ifail);
    EXPECT_EQ(o.detail, t.detail);
    EXPECT_EQ(o.values, t.values);
    EXPECT_EQ(lstate, t.ifail == -1 ? t.length : t.lstate);
    EXPECT_EQ(state, std::vector<int64_t>(2100, -7));
    if (t.ifail != -1 || t.seed[0] < 1) continue;
    lstate = 2100;
    ASSERT_EQ(c.kf(t.genid, 3, t.seed, state.data(), &lstate).ifail, 0);
    const int64_t n = t.length;
    EXPECT_EQ(lstate, 2100);
    EXPECT_EQ(state[0], n);
    EXPECT_EQ(state[2], t.genid);
    EXPECT_EQ(std::vector<int64_t>(&state[n - 3], &state[n]), (std::vector<int64_t>{1, 1, state[1]}));
    EXPECT_EQ(std::count(state.begin() + n, state.end(), -7), 2100 - n) << "written past the state";
    EXPECT_TRUE(zem::g05::state_valid(state.data(), n));
    EXPECT_FALSE(zem::g05::state_valid(state.data(), n + 1));  // lstate != state(1)
  }
}

// Every routine taking a state refuses a corrupted one, before it looks at
// n, with its own status and detail, and leaves state and x untouched:
// own words out of range, a Mersenne Twister stride beyond its cap of 2^24,
// and header and trailer words of every generator.
TEST(G05State, CorruptedStatesAreRefused) {
  struct corruption {
    int64_t genid;     // 0 in the second list: each generator in turn
    int64_t position;  // from the start if >= 0, else from the end (-1: last)
    int64_t value;
    bool add;          // add value to the word, else store it
  };
  std::vector<corruption> cases = {
      {1, 4, 1, false},         {1, 5, 32768, false},   {1, 8, 2, false},          {2, 3, 273, false},
      {2, 4, 0, false},         {2, 12, 7, false},      {3, 628, 625, false},      {3, 4, -1, false},
      {3, 4, 1ll << 32, false}, {4, 16, 1, false},      {4, 4, 2147483579, false}, {5, 3, 11, false},
      {5, 4, 2, false},         {5, 5, 1 << 30, false}, {6, 4, 4294967087, false}, {6, 10, -1, false},
      {3, -3, (1 << 24) + 1, false}};
  for (int64_t genid = 1; genid <= 6; ++genid)
    for (corruption k : std::initializer_list<corruption>{
             {0, 0, 1, true}, {0, 0, -1, true}, {0, 0, 2, false}, {0, 1, 1, true}, {0, 2, 0, false},
             {0, 2, 7, false}, {0, 2, 1, true}, {0, -3, 0, false}, {0, -2, 0, false}, {0, -1, 1, true}})
      cases.push_back({genid, k.position, k.value, k.add});
  caller c;
  for (const corruption &k : cases) {
    SCOPED_TRACE("genid " + std::to_string(k.genid) + " word " + std::to_string(k.position) + " value " +
                 std::to_string(k.value));
    std::vector<int64_t> state = make_state(k.genid, 0, {4});
    state.resize(state.size() + 8, 0);  // room if the length grows
    const int64_t pos = k.position >= 0 ? k.position : state[0] + k.position;
    state[pos] = k.add ? state[pos] + k.value : k.value;
    const std::vector<int64_t> before = state;
    std::vector<double> x(4, -1.0);
    const outcome o[4] = {c.sa(-1, state.data(), x.data()), c.kh(0, 1, state.data()), c.kj(-5, state.data()),
                          c.kk(-5, state.data())};  // n bad too: the state is checked first
    const int64_t want[4] = {2, 3, 2, 2};
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(o[i].ifail, want[i]) << "routine " << i;
      EXPECT_EQ(o[i].detail, 1000 + want[i]) << "routine " << i;
    }
    EXPECT_EQ(x, std::vector<double>(4, -1.0));
    EXPECT_EQ(state, before);
  }
}

// Bad n and k (more of them, with the message texts, in client_g05c.c); skip
// by 0 and fill of 0 (x unused) leave the state alone; a Mersenne Twister
// stride beyond 2^24 refuses the leap-frog (ACORN's refusal: client_g05c.c).
TEST(G05State, ArgumentFailures) {
  caller c;
  for (int64_t genid = 1; genid <= 6; ++genid) {
    SCOPED_TRACE(genid);
    std::vector<int64_t> state = make_state(genid, 0, {4});
    const std::vector<int64_t> before = state;
    double x = -1.0;
    struct expect {
      outcome got;
      int64_t ifail;
      std::vector<std::string> values;
    };
    const expect cases[] = {
        {c.sa(-1, state.data(), &x), 1, {"-1"}},   {c.kk(-5, state.data()), 1, {"-5"}},
        {c.kh(-2, 1, state.data()), 1, {"-2"}},    {c.kh(3, 0, state.data()), 2, {"0", "3"}},
        {c.kh(3, -1, state.data()), 2, {"-1", "3"}}, {c.kj(0, state.data()), 0, {}},
        {c.sa(0, state.data(), nullptr), 0, {}},
    };
    for (const expect &e : cases) {
      EXPECT_EQ(e.got.ifail, e.ifail);
      EXPECT_EQ(e.got.detail, e.ifail == 0 ? 0 : 1000 + e.ifail);
      EXPECT_EQ(e.got.values, e.values);
    }
    EXPECT_EQ(state, before);
    EXPECT_EQ(x, -1.0);
  }
  std::vector<int64_t> mt = make_state(3, 0, {4});
  ASSERT_EQ(c.kh(int64_t{1} << 12, 1, mt.data()).ifail, 0);
  const std::vector<int64_t> mt_before = mt;
  EXPECT_EQ(c.kh((int64_t{1} << 12) + 1, 1, mt.data()).ifail, 4);
  EXPECT_EQ(mt, mt_before);
}

// g05kg: valid states whose streams differ from call to call (the clock
// changes between calls; its refusals are g05kf's, through the same frame).
TEST(G05State, NonRepeatableInitialisation) {
  caller c;
  for (int64_t genid = 1; genid <= 6; ++genid) {
    SCOPED_TRACE(genid);
    std::vector<int64_t> a(2000), b(2000);
    int64_t la = 2000, lb = 2000;
    ASSERT_EQ(c.kg(genid, 0, a.data(), &la).ifail, 0);
    ASSERT_EQ(c.kg(genid, 0, b.data(), &lb).ifail, 0);
    a.resize(a[0]);
    b.resize(b[0]);
    EXPECT_TRUE(zem::g05::state_valid(a.data()));
    EXPECT_NE(draw(a, 4), draw(b, 4));
  }
}

// Members are chosen by subid modulo 273, so every subid is valid.
TEST(G05State, WichmannHillMemberBySubid) {
  for (const int64_t subid : {int64_t{0}, int64_t{272}, int64_t{273}, int64_t{-1}, int64_t{-273}, int64_t{1000000},
                              INT64_MIN}) {
    EXPECT_EQ(make_state(2, subid, {1})[3], (subid % 273 + 273) % 273) << subid;
  }
}

namespace {

bool is_prime(uint64_t n) {
  if (n < 2 || n % 2 == 0) return n == 2;
  for (uint64_t d = 3; d * d <= n; d += 2)
    if (n % d == 0) return false;
  return true;
}

uint64_t powmod(uint64_t a, uint64_t e, uint64_t m) {
  uint64_t r = 1;
  for (a %= m; e; e >>= 1, a = a * a % m)
    if (e & 1) r = r * a % m;
  return r;
}

constexpr uint64_t wh1_table[273][8] = {
#include "g05/wichmann_hill_1_table.inc"
};

}  // namespace

// The table of the Wichmann-Hill I members (data no reference computation
// can vouch for, since the reference reads it too): each component has a
// safe prime modulus m = 2q + 1 < 2^31 and a primitive root a (a^2 != 1 and
// a^q != 1), so its period is m - 1; a < 2^21 keeps a x exact in a double
// and r < q allows Schrage's method; all 1092 moduli are distinct, so each
// member's period lcm(m_j - 1) = 2 q0 q1 q2 q3 exceeds 2^120.
TEST(G05State, WichmannHillFamilyPeriodConditions) {
  std::vector<uint64_t> moduli;
  for (int member = 0; member < 273; ++member) {
    double log2_period = 1.0;
    for (int j = 0; j < 4; ++j) {
      const uint64_t a = wh1_table[member][2 * j], m = wh1_table[member][2 * j + 1], q = (m - 1) / 2;
      SCOPED_TRACE("member " + std::to_string(member) + " component " + std::to_string(j));
      ASSERT_TRUE(is_prime(m) && is_prime(q) && m < (uint64_t{1} << 31));
      ASSERT_TRUE(powmod(a, 2, m) != 1 && powmod(a, q, m) != 1);
      ASSERT_TRUE(a < (uint64_t{1} << 21) && m % a < m / a);
      log2_period += std::log2(static_cast<double>(q));
      moduli.push_back(m);
    }
    EXPECT_GT(log2_period, 120.0);
  }
  std::sort(moduli.begin(), moduli.end());
  EXPECT_EQ(std::adjacent_find(moduli.begin(), moduli.end()), moduli.end());
}
