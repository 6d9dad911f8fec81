// The accuracy tables of docs/s14aa.md and docs/s14ab.md: errors in units in
// the last place against the mpmath tables of tests/s14/data, per region,
// for this library's kernels and, on the same points, the platform's tgamma
// and lgamma.  A program, not a test: build/tests/s14/s14_accuracy_report.
//
// Near the zeros of ln Gamma at 1 and 2 ("near 1", "near 2") the error is
// also given in absolute terms, in units of 2^-53.  Each table is introduced
// by a line <!-- table:<key> --> for tools/doc_tables.py, which puts it into
// the pages (bash tools/accuracy_tables.sh runs both).
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "s14/gamma.h"
#include "tests/g01/reference_data.h"

namespace {

using zem::test::error_summary;

struct column {
  std::map<std::string, error_summary> by_region;
  std::vector<std::string> order;
  void add(const std::string &region, double ulp, double x) {
    if (!by_region.count(region)) order.push_back(region);
    by_region[region].add(ulp, x);
  }
};

template <typename F>
column measure(const std::vector<zem::test::reference_row> &rows, F f, bool absolute) {
  column c;
  for (const auto &r : rows) {
    const double y = f(r.input);
    double e = zem::test::ulp_error(y, r.exact);
    if (absolute && (r.region == "near_1" || r.region == "near_2"))
      e = std::fabs((y - r.exact.hi) - r.exact.units * zem::test::ulp_at(r.exact)) / 0x1p-53;
    c.add(r.region, e, r.input);
  }
  return c;
}

void table(const char *key, const char *title, const std::vector<zem::test::reference_row> &rows, const column &zem,
           const column &libm, const char *libm_name) {
  std::printf("\n<!-- table:%s -->\n%s\n\n| region | points | zem max | zem RMS | zem worst x | %s max | %s RMS |\n"
              "|---|---:|---:|---:|---:|---:|---:|\n", key, title, libm_name, libm_name);
  (void)rows;
  for (const auto &reg : zem.order) {
    const auto &a = zem.by_region.at(reg);
    const auto &b = libm.by_region.at(reg);
    std::printf("| %s | %ld | %.2f | %.2f | %.17g | %.2f | %.2f |\n", reg.c_str(), a.count, a.max_ulp, a.rms(),
                a.worst_input, b.max_ulp, b.rms());
  }
}

}  // namespace

int main(int argc, char **argv) {
  const std::string dir = std::string(argc > 1 ? argv[1] : ZEM_SOURCE_DIR) + "/tests/s14/data/";
  const auto ga = zem::test::read_reference(dir + "s14aa_reference.txt", false);
  const auto lg = zem::test::read_reference(dir + "s14ab_reference.txt", false);
  auto zem_gamma = [](double x) {
    if (std::fabs(x) <= zem::s14::gamma_x_reciprocal) return 1.0 / x;
    return zem::s14::gamma_core(x);
  };
  std::printf("<!-- tables by: build/tests/s14/s14_accuracy_report -->\n");
  table("s14aa-accuracy", "Gamma(x), s14aa (ULP)", ga, measure(ga, zem_gamma, false), measure(ga, [](double x) { return std::tgamma(x); }, false),
        "tgamma");
  table("s14ab-accuracy", "ln Gamma(x), s14ab (ULP; near 1 and 2 absolute, units of 2^-53)", lg,
        measure(lg, [](double x) { return zem::s14::lgamma_core(x); }, true),
        measure(lg, [](double x) { return std::lgamma(x); }, true), "lgamma");
  return 0;
}
