// Speed of g01fa and g01ea called in a loop, against the peers
// gsl_cdf_ugaussian_Pinv and gsl_cdf_ugaussian_Q.
//
// The contenders run in turn within each round (so that a noisy machine
// slows them alike); the report gives each one's median time per call over
// the rounds and the ratio peer / ours (above 1: ours is faster).
//
// Usage: g01_bench [rounds, default 15]
#include <gsl/gsl_cdf.h>
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

void compare(const char *title, std::vector<contender> &c, int rounds) {
  for (int r = 0; r < rounds; ++r) {
    for (auto &k : c) {
      const auto t0 = std::chrono::steady_clock::now();
      volatile double sink = k.run();
      (void)sink;
      const auto t1 = std::chrono::steady_clock::now();
      k.ns.push_back(std::chrono::duration<double, std::nano>(t1 - t0).count() / calls);
    }
  }
  std::printf("%s (%d calls, %d rounds)\n", title, calls, rounds);
  const double ours = median(c[0].ns);
  for (const auto &k : c)
    std::printf("  %-36s median %7.2f ns/call   ratio to %s %5.2f\n", k.name.c_str(), median(k.ns),
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
  return 0;
}
