// Speed of the g05 uniform fill and skip-ahead, side by side in one run.
//
// Fill: n = 10^7 doubles into one array (faulted in beforehand) by g05sac with
// each base generator; GSL's mt19937 with gsl_rng_uniform_pos in a loop;
// std::mt19937 with std::generate_canonical<double, 53>; and a plain loop
// storing n doubles (the memory limit).  Rates are medians over the rounds,
// in doubles per second; the rounds interleave the contenders so that the
// machine's load affects them alike.
// Skip-ahead: g05kkc(100), i.e. by 2^100 values, median time per generator.
// The kernel set in use can be forced with ZEM_ISA (baseline, avx2, avx512).
//
// Google Benchmark through the harness of bench/zem_bench.h (repetitions,
// random interleaving, aggregates, JSON in bench_g05.json); the report
// (tools/bench_report.py) gives rates in doubles/s and the ratios.
//
// Usage: bench_g05 [--benchmark_* options]
#include <gsl/gsl_rng.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <zem.h>

#include "zem_bench.h"

namespace {

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
  const int64_t n = 10000000;
  std::vector<double> x(n, 0.0);
  volatile double sink = 0.0;
  const std::string fill = "g05sa uniform fill n=10^7";

  std::vector<std::vector<int64_t>> states(7);
  for (int64_t g = 1; g <= 6; ++g) {
    states[g] = make_state(g);
    zem_bench::add(fill, std::string("g05sac ") + names[g], n, [&, g] {
      Zem_Fail fail = ZEM_FAIL_INIT;
      g05sac(n, states[g].data(), x.data(), &fail);
      return x[n / 2];
    });
  }
  gsl_rng *gsl = gsl_rng_alloc(gsl_rng_mt19937);
  zem_bench::add(fill, "GSL mt19937 uniform_pos loop", n, [&] {
    for (int64_t i = 0; i < n; ++i) x[i] = gsl_rng_uniform_pos(gsl);
    return x[n / 2];
  });
  std::mt19937 stdmt(5489u);
  zem_bench::add(fill, "std::mt19937 generate_canonical", n, [&] {
    for (int64_t i = 0; i < n; ++i) x[i] = std::generate_canonical<double, 53>(stdmt);
    return x[n / 2];
  });
  zem_bench::add(fill, "plain store loop", n, [&] {
    const double v = sink + 0.5;
    for (int64_t i = 0; i < n; ++i) x[i] = v;
    asm volatile("" : : "r"(x.data()) : "memory");
    return x[n / 2];
  });

  // Skip-ahead by 2^100 (g05kk with n = 100) from a fresh copy of each state;
  // the copy is part of the time (a few microseconds against milliseconds).
  for (int64_t g = 1; g <= 6; ++g)
    zem_bench::add("g05kk skip-ahead by 2^100", names[g], 1, [&, g] {
      std::vector<int64_t> s = states[g];
      Zem_Fail fail = ZEM_FAIL_INIT;
      g05kkc(100, s.data(), &fail);
      return double(s[4]);
    });
  const int status = zem_bench::run(argc, argv, "g05");
  gsl_rng_free(gsl);
  return status;
}
