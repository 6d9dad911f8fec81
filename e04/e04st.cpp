// e04st: solves the model in a handle with the interior-point method for
// nonlinear programming of the dependency (the bridge, e04/ipopt_bridge.h,
// holds everything that knows the dependency).
//
// The worker checks, in this order: the handle, that no solve is running on
// it, that the model is one this solver takes (linear, quadratic or
// nonlinear objective; simple bounds; linear, quadratic and nonlinear
// constraints; continuous variables), that nvar is the handle's, that the
// user functions the model needs are there, nnzu, and the options that must
// agree.  It then marks the handle as being solved for the whole run (every
// model change and option setting fails meanwhile, also from a user
// function), solves, stores the results in the handle and makes the handle
// editable again on every path.
//
// Six user functions, each through its own callback chain (one line each,
// below): objfun, objgrd (nonlinear objective), confun, congrd (nonlinear
// constraints), hess (second derivatives) and monit (every "Monitor
// Frequency" iterations).
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>

#include "e04/ipopt_bridge.h"
#include "e04/model.h"
#include "e04/options.h"
#include "frame/adaptors.h"

inline constexpr zem::message e04st_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {3, 1011, NE_SETUP_ERROR, {"This solver does not support the model defined in the handle."}},
    {3, 1012, NE_SETUP_ERROR, {"The objective is nonlinear: objfun and objgrd must be supplied."}},
    {3, 1013, NE_SETUP_ERROR, {"The model has nonlinear constraints: confun and congrd must be supplied."}},
    {3, 1014, NE_SETUP_ERROR,
     {"'Hessian Mode' = 'Exact' needs hess and the Hessian structure of the",
      "nonlinear functions (e04rl)."}},
    {3, 1015, NE_SETUP_ERROR,
     {"The model is too large for this solver: variables, constraints and",
      "Jacobian nonzeros must each be at most 2147483647."}},
    ZEM_E04_REF_MATCH_ROW(4, 1016),
    {5, 1017, NE_INT, {"On entry, nnzu = %s.", "Constraint: nnzu = 0 or nnzu = %s."},
     {"On entry, nnzu = %s", "Constraint: nnzu = 0 or nnzu = %s."}},
    {6, 1018, NE_REAL_2,
     {"On entry, 'Bound Relax Factor' = %s and", "'Stop Tolerance Feasibility' = %s.",
      "Constraint: 'Bound Relax Factor' <= 'Stop Tolerance Feasibility'.",
      "Use zem_opt_handle_opt_set (e04zmc) to set compatible option values."},
     {"On entry, 'Bound Relax Factor' = %s and", "'Stop Tolerance Feasibility' = %s",
      "Constraint: 'Bound Relax Factor' <= 'Stop Tolerance Feasibility'.",
      "Use e04zmf to set compatible option values."}},
    {7, 1030, NE_DERIV_ERRORS,
     {"The user-supplied derivatives appear to be wrong: 'Verify Derivatives'",
      "found entries that differ from their finite-difference estimates at x",
      "(listed on 'Print File' when 'Print Level' >= 1).", "Entries flagged: %s.",
      "No step was taken; x is unchanged."},
     {"The user-supplied derivatives appear to be wrong: 'Verify Derivatives'",
      "found entries that differ from their finite-difference estimates at x",
      "(listed on 'Print File' when 'Print Level' >= 1).", "Entries flagged: %s",
      "No step was taken; x is unchanged."}},
    {10, 1021, NE_TOO_MANY_ITER,
     {"The iteration limit was reached:", "'Outer Iteration Limit' = %s.", "x holds the last iterate."},
     {"The iteration limit was reached:", "'Outer Iteration Limit' = %s", "x holds the last iterate."}},
    {11, 1022, NE_TIME_LIMIT,
     {"The time limit was reached:", "'Time Limit' = %s seconds.", "x holds the last iterate."}},
    {20, 1023, NE_INFEASIBLE,
     {"The problem seems to be infeasible: the solver converged to a point",
      "of local infeasibility, held in x."}},
    {21, 1024, NE_UNBOUNDED, {"The problem seems to be unbounded: the iterates diverged."}},
    {22, 1025, NE_NUM_DIFFICULTIES,
     {"The solver met numerical difficulties and stopped.", "x holds the last iterate."}},
    {22, 1026, NE_NUM_DIFFICULTIES, {"The interior-point solver stopped with an internal error."}},
    {23, 1027, NE_USER_NAN,
     {"A user function returned a value that is not finite (NaN or infinity)",
      "where the solver could not step back."}},
    {50, 1028, NW_NOT_CONVERGED,
     {"The solver stopped at an acceptable point, short of the requested",
      "accuracy: 'Stop Tolerance 1' = %s."},
     {"The solver stopped at an acceptable point, short of the requested",
      "accuracy: 'Stop Tolerance 1' = %s"}},
    {50, 1029, NW_NOT_CONVERGED,
     {"The search direction became too small: x is the best point found,",
      "possibly short of the requested accuracy."}},
};
ZEM_REGISTER_MESSAGES(e04st)

// ---- Callback chains, one per user function -------------------------------
#define E04ST_OBJFUN_ARGS(V, A, U) \
  V(const int64_t *, nvar) A(const double *, x) V(double *, fx) V(int64_t *, inform) A(int64_t *, iuser) A(double *, ruser)
#define E04ST_OBJGRD_ARGS(V, A, U)                                                                         \
  V(const int64_t *, nvar) A(const double *, x) V(const int64_t *, nnzfd) A(double *, fdx) V(int64_t *, inform) \
  A(int64_t *, iuser) A(double *, ruser)
#define E04ST_CONFUN_ARGS(V, A, U)                                                                         \
  V(const int64_t *, nvar) A(const double *, x) V(const int64_t *, ncnln) A(double *, gx) V(int64_t *, inform) \
  A(int64_t *, iuser) A(double *, ruser)
#define E04ST_CONGRD_ARGS(V, A, U)                                                                         \
  V(const int64_t *, nvar) A(const double *, x) V(const int64_t *, nnzgd) A(double *, gdx) V(int64_t *, inform) \
  A(int64_t *, iuser) A(double *, ruser)
#define E04ST_HESS_ARGS(V, A, U)                                                                            \
  V(const int64_t *, nvar) A(const double *, x) V(const int64_t *, ncnln) V(const int64_t *, idf)           \
  V(const double *, sigma) A(const double *, lambda) V(const int64_t *, nnzh) A(double *, hx)              \
  V(int64_t *, inform) A(int64_t *, iuser) A(double *, ruser)
#define E04ST_MONIT_ARGS(V, A, U)                                                                          \
  V(const int64_t *, nvar) A(const double *, x) V(int64_t *, inform) A(const double *, rinfo)              \
  A(const double *, stats) A(int64_t *, iuser) A(double *, ruser)

namespace {
// A negative inform is a stop request, in both interfaces (-8888, the
// frame's repeat request, is not one).
inline void take_inform(engine_data *en_data, int64_t inform) {
  if (__builtin_expect(inform < 0, 0) && inform != zem::repeat_call) en_data->cb_status = inform;
}
}  // namespace

// One line a user function: its chain and its two adaptors (Fortran: every
// argument by reference; C: scalars in by value, the comm record last).
#define E04ST_CALLBACK(arg, Type, ARGS)                                                          \
  ZEM_CALLBACK_CHAIN(e04st, arg, ARGS)                                                           \
  ZEM_CALLBACK_ADAPTORS(e04st, arg, ARGS, Zem_E04ST_##Type##F, Zem_E04ST_##Type, take_inform(en_data, *inform))
E04ST_CALLBACK(objfun, Objfun, E04ST_OBJFUN_ARGS)
E04ST_CALLBACK(objgrd, Objgrd, E04ST_OBJGRD_ARGS)
E04ST_CALLBACK(confun, Confun, E04ST_CONFUN_ARGS)
E04ST_CALLBACK(congrd, Congrd, E04ST_CONGRD_ARGS)
E04ST_CALLBACK(hess, Hess, E04ST_HESS_ARGS)
E04ST_CALLBACK(monit, Monit, E04ST_MONIT_ARGS)

#define E04ST_ARGS(V, A, U)                                                                                  \
  A(void *const *, handle) U(zem_routine, objfun) U(e04st_objfun_adaptor, objfun_adaptor)                  \
  U(zem_routine, objgrd) U(e04st_objgrd_adaptor, objgrd_adaptor) U(zem_routine, confun)                     \
  U(e04st_confun_adaptor, confun_adaptor) U(zem_routine, congrd) U(e04st_congrd_adaptor, congrd_adaptor)    \
  U(zem_routine, hess) U(e04st_hess_adaptor, hess_adaptor) U(zem_routine, monit)                            \
  U(e04st_monit_adaptor, monit_adaptor) V(const int64_t *, nvar) A(double *, x) V(const int64_t *, nnzu)    \
  A(double *, u) A(double *, rinfo) A(double *, stats) A(int64_t *, iuser) A(double *, ruser)              \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04st, E04ST_ARGS)

namespace {

// The user's functions for the bridge: each call goes through its chain.
class chain_functions final : public zem::e04::nlp::user_functions {
 public:
  chain_functions(engine_data *en, int64_t nvar, zem_routine objfun, e04st_objfun_adaptor objfun_a, zem_routine objgrd,
                  e04st_objgrd_adaptor objgrd_a, zem_routine confun, e04st_confun_adaptor confun_a,
                  zem_routine congrd, e04st_congrd_adaptor congrd_a, zem_routine hess, e04st_hess_adaptor hess_a,
                  zem_routine monit, e04st_monit_adaptor monit_a, int64_t *iuser, double *ruser)
      : en_(en), nvar_(nvar), objfun_(objfun), objgrd_(objgrd), confun_(confun), congrd_(congrd), hess_(hess),
        monit_(monit), objfun_a_(objfun_a), objgrd_a_(objgrd_a), confun_a_(confun_a), congrd_a_(congrd_a),
        hess_a_(hess_a), monit_a_(monit_a), iuser_(iuser), ruser_(ruser) {
    has_objfun = objfun != nullptr;
    has_objgrd = objgrd != nullptr;
    has_confun = confun != nullptr;
    has_congrd = congrd != nullptr;
    has_hess = hess != nullptr;
    has_monit = monit != nullptr;
  }
  int64_t objfun(const double *x, double *fx, int64_t *inform) override {
    return e04stf_print_objfunh_(objfun_a_, en_, objfun_, &nvar_, x, fx, inform, iuser_, ruser_);
  }
  int64_t objgrd(const double *x, int64_t nnzfd, double *fdx, int64_t *inform) override {
    return e04stf_print_objgrdh_(objgrd_a_, en_, objgrd_, &nvar_, x, &nnzfd, fdx, inform, iuser_, ruser_);
  }
  int64_t confun(const double *x, int64_t ncnln, double *gx, int64_t *inform) override {
    return e04stf_print_confunh_(confun_a_, en_, confun_, &nvar_, x, &ncnln, gx, inform, iuser_, ruser_);
  }
  int64_t congrd(const double *x, int64_t nnzgd, double *gdx, int64_t *inform) override {
    return e04stf_print_congrdh_(congrd_a_, en_, congrd_, &nvar_, x, &nnzgd, gdx, inform, iuser_, ruser_);
  }
  int64_t hess(const double *x, int64_t ncnln, int64_t idf, double sigma, const double *lambda, int64_t nnzh,
               double *hx, int64_t *inform) override {
    return e04stf_print_hessh_(hess_a_, en_, hess_, &nvar_, x, &ncnln, &idf, &sigma, lambda, &nnzh, hx, inform,
                               iuser_, ruser_);
  }
  int64_t monit(const double *x, int64_t *inform, const double *rinfo, const double *stats) override {
    return e04stf_print_monith_(monit_a_, en_, monit_, &nvar_, x, inform, rinfo, stats, iuser_, ruser_);
  }

 private:
  engine_data *en_;
  int64_t nvar_;
  zem_routine objfun_, objgrd_, confun_, congrd_, hess_, monit_;
  e04st_objfun_adaptor objfun_a_;
  e04st_objgrd_adaptor objgrd_a_;
  e04st_confun_adaptor confun_a_;
  e04st_congrd_adaptor congrd_a_;
  e04st_hess_adaptor hess_a_;
  e04st_monit_adaptor monit_a_;
  int64_t *iuser_;
  double *ruser_;
};

}  // namespace

ZEM_INTERNAL void e04stfn_(engine_data *en_data, void *const *handle, zem_routine objfun,
                           e04st_objfun_adaptor objfun_adaptor, zem_routine objgrd, e04st_objgrd_adaptor objgrd_adaptor,
                           zem_routine confun, e04st_confun_adaptor confun_adaptor, zem_routine congrd,
                           e04st_congrd_adaptor congrd_adaptor, zem_routine hess, e04st_hess_adaptor hess_adaptor,
                           zem_routine monit, e04st_monit_adaptor monit_adaptor, const int64_t *nvar, double *x,
                           const int64_t *nnzu, double *u, double *rinfo, double *stats, int64_t *iuser, double *ruser,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  problem *p = open_problem(*handle, errbuf, ifail);
  if (!p || !check_not_solving(*p, errbuf, ifail)) return;
  chain_functions f(en_data, *nvar, objfun, objfun_adaptor, objgrd, objgrd_adaptor, confun, confun_adaptor, congrd,
                    congrd_adaptor, hess, hess_adaptor, monit, monit_adaptor, iuser, ruser);
  switch (nlp::check_model(*p, f)) {
    case nlp::model_check::ok: break;
    case nlp::model_check::unsupported: return zem::fail(errbuf, ifail, 3, 1011);
    case nlp::model_check::needs_objective: return zem::fail(errbuf, ifail, 3, 1012);
    case nlp::model_check::needs_constraints: return zem::fail(errbuf, ifail, 3, 1013);
    case nlp::model_check::needs_hessian: return zem::fail(errbuf, ifail, 3, 1014);
    case nlp::model_check::too_large: return zem::fail(errbuf, ifail, 3, 1015);
  }
  if (*nvar != p->s.nvar) return zem::fail(errbuf, ifail, 4, 1016, *nvar, p->s.nvar);
  const int64_t nu = nlp::multiplier_count(*p);
  if (*nnzu != 0 && *nnzu != nu) return zem::fail(errbuf, ifail, 5, 1017, *nnzu, nu);
  const option_set &o = *options(*p);
  const double relax = real_value(o, opt::bound_relax_factor), feas = real_value(o, opt::stop_tolerance_feasibility);
  if (!(relax <= feas)) return zem::fail(errbuf, ifail, 6, 1018, relax, feas);

  const solving_scope solving(*p);
  if (!solving.entered()) return zem::fail(errbuf, ifail, 2, 1006);
  const nlp::result r = nlp::solve(*p, *en_data, f, x, *nnzu == 0 ? nullptr : u, rinfo, stats);
  switch (r.out) {
    case nlp::outcome::success: return;
    case nlp::outcome::acceptable: return zem::fail(errbuf, ifail, 50, 1028, real_value(o, opt::stop_tolerance_1));
    case nlp::outcome::small_step: return zem::fail(errbuf, ifail, 50, 1029);
    case nlp::outcome::iteration_limit:
      return zem::fail(errbuf, ifail, 10, 1021, int_value(o, opt::outer_iteration_limit));
    case nlp::outcome::time_limit: return zem::fail(errbuf, ifail, 11, 1022, real_value(o, opt::time_limit));
    case nlp::outcome::user_stop: return zem::user_stop(errbuf, ifail, r.stop_flag);
    case nlp::outcome::infeasible: return zem::fail(errbuf, ifail, 20, 1023);
    case nlp::outcome::unbounded: return zem::fail(errbuf, ifail, 21, 1024);
    case nlp::outcome::numerical: return zem::fail(errbuf, ifail, 22, 1025);
    case nlp::outcome::invalid_number: return zem::fail(errbuf, ifail, 23, 1027);
    case nlp::outcome::derivative_errors: return zem::fail(errbuf, ifail, 7, 1030, r.wrong_derivatives);
    case nlp::outcome::memory: return zem::alloc_fail(ifail);
    case nlp::outcome::internal: return zem::fail(errbuf, ifail, 22, 1026);
  }
}

ZEM_API void e04stf_(void *const *handle, Zem_E04ST_ObjfunF objfun, Zem_E04ST_ObjgrdF objgrd,
                     Zem_E04ST_ConfunF confun, Zem_E04ST_CongrdF congrd, Zem_E04ST_HessF hess,
                     Zem_E04ST_MonitF monit, const int64_t *nvar, double x[], const int64_t *nnzu, double u[],
                     double rinfo[], double stats[], int64_t iuser[], double ruser[], int64_t *ifail) {
  zem::f_entry call("e04stf", e04st_messages);
  e04stft_(&call.en_data, handle, reinterpret_cast<zem_routine>(objfun), e04stf_objfunh_,
           reinterpret_cast<zem_routine>(objgrd), e04stf_objgrdh_, reinterpret_cast<zem_routine>(confun),
           e04stf_confunh_, reinterpret_cast<zem_routine>(congrd), e04stf_congrdh_,
           reinterpret_cast<zem_routine>(hess), e04stf_hessh_, reinterpret_cast<zem_routine>(monit), e04stf_monith_,
           nvar, x, nnzu, u, rinfo, stats, iuser, ruser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04stc(void *handle, Zem_E04ST_Objfun objfun, Zem_E04ST_Objgrd objgrd, Zem_E04ST_Confun confun,
                    Zem_E04ST_Congrd congrd, Zem_E04ST_Hess hess, Zem_E04ST_Monit monit, int64_t nvar, double x[],
                    int64_t nnzu, double u[], double rinfo[], double stats[], Zem_Comm *comm, Zem_Fail *fail) {
  zem::c_entry call("e04stc", e04st_messages, fail);
  if (nvar > 0 && !x) return call.bad_param("x");
  if (nnzu > 0 && !u) return call.bad_param("u");
  if (!rinfo) return call.bad_param("rinfo");
  if (!stats) return call.bad_param("stats");
  e04stft_(&call.en_data, &handle, reinterpret_cast<zem_routine>(objfun), e04stc_objfun_helper,
           reinterpret_cast<zem_routine>(objgrd), e04stc_objgrd_helper, reinterpret_cast<zem_routine>(confun),
           e04stc_confun_helper, reinterpret_cast<zem_routine>(congrd), e04stc_congrd_helper,
           reinterpret_cast<zem_routine>(hess), e04stc_hess_helper, reinterpret_cast<zem_routine>(monit),
           e04stc_monit_helper, &nvar, x, &nnzu, u, rinfo, stats, call.comm_slot(comm), call.ruser(), call.errbuf,
           &call.status);
  call.finish();
}
