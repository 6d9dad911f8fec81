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

namespace {

const std::vector<int64_t> hostile_orders = {INT64_MIN, -1, 0, 1, 4, 5, 6, 7, INT64_MAX};

}  // namespace

ZEM_BADINPUT(s14ae) {
  for (int64_t k : hostile_orders)
    for (double x : hostile_reals)
      s.call("k = " + sweep::text(k) + ", x", x, [&] {
        Zem_Fail fail = quiet();
        const double v = s14aec(x, k, &fail);
        if (!std::isnan(x)) s.fail_or_finite(fail, {v});
        int64_t ifail = 1;
        const double vf = s14aef_(&x, &k, &ifail);
        if (!std::isnan(x)) s.ifail_or_finite(ifail, {vf});
      });
}

ZEM_BADINPUT(s14ad) {
  for (int64_t n : hostile_orders)
    for (double x : hostile_reals)
      s.call("n = " + sweep::text(n) + ", x", x, [&] {
        guarded<double> ans(3);
        Zem_Fail fail = quiet();
        s14adc(x, n, 3, ans.data(), &fail);
        if (!std::isnan(x)) s.fail_or_finite(fail, {ans[0], ans[1], ans[2]});
        s.intact(ans, "ans");
        int64_t ifail = 1, m = 3;
        s14adf_(&x, &n, &m, ans.data(), &ifail);
        s.intact(ans, "ans");
      });
  for (int64_t m : hostile_sizes) {
    if (m > 64) continue;  // the array is the caller's: only sizes it holds
    s.call("m", m, [&] {
      guarded<double> ans(m > 0 ? static_cast<size_t>(m) : 0);
      Zem_Fail fail = quiet();
      s14adc(2.5, 0, m, ans.data(), &fail);
      if (m < 1) s.expect(fail.code != 0, "m < 1 accepted");
      s.intact(ans, "ans");
    });
  }
  s.call("m huge", [&] {
    guarded<double> ans(1);
    Zem_Fail fail = quiet();
    s14adc(2.5, 0, INT64_MAX, ans.data(), &fail);
    s.failed(fail, NE_INTERNAL_WORKSPACE);
    s.intact(ans, "ans");
  });
  s.call("null ans", [&] {
    Zem_Fail fail = quiet();
    s14adc(2.5, 0, 2, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(s14af) {
  for (int64_t k : hostile_orders)
    for (double x : hostile_reals)
      for (double y : hostile_reals)
        s.call("k = " + sweep::text(k) + ", re = " + sweep::text(x) + ", im", y, [&] {
          Zem_Fail fail = quiet();
          const Zem_Complex z{x, y};
          const Zem_Complex v = s14afc(z, k, &fail);
          if (!std::isnan(x) && !std::isnan(y)) s.fail_or_finite(fail, {v.re, v.im});
          int64_t ifail = 1;
          const Zem_Complex vf = s14aff_(&z, &k, &ifail);
          if (!std::isnan(x) && !std::isnan(y)) s.ifail_or_finite(ifail, {vf.re, vf.im});
        });
}

ZEM_BADINPUT(s14ag) {
  for (double x : hostile_reals)
    for (double y : hostile_reals)
      s.call("re = " + sweep::text(x) + ", im", y, [&] {
        Zem_Fail fail = quiet();
        const Zem_Complex z{x, y};
        const Zem_Complex v = s14agc(z, &fail);
        if (!std::isnan(x) && !std::isnan(y)) s.fail_or_finite(fail, {v.re, v.im});
        int64_t ifail = 1;
        const Zem_Complex vf = s14agf_(&z, &ifail);
        if (!std::isnan(x) && !std::isnan(y)) s.ifail_or_finite(ifail, {vf.re, vf.im});
      });
}

ZEM_BADINPUT(s14cc) {
  for (double a : hostile_reals)
    for (double b : hostile_reals)
      for (double x : hostile_reals)
        s.call("a = " + sweep::text(a) + ", b = " + sweep::text(b) + ", x", x, [&] {
          Zem_Fail fail = quiet();
          double w = -1.0, w1 = -1.0;
          s14ccc(a, b, x, &w, &w1, &fail);
          const bool defined = !std::isnan(a) && !std::isnan(b) && !std::isnan(x) && !(std::isinf(a) && std::isinf(b));
          if (defined) s.fail_or_finite(fail, {w, w1});
          int64_t ifail = 1;
          s14ccf_(&a, &b, &x, &w, &w1, &ifail);
          if (defined) s.ifail_or_finite(ifail, {w, w1});
        });
  s.call("null w", [&] {
    Zem_Fail fail = quiet();
    double w1;
    s14ccc(1.0, 1.0, 0.5, nullptr, &w1, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(s14cp) {
  for (int64_t n : hostile_sizes) {
    if (n > 64) continue;
    s.call("n", n, [&] {
      const size_t m = n > 0 ? static_cast<size_t>(n) : 0;
      guarded<double> a(m, 2.5), b(m, 0.5), f(m);
      guarded<int64_t> iv(m);
      Zem_Fail fail = quiet();
      s14cpc(n, a.data(), b.data(), f.data(), iv.data(), &fail);
      if (n < 0) s.expect(fail.code != 0, "n < 0 accepted");
      s.intact(f, "f");
      s.intact(iv, "ivalid");
      int64_t ifail = 1;
      s14cpf_(&n, a.data(), b.data(), f.data(), iv.data(), &ifail);
      s.intact(f, "f");
      s.intact(iv, "ivalid");
    });
  }
  s.call("a, b hostile", [&] {
    const size_t h = hostile_reals.size(), m = h * h;
    guarded<double> a(m), b(m), f(m);
    guarded<int64_t> iv(m);
    for (size_t i = 0; i < m; ++i) {
      a[i] = hostile_reals[i / h];
      b[i] = hostile_reals[i % h];
    }
    Zem_Fail fail = quiet();
    s14cpc(static_cast<int64_t>(m), a.data(), b.data(), f.data(), iv.data(), &fail);
    for (size_t i = 0; i < m; ++i)
      if (!std::isnan(a[i]) && !std::isnan(b[i]))
        s.expect(iv[i] != 0 || std::isfinite(f[i]), "an element valid but not finite");
    s.intact(f, "f");
    s.intact(iv, "ivalid");
  });
  s.call("null arrays", [&] {
    Zem_Fail fail = quiet();
    double a = 1.0;
    s14cpc(1, &a, &a, nullptr, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(s14cq) {
  for (int64_t n : hostile_sizes) {
    if (n > 64) continue;
    s.call("n", n, [&] {
      const size_t m = n > 0 ? static_cast<size_t>(n) : 0;
      guarded<double> a(m, 2.5), b(m, 0.5), x(m, 0.25), w(m), w1(m);
      guarded<int64_t> iv(m);
      Zem_Fail fail = quiet();
      s14cqc(n, a.data(), b.data(), x.data(), w.data(), w1.data(), iv.data(), &fail);
      if (n < 0) s.expect(fail.code != 0, "n < 0 accepted");
      s.intact(w, "w");
      s.intact(w1, "w1");
      s.intact(iv, "ivalid");
      int64_t ifail = 1;
      s14cqf_(&n, a.data(), b.data(), x.data(), w.data(), w1.data(), iv.data(), &ifail);
      s.intact(w, "w");
      s.intact(w1, "w1");
      s.intact(iv, "ivalid");
    });
  }
  s.call("a, b, x hostile", [&] {
    const size_t h = hostile_reals.size(), m = h * h * h;
    guarded<double> a(m), b(m), x(m), w(m), w1(m);
    guarded<int64_t> iv(m);
    for (size_t i = 0; i < m; ++i) {
      a[i] = hostile_reals[i / (h * h)];
      b[i] = hostile_reals[(i / h) % h];
      x[i] = hostile_reals[i % h];
    }
    Zem_Fail fail = quiet();
    s14cqc(static_cast<int64_t>(m), a.data(), b.data(), x.data(), w.data(), w1.data(), iv.data(), &fail);
    for (size_t i = 0; i < m; ++i)
      if (!std::isnan(a[i]) && !std::isnan(b[i]) && !std::isnan(x[i]) && !(std::isinf(a[i]) && std::isinf(b[i])))
        s.expect(iv[i] != 0 || (std::isfinite(w[i]) && std::isfinite(w1[i])), "an element valid but not finite");
    s.intact(w, "w");
    s.intact(w1, "w1");
    s.intact(iv, "ivalid");
  });
  s.call("null arrays", [&] {
    Zem_Fail fail = quiet();
    double a = 1.0;
    s14cqc(1, &a, &a, &a, nullptr, nullptr, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}
