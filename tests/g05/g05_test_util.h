// Helpers of the g05 engine tests: calls of the workers as the entry layer
// makes them, and the reader of the reference data written by
// tools/g05_reference_data.py.
#pragma once

#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <map>
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
ZEM_INTERNAL void g05kjfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf,
                           int64_t *ifail);
ZEM_INTERNAL void g05kkfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf,
                           int64_t *ifail);
ZEM_INTERNAL void g05safn_(engine_data *, const int64_t *n, int64_t *state, double *x,
                           char *errbuf, int64_t *ifail);

namespace g05test {

// One worker call's outcome: status and the detail code of the record.
struct outcome {
  int64_t ifail = 0;
  int64_t detail = 0;
  std::vector<std::string> values;
};

inline outcome parse(const char *errbuf, int64_t ifail) {
  outcome o;
  o.ifail = ifail;
  if (ifail == 0) return o;
  std::vector<std::string> fields;
  std::string cur;
  for (int i = 1; i < 199 && errbuf[i] != '\0'; ++i) {
    if (errbuf[i] == '\x01') {
      fields.push_back(cur);
      cur.clear();
    } else {
      cur += errbuf[i];
    }
  }
  if (fields.size() >= 2) {
    o.detail = std::stoll(fields[1]);
    o.values.assign(fields.begin() + 2, fields.end());
  }
  return o;
}

struct caller {
  engine_data en{};
  char errbuf[200];
  int64_t ifail = 0;

  outcome kf(int64_t genid, int64_t subid, const std::vector<int64_t> &seed, int64_t *state,
             int64_t *lstate) {
    const int64_t lseed = static_cast<int64_t>(seed.size());
    g05kffn_(&en, &genid, &subid, seed.data(), &lseed, state, lstate, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
  outcome kf_raw(int64_t genid, int64_t subid, const int64_t *seed, int64_t lseed, int64_t *state,
                 int64_t *lstate) {
    g05kffn_(&en, &genid, &subid, seed, &lseed, state, lstate, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
  outcome kg(int64_t genid, int64_t subid, int64_t *state, int64_t *lstate) {
    g05kgfn_(&en, &genid, &subid, state, lstate, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
  outcome kh(int64_t n, int64_t k, int64_t *state) {
    g05khfn_(&en, &n, &k, state, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
  outcome kj(int64_t n, int64_t *state) {
    g05kjfn_(&en, &n, state, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
  outcome kk(int64_t n, int64_t *state) {
    g05kkfn_(&en, &n, state, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
  outcome sa(int64_t n, int64_t *state, double *x) {
    g05safn_(&en, &n, state, x, errbuf, &ifail);
    return parse(errbuf, ifail);
  }
};

// An initialised state of the required length (the query first).
inline std::vector<int64_t> make_state(int64_t genid, int64_t subid, std::vector<int64_t> seed) {
  caller c;
  int64_t lstate = 0;
  int64_t dummy[1] = {0};
  c.kf(genid, subid, seed, dummy, &lstate);
  std::vector<int64_t> state(static_cast<size_t>(lstate));
  c.kf(genid, subid, seed, state.data(), &lstate);
  return state;
}

inline std::vector<double> draw(std::vector<int64_t> &state, int64_t n) {
  std::vector<double> x(static_cast<size_t>(n));
  caller c;
  c.sa(n, state.data(), x.data());
  return x;
}

inline uint64_t bits(double u) { return std::bit_cast<uint64_t>(u); }

// ---------------------------------------------------------- reference data
struct sequence_record {
  std::string label;
  int64_t genid, subid;
  std::vector<int64_t> seed;
  std::vector<uint64_t> values;  // bits of the doubles
};
struct skip_record {
  std::string label;
  int64_t genid, subid;
  std::vector<int64_t> seed;
  int64_t draws;
  std::string kind;
  int64_t n;
  std::vector<int64_t> own;
  std::vector<uint64_t> next;
};
struct reference {
  std::vector<sequence_record> sequences;
  std::vector<skip_record> skips;
  std::map<std::string, std::vector<int64_t>> words;
  std::map<std::string, std::vector<uint64_t>> published;
};

inline const reference &reference_data() {
  static const reference ref = [] {
    reference r;
    std::ifstream in(std::string(ZEM_TEST_DATA) + "/reference.txt");
    std::string line, tok, all;
    while (std::getline(in, line))
      if (!line.empty() && line[0] != '#') all += line + ' ';
    std::vector<std::string> t;
    {
      std::string cur;
      for (char ch : all) {
        if (ch == ' ') {
          if (!cur.empty()) t.push_back(cur);
          cur.clear();
        } else {
          cur += ch;
        }
      }
    }
    size_t i = 0;
    auto num = [&] { return static_cast<int64_t>(std::stoll(t[i++])); };
    auto hex = [&] { return static_cast<uint64_t>(std::stoull(t[i++], nullptr, 16)); };
    while (i < t.size()) {
      const std::string kind = t[i++];
      if (kind == "sequence") {
        sequence_record s;
        s.label = t[i++];
        s.genid = num();
        s.subid = num();
        for (int64_t k = num(); k > 0; --k) s.seed.push_back(num());
        for (int64_t k = num(); k > 0; --k) s.values.push_back(hex());
        r.sequences.push_back(s);
      } else if (kind == "skip") {
        skip_record s;
        s.label = t[i++];
        s.genid = num();
        s.subid = num();
        for (int64_t k = num(); k > 0; --k) s.seed.push_back(num());
        s.draws = num();
        s.kind = t[i++];
        s.n = num();
        for (int64_t k = num(); k > 0; --k) s.own.push_back(num());
        for (int64_t k = num(); k > 0; --k) s.next.push_back(hex());
        r.skips.push_back(s);
      } else if (kind == "words") {
        const std::string label = t[i++];
        std::vector<int64_t> w;
        for (int64_t k = num(); k > 0; --k) w.push_back(num());
        r.words[label] = w;
      } else if (kind == "published") {
        const std::string label = t[i++];
        std::vector<uint64_t> w;
        for (int64_t k = num(); k > 0; --k) w.push_back(hex());
        r.published[label] = w;
      } else {
        std::fprintf(stderr, "reference.txt: unknown record %s\n", kind.c_str());
        break;
      }
    }
    return r;
  }();
  return ref;
}

}  // namespace g05test
