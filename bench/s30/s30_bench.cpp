// Speed of s30aa on a 1000 by 1000 strike-by-expiry grid, against a plain
// loop of the same closed form with std::erfc and against QuantLib's
// analytic European engine (priced option by option, as that library is
// used, on a 100 by 100 part of the grid; the counters give the time per
// price so that the figures compare), and of s30ab against computing its
// price and eleven sensitivities one by one (a pass over the grid for each).
//
// Usage: s30_bench (harness defaults of bench/zem_bench.h); bench/s30/run.sh
// runs it with the numpy/scipy script side by side.
#include <benchmark/benchmark.h>
#include <zem.h>

#include "zem_bench.h"

#include <cmath>
#include <string>
#include <vector>

#include <ql/exercise.hpp>
#include <ql/instruments/vanillaoption.hpp>
#include <ql/pricingengines/vanilla/analyticeuropeanengine.hpp>
#include <ql/processes/blackscholesprocess.hpp>
#include <ql/quotes/simplequote.hpp>
#include <ql/settings.hpp>
#include <ql/termstructures/volatility/equityfx/blackconstantvol.hpp>
#include <ql/termstructures/yield/flatforward.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>

namespace {

constexpr int64_t M = 1000, N = 1000;
constexpr double S = 100.0, SIGMA = 0.25, R = 0.03, Q = 0.01;

struct grid {
  std::vector<double> x, t;
  grid(int64_t m, int64_t n) : x(m), t(n) {
    for (int64_t i = 0; i < m; ++i) x[i] = 50.0 + 100.0 * i / m;
    for (int64_t j = 0; j < n; ++j) t[j] = 0.05 + 5.0 * j / n;
  }
};

void BM_s30aa(benchmark::State &st) {
  grid g(M, N);
  std::vector<double> p(M * N);
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30aac(Zem_ColMajor, Zem_Call, M, N, g.x.data(), S, g.t.data(), SIGMA, R, Q, p.data(), M, &fail);
    benchmark::DoNotOptimize(p.data());
  }
  st.counters["items"] = double(M * N);
}

// The closed form as a plain loop: ln(S/K), both discount factors and the
// Normal through std::erfc for every element.
void BM_plain_erfc(benchmark::State &st) {
  grid g(M, N);
  std::vector<double> p(M * N);
  for (auto _ : st) {
    for (int64_t j = 0; j < N; ++j)
      for (int64_t i = 0; i < M; ++i) {
        const double t = g.t[j], K = g.x[i];
        const double v = SIGMA * std::sqrt(t);
        const double d1 = (std::log(S / K) + (R - Q + 0.5 * SIGMA * SIGMA) * t) / v;
        const double d2 = d1 - v;
        p[i + j * M] = S * std::exp(-Q * t) * 0.5 * std::erfc(-d1 * M_SQRT1_2) -
                       K * std::exp(-R * t) * 0.5 * std::erfc(-d2 * M_SQRT1_2);
      }
    benchmark::DoNotOptimize(p.data());
  }
  st.counters["items"] = double(M * N);
}

void BM_quantlib_analytic(benchmark::State &st) {
  using namespace QuantLib;
  constexpr int64_t m = 100, n = 100;
  grid g(m, n);
  const Date today(15, January, 2025);
  Settings::instance().evaluationDate() = today;
  const DayCounter dc = Actual365Fixed();
  auto spot = ext::make_shared<SimpleQuote>(S);
  Handle<YieldTermStructure> rts(ext::make_shared<FlatForward>(today, R, dc, Continuous));
  Handle<YieldTermStructure> qts(ext::make_shared<FlatForward>(today, Q, dc, Continuous));
  Handle<BlackVolTermStructure> vts(ext::make_shared<BlackConstantVol>(today, NullCalendar(), SIGMA, dc));
  auto process = ext::make_shared<BlackScholesMertonProcess>(Handle<Quote>(spot), qts, rts, vts);
  auto engine = ext::make_shared<AnalyticEuropeanEngine>(process);
  std::vector<ext::shared_ptr<VanillaOption>> options;
  for (int64_t j = 0; j < n; ++j) {
    const Date expiry = today + Period(static_cast<Integer>(std::lround(g.t[j] * 365)), Days);
    for (int64_t i = 0; i < m; ++i) {
      auto o = ext::make_shared<VanillaOption>(ext::make_shared<PlainVanillaPayoff>(Option::Call, g.x[i]),
                                               ext::make_shared<EuropeanExercise>(expiry));
      o->setPricingEngine(engine);
      options.push_back(o);
    }
  }
  double sum = 0;
  for (auto _ : st) {
    // A new spot each round, so that every option recomputes.
    spot->setValue(spot->value() == S ? S + 1e-9 : S);
    for (auto &o : options) sum += o->NPV();
    benchmark::DoNotOptimize(sum);
  }
  st.counters["items"] = double(m * n);
}

constexpr int64_t MG = 300, NG = 300;

void BM_s30ab(benchmark::State &st) {
  grid g(MG, NG);
  std::vector<std::vector<double>> a(12, std::vector<double>(MG * NG));
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : st) {
    s30abc(Zem_ColMajor, Zem_Call, MG, NG, g.x.data(), S, g.t.data(), SIGMA, R, Q, a[0].data(), MG, a[1].data(),
           a[2].data(), a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(), a[8].data(), a[9].data(),
           a[10].data(), a[11].data(), &fail);
    benchmark::DoNotOptimize(a[0].data());
  }
  st.counters["items"] = double(MG * NG);
}

// The price and the eleven sensitivities one by one: a pass over the grid
// for each, every pass forming d1, d2 and what its formula needs.
void BM_greeks_one_by_one(benchmark::State &st) {
  grid g(MG, NG);
  std::vector<std::vector<double>> a(12, std::vector<double>(MG * NG));
  auto pass = [&](int k) {
    for (int64_t j = 0; j < NG; ++j)
      for (int64_t i = 0; i < MG; ++i) {
        const double t = g.t[j], K = g.x[i], st_ = std::sqrt(t), v = SIGMA * st_, b = R - Q;
        const double d1 = (std::log(S / K) + (b + 0.5 * SIGMA * SIGMA) * t) / v, d2 = d1 - v;
        const double dq = std::exp(-Q * t), dr = std::exp(-R * t);
        auto Nf = [](double y) { return 0.5 * std::erfc(-y * M_SQRT1_2); };
        auto phi = [](double y) { return 0.3989422804014327 * std::exp(-0.5 * y * y); };
        const double gam = dq * phi(d1) / (S * v), gt = b / v - d2 / (2 * t);
        double out = 0;
        switch (k) {
          case 0: out = S * dq * Nf(d1) - K * dr * Nf(d2); break;
          case 1: out = dq * Nf(d1); break;
          case 2: out = gam; break;
          case 3: out = S * dq * phi(d1) * st_; break;
          case 4: out = -S * dq * phi(d1) * SIGMA / (2 * st_) + Q * S * dq * Nf(d1) - R * K * dr * Nf(d2); break;
          case 5: out = K * t * dr * Nf(d2); break;
          case 6: out = -dq * phi(d1) * d2 / SIGMA; break;
          case 7: out = Q * dq * Nf(d1) - dq * phi(d1) * gt; break;
          case 8: out = -gam * (d1 / v + 1) / S; break;
          case 9: out = gam * (Q + 0.5 / t + d1 * gt); break;
          case 10: out = gam * (d1 * d2 - 1) / SIGMA; break;
          default: out = S * dq * phi(d1) * st_ * d1 * d2 / SIGMA; break;
        }
        a[k][i + j * MG] = out;
      }
  };
  for (auto _ : st) {
    for (int k = 0; k < 12; ++k) pass(k);
    benchmark::DoNotOptimize(a[0].data());
  }
  st.counters["items"] = double(MG * NG);
}

}  // namespace

// Groups for tools/bench_report.py (ours first); times per price or per
// grid element through the counter "items".  bench/s30/s30_numpy.py adds
// the numpy/scipy contender to the first group of the JSON file.
int main(int argc, char **argv) {
  const char *prices = "s30aa European call, per price (1000 x 1000 grid)";
  const char *greeks = "s30ab price and eleven sensitivities, per element (300 x 300 grid)";
  benchmark::RegisterBenchmark((std::string(prices) + "/s30aac").c_str(), BM_s30aa);
  benchmark::RegisterBenchmark((std::string(prices) + "/plain loop with std::erfc").c_str(), BM_plain_erfc);
  benchmark::RegisterBenchmark((std::string(prices) + "/QuantLib AnalyticEuropeanEngine (100 x 100)").c_str(),
                               BM_quantlib_analytic);
  benchmark::RegisterBenchmark((std::string(greeks) + "/s30abc").c_str(), BM_s30ab);
  benchmark::RegisterBenchmark((std::string(greeks) + "/one pass per sensitivity").c_str(), BM_greeks_one_by_one);
  return zem_bench::run(argc, argv, "s30");
}
