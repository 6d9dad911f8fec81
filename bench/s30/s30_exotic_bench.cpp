// Speed of the exotic closed forms on a 100 by 100 grid (time per price in
// the ns_per_price counter), beside s30aa on the same grid: s30ba/s30bb
// lookbacks (the sensitivities by dual numbers), s30cb binaries with
// sensitivities, s30fa barriers (a knock-out and a knock-in), s30qc
// American approximations.
//
// Usage: s30_exotic_bench --benchmark_repetitions=9 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>
#include <zem.h>

#include <vector>

namespace {

constexpr int64_t M = 100, N = 100;
constexpr double S = 100.0, SIGMA = 0.25, R = 0.03, Q = 0.01;

struct grid {
  std::vector<double> x, t, smin, p, g[5];
  grid() : x(M), t(N), smin(M), p(M * N) {
    for (int64_t i = 0; i < M; ++i) x[i] = 50.0 + 100.0 * i / M, smin[i] = 50.0 + 50.0 * i / M;
    for (int64_t j = 0; j < N; ++j) t[j] = 0.05 + 5.0 * j / N;
    for (auto &v : g) v.resize(M * N);
  }
};

void per_price(benchmark::State &st) {
  st.counters["ns_per_price"] =
      benchmark::Counter(double(M * N), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_s30aa(benchmark::State &st) {
  grid g;
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30aac(Zem_ColMajor, Zem_Call, M, N, g.x.data(), S, g.t.data(), SIGMA, R, Q, g.p.data(), M, &fail);
    benchmark::DoNotOptimize(g.p.data());
  }
  per_price(st);
}
void BM_s30ba(benchmark::State &st) {
  grid g;
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30bac(Zem_ColMajor, Zem_Call, M, N, g.smin.data(), S, g.t.data(), SIGMA, R, Q, g.p.data(), M, &fail);
    benchmark::DoNotOptimize(g.p.data());
  }
  per_price(st);
}
void BM_s30bb(benchmark::State &st) {
  grid g;
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30bbc(Zem_ColMajor, Zem_Call, M, N, g.smin.data(), S, g.t.data(), SIGMA, R, Q, g.p.data(), M, g.g[0].data(),
           g.g[1].data(), g.g[2].data(), g.g[3].data(), g.g[4].data(), &fail);
    benchmark::DoNotOptimize(g.p.data());
  }
  per_price(st);
}
void BM_s30cb(benchmark::State &st) {
  grid g;
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30cbc(Zem_ColMajor, Zem_Call, M, N, g.x.data(), S, g.t.data(), SIGMA, R, Q, 1.0, g.p.data(), M, g.g[0].data(),
           g.g[1].data(), g.g[2].data(), g.g[3].data(), g.g[4].data(), &fail);
    benchmark::DoNotOptimize(g.p.data());
  }
  per_price(st);
}
void BM_s30fa(benchmark::State &st) {
  grid g;
  Zem_Fail fail = ZEM_FAIL_INIT;
  const Zem_BarrierType bt = st.range(0) ? Zem_DownandIn : Zem_DownandOut;
  for (auto _ : st) {
    s30fac(Zem_ColMajor, Zem_Call, bt, M, N, g.x.data(), S, 80.0, 1.0, g.t.data(), SIGMA, R, Q, g.p.data(), M, &fail);
    benchmark::DoNotOptimize(g.p.data());
  }
  per_price(st);
}
void BM_s30qc(benchmark::State &st) {
  grid g;
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30qcc(Zem_ColMajor, Zem_Put, M, N, g.x.data(), S, g.t.data(), SIGMA, R, Q, g.p.data(), M, &fail);
    benchmark::DoNotOptimize(g.p.data());
  }
  per_price(st);
}

}  // namespace

BENCHMARK(BM_s30aa);
BENCHMARK(BM_s30ba);
BENCHMARK(BM_s30bb);
BENCHMARK(BM_s30cb);
BENCHMARK(BM_s30fa)->Arg(0)->Arg(1);
BENCHMARK(BM_s30qc);
BENCHMARK_MAIN();
