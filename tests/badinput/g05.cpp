// Bad-input sweeps of chapter g05: sizes, generator choices, and states that
// no initialisation leaves (zeroed, garbage, too short).
#include <cmath>
#include <cstring>

#include "sweep.h"

using namespace badinput;

namespace {

constexpr int64_t state_cells = 700;  // enough for every base generator

// A state initialised for generator genid (1..6), in guard cells.
guarded<int64_t> good_state(int64_t genid) {
  guarded<int64_t> st(state_cells);
  int64_t seed[1] = {1762543}, lseed = 1, sub = 1, lstate = state_cells, ifail = 1;
  g05kff_(&genid, &sub, seed, &lseed, st.data(), &lstate, &ifail);
  return st;
}

// States a caller may hand over by mistake.
std::vector<std::pair<std::string, guarded<int64_t>>> bad_states() {
  std::vector<std::pair<std::string, guarded<int64_t>>> out;
  out.emplace_back("zeroed", guarded<int64_t>(state_cells, 0));
  out.emplace_back("garbage", guarded<int64_t>(state_cells, 0x5a5a5a5a5a5a5a5a));
  auto shifted = good_state(3);
  for (size_t i = 0; i + 1 < shifted.size(); ++i) shifted[i] = shifted[i + 1];
  out.emplace_back("shifted", shifted);
  auto damaged = good_state(6);
  damaged[1] ^= 0x10;
  out.emplace_back("header damaged", damaged);
  return out;
}

// Runs body(state) on every bad state and on a good state of every
// generator; a bad state must be refused.
template <typename Body>
void over_states(sweep &s, const char *what, Body body) {
  for (auto &[name, st] : bad_states())
    s.call(std::string(what) + ", state " + name, [&] {
      const int code = body(st.data());
      s.expect(code != 0, "a state no initialisation leaves was accepted");
      s.intact(st, "state");
    });
  for (int64_t g = 1; g <= 6; ++g)
    s.call(std::string(what) + ", genid", g, [&] {
      auto st = good_state(g);
      body(st.data());
      s.intact(st, "state");
    });
}

}  // namespace

ZEM_BADINPUT(g05kf) {
  for (int64_t g : {int64_t{0}, int64_t{7}, int64_t{-1}})
    s.call("genid", g, [&] {
      guarded<int64_t> st(state_cells);
      int64_t seed[1] = {1}, lseed = 1, sub = 1, lstate = state_cells, ifail = 1;
      g05kff_(&g, &sub, seed, &lseed, st.data(), &lstate, &ifail);
      s.expect(ifail != 0, "an unknown generator accepted");
      s.intact(st, "state");
    });
  for (int64_t n : hostile_sizes) {
    s.call("lseed", n, [&] {
      guarded<int64_t> st(state_cells), seed(4, 3);
      Zem_Fail fail = quiet();
      int64_t lstate = state_cells;
      g05kfc(Zem_MersenneTwister, 1, seed.data(), n > 4 ? 4 : n, st.data(), &lstate, &fail);
      if (n < 1) s.expect(fail.code != 0, "lseed < 1 accepted");
      s.intact(st, "state");
      s.intact(seed, "seed");
    });
    s.call("lstate", n, [&] {
      guarded<int64_t> st(state_cells);
      int64_t seed[1] = {1};
      Zem_Fail fail = quiet();
      int64_t lstate = n > state_cells ? state_cells : n;
      g05kfc(Zem_MersenneTwister, 1, seed, 1, st.data(), &lstate, &fail);
      s.intact(st, "state");
    });
    s.call("subid", n, [&] {
      guarded<int64_t> st(state_cells);
      int64_t seed[1] = {1}, lstate = state_cells;
      Zem_Fail fail = quiet();
      g05kfc(Zem_WichmannHill_I, n, seed, 1, st.data(), &lstate, &fail);
      s.intact(st, "state");
    });
  }
  s.call("seed of zeros and negatives", [&] {
    guarded<int64_t> st(state_cells);
    int64_t seed[3] = {0, -1, std::numeric_limits<int64_t>::min()}, lstate = state_cells;
    for (int64_t g = 1; g <= 6; ++g) {
      Zem_Fail fail = quiet();
      g05kfc(static_cast<Zem_BaseRNG>(1700 + g), 1, seed, 3, st.data(), &lstate, &fail);
    }
    s.intact(st, "state");
  });
  s.call("null arguments", [&] {
    int64_t seed[1] = {1}, lstate = state_cells, st[state_cells];
    Zem_Fail fail = quiet();
    g05kfc(Zem_MersenneTwister, 1, seed, 1, st, nullptr, &fail);
    s.expect(fail.code != 0, "null lstate accepted");
    fail = quiet();
    g05kfc(static_cast<Zem_BaseRNG>(99), 1, seed, 1, st, &lstate, &fail);
    s.expect(fail.code != 0, "an unknown generator accepted");
  });
}

ZEM_BADINPUT(g05kg) {
  for (int64_t n : hostile_sizes)
    s.call("lstate", n, [&] {
      guarded<int64_t> st(state_cells);
      int64_t lstate = n > state_cells ? state_cells : n, g = 3, sub = 1, ifail = 1;
      g05kgf_(&g, &sub, st.data(), &lstate, &ifail);
      s.intact(st, "state");
    });
  s.call("genid", [&] {
    guarded<int64_t> st(state_cells);
    int64_t lstate = state_cells;
    Zem_Fail fail = quiet();
    g05kgc(static_cast<Zem_BaseRNG>(0), 1, st.data(), &lstate, &fail);
    s.expect(fail.code != 0, "an unknown generator accepted");
  });
}

ZEM_BADINPUT(g05kh) {
  for (int64_t n : hostile_sizes)
    for (int64_t k : {int64_t{-1}, int64_t{0}, int64_t{1}, n, std::numeric_limits<int64_t>::max()})
      over_states(s, ("n = " + sweep::text(n) + ", k = " + sweep::text(k)).c_str(), [&](int64_t *st) {
        Zem_Fail fail = quiet();
        g05khc(n, k, st, &fail);
        int64_t ifail = 1;
        g05khf_(&n, &k, st, &ifail);
        return fail.code;
      });
}

ZEM_BADINPUT(g05kj) {
  for (int64_t n : {int64_t{-1}, int64_t{0}, int64_t{1000}, std::numeric_limits<int64_t>::min()})
    over_states(s, ("n = " + sweep::text(n)).c_str(), [&](int64_t *st) {
      Zem_Fail fail = quiet();
      g05kjc(n, st, &fail);
      int64_t ifail = 1;
      g05kjf_(&n, st, &ifail);
      return fail.code;
    });
}

ZEM_BADINPUT(g05kk) {
  for (int64_t n : {int64_t{-1}, int64_t{0}, int64_t{64}, int64_t{1000}, std::numeric_limits<int64_t>::max()})
    over_states(s, ("n = " + sweep::text(n)).c_str(), [&](int64_t *st) {
      Zem_Fail fail = quiet();
      g05kkc(n, st, &fail);
      int64_t ifail = 1;
      g05kkf_(&n, st, &ifail);
      return fail.code;
    });
}

ZEM_BADINPUT(g05sa) {
  for (int64_t n : {int64_t{-1}, int64_t{0}, int64_t{1}, int64_t{100}, std::numeric_limits<int64_t>::min()})
    over_states(s, ("n = " + sweep::text(n)).c_str(), [&](int64_t *st) {
      guarded<double> x(100, nan_v);
      Zem_Fail fail = quiet();
      g05sac(n, st, x.data(), &fail);
      s.intact(x, "x");
      if (fail.code == 0)
        for (int64_t i = 0; i < n; ++i) s.expect(x[i] > 0.0 && x[i] < 1.0, "a value outside (0,1)");
      int64_t ifail = 1;
      g05saf_(&n, st, x.data(), &ifail);
      s.intact(x, "x");
      return fail.code;
    });
}

ZEM_BADINPUT(g05sk) {
  for (double mu : hostile_reals)
    for (double var : {-1.0, 0.0, 1.0, nan_v, inf, huge})
      over_states(s, ("mu = " + sweep::text(mu) + ", var = " + sweep::text(var)).c_str(), [&](int64_t *st) {
        guarded<double> x(10, nan_v);
        Zem_Fail fail = quiet();
        g05skc(10, mu, var, st, x.data(), &fail);
        s.intact(x, "x");
        int64_t n = 10, ifail = 1;
        guarded<double> xf(10, nan_v);
        g05skf_(&n, &mu, &var, st, xf.data(), &ifail);
        s.intact(xf, "x");
        // (An infinite mean or variance gives infinite variates: documented.)
        if (fail.code == 0 && std::isfinite(mu) && std::isfinite(var))
          for (int i = 0; i < 10; ++i) s.expect(std::isfinite(x[i]), "success with a non-finite variate");
        if (!(var >= 0.0)) s.expect(fail.code != 0, "var < 0 or NaN accepted");
        return fail.code;
      });
  for (int64_t n : hostile_sizes)
    if (n < 0)
      s.call("n", n, [&] {
        auto st = good_state(3);
        double x[1];
        Zem_Fail fail = quiet();
        g05skc(n, 0.0, 1.0, st.data(), x, &fail);
        s.expect(fail.code != 0, "n < 0 accepted");
      });
}
