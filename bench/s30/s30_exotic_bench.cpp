// The exotic closed forms on a 100 by 100 grid (strikes 50 to 150, minima
// so far 50 to 100, expiries of 18 to 1825 days), s = 100, sigma = 0.25,
// r = 0.03, q = 0.01: time per price and agreement with QuantLib's
// analytic engines (libquantlib0-dev, here only) at the same settings, one
// option object per price as that library is used.  Expiries are whole
// days under Actual/365 (fixed), so both sides see the same t = days/365,
// flat continuously compounded rates and a constant volatility.
//
// Groups: "per price" (ours beside s30aa: the cost of each closed form
// against the European one) and one group per product (ours, then the
// peer), with the counter zem_max_rel_diff: the largest relative
// difference between the two over the grid where the peer's price exceeds
// 1e-8 (far out of the money the peer's own rounding dominates), and
// zem_prices, the number of prices compared.
//
// Usage: s30_exotic_bench [--benchmark_* options]   (bench/zem_bench.h)
#include <zem.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <ql/exercise.hpp>
#include <ql/instruments/barrieroption.hpp>
#include <ql/instruments/lookbackoption.hpp>
#include <ql/instruments/vanillaoption.hpp>
#include <ql/pricingengines/barrier/analyticbarrierengine.hpp>
#include <ql/pricingengines/lookback/analyticcontinuousfloatinglookback.hpp>
#include <ql/pricingengines/vanilla/analyticeuropeanengine.hpp>
#include <ql/pricingengines/vanilla/bjerksundstenslandengine.hpp>
#include <ql/processes/blackscholesprocess.hpp>
#include <ql/quotes/simplequote.hpp>
#include <ql/settings.hpp>
#include <ql/termstructures/volatility/equityfx/blackconstantvol.hpp>
#include <ql/termstructures/yield/flatforward.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>

#include "zem_bench.h"

namespace {

constexpr int64_t M = 100, N = 100;
constexpr double S = 100.0, SIGMA = 0.25, R = 0.03, Q = 0.01, K = 1.0, H_DOWN = 80.0;

struct grid {
  std::vector<double> x, smin, t;
  std::vector<int> days;
  grid() : x(M), smin(M), t(N), days(N) {
    for (int64_t i = 0; i < M; ++i) x[i] = 50.0 + 100.0 * i / M, smin[i] = 50.0 + 50.0 * i / M;
    for (int64_t j = 0; j < N; ++j) days[j] = 18 + int(j * 1807 / (N - 1)), t[j] = days[j] / 365.0;
  }
};
const grid G;

// One product: our grid call (column-major, m = M strikes or minima by N
// expiries into p) and the peer's instrument for element (i, j).
using ours_fn = std::function<void(double *p)>;
using peer_fn = std::function<QuantLib::ext::shared_ptr<QuantLib::Instrument>(int64_t i, int64_t j)>;

struct product {
  const char *group, *ours, *peer;
  ours_fn run;
  peer_fn make;
};

QuantLib::Date today() { return QuantLib::Date(15, QuantLib::January, 2025); }
QuantLib::Date expiry(int64_t j) { return today() + QuantLib::Period(G.days[j], QuantLib::Days); }

// The market both sides see.
struct market {
  QuantLib::ext::shared_ptr<QuantLib::SimpleQuote> spot = QuantLib::ext::make_shared<QuantLib::SimpleQuote>(S);
  QuantLib::ext::shared_ptr<QuantLib::BlackScholesMertonProcess> process;
  market() {
    using namespace QuantLib;
    Settings::instance().evaluationDate() = today();
    const DayCounter dc = Actual365Fixed();
    Handle<YieldTermStructure> rts(QuantLib::ext::make_shared<FlatForward>(today(), R, dc, Continuous));
    Handle<YieldTermStructure> qts(QuantLib::ext::make_shared<FlatForward>(today(), Q, dc, Continuous));
    Handle<BlackVolTermStructure> vts(QuantLib::ext::make_shared<BlackConstantVol>(today(), NullCalendar(), SIGMA, dc));
    process = QuantLib::ext::make_shared<BlackScholesMertonProcess>(Handle<Quote>(spot), qts, rts, vts);
  }
};
market &mk() {
  static market m;
  return m;
}

std::vector<product> products() {
  using namespace QuantLib;
  Zem_Fail *f = nullptr;  // errors are not expected on this grid
  auto euro = QuantLib::ext::make_shared<AnalyticEuropeanEngine>(mk().process);
  auto lookback = QuantLib::ext::make_shared<AnalyticContinuousFloatingLookbackEngine>(mk().process);
  auto barrier = QuantLib::ext::make_shared<AnalyticBarrierEngine>(mk().process);
  auto american = QuantLib::ext::make_shared<BjerksundStenslandApproximationEngine>(mk().process);
  auto with = [](ext::shared_ptr<Instrument> o, const ext::shared_ptr<PricingEngine> &e) {
    o->setPricingEngine(e);
    return o;
  };
  auto bar = [=](Barrier::Type type) {
    return [=](int64_t i, int64_t j) -> ext::shared_ptr<Instrument> {
      return with(QuantLib::ext::make_shared<BarrierOption>(type, H_DOWN, K, QuantLib::ext::make_shared<PlainVanillaPayoff>(Option::Call, G.x[i]),
                                                  QuantLib::ext::make_shared<EuropeanExercise>(expiry(j))),
                  barrier);
    };
  };
  return {
      {"cash-or-nothing call", "s30cac", "QuantLib AnalyticEuropeanEngine",
       [=](double *p) { s30cac(Zem_ColMajor, Zem_Call, M, N, G.x.data(), S, G.t.data(), SIGMA, R, Q, K, p, M, f); },
       [=](int64_t i, int64_t j) -> ext::shared_ptr<Instrument> {
         return with(QuantLib::ext::make_shared<VanillaOption>(QuantLib::ext::make_shared<CashOrNothingPayoff>(Option::Call, G.x[i], K),
                                                     QuantLib::ext::make_shared<EuropeanExercise>(expiry(j))),
                     euro);
       }},
      {"floating lookback call", "s30bac", "QuantLib AnalyticContinuousFloatingLookbackEngine",
       [=](double *p) { s30bac(Zem_ColMajor, Zem_Call, M, N, G.smin.data(), S, G.t.data(), SIGMA, R, Q, p, M, f); },
       [=](int64_t i, int64_t j) -> ext::shared_ptr<Instrument> {
         return with(QuantLib::ext::make_shared<ContinuousFloatingLookbackOption>(G.smin[i],
                                                                        QuantLib::ext::make_shared<FloatingTypePayoff>(Option::Call),
                                                                        QuantLib::ext::make_shared<EuropeanExercise>(expiry(j))),
                     lookback);
       }},
      {"down-and-out call, h 80, rebate 1", "s30fac", "QuantLib AnalyticBarrierEngine",
       [=](double *p) {
         s30fac(Zem_ColMajor, Zem_Call, Zem_DownandOut, M, N, G.x.data(), S, H_DOWN, K, G.t.data(), SIGMA, R, Q, p, M, f);
       },
       bar(Barrier::DownOut)},
      {"down-and-in call, h 80, rebate 1", "s30fac", "QuantLib AnalyticBarrierEngine",
       [=](double *p) {
         s30fac(Zem_ColMajor, Zem_Call, Zem_DownandIn, M, N, G.x.data(), S, H_DOWN, K, G.t.data(), SIGMA, R, Q, p, M, f);
       },
       bar(Barrier::DownIn)},
      {"American put (Bjerksund-Stensland 1993)", "s30qcc", "QuantLib BjerksundStenslandApproximationEngine",
       [=](double *p) { s30qcc(Zem_ColMajor, Zem_Put, M, N, G.x.data(), S, G.t.data(), SIGMA, R, Q, p, M, f); },
       [=](int64_t i, int64_t j) -> ext::shared_ptr<Instrument> {
         return with(QuantLib::ext::make_shared<VanillaOption>(QuantLib::ext::make_shared<PlainVanillaPayoff>(Option::Put, G.x[i]),
                                                     QuantLib::ext::make_shared<AmericanExercise>(today(), expiry(j))),
                     american);
       }},
  };
}

// Registers ours and the peer for one product, the agreement measured once
// beforehand.
void add_product(const product &pr) {
  std::vector<double> ours(M * N);
  pr.run(ours.data());
  std::vector<QuantLib::ext::shared_ptr<QuantLib::Instrument>> peer;
  double worst = 0;
  int64_t compared = 0;
  for (int64_t j = 0; j < N; ++j)
    for (int64_t i = 0; i < M; ++i) {
      peer.push_back(pr.make(i, j));
      // An option the peer holds for expired (an evaluation date it does
      // not see: bench/s30/CMakeLists.txt) would be priced at 0 in no time.
      if (peer.back()->isExpired()) {
        std::fprintf(stderr, "s30_exotic_bench: the peer holds the options expiring in %d days as expired\n",
                     G.days[j]);
        std::exit(1);
      }
      const double ref = peer.back()->NPV();
      if (!(std::fabs(ref) > 1e-8)) continue;
      ++compared;
      worst = std::fmax(worst, std::fabs(ours[i + j * M] - ref) / std::fabs(ref));
    }
  const std::vector<std::pair<std::string, double>> agree = {{"zem_max_rel_diff", worst},
                                                              {"zem_prices", double(compared)}};
  auto buf = std::make_shared<std::vector<double>>(M * N);
  zem_bench::add(pr.group, pr.ours, M * N, [run = pr.run, buf] {
    run(buf->data());
    return (*buf)[M * N / 2];
  }, agree);
  zem_bench::add(pr.group, pr.peer, M * N, [peer] {
    // A new spot each round, so that every option recomputes.
    auto &spot = *mk().spot;
    spot.setValue(spot.value() == S ? S + 1e-9 : S);
    double sum = 0;
    for (auto &o : peer) sum += o->NPV();
    return sum;
  }, agree);
}

// Ours side by side with s30aa on the same grid (the sensitivity routines
// among them).
void add_per_price() {
  struct entry {
    const char *name;
    std::function<void(std::vector<double> *a)> run;
  };
  Zem_Fail *f = nullptr;
  const entry entries[] = {
      {"s30aac European call",
       [=](std::vector<double> *a) { s30aac(Zem_ColMajor, Zem_Call, M, N, G.x.data(), S, G.t.data(), SIGMA, R, Q, a[0].data(), M, f); }},
      {"s30bac lookback call",
       [=](std::vector<double> *a) { s30bac(Zem_ColMajor, Zem_Call, M, N, G.smin.data(), S, G.t.data(), SIGMA, R, Q, a[0].data(), M, f); }},
      {"s30bbc lookback call, 5 sensitivities",
       [=](std::vector<double> *a) {
         s30bbc(Zem_ColMajor, Zem_Call, M, N, G.smin.data(), S, G.t.data(), SIGMA, R, Q, a[0].data(), M, a[1].data(),
                a[2].data(), a[3].data(), a[4].data(), a[5].data(), f);
       }},
      {"s30cbc binary call, 5 sensitivities",
       [=](std::vector<double> *a) {
         s30cbc(Zem_ColMajor, Zem_Call, M, N, G.x.data(), S, G.t.data(), SIGMA, R, Q, K, a[0].data(), M, a[1].data(),
                a[2].data(), a[3].data(), a[4].data(), a[5].data(), f);
       }},
      {"s30fac down-and-out call",
       [=](std::vector<double> *a) {
         s30fac(Zem_ColMajor, Zem_Call, Zem_DownandOut, M, N, G.x.data(), S, H_DOWN, K, G.t.data(), SIGMA, R, Q,
                a[0].data(), M, f);
       }},
      {"s30qcc American put",
       [=](std::vector<double> *a) { s30qcc(Zem_ColMajor, Zem_Put, M, N, G.x.data(), S, G.t.data(), SIGMA, R, Q, a[0].data(), M, f); }},
  };
  for (const entry &e : entries) {
    auto arrays = std::make_shared<std::vector<std::vector<double>>>(6, std::vector<double>(M * N));
    zem_bench::add("per price", e.name, M * N, [run = e.run, arrays] {
      run(arrays->data());
      return (*arrays)[0][M * N / 2];
    });
  }
}

}  // namespace

int main(int argc, char **argv) {
  add_per_price();
  for (const product &p : products()) add_product(p);
  return zem_bench::run(argc, argv, "s30-exotic");
}
