// The first-order active-set method of e04kf for
//
//     minimize f(x)   subject to   l <= x <= u,
//
// written as a template over the "oracle" that evaluates f and its gradient
// (the user's functions through the callback chain, the model's own linear
// or quadratic objective, or finite differences of either), so that the
// evaluations inline into the iteration.
//
// The method alternates between two phases (docs/e04kf.md has the details
// and the choices):
//
//  * NPG, the nonmonotone projected gradient iteration: the spectral
//    (Barzilai-Borwein) step  x+ = P(x - a g)  with a = s's / s'y, accepted
//    by a nonmonotone Armijo backtracking against the largest objective of
//    the last `npg_window` iterations (Grippo-Lampariello-Lucidi; Birgin,
//    Martinez and Raydan's spectral projected gradient).  It changes the
//    active set freely and identifies it.
//  * CG, a nonlinear conjugate-gradient iteration on the free variables
//    (the face of the box the iterate lies in): the Hager-Zhang direction
//        d+ = -P g+ + beta d,   beta = (y'Pg+ - 2 (y'Py)(d'g+)/(d'y)) / (d'y),
//    with their lower bound on beta, preconditioned by a limited-memory
//    quasi-Newton matrix P of "FOAS Memory" pairs (P = gamma I with no
//    pairs), restarted every "FOAS Restart Factor" x (free variables)
//    iterations, and a Wolfe line search capped at the first bound the
//    direction meets.  A variable that reaches its bound leaves the face and
//    the iteration restarts on the smaller face.
//
// Switching (Hager-Zhang's active-set algorithm): NPG hands over to CG when
// the set of variables at a bound has stayed the same for two iterations
// and the projected gradient is mostly carried by the free variables; CG
// hands back when the free part of the projected gradient falls below
// "FOAS Slow Tolerance" times the whole (bounds must be released), or when
// its line search fails.
//
// Memory: (2m + 13) n doubles for m = "FOAS Memory", allocated once; the
// iteration allocates nothing.  Every loop is bounded: the iteration by
// "FOAS Iteration Limit" and "Time Limit", each line search by a fixed
// number of trials.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace zem::e04::foas {

inline constexpr int npg_window = 10;      // nonmonotone memory of the NPG phase
inline constexpr int slow_window = 10;     // iterations over which progress is measured
inline constexpr int max_trials = 40;      // trial points of one line search
inline constexpr int settle_iterations = 2;  // NPG iterations with an unchanged active set before CG
inline constexpr double armijo = 1e-4, wolfe = 0.9, hz_eta = 0.01;
// Hager and Zhang's family of conjugate-gradient parameters
//     beta_theta = (y'Pg+ - theta (y'Py)(d'g+)/(d'y)) / (d'y)
// gives sufficient descent, g+'d+ <= -(1 - 1/(4 theta)) g+'Pg+, for every
// theta > 1/4.  Two members are used:
//  * theta = 1 when P satisfies the secant equation P y = s of the last step
//    (s = a d; the newest pair is that step's, on the current face): then
//    y'Pg+ = a d'g+ and y'Py = a d'y, so beta = (1 - theta) a (d'g+)/(d'y)
//    vanishes and d+ = -P g+ is the limited-memory quasi-Newton direction
//    on the free variables, whose natural step is 1.  Any other theta adds
//    a multiple of d that grows with the inexactness of the line search and
//    spoils that scaling.
//  * theta = 2, Hager and Zhang's own choice, where P does not satisfy it (no
//    pairs, the last pair refused for its curvature): a genuine conjugacy
//    correction.
inline constexpr double hz_theta_secant = 1.0, hz_theta = 2.0;
inline constexpr int stats_len = 100, rinfo_len = 100;

enum subsolver_kind : int64_t { sub_both = 0, sub_npg = 1, sub_cg = 2 };
enum norm_kind : int64_t { norm_inf = 1, norm_two = 2 };

struct settings {
  int64_t iteration_limit = 10000000, memory = 11, monitor_frequency = 0, print_frequency = 1;
  double progress_tol = 1.0815775704056441e-12, rel_stop_tol = 1.0815775704056441e-12, restart_factor = 6.0,
         slow_tol = 0.010131559020711013, stop_tol = 1e-6, fd_interval = 1.0536712127723509e-08;
  int64_t subsolver = sub_both, norm = norm_inf;
  bool estimate = false;
  double bigbnd = 1e20, time_limit = 1e6;
};

// How a solve ended.
enum class outcome : int {
  converged,
  user_stop,
  iteration_limit,
  slow_progress,
  no_progress,  // a line search found no lower objective along a descent direction
  time_limit,
  unbounded,
  nan_objective,
  nan_gradient,
};

// Indices of the rinfo and stats arrays (docs/e04kf.md).
enum rinfo_index : int { ri_f = 0, ri_pgnorm = 1, ri_pgratio = 2, ri_step = 3, ri_stepnorm = 4, ri_spectral = 5 };
enum stats_index : int {
  st_iter = 0, st_nf = 1, st_ng = 2, st_npg = 3, st_cg = 4, st_restarts = 5, st_switches = 6, st_atbound = 7,
  st_trials = 8, st_time = 9
};

struct state_view {
  int64_t iter = 0, nfree = 0, phase = 0;  // phase: the iteration that led to x, 0 NPG, 1 CG
  double f = 0, pgnorm = 0, step = 0;
  int64_t nf = 0, ng = 0;
};

// The work arrays, allocated once: x, its trial, the gradient and its trial,
// direction, two preconditioned gradients, the previous gradient, the
// finite-difference point, the bounds,
// and m + 1 slots of (s, y) pairs.
struct workspace {
  int64_t n = 0, m = 0;
  std::unique_ptr<double[]> buf;
  double *x = nullptr, *xt = nullptr, *g = nullptr, *gt = nullptr, *d = nullptr, *v = nullptr, *vold = nullptr,
         *w = nullptr, *fd = nullptr, *lo = nullptr, *hi = nullptr, *S = nullptr, *Y = nullptr;
  std::unique_ptr<double[]> rho;
  std::unique_ptr<int64_t[]> ord;
  // false when memory could not be had (or the size overflows).
  bool allocate(int64_t n_, int64_t m_) noexcept {
    n = n_;
    m = m_;
    const int64_t per = 11 + 2 * (m + 1);
    const int64_t nn = std::max<int64_t>(n, 1);
    if (nn > static_cast<int64_t>(PTRDIFF_MAX / sizeof(double)) / per) return false;
    // Value-initialised: every array starts defined (a restart may read a
    // direction or a pair slot before the iteration has written it; the
    // one pass over the block costs far less than a single iteration).
    buf.reset(new (std::nothrow) double[static_cast<size_t>(nn * per)]());
    rho.reset(new (std::nothrow) double[static_cast<size_t>(m + 1)]());
    ord.reset(new (std::nothrow) int64_t[static_cast<size_t>(m + 2)]());
    if (!buf || !rho || !ord) return false;
    double *p = buf.get();
    for (double **q : {&x, &xt, &g, &gt, &d, &v, &vold, &w, &fd, &lo, &hi}) {
      *q = p;
      p += nn;
    }
    S = p;
    Y = p + nn * (m + 1);
    return true;
  }
  double *s_of(int64_t slot) const { return S + slot * std::max<int64_t>(n, 1); }
  double *y_of(int64_t slot) const { return Y + slot * std::max<int64_t>(n, 1); }
};

struct result {
  outcome how = outcome::converged;
  int64_t stop_flag = 0;     // the user's flag when how == user_stop
  int64_t bad_index = 0;     // 1-based element of a non-finite gradient
  double bad_value = 0.0;    // the non-finite value
  double rinfo[rinfo_len] = {};
  double stats[stats_len] = {};
};

// The oracle: f(x, &fx), grad(x, g) and monitor(x, rinfo, stats) return a
// callback status (non-zero: the user asked to stop).  log(kind, view) is
// called for the iteration log (kind 0 header, 1 line).
template <class Oracle>
class solver {
 public:
  solver(const settings &st, workspace &ws, Oracle &oracle) : st_(st), ws_(ws), o_(oracle) {}

  // Runs from ws.x (already inside [lo, hi]); ws.x holds the last accepted
  // iterate on return, whatever the outcome.
  void run(result &r) {
    r_ = &r;
    run_impl(r);
    fill_info();
  }

 private:
  void run_impl(result &r);
  const settings &st_;
  workspace &ws_;
  Oracle &o_;
  result *r_ = nullptr;
  double f_ = 0, pgnorm_ = 0, efree_ = 0, alpha_bb_ = 1, step_ = 0, stepnorm_ = 0;
  int64_t nfree_ = 0, natb_ = 0, np_ = 0, spare_ = 0, nf_ = 0, ng_ = 0;
  double gamma_ = 1;
  bool fresh_pair_ = false;  // the newest pair is the last step's, on the current face
  double fhist_[npg_window] = {};
  std::chrono::steady_clock::time_point t0_;

  static bool at_bound(double x, double l, double u) { return x <= l || x >= u; }

  // f at p; false after a stop, a NaN or -inf (r_ set).
  bool eval_f(const double *p, double *fx) {
    ++nf_;
    const int64_t s = o_.f(p, fx);
    if (s != 0) return stop(s);
    if (std::isnan(*fx)) return set(outcome::nan_objective, 0, *fx);
    if (*fx == -std::numeric_limits<double>::infinity() || *fx < -st_.bigbnd) return set(outcome::unbounded);
    return true;
  }
  // Gradient at p (where f is fp); false after a stop or a non-finite element.
  bool eval_g(const double *p, double fp, double *gp) {
    ++ng_;
    const int64_t n = ws_.n;
    if (st_.estimate) {
      double *xf = ws_.fd;
      std::memcpy(xf, p, sizeof(double) * static_cast<size_t>(n));
      for (int64_t i = 0; i < n; ++i) {
        if (ws_.lo[i] == ws_.hi[i]) {
          gp[i] = 0.0;
          continue;
        }
        const double xi = p[i];
        double h = st_.fd_interval * (1.0 + std::fabs(xi));
        if (xi + h > ws_.hi[i]) h = -h;
        xf[i] = xi + h;
        double fh = 0.0;
        ++nf_;
        const int64_t s = o_.f(xf, &fh);
        xf[i] = xi;
        if (s != 0) return stop(s);
        if (!std::isfinite(fh)) return set(outcome::nan_objective, 0, fh);
        gp[i] = (fh - fp) / h;
      }
    } else {
      const int64_t s = o_.grad(p, gp);
      if (s != 0) return stop(s);
    }
    for (int64_t i = 0; i < n; ++i)
      if (!std::isfinite(gp[i])) return set(outcome::nan_gradient, i + 1, gp[i]);
    return true;
  }
  bool stop(int64_t flag) {
    r_->how = outcome::user_stop;
    r_->stop_flag = flag;
    return false;
  }
  bool set(outcome how, int64_t index = 0, double value = 0.0) {
    r_->how = how;
    r_->bad_index = index;
    r_->bad_value = value;
    return false;
  }

  double norm_acc(double acc, double v) const { return st_.norm == norm_two ? acc + v * v : std::max(acc, std::fabs(v)); }
  double norm_fin(double acc) const { return st_.norm == norm_two ? std::sqrt(acc) : acc; }

  // Projected gradient measures at (x, g): its norm, the norm of its free
  // part, the free and at-bound counts.
  void measure() {
    const double *x = ws_.x, *g = ws_.g, *lo = ws_.lo, *hi = ws_.hi;
    double all = 0, fr = 0;
    int64_t nfree = 0;
    for (int64_t i = 0; i < ws_.n; ++i) {
      const double p = std::min(std::max(x[i] - g[i], lo[i]), hi[i]) - x[i];
      all = norm_acc(all, p);
      if (x[i] > lo[i] && x[i] < hi[i]) {
        ++nfree;
        fr = norm_acc(fr, p);
      }
    }
    pgnorm_ = norm_fin(all);
    efree_ = norm_fin(fr);
    nfree_ = nfree;
    natb_ = ws_.n - nfree;
  }

  int64_t iter_ = 0, npg_ = 0, ncg_ = 0, restarts_ = 0, switches_ = 0, trials_ = 0;
  double pg0_ = 0;
  void fill_info() {
    const int64_t iter = iter_, npg = npg_, ncg = ncg_, restarts = restarts_, switches = switches_, trials = trials_;
    const double pg0 = pg0_;
    r_->rinfo[ri_f] = f_;
    r_->rinfo[ri_pgnorm] = pgnorm_;
    r_->rinfo[ri_pgratio] = pg0 > 0 ? pgnorm_ / pg0 : 0.0;
    r_->rinfo[ri_step] = step_;
    r_->rinfo[ri_stepnorm] = stepnorm_;
    r_->rinfo[ri_spectral] = alpha_bb_;
    r_->stats[st_iter] = static_cast<double>(iter);
    r_->stats[st_nf] = static_cast<double>(nf_);
    r_->stats[st_ng] = static_cast<double>(ng_);
    r_->stats[st_npg] = static_cast<double>(npg);
    r_->stats[st_cg] = static_cast<double>(ncg);
    r_->stats[st_restarts] = static_cast<double>(restarts);
    r_->stats[st_switches] = static_cast<double>(switches);
    r_->stats[st_atbound] = static_cast<double>(natb_);
    r_->stats[st_trials] = static_cast<double>(trials);
    r_->stats[st_time] = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0_).count();
  }

  // ---- limited-memory pairs ----
  // P q for q = the free part of g (zero elsewhere: every stored pair is
  // zero on the variables at a bound), into v.
  void precondition(const double *g) {
    const int64_t n = ws_.n;
    double *v = ws_.v;
    const double *lo = ws_.lo, *hi = ws_.hi, *x = ws_.x;
    for (int64_t i = 0; i < n; ++i) v[i] = (x[i] > lo[i] && x[i] < hi[i]) ? g[i] : 0.0;
    double alpha[101];
    for (int64_t k = np_ - 1; k >= 0; --k) {
      const int64_t sl = ws_.ord[k];
      const double *s = ws_.s_of(sl), *y = ws_.y_of(sl);
      double a = 0;
      for (int64_t i = 0; i < n; ++i) a += s[i] * v[i];
      a *= ws_.rho[sl];
      alpha[k] = a;
      for (int64_t i = 0; i < n; ++i) v[i] -= a * y[i];
    }
    const double gm = gamma_;
    for (int64_t i = 0; i < n; ++i) v[i] *= gm;
    for (int64_t k = 0; k < np_; ++k) {
      const int64_t sl = ws_.ord[k];
      const double *s = ws_.s_of(sl), *y = ws_.y_of(sl);
      double b = 0;
      for (int64_t i = 0; i < n; ++i) b += y[i] * v[i];
      const double c = alpha[k] - ws_.rho[sl] * b;
      for (int64_t i = 0; i < n; ++i) v[i] += c * s[i];
    }
  }
  // Accept the pair in the spare slot (s'y = sy, y'y = yy), dropping the
  // oldest when all m are in use.
  void push_pair(double sy, double yy) {
    const int64_t m = ws_.m;
    if (m == 0) return;
    const int64_t sl = spare_;
    ws_.rho[sl] = 1.0 / sy;
    gamma_ = sy / yy;
    fresh_pair_ = true;
    if (np_ < m) {
      ws_.ord[np_++] = sl;
      next_spare();
    } else {
      spare_ = ws_.ord[0];
      for (int64_t k = 0; k + 1 < m; ++k) ws_.ord[k] = ws_.ord[k + 1];
      ws_.ord[m - 1] = sl;
    }
  }
  // The lowest of the m + 1 slots not holding a pair.
  void next_spare() {
    bool used[102] = {};
    for (int64_t k = 0; k < np_; ++k) used[ws_.ord[k]] = true;
    for (int64_t sl = 0; sl <= ws_.m; ++sl)
      if (!used[sl]) {
        spare_ = sl;
        return;
      }
  }
  // Variables that reached a bound leave every pair (their components are
  // zeroed); pairs that lost their curvature are dropped.
  void mask_pairs(const double *xnew) {
    const int64_t n = ws_.n;
    fresh_pair_ = false;
    if (np_ == 0) return;
    const double *lo = ws_.lo, *hi = ws_.hi;
    for (int64_t k = 0; k < np_; ++k) {
      const int64_t sl = ws_.ord[k];
      double *s = ws_.s_of(sl), *y = ws_.y_of(sl);
      double sy = 0, yy = 0;
      for (int64_t i = 0; i < n; ++i) {
        if (at_bound(xnew[i], lo[i], hi[i])) s[i] = y[i] = 0.0;
        sy += s[i] * y[i];
        yy += y[i] * y[i];
      }
      ws_.rho[sl] = sy > 1e-12 * yy && yy > 0 ? 1.0 / sy : 0.0;
    }
    int64_t keep = 0;
    for (int64_t k = 0; k < np_; ++k) {
      const int64_t sl = ws_.ord[k];
      if (ws_.rho[sl] != 0.0) ws_.ord[keep++] = sl;
    }
    np_ = keep;
    next_spare();
    if (np_ > 0) {
      const int64_t sl = ws_.ord[np_ - 1];
      const double *y = ws_.y_of(sl);
      double yy = 0;
      for (int64_t i = 0; i < n; ++i) yy += y[i] * y[i];
      gamma_ = yy > 0 ? 1.0 / (ws_.rho[sl] * yy) : gamma_;
    }
  }
  void clear_pairs() {
    np_ = 0;
    spare_ = 0;
    fresh_pair_ = false;
  }

  // After a step from x to xt (gradients g, gt): the spectral step, the
  // pair (restricted to the variables free at xt), and whether the set of
  // variables at a bound changed.  Returns true when a free variable
  // reached a bound (the face shrank).
  bool after_step(bool *changed) {
    const int64_t n = ws_.n;
    const double *x = ws_.x, *xt = ws_.xt, *g = ws_.g, *gt = ws_.gt, *lo = ws_.lo, *hi = ws_.hi;
    const bool keep = ws_.m > 0;
    double *s = keep ? ws_.s_of(spare_) : nullptr, *y = keep ? ws_.y_of(spare_) : nullptr;
    double ss = 0, sy = 0, msy = 0, myy = 0, sn = 0;
    bool chg = false, shrank = false;
    for (int64_t i = 0; i < n; ++i) {
      const double si = xt[i] - x[i], yi = gt[i] - g[i];
      ss += si * si;
      sy += si * yi;
      sn = norm_acc(sn, si);
      const bool bo = at_bound(x[i], lo[i], hi[i]), bn = at_bound(xt[i], lo[i], hi[i]);
      chg |= bo != bn;
      shrank |= bn && !bo;
      if (!bn) {
        msy += si * yi;
        myy += yi * yi;
      }
      if (keep) {
        s[i] = bn ? 0.0 : si;
        y[i] = bn ? 0.0 : yi;
      }
    }
    stepnorm_ = norm_fin(sn);
    alpha_bb_ = sy > 0 ? ss / sy : 1e30;
    alpha_bb_ = std::min(std::max(alpha_bb_, 1e-30), 1e30);
    fresh_pair_ = false;
    // The pair, restricted to the variables free at xt, when its curvature
    // is positive; with no memory P = gamma I takes the scaling s'y / y'y
    // of that same restricted pair.
    if (myy > 0 && msy > 1e-12 * myy) {
      if (keep) push_pair(msy, myy);
      else gamma_ = msy / myy;
    }
    if (shrank) mask_pairs(xt);
    *changed = chg;
    return shrank;
  }

  bool npg_step(int64_t *trials);
  // false: the line search failed (nothing changed), or r_ was set.
  bool cg_step(bool restart, int64_t *trials, bool *failed);
  double dg_prev_ = 0, alpha_prev_ = 0;
  void swap_points() {
    std::swap(ws_.x, ws_.xt);
    std::swap(ws_.g, ws_.gt);
  }
};

template <class Oracle>
bool solver<Oracle>::npg_step(int64_t *trials) {
  const int64_t n = ws_.n;
  const double *x = ws_.x, *g = ws_.g, *lo = ws_.lo, *hi = ws_.hi;
  double *d = ws_.d, *xt = ws_.xt;
  double gd = 0;
  const double a = alpha_bb_;
  for (int64_t i = 0; i < n; ++i) {
    d[i] = std::min(std::max(x[i] - a * g[i], lo[i]), hi[i]) - x[i];
    gd += g[i] * d[i];
  }
  if (!(gd < 0)) {
    // The spectral step is lost in rounding: retry once with the step that
    // makes the largest projected-gradient component one.
    alpha_bb_ = pgnorm_ > 0 ? 1.0 / std::max(pgnorm_, 1e-300) : 1.0;
    gd = 0;
    for (int64_t i = 0; i < n; ++i) {
      d[i] = std::min(std::max(x[i] - alpha_bb_ * g[i], lo[i]), hi[i]) - x[i];
      gd += g[i] * d[i];
    }
    if (!(gd < 0)) return set(outcome::no_progress);
  }
  double fref = fhist_[0];
  for (double v : fhist_) fref = std::max(fref, v);
  double lam = 1.0, ft = 0.0;
  for (int it = 0;; ++it) {
    if (it == max_trials) return set(outcome::no_progress);
    if (it == 0) {
      const double ab = alpha_bb_;  // the full step lands exactly on the projection
      for (int64_t i = 0; i < n; ++i) xt[i] = std::min(std::max(x[i] - ab * g[i], lo[i]), hi[i]);
    } else {
      for (int64_t i = 0; i < n; ++i) xt[i] = x[i] + lam * d[i];
    }
    ++*trials;
    if (!eval_f(xt, &ft)) return false;
    if (ft <= fref + armijo * lam * gd) break;
    double nl = 0.1 * lam;
    if (std::isfinite(ft)) {
      const double den = 2.0 * (ft - f_ - lam * gd);
      if (den > 0) nl = std::min(std::max(-gd * lam * lam / den, 0.1 * lam), 0.5 * lam);
    }
    lam = nl;
  }
  if (!eval_g(xt, ft, ws_.gt)) return false;
  step_ = lam;
  f_ = ft;
  return true;
}

template <class Oracle>
bool solver<Oracle>::cg_step(bool restart, int64_t *trials, bool *failed) {
  const int64_t n = ws_.n;
  double *x = ws_.x, *g = ws_.g, *d = ws_.d, *lo = ws_.lo, *hi = ws_.hi;
  *failed = false;
  // The preconditioned gradient of this point, into v (P g_old is in vold).
  precondition(g);
  const double *v = ws_.v, *vold = ws_.vold;
  // beta (hz_theta above) from the previous direction d, the previous
  // gradient (kept in w) and y = g - g_old on the free variables.  P y is
  // had without a second recursion: s itself when the newest pair is the
  // last step's (the secant equation), gamma y with no pairs, and
  // P g - P g_old = v - vold when P did not change over the step.
  double beta = 0;
  if (!restart) {
    const double *gold = ws_.w;
    const bool secant = np_ > 0 && fresh_pair_;
    const double *sn = secant ? ws_.s_of(ws_.ord[np_ - 1]) : nullptr;
    double dy = 0, yv = 0, yPy = 0, dg = 0, dd = 0, gg = 0, yy = 0, yg = 0, sg = 0;
    for (int64_t i = 0; i < n; ++i) {
      if (!(x[i] > lo[i] && x[i] < hi[i])) continue;
      const double yi = g[i] - gold[i];
      dy += d[i] * yi;
      dg += d[i] * g[i];
      dd += d[i] * d[i];
      gg += gold[i] * gold[i];
      if (secant) {
        sg += sn[i] * g[i];
      } else if (np_ == 0) {
        yy += yi * yi;
        yg += yi * g[i];
      } else {
        yv += yi * v[i];
        yPy += yi * (v[i] - vold[i]);
      }
    }
    if (secant) {
      yv = sg;
      yPy = 1.0 / ws_.rho[ws_.ord[np_ - 1]];
    } else if (np_ == 0) {
      yv = gamma_ * yg;
      yPy = gamma_ * yy;
    }
    if (dy > 0) {
      beta = (yv - (secant ? hz_theta_secant : hz_theta) * yPy * dg / dy) / dy;
      const double eta = -1.0 / (std::sqrt(dd) * std::min(hz_eta, std::sqrt(gg)));
      beta = std::max(beta, eta);
    }
  }
  // Direction and the step to the first bound.
  double dg = 0, dd = 0, gfn = 0, amax = std::numeric_limits<double>::infinity();
  for (int64_t i = 0; i < n; ++i) {
    if (!(x[i] > lo[i] && x[i] < hi[i])) {
      d[i] = 0.0;
      continue;
    }
    const double di = -v[i] + beta * d[i];
    d[i] = di;
    dg += di * g[i];
    dd += di * di;
    gfn += g[i] * g[i];
    if (di < 0) amax = std::min(amax, (lo[i] - x[i]) / di);
    else if (di > 0) amax = std::min(amax, (hi[i] - x[i]) / di);
  }
  if (!(dg < -1e-12 * std::sqrt(dd * gfn))) {
    // Not a descent direction: the preconditioned gradient alone, else the
    // gradient with the pairs forgotten.
    double vg = 0;
    for (int64_t i = 0; i < n; ++i) vg += v[i] * g[i];
    const bool use_v = vg > 0;
    if (!use_v) clear_pairs();
    dg = 0;
    amax = std::numeric_limits<double>::infinity();
    for (int64_t i = 0; i < n; ++i) {
      if (!(x[i] > lo[i] && x[i] < hi[i])) {
        d[i] = 0.0;
        continue;
      }
      const double di = use_v ? -v[i] : -gamma_ * g[i];
      d[i] = di;
      dg += di * g[i];
      if (di < 0) amax = std::min(amax, (lo[i] - x[i]) / di);
      else if (di > 0) amax = std::min(amax, (hi[i] - x[i]) / di);
    }
    restart = true;
    if (!(dg < 0)) {
      *failed = true;
      return false;
    }
  }
  // Keep this gradient (for y) and its preconditioned image (for P y).
  std::memcpy(ws_.w, g, sizeof(double) * static_cast<size_t>(n));
  std::swap(ws_.v, ws_.vold);

  // Initial trial step: the quasi-Newton step 1 with pairs or at a restart
  // (where d = -gamma g, the spectral step); otherwise the previous step
  // scaled by the ratio of directional derivatives.
  double a = 1.0;
  if (np_ == 0 && !restart && dg_prev_ < 0 && alpha_prev_ > 0)
    a = std::min(std::max(alpha_prev_ * dg_prev_ / dg, 1e-20), 1e20);
  a = std::min(a, amax);
  if (!(a > 0)) {
    *failed = true;
    return false;
  }
  double *xt = ws_.xt, *gt = ws_.gt;
  const double f0 = f_;
  double alo = 0, flo = f0, dglo = dg, ahi = std::numeric_limits<double>::infinity(), fhi = 0;
  double ft = 0, dgt = 0;
  auto trial = [&](double al) {
    const bool cap = al == amax;
    for (int64_t i = 0; i < n; ++i) {
      double xi = x[i] + al * d[i];
      if (cap && d[i] != 0) {
        // variables the capped step takes onto their bound land exactly on it
        if (d[i] < 0 && (x[i] - lo[i]) <= al * (-d[i]) * (1 + 4e-16)) xi = lo[i];
        else if (d[i] > 0 && (hi[i] - x[i]) <= al * d[i] * (1 + 4e-16)) xi = hi[i];
      }
      xt[i] = std::min(std::max(xi, lo[i]), hi[i]);
    }
  };
  bool accepted = false;
  for (int it = 0; it < max_trials; ++it) {
    trial(a);
    ++*trials;
    if (!eval_f(xt, &ft)) return false;
    if (!(ft <= f0 + armijo * a * dg) || (alo > 0 && ft >= flo)) {
      ahi = a;
      fhi = ft;
    } else {
      if (!eval_g(xt, ft, gt)) return false;
      dgt = 0;
      for (int64_t i = 0; i < n; ++i) dgt += gt[i] * d[i];
      if (dgt >= wolfe * dg || a == amax) {
        accepted = true;
        break;
      }
      alo = a;
      flo = ft;
      dglo = dgt;
      // The gradient at the best point so far, in case the search ends
      // there (v is free during the search: P g is in vold, the previous
      // P g_old is not needed again).
      std::memcpy(ws_.v, gt, sizeof(double) * static_cast<size_t>(n));
      if (!std::isfinite(ahi)) {
        a = std::min(4.0 * a, amax);
        continue;
      }
    }
    const double wdt = ahi - alo;
    if (wdt <= 1e-15 * ahi) break;
    double an = alo + 0.5 * wdt;
    if (std::isfinite(fhi)) {
      const double den = 2.0 * (fhi - flo - dglo * wdt);
      if (den > 0) an = alo - dglo * wdt * wdt / den;
    }
    a = std::min(std::max(an, alo + 0.1 * wdt), ahi - 0.1 * wdt);
  }
  if (!accepted) {
    if (!(alo > 0)) {
      *failed = true;
      std::swap(ws_.v, ws_.vold);
      return false;
    }
    // The best point met satisfies the Armijo condition; f and g there are
    // known, so they are not evaluated again.
    a = alo;
    trial(a);
    ft = flo;
    std::memcpy(gt, ws_.v, sizeof(double) * static_cast<size_t>(n));
  }
  step_ = a;
  alpha_prev_ = a;
  dg_prev_ = dg;
  f_ = ft;
  return true;
}

template <class Oracle>
void solver<Oracle>::run_impl(result &r) {
  r.how = outcome::converged;
  t0_ = std::chrono::steady_clock::now();
  const int64_t n = ws_.n;
  clear_pairs();
  if (!eval_f(ws_.x, &f_)) return;
  if (!std::isfinite(f_)) {
    set(outcome::nan_objective, 0, f_);
    return;
  }
  if (!eval_g(ws_.x, f_, ws_.g)) return;
  measure();
  pg0_ = pgnorm_;
  const double tol = std::max(st_.stop_tol, st_.rel_stop_tol * pg0_);
  {
    double gi = 0;
    for (int64_t i = 0; i < n; ++i) gi = std::max(gi, std::fabs(std::min(std::max(ws_.x[i] - ws_.g[i], ws_.lo[i]), ws_.hi[i]) - ws_.x[i]));
    alpha_bb_ = gi > 0 ? 1.0 / gi : 1.0;
  }
  gamma_ = alpha_bb_;
  for (double &v : fhist_) v = f_;
  double fbest = f_;
  int64_t phase = st_.subsolver == sub_cg ? 1 : 0;
  int64_t settled = 0, since_restart = 0, slow_count = 0;
  int64_t &npg = npg_, &ncg = ncg_, &restarts = restarts_, &switches = switches_, &trials = trials_;
  bool restart = true, one_npg = false;
  int64_t last_kind = 0;  // the kind of the iteration that led to x (0 NPG, 1 CG), for the log
  for (int64_t iter = 0;; ++iter) {
    iter_ = iter;
    fill_info();
    state_view sv{iter, nfree_, last_kind, f_, pgnorm_, step_, nf_, ng_};
    if (st_.print_frequency > 0 && iter % st_.print_frequency == 0) o_.log(1, sv);
    if (st_.monitor_frequency > 0 && iter > 0 && iter % st_.monitor_frequency == 0) {
      const int64_t s = o_.monitor(ws_.x, r.rinfo, r.stats);
      if (s != 0) {
        stop(s);
        return;
      }
    }
    if (pgnorm_ <= tol) {
      if (iter % std::max<int64_t>(st_.print_frequency, 1) != 0) o_.log(1, sv);
      return;
    }
    if (iter >= st_.iteration_limit) {
      set(outcome::iteration_limit);
      return;
    }
    if (std::chrono::duration<double>(std::chrono::steady_clock::now() - t0_).count() > st_.time_limit) {
      set(outcome::time_limit);
      return;
    }
    if (slow_count >= slow_window) {
      set(outcome::slow_progress);
      return;
    }
    // ---- one iteration ----
    bool ok = false;
    bool cg_this = phase == 1 && !one_npg;
    if (cg_this) {
      if (restart || (st_.restart_factor * static_cast<double>(nfree_) <= static_cast<double>(since_restart))) {
        if (!restart) ++restarts;
        restart = true;
        since_restart = 0;
      }
      bool failed = false;
      ok = cg_step(restart, &trials, &failed);
      if (!ok && !failed) return;  // r set
      if (ok) {
        ++ncg;
        ++since_restart;
        restart = false;
      } else {
        // The line search failed: a projected-gradient step instead; a
        // second failure there ends the solve.
        cg_this = false;
        restart = true;
        if (st_.subsolver == sub_both) {
          phase = 0;
          settled = 0;
          ++switches;
        }
      }
    }
    if (!cg_this) {
      if (!npg_step(&trials)) return;
      ++npg;
      one_npg = false;
    }
    last_kind = cg_this ? 1 : 0;
    bool changed = false;
    const bool shrank = after_step(&changed);
    swap_points();
    measure();
    fhist_[(iter + 1) % npg_window] = f_;
    // An iteration that leaves the active set alone and lowers the best
    // objective by less than the progress tolerance (relative) is slow;
    // slow_window of them in a row end the solve.
    {
      const double fb = std::min(fbest, f_);
      const bool slow = !changed && fbest - fb <= st_.progress_tol * std::max(std::fabs(fbest), std::fabs(fb));
      slow_count = slow ? slow_count + 1 : 0;
      fbest = fb;
    }
    for (int64_t i = 0; i < n; ++i)
      if (std::fabs(ws_.x[i]) > st_.bigbnd) {
        set(outcome::unbounded);
        return;
      }
    // ---- switching ----
    // Bounds must be released when the free part of the projected gradient
    // is small beside the whole, or when a CG iteration made no progress
    // (the face is solved as far as rounding allows).
    const bool release = efree_ < st_.slow_tol * pgnorm_ || (cg_this && slow_count > 0);
    if (st_.subsolver == sub_both) {
      if (phase == 0) {
        settled = changed ? 0 : settled + 1;
        if (settled >= settle_iterations && !release && nfree_ > 0) {
          phase = 1;
          restart = true;
          ++switches;
        }
      } else if (release) {
        phase = 0;
        settled = 0;
        ++switches;
      } else if (shrank) {
        restart = true;
      }
    } else if (st_.subsolver == sub_cg) {
      if (shrank || !cg_this) restart = true;
      if (release || nfree_ == 0) {
        one_npg = true;
        restart = true;
      }
    }
  }
}

}  // namespace zem::e04::foas
