// d01rj: the integral of f over a finite interval [a, b], by globally
// adaptive bisection with the 21-point Gauss-Kronrod rule and extrapolation
// of the partial sums by Wynn's epsilon algorithm.
//
// The worker checks maxsub, runs the extrapolating engine (quad_engine.cpp,
// which follows the step list of the reference page docs/d01rj.md) on the
// caller's rinfo as list storage, and packs the lists: rinfo holds
// a_1..a_n, b_1..b_n, e_1..e_n, r_1..r_n and iinfo the count n followed by
// the ordering list.  The integrand is called once per rule application with
// all 21 abscissae; 42 n - 21 values in all.
#include "d01/quad_driver.h"
#include "d01/quad_engine.h"
#include "d01/quad_rule.h"

inline constexpr zem::message d01rj_messages[] = {
    {6, zem::quad::detail_maxsub, NE_INT, {"On entry, maxsub = %s.", "Constraint: maxsub >= 1."}},
    ZEM_D01_RUN_MESSAGES,
};
ZEM_REGISTER_MESSAGES(d01rj)

ZEM_D01_VEC_CALLBACK(d01rj)

#define D01RJ_ARGS(V, A, U)                                                                                 \
  U(zem_routine, f) U(zem_routine, internal) U(d01rj_f_adaptor, adaptor) V(const double *, a)            \
  V(const double *, b) V(const double *, epsabs) V(const double *, epsrel) V(const int64_t *, maxsub)       \
  V(double *, result) V(double *, abserr) A(double *, rinfo) A(int64_t *, iinfo) A(int64_t *, iuser)       \
  A(double *, ruser) A(void **, cpuser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d01rj, D01RJ_ARGS)

// Inlined into both entries (the symbol stays): it only sets up and calls the engine.
ZEM_LAYER_INLINE void d01rjfn_(engine_data *en_data, zem_routine f, zem_routine, d01rj_f_adaptor adaptor,
                           const double *a, const double *b, const double *epsabs, const double *epsrel,
                           const int64_t *maxsub, double *result, double *abserr, double *rinfo, int64_t *iinfo,
                           int64_t *iuser, double *ruser, void **cpuser, char *errbuf, int64_t *ifail) {
  namespace q = zem::quad;
  *ifail = 0;
  if (*maxsub < 1) return zem::fail(errbuf, ifail, 6, q::detail_maxsub, *maxsub);

  const int64_t limit = *maxsub;
  q::int_work work;
  int64_t *iord = work.get(limit);
  if (!iord) return zem::alloc_fail(ifail);

  // The rule holds the integrand itself and the engine's first step is in
  // line: an integral settled by one rule application makes no indirect
  // call but the kernel's and the user's.
  ZEM_D01_VEC_INTEGRAND_FN(d01rj, integrand);
  q::gk_rule rule(q::gk21.block(), integrand_fn, q::active_kernels(), q::zem_policy);
  const q::quad_lists lists{rinfo, rinfo + limit, rinfo + 2 * limit, rinfo + 3 * limit, iord, limit};
  q::quad_outcome o =
      q::adaptive_extrapolated_direct(rule, rule.points(), *a, *b, *epsabs, *epsrel, lists, q::zem_policy);

  q::settle_nonfinite(o, *a, *b);
  *result = o.result;
  *abserr = o.abserr;
  q::pack_lists(rinfo, limit, o.last);
  q::fill_iinfo(iinfo, limit, o.last, iord);
  q::report_outcome(o, integrand_iflag_stop, errbuf, ifail, *epsabs, *epsrel, limit);
}

ZEM_API void d01rjf_(Zem_D01_FVecFun f, const double *a, const double *b, const double *epsabs,
                     const double *epsrel, const int64_t *maxsub, double *result, double *abserr, double rinfo[],
                     int64_t iinfo[], int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail) {
  zem::f_entry call("d01rjf", d01rj_messages);
  d01rjft_(&call.en_data, reinterpret_cast<zem_routine>(f), y90jdsn_, d01rjf_fh_, a, b, epsabs, epsrel, maxsub,
           result, abserr, rinfo, iinfo, iuser, ruser, cpuser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d01rjc(Zem_D01_VecFun f, double a, double b, double epsabs, double epsrel, int64_t maxsub,
                    double *result, double *abserr, double rinfo[], int64_t iinfo[], Zem_Comm *comm,
                    Zem_Fail *fail) {
  zem::c_entry call("d01rjc", d01rj_messages, fail);
  if (!f) return call.bad_param("f");
  if (!result) return call.bad_param("result");
  if (!abserr) return call.bad_param("abserr");
  if (!rinfo) return call.bad_param("rinfo");
  if (!iinfo) return call.bad_param("iinfo");
  void *cpuser = nullptr;
  d01rjft_(&call.en_data, reinterpret_cast<zem_routine>(f), nullptr, d01rjc_f_helper, &a, &b, &epsabs, &epsrel,
           &maxsub, result, abserr, rinfo, iinfo, call.comm_slot(comm), call.ruser(), &cpuser, call.errbuf,
           &call.status);
  call.finish();
}
