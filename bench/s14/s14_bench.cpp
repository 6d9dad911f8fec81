// Speed of the gamma family against its peers, per call, on the same
// arguments: s14aa/s14ab against the platform's tgamma/lgamma (and GSL's
// and Boost's) on x spread over (0.5, 30); the vector routines s14an/s14ap
// against the loop of scalar calls they replace; s14ba against GSL's
// gsl_sf_gamma_inc_P/_Q and Boost's gamma_p/gamma_q on a grid of (a, x)
// (one s14ba call gives P and Q; the peers need a call each); the complex
// routines s14af (psi^(k), k = 0..4) and s14ag (ln Gamma) per call on z
// spread over a rectangle, beside GSL's complex psi and ln Gamma.
//
// Google Benchmark through the harness of bench/zem_bench.h: repetitions,
// random interleaving, aggregates, JSON (s14_bench.json); ours first in each
// group, so that tools/bench_report.py gives the ratios peer / ours.
//
// Usage: s14_bench [--benchmark_* options]
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf_gamma.h>
#include <gsl/gsl_sf_psi.h>
#include <zem.h>

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "zem_bench.h"

namespace {

std::vector<double> spread(double a = 0.5, double b = 30.0) {
  std::mt19937_64 g(20261124);
  std::uniform_real_distribution<double> u(a, b);
  std::vector<double> v(4096);
  for (auto &e : v) e = u(g);
  return v;
}

std::vector<Zem_Complex> plane() {
  std::mt19937_64 g(20261125);
  std::uniform_real_distribution<double> re(-10.0, 30.0), im(-10.0, 10.0);
  std::vector<Zem_Complex> v(1024);
  for (auto &e : v) e = {re(g), im(g)};
  return v;
}

struct grid_point {
  double a, x;
};
std::vector<grid_point> grid() {
  std::vector<grid_point> v;
  for (double a : {0.1, 0.5, 1.5, 3.0, 7.5, 15.0, 40.0, 100.0})
    for (double r : {0.05, 0.3, 0.7, 0.95, 1.05, 1.4, 2.5, 6.0}) v.push_back({a, a * r});
  return v;
}

template <typename F>
void per_call(const char *group, const char *name, const std::vector<double> &x, F f) {
  zem_bench::add(group, name, static_cast<int64_t>(x.size()), [&x, f] {
    double s = 0.0;
    for (double v : x) s += f(v);
    return s;
  });
}

}  // namespace

int main(int argc, char **argv) {
  gsl_set_error_handler_off();
  static const std::vector<double> x = spread();
  static std::vector<double> f(x.size());
  static std::vector<int64_t> iv(x.size());
  const int64_t n = static_cast<int64_t>(x.size());

  const char *lg = "ln Gamma per call, x uniform on (0.5, 30)";
  per_call(lg, "s14abc", x, [](double v) { return s14abc(v, nullptr); });
  per_call(lg, "s14abf_", x, [](double v) {
    int64_t ifail = 0;
    return s14abf_(&v, &ifail);
  });
  per_call(lg, "glibc lgamma", x, [](double v) { return std::lgamma(v); });
  per_call(lg, "GSL gsl_sf_lngamma", x, [](double v) { return gsl_sf_lngamma(v); });
  per_call(lg, "Boost lgamma", x, [](double v) { return boost::math::lgamma(v); });

  // The same by the ranges of ln Gamma's kernel within (0.5, 30) (shares of
  // the spread: 0.6%, 2.8%, 8.5%, 27% and 61%): where its time goes, with no
  // mispredicted choice of range.
  static const struct {
    const char *group;
    std::vector<double> x;
  } ranges[] = {{"ln Gamma per call, x uniform on (0.5, 0.6796875)", spread(0.5, 0.6796875)},
                {"ln Gamma per call, x uniform on (0.6796875, 1.5)", spread(0.6796875, 1.5)},
                {"ln Gamma per call, x uniform on (1.5, 4)", spread(1.5, 4.0)},
                {"ln Gamma per call, x uniform on (4, 12)", spread(4.0, 12.0)},
                {"ln Gamma per call, x uniform on (12, 30)", spread(12.0, 30.0)}};
  for (const auto &r : ranges) {
    per_call(r.group, "s14abc", r.x, [](double v) { return s14abc(v, nullptr); });
    per_call(r.group, "glibc lgamma", r.x, [](double v) { return std::lgamma(v); });
  }

  const char *ga = "Gamma per call, x uniform on (0.5, 30)";
  per_call(ga, "s14aac", x, [](double v) { return s14aac(v, nullptr); });
  per_call(ga, "s14aaf_", x, [](double v) {
    int64_t ifail = 0;
    return s14aaf_(&v, &ifail);
  });
  per_call(ga, "glibc tgamma", x, [](double v) { return std::tgamma(v); });
  per_call(ga, "GSL gsl_sf_gamma", x, [](double v) { return gsl_sf_gamma(v); });
  per_call(ga, "Boost tgamma", x, [](double v) { return boost::math::tgamma(v); });

  // The vector routines against the loop of scalar calls on the same 4096
  // arguments (time per element).
  const char *vl = "ln Gamma of 4096 elements, per element";
  zem_bench::add(vl, "s14apc", n, [n] {
    s14apc(n, x.data(), f.data(), iv.data(), nullptr);
    return f[0] + f[n - 1];
  });
  per_call(vl, "loop of s14abc", x, [](double v) { return s14abc(v, nullptr); });
  per_call(vl, "loop of glibc lgamma", x, [](double v) { return std::lgamma(v); });
  const char *vg = "Gamma of 4096 elements, per element";
  zem_bench::add(vg, "s14anc", n, [n] {
    s14anc(n, x.data(), f.data(), iv.data(), nullptr);
    return f[0] + f[n - 1];
  });
  per_call(vg, "loop of s14aac", x, [](double v) { return s14aac(v, nullptr); });
  per_call(vg, "loop of glibc tgamma", x, [](double v) { return std::tgamma(v); });

  static const std::vector<grid_point> g = grid();
  const int64_t gn = static_cast<int64_t>(g.size());
  const char *pq = "P and Q on a grid of 64 (a, x), per point";
  zem_bench::add(pq, "s14bac", gn, [] {
    double s = 0.0;
    for (const auto &p : g) {
      double pv = 0.0, qv = 0.0;
      s14bac(p.a, p.x, 0.0, &pv, &qv, nullptr);
      s += pv + qv;
    }
    return s;
  });
  zem_bench::add(pq, "GSL gamma_inc_P + _Q", gn, [] {
    double s = 0.0;
    for (const auto &p : g) s += gsl_sf_gamma_inc_P(p.a, p.x) + gsl_sf_gamma_inc_Q(p.a, p.x);
    return s;
  });
  zem_bench::add(pq, "Boost gamma_p + gamma_q", gn, [] {
    double s = 0.0;
    for (const auto &p : g) s += boost::math::gamma_p(p.a, p.x) + boost::math::gamma_q(p.a, p.x);
    return s;
  });
  static const std::vector<Zem_Complex> z = plane();
  const int64_t zn = static_cast<int64_t>(z.size());
  // GSL's complex functions share one signature: the real part's sum.
  using gsl_complex_fn = int (*)(double, double, gsl_sf_result *, gsl_sf_result *);
  auto gsl_complex = [zn](const char *group, const char *name, gsl_complex_fn fn) {
    zem_bench::add(group, name, zn, [fn] {
      double s = 0.0;
      gsl_sf_result r, i;
      for (const auto &v : z) {
        fn(v.re, v.im, &r, &i);
        s += r.val;
      }
      return s;
    });
  };
  const char *cp = "complex psi^(k) per call, Re z on (-10, 30), Im z on (-10, 10)";
  for (int64_t k = 0; k <= 4; ++k)
    zem_bench::add(cp, "s14afc k=" + std::to_string(k), zn, [k] {
      double s = 0.0;
      for (const auto &v : z) s += s14afc(v, k, nullptr).re;
      return s;
    });
  gsl_complex(cp, "GSL gsl_sf_complex_psi_e (k=0)", gsl_sf_complex_psi_e);
  const char *cl = "complex ln Gamma per call, Re z on (-10, 30), Im z on (-10, 10)";
  zem_bench::add(cl, "s14agc", zn, [] {
    double s = 0.0;
    for (const auto &v : z) s += s14agc(v, nullptr).re;
    return s;
  });
  gsl_complex(cl, "GSL gsl_sf_lngamma_complex_e", gsl_sf_lngamma_complex_e);
  return zem_bench::run(argc, argv, "s14");
}
