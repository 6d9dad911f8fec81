// d02pg: the step integrator in reverse communication.  Called with
// irevcm = 0 it starts a step; whenever it needs a derivative it returns
// with irevcm = 1 (for the step) or 2 (for the global error assessment), the
// point in t and y, and expects yp = f(t, y) on the next call, made with
// irevcm unchanged.  When the step is complete it returns irevcm = 0 with
// tnow, ynow and ypnow, as d02pf does.  The evaluation point y is the
// caller's array: the state stays in iwsav and rwsav.
#include <algorithm>

#include "d02/rk_calls.h"
#include "d02/rk_step.h"

inline constexpr zem::message d02pg_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_INTEGRATOR_ROWS,
    D02P_STEP_ROWS,
    {1, 1013, NE_INT,
     {"On entry, irevcm = %s.", "Constraint: irevcm = 0, or the value returned by the previous call."}},
    {1, 1030, NE_INT,
     {"On entry, irevcm = %s, but the previous call", "asked for a derivative with irevcm = %s."}},
};
ZEM_REGISTER_MESSAGES(d02pg)

#define D02PG_ARGS(V, A, U)                                                                              \
  V(int64_t *, irevcm) V(const int64_t *, n) V(double *, t) A(double *, y) A(double *, yp)              \
  V(double *, tnow) A(double *, ynow) A(double *, ypnow) A(int64_t *, iwsav) A(double *, rwsav)         \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pg, D02PG_ARGS)

ZEM_INTERNAL void d02pgfn_(engine_data *, int64_t *irevcm, const int64_t *n, double *t, double *y, double *yp,
                           double *tnow, double *ynow, double *ypnow, int64_t *iwsav, double *rwsav, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  const int64_t entry = *irevcm;
  *irevcm = 0;
  rk_state st;
  if (entry < 0) return zem::fail(errbuf, ifail, 1, 1013, entry);
  if (entry == 0) {
    if (!rk_step_begin(iwsav, rwsav, n, rtn_pg, st, errbuf, ifail)) return;
    // A step left half way (a derivative was asked for) cannot be restarted.
    if (st.iw[iw_irevcm] != 0) return rk_kill(st, rtn_pg, errbuf, ifail, 1, 1030, entry, st.iw[iw_irevcm]);
  } else {
    if (!rk_open(iwsav, rwsav, n, rtn_pg, false, st, errbuf, ifail)) return;
    if (st.iw[iw_irevcm] != entry) return rk_kill(st, rtn_pg, errbuf, ifail, 1, 1013, entry);
    // The derivative the last call asked for.
    std::copy(yp, yp + st.n, st.rw + st.iw[iw_dest]);
    st.iw[iw_irevcm] = 0;
  }
  rk_request req{};
  const rk_event ev = rk_resume(st, req);
  switch (ev) {
    case rk_event::eval:
    case rk_event::eval_ga:
      *irevcm = ev == rk_event::eval ? 1 : 2;
      st.iw[iw_irevcm] = *irevcm;
      st.iw[iw_dest] = req.yp - st.rw;
      *t = req.t;
      std::copy(req.y, req.y + st.n, y);
      return;
    case rk_event::step_done:
      rk_step_answer(st, tnow, ynow, ypnow);
      return rk_step_end(st, errbuf, ifail);
    case rk_event::stopped:  // not returned in reverse communication
    case rk_event::too_small:
      rk_step_answer(st, tnow, ynow, ypnow);
      return rk_kill(st, rtn_pg, errbuf, ifail, 4, 4001, std::fabs(st.rw[rw_hnext]), st.rw[rw_t], req.hmin);
    case rk_event::ga_start:
      rk_step_answer(st, tnow, ynow, ypnow);
      return rk_kill(st, rtn_pg, errbuf, ifail, 6, 6001);
    case rk_event::ga_later:
      rk_step_answer(st, tnow, ynow, ypnow);
      return rk_kill(st, rtn_pg, errbuf, ifail, 6, 6002, st.rw[rw_tsec]);
  }
}

ZEM_API void d02pgf_(int64_t *irevcm, const int64_t *n, double *t, double y[], double yp[], double *tnow,
                     double ynow[], double ypnow[], int64_t iwsav[], double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02pgf", d02pg_messages);
  d02pgft_(&call.en_data, irevcm, n, t, y, yp, tnow, ynow, ypnow, iwsav, rwsav, call.errbuf, &call.status);
  // A derivative is wanted: return at once, nothing to report.
  if (*irevcm != 0) {
    *ifail = 0;
    return;
  }
  call.finish(ifail);
}

ZEM_API void d02pgc(int64_t *irevcm, int64_t n, double *t, double y[], double yp[], double *tnow, double ynow[],
                    double ypnow[], int64_t iwsav[], double rwsav[], Zem_Fail *fail) {
  zem::c_entry call("d02pgc", d02pg_messages, fail);
  if (!irevcm) return call.bad_param("irevcm");
  auto bad = [&](const char *arg) {
    *irevcm = 0;
    call.bad_param(arg);
  };
  if (!t) return bad("t");
  if (!y) return bad("y");
  if (!yp) return bad("yp");
  if (!tnow) return bad("tnow");
  if (!ynow) return bad("ynow");
  if (!ypnow) return bad("ypnow");
  if (!iwsav) return bad("iwsav");
  if (!rwsav) return bad("rwsav");
  d02pgft_(&call.en_data, irevcm, &n, t, y, yp, tnow, ynow, ypnow, iwsav, rwsav, call.errbuf, &call.status);
  if (*irevcm != 0) return;
  call.finish();
}
