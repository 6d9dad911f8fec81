// d02pt: statistics of the integration so far: evaluations of the
// derivative by the integration proper (fevals; the global error
// assessment's own are not counted), the cost of one step (stepcost), the
// fraction of attempted steps that failed (waste), the accepted steps
// (stepsok) and the size of the next step (hnext).  After an accuracy
// failure (step size too small, assessment failed) it may be called once.
#include "d02/rk_calls.h"

inline constexpr zem::message d02pt_messages[] = {
    D02P_ARRAY_ROWS,
};
ZEM_REGISTER_MESSAGES(d02pt)

#define D02PT_ARGS(V, A, U)                                                                              \
  V(int64_t *, fevals) V(int64_t *, stepcost) V(double *, waste) V(int64_t *, stepsok) V(double *, hnext) \
  A(int64_t *, iwsav) A(double *, rwsav) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pt, D02PT_ARGS)

ZEM_INTERNAL void d02ptfn_(engine_data *, int64_t *fevals, int64_t *stepcost, double *waste, int64_t *stepsok,
                           double *hnext, int64_t *iwsav, double *rwsav, char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, nullptr, 0, true, st, errbuf, ifail)) return;
  *fevals = st.iw[iw_nfcn];
  *stepcost = st.pr->cost;
  const int64_t tried = st.iw[iw_steps] + st.iw[iw_fails];
  *waste = tried > 0 ? static_cast<double>(st.iw[iw_fails]) / static_cast<double>(tried) : 0.0;
  *stepsok = st.iw[iw_steps];
  *hnext = st.rw[rw_h];
}

ZEM_API void d02ptf_(int64_t *fevals, int64_t *stepcost, double *waste, int64_t *stepsok, double *hnext,
                     int64_t iwsav[], double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02ptf", d02pt_messages);
  d02ptft_(&call.en_data, fevals, stepcost, waste, stepsok, hnext, iwsav, rwsav, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02ptc(int64_t *fevals, int64_t *stepcost, double *waste, int64_t *stepsok, double *hnext,
                    int64_t iwsav[], double rwsav[], Zem_Fail *fail) {
  zem::c_entry call("d02ptc", d02pt_messages, fail);
  if (!fevals) return call.bad_param("fevals");
  if (!stepcost) return call.bad_param("stepcost");
  if (!waste) return call.bad_param("waste");
  if (!stepsok) return call.bad_param("stepsok");
  if (!hnext) return call.bad_param("hnext");
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  d02ptft_(&call.en_data, fevals, stepcost, waste, stepsok, hnext, iwsav, rwsav, call.errbuf, &call.status);
  call.finish();
}
