// d02pj: evaluates the dense output prepared by d02ph at twant: ywant, and
// with ideriv = 1 also ypwant, for the first nwant components.  twant may
// lie outside the last step (extrapolation, less accurate).
#include <cmath>

#include "d02/rk_calls.h"

inline constexpr zem::message d02pj_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_AFTER_STEP_ROW,
    {1, 1020, NE_INT, {"On entry, ideriv = %s.", "Constraint: ideriv = 0 or 1."}},
    {1, 1021, NE_MISSING_CALL,
     {"The interpolation setup function has not been called successfully", "since the last step."}},
    {1, 1022, NE_INT_CHANGED,
     {"On entry, nwant = %s, but the value passed", "to the interpolation setup function was nwant = %s."}},
    {1, 1031, NE_REAL, {"On entry, twant = %s.", "Constraint: twant is finite."}},
};
ZEM_REGISTER_MESSAGES(d02pj)

#define D02PJ_ARGS(V, A, U)                                                                              \
  V(const int64_t *, n) V(const double *, twant) V(const int64_t *, ideriv) V(const int64_t *, nwant)  \
  A(double *, ywant) A(double *, ypwant) A(int64_t *, iwsav) A(double *, rwsav) A(const double *, wcomm) \
  V(const int64_t *, lwcomm) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pj, D02PJ_ARGS)

ZEM_INTERNAL void d02pjfn_(engine_data *, const int64_t *n, const double *twant, const int64_t *ideriv,
                           const int64_t *nwant, double *ywant, double *ypwant, int64_t *iwsav, double *rwsav,
                           const double *wcomm, const int64_t *, char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, n, 0, false, st, errbuf, ifail)) return;
  if (st.iw[iw_mode] != 2 || st.iw[iw_steps] == 0) return zem::fail(errbuf, ifail, 1, 1014);
  if (*ideriv != 0 && *ideriv != 1) return zem::fail(errbuf, ifail, 1, 1020, *ideriv);
  if (!std::isfinite(*twant)) return zem::fail(errbuf, ifail, 1, 1031, *twant);
  if (st.iw[iw_nwant] == 0 || st.iw[iw_interp_step] != st.iw[iw_steps]) return zem::fail(errbuf, ifail, 1, 1021);
  if (*nwant != st.iw[iw_nwant]) return zem::fail(errbuf, ifail, 1, 1022, *nwant, st.iw[iw_nwant]);
  const int64_t nw = *nwant;
  double *yp = *ideriv == 1 ? ypwant : nullptr;
  if (st.iw[iw_method] == rk23) return rk_interp(st, *twant, nw, ywant, yp);
  const double h = st.rw[rw_hlast], th = (*twant - st.rw[rw_told]) / h;
  for (int64_t i = 0; i < nw; ++i) {
    const double *p = wcomm + 5 * i;
    ywant[i] = p[0] + th * (p[1] + th * (p[2] + th * (p[3] + th * p[4])));
    if (yp) yp[i] = (p[1] + th * (2 * p[2] + th * (3 * p[3] + th * 4 * p[4]))) / h;
  }
}

ZEM_API void d02pjf_(const int64_t *n, const double *twant, const int64_t *ideriv, const int64_t *nwant,
                     double ywant[], double ypwant[], int64_t iwsav[], double rwsav[], const double wcomm[],
                     const int64_t *lwcomm, int64_t *ifail) {
  zem::f_entry call("d02pjf", d02pj_messages);
  d02pjft_(&call.en_data, n, twant, ideriv, nwant, ywant, ypwant, iwsav, rwsav, wcomm, lwcomm, call.errbuf,
           &call.status);
  call.finish(ifail);
}

ZEM_API void d02pjc(int64_t n, double twant, int64_t ideriv, int64_t nwant, double ywant[], double ypwant[],
                    int64_t iwsav[], double rwsav[], const double wcomm[], int64_t lwcomm, Zem_Fail *fail) {
  zem::c_entry call("d02pjc", d02pj_messages, fail);
  if (!ywant) return call.bad_param("ywant");
  if (ideriv == 1 && !ypwant) return call.bad_param("ypwant");
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  if (!wcomm) return call.bad_param("wcomm");
  d02pjft_(&call.en_data, &n, &twant, &ideriv, &nwant, ywant, ypwant, iwsav, rwsav, wcomm, &lwcomm, call.errbuf,
           &call.status);
  call.finish();
}
