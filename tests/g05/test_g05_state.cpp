// The state array: length queries, bad arguments and corrupted states (each
// with its status, detail code and values, and the state left exactly as it
// was), the Wichmann-Hill I period conditions and the MT19937 polynomial.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "g05/mersenne_twister_jump.h"
#include "g05/state.h"
#include "g05/uniform.h"
#include "g05_test_util.h"

using namespace g05test;

TEST(G05State, LengthQuery) {
  struct q {
    int64_t genid;
    std::vector<int64_t> seed;
    int64_t length;
  };
  const q cases[] = {{1, {1}, 17},        {2, {1}, 21},        {3, {1}, 1260},
                     {4, {1}, 29},        {5, {1}, 29},        {5, {1, 3}, 15},
                     {5, {1, 1000}, 2009}, {6, {1}, 61},        {1, {-4}, 17}};
  caller c;
  for (const q &t : cases) {
    for (int64_t asked : {0, -1, -100}) {
      SCOPED_TRACE("genid " + std::to_string(t.genid) + " lstate " + std::to_string(asked));
      std::vector<int64_t> state(4, -7);
      int64_t lstate = asked;
      const outcome o = c.kf(t.genid, 0, t.seed, state.data(), &lstate);
      EXPECT_EQ(o.ifail, -1);
      EXPECT_EQ(o.detail, 1005);
      EXPECT_EQ(lstate, t.length);
      EXPECT_EQ(state, std::vector<int64_t>(4, -7));
      lstate = asked;
      const outcome g = c.kg(t.genid, 0, state.data(), &lstate);
      if (t.seed.size() == 1) {
        EXPECT_EQ(g.ifail, -1);
        EXPECT_EQ(lstate, t.length);
      }
    }
  }
}

// Initialisation failures: status, detail, values, and nothing written.
TEST(G05State, InitialisationFailures) {
  struct bad {
    const char *what;
    int64_t genid;
    std::vector<int64_t> seed;
    int64_t lseed;  // -1: seed.size()
    int64_t lstate;
    int64_t ifail, detail;
    std::vector<std::string> values;
  };
  const bad cases[] = {
      {"genid 0", 0, {1}, -1, 100, 1, 1001, {"0"}},
      {"genid 7", 7, {1}, -1, 100, 1, 1001, {"7"}},
      {"genid 7 query", 7, {1}, -1, 0, 1, 1001, {"7"}},
      {"lseed 0 before the seed", 1, {-3}, 0, 100, 4, 1002, {"0"}},
      {"lseed 0 before the query", 3, {1}, 0, 0, 4, 1002, {"0"}},
      {"lseed -2", 6, {1}, -2, 100, 4, 1002, {"-2"}},
      {"lstate 1", 1, {1}, -1, 1, 6, 1004, {"1", "17"}},
      {"lstate 3", 1, {1}, -1, 3, 6, 1004, {"3", "17"}},
      {"lstate 16", 1, {1}, -1, 16, 6, 1004, {"16", "17"}},
      {"lstate 20", 2, {1}, -1, 20, 6, 1004, {"20", "21"}},
      {"lstate 631", 3, {1}, -1, 631, 6, 1004, {"631", "632"}},
      {"lstate 28", 4, {1}, -1, 28, 6, 1004, {"28", "29"}},
      {"lstate 28 acorn", 5, {1}, -1, 28, 6, 1004, {"28", "29"}},
      {"lstate 60", 6, {1}, -1, 60, 6, 1004, {"60", "61"}},
      {"lstate before seed", 1, {0}, -1, 16, 6, 1004, {"16", "17"}},
  };
  caller c;
  for (const bad &t : cases) {
    SCOPED_TRACE(t.what);
    std::vector<int64_t> state(2100, -7);
    int64_t lstate = t.lstate;
    const int64_t lseed = t.lseed == -1 ? static_cast<int64_t>(t.seed.size()) : t.lseed;
    const outcome o = c.kf_raw(t.genid, 0, t.seed.data(), lseed, state.data(), &lstate);
    EXPECT_EQ(o.ifail, t.ifail);
    EXPECT_EQ(o.detail, t.detail);
    EXPECT_EQ(o.values, t.values);
    EXPECT_EQ(lstate, t.lstate);
    EXPECT_EQ(state, std::vector<int64_t>(2100, -7));
  }
  // Non-positive seeds for every generator; ACORN's own seed conventions.
  std::vector<std::pair<int64_t, std::vector<int64_t>>> seeds;
  for (int64_t genid = 1; genid <= 6; ++genid)
    for (int64_t s : {int64_t{0}, int64_t{-1}, INT64_MIN}) seeds.push_back({genid, {s}});
  seeds.push_back({5, {1, 0}});                          // order 0
  seeds.push_back({5, {1, 1001}});                       // order above 1000
  seeds.push_back({5, {1, 10, 4}});                      // even Y^0
  seeds.push_back({5, {1, 10, int64_t{1} << 60 | 1}});   // Y^0 beyond 2^60
  seeds.push_back({5, {1, 2, 3, 5, -1}});                // negative first-row value
  for (const auto &[genid, seed] : seeds) {
    SCOPED_TRACE("genid " + std::to_string(genid) + " seed(1) " + std::to_string(seed[0]));
    std::vector<int64_t> state(2100, -7);
    int64_t lstate = 2100;
    const outcome o = c.kf(genid, 0, seed, state.data(), &lstate);
    EXPECT_EQ(o.ifail, 3);
    EXPECT_EQ(o.detail, 1003);
    EXPECT_EQ(state, std::vector<int64_t>(2100, -7));
  }
}

// The layout of every fresh state: length, check words, genid, trailer.
TEST(G05State, FreshStateLayout) {
  const int64_t check[7] = {0, 1234, 2468, 3692, 4826, 5050, 4826};
  caller c;
  for (int64_t genid = 1; genid <= 6; ++genid) {
    SCOPED_TRACE(genid);
    std::vector<int64_t> state(2000, -7);
    int64_t lstate = 2000;
    ASSERT_EQ(c.kf(genid, 3, {9}, state.data(), &lstate).ifail, 0);
    EXPECT_EQ(lstate, 2000);
    const int64_t n = state[0];
    const int64_t lengths[7] = {0, 17, 21, 1260, 29, 29, 61};
    EXPECT_EQ(n, lengths[genid]);
    EXPECT_EQ(state[1], check[genid]);
    EXPECT_EQ(state[2], genid);
    EXPECT_EQ(state[n - 3], 1);
    EXPECT_EQ(state[n - 2], 1);
    EXPECT_EQ(state[n - 1], check[genid]);
    for (int64_t i = n; i < 2000; ++i) ASSERT_EQ(state[i], -7) << "written past the state at " << i;
    EXPECT_TRUE(zem::g05::state_valid(state.data(), n));
    EXPECT_FALSE(zem::g05::state_valid(state.data(), n + 1));  // lstate != state(1)
  }
}

// Every routine taking a state rejects a corrupted one with its own status
// and detail and leaves state (and output) untouched.
TEST(G05State, CorruptedStatesAreRefused) {
  struct corruption {
    const char *what;
    int64_t position;  // from the start if >= 0, else from the end (-1: last)
    int64_t value;     // added if `add`, else stored
    bool add;
  };
  const corruption cases[] = {
      {"length +1", 0, 1, true},           {"length -1", 0, -1, true},
      {"length 2", 0, 2, false},           {"check word", 1, 1, true},
      {"genid 0", 2, 0, false},            {"genid 7", 2, 7, false},
      {"genid other", 2, 1, true},         {"stride 0", -3, 0, false},
      {"stream 0", -2, 0, false},          {"last word", -1, 1, true},
  };
  caller c;
  for (int64_t genid = 1; genid <= 6; ++genid) {
    for (const corruption &k : cases) {
      SCOPED_TRACE("genid " + std::to_string(genid) + ": " + k.what);
      std::vector<int64_t> state = make_state(genid, 0, {4});
      state.resize(state.size() + 8, 0);  // room if the length grows
      const int64_t n = state[0];
      const int64_t pos = k.position >= 0 ? k.position : n + k.position;
      state[pos] = k.add ? state[pos] + k.value : k.value;
      const std::vector<int64_t> before = state;
      std::vector<double> x(4, -1.0);
      outcome o = c.sa(4, state.data(), x.data());
      EXPECT_EQ(o.ifail, 2);
      EXPECT_EQ(o.detail, 1002);
      EXPECT_EQ(x, std::vector<double>(4, -1.0));
      EXPECT_EQ(zem::g05::uniform_fill(state.data(), 4, x.data()), zem::g05::uniform_bad_state);
      o = c.kh(2, 1, state.data());
      EXPECT_EQ(o.ifail, 3);
      EXPECT_EQ(o.detail, 1003);
      o = c.kj(5, state.data());
      EXPECT_EQ(o.ifail, 2);
      EXPECT_EQ(o.detail, 1002);
      o = c.kk(5, state.data());
      EXPECT_EQ(o.ifail, 2);
      EXPECT_EQ(o.detail, 1002);
      EXPECT_EQ(state, before);
    }
  }
  // Own words out of range are corruption too.
  struct own {
    int64_t genid, position, value;
  };
  const own owns[] = {{1, 4, 1},     {1, 5, 32768},  {1, 8, 2},  {2, 3, 273},     {2, 4, 0},
                      {2, 12, 7},    {3, 628, 625},  {3, 4, -1}, {3, 4, 1ll << 32}, {4, 16, 1},
                      {4, 4, 2147483579}, {5, 3, 11}, {5, 4, 2},  {5, 5, 1 << 30}, {6, 4, 4294967087},
                      {6, 10, -1}};
  for (const own &k : owns) {
    SCOPED_TRACE("genid " + std::to_string(k.genid) + " word " + std::to_string(k.position));
    std::vector<int64_t> state = make_state(k.genid, 0, {4});
    state[k.position] = k.value;
    const std::vector<int64_t> before = state;
    std::vector<double> x(1);
    EXPECT_EQ(c.sa(1, state.data(), x.data()).ifail, 2);
    EXPECT_EQ(c.kj(1, state.data()).ifail, 2);
    EXPECT_EQ(state, before);
  }
  // A Mersenne Twister stride beyond its cap.
  std::vector<int64_t> mt = make_state(3, 0, {4});
  mt[mt.size() - 3] = (int64_t{1} << 24) + 1;
  EXPECT_EQ(c.kj(1, mt.data()).ifail, 2);
}

TEST(G05State, ArgumentFailures) {
  caller c;
  for (int64_t genid = 1; genid <= 6; ++genid) {
    SCOPED_TRACE(genid);
    std::vector<int64_t> state = make_state(genid, 0, {4});
    const std::vector<int64_t> before = state;
    std::vector<double> x(1, -1.0);
    struct expect {
      outcome got;
      int64_t ifail, detail;
      std::vector<std::string> values;
    };
    const expect cases[] = {
        {c.sa(-1, state.data(), x.data()), 1, 1001, {"-1"}},
        {c.kj(-1, state.data()), 1, 1001, {"-1"}},
        {c.kk(-5, state.data()), 1, 1001, {"-5"}},
        {c.kh(0, 1, state.data()), 1, 1001, {"0"}},
        {c.kh(-2, 1, state.data()), 1, 1001, {"-2"}},
        {c.kh(3, 0, state.data()), 2, 1002, {"0", "3"}},
        {c.kh(3, 4, state.data()), 2, 1002, {"4", "3"}},
        {c.kh(3, -1, state.data()), 2, 1002, {"-1", "3"}},
    };
    for (const expect &e : cases) {
      EXPECT_EQ(e.got.ifail, e.ifail);
      EXPECT_EQ(e.got.detail, e.detail);
      EXPECT_EQ(e.got.values, e.values);
    }
    EXPECT_EQ(state, before);
    EXPECT_EQ(x[0], -1.0);
  }
  // ACORN has no leap-frog; the refusal leaves the state alone.
  std::vector<int64_t> acorn = make_state(5, 0, {4});
  const std::vector<int64_t> before = acorn;
  const outcome o = c.kh(2, 1, acorn.data());
  EXPECT_EQ(o.ifail, 4);
  EXPECT_EQ(o.detail, 1004);
  EXPECT_EQ(acorn, before);
  // Mersenne Twister leap-frog beyond the stride cap.
  std::vector<int64_t> mt = make_state(3, 0, {4});
  ASSERT_EQ(c.kh(int64_t{1} << 12, 1, mt.data()).ifail, 0);
  const std::vector<int64_t> mt_before = mt;
  EXPECT_EQ(c.kh((int64_t{1} << 12) + 1, 1, mt.data()).ifail, 4);
  EXPECT_EQ(mt, mt_before);
}

TEST(G05State, SkipOfZeroAndEmptyFill) {
  caller c;
  for (int64_t genid = 1; genid <= 6; ++genid) {
    std::vector<int64_t> state = make_state(genid, 0, {4});
    const std::vector<int64_t> before = state;
    EXPECT_EQ(c.kj(0, state.data()).ifail, 0);
    EXPECT_EQ(c.sa(0, state.data(), nullptr).ifail, 0);
    EXPECT_EQ(state, before);
  }
}

// g05kg: valid states of the right length whose streams differ from call to
// call (the clock changes between calls).
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
  std::vector<int64_t> s(10, -7);
  int64_t l = 10;
  const outcome o = c.kg(0, 0, s.data(), &l);
  EXPECT_EQ(o.ifail, 1);
  EXPECT_EQ(o.values, std::vector<std::string>{"0"});
  l = 10;
  EXPECT_EQ(c.kg(6, 0, s.data(), &l).ifail, 6);
  EXPECT_EQ(s, std::vector<int64_t>(10, -7));
}

// Members are chosen by subid modulo 273, so every subid is valid.
TEST(G05State, WichmannHillMemberBySubid) {
  struct m {
    int64_t subid, member;
  };
  for (const m &t : {m{0, 0}, m{272, 272}, m{273, 0}, m{-1, 272}, m{-273, 0}, m{1000000, 1000000 % 273},
                     m{INT64_MIN, (INT64_MIN % 273 + 273) % 273}}) {
    std::vector<int64_t> state = make_state(2, t.subid, {1});
    EXPECT_EQ(state[3], t.member) << t.subid;
  }
}

namespace {

// Deterministic Miller-Rabin for n < 2^32.
uint64_t powmod(uint64_t a, uint64_t e, uint64_t m) {
  uint64_t r = 1;
  a %= m;
  for (; e; e >>= 1, a = a * a % m)
    if (e & 1) r = r * a % m;
  return r;
}
bool is_prime(uint64_t n) {
  if (n < 2) return false;
  for (uint64_t p : {2, 3, 5, 7}) {
    if (n % p == 0) return n == p;
  }
  uint64_t d = n - 1;
  int s = 0;
  while (d % 2 == 0) d /= 2, ++s;
  for (uint64_t a : {2, 3, 5, 7}) {
    uint64_t x = powmod(a, d, n);
    if (x == 1 || x == n - 1) continue;
    bool composite = true;
    for (int i = 1; i < s && composite; ++i) {
      x = x * x % n;
      if (x == n - 1) composite = false;
    }
    if (composite) return false;
  }
  return true;
}

constexpr uint64_t wh1_table[273][8] = {
#include "g05/wichmann_hill_1_table.inc"
};

}  // namespace

// Each member's components: prime moduli m = 2q + 1 with q prime, so that
// the period of a component is m - 1 exactly when a is a primitive root
// (a^2 != 1 and a^q != 1); products exact in 64 bits and in doubles; r < q
// for Schrage's method; all 1092 moduli distinct, so each member's period
// lcm(m_j - 1) = 2 q0 q1 q2 q3 exceeds 2^120.
TEST(G05State, WichmannHillFamilyPeriodConditions) {
  std::vector<uint64_t> moduli;
  for (int member = 0; member < 273; ++member) {
    double log2_period = 1.0;
    for (int j = 0; j < 4; ++j) {
      const uint64_t a = wh1_table[member][2 * j], m = wh1_table[member][2 * j + 1];
      SCOPED_TRACE("member " + std::to_string(member) + " component " + std::to_string(j));
      ASSERT_TRUE(is_prime(m));
      ASSERT_TRUE(is_prime((m - 1) / 2));
      ASSERT_LT(m, uint64_t{1} << 31);
      ASSERT_NE(powmod(a, 2, m), 1u);
      ASSERT_NE(powmod(a, (m - 1) / 2, m), 1u);
      ASSERT_LT(a, uint64_t{1} << 21);  // a x < 2^52: exact in a double
      ASSERT_LT(m % a, m / a);          // Schrage: r < q
      log2_period += std::log2(static_cast<double>((m - 1) / 2));
      moduli.push_back(m);
    }
    EXPECT_GT(log2_period, 120.0);
  }
  std::sort(moduli.begin(), moduli.end());
  EXPECT_EQ(std::adjacent_find(moduli.begin(), moduli.end()), moduli.end());
}

// The characteristic polynomial p of MT19937 is irreducible: its degree
// 19937 is prime, p(0) = p(1) = 1, and x^(2^19937) = x modulo p.  Also checks
// that x and 1/x are inverse and that x^e agrees with repeated times_x.
TEST(G05State, MersenneTwisterPolynomial) {
  using namespace zem::g05::mt_jump;
  poly x = one();
  times_x(x);
  poly g = x;
  for (int i = 0; i < degree; ++i) square(g);
  EXPECT_EQ(std::vector<uint64_t>(g.w, g.w + words), std::vector<uint64_t>(x.w, x.w + words));
  poly h = x_power(40000);
  poly k = one();
  for (int i = 0; i < 40000; ++i) times_x(k);
  EXPECT_EQ(std::vector<uint64_t>(h.w, h.w + words), std::vector<uint64_t>(k.w, k.w + words));
  for (int i = 0; i < 40000; ++i) divide_x(k);
  const poly u = one();
  EXPECT_EQ(std::vector<uint64_t>(k.w, k.w + words), std::vector<uint64_t>(u.w, u.w + words));
}
