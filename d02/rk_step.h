// What the two step integrators (d02pf, d02pg) do before and after a step.
#pragma once

#include <algorithm>

#include "d02/rk_calls.h"

namespace zem::d02 {

// Steps ended exactly on tend before the "many output points" warning.
inline constexpr int64_t rk_tend_hit_limit = 100;

// Opens the arrays for a new step: the step mode, tend not yet reached.
inline bool rk_step_begin(int64_t *iwsav, double *rwsav, const int64_t *n, int64_t self, rk_state &st,
                          char *errbuf, int64_t *ifail) {
  if (!rk_open(iwsav, rwsav, n, self, false, st, errbuf, ifail)) return false;
  if (!rk_mode(st, 2, self, errbuf, ifail)) return false;
  if (st.iw[iw_at_tend]) {
    rk_kill(st, self, errbuf, ifail, 1, 1012);
    return false;
  }
  st.rw[rw_target] = st.rw[rw_tend];
  return true;
}

// The current point, as the step integrators return it.
inline void rk_step_answer(const rk_state &st, double *tnow, double *ynow, double *ypnow) {
  *tnow = st.rw[rw_t];
  std::copy(st.y(), st.y() + st.n, ynow);
  std::copy(st.yp(), st.yp() + st.n, ypnow);
}

// After an accepted step: tend reached, and the warnings.
inline void rk_step_end(const rk_state &st, char *errbuf, int64_t *ifail) {
  bool many = false;
  if (st.rw[rw_t] == st.rw[rw_tend]) {
    st.iw[iw_at_tend] = 1;
    if (++st.iw[iw_tend_hits] > rk_tend_hit_limit) {
      st.iw[iw_tend_hits] = 0;
      many = true;
    }
  }
  if (rk_step_warning(st, errbuf, ifail)) return;
  if (many) zem::fail(errbuf, ifail, 5, 5002);
}

}  // namespace zem::d02
