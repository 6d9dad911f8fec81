// The call-sequence rules every d02p routine after the setup applies, and the
// loop by which the callback integrators drive the step machine.
#pragma once

#include <cmath>

#include "d02/rk_core.h"
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

// Drives the machine through one step, evaluating through eval(req), which
// returns the callback status (non-zero: the user asked to stop).  Failures
// are written (and kill the problem).
template <typename Eval>
inline rk_outcome rk_drive(const rk_state &st, int64_t self, Eval &&eval, char *errbuf, int64_t *ifail,
                           int64_t &stop_flag) {
  rk_request req{};
  for (;;) {
    const rk_event ev = rk_resume(st, req);
    switch (ev) {
      case rk_event::eval:
      case rk_event::eval_ga:
        if ((stop_flag = eval(req)) != 0) {
          st.iw[iw_dead] = self;  // the step cannot be resumed
          st.iw[iw_phase] = ph_idle;
          return rk_outcome::user_stop;
        }
        continue;
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
  }
}

// The warnings of a completed step, in order of weight: stiffness (3), the
// evaluation budget (2).  Returns true when one was written.
inline bool rk_step_warning(const rk_state &st, char *errbuf, int64_t *ifail) {
  if (st.iw[iw_stiff_flag]) {
    st.iw[iw_stiff_flag] = 0;
    const double r = std::ceil(st.rw[rw_stiff_ratio]);
    zem::fail(errbuf, ifail, 3, 3001, static_cast<int64_t>(std::min(r, 1e15)));
    return true;
  }
  if (st.iw[iw_budget] >= rk_budget) {
    const int64_t used = st.iw[iw_budget];
    st.iw[iw_budget] = 0;
    zem::fail(errbuf, ifail, 2, 2001, used);
    return true;
  }
  return false;
}

}  // namespace zem::d02
