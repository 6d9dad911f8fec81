// The cost of one option setting by name (e04zmc) and one read-back
// (e04znc), through the public C entries: entry layers, handle validation,
// the constant-time name look-up, conversion and bound check.  The strings
// cover the four kinds of option and the registry's first, a middle and
// its last names (the look-up does not depend on the position).
//   build-bench/bench/e04/bench_e04_options   (harness defaults of bench/zem_bench.h)
#include <benchmark/benchmark.h>

#include <zem.h>

#include <string>

#include "zem_bench.h"

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

void BM_e04zmc(benchmark::State &state, int which) {
  handle_holder h;
  Zem_Fail fail = ZEM_FAIL_INIT;
  const char *s = settings[which];
  for (auto _ : state) {
    e04zmc(h.handle, s, &fail);
    benchmark::DoNotOptimize(fail.code);
  }
  if (fail.code != NE_NOERROR) state.SkipWithError("e04zmc failed");
}

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

}  // namespace

// One group for tools/bench_report.py: the setting of each kind of option
// first, then the read-back and the refused setting.
int main(int argc, char **argv) {
  const std::string group = "e04zm/e04zn, one call/";
  const char *kinds[] = {"e04zmc integer (first option)", "e04zmc real", "e04zmc keyword",
                         "e04zmc 30-character name", "e04zmc last option, lower case"};
  for (int i = 0; i < 5; ++i) benchmark::RegisterBenchmark((group + kinds[i]).c_str(), BM_e04zmc, i);
  benchmark::RegisterBenchmark((group + "e04znc read-back").c_str(), BM_e04znc);
  benchmark::RegisterBenchmark((group + "e04zmc unknown name (message composed)").c_str(), BM_e04zmc_unknown);
  return zem_bench::run(argc, argv, "e04-options");
}
