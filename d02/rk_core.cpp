// The resumable step of the d02p suite (d02/rk_core.h says how it is used).
//
// Error control.  With wt_i = max(thresh_i, (|y_i| + |ynew_i|)/2) the local
// error estimate of an attempt is err = max_i |h sum_j e_j k_j,i| / wt_i,
// and the attempt is accepted when err <= tol: tol is a relative error in
// every component larger than its threshold, an absolute error
// tol * thresh_i below it.  A NaN in the estimate (a non-finite derivative)
// rejects the attempt.
//
// Step size.  After an attempt the next size is h * r with
// r = 0.8 (tol/err)^(1/(q+1)), q the lower order of the pair; an accepted
// step grows by at most 4 (and not at all right after a rejection), a
// rejected one shrinks by at least 0.8 and at most 8, and by at least 2 from
// the second consecutive rejection on.  The step never passes the target
// (tend, or the output point of the range integrator with the 7(8) pair);
// a step that would end within a small fraction of the target, or leave
// less than half a step to it, is stretched or shared so that no sliver
// remains.  A size below rk_hmin ends the integration (too_small).
//
// Initial step (hstart = 0): a first guess h0 = |y0| / (100 |f0|), then a
// difference estimate f' of the second derivative at t0 + h0 (one extra
// evaluation) and h = (tol / max(|f0|, |f'|))^(1/(p+1)), capped by 100 h0
// and by the length of the range; sizes in the norm of weighted_max.
//
// Stiffness.  After each accepted step the dominant eigenvalue of the
// Jacobian is estimated from two stages of the step: lambda ~ |k_i - k_j| /
// |Y_i - Y_j|, where Y_i - Y_j = h sum_l (a_il - a_jl) k_l is formed from the
// stage derivatives (no stage values are stored).  An estimate counts when
// the difference of the Y is at least 1e-10 times that of the k (the
// quotient guard) and the ratio to the previous estimate lies in [0.2, 5];
// a step "looks limited by stability" when |h lambda| >= 0.9 times the
// pair's stability radius.  After rk_stiff_steps such steps in a row the
// step reports stiffness; the driver turns it into the warning, with the
// cost of reaching tend at the present step size relative to the cost so
// far.  A report restarts the count at -85, so a problem that stays stiff
// is reminded every 100 steps, not every 15.
//
// Global error assessment.  Beside the integration proper a second
// integration of the same pair runs over the same mesh with two half steps
// per step, from the same initial value.  Its global error is smaller by
// about 2^-p, so y - ysec estimates the global error of y.  The assessed
// error of component i at each step is |y_i - ysec_i| / max(|y_i|, thresh_i);
// its root-mean-square over the steps and its maximum over steps and
// components (with the time) are what d02pu returns.  The assessment is
// declared unreliable when a half step's own error estimate exceeds both tol
// and the estimate of the step it halves (the second integration would then
// not be the more accurate one).
#include "d02/rk_core.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "frame/constants.h"

namespace zem::d02 {
namespace {

template <size_t N>
constexpr std::array<double, N> doubles(const rational (&r)[N]) {
  std::array<double, N> d{};
  for (size_t i = 0; i < N; ++i) d[i] = r[i].value();
  return d;
}
template <size_t N>
constexpr std::array<double, N> differences(const rational (&b)[N], const rational (&bh)[N]) {
  std::array<double, N> d{};
  for (size_t i = 0; i < N; ++i) {
    // b_i - bhat_i as one rational, then one rounding.
    const __int128 num = static_cast<__int128>(b[i].num) * bh[i].den - static_cast<__int128>(bh[i].num) * b[i].den;
    const __int128 den = static_cast<__int128>(b[i].den) * bh[i].den;
    d[i] = static_cast<double>(num) / static_cast<double>(den);
  }
  return d;
}

constexpr auto bs23_cd = doubles(bs23_c);
constexpr auto bs23_ad = doubles(bs23_a);
constexpr auto bs23_bd = doubles(bs23_b);
constexpr auto bs23_ed = differences(bs23_b, bs23_bhat);
constexpr auto bs45_cd = doubles(bs45_c);
constexpr auto bs45_ad = doubles(bs45_a);
constexpr auto bs45_bd = doubles(bs45_b);
constexpr auto bs45_ed = differences(bs45_b, bs45_bhat);
constexpr auto pd87_cd = doubles(pd87_c);
constexpr auto pd87_ad = doubles(pd87_a);
constexpr auto pd87_bd = doubles(pd87_b);
constexpr auto pd87_ed = differences(pd87_b, pd87_bhat);
constexpr auto bs45_dd = doubles(bs45_dense);

// The per-pair constants: safety factor 0.8 for all (in the step formula),
// stability radius and tangent, cost, exponent.
const pair_info pairs[3] = {
    {4, true, 2, 3, 2.3, 8.9, 3, bs23_cd.data(), bs23_ad.data(), bs23_bd.data(), bs23_ed.data(), 3, 2},
    {8, true, 4, 5, 3.9, 5.2, 7, bs45_cd.data(), bs45_ad.data(), bs45_bd.data(), bs45_ed.data(), 7, 6},
    {13, false, 7, 8, 5.2, 11.0, 13, pd87_cd.data(), pd87_ad.data(), pd87_bd.data(), pd87_ed.data(), 12, 11},
};

constexpr double safety = 0.8;
constexpr double grow_max = 4.0, shrink_min = 0.125, shrink_second = 0.5;

inline const double *arow(const pair_info &pr, int i) { return pr.a + i * (i - 1) / 2; }

// y + h sum_{j<i} a_ij k_j into out.  One pass per component with the sum
// in a register (the stages lie n apart in rwsav); zero coefficients are
// skipped, so that a non-finite stage they would multiply stays out.
void stage_point(const rk_state &st, const double *y0, double h, int i, double *out, bool sec) {
  const double *a = arow(*st.pr, i);
  const int64_t n = st.n;
  const double *k0 = sec ? st.ksec(0) : st.k(0);
  for (int64_t m = 0; m < n; ++m) {
    double sum = 0.0;
    const double *km = k0 + m;
    for (int j = 0; j < i; ++j)
      if (a[j] != 0.0) sum += a[j] * km[j * n];
    out[m] = y0[m] + h * sum;
  }
}

// ynew and the weighted error estimate of an attempt of size h from y0.
double finish_attempt(const rk_state &st, const double *y0, double h, double *ynew, bool sec) {
  const pair_info &pr = *st.pr;
  const int64_t n = st.n;
  const int s = pr.s;
  if (pr.fsal) {
    // The last stage was evaluated at y0 + h sum b_j k_j: that point is ynew.
    const double *src = st.ytmp();
    for (int64_t m = 0; m < n; ++m) ynew[m] = src[m];
  } else {
    for (int64_t m = 0; m < n; ++m) ynew[m] = 0.0;
    for (int j = 0; j < s; ++j) {
      if (pr.b[j] == 0.0) continue;
      const double *kj = sec ? st.ksec(j) : st.k(j);
      for (int64_t m = 0; m < n; ++m) ynew[m] += pr.b[j] * kj[m];
    }
    for (int64_t m = 0; m < n; ++m) ynew[m] = y0[m] + h * ynew[m];
  }
  const double *th = st.thresh();
  const double *k0 = sec ? st.ksec(0) : st.k(0);
  double err = 0.0;
  for (int64_t m = 0; m < n; ++m) {
    double e = 0.0;
    const double *km = k0 + m;
    for (int j = 0; j < s; ++j)
      if (pr.e[j] != 0.0) e += pr.e[j] * km[j * n];
    const double wt = std::max(th[m], 0.5 * (std::fabs(y0[m]) + std::fabs(ynew[m])));
    const double r = std::fabs(h * e) / wt;
    if (!(r <= err)) err = r;  // a NaN sticks
  }
  return err;
}

double weighted_max(const rk_state &st, const double *v, const double *y) {
  double big = 0.0;
  for (int64_t m = 0; m < st.n; ++m) big = std::max(big, std::fabs(y[m]));
  double r = 0.0;
  for (int64_t m = 0; m < st.n; ++m) {
    const double w = std::max({st.thresh()[m], std::fabs(y[m]), 0.01 * big});
    r = std::max(r, std::fabs(v[m]) / w);
  }
  return r;
}

// The size of the next attempt towards the target: never past it, and no
// sliver left before it.
double clip(const rk_state &st, double h) {
  const double t = st.rw[rw_t], target = st.rw[rw_target], dir = st.rw[rw_dir];
  const double rest = target - t, arest = std::fabs(rest);
  double ah = std::fabs(h);
  st.iw[iw_last_cut] = 0;
  if (1.01 * ah >= arest || arest - ah <= 16.0 * machine_eps * std::max(std::fabs(t), std::fabs(target))) {
    if (8.0 * arest < ah) st.iw[iw_last_cut] = 1;  // drastically shortened
    return rest;
  }
  if (2.0 * ah > arest) ah = 0.5 * arest;  // share the rest in two
  return dir * ah;
}

// Starts an attempt: the request for stage 1 (k(0) is f(t, y) already).
rk_event start_attempt(const rk_state &st, rk_request &req) {
  double h = clip(st, st.rw[rw_h]);
  st.rw[rw_h] = h;
  st.iw[iw_stage] = 1;
  st.iw[iw_phase] = ph_stage;
  stage_point(st, st.y(), h, 1, st.ytmp(), false);
  req = {st.rw[rw_t] + st.pr->c[1] * h, st.ytmp(), st.k(1), 0.0};
  return rk_event::eval;
}

rk_event start_sec_half(const rk_state &st, rk_request &req);

// The step was accepted and f(tnew, ynew) is in yp: bookkeeping, stiffness,
// then the assessment or done.
rk_event after_accept(const rk_state &st, rk_request &req) {
  const pair_info &pr = *st.pr;
  const int64_t n = st.n;
  const double h = st.rw[rw_hlast];
  // Stiffness: the difference of two stages.
  {
    const int i = pr.stiff_i, j = pr.stiff_j;
    const double *ai = arow(pr, i), *aj = arow(pr, j);
    double dk = 0.0, dy = 0.0;
    const double *k0 = st.k(0);
    for (int64_t m = 0; m < n; ++m) {
      double s = 0.0;
      const double *km = k0 + m;
      for (int l = 0; l < i; ++l) s += (ai[l] - (l < j ? aj[l] : 0.0)) * km[l * n];
      s *= h;
      const double d = km[i * n] - km[j * n];
      dk += d * d;
      dy += s * s;
    }
    dk = std::sqrt(dk);
    dy = std::sqrt(dy);
    bool limited = false;
    if (dy * 1e10 >= dk && dy > 0.0) {
      const double lambda = dk / dy, prev = st.rw[rw_lambda];
      const bool trusted = prev > 0.0 && lambda >= 0.2 * prev && lambda <= 5.0 * prev;
      st.rw[rw_lambda] = lambda;
      limited = trusted && std::fabs(h) * lambda >= 0.9 * pr.radius;
    } else {
      st.rw[rw_lambda] = 0.0;
    }
    if (limited) {
      if (++st.iw[iw_stiff] >= rk_stiff_steps) {
        const double rest = std::fabs(st.rw[rw_tend] - st.rw[rw_t]);
        const double nf = static_cast<double>(std::max<int64_t>(1, st.iw[iw_nfcn]));
        st.rw[rw_stiff_ratio] = rest / std::fabs(h) * pr.cost / nf;
        st.iw[iw_stiff_flag] = 1;
        st.iw[iw_stiff] = rk_stiff_steps - 100;
      }
    } else if (st.iw[iw_stiff] > 0) {
      st.iw[iw_stiff] = 0;
    }
  }
  double *ym = st.ymax();
  const double *y = st.y();
  for (int64_t m = 0; m < n; ++m) ym[m] = std::max(ym[m], std::fabs(y[m]));
  if (!st.iw[iw_errass]) {
    st.iw[iw_phase] = ph_idle;
    return rk_event::step_done;
  }
  // The assessment: two half steps from ysec at told.
  st.rw[rw_tsec] = st.rw[rw_told];
  st.iw[iw_spare] = 0;  // which half
  return start_sec_half(st, req);
}

rk_event start_sec_half(const rk_state &st, rk_request &req) {
  const double hs = 0.5 * st.rw[rw_hlast];
  const int64_t n = st.n;
  for (int64_t m = 0; m < n; ++m) st.ksec(0)[m] = st.ypsec()[m];
  st.iw[iw_stage] = 1;
  st.iw[iw_phase] = ph_sec_stage;
  stage_point(st, st.ysec(), hs, 1, st.ytmp(), true);
  req = {st.rw[rw_tsec] + st.pr->c[1] * hs, st.ytmp(), st.ksec(1), 0.0};
  return rk_event::eval_ga;
}

// A half step of the assessment is complete (and f at its end is in ypsec).
rk_event sec_half_done(const rk_state &st, rk_request &req) {
  const int64_t n = st.n;
  if (st.iw[iw_spare] == 0) {
    st.iw[iw_spare] = 1;
    return start_sec_half(st, req);
  }
  // Both halves done: ysec is at t; compare.
  const double *y = st.y(), *ys = st.ysec(), *th = st.thresh();
  double *rms = st.rms();
  for (int64_t m = 0; m < n; ++m) {
    const double e = std::fabs(y[m] - ys[m]) / std::max(std::fabs(y[m]), th[m]);
    rms[m] += e * e;
    if (e > st.rw[rw_errmax]) {
      st.rw[rw_errmax] = e;
      st.rw[rw_terrmx] = st.rw[rw_t];
    }
  }
  ++st.iw[iw_ga_steps];
  st.iw[iw_phase] = ph_idle;
  return rk_event::step_done;
}

}  // namespace

const pair_info &pair_of(int64_t method) { return pairs[method - 1]; }

int64_t rk_rwsav_len(int64_t n, int64_t method, bool errass) {
  const int64_t s = pairs[method - 1].s;
  return rwsav_header + n * (7 + s) + (errass ? n * (4 + s) : 0);
}

int64_t rk_check_word(const int64_t *iw) {
  uint64_t h = 0x9E3779B97F4A7C15ull;
  for (int i = iw_magic; i < iw_check; ++i) h = (h ^ static_cast<uint64_t>(iw[i])) * 0xBF58476D1CE4E5B9ull;
  return static_cast<int64_t>(h >> 1);
}

bool rk_view(int64_t *iwsav, double *rwsav, rk_state &st) {
  if (!iwsav || !rwsav) return false;
  if (iwsav[iw_magic] != 0x5A454D44303250ll || iwsav[iw_check] != rk_check_word(iwsav)) return false;
  if (iwsav[iw_method] < 1 || iwsav[iw_method] > 3 || iwsav[iw_n] < 1) return false;
  st = {iwsav, rwsav, iwsav[iw_n], &pairs[iwsav[iw_method] - 1]};
  return true;
}

double rk_hmin(const rk_state &st, double t) {
  const double scale = std::max({std::fabs(t), std::fabs(st.rw[rw_tend]), std::fabs(st.rw[rw_tend] - st.rw[rw_tstart])});
  return 10.0 * machine_eps * scale;
}

rk_event rk_resume(const rk_state &st, rk_request &req) {
  const pair_info &pr = *st.pr;
  const int64_t n = st.n;
  int64_t *iw = st.iw;
  double *rw = st.rw;
  switch (iw[iw_phase]) {
    case ph_idle:
      if (!iw[iw_have_yp]) {
        iw[iw_phase] = ph_yp0;
        req = {rw[rw_t], st.y(), st.yp(), 0.0};
        return rk_event::eval;
      }
      for (int64_t m = 0; m < n; ++m) st.k(0)[m] = st.yp()[m];
      iw[iw_rejects] = 0;
      return start_attempt(st, req);

    case ph_yp0: {
      ++iw[iw_nfcn];
      ++iw[iw_budget];
      iw[iw_have_yp] = 1;
      if (iw[iw_errass]) {
        for (int64_t m = 0; m < n; ++m) {
          st.ysec()[m] = st.y()[m];
          st.ypsec()[m] = st.yp()[m];
        }
      }
      if (rw[rw_h] != 0.0) {
        for (int64_t m = 0; m < n; ++m) st.k(0)[m] = st.yp()[m];
        iw[iw_rejects] = 0;
        return start_attempt(st, req);
      }
      // Initial step: a first guess from |y0| and |f0|, and a trial point.
      const double d0 = weighted_max(st, st.y(), st.y());
      const double d1 = weighted_max(st, st.yp(), st.y());
      const double range = std::fabs(rw[rw_target] - rw[rw_t]);
      double h0 = (d0 < 1e-5 || d1 < 1e-5) ? 1e-6 * range : 0.01 * d0 / d1;
      h0 = std::min(h0, range);
      h0 = std::max(h0, 2.0 * rk_hmin(st, rw[rw_t]));
      rw[rw_hnext] = h0;
      for (int64_t m = 0; m < n; ++m) st.ytmp()[m] = st.y()[m] + rw[rw_dir] * h0 * st.yp()[m];
      iw[iw_phase] = ph_hinit;
      req = {rw[rw_t] + rw[rw_dir] * h0, st.ytmp(), st.k(1), 0.0};
      return rk_event::eval;
    }

    case ph_hinit: {
      ++iw[iw_nfcn];
      ++iw[iw_budget];
      const double h0 = rw[rw_hnext];
      for (int64_t m = 0; m < n; ++m) st.ytmp()[m] = (st.k(1)[m] - st.yp()[m]) / h0;
      const double d2 = weighted_max(st, st.ytmp(), st.y());
      const double d1 = weighted_max(st, st.yp(), st.y());
      const double dm = std::max(d1, d2);
      double h1 = dm <= 1e-15 ? std::max(1e-6, h0 * 1e-3) : std::pow(rw[rw_tol] / dm, 1.0 / (pr.p + 1));
      if (!(h1 > 0.0)) h1 = h0;
      double h = std::min(100.0 * h0, h1);
      h = std::min(h, std::fabs(rw[rw_target] - rw[rw_t]));
      rw[rw_h] = rw[rw_dir] * h;
      for (int64_t m = 0; m < n; ++m) st.k(0)[m] = st.yp()[m];
      iw[iw_rejects] = 0;
      return start_attempt(st, req);
    }

    case ph_stage: {
      ++iw[iw_nfcn];
      ++iw[iw_budget];
      const double h = rw[rw_h];
      const int i = static_cast<int>(++iw[iw_stage]);
      if (i < pr.s) {
        stage_point(st, st.y(), h, i, st.ytmp(), false);
        req = {rw[rw_t] + pr.c[i] * h, st.ytmp(), st.k(i), 0.0};
        return rk_event::eval;
      }
      // All stages: the estimate decides.
      const double err = finish_attempt(st, st.y(), h, st.ynew(), false);
      const double tol = rw[rw_tol];
      rw[rw_err] = err;
      const double expo = 1.0 / (pr.q + 1);
      if (!(err <= tol)) {
        ++iw[iw_fails];
        ++iw[iw_rejects];
        double r = std::isfinite(err) ? safety * std::pow(tol / err, expo) : shrink_min;
        r = std::clamp(r, shrink_min, safety);
        if (iw[iw_rejects] >= 2) r = std::min(r, shrink_second);
        const double hn = h * r;
        const double hmin = rk_hmin(st, rw[rw_t]);
        if (std::fabs(hn) < hmin) {
          rw[rw_hnext] = hn;
          req = {rw[rw_t], st.y(), nullptr, hmin};
          iw[iw_phase] = ph_idle;
          return rk_event::too_small;
        }
        rw[rw_h] = hn;
        return start_attempt(st, req);
      }
      // Accept.
      // (tol/err)^expo is needed only below the growth limit: 0.8 x^expo < 4
      // exactly when x < 5^(q+1).
      double grow_cut = 5.0;
      for (int k = 0; k < pr.q; ++k) grow_cut *= 5.0;
      const double x = tol / err;
      double r = !(x < grow_cut) ? grow_max : safety * std::pow(x, expo);
      r = std::min(r, iw[iw_rejects] > 0 ? 1.0 : grow_max);
      const bool cut = iw[iw_last_cut] != 0;
      iw[iw_hit_target] = std::fabs(rw[rw_target] - rw[rw_t]) == std::fabs(h);
      rw[rw_told] = rw[rw_t];
      rw[rw_hlast] = h;
      const double tnew = iw[iw_hit_target] ? rw[rw_target] : rw[rw_t] + h;
      rw[rw_t] = tnew;
      // Do not let a step shortened to reach the target shrink the next one.
      const double hprop = cut ? std::max(std::fabs(h * r), std::fabs(rw[rw_hnext])) : std::fabs(h * r);
      rw[rw_hnext] = rw[rw_dir] * hprop;
      rw[rw_h] = rw[rw_hnext];
      ++iw[iw_steps];
      if (cut) ++iw[iw_cuts];
      for (int64_t m = 0; m < n; ++m) {
        st.yold()[m] = st.y()[m];
        st.y()[m] = st.ynew()[m];
      }
      if (pr.fsal) {
        for (int64_t m = 0; m < n; ++m) st.yp()[m] = st.k(pr.s - 1)[m];
        return after_accept(st, req);
      }
      iw[iw_phase] = ph_ynew;
      req = {tnew, st.y(), st.yp(), 0.0};
      return rk_event::eval;
    }

    case ph_ynew:
      ++iw[iw_nfcn];
      ++iw[iw_budget];
      return after_accept(st, req);

    case ph_sec_stage: {
      ++iw[iw_nfcn_ga];
      const double hs = 0.5 * rw[rw_hlast];
      const int i = static_cast<int>(++iw[iw_stage]);
      if (i < pr.s) {
        stage_point(st, st.ysec(), hs, i, st.ytmp(), true);
        req = {rw[rw_tsec] + pr.c[i] * hs, st.ytmp(), st.ksec(i), 0.0};
        return rk_event::eval_ga;
      }
      const double err = finish_attempt(st, st.ysec(), hs, st.ysnew(), true);
      if (!(err <= rw[rw_tol]) && !(err <= rw[rw_err])) {
        iw[iw_phase] = ph_idle;
        rw[rw_tsec] = rw[rw_told];
        return iw[iw_ga_steps] == 0 ? rk_event::ga_start : rk_event::ga_later;
      }
      for (int64_t m = 0; m < n; ++m) st.ysec()[m] = st.ysnew()[m];
      rw[rw_tsec] = iw[iw_spare] == 0 ? rw[rw_tsec] + hs : rw[rw_t];
      if (pr.fsal) {
        for (int64_t m = 0; m < n; ++m) st.ypsec()[m] = st.ksec(pr.s - 1)[m];
        return sec_half_done(st, req);
      }
      iw[iw_phase] = ph_sec_ynew;
      req = {rw[rw_tsec], st.ysec(), st.ypsec(), 0.0};
      return rk_event::eval_ga;
    }

    case ph_sec_ynew:
      ++iw[iw_nfcn_ga];
      return sec_half_done(st, req);
  }
  iw[iw_phase] = ph_idle;
  return rk_event::too_small;  // not reached: the phase is one of the above
}

void rk_interp(const rk_state &st, double tw, int64_t m, double *yw, double *ypw) {
  const double h = st.rw[rw_hlast], t0 = st.rw[rw_told];
  const double th = (tw - t0) / h;
  const double *y0 = st.yold(), *y1 = st.y();
  if (st.iw[iw_method] == rk23) {
    // Cubic Hermite on (y0, f0) and (y1, f1): order 3.
    const double *f0 = st.k(0), *f1 = st.yp();
    const double h00 = (1 + 2 * th) * (1 - th) * (1 - th), h10 = th * (1 - th) * (1 - th);
    const double h01 = th * th * (3 - 2 * th), h11 = th * th * (th - 1);
    const double d00 = 6 * th * (th - 1), d10 = (1 - th) * (1 - 3 * th), d01 = -d00, d11 = th * (3 * th - 2);
    for (int64_t i = 0; i < m; ++i) {
      if (yw) yw[i] = h00 * y0[i] + h10 * h * f0[i] + h01 * y1[i] + h11 * h * f1[i];
      if (ypw) ypw[i] = (d00 * y0[i] + d01 * y1[i]) / h + d10 * f0[i] + d11 * f1[i];
    }
    return;
  }
  // The 5(4) pair's continuous extension: b_j(theta) = sum_k d_jk theta^(k+1).
  const int s = st.pr->s;
  double bw[8], dbw[8];
  for (int j = 0; j < s; ++j) {
    const double *d = bs45_dd.data() + 4 * j;
    bw[j] = th * (d[0] + th * (d[1] + th * (d[2] + th * d[3])));
    dbw[j] = d[0] + th * (2 * d[1] + th * (3 * d[2] + th * 4 * d[3]));
  }
  for (int64_t i = 0; i < m; ++i) {
    double sy = 0.0, sp = 0.0;
    for (int j = 0; j < s; ++j) {
      sy += bw[j] * st.k(j)[i];
      sp += dbw[j] * st.k(j)[i];
    }
    if (yw) yw[i] = y0[i] + h * sy;
    if (ypw) ypw[i] = sp;
  }
}

}  // namespace zem::d02
