// d02pq: setup of the Runge-Kutta suite: checks the problem, selects the
// pair and fills the communication arrays iwsav (liwsav = 32 elements) and
// rwsav (rk_rwsav_len elements; *lrwsav <= 0 asks for that length).
#include <algorithm>
#include <cmath>

#include "d02/rk_calls.h"
#include "frame/constants.h"

inline constexpr zem::message d02pq_messages[] = {
    {1, 1101, NE_INT, {"On entry, n = %s.", "Constraint: n >= 1."}},
    {1, 1102, NE_INT, {"On entry, method = %s.", "Constraint: method = -3, -2, -1, 1, 2 or 3."}},
    {1, 1103, NE_BAD_PARAM,
     {"On entry, errass = %s.", "Constraint: errass = Zem_ErrorAssess_on or Zem_ErrorAssess_off."}},
    {1, 1109, NE_REAL, {"On entry, tstart = %s", "and tend = %s.", "Constraint: tstart and tend are finite."}},
    {1, 1112, NE_REAL_2, {"On entry, tstart = %s", "and tend = %s.", "Constraint: tend - tstart is finite."}},
    {1, 1104, NE_REAL_2, {"On entry, tstart = %s.", "Constraint: tstart != tend."}},
    {1, 1105, NE_REAL_2,
     {"On entry, tstart is too close to tend.", "abs(tstart-tend) = %s, but this quantity should be at",
      "least %s."}},
    {1, 1106, NE_REAL, {"On entry, tol = %s.", "Constraint: 10.0*machine precision <= tol <= 0.01."}},
    {1, 1110, NE_REAL, {"On entry, hstart = %s.", "Constraint: hstart is finite."}},
    {1, 1107, NE_REAL, {"On entry, element %s of thresh", "has the value %s.", "Constraint: every element of thresh > 0.0."}},
    {1, 1108, NE_REAL, {"On entry, element %s of yinit", "has the value %s.", "Constraint: every element of yinit is finite."}},
    {1, 1111, NE_INTERNAL_ERROR,
     {"On entry, too much workspace required.", "Workspace provided was %s,", "workspace required is %s."}},
};
ZEM_REGISTER_MESSAGES(d02pq)

#define D02PQ_ARGS(V, A, U)                                                                                \
  V(const int64_t *, n) V(const double *, tstart) V(const double *, tend) A(const double *, yinit)        \
  V(const double *, tol) A(const double *, thresh) V(const int64_t *, method) V(const int64_t *, errass)  \
  V(const double *, hstart) A(int64_t *, iwsav) A(double *, rwsav) V(int64_t *, lrwsav)                  \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pq, D02PQ_ARGS)

ZEM_INTERNAL void d02pqfn_(engine_data *, const int64_t *n, const double *tstart, const double *tend,
                           const double *yinit, const double *tol, const double *thresh, const int64_t *method,
                           const int64_t *errass, const double *hstart, int64_t *iwsav, double *rwsav,
                           int64_t *lrwsav, char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  if (*n < 1) return zem::fail(errbuf, ifail, 1, 1101, *n);
  if (*method < 1 || *method > 3) return zem::fail(errbuf, ifail, 1, 1102, *method);
  if (*errass != 0 && *errass != 1) return zem::fail(errbuf, ifail, 1, 1103, *errass);
  const bool ga = *errass == 1;
  // The length, with its arithmetic checked (n is limited so that it cannot overflow).
  if (*n > (INT64_MAX - rwsav_header) / 64) return zem::fail(errbuf, ifail, 1, 1111, *lrwsav, INT64_MAX);
  const int64_t need = rk_rwsav_len(*n, *method, ga);
  if (*lrwsav <= 0) {
    *lrwsav = need;
    return;
  }
  // Before anything of length n is read: a caller whose rwsav is long
  // enough for n equations is taken to pass yinit and thresh of length n.
  if (*lrwsav < need) return zem::fail(errbuf, ifail, 1, 1111, *lrwsav, need);
  const double t0 = *tstart, t1 = *tend;
  if (!std::isfinite(t0) || !std::isfinite(t1)) return zem::fail(errbuf, ifail, 1, 1109, t0, t1);
  if (!std::isfinite(t1 - t0)) return zem::fail(errbuf, ifail, 1, 1112, t0, t1);
  if (t0 == t1) return zem::fail(errbuf, ifail, 1, 1104, t0);
  const double apart = 100.0 * zem::machine_eps * std::max(std::fabs(t0), std::fabs(t1));
  if (std::fabs(t1 - t0) < apart) return zem::fail(errbuf, ifail, 1, 1105, std::fabs(t1 - t0), apart);
  if (!(*tol >= 10.0 * zem::machine_eps && *tol <= 0.01)) return zem::fail(errbuf, ifail, 1, 1106, *tol);
  if (!std::isfinite(*hstart)) return zem::fail(errbuf, ifail, 1, 1110, *hstart);
  for (int64_t i = 0; i < *n; ++i)
    if (!(thresh[i] > 0.0) || !std::isfinite(thresh[i])) return zem::fail(errbuf, ifail, 1, 1107, i + 1, thresh[i]);
  for (int64_t i = 0; i < *n; ++i)
    if (!std::isfinite(yinit[i])) return zem::fail(errbuf, ifail, 1, 1108, i + 1, yinit[i]);

  // The arrays.  Everything not set below starts at zero.
  std::fill(iwsav, iwsav + liwsav, 0);
  std::fill(rwsav, rwsav + need, 0.0);
  iwsav[iw_magic] = 0x5A454D44303250ll;
  iwsav[iw_n] = *n;
  iwsav[iw_method] = *method;
  iwsav[iw_errass] = ga;
  iwsav[iw_lrwsav] = need;
  iwsav[iw_check] = rk_check_word(iwsav);
  const double dir = t1 > t0 ? 1.0 : -1.0;
  rwsav[rw_tstart] = t0;
  rwsav[rw_tend] = t1;
  rwsav[rw_tol] = *tol;
  rwsav[rw_t] = t0;
  rwsav[rw_dir] = dir;
  rwsav[rw_target] = t1;
  rwsav[rw_tgot] = t0;
  rwsav[rw_hstart] = *hstart;
  rwsav[rw_h] = dir * std::min(std::fabs(*hstart), std::fabs(t1 - t0));
  rk_state st{iwsav, rwsav, *n, &pair_of(*method)};
  for (int64_t i = 0; i < *n; ++i) {
    st.thresh()[i] = thresh[i];
    st.y()[i] = yinit[i];
    st.ymax()[i] = std::fabs(yinit[i]);
  }
}

ZEM_API void d02pqf_(const int64_t *n, const double *tstart, const double *tend, const double yinit[],
                     const double *tol, const double thresh[], const int64_t *method, const double *hstart,
                     int64_t iwsav[], double rwsav[], int64_t *lrwsav, int64_t *ifail) {
  zem::f_entry call("d02pqf", d02pq_messages);
  // A negative method asks for the global error assessment.
  const int64_t m = (*method < 0 && *method >= -3) ? -*method : *method;
  const int64_t ga = *method < 0 ? 1 : 0;
  const int64_t mcode = (m >= 1 && m <= 3) ? m : *method;
  d02pqft_(&call.en_data, n, tstart, tend, yinit, tol, thresh, &mcode, &ga, hstart, iwsav, rwsav, lrwsav,
           call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02pqc(int64_t n, double tstart, double tend, const double yinit[], double tol, const double thresh[],
                    Zem_RK_method method, Zem_ErrorAssess errass, double hstart, int64_t iwsav[], double rwsav[],
                    int64_t *lrwsav, Zem_Fail *fail) {
  zem::c_entry call("d02pqc", d02pq_messages, fail);
  if (!lrwsav) return call.bad_param("lrwsav");
  const int64_t m = method == Zem_RK_2_3 ? 1 : method == Zem_RK_4_5 ? 2 : method == Zem_RK_7_8 ? 3 : 0;
  if (m == 0) return call.bad_param("method");
  if (errass != Zem_ErrorAssess_on && errass != Zem_ErrorAssess_off) {
    // Reported as the engine reports it, with the member's number.
    zem::fail(call.errbuf, &call.status, 1, 1103, static_cast<int64_t>(errass));
    return call.finish();
  }
  const int64_t ga = errass == Zem_ErrorAssess_on ? 1 : 0;
  if (*lrwsav > 0 && n >= 1) {
    if (!yinit) return call.bad_param("yinit");
    if (!thresh) return call.bad_param("thresh");
    if (!iwsav) return call.bad_param("iwsav");
    if (!rwsav) return call.bad_param("rwsav");
  }
  d02pqft_(&call.en_data, &n, &tstart, &tend, yinit, &tol, thresh, &m, &ga, &hstart, iwsav, rwsav, lrwsav,
           call.errbuf, &call.status);
  call.finish();
}
