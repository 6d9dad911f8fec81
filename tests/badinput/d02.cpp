// Bad-input sweeps of chapter d02: the Runge-Kutta suite d02p.
#include <cmath>
#include <cstring>

#include "sweep.h"

using namespace badinput;

namespace {

// The derivative of the sweep: the oscillator, with `value` (hostile) in
// the second component once t passes 0.5; a variant that stops by changing
// the comm flag.
double value = 0.0;
void osc(double t, int64_t, const double y[], double yp[], Zem_Comm *) {
  yp[0] = y[1];
  yp[1] = t > 0.5 ? value : -y[0];
}
void osc_f(const double *t, const int64_t *, const double y[], double yp[], int64_t *, double *) {
  yp[0] = y[1];
  yp[1] = *t > 0.5 ? value : -y[0];
}
void stopper(double, int64_t, const double y[], double yp[], Zem_Comm *comm) {
  comm->flag = comm->flag == 5 ? 6 : 5;
  yp[0] = y[1];
  yp[1] = -y[0];
}

constexpr int64_t n2 = 2, lrw = 256;

// A problem of two equations set up in guarded arrays.
struct problem {
  guarded<int64_t> iw{ZEM_D02P_LIWSAV, 0};
  guarded<double> rw{lrw, nan_v};
  explicit problem(Zem_RK_method m = Zem_RK_4_5, Zem_ErrorAssess ga = Zem_ErrorAssess_off) {
    const double y0[2] = {1.0, 0.0}, th[2] = {1e-8, 1e-8};
    int64_t l = lrw;
    Zem_Fail fail = quiet();
    d02pqc(n2, 0.0, 2.0, y0, 1e-6, th, m, ga, 0.0, iw.data(), rw.data(), &l, &fail);
  }
  void step() {
    double t, y[2], yp[2];
    Zem_Fail fail = quiet();
    d02pfc(osc, n2, &t, y, yp, nullptr, iw.data(), rw.data(), &fail);
  }
  void check(sweep &s) {
    s.intact(iw, "iwsav");
    s.intact(rw, "rwsav");
  }
};

}  // namespace

ZEM_BADINPUT(d02pq) {
  const double y0[2] = {1.0, 0.0}, th[2] = {1e-8, 1e-8};
  for (int64_t n : hostile_sizes)
    s.call("n", n, [&] {
      problem p;
      int64_t l = lrw;
      Zem_Fail fail = quiet();
      d02pqc(n, 0.0, 1.0, y0, 1e-6, th, Zem_RK_4_5, Zem_ErrorAssess_on, 0.0, p.iw.data(), p.rw.data(), &l, &fail);
      if (n > 2) s.expect(fail.code != 0, "n beyond the arrays accepted");
      int64_t lq = 0;
      d02pqc(n, 0.0, 1.0, y0, 1e-6, th, Zem_RK_4_5, Zem_ErrorAssess_on, 0.0, p.iw.data(), p.rw.data(), &lq, &fail);
      if (n >= 1 && fail.code == 0) s.expect(lq > 0, "a query without a length");
      int64_t ifail = 1, method = -3;
      l = lrw;
      double t0 = 0, t1 = 1, tol = 1e-6, h = 0;
      d02pqf_(&n, &t0, &t1, y0, &tol, th, &method, &h, p.iw.data(), p.rw.data(), &l, &ifail);
      if (n > 2) s.expect(ifail != 0, "n beyond the arrays accepted");
      p.check(s);
    });
  for (double v : hostile_reals)
    for (int which = 0; which < 6; ++which)
      s.call("argument " + sweep::text(which), v, [&] {
        problem p;
        double t0 = which == 0 ? v : 0.0, t1 = which == 1 ? v : 1.0, tol = which == 2 ? v : 1e-6;
        double h = which == 3 ? v : 0.0, yv[2] = {which == 4 ? v : 1.0, 0.0}, tv[2] = {which == 5 ? v : 1e-8, 1e-8};
        int64_t l = lrw;
        Zem_Fail fail = quiet();
        d02pqc(n2, t0, t1, yv, tol, tv, Zem_RK_7_8, Zem_ErrorAssess_off, h, p.iw.data(), p.rw.data(), &l, &fail);
        if (fail.code == 0) {  // the problem runs to its end or fails; never NaN
          double tg = nan_v, y[2] = {nan_v, nan_v}, yp[2], ym[2];
          for (int k = 0; k < 50; ++k) {
            d02pec(osc, n2, t1, &tg, y, yp, ym, nullptr, p.iw.data(), p.rw.data(), &fail);
            if (fail.errnum != 2 && fail.errnum != 3 && fail.errnum != 5) break;
          }
          s.fail_or_finite(fail, {tg, y[0], y[1]});
        }
        int64_t ifail = 1, method = 3, n = n2;
        l = lrw;
        d02pqf_(&n, &t0, &t1, yv, &tol, tv, &method, &h, p.iw.data(), p.rw.data(), &l, &ifail);
        s.expect((fail.code == 0) == (ifail == 0) || fail.code != 0, "the two entries disagree");
        p.check(s);
      });
  s.call("method, errass", [&] {
    problem p;
    int64_t l = lrw;
    Zem_Fail fail = quiet();
    d02pqc(n2, 0, 1, y0, 1e-6, th, static_cast<Zem_RK_method>(0), Zem_ErrorAssess_on, 0, p.iw.data(), p.rw.data(),
           &l, &fail);
    s.failed(fail, NE_BAD_PARAM);
    d02pqc(n2, 0, 1, y0, 1e-6, th, Zem_RK_2_3, static_cast<Zem_ErrorAssess>(1), 0, p.iw.data(), p.rw.data(), &l,
           &fail);
    s.failed(fail, NE_BAD_PARAM);
    for (int64_t m : {int64_t{0}, int64_t{4}, int64_t{-4}, std::numeric_limits<int64_t>::min()}) {
      int64_t ifail = 1, n = n2;
      double t0 = 0, t1 = 1, tol = 1e-6, h = 0;
      d02pqf_(&n, &t0, &t1, y0, &tol, th, &m, &h, p.iw.data(), p.rw.data(), &l, &ifail);
      s.failed(ifail, 1);
    }
    p.check(s);
  });
}

// The three integrators: hostile derivative values, hostile output points,
// garbage arrays, a changed n, a user stop.
ZEM_BADINPUT(d02pe) {
  for (double v : hostile_values)
    for (Zem_RK_method m : {Zem_RK_2_3, Zem_RK_4_5, Zem_RK_7_8})
      s.call("f value", v, [&] {
        value = v;
        problem p(m, Zem_ErrorAssess_on);
        double tg = nan_v, y[2] = {nan_v, nan_v}, yp[2], ym[2];
        Zem_Fail fail = quiet();
        for (int k = 0; k < 50; ++k) {
          d02pec(osc, n2, 2.0, &tg, y, yp, ym, nullptr, p.iw.data(), p.rw.data(), &fail);
          if (fail.errnum != 2 && fail.errnum != 3) break;
        }
        s.fail_or_finite(fail, {tg, y[0], y[1], yp[0], yp[1]});
        s.expect(fail.code != 0, "a non-finite derivative integrated without a word");
        problem q(m);
        int64_t ifail = 1, n = n2;
        double tw = 2.0, ru[1];
        int64_t iu[1];
        d02pef_(osc_f, &n, &tw, &tg, y, yp, ym, iu, ru, q.iw.data(), q.rw.data(), &ifail);
        s.ifail_or_finite(ifail, {tg, y[0], y[1]});
        p.check(s);
        q.check(s);
        value = 0.0;
      });
  for (double tw : hostile_reals)
    s.call("twant", tw, [&] {
      problem p;
      double tg = nan_v, y[2] = {nan_v, nan_v}, yp[2], ym[2];
      Zem_Fail fail = quiet();
      d02pec(osc, n2, tw, &tg, y, yp, ym, nullptr, p.iw.data(), p.rw.data(), &fail);
      if (!(tw > 0.0 && tw <= 2.0)) s.expect(fail.code != 0, "twant outside (tstart, tend] accepted");
      s.fail_or_finite(fail, {tg, y[0], y[1]});
      p.check(s);
    });
  for (int64_t n : hostile_sizes)
    s.call("n", n, [&] {
      problem p;
      double tg, y[2], yp[2], ym[2];
      Zem_Fail fail = quiet();
      d02pec(osc, n, 1.0, &tg, y, yp, ym, nullptr, p.iw.data(), p.rw.data(), &fail);
      if (n != n2) s.failed(fail, NE_INT_CHANGED);
      p.check(s);
    });
  s.call("garbage arrays, user stop", [&] {
    guarded<int64_t> iw(ZEM_D02P_LIWSAV, 0x5a5a5a5a5a5a5a5a);
    guarded<double> rw(lrw, 1.0);
    double tg, y[2], yp[2], ym[2];
    Zem_Fail fail = quiet();
    d02pec(osc, n2, 1.0, &tg, y, yp, ym, nullptr, iw.data(), rw.data(), &fail);
    s.failed(fail, NE_MISSING_CALL);
    problem p;
    Zem_Comm comm = ZEM_COMM_INIT;
    d02pec(stopper, n2, 1.0, &tg, y, yp, ym, &comm, p.iw.data(), p.rw.data(), &fail);
    s.failed(fail, NE_USER_STOP);
    d02pec(osc, n2, 1.0, &tg, y, yp, ym, nullptr, p.iw.data(), p.rw.data(), &fail);
    s.expect(fail.code != 0, "a problem stopped half way continued");
    s.intact(iw, "iwsav");
    p.check(s);
  });
}

ZEM_BADINPUT(d02pf) {
  for (double v : hostile_values)
    s.call("f value", v, [&] {
      value = v;
      problem p;
      double t = 0, y[2], yp[2];
      Zem_Fail fail = quiet();
      for (int k = 0; k < 100000 && (k == 0 || (fail.code == 0 && t < 2.0)); ++k)
        d02pfc(osc, n2, &t, y, yp, nullptr, p.iw.data(), p.rw.data(), &fail);
      s.expect(fail.code != 0, "a non-finite derivative integrated without a word");
      s.fail_or_finite(fail, {t, y[0], y[1]});
      int64_t ifail = 1, n = n2, iu[1];
      double ru[1];
      problem q;
      d02pff_(osc_f, &n, &t, y, yp, iu, ru, q.iw.data(), q.rw.data(), &ifail);
      p.check(s);
      q.check(s);
      value = 0.0;
    });
  s.call("garbage arrays", [&] {
    guarded<int64_t> iw(ZEM_D02P_LIWSAV, -1);
    guarded<double> rw(lrw, nan_v);
    double t, y[2], yp[2];
    Zem_Fail fail = quiet();
    d02pfc(osc, n2, &t, y, yp, nullptr, iw.data(), rw.data(), &fail);
    s.failed(fail, NE_MISSING_CALL);
    s.intact(iw, "iwsav");
    s.intact(rw, "rwsav");
  });
}

ZEM_BADINPUT(d02pg) {
  for (int64_t r : hostile_sizes)
    s.call("irevcm", r, [&] {
      problem p;
      double t, y[2] = {0, 0}, yp[2] = {0, 0}, tn, yn[2], ypn[2];
      int64_t irevcm = r;
      Zem_Fail fail = quiet();
      d02pgc(&irevcm, n2, &t, y, yp, &tn, yn, ypn, p.iw.data(), p.rw.data(), &fail);
      if (r != 0) s.expect(fail.code != 0 && irevcm == 0, "an irevcm nobody asked for accepted");
      int64_t ifail = 1, n = n2;
      irevcm = r;
      problem q;
      d02pgf_(&irevcm, &n, &t, y, yp, &tn, yn, ypn, q.iw.data(), q.rw.data(), &ifail);
      if (r != 0) s.expect(ifail != 0, "an irevcm nobody asked for accepted");
      p.check(s);
      q.check(s);
    });
  for (double v : hostile_values)
    s.call("derivative", v, [&] {
      problem p;
      double t = 0, y[2], yp[2], tn = 0, yn[2] = {nan_v, nan_v}, ypn[2];
      Zem_Fail fail = quiet();
      for (int k = 0; k < 100000 && (k == 0 || (fail.code == 0 && tn < 2.0)); ++k) {
        int64_t irevcm = 0;
        for (int e = 0; e < 100000; ++e) {
          d02pgc(&irevcm, n2, &t, y, yp, &tn, yn, ypn, p.iw.data(), p.rw.data(), &fail);
          if (irevcm == 0) break;
          yp[0] = y[1];
          yp[1] = t > 0.5 ? v : -y[0];
        }
      }
      s.expect(fail.code != 0, "a non-finite derivative integrated without a word");
      s.fail_or_finite(fail, {tn, yn[0], yn[1]});
      p.check(s);
    });
}

// Dense output, reset, statistics, assessment.
ZEM_BADINPUT(d02ph) {
  for (int64_t nw : hostile_sizes)
    for (int64_t lw : hostile_sizes)
      s.call("nwant = " + sweep::text(nw) + ", lwcomm", lw, [&] {
        problem p;
        p.step();
        guarded<double> w(16, nan_v);
        Zem_Fail fail = quiet();
        d02phc(n2, nw, p.iw.data(), p.rw.data(), w.data(), std::min<int64_t>(lw, 16), &fail);
        if (nw < 1 || nw > n2) s.expect(fail.code != 0, "nwant outside 1..n accepted");
        int64_t ifail = 1, n = n2, lwf = std::min<int64_t>(lw, 16);
        d02phf_(&n, &nw, p.iw.data(), p.rw.data(), w.data(), &lwf, &ifail);
        s.intact(w, "wcomm");
        p.check(s);
      });
}

ZEM_BADINPUT(d02pj) {
  for (double tw : hostile_reals)
    for (int64_t id : {int64_t{-1}, int64_t{0}, int64_t{1}, int64_t{2}, std::numeric_limits<int64_t>::max()})
      s.call("twant = " + sweep::text(tw) + ", ideriv", id, [&] {
        problem p;
        p.step();
        double w[16], yw[2] = {nan_v, nan_v}, ypw[2] = {nan_v, nan_v};
        Zem_Fail fail = quiet();
        d02phc(n2, n2, p.iw.data(), p.rw.data(), w, 16, &fail);
        d02pjc(n2, tw, id, n2, yw, ypw, p.iw.data(), p.rw.data(), w, 16, &fail);
        // (Far outside the step the polynomial overflows: documented as extrapolation.)
        if (std::fabs(tw) < 1e10) s.fail_or_finite(fail, {yw[0], yw[1]});
        if (id != 0 && id != 1) s.expect(fail.code != 0, "ideriv outside 0, 1 accepted");
        int64_t ifail = 1, n = n2, lw = 16;
        d02pjf_(&n, &tw, &id, &n, yw, ypw, p.iw.data(), p.rw.data(), w, &lw, &ifail);
        p.check(s);
      });
}

ZEM_BADINPUT(d02ps) {
  for (double tw : hostile_reals)
    for (int64_t nw : hostile_sizes)
      s.call("twant = " + sweep::text(tw) + ", nwant", nw, [&] {
        problem p;
        p.step();
        guarded<double> yw(2, nan_v), ypw(2, nan_v);
        Zem_Fail fail = quiet();
        d02psc(n2, tw, 2, nw, yw.data(), ypw.data(), p.iw.data(), p.rw.data(), &fail);
        if (nw < 1 || nw > n2) s.expect(fail.code != 0, "nwant outside 1..n accepted");
        if (std::fabs(tw) < 1e10 && nw == n2) s.fail_or_finite(fail, {yw[0], yw[1], ypw[0], ypw[1]});
        int64_t ifail = 1, n = n2, id = 2;
        d02psf_(&n, &tw, &id, &nw, yw.data(), ypw.data(), p.iw.data(), p.rw.data(), &ifail);
        s.intact(yw, "ywant");
        s.intact(ypw, "ypwant");
        p.check(s);
      });
}

ZEM_BADINPUT(d02pr) {
  for (double tn : hostile_reals)
    s.call("tendnu", tn, [&] {
      problem p;
      p.step();
      Zem_Fail fail = quiet();
      d02prc(tn, p.iw.data(), p.rw.data(), &fail);
      if (!std::isfinite(tn) || tn <= 0.0) s.expect(fail.code != 0, "a bad tendnu accepted");
      int64_t ifail = 1;
      d02prf_(&tn, p.iw.data(), p.rw.data(), &ifail);
      p.check(s);
    });
}

ZEM_BADINPUT(d02pt) {
  s.call("garbage and fresh arrays", [&] {
    guarded<int64_t> iw(ZEM_D02P_LIWSAV, 7);
    guarded<double> rw(lrw, inf);
    int64_t fe, sc, ok;
    double waste, hn;
    Zem_Fail fail = quiet();
    d02ptc(&fe, &sc, &waste, &ok, &hn, iw.data(), rw.data(), &fail);
    s.failed(fail, NE_MISSING_CALL);
    problem p;
    d02ptc(&fe, &sc, &waste, &ok, &hn, p.iw.data(), p.rw.data(), &fail);
    s.fail_or_finite(fail, {waste, hn});
    int64_t ifail = 1;
    d02ptf_(&fe, &sc, &waste, &ok, &hn, iw.data(), rw.data(), &ifail);
    s.failed(ifail, 1);
    s.intact(iw, "iwsav");
    p.check(s);
  });
}

ZEM_BADINPUT(d02pu) {
  for (int64_t n : hostile_sizes)
    s.call("n", n, [&] {
      problem p(Zem_RK_4_5, Zem_ErrorAssess_on);
      p.step();
      guarded<double> rms(2, nan_v);
      double emax = nan_v, tm = nan_v;
      Zem_Fail fail = quiet();
      d02puc(n, rms.data(), &emax, &tm, p.iw.data(), p.rw.data(), &fail);
      if (n != n2) s.failed(fail, NE_INT_CHANGED);
      s.fail_or_finite(fail, {emax, tm});
      int64_t ifail = 1;
      d02puf_(&n, rms.data(), &emax, &tm, p.iw.data(), p.rw.data(), &ifail);
      s.intact(rms, "rmserr");
      p.check(s);
    });
}
