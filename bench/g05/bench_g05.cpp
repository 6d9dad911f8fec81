// Speed of the g05 uniform fill and skip-ahead, side by side in one run.
//
// Fill: n = 10^7 doubles into one array (faulted in beforehand) by g05sa with
// each base generator; GSL's mt19937 with gsl_rng_uniform_pos in a loop;
// std::mt19937 with std::generate_canonical<double, 53>; and a plain loop
// storing n doubles (the memory limit).  Rates are medians over the rounds,
// in doubles per second; the rounds interleave the contenders so that the
// machine's load affects them alike.
// Skip-ahead: g05kk(100), i.e. by 2^100 values, median time per generator.
//
// Usage: bench_g05 [rounds]   (default 7)
#include <gsl/gsl_rng.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "frame/engine.h"

ZEM_INTERNAL void g05kffn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           const int64_t *seed, const int64_t *lseed, int64_t *state,
                           int64_t *lstate, char *errbuf, int64_t *ifail);
ZEM_INTERNAL void g05kkfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf,
                           int64_t *ifail);
ZEM_INTERNAL void g05safn_(engine_data *, const int64_t *n, int64_t *state, double *x,
                           char *errbuf, int64_t *ifail);

namespace {

using clock_type = std::chrono::steady_clock;

double seconds(const std::function<void()> &f) {
  const auto t0 = clock_type::now();
  f();
  return std::chrono::duration<double>(clock_type::now() - t0).count();
}

double median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

std::vector<int64_t> make_state(int64_t genid) {
  engine_data en{};
  char errbuf[200];
  int64_t ifail = 0, subid = 1, seed = 1762, lseed = 1, lstate = 0;
  int64_t probe[1];
  g05kffn_(&en, &genid, &subid, &seed, &lseed, probe, &lstate, errbuf, &ifail);
  std::vector<int64_t> state(lstate);
  g05kffn_(&en, &genid, &subid, &seed, &lseed, state.data(), &lstate, errbuf, &ifail);
  return state;
}

const char *names[7] = {"", "basic", "Wichmann-Hill I", "Mersenne Twister", "Wichmann-Hill II",
                        "ACORN", "MRG32k3a"};

}  // namespace

int main(int argc, char **argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
  const int64_t n = 10000000;
  std::vector<double> x(n, 0.0);
  volatile double sink = 0.0;

  struct contender {
    std::string name;
    std::function<void()> run;
    std::vector<double> times;
  };
  std::vector<contender> all;

  std::vector<std::vector<int64_t>> states(7);
  for (int64_t g = 1; g <= 6; ++g) {
    states[g] = make_state(g);
    all.push_back({std::string("g05sa ") + names[g], [&, g] {
                     engine_data en{};
                     char errbuf[200];
                     int64_t ifail = 0;
                     g05safn_(&en, &n, states[g].data(), x.data(), errbuf, &ifail);
                   }, {}});
  }
  gsl_rng *gsl = gsl_rng_alloc(gsl_rng_mt19937);
  all.push_back({"GSL mt19937 uniform_pos loop", [&] {
                   for (int64_t i = 0; i < n; ++i) x[i] = gsl_rng_uniform_pos(gsl);
                 }, {}});
  std::mt19937 stdmt(5489u);
  all.push_back({"std::mt19937 generate_canonical", [&] {
                   for (int64_t i = 0; i < n; ++i) x[i] = std::generate_canonical<double, 53>(stdmt);
                 }, {}});
  all.push_back({"plain store loop", [&] {
                   const double v = sink + 0.5;
                   for (int64_t i = 0; i < n; ++i) x[i] = v;
                   asm volatile("" : : "r"(x.data()) : "memory");
                 }, {}});

  for (int r = 0; r < rounds + 1; ++r)
    for (contender &c : all) {
      const double t = seconds(c.run);
      sink = sink + x[n / 2];
      if (r > 0) c.times.push_back(t);  // round 0 warms up
    }

  std::printf("uniform fill, n = %lld doubles, median of %d rounds\n", static_cast<long long>(n),
              rounds);
  std::printf("%-36s %10s %14s\n", "", "ms", "doubles/s");
  std::vector<double> rate(all.size());
  for (size_t i = 0; i < all.size(); ++i) {
    const double t = median(all[i].times);
    rate[i] = static_cast<double>(n) / t;
    std::printf("%-36s %10.2f %14.3e\n", all[i].name.c_str(), 1e3 * t, rate[i]);
  }
  const double gsl_rate = rate[6], store_rate = rate[8];
  std::printf("\nratios (targets in brackets)\n");
  std::printf("  Mersenne Twister / GSL mt19937   %6.2f  [>= 3]\n", rate[2] / gsl_rate);
  std::printf("  basic / plain store loop         %6.2f  [>= 0.5]\n", rate[0] / store_rate);
  std::printf("  Wichmann-Hill II / GSL mt19937   %6.2f  [>= 1]\n", rate[3] / gsl_rate);
  std::printf("  MRG32k3a / GSL mt19937           %6.2f  [>= 1]\n", rate[5] / gsl_rate);
  std::printf("  std::mt19937 / GSL mt19937       %6.2f\n", rate[7] / gsl_rate);

  std::printf("\nskip-ahead by 2^100 (g05kk, n = 100), median of %d\n", 3 * rounds);
  for (int64_t g = 1; g <= 6; ++g) {
    std::vector<double> t;
    for (int r = 0; r < 3 * rounds; ++r) {
      std::vector<int64_t> s = states[g];
      engine_data en{};
      char errbuf[200];
      int64_t ifail = 0, e = 100;
      t.push_back(seconds([&] { g05kkfn_(&en, &e, s.data(), errbuf, &ifail); }));
    }
    std::printf("  %-20s %10.3f ms%s\n", names[g], 1e3 * median(t),
                g != 3 && median(t) >= 1e-3 ? "  (target < 1 ms)" : "");
  }
  gsl_rng_free(gsl);
  return sink == 12345.0;
}
