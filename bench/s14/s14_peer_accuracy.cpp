// Errors of the peers on the points of tests/s14/data, beside this
// library's: Gamma (s14aac, glibc tgamma, Boost tgamma, GSL gsl_sf_gamma) and
// ln Gamma (s14abc, glibc lgamma, Boost lgamma, GSL gsl_sf_lngamma) as max and
// RMS units in the last place per region (near the zeros of ln Gamma in
// absolute terms, units of 2^-53); P and Q (s14bac, GSL, Boost) as the
// largest relative error per region of a where the value exceeds 1e-300.
// Usage: s14_peer_accuracy [source root]
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf_gamma.h>
#include <zem.h>

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/g01/reference_data.h"

namespace {

using zem::test::error_summary;

void ulp_table(const char *title, const std::vector<zem::test::reference_row> &rows,
               const std::vector<std::pair<const char *, std::function<double(double)>>> &fns) {
  std::printf("\n%s\n\n| region | points |", title);
  for (const auto &f : fns) std::printf(" %s max | %s RMS |", f.first, f.first);
  std::printf("\n|---|---:|");
  for (size_t i = 0; i < fns.size(); ++i) std::printf("---:|---:|");
  std::printf("\n");
  std::vector<std::string> order;
  std::map<std::string, std::vector<error_summary>> m;
  for (const auto &r : rows) {
    if (!m.count(r.region)) {
      order.push_back(r.region);
      m[r.region].resize(fns.size());
    }
    for (size_t i = 0; i < fns.size(); ++i) {
      const double y = fns[i].second(r.input);
      double e = zem::test::ulp_error(y, r.exact);
      if (r.region == "near_1" || r.region == "near_2")
        e = std::fabs((y - r.exact.hi) - r.exact.units * zem::test::ulp_at(r.exact)) / 0x1p-53;
      if (!std::isfinite(e)) e = 1e300;
      m[r.region][i].add(e, r.input);
    }
  }
  for (const auto &reg : order) {
    std::printf("| %s | %ld |", reg.c_str(), m[reg][0].count);
    for (const auto &s : m[reg]) std::printf(" %.3g | %.3g |", s.max_ulp, s.rms());
    std::printf("\n");
  }
}

}  // namespace

int main(int argc, char **argv) {
  gsl_set_error_handler_off();
  const std::string dir = std::string(argc > 1 ? argv[1] : ZEM_SOURCE_DIR) + "/tests/s14/data/";
  const auto ga = zem::test::read_reference(dir + "s14aa_reference.txt", false);
  const auto lg = zem::test::read_reference(dir + "s14ab_reference.txt", false);
  ulp_table("Gamma(x): errors in ULP", ga,
            {{"s14aac", [](double x) { return s14aac(x, nullptr); }},
             {"glibc", [](double x) { return std::tgamma(x); }},
             {"Boost", [](double x) { return boost::math::tgamma(x); }},
             {"GSL", [](double x) { return gsl_sf_gamma(x); }}});
  ulp_table("ln Gamma(x): errors in ULP (near 1 and 2: absolute, units of 2^-53)", lg,
            {{"s14abc", [](double x) { return s14abc(x, nullptr); }},
             {"glibc", [](double x) { return std::lgamma(x); }},
             {"Boost", [](double x) { return boost::math::lgamma(x); }},
             {"GSL", [](double x) { return gsl_sf_lngamma(x); }}});

  // P and Q.
  std::ifstream in(dir + "s14ba_reference.txt");
  std::map<std::string, std::vector<double>> worst;
  std::vector<std::string> order;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    std::string region, as, xs, ph, pu, qh, qu;
    s >> region >> as >> xs >> ph >> pu >> qh >> qu;
    const double a = std::strtod(as.c_str(), nullptr), x = std::strtod(xs.c_str(), nullptr);
    const zem::test::reference P{std::strtod(ph.c_str(), nullptr), std::strtod(pu.c_str(), nullptr)};
    const zem::test::reference Q{std::strtod(qh.c_str(), nullptr), std::strtod(qu.c_str(), nullptr)};
    if (!worst.count(region)) {
      order.push_back(region);
      worst[region].assign(6, 0.0);
    }
    double p, q;
    s14bac(a, x, 0.0, &p, &q, nullptr);
    double got[6] = {p, q, gsl_sf_gamma_inc_P(a, x), gsl_sf_gamma_inc_Q(a, x), 0.0, 0.0};
    try {
      got[4] = boost::math::gamma_p(a, x);
      got[5] = boost::math::gamma_q(a, x);
    } catch (...) {
      got[4] = got[5] = std::nan("");
    }
    for (int i = 0; i < 6; ++i) {
      const auto &ref = i % 2 == 0 ? P : Q;
      if (ref.hi <= 1e-300) continue;
      double e = zem::test::relative_error(got[i], ref);
      if (!std::isfinite(e)) e = 1.0;
      worst[region][i] = std::max(worst[region][i], e);
    }
  }
  std::printf("\nP(a, x) and Q(a, x): largest relative error where the value exceeds 1e-300\n\n"
              "| a | s14bac P | s14bac Q | GSL P | GSL Q | Boost P | Boost Q |\n|---|---:|---:|---:|---:|---:|---:|\n");
  for (const auto &r : order) {
    std::printf("| %s |", r.c_str());
    for (double e : worst[r]) std::printf(" %.2g |", e);
    std::printf("\n");
  }
  return 0;
}
