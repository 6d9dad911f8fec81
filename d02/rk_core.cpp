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
// and by the length of the range; sizes in the norm of rk_weighted_max.
//
// Stiffness.  After each accepted step the dominant eigenvalue of the
// Jacobian is estimated from two stages of the step: lambda ~ |k_i - k_j| /
// |Y_i - Y_j|, where Y_i - Y_j = h sum_l (a_il - a_jl) k_l is formed from the
// stage derivatives (no stage values are stored).  An estimate counts when
// the difference of the Y is at least 1e-10 times that of the k (the
// quotient guard) and the ratio to the previous estimate lies in [0.2, 5];
// a step "looks limited by stability" when |h lambda| >= 0.9 times the
// pair's stability radius.  (The tests are made on the squares, so the
// estimate costs no square root.)  After rk_stiff_steps such steps in a row the
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

#include "d02/rk_machine.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "frame/constants.h"

namespace zem::d02 {
namespace {

template <class P>
constexpr pair_info info() {
  return {P::s, P::fsal, P::q, P::p, P::radius, P::tangent, P::cost, P::c.data(), P::a.data(),
          P::b.data(), P::e.data(), P::stiff_i, P::stiff_j};
}
// The per-pair constants (d02/rk_machine.h holds them as compile-time
// constants; this is their run-time copy).
const pair_info pairs[3] = {info<pair_k<rk23>>(), info<pair_k<rk45>>(), info<pair_k<rk78>>()};

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

double rk_weighted_max(const rk_state &st, const double *v, const double *y) {
  double big = 0.0;
  for (int64_t m = 0; m < st.n; ++m) big = std::max(big, std::fabs(y[m]));
  double r = 0.0;
  for (int64_t m = 0; m < st.n; ++m) {
    const double w = std::max({st.thresh()[m], std::fabs(y[m]), 0.01 * big});
    r = std::max(r, std::fabs(v[m]) / w);
  }
  return r;
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
  return rk_run<false>(st, req, [](double, int64_t, const double *, double *) { return int64_t{0}; });
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
