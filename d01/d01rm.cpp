// d01rm: the integral of f over an infinite range, by the substitution
//     x = bound + (1 - t) / t          (inf = 1:  (bound, +inf))
//     x = bound - (1 - t) / t          (inf = -1: (-inf, bound))
//     x = +-(1 - t) / t, both signs    (inf = 2:  (-inf, +inf))
// which maps t in (0, 1] onto the range with dx = dt / t^2, so that
//     integral f(x) dx = integral_0^1 g(t) dt,  g(t) = f(x(t)) / t / t
// (for inf = 2, g(t) = (f(x) + f(-x)) / t / t).  The adaptive scheme of d01rj
// then integrates g over (0, 1], with the 15-point Gauss-Kronrod rule on
// each subinterval: its nodes never touch t = 0, where g is evaluated only in
// the limit.  This is the classic choice for infinite ranges: the mapping
// turns an algebraic decay |f| ~ |x|^-p into g ~ t^(p-2) near 0, an
// end-point singularity the extrapolation handles well.
//
// The lists in rinfo describe subintervals of (0, 1].  The integrand is
// called once per rule application with 15 abscissae (30 for inf = 2: the 15
// points x(t) followed by their negatives).
#include <cmath>

#include "d01/quad_driver.h"
#include "d01/quad_engine.h"
#include "d01/quad_inf_rule.h"

inline constexpr zem::message d01rm_messages[] = {
    {7, zem::quad::detail_selector, NE_BAD_PARAM, {"On entry, inf = %s.", "Constraint: inf = -1, 1 or 2."}},
    {6, zem::quad::detail_maxsub, NE_INT, {"On entry, maxsub = %s.", "Constraint: maxsub >= 1."}},
    {9, zem::quad::detail_bound, NE_REAL, {"On entry, bound = %s.", "Constraint: abs(bound) <= 2^52 (4.5e15)."}},
    ZEM_D01_RUN_MESSAGES,
};
ZEM_REGISTER_MESSAGES(d01rm)

inline constexpr double max_bound = 0x1p52;


ZEM_D01_VEC_CALLBACK(d01rm)

#define D01RM_ARGS(V, A, U)                                                                                 \
  U(zem_routine, f) U(zem_routine, internal) U(d01rm_f_adaptor, adaptor) V(const double *, bound)        \
  V(const int64_t *, inf) V(const double *, epsabs) V(const double *, epsrel) V(const int64_t *, maxsub)   \
  V(double *, result) V(double *, abserr) A(double *, rinfo) A(int64_t *, iinfo) A(int64_t *, iuser)       \
  A(double *, ruser) A(void **, cpuser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d01rm, D01RM_ARGS)

ZEM_INTERNAL void d01rmfn_(engine_data *en_data, zem_routine f, zem_routine, d01rm_f_adaptor adaptor,
                           const double *bound, const int64_t *inf, const double *epsabs, const double *epsrel,
                           const int64_t *maxsub, double *result, double *abserr, double *rinfo, int64_t *iinfo,
                           int64_t *iuser, double *ruser, void **cpuser, char *errbuf, int64_t *ifail) {
  namespace q = zem::quad;
  *ifail = 0;
  if (*inf != 1 && *inf != -1 && *inf != 2) return zem::fail(errbuf, ifail, 7, q::detail_selector, *inf);
  // A half line needs a bound at which the substitution still resolves
  // steps: beyond 2^52 in magnitude the abscissae bound + (1 - t)/t of a
  // whole half of (0, 1] round to the bound itself (and f would be sampled
  // at one point only); a bound that is not a number has no half line.
  if (*inf != 2 && !(std::fabs(*bound) <= max_bound)) return zem::fail(errbuf, ifail, 9, q::detail_bound, *bound);
  if (*maxsub < 1) return zem::fail(errbuf, ifail, 6, q::detail_maxsub, *maxsub);

  const int64_t limit = *maxsub;
  q::int_work work;
  int64_t *iord = work.get(limit);
  if (!iord) return zem::alloc_fail(ifail);

  ZEM_D01_VEC_INTEGRAND(d01rm, integrand);
  q::infinite_range_rule rule(*bound, *inf, integrand, q::active_kernels(), q::zem_policy);
  const q::quad_lists lists{rinfo, rinfo + limit, rinfo + 2 * limit, rinfo + 3 * limit, iord, limit};
  q::quad_outcome o =
      q::adaptive_extrapolated(rule, rule.points(), 0.0, 1.0, *epsabs, *epsrel, lists, q::zem_policy);

  q::settle_nonfinite(o, 0.0, 1.0);
  *result = o.result;
  *abserr = o.abserr;
  q::pack_lists(rinfo, limit, o.last);
  q::fill_iinfo(iinfo, limit, o.last, iord);
  q::report_outcome(o, integrand_iflag_stop, errbuf, ifail, *epsabs, *epsrel, limit);
}

ZEM_API void d01rmf_(Zem_D01_FVecFun f, const double *bound, const int64_t *inf, const double *epsabs,
                     const double *epsrel, const int64_t *maxsub, double *result, double *abserr, double rinfo[],
                     int64_t iinfo[], int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail) {
  zem::f_entry call("d01rmf", d01rm_messages);
  d01rmft_(&call.en_data, reinterpret_cast<zem_routine>(f), y90jdsn_, d01rmf_fh_, bound, inf, epsabs, epsrel,
           maxsub, result, abserr, rinfo, iinfo, iuser, ruser, cpuser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d01rmc(Zem_D01_VecFun f, double bound, int64_t inf, double epsabs, double epsrel, int64_t maxsub,
                    double *result, double *abserr, double rinfo[], int64_t iinfo[], Zem_Comm *comm,
                    Zem_Fail *fail) {
  zem::c_entry call("d01rmc", d01rm_messages, fail);
  if (!f) return call.bad_param("f");
  if (!result) return call.bad_param("result");
  if (!abserr) return call.bad_param("abserr");
  if (!rinfo) return call.bad_param("rinfo");
  if (!iinfo) return call.bad_param("iinfo");
  void *cpuser = nullptr;
  d01rmft_(&call.en_data, reinterpret_cast<zem_routine>(f), nullptr, d01rmc_f_helper, &bound, &inf, &epsabs,
           &epsrel, &maxsub, result, abserr, rinfo, iinfo, call.comm_slot(comm), call.ruser(), &cpuser,
           call.errbuf, &call.status);
  call.finish();
}
