// d02pu: the global error assessment (requested at setup): for each
// component the root-mean-square over the steps taken of the assessed
// global error |y - ysec| / max(|y|, thresh), and the largest such value
// over all components and steps, with the time at which it occurred.
#include <cmath>

#include "d02/rk_calls.h"

inline constexpr zem::message d02pu_messages[] = {
    D02P_ARRAY_ROWS,
    {1, 1027, NE_ERRASS_REQ,
     {"No error assessment is available since you did not", "ask for it in your call to the setup function."}},
    {1, 1028, NE_RK_NOSTEP,
     {"No error assessment is available since the integrator", "has not actually taken any successful steps."}},
};
ZEM_REGISTER_MESSAGES(d02pu)

#define D02PU_ARGS(V, A, U)                                                                              \
  V(const int64_t *, n) A(double *, rmserr) V(double *, errmax) V(double *, terrmx) A(int64_t *, iwsav)  \
  A(double *, rwsav) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pu, D02PU_ARGS)

ZEM_INTERNAL void d02pufn_(engine_data *, const int64_t *n, double *rmserr, double *errmax, double *terrmx,
                           int64_t *iwsav, double *rwsav, char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, n, 0, false, st, errbuf, ifail)) return;
  if (!st.iw[iw_errass]) return zem::fail(errbuf, ifail, 1, 1027);
  const int64_t steps = st.iw[iw_ga_steps];
  if (steps == 0) return zem::fail(errbuf, ifail, 1, 1028);
  for (int64_t i = 0; i < st.n; ++i) rmserr[i] = std::sqrt(st.rms()[i] / static_cast<double>(steps));
  *errmax = st.rw[rw_errmax];
  *terrmx = st.rw[rw_terrmx];
}

ZEM_API void d02puf_(const int64_t *n, double rmserr[], double *errmax, double *terrmx, int64_t iwsav[],
                     double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02puf", d02pu_messages);
  d02puft_(&call.en_data, n, rmserr, errmax, terrmx, iwsav, rwsav, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02puc(int64_t n, double rmserr[], double *errmax, double *terrmx, int64_t iwsav[], double rwsav[],
                    Zem_Fail *fail) {
  zem::c_entry call("d02puc", d02pu_messages, fail);
  if (!rmserr) return call.bad_param("rmserr");
  if (!errmax) return call.bad_param("errmax");
  if (!terrmx) return call.bad_param("terrmx");
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  d02puft_(&call.en_data, &n, rmserr, errmax, terrmx, iwsav, rwsav, call.errbuf, &call.status);
  call.finish();
}
