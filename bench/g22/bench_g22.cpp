// Building design matrices of 10^6 observations: g22ycc for a few model
// formulae over one data set (A, B, C categorical of 3, 4 and 5 levels, x
// and z continuous), each beside a plain loop that stores the same number
// of columns (the memory bound of any way to write the matrix), and beside
// R's model.matrix for the same formula on the same data (added to this
// program's JSON by bench/g22/g22_model_matrix.py, run after it in the
// same session).
//
//   bench_g22 [--write-data FILE] [Google Benchmark options]
//
// g22ycc is called with the formula and data handles made once; the design
// matrix description is made anew by every call, as a user's call makes
// it.  The counter zem_peak_alloc_bytes is the most heap the call held at
// once beyond what was held on entry (every operator new of the process is
// counted, the library's included), measured on one call before the timing:
// the matrix is the caller's, so the library's own use should be a small
// constant.  The JSON's context names the formulae (g22_designs, separated
// by ';') and the number of observations (g22_nobs), so that the R script
// times the very same designs.  --write-data writes the data for it: one
// observation after another, five doubles each (A, B, C as level numbers
// 1..L, then x and z).
#include <benchmark/benchmark.h>
#include <zem.h>

#include "zem_bench.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

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
constexpr int64_t nvar = 5;

// The formulae, in the syntax both this library and R read alike (the
// default contrast, FIRST, is R's treatment contrast).
const char *const designs[] = {"A + B + C + x", "A*B + x", "(A + B + x)^2", "x*z + C"};

struct data_set {
  std::vector<double> dat;  // n by nvar, one observation a row (column-major)
  void *hddesc = nullptr;
  data_set() : dat(nvar * n) {
    for (int64_t i = 0; i < n; ++i) {
      const uint64_t h = (static_cast<uint64_t>(i + 1) * 2654435761u) % 4294967296u;
      dat[i] = static_cast<double>(h % 3 + 1);
      dat[n + i] = static_cast<double>((h >> 8) % 4 + 1);
      dat[2 * n + i] = static_cast<double>((h >> 16) % 5 + 1);
      dat[3 * n + i] = std::sin(static_cast<double>(i));
      dat[4 * n + i] = std::cos(0.5 * static_cast<double>(i));
    }
    const int64_t levels[] = {3, 4, 5, 1, 1};
    const char *names[] = {"A", "B", "C", "x", "z"};
    Zem_Fail fail = ZEM_FAIL_INIT;
    g22ybc(&hddesc, n, nvar, levels, nvar, names, &fail);
    if (fail.code != NE_NOERROR) std::abort();
  }
};

data_set &the_data() {
  static data_set d;
  return d;
}

struct design {
  void *hform = nullptr, *hxdesc = nullptr;
  int64_t mx = 0;
  std::vector<double> x;
  double peak_alloc = 0;

  explicit design(const char *formula) {
    data_set &d = the_data();
    Zem_Fail fail = ZEM_FAIL_INIT;
    g22yac(&hform, formula, &fail);
    if (fail.code != NE_NOERROR) std::abort();
    g22ycc(hform, d.hddesc, d.dat.data(), n, nvar, &hxdesc, nullptr, 0, 0, &mx, &fail);  // size query
    x.assign(static_cast<size_t>(n * mx), 0.0);  // faulted in before timing
    // One call with the heap watched (the description handle of the size
    // query is released by it, as in use).
    const long long before = live.load();
    peak.store(before);
    if (build() != 0) std::abort();
    peak_alloc = static_cast<double>(peak.load() - before);
  }
  int build() {
    data_set &d = the_data();
    Zem_Fail fail = ZEM_FAIL_INIT;
    int64_t m = 0;
    g22ycc(hform, d.hddesc, d.dat.data(), n, nvar, &hxdesc, x.data(), n, mx, &m, &fail);
    return fail.code != NE_NOERROR || m != mx;
  }
};

}  // namespace

int main(int argc, char **argv) {
  if (argc >= 3 && std::strcmp(argv[1], "--write-data") == 0) {
    data_set &d = the_data();
    FILE *f = std::fopen(argv[2], "wb");
    if (!f) return 1;
    for (int64_t i = 0; i < n; ++i) {
      double row[nvar];
      for (int64_t j = 0; j < nvar; ++j) row[j] = d.dat[j * n + i];
      if (std::fwrite(row, sizeof row, 1, f) != 1) return 1;
    }
    return std::fclose(f) == 0 ? 0 : 1;
  }
  std::string names;
  for (const char *formula : designs) {
    auto *dsg = new design(formula);  // lives as long as the program
    const std::string group = "design " + std::string(formula) + ", " + std::to_string(dsg->mx) + " columns";
    zem_bench::add(group, "g22ycc", 1, [dsg] { return double(dsg->build()) + dsg->x[0]; },
                   {{"zem_peak_alloc_bytes", dsg->peak_alloc}})
        ->Unit(benchmark::kMillisecond);
    zem_bench::add(group, "plain store of the columns", 1, [dsg] {
      const double *src = the_data().dat.data();
      double *x = dsg->x.data();
      for (int64_t c = 0; c < dsg->mx; ++c)
        for (int64_t i = 0; i < n; ++i) x[c * n + i] = src[(c % nvar) * n + i];
      benchmark::ClobberMemory();
      return x[n - 1];
    })->Unit(benchmark::kMillisecond);
    if (!names.empty()) names += ';';
    names += formula;
  }
  benchmark::AddCustomContext("g22_designs", names);
  benchmark::AddCustomContext("g22_nobs", std::to_string(n));
  return zem_bench::run(argc, argv, "g22");
}
