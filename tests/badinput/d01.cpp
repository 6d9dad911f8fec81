// Bad-input sweeps of chapter d01.
#include <cmath>
#include <cstring>

#include "sweep.h"

using namespace badinput;

namespace {

// The integrands of the sweep: a smooth one, one that returns `value`
// (hostile) at the points below 0.25, one that stops by changing the comm
// flag.  x^2 + 1 stays finite wherever a mapped abscissa lands.
double value = 0.0;
void smooth(const double x[], int64_t nx, double fv[], int64_t *, Zem_Comm *) {
  for (int64_t i = 0; i < nx; ++i) fv[i] = std::exp(-x[i] * x[i]);
}
void spoilt(const double x[], int64_t nx, double fv[], int64_t *, Zem_Comm *) {
  for (int64_t i = 0; i < nx; ++i) fv[i] = x[i] < 0.25 ? value : 1.0;
}
void smooth_f(const double x[], const int64_t *nx, double fv[], int64_t *, int64_t *, double *, void **) {
  for (int64_t i = 0; i < *nx; ++i) fv[i] = std::exp(-x[i] * x[i]);
}
void spoilt_f(const double x[], const int64_t *nx, double fv[], int64_t *, int64_t *, double *, void **) {
  for (int64_t i = 0; i < *nx; ++i) fv[i] = x[i] < 0.25 ? value : 1.0;
}
void stopper(const double x[], int64_t nx, double fv[], int64_t *, Zem_Comm *comm) {
  comm->flag = comm->flag == 5 ? 6 : 5;
  for (int64_t i = 0; i < nx; ++i) fv[i] = 1.0 / (x[i] + 0.01);
}
double smooth_s(double x, Zem_Comm *) { return std::exp(-x * x); }
double spoilt_s(double x, Zem_Comm *) { return x < 0.25 ? value : 1.0; }
double smooth_sf(const double *x, int64_t *, double *) { return std::exp(-*x * *x); }

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

// maxsub for the calls with caller arrays of that size.
constexpr int64_t nsub = 50;

// One vectorised routine through both entries: call(c_f, f_f, rinfo, iinfo,
// maxsub, comm, fail / ifail) makes the call.
struct vec_routine {
  std::function<void(Zem_D01_VecFun, double *, int64_t *, int64_t, double *, double *, Zem_Comm *, Zem_Fail *)> c;
  std::function<void(Zem_D01_FVecFun, double *, int64_t *, int64_t, double *, double *, int64_t *)> f;
};

// The checks every vectorised routine gets.
void sweep_vec(sweep &s, const vec_routine &r) {
  auto both = [&](Zem_D01_VecFun fc, Zem_D01_FVecFun ff, int64_t maxsub, int64_t arrays) {
    guarded<double> rinfo(4 * arrays, nan_v);
    guarded<int64_t> iinfo(arrays, -7);
    double result = nan_v, abserr = nan_v;
    Zem_Fail fail = quiet();
    r.c(fc, rinfo.data(), iinfo.data(), maxsub, &result, &abserr, nullptr, &fail);
    s.fail_or_finite(fail, {result, abserr});
    s.intact(rinfo, "rinfo");
    s.intact(iinfo, "iinfo");
    guarded<double> rinfof(4 * arrays, nan_v);
    guarded<int64_t> iinfof(arrays, -7);
    double resultf = nan_v, abserrf = nan_v;
    int64_t ifail = 1;
    r.f(ff, rinfof.data(), iinfof.data(), maxsub, &resultf, &abserrf, &ifail);
    s.ifail_or_finite(ifail, {resultf, abserrf});
    s.intact(rinfof, "rinfo");
    s.intact(iinfof, "iinfo");
    s.expect((fail.code == 0) == (ifail == 0), "the two entries disagree");
    return fail.code;
  };
  for (double v : hostile_values)
    s.call("f(x < 0.25)", v, [&] {
      value = v;
      const int code = both(spoilt, spoilt_f, nsub, nsub);
      if (!std::isfinite(v)) s.expect(code != 0, "a non-finite integrand accepted");
    });
  // A maxsub beyond the arrays is a caller error, except where the memory it
  // implies cannot exist: then NE_ALLOC_FAIL before any array is touched.
  for (int64_t m : hostile_sizes)
    if (m >= int64_t{1} << 40)
      s.call("maxsub, arrays of 1", m, [&] {
        Zem_Fail fail = quiet();
        guarded<double> rinfo(4, nan_v);
        guarded<int64_t> iinfo(1);
        double result, abserr;
        r.c(smooth, rinfo.data(), iinfo.data(), m, &result, &abserr, nullptr, &fail);
        s.failed(fail, NE_ALLOC_FAIL);
        s.intact(rinfo, "rinfo");
      });
    else if (m <= nsub)
      s.call("maxsub", m, [&] { both(smooth, smooth_f, m, m > 0 ? m : 1); });
  for (auto [name, comm] : stale_comms())
    s.call(std::string("comm ") + name, [&] {
      guarded<double> rinfo(4 * nsub);
      guarded<int64_t> iinfo(nsub);
      double result = nan_v, abserr = nan_v;
      Zem_Fail fail = quiet();
      r.c(smooth, rinfo.data(), iinfo.data(), nsub, &result, &abserr, &comm, &fail);
      s.expect(fail.code == 0, "a comm record nobody changed stopped the integration");
    });
  s.call("comm changed by f", [&] {
    guarded<double> rinfo(4 * nsub);
    guarded<int64_t> iinfo(nsub);
    double result, abserr;
    Zem_Comm comm = garbage_comm();
    Zem_Fail fail = quiet();
    r.c(stopper, rinfo.data(), iinfo.data(), nsub, &result, &abserr, &comm, &fail);
    s.failed(fail, NE_USER_STOP);
  });
  s.call("null arrays", [&] {
    double result, abserr;
    Zem_Fail fail = quiet();
    r.c(smooth, nullptr, nullptr, nsub, &result, &abserr, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
    fail = quiet();
    r.c(nullptr, nullptr, nullptr, nsub, &result, &abserr, nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

// The limits a caller may pass by mistake, for the finite-interval routines.
template <typename Call>
void sweep_limits(sweep &s, Call call) {
  for (double a : hostile_reals)
    for (double b : {0.0, 1.0, inf, huge, nan_v})
      s.call("[a,b] = [" + sweep::text(a) + ", " + sweep::text(b) + "]", [&] {
        const int code = call(a, b);
        if (!std::isfinite(a) || !std::isfinite(b)) s.expect(code != 0, "a non-finite limit accepted");
      });
}

}  // namespace

ZEM_BADINPUT(d01rj) {
  double a = 0.0, b = 1.0;
  const vec_routine r{
      [&](Zem_D01_VecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, Zem_Comm *comm,
          Zem_Fail *fail) { d01rjc(f, a, b, 0.0, 1e-10, m, res, err, ri, ii, comm, fail); },
      [&](Zem_D01_FVecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, int64_t *ifail) {
        double ea = 0.0, er = 1e-10;
        d01rjf_(f, &a, &b, &ea, &er, &m, res, err, ri, ii, nullptr, nullptr, nullptr, ifail);
      }};
  sweep_vec(s, r);
  sweep_limits(s, [&](double lo, double hi) {
    guarded<double> rinfo(4 * nsub);
    guarded<int64_t> iinfo(nsub);
    double result = nan_v, abserr = nan_v;
    Zem_Fail fail = quiet();
    d01rjc(smooth, lo, hi, 0.0, 1e-10, nsub, &result, &abserr, rinfo.data(), iinfo.data(), nullptr, &fail);
    s.fail_or_finite(fail, {result, abserr});
    s.intact(rinfo, "rinfo");
    return fail.code;
  });
}

ZEM_BADINPUT(d01rk) {
  double a = 0.0, b = 1.0;
  int64_t key = 2;
  const vec_routine r{
      [&](Zem_D01_VecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, Zem_Comm *comm,
          Zem_Fail *fail) { d01rkc(f, a, b, 0.0, 1e-10, key, m, res, err, ri, ii, comm, fail); },
      [&](Zem_D01_FVecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, int64_t *ifail) {
        double ea = 0.0, er = 1e-10;
        d01rkf_(f, &a, &b, &ea, &er, &key, &m, res, err, ri, ii, nullptr, nullptr, nullptr, ifail);
      }};
  for (int64_t k = 1; k <= 6; ++k) {
    key = k;
    sweep_vec(s, r);
  }
  for (int64_t k : {int64_t{0}, int64_t{7}, int64_t{-1}, std::numeric_limits<int64_t>::min()})
    s.call("key", k, [&] {
      double ri[4], result, abserr;
      int64_t ii[1];
      Zem_Fail fail = quiet();
      d01rkc(smooth, 0.0, 1.0, 0.0, 1e-10, k, 1, &result, &abserr, ri, ii, nullptr, &fail);
      s.failed(fail, NE_BAD_PARAM);
    });
  sweep_limits(s, [&](double lo, double hi) {
    guarded<double> rinfo(4 * nsub);
    guarded<int64_t> iinfo(nsub);
    double result = nan_v, abserr = nan_v;
    Zem_Fail fail = quiet();
    d01rkc(smooth, lo, hi, 0.0, 1e-10, 3, nsub, &result, &abserr, rinfo.data(), iinfo.data(), nullptr, &fail);
    s.fail_or_finite(fail, {result, abserr});
    s.intact(rinfo, "rinfo");
    return fail.code;
  });
}

ZEM_BADINPUT(d01rl) {
  double a = 0.0, b = 1.0;
  int64_t npts = 2;
  double pts[2] = {0.3, 0.6};
  const vec_routine r{
      [&](Zem_D01_VecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, Zem_Comm *comm,
          Zem_Fail *fail) { d01rlc(f, a, b, npts, pts, 0.0, 1e-10, m, res, err, ri, ii, comm, fail); },
      [&](Zem_D01_FVecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, int64_t *ifail) {
        double ea = 0.0, er = 1e-10;
        d01rlf_(f, &a, &b, &npts, pts, &ea, &er, &m, res, err, ri, ii, nullptr, nullptr, nullptr, ifail);
      }};
  sweep_vec(s, r);
  for (int64_t n : hostile_sizes)
    if (n <= 3)  // (points holds 3: a larger npts would be the caller's error)
    s.call("npts", n, [&] {
      guarded<double> rinfo(4 * nsub), points(3, 0.5);
      guarded<int64_t> iinfo(nsub);
      double result = nan_v, abserr = nan_v;
      Zem_Fail fail = quiet();
      d01rlc(smooth, 0.0, 1.0, n, points.data(), 0.0, 1e-10, nsub, &result, &abserr,
             rinfo.data(), iinfo.data(), nullptr, &fail);
      s.fail_or_finite(fail, {result, abserr});
      if (n < 0) s.failed(fail, NE_INT);
      s.intact(rinfo, "rinfo");
      s.intact(points, "points");
    });
  for (double p : hostile_reals)
    s.call("break point", p, [&] {
      guarded<double> rinfo(4 * nsub);
      guarded<int64_t> iinfo(nsub);
      double result = nan_v, abserr = nan_v, point = p;
      Zem_Fail fail = quiet();
      d01rlc(smooth, 0.0, 1.0, 1, &point, 0.0, 1e-10, nsub, &result, &abserr, rinfo.data(), iinfo.data(),
             nullptr, &fail);
      s.fail_or_finite(fail, {result, abserr});
      if (!(p >= 0.0 && p <= 1.0)) s.failed(fail, NE_QUAD_BRKPTS_INVAL);
    });
  sweep_limits(s, [&](double lo, double hi) {
    guarded<double> rinfo(4 * nsub);
    guarded<int64_t> iinfo(nsub);
    double result = nan_v, abserr = nan_v;
    Zem_Fail fail = quiet();
    d01rlc(smooth, lo, hi, 0, nullptr, 0.0, 1e-10, nsub, &result, &abserr, rinfo.data(), iinfo.data(), nullptr,
           &fail);
    s.fail_or_finite(fail, {result, abserr});
    s.intact(rinfo, "rinfo");
    return fail.code;
  });
}

ZEM_BADINPUT(d01rm) {
  double bound = 0.0;
  int64_t inf_kind = 1;
  const vec_routine r{
      [&](Zem_D01_VecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, Zem_Comm *comm,
          Zem_Fail *fail) { d01rmc(f, bound, inf_kind, 0.0, 1e-10, m, res, err, ri, ii, comm, fail); },
      [&](Zem_D01_FVecFun f, double *ri, int64_t *ii, int64_t m, double *res, double *err, int64_t *ifail) {
        double ea = 0.0, er = 1e-10;
        d01rmf_(f, &bound, &inf_kind, &ea, &er, &m, res, err, ri, ii, nullptr, nullptr, nullptr, ifail);
      }};
  for (int64_t k : {int64_t{1}, int64_t{-1}, int64_t{2}}) {
    inf_kind = k;
    sweep_vec(s, r);
  }
  for (int64_t k : {int64_t{0}, int64_t{3}, int64_t{-2}})
    s.call("inf", k, [&] {
      double ri[4], result, abserr;
      int64_t ii[1];
      Zem_Fail fail = quiet();
      d01rmc(smooth, 0.0, k, 0.0, 1e-10, 1, &result, &abserr, ri, ii, nullptr, &fail);
      s.failed(fail, NE_BAD_PARAM);
    });
  for (double v : hostile_reals)
    for (int64_t k : {int64_t{1}, int64_t{-1}})
      s.call("bound = " + sweep::text(v) + ", inf", k, [&] {
        guarded<double> rinfo(4 * nsub);
        guarded<int64_t> iinfo(nsub);
        double result = nan_v, abserr = nan_v;
        Zem_Fail fail = quiet();
        d01rmc(smooth, v, k, 0.0, 1e-10, nsub, &result, &abserr, rinfo.data(), iinfo.data(), nullptr, &fail);
        s.fail_or_finite(fail, {result, abserr});
        // (Beyond 2^52 the substitution cannot resolve a step: refused.)
        if (!(std::fabs(v) <= 0x1p52)) s.failed(fail, NE_REAL);
        s.intact(rinfo, "rinfo");
      });
}

ZEM_BADINPUT(d01aj) {
  auto both = [&](Zem_D01AJ_Fun f, double a, double b, int64_t lw, int64_t liw, int64_t arrays) {
    guarded<double> w(4 * arrays, nan_v);
    guarded<int64_t> iw(arrays, -7);
    double result = nan_v, abserr = nan_v;
    Zem_Fail fail = quiet();
    d01ajc(f, a, b, 0.0, 1e-10, &result, &abserr, w.data(), lw, iw.data(), liw, nullptr, &fail);
    s.fail_or_finite(fail, {result, abserr});
    s.intact(w, "w");
    s.intact(iw, "iw");
    return fail.code;
  };
  for (double v : hostile_values)
    s.call("f(x < 0.25)", v, [&] {
      value = v;
      const int code = both(spoilt_s, 0.0, 1.0, 4 * nsub, nsub, nsub);
      if (!std::isfinite(v)) s.expect(code != 0, "a non-finite integrand accepted");
    });
  for (int64_t n : hostile_sizes) {
    const bool fits = n >= 0 && n <= nsub;
    s.call("lw", n, [&] { both(smooth_s, 0.0, 1.0, fits ? 4 * n : n, nsub, fits ? std::max<int64_t>(n, 1) : nsub); });
    s.call("liw", n, [&] { both(smooth_s, 0.0, 1.0, 4 * nsub, n, nsub); });
  }
  sweep_limits(s, [&](double a, double b) { return both(smooth_s, a, b, 4 * nsub, nsub, nsub); });
  s.call("Fortran entry", [&] {
    guarded<double> w(4 * nsub);
    guarded<int64_t> iw(nsub);
    double a = 0.0, b = inf, ea = 0.0, er = 1e-10, result = nan_v, abserr = nan_v;
    int64_t lw = 4 * nsub, liw = nsub, ifail = 1;
    d01ajf_(smooth_sf, &a, &b, &ea, &er, &result, &abserr, w.data(), &lw, iw.data(), &liw, nullptr, nullptr, &ifail);
    s.ifail_or_finite(ifail, {result, abserr});
    s.intact(w, "w");
  });
}

ZEM_BADINPUT(d01bd) {
  auto both = [&](Zem_D01_VecFun f, Zem_D01_FVecFun ff, double a, double b, double ea, double er) {
    double result = nan_v, abserr = nan_v;
    Zem_Fail fail = quiet();
    d01bdc(f, a, b, ea, er, &result, &abserr, nullptr, &fail);
    s.fail_or_finite(fail, {result, abserr});
    double rf = nan_v, ef = nan_v;
    int64_t ifail = 1;
    d01bdf_(ff, &a, &b, &ea, &er, &rf, &ef, nullptr, nullptr, nullptr, &ifail);
    s.ifail_or_finite(ifail, {rf, ef});
    return fail.code;
  };
  for (double v : hostile_values)
    s.call("f(x < 0.25)", v, [&] {
      value = v;
      const int code = both(spoilt, spoilt_f, 0.0, 1.0, 0.0, 1e-10);
      if (!std::isfinite(v)) s.expect(code != 0, "a non-finite integrand accepted");
    });
  for (double v : hostile_reals) {
    s.call("epsabs", v, [&] { both(smooth, smooth_f, 0.0, 1.0, v, 0.0); });
    s.call("epsrel", v, [&] { both(smooth, smooth_f, 0.0, 1.0, 0.0, v); });
  }
  sweep_limits(s, [&](double a, double b) { return both(smooth, smooth_f, a, b, 0.0, 1e-10); });
  for (auto [name, comm] : stale_comms())
    s.call(std::string("comm ") + name, [&] {
      double result, abserr;
      Zem_Fail fail = quiet();
      d01bdc(smooth, 0.0, 1.0, 0.0, 1e-6, &result, &abserr, &comm, &fail);
      s.expect(fail.code == 0, "a comm record nobody changed stopped the integration");
    });
}
