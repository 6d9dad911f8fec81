// e04kf on the bound-constrained problems of foas_problems.h, n = 10^3,
// 10^5 and 10^6.  Each benchmark is one solve through the handle (creation
// and model set-up outside the timing); its counters are the iterations and
// the objective and gradient evaluations of the solve, its final objective
// "f" and fail code "code" (0: converged), and "eval_s" the
// time the user functions alone take for those evaluations, so that the
// solver's own time per iteration can be compared with the peer's
// (bench_e04kf_lbfgsb.py, SciPy's L-BFGS-B on the same problems, run by
// bench_e04kf_compare.py).  Stopping: projected gradient below 1e-5 in the
// infinity norm, as the peer's pgtol.
#include <chrono>
#include <cstdio>
#include <memory>

#include "foas_problems.h"
#include "zem_bench.h"

extern "C" {
#include "zem.h"
}

namespace {

using foas_bench::problem;

void objfun(int64_t, const double x[], double *fx, int64_t *, Zem_Comm *comm) {
  *fx = foas_bench::f(*static_cast<const problem *>(comm->p), x);
}
void objgrd(int64_t, const double x[], int64_t, double fdx[], int64_t *, Zem_Comm *comm) {
  foas_bench::g(*static_cast<const problem *>(comm->p), x, fdx);
}

struct run_stats {
  double iters = 0, nf = 0, ng = 0, fval = 0;
  int code = 0;
};

// One solve from the problem's start; the handle is built outside.
struct fixture {
  problem p;
  void *h = nullptr;
  std::vector<double> x;
  explicit fixture(problem pr) : p(std::move(pr)), x(p.x0) {
    Zem_Fail f = ZEM_FAIL_INIT;
    e04rac(&h, p.n, &f);
    std::vector<int64_t> idx(p.n);
    for (int64_t i = 0; i < p.n; ++i) idx[i] = i + 1;
    e04rgc(h, p.n, idx.data(), &f);
    e04rhc(h, p.n, p.bl.data(), p.bu.data(), &f);
    e04zmc(h, "Print Level = 0", &f);
    e04zmc(h, "FOAS Stop Tolerance = 1e-5", &f);
  }
  ~fixture() {
    Zem_Fail f = ZEM_FAIL_INIT;
    e04rzc(&h, &f);
  }
  run_stats solve() {
    x = p.x0;
    double rinfo[100], stats[100];
    Zem_Comm comm{};
    comm.p = &p;
    Zem_Fail f = ZEM_FAIL_INIT;
    e04kfc(h, objfun, objgrd, nullptr, p.n, x.data(), rinfo, stats, &comm, &f);
    return {stats[0], stats[1], stats[2], rinfo[0], f.code};
  }
};

// Seconds of nf objective and ng gradient evaluations at the start point.
double eval_seconds(const problem &p, double nf, double ng) {
  std::vector<double> gr(p.n);
  double sink = 0;
  const auto t0 = std::chrono::steady_clock::now();
  const int k = 5;
  for (int r = 0; r < k; ++r) {
    sink += foas_bench::f(p, p.x0.data());
    foas_bench::g(p, p.x0.data(), gr.data());
    sink += gr[0];
  }
  const double per = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count() / k;
  benchmark::DoNotOptimize(sink);
  return per * 0.5 * (nf + ng);  // f and g cost about alike
}

}  // namespace

int main(int argc, char **argv) {
  std::vector<std::shared_ptr<fixture>> keep;
  const struct {
    int kind;
    bool bounded;
  } kinds[] = {{0, false}, {0, true}, {1, false}, {2, true}};
  for (int64_t n : {int64_t{1000}, int64_t{100000}, int64_t{1000000}})
    for (const auto &k : kinds) {
      auto fx = std::make_shared<fixture>(foas_bench::make(k.kind, k.bounded, n));
      keep.push_back(fx);
      const run_stats s = fx->solve();
      std::printf("%s n=%lld: code %d, %g iterations, nf %g, ng %g, f %.10g\n", fx->p.name.c_str(),
                  static_cast<long long>(n), s.code, s.iters, s.nf, s.ng, s.fval);
      zem_bench::add(fx->p.name + "_" + std::to_string(n), "e04kf", 1, [fx] { return fx->solve().fval; },
                     {{"iters", s.iters},
                      {"nf", s.nf},
                      {"ng", s.ng},
                      {"f", s.fval},
                      {"code", static_cast<double>(s.code)},
                      {"eval_s", eval_seconds(fx->p, s.nf, s.ng)}})
          ->Unit(benchmark::kMillisecond);
    }
  return zem_bench::run(argc, argv, "e04kf");
}
