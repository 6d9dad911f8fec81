// The cost of one option setting by name (e04zmc) and one read-back
// (e04znc), through the public C entries: entry layers, handle validation,
// the constant-time name look-up, conversion and bound check.  The strings
// cover the four kinds of option and the registry's first, a middle and
// its last names (the look-up does not depend on the position).
//   build-bench/bench/e04/bench_e04_options --benchmark_repetitions=5
#include <benchmark/benchmark.h>

#include <zem.h>

namespace {

struct handle_holder {
  void *handle = nullptr;
  handle_holder() {
    Zem_Fail fail = ZEM_FAIL_INIT;
    e04rac(&handle, 10, &fail);
  }
  ~handle_holder() {
    Zem_Fail fail = ZEM_FAIL_INIT;
    e04rzc(&handle, &fail);
  }
};

const char *const settings[] = {
    "Outer Iteration Limit = 50",             // integer, first in the registry
    "Infinite Bound Size = 1.0e21",           // real
    "Task = Maximize",                        // keyword
    "SSQP Proximal Point Method Nrm = 2",     // a 30-character name
    "nldf monitor frequency = 7",             // last, lower case
};

void BM_e04zmc(benchmark::State &state) {
  handle_holder h;
  Zem_Fail fail = ZEM_FAIL_INIT;
  const char *s = settings[state.range(0)];
  for (auto _ : state) {
    e04zmc(h.handle, s, &fail);
    benchmark::DoNotOptimize(fail.code);
  }
  if (fail.code != NE_NOERROR) state.SkipWithError("e04zmc failed");
  state.SetLabel(s);
}
BENCHMARK(BM_e04zmc)->DenseRange(0, 4);

void BM_e04znc(benchmark::State &state) {
  handle_holder h;
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t ivalue = 0, optype = 0;
  double rvalue = 0.0;
  char cvalue[32];
  for (auto _ : state) {
    e04znc(h.handle, "Infinite Bound Size", &ivalue, &rvalue, cvalue, 32, &optype, &fail);
    benchmark::DoNotOptimize(rvalue);
  }
}
BENCHMARK(BM_e04znc);

// The same setting refused (unknown name): the failure path composes the
// message and fills the fail record.
void BM_e04zmc_unknown(benchmark::State &state) {
  handle_holder h;
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (auto _ : state) {
    e04zmc(h.handle, "Print Levels = 1", &fail);
    benchmark::DoNotOptimize(fail.code);
  }
}
BENCHMARK(BM_e04zmc_unknown);

}  // namespace

BENCHMARK_MAIN();
