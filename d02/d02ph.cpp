// d02ph: prepares dense output on the last step of the step integrator for
// the first nwant components, in wcomm.  With the 4(5) pair wcomm holds, for
// each component, the five coefficients of y on the step as a polynomial in
// theta = (t - told)/h; the 2(3) pair interpolates from rwsav alone and
// needs no workspace.  d02pj evaluates.
#include "d02/rk_calls.h"

inline constexpr zem::message d02ph_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_AFTER_STEP_ROW,
    D02P_INTERP_ROWS,
    {1, 1016, NE_INT_3,
     {"On entry, lwcomm = %s,", "n = %s and nwant = %s.",
      "Constraint: for method = Zem_RK_4_5, lwcomm >= n+MAX(n, 5*nwant)."}},
    {1, 1017, NE_INT_2,
     {"On entry, lwcomm = %s", "and nwant = %s.", "Constraint: for method = Zem_RK_7_8, lwcomm >= 8*nwant."}},
    {1, 1018, NE_INT, {"On entry, lwcomm = %s.", "Constraint: for method = Zem_RK_2_3, lwcomm >= 1."}},
};
ZEM_REGISTER_MESSAGES(d02ph)

#define D02PH_ARGS(V, A, U)                                                                              \
  V(const int64_t *, n) V(const int64_t *, nwant) A(int64_t *, iwsav) A(double *, rwsav) A(double *, wcomm) \
  V(const int64_t *, lwcomm) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02ph, D02PH_ARGS)

ZEM_INTERNAL void d02phfn_(engine_data *, const int64_t *n, const int64_t *nwant, int64_t *iwsav, double *rwsav,
                           double *wcomm, const int64_t *lwcomm, char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, n, 0, false, st, errbuf, ifail)) return;
  if (st.iw[iw_mode] != 2 || st.iw[iw_steps] == 0) return zem::fail(errbuf, ifail, 1, 1014);
  const int64_t nw = *nwant, nn = st.n, lw = *lwcomm;
  if (nw < 1 || nw > nn) return zem::fail(errbuf, ifail, 1, 1015, nw, nn);
  const int64_t method = st.iw[iw_method];
  if (method == rk45 && lw < nn + std::max(nn, 5 * nw)) return zem::fail(errbuf, ifail, 1, 1016, lw, nn, nw);
  if (method == rk78 && lw < 8 * nw) return zem::fail(errbuf, ifail, 1, 1017, lw, nw);
  if (method == rk23 && lw < 1) return zem::fail(errbuf, ifail, 1, 1018, lw);
  if (method == rk78) return zem::fail(errbuf, ifail, 1, 1019);
  if (method == rk45) {
    // y(theta) = y0 + h sum_j b_j(theta) k_j = sum_k p_k theta^k.
    const double h = st.rw[rw_hlast];
    const rational *d = bs45_dense;
    for (int64_t i = 0; i < nw; ++i) {
      double *p = wcomm + 5 * i;
      p[0] = st.yold()[i];
      for (int k = 0; k < 4; ++k) {
        double s = 0.0;
        for (int j = 0; j < 8; ++j) s += d[4 * j + k].value() * st.k(j)[i];
        p[k + 1] = h * s;
      }
    }
  }
  st.iw[iw_nwant] = nw;
  st.iw[iw_interp_step] = st.iw[iw_steps];
}

ZEM_API void d02phf_(const int64_t *n, const int64_t *nwant, int64_t iwsav[], double rwsav[], double wcomm[],
                     const int64_t *lwcomm, int64_t *ifail) {
  zem::f_entry call("d02phf", d02ph_messages);
  d02phft_(&call.en_data, n, nwant, iwsav, rwsav, wcomm, lwcomm, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02phc(int64_t n, int64_t nwant, int64_t iwsav[], double rwsav[], double wcomm[], int64_t lwcomm,
                    Zem_Fail *fail) {
  zem::c_entry call("d02phc", d02ph_messages, fail);
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  if (!wcomm) return call.bad_param("wcomm");
  d02phft_(&call.en_data, &n, &nwant, iwsav, rwsav, wcomm, &lwcomm, call.errbuf, &call.status);
  call.finish();
}
