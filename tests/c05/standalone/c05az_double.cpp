// Test double of the Brent core c05azfn_, written from its state table, so
// that c05ax, c05au and c05aw can be exercised before the library frame and
// the real core are merged.  Not part of the library.
#include <cmath>
#include <cstdint>

#include "frame/engine.h"
#include "frame/errbuf.h"

ZEM_INTERNAL void c05azfn_(engine_data *, double *x, double *y, const double *fx, const double *tolx,
                           const int64_t *ir, double *c, int64_t *ind, char *errbuf, int64_t *ifail) {
  const int64_t mode = *ind;
  if (mode != -1 && mode != 1 && mode != 2 && mode != 3 && mode != 4) {
    *ind = 0;
    return zem::fail(errbuf, ifail, 2, 1002, mode);
  }
  if (*tolx <= 0.0) {
    *ind = 0;
    return zem::fail(errbuf, ifail, 3, 1003, *tolx);
  }
  if (static_cast<uint64_t>(*ir) > 2) {
    *ind = 0;
    return zem::fail(errbuf, ifail, 3, 1004, *ir);
  }
  auto done = [&]() {
    *ind = 0;
    zem::succeed(ifail);
  };
  double a, fa, b, fb, cc, fc, d, e;
  auto same_sign = [](double u, double v) { return (u <= 0.0) == (v <= 0.0); };
  if (mode == 1) {
    c[2] = *x;
    *ind = 2;
    return zem::succeed(ifail);
  }
  bool skip_zero_test = false;
  double second = 0.0;
  if (mode == 2 || mode == -1) {
    if (mode == -1) c[2] = *x;
    if (*fx == 0.0) {
      *y = *x;
      return done();
    }
    c[1] = *fx;
    c[8] = std::fabs(*fx);
    c[9] = 0.0;
    const double t = *x;
    *x = *y;
    *y = t;
    c[3] = *x;
    if (mode == 2) {
      *ind = 3;
      return zem::succeed(ifail);
    }
    second = c[0];
    skip_zero_test = true;
  }
  if (mode == 3 || mode == -1) {
    const double f2 = mode == 3 ? *fx : second;
    if (!skip_zero_test && f2 == 0.0) return done();
    if (same_sign(f2, c[1])) {
      *ind = 0;
      return zem::fail(errbuf, ifail, 1, 1001, c[1], f2);
    }
    c[8] = std::fmax(c[8], std::fabs(f2));
    a = c[2];
    fa = c[1];
    b = c[3];
    fb = f2;
    cc = a;
    fc = fa;
    d = e = b - a;
  } else {  // mode == 4
    if (c[9] == 1.0) {
      *ind = 0;
      if (*fx == 0.0) {
        *y = *x;
        return zem::succeed(ifail);
      }
      if (std::fabs(*fx) <= c[8]) return zem::succeed(ifail);
      return zem::fail(errbuf, ifail, 4, 1005);
    }
    if (*fx == 0.0) {
      *y = *x;
      return done();
    }
    a = c[2];
    fa = c[1];
    b = c[3];
    d = c[4];
    e = c[5];
    cc = c[6];
    fc = c[7];
    fb = *fx;
  }
  // One iteration.
  if (same_sign(fb, fc)) {
    cc = a;
    fc = fa;
    d = e = b - a;
  }
  if (std::fabs(fc) < std::fabs(fb)) {
    a = b;
    b = cc;
    cc = a;
    fa = fb;
    fb = fc;
    fc = fa;
  }
  const double wr = *ir == 1 ? 0.0 : 1.0, wa = *ir == 2 ? 0.0 : 1.0;
  const double tol = *tolx * std::fmax(wr * std::fabs(b), wa);
  const double m = (cc - b) * 0.5;
  if (std::fabs(m) <= tol || fb == 0.0) {
    *x = b;
    *y = cc;
    c[9] = 1.0;
    *ind = 4;
    return zem::succeed(ifail);
  }
  if (std::fabs(m) <= std::fabs(b) * 1.1102230246251565e-16) {
    *ind = 0;
    *x = b;
    *y = cc;
    return zem::fail(errbuf, ifail, 5, 1006, *tolx);
  }
  const double e_old = e, d_old = d;
  d = m;
  e = m;
  if (std::fabs(e_old) >= tol && std::fabs(fb) < std::fabs(fa)) {
    const double s = fb / fa;
    double p, q;
    if (a == cc) {
      p = 2.0 * m * s;
      q = 1.0 - s;
    } else {
      q = fa / fc;
      const double r = fb / fc;
      p = s * (2.0 * m * q * (q - r) - (b - a) * (r - 1.0));
      q = (q - 1.0) * (r - 1.0) * (s - 1.0);
    }
    if (p > 0.0)
      q = -q;
    p = std::fabs(p);
    if (2.0 * p < 3.0 * m * q - std::fabs(tol * q) && p < std::fabs(0.5 * e_old * q)) {
      e = d_old;
      d = p / q;
    }
  }
  double bn;
  if (std::fabs(d) > tol)
    bn = b + d;
  else
    bn = cc <= b ? b - tol : b + tol;
  c[1] = fb;
  c[2] = b;
  c[3] = bn;
  *x = bn;
  c[4] = d;
  c[5] = e;
  c[6] = cc;
  c[7] = fc;
  *ind = 4;
  zem::succeed(ifail);
}
