// Speed of g01fa and g01ea called in a loop, against the peers
// gsl_cdf_ugaussian_Pinv and gsl_cdf_ugaussian_Q, and of g05sk filling 10^7
// Normal variates, against GSL's inversion path (gsl_rng_uniform_pos and
// gsl_cdf_ugaussian_Pinv) and GSL's ziggurat (gsl_ran_gaussian_ziggurat),
// all from the Mersenne Twister (g05sk also from the basic generator).
//
// Google Benchmark through the harness of bench/zem_bench.h: repetitions,
// random interleaving, aggregates, JSON (g01_bench.json); ours first in each
// group, so that tools/bench_report.py gives the ratios peer / ours.
//
// Usage: g01_bench [--benchmark_* options]
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_rng.h>
#include <zem.h>

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "zem_bench.h"

namespace {

constexpr int calls = 1000000;

struct contender {
  std::string name;
  std::function<double()> run;  // one pass over the arguments; returns a checksum
};

void compare(const char *group, const std::vector<contender> &c, int64_t count = calls) {
  for (const auto &k : c) zem_bench::add(group, k.name, count, k.run);
}

}  // namespace

int main(int argc, char **argv) {
  std::mt19937_64 g(12345);
  // Probabilities as a caller draws them: uniform on (0,1), so that 15% fall
  // outside the central region; deviates: standard Normal.
  std::vector<double> p(calls), x(calls);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  std::normal_distribution<double> z(0.0, 1.0);
  for (auto &v : p) do v = u(g); while (v == 0.0);
  for (auto &v : x) v = z(g);

  std::vector<contender> deviates = {
      {"g01fac (C entry, fail record)",
       [&] {
         double s = 0;
         Zem_Fail fail = ZEM_FAIL_INIT;
         for (double v : p) s += g01fac(Zem_LowerTail, v, &fail);
         return s;
       }},
      {"g01fac (C entry, NULL fail)",
       [&] {
         double s = 0;
         for (double v : p) s += g01fac(Zem_LowerTail, v, NULL);
         return s;
       }},
      {"g01faf_ (Fortran entry)",
       [&] {
         double s = 0;
         for (double v : p) {
           int64_t ifail = 1;
           s += g01faf_("L", &v, &ifail, 1);
         }
         return s;
       }},
      {"gsl_cdf_ugaussian_Pinv",
       [&] {
         double s = 0;
         for (double v : p) s += gsl_cdf_ugaussian_Pinv(v);
         return s;
       }},
  };
  compare("g01fa deviate from lower-tail probability", deviates);

  std::vector<contender> probabilities = {
      {"g01eac (C entry, fail record)",
       [&] {
         double s = 0;
         Zem_Fail fail = ZEM_FAIL_INIT;
         for (double v : x) s += g01eac(Zem_UpperTail, v, &fail);
         return s;
       }},
      {"g01eac (C entry, NULL fail)",
       [&] {
         double s = 0;
         for (double v : x) s += g01eac(Zem_UpperTail, v, NULL);
         return s;
       }},
      {"g01eaf_ (Fortran entry)",
       [&] {
         double s = 0;
         for (double v : x) {
           int64_t ifail = 1;
           s += g01eaf_("U", &v, &ifail, 1);
         }
         return s;
       }},
      {"gsl_cdf_ugaussian_Q",
       [&] {
         double s = 0;
         for (double v : x) s += gsl_cdf_ugaussian_Q(v);
         return s;
       }},
  };
  compare("g01ea upper-tail probability of a deviate", probabilities);

  // Normal variates: one fill of n per round, from states initialised once.
  const int64_t n = 10000000;
  std::vector<double> v(n);
  auto zem_state = [](Zem_BaseRNG genid) {
    int64_t seed = 1762543, lstate = 0;
    g05kfc(genid, 1, &seed, 1, NULL, &lstate, NULL);
    std::vector<int64_t> state(lstate);
    g05kfc(genid, 1, &seed, 1, state.data(), &lstate, NULL);
    return state;
  };
  std::vector<int64_t> mt = zem_state(Zem_MersenneTwister), basic = zem_state(Zem_Basic);
  gsl_rng *r = gsl_rng_alloc(gsl_rng_mt19937);
  gsl_rng_set(r, 1762543);
  std::vector<contender> variates = {
      {"g05skc, Mersenne Twister",
       [&] {
         Zem_Fail fail = ZEM_FAIL_INIT;
         g05skc(n, 0.0, 1.0, mt.data(), v.data(), &fail);
         return v[n - 1];
       }},
      {"g05skc, basic generator",
       [&] {
         Zem_Fail fail = ZEM_FAIL_INIT;
         g05skc(n, 0.0, 1.0, basic.data(), v.data(), &fail);
         return v[n - 1];
       }},
      {"GSL uniform_pos + ugaussian_Pinv, MT",
       [&] {
         for (int64_t i = 0; i < n; ++i) v[i] = gsl_cdf_ugaussian_Pinv(gsl_rng_uniform_pos(r));
         return v[n - 1];
       }},
      {"GSL gaussian_ziggurat, MT",
       [&] {
         for (int64_t i = 0; i < n; ++i) v[i] = gsl_ran_gaussian_ziggurat(r, 1.0);
         return v[n - 1];
       }},
  };
  compare("g05sk Normal variates n=10^7", variates, n);
  const int status = zem_bench::run(argc, argv, "g01");
  gsl_rng_free(r);
  return status;
}
