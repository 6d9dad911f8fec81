// Building a design matrix: the model A + B + x + A:B (A of 3 levels, B of
// 4, x continuous), 10^6 observations, 13 columns (104 MB).
//
//   bench_g22 [--write-data FILE] [Google Benchmark options]
//
// g22ycc: the call with the formula and data handles made once (the design
// matrix description is made anew by every call, as a user's call makes it).
// write_13_columns: a plain loop storing 13 x 10^6 doubles (the memory
// bound of any way to write the matrix).  The counter heap_peak_bytes is
// the largest amount of heap the call held beyond what it held on entry
// (operator new and malloc are counted), for the memory claim: the matrix
// is the caller's, and the library's own use should be a small constant.
// --write-data writes the data (3 doubles per observation, one observation
// after another) for tools/g22_bench.sh to hand to R.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#include <zem.h>

// ---- Heap accounting (operator new of the whole process) ----
namespace {
std::atomic<long long> live{0}, peak{0};
void note(long long d) {
  const long long now = live.fetch_add(d) + d;
  long long p = peak.load();
  while (now > p && !peak.compare_exchange_weak(p, now)) {
  }
}
}  // namespace

void *operator new(size_t n) {
  void *p = std::malloc(n + 16);
  if (!p) throw std::bad_alloc();
  *static_cast<size_t *>(p) = n;
  note(static_cast<long long>(n));
  return static_cast<char *>(p) + 16;
}
void operator delete(void *p) noexcept {
  if (!p) return;
  char *b = static_cast<char *>(p) - 16;
  note(-static_cast<long long>(*reinterpret_cast<size_t *>(b)));
  std::free(b);
}
void operator delete(void *p, size_t) noexcept { operator delete(p); }

namespace {

constexpr int64_t n = 1000000;

struct problem {
  std::vector<double> dat;  // n by 3, one observation a row (column-major)
  std::vector<double> x;
  void *hform = nullptr, *hddesc = nullptr, *hxdesc = nullptr;
  problem() : dat(3 * n) {
    for (int64_t i = 0; i < n; ++i) {
      const uint64_t h = (static_cast<uint64_t>(i + 1) * 2654435761u) % 4294967296u;
      dat[i] = static_cast<double>(h % 3 + 1);
      dat[n + i] = static_cast<double>((h >> 8) % 4 + 1);
      dat[2 * n + i] = std::sin(static_cast<double>(i));
    }
    const int64_t levels[] = {3, 4, 1};
    const char *names[] = {"A", "B", "x"};
    Zem_Fail fail = ZEM_FAIL_INIT;
    g22ybc(&hddesc, n, 3, levels, 3, names, &fail);
    g22yac(&hform, "A*B + x", &fail);
    int64_t mx = 0;
    g22ycc(hform, hddesc, dat.data(), n, 3, &hxdesc, nullptr, 0, 0, &mx, &fail);  // size query
    x.assign(static_cast<size_t>(n * mx), 0.0);  // faulted in before timing
  }
};

problem &the_problem() {
  static problem p;
  return p;
}

void g22ycc_design(benchmark::State &state) {
  problem &p = the_problem();
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t mx = 0;
  long long extra = 0;
  for (auto _ : state) {
    const long long before = live.load();
    peak.store(before);
    g22ycc(p.hform, p.hddesc, p.dat.data(), n, 3, &p.hxdesc, p.x.data(), n, 13, &mx, &fail);
    extra = std::max(extra, peak.load() - before);
    benchmark::DoNotOptimize(p.x.data());
  }
  if (fail.code != NE_NOERROR || mx != 13) state.SkipWithError("g22ycc failed");
  state.counters["heap_peak_bytes"] = static_cast<double>(extra);
  state.counters["matrix_bytes"] = static_cast<double>(n * mx * 8);
}
BENCHMARK(g22ycc_design)->Unit(benchmark::kMillisecond)->UseRealTime();

void write_13_columns(benchmark::State &state) {
  problem &p = the_problem();
  for (auto _ : state) {
    double *x = p.x.data();
    for (int64_t c = 0; c < 13; ++c)
      for (int64_t i = 0; i < n; ++i) x[c * n + i] = p.dat[i];
    benchmark::DoNotOptimize(x);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(write_13_columns)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char **argv) {
  if (argc >= 3 && std::strcmp(argv[1], "--write-data") == 0) {
    problem &p = the_problem();
    FILE *f = std::fopen(argv[2], "wb");
    if (!f) return 1;
    for (int64_t i = 0; i < n; ++i) {
      const double row[3] = {p.dat[i], p.dat[n + i], p.dat[2 * n + i]};
      std::fwrite(row, sizeof row, 1, f);
    }
    std::fclose(f);
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
