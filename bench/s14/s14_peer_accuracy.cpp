// Errors of the peers on the points of tests/s14/data, beside this
// library's: Gamma (s14aac, glibc tgamma, Boost tgamma, GSL gsl_sf_gamma) and
// ln Gamma (s14abc, glibc lgamma, Boost lgamma, GSL gsl_sf_lngamma) as max and
// RMS units in the last place per region (near the zeros of ln Gamma in
// absolute terms, units of 2^-53); P and Q (s14bac, GSL, Boost) as the
// largest relative error per region of a where the value exceeds 1e-300.
// The family (s14ae, s14ad, s14af, s14ag, s14cc, s14cp) beside GSL and Boost
// where they have the function (and glibc's lgamma sums for ln B): max and
// RMS ULP per region; for complex values in units of the last place of the
// modulus; for I_x(a, b) the largest relative error.
// Each table is introduced by a line <!-- table:<key> --> for
// tools/doc_tables.py, which puts it into the pages of docs/ (tools/bench.sh
// runs both).
// Usage: s14_peer_accuracy [source root [family]]
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf_gamma.h>
#include <gsl/gsl_sf_psi.h>
#include <gsl/gsl_sf_zeta.h>
#include <zem.h>

#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <boost/math/special_functions/polygamma.hpp>
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

// A region's name as a Markdown table cell ("|z|" would end the cell).
std::string cell(const std::string &s) {
  std::string out;
  for (char c : s) {
    if (c == '|') out += '\\';
    out += c;
  }
  return out;
}

void ulp_table(const char *key, const char *title, const std::vector<zem::test::reference_row> &rows,
               const std::vector<std::pair<const char *, std::function<double(double)>>> &fns) {
  std::printf("\n<!-- table:%s -->\n%s\n\n| region | points |", key, title);
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
    std::printf("| %s | %ld |", cell(reg).c_str(), m[reg][0].count);
    for (const auto &s : m[reg]) std::printf(" %.3g | %.3g |", s.max_ulp, s.rms());
    std::printf("\n");
  }
}

struct trow {
  std::string region;
  std::vector<double> in;
  std::vector<zem::test::reference> out;
};

std::vector<trow> read_table(const std::string &path, int inputs) {
  std::vector<trow> rows;
  std::ifstream f(path);
  std::string line;
  while (std::getline(f, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    trow r;
    s >> r.region;
    std::string t, u;
    for (int i = 0; i < inputs && s >> t; ++i) r.in.push_back(std::strtod(t.c_str(), nullptr));
    while (s >> t >> u) r.out.push_back({std::strtod(t.c_str(), nullptr), std::strtod(u.c_str(), nullptr)});
    rows.push_back(r);
  }
  return rows;
}

double complex_ulp(double re, double im, const zem::test::reference &er, const zem::test::reference &ei) {
  const double mag = std::hypot(er.hi, ei.hi);
  const double u = zem::test::ulp_at({mag, 0.0});
  const double e = std::hypot((re - er.hi) / u - er.units * zem::test::ulp_at(er) / u,
                              (im - ei.hi) / u - ei.units * zem::test::ulp_at(ei) / u);
  return std::isfinite(e) ? e : 1e300;
}

// One table: rows grouped by a key, a column per function (NaN: no value).
void keyed_table(const char *key, const char *title, const std::vector<const char *> &names,
                 const std::vector<std::pair<std::string, std::vector<double>>> &errors) {
  std::printf("\n<!-- table:%s -->\n%s\n\n| region | points |", key, title);
  for (const auto *n : names) std::printf(" %s max | %s RMS |", n, n);
  std::printf("\n|---|---:|");
  for (size_t i = 0; i < names.size(); ++i) std::printf("---:|---:|");
  std::printf("\n");
  std::vector<std::string> order;
  std::map<std::string, std::vector<error_summary>> m;
  for (const auto &[key, e] : errors) {
    if (!m.count(key)) {
      order.push_back(key);
      m[key].resize(names.size());
    }
    for (size_t i = 0; i < e.size(); ++i)
      if (!std::isnan(e[i])) m[key][i].add(e[i], 0.0);
  }
  for (const auto &k : order) {
    std::printf("| %s | %ld |", cell(k).c_str(), m[k][0].count);
    for (const auto &s : m[k]) {
      if (s.count == 0)
        std::printf(" - | - |");
      else
        std::printf(" %.3g | %.3g |", s.max_ulp, s.rms());
    }
    std::printf("\n");
  }
}

double ulp_or_big(double y, const zem::test::reference &r) {
  const double e = zem::test::ulp_error(y, r);
  return std::isfinite(e) ? e : 1e300;
}

template <typename F>
double guarded_peer(F f) {
  try {
    return f();
  } catch (...) {
    return std::nan("");
  }
}

void family(const std::string &dir) {
  std::vector<std::pair<std::string, std::vector<double>>> e;
  for (const auto &r : read_table(dir + "s14ae_reference.txt", 2)) {
    const int k = static_cast<int>(r.in[0]);
    const double x = r.in[1];
    const double z = s14aec(x, k, nullptr);
    const double g = k == 0 ? gsl_sf_psi(x) : gsl_sf_psi_n(k, x);
    const double b = guarded_peer([&] { return boost::math::polygamma(k, x); });
    e.push_back({"k=" + std::to_string(k) + " " + r.region,
                 {ulp_or_big(z, r.out[0]), std::isnan(g) ? 1e300 : ulp_or_big(g, r.out[0]),
                  std::isnan(b) ? 1e300 : ulp_or_big(b, r.out[0])}});
  }
  keyed_table("s14-peers-psi", "psi^(k)(x), s14aec: errors in ULP (1e300: no value)", {"s14aec", "GSL", "Boost"}, e);

  e.clear();
  for (const auto &r : read_table(dir + "s14ad_reference.txt", 2)) {
    const int k = static_cast<int>(r.in[0]);
    const double x = r.in[1];
    double z = 0.0;
    s14adc(x, k, 1, &z, nullptr);
    const double g = gsl_sf_hzeta(k + 1.0, x);
    double fact = 1.0;
    for (int i = 2; i <= k; ++i) fact *= i;
    const double b = guarded_peer([&] { return (k % 2 ? 1.0 : -1.0) * boost::math::polygamma(k, x) / fact; });
    e.push_back({r.region, {ulp_or_big(z, r.out[0]), ulp_or_big(g, r.out[0]), std::isnan(b) ? 1e300 : ulp_or_big(b, r.out[0])}});
  }
  keyed_table("s14-peers-zeta", "zeta(k + 1, x) = (-1)^(k+1) psi^(k)(x)/k!, orders 7 to 99, s14adc: errors in ULP",
              {"s14adc", "GSL hzeta", "Boost polygamma/k!"}, e);

  e.clear();
  for (const auto &r : read_table(dir + "s14cp_reference.txt", 2)) {
    const double a = r.in[0], b = r.in[1];
    double f = 0.0;
    int64_t iv = 0;
    s14cpc(1, &a, &b, &f, &iv, nullptr);
    const double gl = std::lgamma(a) + std::lgamma(b) - std::lgamma(a + b);
    const double bo = guarded_peer([&] {
      return boost::math::lgamma(a) + boost::math::lgamma(b) - boost::math::lgamma(a + b);
    });
    e.push_back({r.region, {ulp_or_big(f, r.out[0]), ulp_or_big(gl, r.out[0]), ulp_or_big(gsl_sf_lnbeta(a, b), r.out[0]),
                            std::isnan(bo) ? 1e300 : ulp_or_big(bo, r.out[0])}});
  }
  keyed_table("s14-peers-lnbeta", "ln B(a, b), s14cpc: errors in ULP (glibc and Boost: the lgamma sum)",
              {"s14cpc", "glibc", "GSL lnbeta", "Boost"}, e);

  e.clear();
  for (const auto &r : read_table(dir + "s14ag_reference.txt", 2)) {
    const Zem_Complex z = s14agc(Zem_Complex{r.in[0], r.in[1]}, nullptr);
    gsl_sf_result lnr, arg;
    gsl_sf_lngamma_complex_e(r.in[0], r.in[1], &lnr, &arg);
    // GSL's phase is reduced to (-pi, pi]: moved by whole turns to the reference.
    const double turn = 2.0 * M_PI;
    const double im = arg.val + turn * std::nearbyint((r.out[1].hi - arg.val) / turn);
    e.push_back({r.region, {complex_ulp(z.re, z.im, r.out[0], r.out[1]), complex_ulp(lnr.val, im, r.out[0], r.out[1])}});
  }
  keyed_table("s14-peers-lngamma-complex", "ln Gamma(z), s14agc: errors in ULP of |ln Gamma(z)| (GSL's phase moved by whole turns)",
              {"s14agc", "GSL"}, e);

  e.clear();
  for (const auto &r : read_table(dir + "s14af_reference.txt", 3)) {
    const int k = static_cast<int>(r.in[0]);
    const Zem_Complex z = s14afc(Zem_Complex{r.in[1], r.in[2]}, k, nullptr);
    double g = std::nan("");
    if (k == 0) {
      gsl_sf_result gr, gi;
      gsl_sf_complex_psi_e(r.in[1], r.in[2], &gr, &gi);
      g = complex_ulp(gr.val, gi.val, r.out[0], r.out[1]);
    }
    e.push_back({"k=" + std::to_string(k) + " " + r.region, {complex_ulp(z.re, z.im, r.out[0], r.out[1]), g}});
  }
  keyed_table("s14-peers-psi-complex", "psi^(k)(z), s14afc: errors in ULP of |psi^(k)(z)| (GSL: k = 0 only)", {"s14afc", "GSL"}, e);

  // I_x(a, b): largest relative error of w and of w1 where above 1e-300.
  std::map<std::string, std::vector<double>> worst;
  std::vector<std::string> order;
  for (const auto &r : read_table(dir + "s14cc_reference.txt", 3)) {
    const double a = r.in[0], b = r.in[1], x = r.in[2];
    if (!worst.count(r.region)) {
      order.push_back(r.region);
      worst[r.region].assign(6, 0.0);
    }
    double w = 0.0, w1 = 0.0;
    s14ccc(a, b, x, &w, &w1, nullptr);
    const double got[6] = {w, w1, gsl_sf_beta_inc(a, b, x), gsl_sf_beta_inc(b, a, 1.0 - x),
                           guarded_peer([&] { return boost::math::ibeta(a, b, x); }),
                           guarded_peer([&] { return boost::math::ibetac(a, b, x); })};
    for (int i = 0; i < 6; ++i) {
      const auto &ref = r.out[i % 2];
      if (ref.hi <= 1e-300) continue;
      double err = zem::test::relative_error(got[i], ref);
      if (!std::isfinite(err)) err = 1.0;
      worst[r.region][i] = std::max(worst[r.region][i], err);
    }
  }
  std::printf("\n<!-- table:s14-peers-ibeta -->\nI_x(a, b) and 1 - I_x(a, b): largest relative error where the value exceeds 1e-300\n"
              "(GSL's complement: gsl_sf_beta_inc(b, a, 1 - x), 1 - x rounded)\n\n"
              "| a, b | s14ccc w | s14ccc w1 | GSL w | GSL w1 | Boost ibeta | Boost ibetac |\n"
              "|---|---:|---:|---:|---:|---:|---:|\n");
  for (const auto &reg : order) {
    std::printf("| %s |", cell(reg).c_str());
    for (double v : worst[reg]) std::printf(" %.2g |", v);
    std::printf("\n");
  }
}

}  // namespace

int main(int argc, char **argv) {
  gsl_set_error_handler_off();
  const std::string dir = std::string(argc > 1 ? argv[1] : ZEM_SOURCE_DIR) + "/tests/s14/data/";
  const auto ga = zem::test::read_reference(dir + "s14aa_reference.txt", false);
  const auto lg = zem::test::read_reference(dir + "s14ab_reference.txt", false);
  // The keyed tables go into docs/ by tools/doc_tables.py.
  std::printf("<!-- tables by: build-bench/bench/s14/s14_peer_accuracy <source root>%s -->\n", argc > 2 ? " family" : "");
  if (argc > 2 && std::string(argv[2]) == "family") {
    family(dir);
    return 0;
  }
  ulp_table("s14-peers-gamma", "Gamma(x): errors in ULP", ga,
            {{"s14aac", [](double x) { return s14aac(x, nullptr); }},
             {"glibc", [](double x) { return std::tgamma(x); }},
             {"Boost", [](double x) { return boost::math::tgamma(x); }},
             {"GSL", [](double x) { return gsl_sf_gamma(x); }}});
  ulp_table("s14-peers-lngamma", "ln Gamma(x): errors in ULP (near 1 and 2: absolute, units of 2^-53)", lg,
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
  std::printf("\n<!-- table:s14-peers-gamma-pq -->\nP(a, x) and Q(a, x): largest relative error where the value exceeds 1e-300\n\n"
              "| a | s14bac P | s14bac Q | GSL P | GSL Q | Boost P | Boost Q |\n|---|---:|---:|---:|---:|---:|---:|\n");
  for (const auto &r : order) {
    std::printf("| %s |", cell(r).c_str());
    for (double e : worst[r]) std::printf(" %.2g |", e);
    std::printf("\n");
  }
  family(dir);
  return 0;
}
