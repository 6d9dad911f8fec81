// Bad-input sweeps of chapter c05.
#include <cmath>
#include <cstring>

#include "sweep.h"

using namespace badinput;

namespace {

// The user functions of the sweep: a line with its zero at 0.5, a function
// whose value at the points below 0.5 is `value` (hostile), and one that asks
// to stop by changing the comm flag.
double value = 0.0;
double line(double x, Zem_Comm *) { return x - 0.5; }
double line_f(const double *x, int64_t *, double *) { return *x - 0.5; }
double spoilt(double x, Zem_Comm *) { return x < 0.5 ? value : x - 0.5; }
double spoilt_f(const double *x, int64_t *, double *) { return *x < 0.5 ? value : *x - 0.5; }
double stopper(double x, Zem_Comm *comm) {
  comm->flag = comm->flag == 5 ? 6 : 5;  // a change, whatever the record held
  return x - 0.5;
}

// Comm records a caller may hand over: never initialised, left after a
// stop, holding the library's repeat value.
Zem_Comm garbage_comm() {
  Zem_Comm c;
  std::memset(&c, 0xa5, sizeof c);
  return c;
}
std::vector<std::pair<const char *, Zem_Comm>> stale_comms() {
  Zem_Comm stop = ZEM_COMM_INIT, repeat = ZEM_COMM_INIT;
  stop.flag = 5;
  repeat.flag = -8888;
  return {{"garbage", garbage_comm()}, {"stale stop", stop}, {"-8888", repeat}};
}

// Drives a reverse-communication routine with f = line until it ends;
// more than `limit` requests counts as a routine that never ends.
template <typename Step>
int64_t drive(sweep &s, Step step, double *x, int64_t *ind, int64_t limit = 100000) {
  int64_t n = 0;
  while (*ind != 0 && n < limit) {
    step(*x - 0.5);
    ++n;
  }
  s.expect(*ind == 0, "no end after " + sweep::text(limit) + " requests");
  return n;
}

}  // namespace

ZEM_BADINPUT(c05ay) {
  auto both = [&](double a, double b, double eps, double eta, bool spoil) {
    Zem_Fail fail = quiet();
    double x = nan_v;
    c05ayc(a, b, eps, eta, spoil ? spoilt : line, &x, nullptr, &fail);
    s.fail_or_finite(fail, {x});
    int64_t ifail = 1;
    double xf = nan_v;
    c05ayf_(&a, &b, &eps, &eta, spoil ? spoilt_f : line_f, &xf, nullptr, nullptr, &ifail);
    s.ifail_or_finite(ifail, {xf});
    s.expect((fail.code == 0) == (ifail == 0), "the two entries disagree");
    return fail.code;
  };
  for (double a : hostile_reals)
    for (double b : hostile_reals)
      s.call("[a,b] = [" + sweep::text(a) + ", " + sweep::text(b) + "]", [&] {
        const int code = both(a, b, 1e-10, 0.0, false);
        if (!std::isfinite(a) || !std::isfinite(b)) s.expect(code != 0, "a non-finite end point accepted");
      });
  s.call("[a,b] = [-DBL_MAX, DBL_MAX]", [&] {
    Zem_Fail fail = quiet();
    double x = nan_v;
    c05ayc(-huge, huge, 1e-10, 0.0, line, &x, nullptr, &fail);
    s.expect(fail.code == 0 && std::fabs(x - 0.5) <= 1e-9, "no zero found on the widest interval");
  });
  for (double v : hostile_reals) {
    s.call("eps", v, [&] { both(0.0, 1.0, v, 0.0, false); });
    s.call("eta", v, [&] { both(0.0, 1.0, 1e-10, v, false); });
    s.call("f(x < 0.5)", v, [&] {
      value = v;
      both(0.0, 1.0, 1e-10, 0.0, true);
      both(-1.0, 1.0, 1e-10, 0.0, true);
    });
  }
  for (auto [name, comm] : stale_comms())
    s.call(std::string("comm ") + name, [&] {
      Zem_Fail fail = quiet();
      double x = nan_v;
      c05ayc(0.0, 1.0, 1e-12, 0.0, line, &x, &comm, &fail);
      s.expect(fail.code == 0 && std::fabs(x - 0.5) < 1e-11, "a comm record nobody changed stopped the solve");
    });
  s.call("comm changed by f", [&] {
    Zem_Comm comm = garbage_comm();
    Zem_Fail fail = quiet();
    double x = nan_v;
    c05ayc(0.0, 1.0, 1e-12, 0.0, stopper, &x, &comm, &fail);
    s.failed(fail, NE_USER_STOP);
  });
  s.call("x null", [&] {
    Zem_Fail fail = quiet();
    c05ayc(0.0, 1.0, 1e-10, 0.0, line, nullptr, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
  s.call("f null", [&] {
    Zem_Fail fail = quiet();
    double x;
    c05ayc(0.0, 1.0, 1e-10, 0.0, nullptr, &x, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(c05az) {
  // A whole solve through both entries from the given start.
  auto solve = [&](double x0, double y0, double tolx, int64_t ir) {
    guarded<double> c(10, nan_v);
    Zem_Fail fail = quiet();
    double x = x0, y = y0;
    int64_t ind = 1;
    const Zem_ErrorControl irc = ir == 0 ? Zem_Mixed : ir == 1 ? Zem_Absolute : Zem_Relative;
    drive(s, [&](double fx) { c05azc(&x, &y, fx, tolx, irc, c.data(), &ind, &fail); }, &x, &ind);
    if (ind == 0 && fail.code == -12345) fail.code = 0;  // never called: x0 was a zero
    s.fail_or_finite(fail, {x, y});
    s.intact(c, "c");
    guarded<double> cf(10, nan_v);
    double xf = x0, yf = y0, fx = 0.0;
    int64_t indf = 1, ifail = 1;
    drive(s, [&](double v) { fx = v; ifail = 1; c05azf_(&xf, &yf, &fx, &tolx, &ir, cf.data(), &indf, &ifail); },
          &xf, &indf);
    s.ifail_or_finite(ifail, {xf, yf});
    s.intact(cf, "c");
  };
  for (double a : hostile_reals)
    for (double b : hostile_reals)
      s.call("[x,y] = [" + sweep::text(a) + ", " + sweep::text(b) + "]", [&] {
        guarded<double> c(10, 0.0);
        Zem_Fail fail = quiet();
        double x = a, y = b;
        int64_t ind = 1;
        c05azc(&x, &y, 0.0, 1e-10, Zem_Absolute, c.data(), &ind, &fail);
        drive(s, [&](double fx) { c05azc(&x, &y, fx, 1e-10, Zem_Absolute, c.data(), &ind, &fail); }, &x, &ind);
        s.fail_or_finite(fail, {x, y});
        if (!std::isfinite(a) || !std::isfinite(b)) s.expect(fail.code != 0, "a non-finite start accepted");
        s.intact(c, "c");
      });
  for (double v : hostile_reals) {
    s.call("tolx", v, [&] { solve(0.0, 1.0, v, 0); });
    s.call("fx", v, [&] {
      guarded<double> c(10, 0.0);
      Zem_Fail fail = quiet();
      double x = 0.0, y = 1.0;
      int64_t ind = 1;
      for (int k = 0; ind != 0 && k < 100000; ++k)
        c05azc(&x, &y, k == 1 || k == 3 ? v : x - 0.5, 1e-10, Zem_Mixed, c.data(), &ind, &fail);
      s.expect(ind == 0, "no end");
      s.fail_or_finite(fail, {x, y});
      s.intact(c, "c");
    });
  }
  for (int64_t ir : {int64_t{-1}, int64_t{3}, std::numeric_limits<int64_t>::min()})
    s.call("ir", ir, [&] {
      guarded<double> c(10);
      double x = 0.0, y = 1.0, fx = 0.0, tolx = 1e-10;
      int64_t ind = 1, ifail = 1;
      c05azf_(&x, &y, &fx, &tolx, &ir, c.data(), &ind, &ifail);
      s.failed(ifail, 3);
      s.intact(c, "c");
    });
  // Entries that no proper sequence of calls produces.
  for (int64_t ind0 : {int64_t{2}, int64_t{3}, int64_t{4}})
    for (double fill : {0.0, nan_v, 1.0})
      s.call("first entry with ind = " + sweep::text(ind0) + ", c filled with " + sweep::text(fill), [&] {
        guarded<double> c(10, fill);
        Zem_Fail fail = quiet();
        double x = 0.0, y = 0.0;
        int64_t ind = ind0;
        c05azc(&x, &y, 1.0, 1e-10, Zem_Absolute, c.data(), &ind, &fail);
        drive(s, [&](double fx) { c05azc(&x, &y, fx, 1e-10, Zem_Absolute, c.data(), &ind, &fail); }, &x, &ind);
        s.expect(fail.code != 0, "a state no call sequence leaves was accepted");
        s.intact(c, "c");
      });
  for (int after : {1, 2, 3, 6})
    s.call("state zeroed after request", after, [&] {
      guarded<double> c(10, 0.0);
      Zem_Fail fail = quiet();
      double x = 0.0, y = 1.0;
      int64_t ind = 1;
      for (int k = 0; k < after && ind != 0; ++k) c05azc(&x, &y, x - 0.3, 1e-12, Zem_Absolute, c.data(), &ind, &fail);
      if (ind == 0) return;  // solved already
      for (int i = 0; i < 10; ++i) c[i] = 0.0;
      drive(s, [&](double fx) { c05azc(&x, &y, fx + 0.2, 1e-12, Zem_Absolute, c.data(), &ind, &fail); }, &x, &ind);
      s.expect(fail.code != 0, "a zeroed state was accepted");
      s.intact(c, "c");
    });
  for (int64_t ind0 : {int64_t{0}, int64_t{5}, int64_t{-2}})
    s.call("ind", ind0, [&] {
      guarded<double> c(10);
      Zem_Fail fail = quiet();
      double x = 0.0, y = 1.0;
      int64_t ind = ind0;
      c05azc(&x, &y, 0.0, 1e-10, Zem_Absolute, c.data(), &ind, &fail);
      s.failed(fail, NE_INT);
    });
  s.call("null arguments", [&] {
    double c[10], x = 0, y = 1;
    int64_t ind = 1;
    Zem_Fail fail = quiet();
    c05azc(&x, &y, 0.0, 1e-10, Zem_Absolute, c, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
    c05azc(nullptr, &y, 0.0, 1e-10, Zem_Absolute, c, &ind, &fail);
    s.failed(fail, NE_BAD_PARAM);
    c05azc(&x, &y, 0.0, 1e-10, Zem_Absolute, nullptr, &ind, &fail);
    s.failed(fail, NE_BAD_PARAM);
    c05azc(&x, &y, 0.0, 1e-10, static_cast<Zem_ErrorControl>(12345), c, &ind, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(c05au) {
  auto both = [&](double x0, double h, double eps, double eta, double lo, double hi, bool spoil) {
    Zem_Fail fail = quiet();
    double x = x0;
    c05auc(&x, h, eps, eta, spoil ? spoilt : line, lo, hi, nullptr, &fail);
    s.fail_or_finite(fail, {x});
    int64_t ifail = 1;
    double xf = x0;
    c05auf_(&xf, &h, &eps, &eta, spoil ? spoilt_f : line_f, &lo, &hi, nullptr, nullptr, &ifail);
    s.ifail_or_finite(ifail, {xf});
  };
  for (double v : hostile_reals) {
    s.call("x", v, [&] { both(v, 0.1, 1e-10, 0.0, -10.0, 10.0, false); });
    s.call("h", v, [&] { both(0.0, v, 1e-10, 0.0, -10.0, 10.0, false); });
    s.call("eps", v, [&] { both(0.0, 0.1, v, 0.0, -10.0, 10.0, false); });
    s.call("eta", v, [&] { both(0.0, 0.1, 1e-10, v, -10.0, 10.0, false); });
    s.call("boundl", v, [&] { both(0.0, 0.1, 1e-10, 0.0, v, 10.0, false); });
    s.call("boundu", v, [&] { both(0.0, 0.1, 1e-10, 0.0, -10.0, v, false); });
    s.call("widest bounds, x", v, [&] { both(v, 1.0, 1e-10, 0.0, -huge, huge, false); });
    s.call("f(x < 0.5)", v, [&] {
      value = v;
      both(0.0, 0.1, 1e-10, 0.0, -10.0, 10.0, true);
    });
  }
  for (auto [name, comm] : stale_comms())
    s.call(std::string("comm ") + name, [&] {
      Zem_Fail fail = quiet();
      double x = 0.0;
      c05auc(&x, 0.1, 1e-12, 0.0, line, -10.0, 10.0, &comm, &fail);
      s.expect(fail.code == 0 && std::fabs(x - 0.5) < 1e-11, "a comm record nobody changed stopped the solve");
    });
  s.call("x null", [&] {
    Zem_Fail fail = quiet();
    c05auc(nullptr, 0.1, 1e-10, 0.0, line, -1.0, 1.0, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(c05av) {
  auto search = [&](double x0, double h, double lo, double hi) {
    guarded<double> c(12, nan_v);
    Zem_Fail fail = quiet();
    double x = x0, y = nan_v;
    int64_t ind = 1;
    c05avc(&x, 0.0, h, lo, hi, &y, c.data(), &ind, &fail);
    drive(s, [&](double fx) { c05avc(&x, fx, h, lo, hi, &y, c.data(), &ind, &fail); }, &x, &ind);
    s.fail_or_finite(fail, {x, y});
    s.intact(c, "c");
    guarded<double> cf(12, nan_v);
    double xf = x0, yf = nan_v, fx = 0.0;
    int64_t indf = 1, ifail = 1;
    c05avf_(&xf, &fx, &h, &lo, &hi, &yf, cf.data(), &indf, &ifail);
    drive(s, [&](double v) { fx = v; ifail = 1; c05avf_(&xf, &fx, &h, &lo, &hi, &yf, cf.data(), &indf, &ifail); },
          &xf, &indf);
    s.ifail_or_finite(ifail, {xf, yf});
    s.intact(cf, "c");
  };
  for (double v : hostile_reals) {
    s.call("x", v, [&] { search(v, 0.1, -10.0, 10.0); });
    s.call("h", v, [&] { search(0.0, v, -10.0, 10.0); });
    s.call("boundl", v, [&] { search(0.0, 0.1, v, 10.0); });
    s.call("boundu", v, [&] { search(0.0, 0.1, -10.0, v); });
    s.call("widest bounds, h", v, [&] { search(0.0, v, -huge, huge); });
  }
  for (double fill : {0.0, nan_v})
    s.call("state overwritten mid-search with", fill, [&] {
      guarded<double> c(12);
      Zem_Fail fail = quiet();
      double x = -5.0, y = 0.0;
      int64_t ind = 1;
      c05avc(&x, 0.0, 0.01, -10.0, 10.0, &y, c.data(), &ind, &fail);
      c05avc(&x, x - 0.5, 0.01, -10.0, 10.0, &y, c.data(), &ind, &fail);
      for (int i = 0; i < 12; ++i) c[i] = fill;
      drive(s, [&](double fx) { c05avc(&x, fx, 0.01, -10.0, 10.0, &y, c.data(), &ind, &fail); }, &x, &ind);
      s.expect(fail.code != 0, "a state no call sequence leaves was accepted");
    });
}

ZEM_BADINPUT(c05aw) {
  auto both = [&](double x0, double eps, double eta, int64_t nfmax, bool spoil) {
    Zem_Fail fail = quiet();
    double x = x0;
    c05awc(&x, eps, eta, spoil ? spoilt : line, nfmax, nullptr, &fail);
    s.fail_or_finite(fail, {x});
    int64_t ifail = 1;
    double xf = x0;
    c05awf_(&xf, &eps, &eta, spoil ? spoilt_f : line_f, &nfmax, nullptr, nullptr, &ifail);
    s.ifail_or_finite(ifail, {xf});
  };
  for (double v : hostile_reals) {
    s.call("x", v, [&] { both(v, 1e-10, 0.0, 1000, false); });
    s.call("eps", v, [&] { both(0.0, v, 0.0, 1000, false); });
    s.call("eta", v, [&] { both(0.0, 1e-10, v, 1000, false); });
    s.call("f(x < 0.5), nfmax huge", v, [&] {
      value = v;
      both(0.0, 1e-10, 0.0, std::numeric_limits<int64_t>::max(), true);
      both(0.2, 1e-10, 0.0, 50, true);
    });
  }
  for (int64_t n : hostile_sizes) s.call("nfmax", n, [&] { both(0.0, 1e-10, 0.0, n, false); });
  for (auto [name, comm] : stale_comms())
    s.call(std::string("comm ") + name, [&] {
      Zem_Fail fail = quiet();
      double x = 0.0;
      c05awc(&x, 1e-12, 0.0, line, 1000, &comm, &fail);
      s.expect(fail.code == 0 && std::fabs(x - 0.5) < 1e-11, "a comm record nobody changed stopped the solve");
    });
}

ZEM_BADINPUT(c05ax) {
  auto solve = [&](double x0, double tol, int64_t ir, double scal, double corrupt_after) {
    guarded<double> c(36, nan_v);
    double x = x0, fx = 0.0;
    int64_t ind = 1, ifail = 1, n = 0;
    c05axf_(&x, &fx, &tol, &ir, &scal, c.data(), &ind, &ifail);
    while (ind != 0 && n < 100000) {
      fx = x - 0.5;
      if (++n == corrupt_after)
        for (int i = 0; i < 36; ++i) c[i] = 0.0;
      ifail = 1;
      c05axf_(&x, &fx, &tol, &ir, &scal, c.data(), &ind, &ifail);
    }
    s.expect(ind == 0, "no end");
    s.ifail_or_finite(ifail, {x});
    if (corrupt_after > 0 && corrupt_after <= n) s.expect(ifail != 0, "a zeroed state was accepted");
    s.intact(c, "c");
  };
  for (double v : hostile_reals) {
    s.call("x", v, [&] { solve(v, 1e-10, 1, 0.1, 0); });
    s.call("tol", v, [&] { solve(0.0, v, 1, 0.1, 0); });
    s.call("scal", v, [&] { solve(0.0, 1e-10, 0, v, 0); });
  }
  for (int after : {1, 2, 5}) s.call("state zeroed after request", after, [&] { solve(0.0, 1e-10, 0, 0.1, after); });
  s.call("ind null", [&] {
    double c[36], x = 0;
    Zem_Fail fail = quiet();
    c05axc(&x, 0.0, 1e-10, Zem_Absolute, 0.1, c, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}
