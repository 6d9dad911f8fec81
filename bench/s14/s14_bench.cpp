// Speed of the gamma family against its peers, per call, on the same
// arguments: s14aa/s14ab against the platform's tgamma/lgamma on x spread
// over (0.5, 30); s14an/s14ap against a loop of s14aa/s14ab calls; s14ba
// against GSL's gsl_sf_gamma_inc_P/_Q and Boost's gamma_p/gamma_q on a grid
// of (a, x).  Run with --benchmark_repetitions=9
// --benchmark_report_aggregates_only=true and compare the medians.
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf_gamma.h>
#include <zem.h>

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <random>
#include <vector>

namespace {

const std::vector<double> &points() {
  static const std::vector<double> x = [] {
    std::mt19937_64 g(20261124);
    std::uniform_real_distribution<double> u(0.5, 30.0);
    std::vector<double> v(4096);
    for (auto &e : v) e = u(g);
    return v;
  }();
  return x;
}

struct grid_point {
  double a, x;
};
const std::vector<grid_point> &grid() {
  static const std::vector<grid_point> g = [] {
    std::vector<grid_point> v;
    for (double a : {0.1, 0.5, 1.5, 3.0, 7.5, 15.0, 40.0, 100.0})
      for (double r : {0.05, 0.3, 0.7, 0.95, 1.05, 1.4, 2.5, 6.0}) v.push_back({a, a * r});
    return v;
  }();
  return g;
}

template <typename F>
void scalar(benchmark::State &state, F f) {
  const auto &x = points();
  for (auto _ : state) {
    double s = 0.0;
    for (double v : x) s += f(v);
    benchmark::DoNotOptimize(s);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(x.size()));
}

void BM_s14aac(benchmark::State &s) { scalar(s, [](double x) { return s14aac(x, nullptr); }); }
void BM_tgamma(benchmark::State &s) { scalar(s, [](double x) { return std::tgamma(x); }); }
void BM_s14abc(benchmark::State &s) { scalar(s, [](double x) { return s14abc(x, nullptr); }); }
void BM_lgamma(benchmark::State &s) { scalar(s, [](double x) { return std::lgamma(x); }); }

template <bool Gamma>
void vector_routine(benchmark::State &state) {
  const auto &x = points();
  std::vector<double> f(x.size());
  std::vector<int64_t> iv(x.size());
  for (auto _ : state) {
    if (Gamma)
      s14anc(static_cast<int64_t>(x.size()), x.data(), f.data(), iv.data(), nullptr);
    else
      s14apc(static_cast<int64_t>(x.size()), x.data(), f.data(), iv.data(), nullptr);
    benchmark::DoNotOptimize(f.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(x.size()));
}
void BM_s14anc(benchmark::State &s) { vector_routine<true>(s); }
void BM_s14apc(benchmark::State &s) { vector_routine<false>(s); }

template <typename F>
void incomplete(benchmark::State &state, F f) {
  const auto &g = grid();
  for (auto _ : state) {
    double s = 0.0;
    for (const auto &p : g) s += f(p.a, p.x);
    benchmark::DoNotOptimize(s);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(g.size()));
}
void BM_s14bac(benchmark::State &s) {
  incomplete(s, [](double a, double x) {
    double p, q;
    s14bac(a, x, 0.0, &p, &q, nullptr);
    return p + q;
  });
}
void BM_gsl_P_and_Q(benchmark::State &s) {
  gsl_set_error_handler_off();
  incomplete(s, [](double a, double x) { return gsl_sf_gamma_inc_P(a, x) + gsl_sf_gamma_inc_Q(a, x); });
}
void BM_boost_p_and_q(benchmark::State &s) {
  incomplete(s, [](double a, double x) { return boost::math::gamma_p(a, x) + boost::math::gamma_q(a, x); });
}

}  // namespace

BENCHMARK(BM_s14aac);
BENCHMARK(BM_tgamma);
BENCHMARK(BM_s14abc);
BENCHMARK(BM_lgamma);
BENCHMARK(BM_s14anc);
BENCHMARK(BM_s14apc);
BENCHMARK(BM_s14bac);
BENCHMARK(BM_gsl_P_and_Q);
BENCHMARK(BM_boost_p_and_q);
BENCHMARK_MAIN();
