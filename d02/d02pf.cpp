// d02pf: the step integrator.  Takes one step towards tend and returns the
// new point tnow with the solution and its derivative there; the step ends
// exactly on tend when it reaches it (d02pr moves tend on).
#include <algorithm>

#include "d02/d02p_callback.h"
#include "d02/rk_calls.h"
#include "d02/rk_step.h"

inline constexpr zem::message d02pf_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_INTEGRATOR_ROWS,
    D02P_STEP_ROWS,
};
ZEM_REGISTER_MESSAGES(d02pf)

ZEM_D02P_CALLBACK(d02pf)

#define D02PF_ARGS(V, A, U)                                                                              \
  U(zem_routine, f) U(d02pf_f_adaptor, adaptor) V(const int64_t *, n) V(double *, tnow) A(double *, ynow) \
  A(double *, ypnow) A(int64_t *, iuser) A(double *, ruser) A(int64_t *, iwsav) A(double *, rwsav)       \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pf, D02PF_ARGS)

ZEM_INTERNAL void d02pffn_(engine_data *en_data, zem_routine f, d02pf_f_adaptor adaptor, const int64_t *n,
                           double *tnow, double *ynow, double *ypnow, int64_t *iuser, double *ruser,
                           int64_t *iwsav, double *rwsav, char *errbuf, int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_step_begin(iwsav, rwsav, n, rtn_pf, st, errbuf, ifail)) return;
  // Captures by value, t by value: nothing of the machine's state escapes
  // into the user call, so it stays in registers across it.
  // n comes from the machine, which knows it at compile time for the small
  // systems: the C user function then gets a constant.
  auto eval = [=](double t, int64_t m, const double *y, double *yp) ZEM_RK_INLINE {
    return d02pff_print_fh_(adaptor, en_data, f, &t, &m, y, yp, iuser, ruser);
  };
  int64_t flag = 0;
  const rk_outcome out = rk_drive(st, rtn_pf, eval, errbuf, ifail, flag);
  rk_step_answer(st, tnow, ynow, ypnow);
  if (out == rk_outcome::user_stop) return zem::user_stop(errbuf, ifail, flag);
  if (out == rk_outcome::done) rk_step_end(st, errbuf, ifail);
}

ZEM_API void d02pff_(Zem_D02P_FFun f, const int64_t *n, double *tnow, double ynow[], double ypnow[],
                     int64_t iuser[], double ruser[], int64_t iwsav[], double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02pff", d02pf_messages);
  d02pfft_(&call.en_data, reinterpret_cast<zem_routine>(f), d02pff_fh_, n, tnow, ynow, ypnow, iuser, ruser, iwsav,
           rwsav, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02pfc(Zem_D02P_Fun f, int64_t n, double *tnow, double ynow[], double ypnow[], Zem_Comm *comm,
                    int64_t iwsav[], double rwsav[], Zem_Fail *fail) {
  zem::c_entry call("d02pfc", d02pf_messages, fail);
  if (!f) return call.bad_param("f");
  if (!tnow) return call.bad_param("tnow");
  if (!ynow) return call.bad_param("ynow");
  if (!ypnow) return call.bad_param("ypnow");
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  d02pfft_(&call.en_data, reinterpret_cast<zem_routine>(f), d02pfc_f_helper, &n, tnow, ynow, ypnow,
           call.comm_slot(comm), call.ruser(), iwsav, rwsav, call.errbuf, &call.status);
  call.finish();
}
