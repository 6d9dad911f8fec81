// d02pr: a new end point tendnu for the step integrator, beyond the current
// point tnow in the direction of integration.  Integration can then go on
// past the old tend.
#include <cmath>

#include "d02/rk_calls.h"

inline constexpr zem::message d02pr_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_AFTER_STEP_ROW,
    {1, 1024, NE_RK_DIRECTION_POS,
     {"On entry, tendnu is not beyond tnow (step integrator) in the direction of", "integration.",
      "The direction is positive, tendnu = %s and", "tnow = %s."}},
    {1, 1025, NE_RK_DIRECTION_NEG,
     {"On entry, tendnu is not beyond tnow (step integrator) in the direction of", "integration.",
      "The direction is negative, tendnu = %s and", "tnow = %s."}},
    {1, 1026, NE_RK_STEP,
     {"On entry, tendnu is too close to tnow (step integrator).",
      "Their difference is %s, but this quantity must be at", "least %s."}},
};
ZEM_REGISTER_MESSAGES(d02pr)

#define D02PR_ARGS(V, A, U) \
  V(const double *, tendnu) A(int64_t *, iwsav) A(double *, rwsav) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pr, D02PR_ARGS)

ZEM_INTERNAL void d02prfn_(engine_data *, const double *tendnu, int64_t *iwsav, double *rwsav, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, nullptr, 0, false, st, errbuf, ifail)) return;
  if (st.iw[iw_mode] != 2 || st.iw[iw_steps] == 0) return zem::fail(errbuf, ifail, 1, 1014);
  const double t = st.rw[rw_t], dir = st.rw[rw_dir], tn = *tendnu;
  if (!(dir * (tn - t) > 0.0)) return zem::fail(errbuf, ifail, 1, dir > 0 ? 1024 : 1025, tn, t);
  const double least = 10.0 * rk_hmin(st, t);
  if (std::fabs(tn - t) < least || !std::isfinite(tn))
    return zem::fail(errbuf, ifail, 1, 1026, std::fabs(tn - t), least);
  st.rw[rw_tend] = tn;
  st.rw[rw_target] = tn;
  st.iw[iw_at_tend] = 0;
}

ZEM_API void d02prf_(const double *tendnu, int64_t iwsav[], double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02prf", d02pr_messages);
  d02prft_(&call.en_data, tendnu, iwsav, rwsav, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02prc(double tendnu, int64_t iwsav[], double rwsav[], Zem_Fail *fail) {
  zem::c_entry call("d02prc", d02pr_messages, fail);
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  d02prft_(&call.en_data, &tendnu, iwsav, rwsav, call.errbuf, &call.status);
  call.finish();
}
