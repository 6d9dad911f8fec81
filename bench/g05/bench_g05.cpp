// Speed of the g05 uniform fill and skip-ahead, side by side in one run.
//
// Fill: n = 10^7 doubles into one array (faulted in beforehand) by g05sac with
// each base generator; GSL's mt19937 with gsl_rng_uniform_pos in a loop;
// std::mt19937 with std::generate_canonical<double, 53>; and a plain loop
// storing n doubles (the memory limit).  Rates are medians over the rounds,
// in doubles per second; the rounds interleave the contenders so that the
// machine's load affects them alike.
// Skip-ahead: g05kkc(100), i.e. by 2^100 values, median time per generator.
// The kernel set in use can be forced with ZEM_G05_ISA (generic, avx2, avx512).
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

#include <zem.h>

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

const Zem_BaseRNG members[7] = {Zem_Basic, Zem_Basic, Zem_WichmannHill_I, Zem_MersenneTwister,
                                Zem_WichmannHill_II, Zem_ACORN, Zem_MRG32k3a};

std::vector<int64_t> make_state(int64_t genid) {
  const int64_t seed[1] = {1762};
  int64_t lstate = 0;
  g05kfc(members[genid], 1, seed, 1, nullptr, &lstate, nullptr);
  std::vector<int64_t> state(lstate);
  g05kfc(members[genid], 1, seed, 1, state.data(), &lstate, nullptr);
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
    all.push_back({std::string("g05sac ") + names[g], [&, g] {
                     Zem_Fail fail = ZEM_FAIL_INIT;
                     g05sac(n, states[g].data(), x.data(), &fail);
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
      Zem_Fail fail = ZEM_FAIL_INIT;
      t.push_back(seconds([&] { g05kkc(100, s.data(), &fail); }));
    }
    std::printf("  %-20s %10.3f ms%s\n", names[g], 1e3 * median(t),
                g != 3 && median(t) >= 1e-3 ? "  (target < 1 ms)" : "");
  }
  gsl_rng_free(gsl);
  return sink == 12345.0;
}
