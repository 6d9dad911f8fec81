// d02ps: dense output on the last step of the step integrator, directly:
// ideriv = 0 gives ywant, 1 ypwant, 2 both, for the first nwant components.
// The 2(3) pair interpolates with the cubic Hermite polynomial of the step
// (order 3), the 4(5) pair with its continuous extension (order 4); the
// 7(8) pair has none.
#include <cmath>

#include "d02/rk_calls.h"

inline constexpr zem::message d02ps_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_AFTER_STEP_ROW,
    D02P_INTERP_ROWS,
    {1, 1023, NE_INT, {"On entry, ideriv = %s.", "Constraint: ideriv = 0, 1 or 2."}},
    {1, 1031, NE_REAL, {"On entry, twant = %s.", "Constraint: twant is finite."}},
};
ZEM_REGISTER_MESSAGES(d02ps)

#define D02PS_ARGS(V, A, U)                                                                              \
  V(const int64_t *, n) V(const double *, twant) V(const int64_t *, ideriv) V(const int64_t *, nwant)  \
  A(double *, ywant) A(double *, ypwant) A(int64_t *, iwsav) A(double *, rwsav) V(char *, errbuf)      \
  V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02ps, D02PS_ARGS)

ZEM_INTERNAL void d02psfn_(engine_data *, const int64_t *n, const double *twant, const int64_t *ideriv,
                           const int64_t *nwant, double *ywant, double *ypwant, int64_t *iwsav, double *rwsav,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, n, 0, false, st, errbuf, ifail)) return;
  if (st.iw[iw_mode] != 2 || st.iw[iw_steps] == 0) return zem::fail(errbuf, ifail, 1, 1014);
  if (*nwant < 1 || *nwant > st.n) return zem::fail(errbuf, ifail, 1, 1015, *nwant, st.n);
  if (*ideriv < 0 || *ideriv > 2) return zem::fail(errbuf, ifail, 1, 1023, *ideriv);
  if (!std::isfinite(*twant)) return zem::fail(errbuf, ifail, 1, 1031, *twant);
  if (st.iw[iw_method] == rk78) return zem::fail(errbuf, ifail, 1, 1019);
  rk_interp(st, *twant, *nwant, *ideriv != 1 ? ywant : nullptr, *ideriv != 0 ? ypwant : nullptr);
}

ZEM_API void d02psf_(const int64_t *n, const double *twant, const int64_t *ideriv, const int64_t *nwant,
                     double ywant[], double ypwant[], int64_t iwsav[], double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02psf", d02ps_messages);
  d02psft_(&call.en_data, n, twant, ideriv, nwant, ywant, ypwant, iwsav, rwsav, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02psc(int64_t n, double twant, int64_t ideriv, int64_t nwant, double ywant[], double ypwant[],
                    int64_t iwsav[], double rwsav[], Zem_Fail *fail) {
  zem::c_entry call("d02psc", d02ps_messages, fail);
  if (ideriv != 1 && !ywant) return call.bad_param("ywant");
  if (ideriv != 0 && !ypwant) return call.bad_param("ypwant");
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  d02psft_(&call.en_data, &n, &twant, &ideriv, &nwant, ywant, ypwant, iwsav, rwsav, call.errbuf, &call.status);
  call.finish();
}
