// c05ax: reverse-communication zero of f near x0 by continuation.
//
// Homotopy.  With f0 = f(x0) != 0 the problems
//     f(x) - theta f0 = 0,    theta from 1 down to 0,
// join the trivial problem (theta = 1, solved by x0) to f(x) = 0.  In one
// dimension every x solves exactly one of them, theta(x) = f(x)/f0, so the
// solution path is the graph of theta over x and is followed by moving x
// monotonically along a branch; no corrector iteration is needed, and a
// turning point of the path (a local minimum of |f|, where theta stops
// decreasing) is passed simply by going on in the same direction.  The theta
// sequence theta_0 = 1, theta_1, ... is the values of theta at the accepted
// points; it decreases towards 0 wherever Newton's direction points along the
// branch and rises again beyond a turning point.
//
// Steps (docs/c05-continuation.md gives the reasons for each constant).
//  1. Derivative: g0 = (f(x0 + scal) - f0)/scal, or with -scal when that
//     difference is not significant (|difference| <= 64 eps max|f|) or not a
//     number.  A sign change already seen there goes straight to step 5.
//  2. Branch 0 leaves x0 in Newton's direction -sign(f0 g0), so theta starts
//     to decrease; branch 1, tried only when branch 0 is abandoned, leaves x0
//     the other way.  First step bound: the Newton distance |f0/g0|, but at
//     most max(1, |x0|).
//  3. Trial step from the current point xi, slope g (secant through the last
//     accepted step): with the rate d = dir g/f0 of theta along the branch,
//     the step is the bound R, or the Newton distance theta_i/(-d) if that is
//     shorter and theta decreases (d < 0).  theta_pred = theta_i + d L.
//  4. The trial is accepted when f is finite, keeps its sign and
//     |theta_t - theta_pred| <= tau = 0.5 max(theta_i, theta_t, |theta_pred|):
//     the linear model must be right to within half the current level of
//     theta.  Accepted: g becomes the secant slope, R doubles (relative to
//     the step taken) when the error was below tau/4, else R = L.  Rejected:
//     R = L/4.  A branch is abandoned when theta exceeds theta_max, when the
//     step can no longer move x, or after max_branch_steps trials.
//  5. A sign change whose |theta_t| is at most 4 max(theta_i, |theta_pred|)
//     (a farther one is rejected as in step 4, so that the final bracket is
//     not needlessly wide) brackets the zero; the final problem theta = 0 is
//     solved by the Brent core c05az with tol and ir, including its pole test.
//
// Phases (state slot `phase`): 0 waiting for f0; 1 and 2 waiting for the
// value at x0 + scal and x0 - scal; 3 waiting for a path trial; 4 running
// the Brent core, whose own state occupies c[core .. core+9].
#include "c05/c05ax.h"

#include <algorithm>
#include <cmath>

#include "c05/message_fit.h"
#include <limits>

inline constexpr zem::message c05ax_messages[] = {
    {2, 1001, NE_INT, {"On initial entry, ind = %s.", "Constraint: ind = -1 or 1."},
     {"On initial entry, ind = %s", "Constraint: ind = -1 or 1."}},
    {2, 1002, NE_INT, {"On intermediate entry, ind = %s.", "Constraint: ind = 2, 3 or 4."},
     {"On intermediate entry, ind = %s", "Constraint: ind = 2, 3 or 4."}},
    {1, 1003, NE_REAL, {"On entry, tol = %s.", "Constraint: tol > 0.0."},
     {"On entry, tol = %s", "Constraint: tol > 0.0."}},
    {1, 1004, NE_INT, {"On entry, ir = %s.", "Constraint: ir = 0, 1 or 2."},
     {"On entry, ir = %s", "Constraint: ir = 0, 1 or 2."}},
    {1, 1005, NE_REAL_2, {"On entry, x = %s and scal = %s.", "Constraint: x+scal != x (to machine accuracy)."},
     {"On entry, x = %s and scal = %s", "Constraint: x+scal /= x (to machine accuracy)."}},
    {3, 1006, NE_NO_SIGNIF_DERIV,
     {"Significant derivatives of f cannot be computed.",
      "f(x+scal) and f(x-scal) do not differ significantly from f(x),", "where x = %s and scal = %s."},
     {"Significant derivatives of f cannot be computed.",
      "f(x+scal) and f(x-scal) do not differ significantly from f(x),", "where x = %s and scal = %s"}},
    {4, 1007, NE_CONT_AWAY_NOT_POSS,
     {"Continuation away from the initial point is not possible.",
      "No continuation step from the initial point x = %s", "could be taken in either direction."}},
    {5, 1008, NE_CONT_PROB_NOT_SOLVED,
     {"Current problem in the continuation sequence cannot be solved.",
      "The path from the initial point was followed in both directions without",
      "reaching theta = 0. The point with the smallest |f| found is returned:", "x = %s, f(x) = %s."},
     {"Current problem in the continuation sequence cannot be solved.",
      "The path from the initial point was followed in both directions without",
      "reaching theta = 0. The point with the smallest |f| found is returned:", "x = %s, f(x) = %s"}},
    {5, 1011, NE_CONT_PROB_NOT_SOLVED,
     {"Current problem in the continuation sequence cannot be solved.",
      "The state array c was changed between calls; restart the solve."}},
    {6, 1009, NE_FINAL_PROB_NOT_SOLVED,
     {"Final problem (with theta_m = 0) cannot be solved.", "f changes sign at x = %s",
      "but |f| does not decrease there: f may have a pole or a jump at x."}},
    {6, 1010, NE_FINAL_PROB_NOT_SOLVED,
     {"Final problem (with theta_m = 0) cannot be solved.", "The zero near x = %s",
      "cannot be located to within tol = %s:", "too much accuracy has been requested."}},
};
ZEM_REGISTER_MESSAGES(c05ax)
static_assert(zem::c05::messages_fit(c05ax_messages), "a c05ax message line is too long");

namespace {

using namespace zem::c05ax;

constexpr double machine_eps = 2.220446049250313e-16;  // 2^-52
// A difference of f is significant when it exceeds this many rounding units
// of the larger value: well above the few units two evaluations may differ by
// through rounding alone.
constexpr double noise_units = 64.0;
// Where theta is predicted to rise, it may reach this multiple of the
// predicted level (growth faster than linear is the rule beyond a turning
// point) ...
constexpr double rise_limit = 4.0;
// ... and the step bound doubles when it stays within this multiple.
constexpr double good_rise = 2.0;
// A turning point is passed once the step is down to this fraction of the
// bound at which theta first rose.
constexpr double fold_fraction = 0x1p-10;
// A rejected step is cut to this fraction.
constexpr double shrink = 0.25;
// Where theta falls, the step bound doubles when the fall reaches this
// fraction of the predicted one.
constexpr double good_fall = 0.75;
// A sign change is accepted as the final bracket when |theta| at the far end
// is at most this multiple of the current level.
constexpr double bracket_ratio = 4.0;

// Phases, stored as doubles in the state array.
constexpr double await_start = 0.0, derivative_plus = 1.0, derivative_minus = 2.0, path = 3.0,
                 final_solve = 4.0;

// Failure details.
enum : int64_t {
  bad_ind_initial = 1001,
  bad_ind_intermediate = 1002,
  bad_tol = 1003,
  bad_ir = 1004,
  bad_scal = 1005,
  no_derivative = 1006,
  no_step_away = 1007,
  path_lost = 1008,
  final_pole = 1009,
  final_accuracy = 1010,
  state_changed = 1011,
  core_unexpected = 1999,
};

// The arguments of one entry, so that the steps below read as the method.
struct entry {
  engine_data *en;
  double *x;
  const double *tol;
  const int64_t *ir;
  double *c;
  int64_t *ind;
  char *errbuf;
  int64_t *ifail;
};

// Steps down to this length are taken even against a rise of theta: 2^-10
// of the bound at which the rises began, but at least scal and a few
// rounding units of x.
double fold_length(const double *c) {
  return std::max({fold_fraction * c[fold_radius], std::fabs(c[scale]), 16.0 * machine_eps * std::fabs(c[xi])});
}

bool is_count(double v, double lo, double hi) { return v >= lo && v <= hi && v == std::floor(v); }

void ask(const entry &e, int64_t req, double ph, double point) {
  e.c[request] = static_cast<double>(req);
  e.c[phase] = ph;
  e.c[trial] = point;
  *e.x = point;
  *e.ind = req;
  zem::succeed(e.ifail);
}

void done(const entry &e, double point) {
  *e.x = point;
  e.c[request] = 0.0;
  *e.ind = 0;
  zem::succeed(e.ifail);
}

template <typename... V>
void failure(const entry &e, int64_t status, int64_t detail, const V &...values) {
  e.c[request] = 0.0;
  *e.ind = 0;
  zem::fail(e.errbuf, e.ifail, status, detail, values...);
}

// Keeps the point with the smallest |f| seen: returned when the path is lost.
void note(const entry &e, double point, double f) {
  if (!std::isnan(f) && std::fabs(f) < std::fabs(e.c[f_best])) {
    e.c[best] = point;
    e.c[f_best] = f;
  }
}

void next_trial(const entry &e);

// The Brent core has returned: forward its request, or finish.
void core_returned(const entry &e, double xl, int64_t core_ind, int64_t core_status) {
  double *c = e.c;
  if (core_ind != 0) {
    if (c[nfinal] >= static_cast<double>(max_final_steps)) {
      *e.x = xl;
      return failure(e, 6, final_accuracy, xl, *e.tol);
    }
    c[nfinal] += 1.0;
    return ask(e, want_path_value, final_solve, xl);
  }
  switch (core_status) {
    case 0: return done(e, xl);
    case 4: *e.x = xl; return failure(e, 6, final_pole, xl);
    case 5: *e.x = xl; return failure(e, 6, final_accuracy, xl, *e.tol);
    default: return failure(e, 6, core_unexpected);
  }
}

// Step 5: f(xa) and f(xb) have opposite signs; solve theta = 0 on [xa, xb].
void enter_final(const entry &e, double xa, double fa, double xb, double fb) {
  double *c = e.c;
  c[other_end] = xb;
  c[core] = fb;
  c[nfinal] = 0.0;
  double xl = xa;
  int64_t core_ind = -1, core_status = 0;
  c05azfn_(e.en, &xl, &c[other_end], &fa, e.tol, e.ir, &c[core], &core_ind, e.errbuf, &core_status);
  core_returned(e, xl, core_ind, core_status);
}

// Step 2: sets out from x0 along branch b.
void start_branch(const entry &e, double b) {
  double *c = e.c;
  const double newton_dir = ((c[f_start] > 0.0) == (c[slope0] > 0.0)) ? -1.0 : 1.0;
  c[branch] = b;
  c[dir] = b == 0.0 ? newton_dir : -newton_dir;
  c[xi] = c[start];
  c[fi] = c[f_start];
  c[slope] = c[slope0];
  c[radius] = c[radius0];
  c[nsteps] = 0.0;
  c[prev_newton] = 0.0;
  c[slow_steps] = 0.0;
  c[ascent_steps] = 0.0;
  c[fold_radius] = 0.0;
  next_trial(e);
}

// A branch has led nowhere: try the other, or give up.
void abandon_branch(const entry &e) {
  double *c = e.c;
  if (c[branch] == 0.0) return start_branch(e, 1.0);
  *e.x = c[best];
  if (c[naccepted] == 0.0) return failure(e, 4, no_step_away, c[start]);
  return failure(e, 5, path_lost, c[best], c[f_best]);
}

// Accuracy wanted in x at the point v, as the Brent core measures it.
double tolerance(const entry &e, double v) {
  const double wr = *e.ir == 1 ? 0.0 : 1.0, wa = *e.ir == 2 ? 0.0 : 1.0;
  return *e.tol * std::max(wr * std::fabs(v), wa);
}

// Step 3.
void next_trial(const entry &e) {
  double *c = e.c;
  if (c[nsteps] >= static_cast<double>(max_branch_steps)) return abandon_branch(e);
  const double theta = c[fi] / c[f_start];
  const double rate = c[dir] * c[slope] / c[f_start];
  if (!std::isfinite(rate)) return abandon_branch(e);
  double len = c[radius];
  if (rate < 0.0 && theta / -rate <= len) {
    len = theta / -rate;
    // Within the tolerance of the predicted zero, step half a tolerance past
    // it: Newton's method on a convex f approaches from one side and would
    // otherwise never show the sign change that the final solve needs.
    const double t = tolerance(e, c[xi]);
    if (len <= t) len += 0.5 * t;
  }
  const double xt = c[xi] + c[dir] * len;
  if (!std::isfinite(xt) || xt == c[xi]) return abandon_branch(e);
  c[theta_pred] = theta + rate * len;
  c[step_len] = len;
  c[nsteps] += 1.0;
  ask(e, want_path_value, path, xt);
}

// Step 1 done: g0 is known.
void begin_path(const entry &e, double g0) {
  double *c = e.c;
  c[slope0] = g0;
  // The first step is Newton's, but at most max(1, |x0|): where f is nearly
  // flat Newton's step may be arbitrarily long, and the continuation is to
  // find the zero joined to x0 by the path, not whichever one that step
  // happens to land near.
  double r0 = std::min(std::fabs(c[f_start] / g0), std::max(1.0, std::fabs(c[start])));
  if (!(r0 > 0.0) || !std::isfinite(r0)) r0 = std::fabs(c[scale]);
  c[radius0] = r0;
  start_branch(e, 0.0);
}

void start_value(const entry &e, double f0) {
  double *c = e.c;
  c[f_start] = f0;
  c[best] = c[start];
  c[f_best] = std::isnan(f0) ? std::numeric_limits<double>::infinity() : f0;
  if (f0 == 0.0) return done(e, c[start]);
  if (!std::isfinite(f0)) {
    *e.x = c[start];
    return failure(e, 4, no_step_away, c[start]);
  }
  ask(e, want_derivative_value, derivative_plus, c[start] + c[scale]);
}

void derivative_value(const entry &e, double f1) {
  double *c = e.c;
  const double p = c[trial], x0 = c[start], f0 = c[f_start];
  note(e, p, f1);
  if (f1 == 0.0) return done(e, p);
  // A sign change counts even against an infinite value (f may overflow
  // beyond a steep zero); a derivative needs finite values.
  if (!std::isnan(f1) && (f1 <= 0.0) != (f0 <= 0.0)) return enter_final(e, p, f1, x0, f0);
  if (std::isfinite(f1)) {
    const double diff = f1 - f0;
    if (std::fabs(diff) > noise_units * machine_eps * std::max(std::fabs(f0), std::fabs(f1)))
      return begin_path(e, diff / (p - x0));
  }
  if (c[phase] == derivative_plus) return ask(e, want_derivative_value, derivative_minus, x0 - c[scale]);
  *e.x = c[best];
  failure(e, 3, no_derivative, x0, c[scale]);
}

// Step 4.
void path_value(const entry &e, double ft) {
  double *c = e.c;
  const double xt = c[trial], f0 = c[f_start];
  note(e, xt, ft);
  if (ft == 0.0) return done(e, xt);
  const double len = c[step_len];
  bool accepted = false;
  if (std::isfinite(ft)) {
    const double th_i = c[fi] / f0, th_t = ft / f0, th_p = c[theta_pred];
    if (th_t < 0.0) {
      if (std::fabs(th_t) <= bracket_ratio * std::max(th_i, std::fabs(th_p)))
        return enter_final(e, xt, ft, c[xi], c[fi]);
    } else {
      // Where theta was predicted to fall, any fall is accepted, and a rise
      // only once the step has been cut to 2^-10 of the bound at which the
      // rises began (or to scal): the path then passes a turning point, a
      // local minimum of |f| that is not a zero, and the bound goes back to a
      // quarter of what it was.  Where theta was predicted to rise, it may
      // rise to 4 times the predicted level, and may fall.
      const bool falling = th_p < th_i;
      bool good = false, turned = false;
      if (falling) {
        if (th_t <= th_i) {
          accepted = true;
          good = th_i - th_t >= good_fall * (th_i - th_p);
        } else {
          if (c[fold_radius] == 0.0) c[fold_radius] = c[radius];
          accepted = turned = len <= fold_length(c);
        }
      } else {
        const double level = std::max(th_i, th_p);
        accepted = th_t <= rise_limit * level;
        good = th_t <= good_rise * level && th_t >= 0.5 * th_p;
      }
      if (accepted) {
        c[ascent_steps] = th_t > th_i ? c[ascent_steps] + 1.0 : 0.0;
        c[slope] = (ft - c[fi]) / (xt - c[xi]);
        c[xi] = xt;
        c[fi] = ft;
        // Newton distance from the new point: near a zero it shrinks; along a
        // decay towards an asymptote it stays put however far the path goes.
        const double rate = c[dir] * c[slope] / f0;
        if (rate < 0.0) {
          const double newton = th_t / -rate;
          const bool slow = c[prev_newton] > 0.0 && newton >= slow_ratio * c[prev_newton];
          c[slow_steps] = slow ? c[slow_steps] + 1.0 : 0.0;
          c[prev_newton] = newton;
        } else {
          c[slow_steps] = 0.0;
          c[prev_newton] = 0.0;
        }
        c[naccepted] += 1.0;
        c[radius] = good ? std::max(c[radius], 2.0 * len) : len;
        if (turned) c[radius] = shrink * c[fold_radius];
        if (falling) c[fold_radius] = 0.0;
        if (th_t > theta_max || c[ascent_steps] >= static_cast<double>(max_ascent_steps) ||
            c[slow_steps] >= static_cast<double>(max_slow_steps))
          return abandon_branch(e);
      }
    }
  }
  if (!accepted) c[radius] = shrink * len;
  next_trial(e);
}

void final_value(const entry &e, double fv) {
  double *c = e.c;
  note(e, c[trial], fv);
  double xl = c[trial];
  int64_t core_ind = 4, core_status = 0;
  c05azfn_(e.en, &xl, &c[other_end], &fv, e.tol, e.ir, &c[core], &core_ind, e.errbuf, &core_status);
  core_returned(e, xl, core_ind, core_status);
}

// The stored state is one this routine could have left for request ind.
bool state_is_consistent(const double *c, int64_t ind) {
  if (c[request] != static_cast<double>(ind)) return false;
  if (!std::isfinite(c[start]) || !std::isfinite(c[scale]) || c[start] + c[scale] == c[start]) return false;
  const double ph = c[phase];
  if (ind == want_start_value) return ph == await_start;
  if (!std::isfinite(c[f_start]) || c[f_start] == 0.0) return false;
  if (!std::isfinite(c[best]) || !(std::fabs(c[f_best]) <= std::fabs(c[f_start]))) return false;
  if (ind == want_derivative_value) {
    if (ph == derivative_plus) return c[trial] == c[start] + c[scale];
    if (ph == derivative_minus) return c[trial] == c[start] - c[scale];
    return false;
  }
  if (ph != path && ph != final_solve) return false;
  if (!std::isfinite(c[trial])) return false;
  if (!is_count(c[naccepted], 0.0, 2.0 * max_branch_steps)) return false;
  if (ph == final_solve) return is_count(c[nfinal], 1.0, max_final_steps) && std::isfinite(c[other_end]);
  if (!std::isfinite(c[slope0]) || c[slope0] == 0.0 || !(c[radius0] > 0.0) || !std::isfinite(c[radius0])) return false;
  if (!is_count(c[branch], 0.0, 1.0) || (c[dir] != 1.0 && c[dir] != -1.0)) return false;
  if (!is_count(c[nsteps], 1.0, max_branch_steps)) return false;
  if (!is_count(c[slow_steps], 0.0, max_slow_steps) || !is_count(c[ascent_steps], 0.0, max_ascent_steps)) return false;
  if (!(c[prev_newton] >= 0.0) || !std::isfinite(c[prev_newton])) return false;
  if (!(c[fold_radius] >= 0.0) || !std::isfinite(c[fold_radius])) return false;
  if (!std::isfinite(c[xi]) || !std::isfinite(c[fi]) || c[fi] == 0.0 || ((c[fi] > 0.0) != (c[f_start] > 0.0))) return false;
  if (!std::isfinite(c[slope]) || !(c[step_len] > 0.0) || !std::isfinite(c[step_len])) return false;
  return std::isfinite(c[theta_pred]);
}

}  // namespace

ZEM_ENGINE_LAYERS(c05ax, C05AX_ARGS)

ZEM_INTERNAL void c05axfn_(engine_data *en_data, double *x, const double *fx, const double *tol,
                           const int64_t *ir, const double *scal, double *c, int64_t *ind, char *errbuf,
                           int64_t *ifail) {
  *ifail = 0;
  const entry e{en_data, x, tol, ir, c, ind, errbuf, ifail};
  const int64_t mode = *ind;
  const bool initial = mode == 1 || mode == -1;

  // ind: its admissible values depend on whether a request is outstanding.
  // (The state is read only on a re-entry: a new array may hold anything.)
  if (!initial) {
    const double req = c[request];
    const bool outstanding = req == want_start_value || req == want_derivative_value || req == want_path_value;
    if (!outstanding) return failure(e, 2, bad_ind_initial, mode);
    if (mode != want_start_value && mode != want_derivative_value && mode != want_path_value)
      return failure(e, 2, bad_ind_intermediate, mode);
  }
  // tol > 0, tested so that a NaN fails too.
  if (!(*tol > 0.0)) return failure(e, 1, bad_tol, *tol);
  // ir in 0..2, tested unsigned so that a negative value fails.
  if (static_cast<uint64_t>(*ir) > 2) return failure(e, 1, bad_ir, *ir);

  if (initial) {
    const double x0 = *x, s = *scal;
    if (!(std::isfinite(x0 + s) && x0 + s != x0)) return failure(e, 1, bad_scal, x0, s);
    c[start] = x0;
    c[scale] = s;
    c[naccepted] = 0.0;
    c[best] = x0;
    c[f_best] = std::numeric_limits<double>::infinity();
    if (mode == 1) return ask(e, want_start_value, await_start, x0);
    return start_value(e, *fx);
  }

  if (!state_is_consistent(c, mode)) return failure(e, 5, state_changed);
  const double ph = c[phase];
  if (ph == await_start) return start_value(e, *fx);
  if (ph == derivative_plus || ph == derivative_minus) return derivative_value(e, *fx);
  if (ph == path) return path_value(e, *fx);
  return final_value(e, *fx);
}

ZEM_API void c05axf_(double *x, const double *fx, const double *tol, const int64_t *ir, const double *scal,
                     double c[], int64_t *ind, int64_t *ifail) {
  zem::f_entry call("c05axf", c05ax_messages);
  c05axft_(&call.en_data, x, fx, tol, ir, scal, c, ind, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05axc(double *x, double fx, double tol, Zem_ErrorControl ir, double scal, double c[],
                    int64_t *ind, Zem_Fail *fail) {
  zem::c_entry call("c05axc", c05ax_messages, fail);
  if (!ind) return call.bad_param("ind");
  auto bad = [&](const char *arg) {
    *ind = 0;
    call.bad_param(arg);
  };
  if (!x) return bad("x");
  if (!c) return bad("c");
  const int64_t irc = ir == Zem_Mixed ? 0 : ir == Zem_Absolute ? 1 : ir == Zem_Relative ? 2 : -1;
  if (irc < 0) return bad("ir");
  c05axft_(&call.en_data, x, &fx, &tol, &irc, &scal, c, ind, call.errbuf, &call.status);
  // A function value is wanted: return at once, nothing to report.
  if (*ind != 0) return;
  call.finish();
}
