// Speed of g01fa and g01ea called in a loop, against the peers
// gsl_cdf_ugaussian_Pinv and gsl_cdf_ugaussian_Q, and of g05sk filling 10^7
// Normal variates, against GSL's inversion path (gsl_rng_uniform_pos and
// gsl_cdf_ugaussian_Pinv) and GSL's ziggurat (gsl_ran_gaussian_ziggurat),
// all from the Mersenne Twister (g05sk also from the basic generator).
//
// The contenders run in turn within each round (so that a noisy machine
// slows them alike); the report gives each one's median time per call over
// the rounds and the ratio peer / ours (above 1: ours is faster).
//
// Usage: g01_bench [rounds, default 15]
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_rng.h>
#include <zem.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int calls = 1000000;

struct contender {
  std::string name;
  std::function<double()> run;  // one pass over the arguments; returns a checksum
  std::vector<double> ns;       // time per call, one entry per round
};

double median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

void compare(const char *title, std::vector<contender> &c, int rounds, int64_t count = calls) {
  for (int r = 0; r < rounds; ++r) {
    for (auto &k : c) {
      const auto t0 = std::chrono::steady_clock::now();
      volatile double sink = k.run();
      (void)sink;
      const auto t1 = std::chrono::steady_clock::now();
      k.ns.push_back(std::chrono::duration<double, std::nano>(t1 - t0).count() / count);
    }
  }
  std::printf("%s (%lld per round, %d rounds)\n", title, static_cast<long long>(count), rounds);
  const double ours = median(c[0].ns);
  for (const auto &k : c)
    std::printf("  %-40s median %7.2f ns each   ratio to %s %5.2f\n", k.name.c_str(), median(k.ns),
                c[0].name.c_str(), median(k.ns) / ours);
}

}  // namespace

int main(int argc, char **argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
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
       }, {}},
      {"g01fac (C entry, NULL fail)",
       [&] {
         double s = 0;
         for (double v : p) s += g01fac(Zem_LowerTail, v, NULL);
         return s;
       }, {}},
      {"g01faf_ (Fortran entry)",
       [&] {
         double s = 0;
         for (double v : p) {
           int64_t ifail = 1;
           s += g01faf_("L", &v, &ifail, 1);
         }
         return s;
       }, {}},
      {"gsl_cdf_ugaussian_Pinv",
       [&] {
         double s = 0;
         for (double v : p) s += gsl_cdf_ugaussian_Pinv(v);
         return s;
       }, {}},
  };
  compare("Deviate from lower-tail probability", deviates, rounds);

  std::vector<contender> probabilities = {
      {"g01eac (C entry, fail record)",
       [&] {
         double s = 0;
         Zem_Fail fail = ZEM_FAIL_INIT;
         for (double v : x) s += g01eac(Zem_UpperTail, v, &fail);
         return s;
       }, {}},
      {"g01eac (C entry, NULL fail)",
       [&] {
         double s = 0;
         for (double v : x) s += g01eac(Zem_UpperTail, v, NULL);
         return s;
       }, {}},
      {"g01eaf_ (Fortran entry)",
       [&] {
         double s = 0;
         for (double v : x) {
           int64_t ifail = 1;
           s += g01eaf_("U", &v, &ifail, 1);
         }
         return s;
       }, {}},
      {"gsl_cdf_ugaussian_Q",
       [&] {
         double s = 0;
         for (double v : x) s += gsl_cdf_ugaussian_Q(v);
         return s;
       }, {}},
  };
  compare("Upper-tail probability of a deviate", probabilities, rounds);

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
  const int variate_rounds = rounds < 7 ? rounds : 7;
  std::vector<contender> variates = {
      {"g05skc, Mersenne Twister",
       [&] {
         Zem_Fail fail = ZEM_FAIL_INIT;
         g05skc(n, 0.0, 1.0, mt.data(), v.data(), &fail);
         return v[n - 1];
       }, {}},
      {"g05skc, basic generator",
       [&] {
         Zem_Fail fail = ZEM_FAIL_INIT;
         g05skc(n, 0.0, 1.0, basic.data(), v.data(), &fail);
         return v[n - 1];
       }, {}},
      {"GSL uniform_pos + ugaussian_Pinv, MT",
       [&] {
         for (int64_t i = 0; i < n; ++i) v[i] = gsl_cdf_ugaussian_Pinv(gsl_rng_uniform_pos(r));
         return v[n - 1];
       }, {}},
      {"GSL gaussian_ziggurat, MT",
       [&] {
         for (int64_t i = 0; i < n; ++i) v[i] = gsl_ran_gaussian_ziggurat(r, 1.0);
         return v[n - 1];
       }, {}},
  };
  compare("Normal variates, n = 10^7", variates, variate_rounds, n);
  gsl_rng_free(r);
  return 0;
}
