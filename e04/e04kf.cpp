// e04kf: the first-order active-set solver of the modelling suite for a
// nonlinear (or linear or quadratic) objective with simple bounds.  The
// method is in e04/foas.h; this file is the routine around it: the checks,
// the options, the three user functions through the callback chain, the
// results stored in the handle, and the two entries.
//
// Order of the checks: the handle (status 1), a solve already running
// (status 2, NE_PHASE), the model (status 2, NE_SETUP_ERROR), nvar
// (status 4, NE_REF_MATCH), the user functions the model needs (status 6),
// a finite start point (status 7).
// From then on the handle is "being solved" until the worker returns, on
// every path; x, the multipliers, the objective and the statistics are
// stored in the handle whatever the outcome of the iteration.
#include <cmath>
#include <cstdint>
#include <new>
#include <vector>

#include "e04/foas.h"
#include "e04/foas_model.h"
#include "e04/model.h"
#include "e04/options.h"
#include "frame/adaptors.h"

inline constexpr zem::message e04kf_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {2, 1011, NE_SETUP_ERROR, {"This solver does not support the model defined in the handle."}},
    ZEM_E04_REF_MATCH_ROW(4, 1012),
    {6, 1013, NE_BAD_PARAM, {"On entry, objfun is missing: the objective in the handle is nonlinear."}},
    {6, 1014, NE_BAD_PARAM,
     {"On entry, objgrd is missing: the objective in the handle is nonlinear",
      "and 'FOAS Estimate Derivatives' = NO."}},
    {7, 1015, NE_REAL_ARRAY, {"On entry, x[%s] = %s.", "Constraint: the start point must be finite."},
     {"On entry, x(%s) = %s", "Constraint: the start point must be finite."}},
    {21, 1021, NW_TOO_MANY_ITER,
     {"The iteration limit was reached:", "'FOAS Iteration Limit' = %s.",
      "x holds the last iterate; rinfo and stats describe it."},
     {"The iteration limit was reached:", "'FOAS Iteration Limit' = %s",
      "x holds the last iterate; rinfo and stats describe it."}},
    {22, 1022, NW_NOT_CONVERGED,
     {"No progress over the last %s iterations:",
      "the objective decreased by less than 'FOAS Progress Tolerance' (relative).",
      "x holds the last iterate, which may be close to optimal."}},
    {23, 1023, NW_NOT_CONVERGED,
     {"The line search found no lower objective along a descent direction.",
      "The gradient may be inaccurate or the stopping tolerance too small.",
      "x holds the last iterate."}},
    {24, 1024, NW_TIME_LIMIT,
     {"The time limit was reached: 'Time Limit' = %s seconds.", "x holds the last iterate."},
     {"The time limit was reached: 'Time Limit' = %s seconds", "x holds the last iterate."}},
    {25, 1025, NE_UNBOUNDED,
     {"The problem seems to be unbounded: the objective fell below",
      "-'Infinite Bound Size' or a variable grew beyond it in magnitude."}},
    {26, 1026, NE_USER_NAN,
     {"objfun returned a value that is not finite:", "objective = %s.",
      "x holds the last iterate before the failing evaluation."},
     {"objfun returned a value that is not finite:", "objective = %s",
      "x holds the last iterate before the failing evaluation."}},
    {27, 1027, NE_USER_NAN,
     {"objgrd returned a gradient that is not finite:", "element %s = %s.",
      "x holds the last iterate before the failing evaluation."},
     {"objgrd returned a gradient that is not finite:", "element %s = %s",
      "x holds the last iterate before the failing evaluation."}},
};
ZEM_REGISTER_MESSAGES(e04kf)

// ---- the user functions --------------------------------------------------
// inform is 0 on entry to every call (the oracle below passes a fresh 0); a
// negative value asks the solver to stop, and so does a change of
// comm->flag in C.
// objfun: the objective at x.
#define E04KF_OBJFUN_ARGS(V, A, U) \
  V(const int64_t *, nvar) A(const double *, x) V(double *, fx) V(int64_t *, inform) A(int64_t *, iuser) A(double *, ruser)
// objgrd: the nnzfd gradient elements of the sparsity idxfd (e04rg) at x.
#define E04KF_OBJGRD_ARGS(V, A, U)                                                                       \
  V(const int64_t *, nvar) A(const double *, x) V(const int64_t *, nnzfd) A(double *, fdx) V(int64_t *, inform) \
  A(int64_t *, iuser) A(double *, ruser)
// monit: the iterate with rinfo and stats, every 'FOAS Monitor Frequency'
// iterations.
#define E04KF_MONIT_ARGS(V, A, U)                                                                        \
  V(const int64_t *, nvar) A(const double *, x) V(int64_t *, inform) A(const double *, rinfo)             \
  A(const double *, stats) A(int64_t *, iuser) A(double *, ruser)

namespace {
// A negative inform asks to stop; the repeat code of the marshal layer is
// not the user's to give.  The solver ends at the first non-zero status, so
// the status is 0 when a user function is called; when a C function both
// changes comm->flag and returns a negative inform, the flag (taken first
// by the adaptor) is the value reported.
inline void take_inform(engine_data *en_data, int64_t inform) {
  if (inform < 0 && inform != zem::repeat_call && en_data->cb_status == 0) en_data->cb_status = inform;
}
}  // namespace

// One line a user function: its chain and its two adaptors (Fortran: every
// argument by reference; C: scalars in by value, the comm record last).
#define E04KF_CALLBACK(arg, Type, ARGS) \
  ZEM_CALLBACK_CHAIN(e04kf, arg, ARGS)  \
  ZEM_CALLBACK_ADAPTORS(e04kf, arg, ARGS, Zem_E04KF_F##Type, Zem_E04KF_##Type, take_inform(en_data, *inform))
E04KF_CALLBACK(objfun, ObjFun, E04KF_OBJFUN_ARGS)
E04KF_CALLBACK(objgrd, ObjGrd, E04KF_OBJGRD_ARGS)
E04KF_CALLBACK(monit, Monit, E04KF_MONIT_ARGS)

#define E04KF_ARGS(V, A, U)                                                                                   \
  A(void *const *, handle) U(zem_routine, objfun) U(e04kf_objfun_adaptor, objfun_ad) U(zem_routine, objgrd)   \
  U(e04kf_objgrd_adaptor, objgrd_ad) U(zem_routine, monit) U(e04kf_monit_adaptor, monit_ad)                  \
  V(const int64_t *, nvar) A(double *, x) A(double *, rinfo) A(double *, stats) A(int64_t *, iuser)          \
  A(double *, ruser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04kf, E04KF_ARGS)

namespace {

using namespace zem::e04;

// The evaluations the method asks for: the model's own objective, or the
// user's functions through the callback chain (the gradient scattered from
// its sparsity), with the sign of "Task" applied.
struct oracle {
  engine_data *en_data;
  zem_routine objfun, objgrd, monit;
  e04kf_objfun_adaptor objfun_ad;
  e04kf_objgrd_adaptor objgrd_ad;
  e04kf_monit_adaptor monit_ad;
  int64_t *iuser;
  double *ruser;
  int64_t n;
  const foas::model_objective *model;  // null: the user's functions
  const std::vector<int64_t> *idxfd;
  double *fdx;                          // null: the gradient is dense
  double sign;                          // -1 to maximize
  const foas::printer *out;

  int64_t f(const double *x, double *fx) {
    if (model) {
      model->f(x, fx);
      *fx *= sign;
      return 0;
    }
    int64_t inform = 0;
    const int64_t s = e04kff_print_objfunh_(objfun_ad, en_data, objfun, &n, x, fx, &inform, iuser, ruser);
    *fx *= sign;
    return s;
  }
  int64_t grad(const double *x, double *g) {
    if (model) {
      model->grad(x, g);
      if (sign < 0)
        for (int64_t i = 0; i < n; ++i) g[i] = -g[i];
      return 0;
    }
    int64_t inform = 0;
    const int64_t nnz = static_cast<int64_t>(idxfd->size());
    double *dst = fdx ? fdx : g;
    const int64_t s = e04kff_print_objgrdh_(objgrd_ad, en_data, objgrd, &n, x, &nnz, dst, &inform, iuser, ruser);
    if (fdx) {
      for (int64_t i = 0; i < n; ++i) g[i] = 0.0;
      for (int64_t k = 0; k < nnz; ++k) g[(*idxfd)[k] - 1] = fdx[k];
    }
    if (sign < 0)
      for (int64_t i = 0; i < n; ++i) g[i] = -g[i];
    return s;
  }
  int64_t monitor(const double *x, double *rinfo, const double *stats) {
    if (!monit) return 0;
    const double f = rinfo[foas::ri_f];
    rinfo[foas::ri_f] = sign * f;  // the user sees the objective as defined
    int64_t inform = 0;
    const int64_t s = e04kff_print_monith_(monit_ad, en_data, monit, &n, x, &inform, rinfo, stats, iuser, ruser);
    rinfo[foas::ri_f] = f;
    return s;
  }
  void log(int, const foas::state_view &v) {
    foas::state_view u = v;
    u.f *= sign;
    out->line(u);
  }
};

foas::settings read_settings(const option_set &o) {
  foas::settings st;
  st.iteration_limit = int_value(o, opt::foas_iteration_limit);
  st.memory = int_value(o, opt::foas_memory);
  st.monitor_frequency = int_value(o, opt::foas_monitor_frequency);
  st.print_frequency = int_value(o, opt::foas_print_frequency);
  st.progress_tol = real_value(o, opt::foas_progress_tolerance);
  st.rel_stop_tol = real_value(o, opt::foas_rel_stop_tolerance);
  st.restart_factor = real_value(o, opt::foas_restart_factor);
  st.slow_tol = real_value(o, opt::foas_slow_tolerance);
  st.stop_tol = real_value(o, opt::foas_stop_tolerance);
  st.subsolver = int_value(o, opt::foas_subsolver);
  st.norm = int_value(o, opt::foas_tolerance_norm);
  st.estimate = int_value(o, opt::foas_estimate_derivatives) == 1;
  st.fd_interval = real_value(o, opt::foas_finite_diff_interval);
  st.bigbnd = real_value(o, opt::infinite_bound_size);
  st.time_limit = real_value(o, opt::time_limit);
  return st;
}

}  // namespace

ZEM_LAYER_INLINE void e04kffn_(engine_data *en_data, void *const *handle, zem_routine objfun,
                               e04kf_objfun_adaptor objfun_ad, zem_routine objgrd, e04kf_objgrd_adaptor objgrd_ad,
                               zem_routine monit, e04kf_monit_adaptor monit_ad, const int64_t *nvar, double *x,
                               double *rinfo, double *stats, int64_t *iuser, double *ruser, char *errbuf,
                               int64_t *ifail) {
  *ifail = 0;
  problem *p = open_problem(*handle, errbuf, ifail);
  if (!p) return;
  if (!check_not_solving(*p, errbuf, ifail)) return;
  if (!foas::model_supported(*p)) return zem::fail(errbuf, ifail, 2, 1011);
  const int64_t n = p->s.nvar;
  if (*nvar != n) return zem::fail(errbuf, ifail, 4, 1012, *nvar, n);
  const option_set &o = *options(*p);
  foas::settings st = read_settings(o);
  const bool nonlinear = p->s.objective == obj_nonlinear;
  if (nonlinear && !objfun) return zem::fail(errbuf, ifail, 6, 1013);
  if (nonlinear && !st.estimate && !objgrd) return zem::fail(errbuf, ifail, 6, 1014);
  for (int64_t i = 0; i < n; ++i)
    if (!std::isfinite(x[i])) return zem::fail(errbuf, ifail, 7, 1015, i + 1, x[i]);
  if (!nonlinear) st.estimate = false;  // the model's own gradient is exact

  const solving_scope solving(*p);  // "being solved" until return, on every path

  foas::printer out;
  out.print_unit = int_value(o, opt::print_file);
  out.print_level = int_value(o, opt::print_level);
  out.mon_unit = int_value(o, opt::monitoring_file);
  out.mon_level = int_value(o, opt::monitoring_level);
  out.stats_time = int_value(o, opt::stats_time) != 0;

  // Work arrays, the sparse gradient's buffer, the model's factor buffer.
  foas::workspace ws;
  std::vector<double> fdx;
  foas::model_objective model(*p);
  try {
    if (nonlinear && static_cast<int64_t>(p->idxfd.size()) != n) fdx.assign(p->idxfd.size() + 1, 0.0);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  if (!ws.allocate(n, st.memory) || !model.prepare()) return zem::alloc_fail(ifail);

  // Bounds (a bound at or beyond 'Infinite Bound Size' is none; a deleted
  // variable is fixed at 0) and the start point projected onto them.
  const double big = st.bigbnd;
  const double inf = std::numeric_limits<double>::infinity();
  int64_t nfixed = 0, nbounded = 0;
  for (int64_t i = 0; i < n; ++i) {
    const bool deleted = static_cast<size_t>(i) < p->var_deleted.size() && p->var_deleted[i];
    const double l = deleted ? 0.0 : p->bl[i] <= -big ? -inf : p->bl[i];
    const double u = deleted ? 0.0 : p->bu[i] >= big ? inf : p->bu[i];
    ws.lo[i] = l;
    ws.hi[i] = u;
    nfixed += l == u;
    nbounded += std::isfinite(l) || std::isfinite(u);
    ws.x[i] = std::min(std::max(x[i], l), u);
  }
  const int64_t task = int_value(o, opt::task);  // 1 minimize, 2 maximize, 3 feasible point
  oracle orc{en_data, objfun, objgrd, monit, objfun_ad, objgrd_ad, monit_ad, iuser, ruser, n,
             nonlinear ? nullptr : &model, &p->idxfd, fdx.empty() ? nullptr : fdx.data(),
             task == 2 ? -1.0 : 1.0, &out};
  if (int_value(o, opt::print_options) == 1 && out.print_level >= 1 && out.print_unit >= 0)
    print_options(o, out.print_unit, print_which::changed);
  out.header(n, nfixed, nbounded, static_cast<int>(p->s.objective), st);

  foas::result r;
  if (task == 3) {
    // A feasible point of simple bounds: the projected start.
    st.iteration_limit = 1;
    st.stop_tol = inf;
  }
  foas::solver<oracle> solver(st, ws, orc);
  solver.run(r);
  r.rinfo[foas::ri_f] *= orc.sign;

  // Results: x, the bound multipliers (the gradient of the minimized
  // objective on the variables at a bound, 0 elsewhere), the objective and
  // the statistics, in the caller's arrays and in the handle.
  double *z = ws.w;
  for (int64_t i = 0; i < n; ++i) {
    x[i] = ws.x[i];
    z[i] = (ws.x[i] <= ws.lo[i] || ws.x[i] >= ws.hi[i]) ? ws.g[i] : 0.0;
  }
  for (int k = 0; k < foas::rinfo_len; ++k) rinfo[k] = r.rinfo[k];
  for (int k = 0; k < foas::stats_len; ++k) stats[k] = r.stats[k];
  const double fin = r.rinfo[foas::ri_f];
  if (!store_reals(*p, "PRIMAL", {ws.x, static_cast<size_t>(n)}) ||
      !store_reals(*p, "DUAL", {z, static_cast<size_t>(n)}) || !store_reals(*p, "OBJECTIVE VALUE", {&fin, 1}) ||
      !store_reals(*p, "RINFO", {r.rinfo, foas::rinfo_len}) || !store_reals(*p, "SOLVER STATISTICS", {r.stats, foas::stats_len}))
    return zem::alloc_fail(ifail);
  out.summary(r.how, r);
  out.solution(int_value(o, opt::print_solution), n, ws.x, ws.lo, ws.hi, z);

  switch (r.how) {
    case foas::outcome::converged: return;
    case foas::outcome::user_stop: return zem::user_stop(errbuf, ifail, r.stop_flag);
    case foas::outcome::iteration_limit: return zem::fail(errbuf, ifail, 21, 1021, st.iteration_limit);
    case foas::outcome::slow_progress: return zem::fail(errbuf, ifail, 22, 1022, int64_t{foas::slow_window});
    case foas::outcome::no_progress: return zem::fail(errbuf, ifail, 23, 1023);
    case foas::outcome::time_limit: return zem::fail(errbuf, ifail, 24, 1024, st.time_limit);
    case foas::outcome::unbounded: return zem::fail(errbuf, ifail, 25, 1025);
    case foas::outcome::nan_objective: return zem::fail(errbuf, ifail, 26, 1026, r.bad_value);
    case foas::outcome::nan_gradient: return zem::fail(errbuf, ifail, 27, 1027, r.bad_index, r.bad_value);
  }
}

ZEM_API void e04kff_(void *const *handle, Zem_E04KF_FObjFun objfun, Zem_E04KF_FObjGrd objgrd,
                     Zem_E04KF_FMonit monit, const int64_t *nvar, double x[], double rinfo[], double stats[],
                     int64_t iuser[], double ruser[], int64_t *ifail) {
  zem::f_entry call("e04kff", e04kf_messages);
  e04kfft_(&call.en_data, handle, reinterpret_cast<zem_routine>(objfun), e04kff_objfunh_,
           reinterpret_cast<zem_routine>(objgrd), e04kff_objgrdh_, reinterpret_cast<zem_routine>(monit),
           e04kff_monith_, nvar, x, rinfo, stats, iuser, ruser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04kfc(void *handle, Zem_E04KF_ObjFun objfun, Zem_E04KF_ObjGrd objgrd, Zem_E04KF_Monit monit,
                    int64_t nvar, double x[], double rinfo[], double stats[], Zem_Comm *comm, Zem_Fail *fail) {
  zem::c_entry call("e04kfc", e04kf_messages, fail);
  if (nvar > 0 && !x) return call.bad_param("x");
  if (!rinfo) return call.bad_param("rinfo");
  if (!stats) return call.bad_param("stats");
  e04kfft_(&call.en_data, &handle, reinterpret_cast<zem_routine>(objfun), e04kfc_objfun_helper,
           reinterpret_cast<zem_routine>(objgrd), e04kfc_objgrd_helper, reinterpret_cast<zem_routine>(monit),
           e04kfc_monit_helper, &nvar, x, rinfo, stats, call.comm_slot(comm), call.ruser(), call.errbuf,
           &call.status);
  call.finish();
}
