// The call-sequence rules every d02p routine after the setup applies, and the
// loop by which the callback integrators drive the step machine.
#pragma once

#include <algorithm>
#include <cmath>

#include "d02/rk_core.h"
#include "d02/rk_machine.h"
#include "d02/rk_messages.h"

namespace zem::d02 {

// Opens the arrays for a routine: they must come from the setup (1001); a
// problem ended by an error is refused (1009 to the integrator that failed,
// 1003 to every other routine; diag lets d02pt through once after an
// accuracy failure); n, where the routine takes it, must be the setup's
// (1002).  Returns false after writing the failure.
inline bool rk_open(int64_t *iwsav, double *rwsav, const int64_t *n, int64_t self, bool diag, rk_state &st,
                    char *errbuf, int64_t *ifail) {
  if (!rk_view(iwsav, rwsav, st)) {
    zem::fail(errbuf, ifail, 1, 1001);
    return false;
  }
  if (st.iw[iw_dead]) {
    if (diag && st.iw[iw_diag_once]) {
      st.iw[iw_diag_once] = 0;
    } else {
      zem::fail(errbuf, ifail, 1, self != 0 && st.iw[iw_dead] == self ? 1009 : 1003);
      return false;
    }
  }
  if (n && *n != st.n) {
    zem::fail(errbuf, ifail, 1, 1002, *n, st.n);
    return false;
  }
  return true;
}

// An integrator's error: the problem is dead from now on.
template <typename... V>
void rk_kill(const rk_state &st, int64_t self, char *errbuf, int64_t *ifail, int64_t status, int64_t detail,
             V... values) {
  st.iw[iw_dead] = self;
  if (status == 4 || status == 6) st.iw[iw_diag_once] = 1;
  zem::fail(errbuf, ifail, status, detail, values...);
}

// The integrators' modes: 1 range, 2 step.  False (and the problem dead)
// when the other kind was used first.
inline bool rk_mode(const rk_state &st, int64_t mode, int64_t self, char *errbuf, int64_t *ifail) {
  if (st.iw[iw_mode] != 0 && st.iw[iw_mode] != mode) {
    rk_kill(st, self, errbuf, ifail, 1, mode == 1 ? 1010 : 1011);
    return false;
  }
  st.iw[iw_mode] = mode;
  return true;
}

// Outcome of driving the machine to the end of a step.
enum class rk_outcome { done, user_stop, failed };

// Drives the machine through one step, evaluating through eval(t, y, yp), which
// puts f(t, y) into yp and returns the callback status (non-zero: the user asked to stop).  Failures
// are written (and kill the problem).
// The machine goes on from one completed step to the next while more() is
// true (after a step, with the arrays up to date); the outcome is that of
// the last step.
template <typename Eval, typename More>
inline rk_outcome rk_drive(const rk_state &st, int64_t self, Eval &&eval, More &&more, char *errbuf, int64_t *ifail,
                           int64_t &stop_flag) {
  rk_request req{};
  switch (rk_run<true>(st, req, eval, more)) {
    case rk_event::stopped:
    case rk_event::eval:  // not returned by the callback machine
    case rk_event::eval_ga:
      stop_flag = req.status;
      st.iw[iw_dead] = self;  // the step cannot be resumed
      st.iw[iw_phase] = ph_idle;
      return rk_outcome::user_stop;
    case rk_event::step_done:
      return rk_outcome::done;
    case rk_event::too_small:
      rk_kill(st, self, errbuf, ifail, 4, 4001, std::fabs(st.rw[rw_hnext]), st.rw[rw_t], req.hmin);
      return rk_outcome::failed;
    case rk_event::ga_start:
      rk_kill(st, self, errbuf, ifail, 6, 6001);
      return rk_outcome::failed;
    case rk_event::ga_later:
      rk_kill(st, self, errbuf, ifail, 6, 6002, st.rw[rw_tsec]);
      return rk_outcome::failed;
  }
  return rk_outcome::failed;
}
template <typename Eval>
inline rk_outcome rk_drive(const rk_state &st, int64_t self, Eval &&eval, char *errbuf, int64_t *ifail,
                           int64_t &stop_flag) {
  return rk_drive(st, self, eval, [] { return false; }, errbuf, ifail, stop_flag);
}

// The warnings of a completed step, in order of weight: stiffness (3), the
// evaluation budget (2).  Returns true when one was written.
//
// The stiffness warning has a long form that states the evaluations used
// first: it is given when the budget runs out on a problem that is stiff,
// that is, at the step that diagnoses stiffness or at any step that still
// looks limited by stability once stiffness has been diagnosed.  The many
// evaluations are then the stiffness's doing, and one warning says both;
// the budget count restarts as after the budget warning.  The cost ratio of
// a reminder is that of the step that ends it: the rest of the range at the
// step's size, against the evaluations so far.
inline bool rk_step_warning(const rk_state &st, char *errbuf, int64_t *ifail) {
  const bool budget = st.iw[iw_budget] >= rk_budget;
  const int64_t state = st.iw[iw_stiff_state];
  const bool stiff_now = st.iw[iw_stiff_flag] != 0;
  const bool stiff_still = (state & stiff_seen) && (state & stiff_limited);
  if (!stiff_now && !(budget && stiff_still)) {
    if (!budget) return false;
    const int64_t used = st.iw[iw_budget];
    st.iw[iw_budget] = 0;
    zem::fail(errbuf, ifail, 2, 2001, used);
    return true;
  }
  st.iw[iw_stiff_flag] = 0;
  if (!stiff_now) {
    const double rest = std::fabs(st.rw[rw_tend] - st.rw[rw_t]);
    const double nf = static_cast<double>(std::max<int64_t>(1, st.iw[iw_nfcn]));
    st.rw[rw_stiff_ratio] = rest / std::fabs(st.rw[rw_hlast]) * st.pr->cost / nf;
  }
  const int64_t ratio = static_cast<int64_t>(std::min(std::ceil(st.rw[rw_stiff_ratio]), 1e15));
  if (budget) {
    const int64_t used = st.iw[iw_budget];
    st.iw[iw_budget] = 0;
    zem::fail(errbuf, ifail, 3, 3002, used, ratio);
  } else {
    zem::fail(errbuf, ifail, 3, 3001, ratio);
  }
  return true;
}

}  // namespace zem::d02
