// The one benchmark harness of bench/: every program registers its
// contenders with Google Benchmark and runs them through zem_bench::run,
// which gives the same defaults everywhere (any --benchmark_* argument on
// the command line overrides them):
//   --benchmark_repetitions=9                 nine measurements of each
//   --benchmark_enable_random_interleaving    repetitions of all contenders
//                                             shuffled, so that a noisy
//                                             machine slows them alike
//   --benchmark_display_aggregates_only       the console shows mean, median,
//                                             stddev and cv; the file keeps
//                                             every repetition
//   --benchmark_out=<program>.json            (JSON, in the working directory)
// tools/bench_report.py turns the JSON files into the tables of
// docs/benchmarks.md and the charts of docs/figures/.
//
// Names: "<group>/<contender>", ours registered first in each group; the
// counter "items" says how many calls (solves, values) one iteration makes,
// so that the report can give the time per item.  Times are CPU times of the
// (single-threaded) process: on a shared machine they are far steadier than
// wall-clock times, which count the time other processes held the core.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zem_bench {

// One iteration runs `body` once; it does `items` items of work and returns
// a checksum (kept from the optimiser).
inline benchmark::internal::Benchmark *add(const std::string &group, const std::string &contender, int64_t items,
                                           std::function<double()> body,
                                           std::vector<std::pair<std::string, double>> counters = {}) {
  return benchmark::RegisterBenchmark(
             (group + "/" + contender).c_str(),
             [body = std::move(body), items, counters](benchmark::State &state) {
               for (auto _ : state) {
                 double sink = body();
                 benchmark::DoNotOptimize(sink);
               }
               state.SetItemsProcessed(state.iterations() * items);
               state.counters["items"] = double(items);
               for (const auto &[name, value] : counters) state.counters[name] = value;
             });
}

// Runs what is registered with the harness's defaults; returns main's status.
inline int run(int argc, char **argv, const char *chapter) {
  std::vector<std::string> args(argv, argv + argc);
  auto given = [&](const char *flag) {
    for (const auto &a : args)
      if (a.rfind(flag, 0) == 0) return true;
    return false;
  };
  std::string program = args[0].substr(args[0].find_last_of('/') + 1);
  if (!given("--benchmark_repetitions")) args.push_back("--benchmark_repetitions=9");
  if (!given("--benchmark_enable_random_interleaving")) args.push_back("--benchmark_enable_random_interleaving=true");
  if (!given("--benchmark_display_aggregates_only") && !given("--benchmark_report_aggregates_only"))
    args.push_back("--benchmark_display_aggregates_only=true");
  if (!given("--benchmark_out=")) {
    args.push_back("--benchmark_out=" + program + ".json");
    if (!given("--benchmark_out_format")) args.push_back("--benchmark_out_format=json");
  }
  std::vector<char *> ptrs;
  for (auto &a : args) ptrs.push_back(a.data());
  int n = static_cast<int>(ptrs.size());
  benchmark::AddCustomContext("zem_chapter", chapter);
  benchmark::AddCustomContext("zem_program", program);
  benchmark::Initialize(&n, ptrs.data());
  if (benchmark::ReportUnrecognizedArguments(n, ptrs.data())) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace zem_bench
