// Bad-input sweeps of chapter s14: the gamma function family.  A NaN
// argument gives a NaN with no failure (documented); anything else either
// fails or returns finite values, and the vector routines touch only their
// n elements.
#include <cmath>

#include "sweep.h"

using namespace badinput;

namespace {

template <typename C, typename F>
void scalar_sweep(sweep &s, C c_entry, F f_entry) {
  for (double x : hostile_reals)
    s.call("x", x, [&] {
      Zem_Fail fail = quiet();
      const double v = c_entry(x, &fail);
      if (!std::isnan(x)) s.fail_or_finite(fail, {v});
      int64_t ifail = 1;
      const double vf = f_entry(&x, &ifail);
      if (!std::isnan(x)) s.ifail_or_finite(ifail, {vf});
    });
}

template <typename C, typename F>
void vector_sweep(sweep &s, C c_entry, F f_entry) {
  for (int64_t n : hostile_sizes) {
    if (n > 64) continue;  // the arrays are the caller's: only sizes they hold
    s.call("n", n, [&] {
      const size_t m = n > 0 ? static_cast<size_t>(n) : 0;
      guarded<double> x(m, 2.5), f(m);
      guarded<int64_t> iv(m);
      Zem_Fail fail = quiet();
      c_entry(n, x.data(), f.data(), iv.data(), &fail);
      if (n < 0) s.expect(fail.code != 0, "n < 0 accepted");
      s.intact(f, "f");
      s.intact(iv, "ivalid");
      int64_t ifail = 1;
      f_entry(&n, x.data(), f.data(), iv.data(), &ifail);
      s.intact(f, "f");
      s.intact(iv, "ivalid");
    });
  }
  s.call("x hostile", [&] {
    const size_t m = hostile_reals.size();
    guarded<double> x(m), f(m);
    guarded<int64_t> iv(m);
    for (size_t i = 0; i < m; ++i) x[i] = hostile_reals[i];
    Zem_Fail fail = quiet();
    c_entry(static_cast<int64_t>(m), x.data(), f.data(), iv.data(), &fail);
    for (size_t i = 0; i < m; ++i)
      if (!std::isnan(x[i])) s.expect(iv[i] != 0 || std::isfinite(f[i]), "an element valid but not finite");
    s.intact(f, "f");
    s.intact(iv, "ivalid");
  });
  s.call("null arrays", [&] {
    Zem_Fail fail = quiet();
    double x = 1.0;
    c_entry(1, &x, nullptr, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

}  // namespace

ZEM_BADINPUT(s14aa) { scalar_sweep(s, s14aac, s14aaf_); }
ZEM_BADINPUT(s14ab) { scalar_sweep(s, s14abc, s14abf_); }
ZEM_BADINPUT(s14ac) { scalar_sweep(s, s14acc, s14acf_); }
ZEM_BADINPUT(s14an) { vector_sweep(s, s14anc, s14anf_); }
ZEM_BADINPUT(s14ap) { vector_sweep(s, s14apc, s14apf_); }

ZEM_BADINPUT(s14ba) {
  for (double a : hostile_reals)
    for (double x : hostile_reals)
      s.call("a = " + sweep::text(a) + ", x", x, [&] {
        Zem_Fail fail = quiet();
        double p = -1.0, q = -1.0;
        s14bac(a, x, 0.0, &p, &q, &fail);
        if (!std::isnan(a) && !std::isnan(x)) s.fail_or_finite(fail, {p, q});
        int64_t ifail = 1;
        const double tol = nan_v;
        s14baf_(&a, &x, &tol, &p, &q, &ifail);
        if (!std::isnan(a) && !std::isnan(x)) s.ifail_or_finite(ifail, {p, q});
      });
  s.call("null p", [&] {
    Zem_Fail fail = quiet();
    double q;
    s14bac(1.0, 1.0, 0.0, nullptr, &q, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}
