// Speed of s30na (Heston by quadrature) and s30ja (Merton's jump diffusion)
// per price, against QuantLib's analytic Heston engine (adaptive
// Gauss-Lobatto at a relative tolerance of 1e-12, and its default
// Gauss-Laguerre rule of order 144) and its jump-diffusion engine (relative
// accuracy 1e-12), on the same 10 strikes by 4 expiries.  The counter
// zem_max_diff is the largest absolute difference of the peer's prices from
// ours over the grid (computed once, outside the timing), so that the
// speeds are read at a known accuracy; the program stops if the peer holds
// any option for expired (an evaluation date the peer does not see, as
// under hidden visibility: bench/s30/CMakeLists.txt), which it would price
// at 0 in no time.
//
// Usage: s30_models_bench (harness defaults of bench/zem_bench.h)
#include <benchmark/benchmark.h>
#include <zem.h>

#include "zem_bench.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <ql/exercise.hpp>
#include <ql/instruments/vanillaoption.hpp>
#include <ql/models/equity/hestonmodel.hpp>
#include <ql/pricingengines/vanilla/analytichestonengine.hpp>
#include <ql/pricingengines/vanilla/jumpdiffusionengine.hpp>
#include <ql/processes/hestonprocess.hpp>
#include <ql/processes/merton76process.hpp>
#include <ql/quotes/simplequote.hpp>
#include <ql/settings.hpp>
#include <ql/termstructures/volatility/equityfx/blackconstantvol.hpp>
#include <ql/termstructures/yield/flatforward.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>

namespace {

constexpr int64_t M = 10, N = 4;
constexpr double S = 100.0, R = 0.03, Q = 0.01;
constexpr double SIGMAV = 0.3, KAPPA = 1.5, CORR = -0.7, VAR0 = 0.04, ETA = 0.06;
constexpr double SIGMA = 0.25, LAMBDA = 1.0, JVOL = 0.3;

namespace ql = QuantLib;

struct grid {
  std::vector<double> x, t;
  grid() : x(M), t(N) {
    for (int64_t i = 0; i < M; ++i) x[i] = 70.0 + 60.0 * i / (M - 1);
    // Whole numbers of days, so that the peer's day count sees the same t.
    const int days[N] = {73, 182, 365, 730};
    for (int64_t j = 0; j < N; ++j) t[j] = days[j] / 365.0;
  }
};

std::vector<double> zem_heston(const grid &g) {
  std::vector<double> p(M * N);
  Zem_Fail fail = ZEM_FAIL_INIT;
  s30nac(Zem_ColMajor, Zem_Call, M, N, g.x.data(), S, g.t.data(), SIGMAV, KAPPA, CORR, VAR0, ETA, 0.0, R, Q,
         p.data(), M, &fail);
  return p;
}

std::vector<double> zem_jump(const grid &g) {
  std::vector<double> p(M * N);
  Zem_Fail fail = ZEM_FAIL_INIT;
  s30jac(Zem_ColMajor, Zem_Call, M, N, g.x.data(), S, g.t.data(), SIGMA, R, LAMBDA, JVOL, p.data(), M, &fail);
  return p;
}

// The peer's set-up: options priced one by one, as that library is used.
struct peer {
  ql::Date today{15, ql::May, 2026};
  ql::DayCounter dc = ql::Actual365Fixed();
  ql::Handle<ql::Quote> spot{ql::ext::make_shared<ql::SimpleQuote>(S)};
  ql::Handle<ql::YieldTermStructure> rts{ql::ext::make_shared<ql::FlatForward>(today, R, dc)};
  ql::Handle<ql::YieldTermStructure> qts{ql::ext::make_shared<ql::FlatForward>(today, Q, dc)};
  std::vector<ql::ext::shared_ptr<ql::VanillaOption>> options;
  peer(const grid &g) {
    ql::Settings::instance().evaluationDate() = today;
    for (int64_t j = 0; j < N; ++j)
      for (int64_t i = 0; i < M; ++i) {
        auto payoff = ql::ext::make_shared<ql::PlainVanillaPayoff>(ql::Option::Call, g.x[i]);
        auto ex = ql::ext::make_shared<ql::EuropeanExercise>(today + int(std::lround(g.t[j] * 365.0)));
        options.push_back(ql::ext::make_shared<ql::VanillaOption>(payoff, ex));
        if (options.back()->isExpired()) {
          std::fprintf(stderr, "s30_models_bench: the peer holds the option expiring in %d days as expired\n",
                       int(std::lround(g.t[j] * 365.0)));
          std::exit(1);
        }
      }
  }
  void engine(const ql::ext::shared_ptr<ql::PricingEngine> &e) {
    for (auto &o : options) o->setPricingEngine(e);
  }
  double max_diff(const std::vector<double> &p) {
    double d = 0;
    for (size_t k = 0; k < options.size(); ++k) d = std::max(d, std::fabs(options[k]->NPV() - p[k]));
    return d;
  }
};

ql::ext::shared_ptr<ql::HestonModel> heston_model(peer &pr) {
  auto proc = ql::ext::make_shared<ql::HestonProcess>(pr.rts, pr.qts, pr.spot, VAR0, KAPPA, ETA, SIGMAV, CORR);
  return ql::ext::make_shared<ql::HestonModel>(proc);
}

void per_price(benchmark::State &st) { st.counters["items"] = double(M * N); }

void BM_s30na(benchmark::State &st) {
  grid g;
  for (auto _ : st) benchmark::DoNotOptimize(zem_heston(g).data());
  per_price(st);
}

void run_peer(benchmark::State &st, peer &pr, const std::vector<double> &ours) {
  st.counters["zem_max_diff"] = pr.max_diff(ours);
  for (auto _ : st) {
    for (auto &o : pr.options) {
      o->recalculate();
      benchmark::DoNotOptimize(o->NPV());
    }
  }
  per_price(st);
}

void BM_quantlib_heston_lobatto(benchmark::State &st) {
  grid g;
  peer pr(g);
  pr.engine(ql::ext::make_shared<ql::AnalyticHestonEngine>(heston_model(pr), 1e-12, 1000000));
  run_peer(st, pr, zem_heston(g));
}

void BM_quantlib_heston_laguerre144(benchmark::State &st) {
  grid g;
  peer pr(g);
  pr.engine(ql::ext::make_shared<ql::AnalyticHestonEngine>(heston_model(pr), 144));
  run_peer(st, pr, zem_heston(g));
}

void BM_s30ja(benchmark::State &st) {
  grid g;
  for (auto _ : st) benchmark::DoNotOptimize(zem_jump(g).data());
  per_price(st);
}

void BM_quantlib_jump(benchmark::State &st) {
  grid g;
  peer pr(g);
  // The same model: diffusion volatility sqrt(1 - jvol) sigma, log-jump
  // volatility sqrt(jvol sigma^2 / lambda), log-jump mean minus half its
  // variance (jumps of mean relative size zero).
  const double dvol = std::sqrt(1.0 - JVOL) * SIGMA, jv = std::sqrt(JVOL * SIGMA * SIGMA / LAMBDA);
  ql::Handle<ql::BlackVolTermStructure> vol(
      ql::ext::make_shared<ql::BlackConstantVol>(pr.today, ql::NullCalendar(), dvol, pr.dc));
  // Without a dividend yield, as s30ja.
  ql::Handle<ql::YieldTermStructure> q0(ql::ext::make_shared<ql::FlatForward>(pr.today, 0.0, pr.dc));
  auto proc = ql::ext::make_shared<ql::Merton76Process>(
      pr.spot, q0, pr.rts, vol, ql::Handle<ql::Quote>(ql::ext::make_shared<ql::SimpleQuote>(LAMBDA)),
      ql::Handle<ql::Quote>(ql::ext::make_shared<ql::SimpleQuote>(-0.5 * jv * jv)),
      ql::Handle<ql::Quote>(ql::ext::make_shared<ql::SimpleQuote>(jv)));
  pr.engine(ql::ext::make_shared<ql::JumpDiffusionEngine>(proc, 1e-12, 1000));
  run_peer(st, pr, zem_jump(g));
}

}  // namespace

// Groups for tools/bench_report.py (ours first); times per price through
// the counter "items".
int main(int argc, char **argv) {
  const std::string heston = "Heston, per price (10 strikes x 4 expiries)/";
  const std::string jump = "Jump diffusion, per price (10 strikes x 4 expiries)/";
  benchmark::RegisterBenchmark((heston + "s30nac").c_str(), BM_s30na);
  benchmark::RegisterBenchmark((heston + "QuantLib AnalyticHestonEngine, Gauss-Lobatto 1e-12").c_str(),
                               BM_quantlib_heston_lobatto);
  benchmark::RegisterBenchmark((heston + "QuantLib AnalyticHestonEngine, Gauss-Laguerre 144").c_str(),
                               BM_quantlib_heston_laguerre144);
  benchmark::RegisterBenchmark((jump + "s30jac").c_str(), BM_s30ja);
  benchmark::RegisterBenchmark((jump + "QuantLib JumpDiffusionEngine 1e-12").c_str(), BM_quantlib_jump);
  return zem_bench::run(argc, argv, "s30-models");
}
