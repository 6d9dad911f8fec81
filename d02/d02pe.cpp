// d02pe: the range integrator.  Integrates to twant and returns tgot = twant
// with the solution, its derivative and the largest magnitudes so far.
// With the 2(3) and 4(5) pairs the steps go on towards tend as the error
// control chooses them, and the answer at twant comes from the dense output
// of the step that passed it; with the 7(8) pair (no dense output) the steps
// are shortened to end exactly on twant.
#include <algorithm>
#include <cmath>

#include "d02/d02p_callback.h"
#include "d02/rk_calls.h"

inline constexpr zem::message d02pe_messages[] = {
    D02P_ARRAY_ROWS,
    D02P_INTEGRATOR_ROWS,
    {1, 1004, NE_RK_TWANT_CLOSE_TGOT,
     {"twant is too close to the last value of tgot (tstart on setup).",
      "When using the method of order 8 at setup, these must differ by at least",
      "%s. Their absolute difference is", "%s."}},
    {1, 1005, NE_RK_TGOT_RANGE_TEND,
     {"twant lies beyond tend (setup) in the direction of integration.", "twant = %s and tend = %s."}},
    {1, 1006, NE_RK_TGOT_RANGE_TEND_CLOSE,
     {"twant lies beyond tend (setup) in the direction of integration, but is", "very close to tend.",
      "You may have intended twant = tend.", "abs(twant-tend) = %s."}},
    {1, 1007, NE_RK_TGOT_RANGE_TEND, {"twant does not lie in the direction of integration.", "twant = %s."}},
    {1, 1008, NE_RK_TGOT_EQ_TEND,
     {"tend (setup) had already been reached in a previous call.",
      "To start a new problem, you will need to call the setup function."}},
    {5, 5001, NE_RK_POINTS,
     {"This function is being used inefficiently because the step size has been",
      "reduced drastically many times to obtain answers at many points.",
      "Using the order 4 and 5 pair method at setup is more appropriate here.",
      "You can continue integrating this problem."}},
};
ZEM_REGISTER_MESSAGES(d02pe)

ZEM_D02P_CALLBACK(d02pe)

#define D02PE_ARGS(V, A, U)                                                                              \
  U(zem_routine, f) U(d02pe_f_adaptor, adaptor) V(const int64_t *, n) V(const double *, twant)          \
  V(double *, tgot) A(double *, ygot) A(double *, ypgot) A(double *, ymax) A(int64_t *, iuser)          \
  A(double *, ruser) A(int64_t *, iwsav) A(double *, rwsav) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d02pe, D02PE_ARGS)

// Drastic step reductions to reach output points before the warning.
inline constexpr int64_t d02pe_cut_limit = 100;

ZEM_INTERNAL void d02pefn_(engine_data *en_data, zem_routine f, d02pe_f_adaptor adaptor, const int64_t *n,
                           const double *twant, double *tgot, double *ygot, double *ypgot, double *ymax,
                           int64_t *iuser, double *ruser, int64_t *iwsav, double *rwsav, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::d02;
  *ifail = 0;
  rk_state st;
  if (!rk_open(iwsav, rwsav, n, rtn_pe, false, st, errbuf, ifail)) return;
  if (!rk_mode(st, 1, rtn_pe, errbuf, ifail)) return;
  double *rw = st.rw;
  int64_t *iw = st.iw;
  if (iw[iw_at_tend]) return rk_kill(st, rtn_pe, errbuf, ifail, 1, 1008);
  const double tw = *twant, t = rw[rw_t], tend = rw[rw_tend], dir = rw[rw_dir];
  // The last output point: tgot of the previous call (t itself for the 7(8)
  // pair, which stops on it).
  const double tlast = rw[rw_tgot];
  const double hmin = rk_hmin(st, t);
  if (!(dir * (tw - tlast) > 0.0)) {
    if (std::fabs(tw - tlast) < hmin && std::isfinite(tw))
      return rk_kill(st, rtn_pe, errbuf, ifail, 1, 1004, hmin, std::fabs(tw - tlast));
    return rk_kill(st, rtn_pe, errbuf, ifail, 1, 1007, tw);
  }
  if (dir * (tw - tend) > 0.0) {
    if (std::fabs(tw - tend) <= 10.0 * rk_hmin(st, tend))
      return rk_kill(st, rtn_pe, errbuf, ifail, 1, 1006, std::fabs(tw - tend));
    return rk_kill(st, rtn_pe, errbuf, ifail, 1, 1005, tw, tend);
  }
  if (std::fabs(tw - tlast) < hmin) return rk_kill(st, rtn_pe, errbuf, ifail, 1, 1004, hmin, std::fabs(tw - tlast));

  const bool interp = iw[iw_method] != rk78;
  rw[rw_target] = interp ? tend : tw;
  const int64_t nn = st.n;
  // Captures by value, t by value: nothing of the machine's state escapes
  // into the user call, so it stays in registers across it.
  // n comes from the machine, which knows it at compile time for the small
  // systems: the C user function then gets a constant.
  auto eval = [=](double t, int64_t m, const double *y, double *yp) ZEM_RK_INLINE {
    return d02pef_print_fh_(adaptor, en_data, f, &t, &m, y, yp, iuser, ruser);
  };
  // Writes the answer at tg: the last step's end, or its dense output.
  auto answer = [&](double tg, bool at_step) {
    *tgot = tg;
    if (at_step) {
      std::copy(st.y(), st.y() + nn, ygot);
      std::copy(st.yp(), st.yp() + nn, ypgot);
    } else {
      rk_interp(st, tg, nn, ygot, ypgot);
    }
    for (int64_t i = 0; i < nn; ++i) st.ymax()[i] = std::max(st.ymax()[i], std::fabs(ygot[i]));
    std::copy(st.ymax(), st.ymax() + nn, ymax);
    rw[rw_tgot] = tg;
    if (tg == tend) iw[iw_at_tend] = 1;
  };
  // A step already past twant (dense output pairs): answer at once.
  if (interp && iw[iw_steps] > 0 && dir * (rw[rw_t] - tw) >= 0.0) {
    answer(tw, rw[rw_t] == tw);
    return;
  }
  // Whether a completed step leaves the integration with nothing to do here:
  // twant reached, stiffness diagnosed or the budget spent.  While it does,
  // the machine goes on to the next step without returning.
  auto reached = [=] { return interp ? dir * (rw[rw_t] - tw) >= 0.0 : rw[rw_t] == tw; };
  auto more = [=] { return !reached() && !iw[iw_stiff_flag] && iw[iw_budget] < rk_budget; };
  for (;;) {
    int64_t flag = 0;
    const rk_outcome out = rk_drive(st, rtn_pe, eval, more, errbuf, ifail, flag);
    if (out == rk_outcome::user_stop) {
      answer(rw[rw_t], true);
      return zem::user_stop(errbuf, ifail, flag);
    }
    if (out == rk_outcome::failed) {
      answer(rw[rw_t], true);
      return;
    }
    if (reached()) {
      answer(tw, rw[rw_t] == tw);
      if (rk_step_warning(st, errbuf, ifail)) return;
      if (!interp && iw[iw_cuts] >= d02pe_cut_limit) {
        iw[iw_cuts] = 0;
        zem::fail(errbuf, ifail, 5, 5001);
      }
      return;
    }
    if (iw[iw_stiff_flag] || iw[iw_budget] >= rk_budget) {
      answer(rw[rw_t], true);
      rk_step_warning(st, errbuf, ifail);
      return;
    }
  }
}

ZEM_API void d02pef_(Zem_D02P_FFun f, const int64_t *n, const double *twant, double *tgot, double ygot[],
                     double ypgot[], double ymax[], int64_t iuser[], double ruser[], int64_t iwsav[],
                     double rwsav[], int64_t *ifail) {
  zem::f_entry call("d02pef", d02pe_messages);
  d02peft_(&call.en_data, reinterpret_cast<zem_routine>(f), d02pef_fh_, n, twant, tgot, ygot, ypgot, ymax, iuser,
           ruser, iwsav, rwsav, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d02pec(Zem_D02P_Fun f, int64_t n, double twant, double *tgot, double ygot[], double ypgot[],
                    double ymax[], Zem_Comm *comm, int64_t iwsav[], double rwsav[], Zem_Fail *fail) {
  zem::c_entry call("d02pec", d02pe_messages, fail);
  if (!f) return call.bad_param("f");
  if (!tgot) return call.bad_param("tgot");
  if (!ygot) return call.bad_param("ygot");
  if (!ypgot) return call.bad_param("ypgot");
  if (!ymax) return call.bad_param("ymax");
  if (!iwsav) return call.bad_param("iwsav");
  if (!rwsav) return call.bad_param("rwsav");
  d02peft_(&call.en_data, reinterpret_cast<zem_routine>(f), d02pec_f_helper, &n, &twant, tgot, ygot, ypgot, ymax,
           call.comm_slot(comm), call.ruser(), iwsav, rwsav, call.errbuf, &call.status);
  call.finish();
}
