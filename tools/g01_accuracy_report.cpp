// Accuracy report of g01ea, g01fa, s15ad and s15ae against the reference
// tables: the largest error in units in the last place (ULP) per tail and
// region, as docs/g01ea.md, docs/g01fa.md, docs/s15ad.md and docs/s15ae.md
// show it.  Each error is split by the extra reference columns:
//   g01ea  "vs formula": against the exact formula at the rounded argument
//          fl(x c), i.e. the error of erfc/erf themselves; "argument": the
//          effect of rounding x c (and of c itself), formula - exact.
//   g01fa  "vs inverse": against the exact inverse at the argument the routine
//          forms (the kernel's error); "vs AS 241": against AS 241 evaluated
//          exactly (the rounding of its evaluation); "approximation": AS 241
//          exact - true inverse (the published approximation's error);
//          "argument": the effect of rounding 0.5 p + 0.5 ('C' only).
//
// Usage: g01_accuracy_report [the tests/ directory holding g01/data and s15/data]
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "g01/g01ea.h"
#include "g01/g01fa.h"
#include "s15/s15ad.h"
#include "s15/s15ae.h"
#include "tests/g01/reference_data.h"

namespace {

using namespace zem::test;

struct split {
  error_summary total, kernel, rounding, approximation, argument;
  double lo = 1e308;   // smallest input of the region, to order the rows
  double max_rel = 0;  // largest relative error against the exact value
};

const char *tail_order = "LUSC";

// Rows in the order of the tails L, U, S, C, then of the regions' inputs.
std::vector<std::pair<std::pair<char, std::string>, const split *>> ordered(
    const std::map<std::pair<char, std::string>, split> &t) {
  std::vector<std::pair<std::pair<char, std::string>, const split *>> v;
  for (const auto &[k, s] : t) v.push_back({k, &s});
  std::sort(v.begin(), v.end(), [](const auto &x, const auto &y) {
    const auto tx = std::strchr(tail_order, x.first.first), ty = std::strchr(tail_order, y.first.first);
    return tx != ty ? tx < ty : x.second->lo < y.second->lo;
  });
  return v;
}



void report_probabilities(const std::string &dir) {
  std::map<std::pair<char, std::string>, split> t;
  for (const auto &r : read_reference(dir + "/g01/data/g01ea_reference.txt", true)) {
    engine_data en{};
    char errbuf[200];
    int64_t ifail = -1;
    double p = 0.0;
    g01eafn_(&en, &r.tail, &r.input, &p, errbuf, &ifail, 1);
    auto &s = t[{r.tail, r.region}];
    s.lo = std::min(s.lo, r.input);
    s.total.add(ulp_error(p, r.exact), r.input);
    s.kernel.add(ulp_error(p, r.formula), r.input);
    s.argument.add(ulp_error(r.formula, r.exact), r.input);
  }
  // "bound": 1.8 (2 z^2 + 2) + 3 units at the worst x, z = |x| / sqrt(2):
  // the argument's relative error (at most 1.8 2^-53) times the sensitivity
  // of erfc, plus three units for erfc itself (tests/g01/g01ea_test.cpp).
  std::printf("| tail | x in | points | max ULP | worst x | vs formula | argument | bound |\n");
  std::printf("|---|---|---:|---:|---:|---:|---:|---:|\n");
  for (const auto &[k, s] : ordered(t)) {
    const double z = std::fabs(s->total.worst_input) * 0.7071067811865476;
    std::printf("| %c | %s | %ld | %.2f | %.17g | %.2f | %.2f | %.0f |\n", k.first, k.second.c_str(),
                s->total.count, s->total.max_ulp, s->total.worst_input, s->kernel.max_ulp, s->argument.max_ulp,
                1.8 * (2.0 * z * z + 2.0) + 3.0);
  }
}

void report_deviates(const std::string &dir) {
  std::map<std::pair<char, std::string>, split> t;
  for (const auto &r : read_reference(dir + "/g01/data/g01fa_reference.txt", true)) {
    engine_data en{};
    char errbuf[200];
    int64_t ifail = -1;
    double x = 0.0;
    g01fafn_(&en, &r.tail, &r.input, &x, errbuf, &ifail, 1);
    auto &s = t[{r.tail, r.region}];
    s.lo = std::min(s.lo, r.input);
    s.max_rel = std::max(s.max_rel, relative_error(x, r.exact));
    s.total.add(ulp_error(x, r.exact), r.input);
    s.kernel.add(ulp_error(x, r.formula), r.input);
    s.rounding.add(ulp_error(x, r.as241), r.input);
    s.approximation.add(ulp_error(r.as241, r.formula), r.input);
    s.argument.add(ulp_error(r.formula, r.exact), r.input);
  }
  std::printf("| tail | p in | points | max ULP | max rel. error | worst p | vs inverse | vs AS 241 | "
              "approximation | argument |\n");
  std::printf("|---|---|---:|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const auto &[k, s] : ordered(t))
    std::printf("| %c | %s | %ld | %.3g | %.2g | %.17g | %.2f | %.2f | %.2f | %.3g |\n", k.first, k.second.c_str(),
                s->total.count, s->total.max_ulp, s->max_rel, s->total.worst_input, s->kernel.max_ulp,
                s->rounding.max_ulp, s->approximation.max_ulp, s->argument.max_ulp);
}

template <typename Worker>
void report_function(const std::string &path, Worker worker) {
  std::map<std::pair<char, std::string>, split> t;
  for (const auto &r : read_reference(path, false)) {
    engine_data en{};
    char errbuf[200];
    int64_t ifail = -1;
    double y = 0.0;
    worker(&en, &r.input, &y, errbuf, &ifail);
    auto &s = t[{'L', r.region}];
    s.lo = std::min(s.lo, r.input);
    s.total.add(ulp_error(y, r.exact), r.input);
  }
  std::printf("| x in | points | max ULP | worst x |\n|---|---:|---:|---:|\n");
  for (const auto &[k, s] : ordered(t))
    std::printf("| %s | %ld | %.2f | %.17g |\n", k.second.c_str(), s->total.count, s->total.max_ulp,
                s->total.worst_input);
}

}  // namespace

int main(int argc, char **argv) {
  const std::string dir = argc > 1 ? argv[1] : ZEM_SOURCE_DIR "/tests";
  // Each table is introduced by a line <!-- table:<key> --> for
  // tools/doc_tables.py, which puts it into the routine's page.
  std::printf("<!-- tables by: build/tests/g01/g01_accuracy_report -->\n<!-- table:g01ea-accuracy -->\n");
  report_probabilities(dir);
  std::printf("\n<!-- table:g01fa-accuracy -->\n");
  report_deviates(dir);
  std::printf("\n<!-- table:s15ad-accuracy -->\n");
  report_function(dir + "/s15/data/s15ad_reference.txt", s15adfn_);
  std::printf("\n<!-- table:s15ae-accuracy -->\n");
  report_function(dir + "/s15/data/s15ae_reference.txt", s15aefn_);
  return 0;
}
