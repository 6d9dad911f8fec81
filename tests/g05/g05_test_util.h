// Helpers of the g05 engine tests: the workers called as the entry layer
// calls them, with the message record read back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/engine.h"

ZEM_INTERNAL void g05kffn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           const int64_t *seed, const int64_t *lseed, int64_t *state,
                           int64_t *lstate, char *errbuf, int64_t *ifail);
ZEM_INTERNAL void g05kgfn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           int64_t *state, int64_t *lstate, char *errbuf, int64_t *ifail);
ZEM_INTERNAL void g05khfn_(engine_data *, const int64_t *n, const int64_t *k, int64_t *state,
                           char *errbuf, int64_t *ifail);
ZEM_INTERNAL void g05kjfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf, int64_t *ifail);
ZEM_INTERNAL void g05kkfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf, int64_t *ifail);
ZEM_INTERNAL void g05safn_(engine_data *, const int64_t *n, int64_t *state, double *x, char *errbuf,
                           int64_t *ifail);

namespace g05test {

// A worker call's outcome: the status, and the detail code and values of
// the record (0x01 status 0x01 detail 0x01 value 0x01 ...).
struct outcome {
  int64_t ifail = 0, detail = 0;
  std::vector<std::string> values;
};

struct caller {
  engine_data en{};
  char errbuf[200];
  int64_t ifail = 0;

  outcome done() {
    outcome o{ifail, 0, {}};
    std::vector<std::string> f(1);
    for (int i = 1; ifail != 0 && i < 199 && errbuf[i] != '\0'; ++i) {
      if (errbuf[i] == '\x01') f.emplace_back();
      else f.back() += errbuf[i];
    }
    if (f.size() >= 3) {
      o.detail = std::stoll(f[1]);
      o.values.assign(f.begin() + 2, f.end() - 1);  // the last field is the padding
    }
    return o;
  }
  // lseed -1: the length of seed.
  outcome kf(int64_t genid, int64_t subid, const std::vector<int64_t> &seed, int64_t *state,
             int64_t *lstate, int64_t lseed = -1) {
    if (lseed == -1) lseed = static_cast<int64_t>(seed.size());
    g05kffn_(&en, &genid, &subid, seed.data(), &lseed, state, lstate, errbuf, &ifail);
    return done();
  }
  outcome kg(int64_t genid, int64_t subid, int64_t *state, int64_t *lstate) {
    g05kgfn_(&en, &genid, &subid, state, lstate, errbuf, &ifail);
    return done();
  }
  outcome kh(int64_t n, int64_t k, int64_t *s) { g05khfn_(&en, &n, &k, s, errbuf, &ifail); return done(); }
  outcome kj(int64_t n, int64_t *s) { g05kjfn_(&en, &n, s, errbuf, &ifail); return done(); }
  outcome kk(int64_t n, int64_t *s) { g05kkfn_(&en, &n, s, errbuf, &ifail); return done(); }
  outcome sa(int64_t n, int64_t *s, double *x) { g05safn_(&en, &n, s, x, errbuf, &ifail); return done(); }
};

// An initialised state of the length a query gives.
inline std::vector<int64_t> make_state(int64_t genid, int64_t subid, const std::vector<int64_t> &seed) {
  caller c;
  int64_t lstate = 0;
  c.kf(genid, subid, seed, nullptr, &lstate);
  std::vector<int64_t> state(static_cast<size_t>(lstate));
  c.kf(genid, subid, seed, state.data(), &lstate);
  return state;
}

inline std::vector<double> draw(std::vector<int64_t> &state, int64_t n) {
  std::vector<double> x(static_cast<size_t>(n));
  caller().sa(n, state.data(), x.data());
  return x;
}

}  // namespace g05test
