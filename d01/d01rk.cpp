// d01rk: the integral of f over a finite interval [a, b], by globally
// adaptive bisection with a Gauss-Kronrod pair chosen by key and no
// extrapolation: the strategy for smooth integrands, where the higher rules
// converge fastest.  key = 1..6: 7-15, 10-21, 15-31, 20-41, 25-51, 30-61
// points.  The lists are packed into rinfo and iinfo as in d01rj; the
// integrand is called once per rule application with all 2n+1 abscissae
// (2 n_rule - 1 calls in all for n_rule subintervals).
#include "d01/quad_driver.h"
#include "d01/quad_engine.h"
#include "d01/quad_rule.h"

inline constexpr zem::message d01rk_messages[] = {
    {6, zem::quad::detail_maxsub, NE_INT, {"On entry, maxsub = %s.", "Constraint: maxsub >= 1."}},
    {7, zem::quad::detail_selector, NE_BAD_PARAM, {"On entry, key = %s.", "Constraint: key = 1, 2, 3, 4, 5 or 6."}},
    ZEM_D01_RUN_MESSAGES,
};
ZEM_REGISTER_MESSAGES(d01rk)

ZEM_D01_VEC_CALLBACK(d01rk)

#define D01RK_ARGS(V, A, U)                                                                                 \
  U(zem_routine, f) U(zem_routine, internal) U(d01rk_f_adaptor, adaptor) V(const double *, a)            \
  V(const double *, b) V(const double *, epsabs) V(const double *, epsrel) V(const int64_t *, key)          \
  V(const int64_t *, maxsub) V(double *, result) V(double *, abserr) A(double *, rinfo) A(int64_t *, iinfo) \
  A(int64_t *, iuser) A(double *, ruser) A(void **, cpuser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d01rk, D01RK_ARGS)

ZEM_INTERNAL void d01rkfn_(engine_data *en_data, zem_routine f, zem_routine, d01rk_f_adaptor adaptor,
                           const double *a, const double *b, const double *epsabs, const double *epsrel,
                           const int64_t *key, const int64_t *maxsub, double *result, double *abserr,
                           double *rinfo, int64_t *iinfo, int64_t *iuser, double *ruser, void **cpuser,
                           char *errbuf, int64_t *ifail) {
  namespace q = zem::quad;
  *ifail = 0;
  if (*key < 1 || *key > 6) return zem::fail(errbuf, ifail, 7, q::detail_selector, *key);
  if (*maxsub < 1) return zem::fail(errbuf, ifail, 6, q::detail_maxsub, *maxsub);

  static constexpr q::pair_block pairs[6] = {q::gk15.block(), q::gk21.block(), q::gk31.block(),
                                             q::gk41.block(), q::gk51.block(), q::gk61.block()};
  const int64_t limit = *maxsub;
  q::int_work work;
  int64_t *iord = work.get(limit);
  if (!iord) return zem::alloc_fail(ifail);

  ZEM_D01_VEC_INTEGRAND(d01rk, integrand);
  q::gk_rule rule(pairs[*key - 1], integrand, q::active_kernels(), q::zem_policy);
  const q::quad_lists lists{rinfo, rinfo + limit, rinfo + 2 * limit, rinfo + 3 * limit, iord, limit};
  q::quad_outcome o = q::adaptive_plain(rule, rule.points(), *a, *b, *epsabs, *epsrel, lists, q::zem_policy);

  q::settle_nonfinite(o, *a, *b);
  *result = o.result;
  *abserr = o.abserr;
  q::pack_lists(rinfo, limit, o.last);
  q::fill_iinfo(iinfo, limit, o.last, iord);
  q::report_outcome(o, integrand_iflag_stop, errbuf, ifail, *epsabs, *epsrel, limit);
}

ZEM_API void d01rkf_(Zem_D01_FVecFun f, const double *a, const double *b, const double *epsabs,
                     const double *epsrel, const int64_t *key, const int64_t *maxsub, double *result,
                     double *abserr, double rinfo[], int64_t iinfo[], int64_t iuser[], double ruser[],
                     void **cpuser, int64_t *ifail) {
  zem::f_entry call("d01rkf", d01rk_messages);
  d01rkft_(&call.en_data, reinterpret_cast<zem_routine>(f), y90jdsn_, d01rkf_fh_, a, b, epsabs, epsrel, key,
           maxsub, result, abserr, rinfo, iinfo, iuser, ruser, cpuser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d01rkc(Zem_D01_VecFun f, double a, double b, double epsabs, double epsrel, int64_t key,
                    int64_t maxsub, double *result, double *abserr, double rinfo[], int64_t iinfo[],
                    Zem_Comm *comm, Zem_Fail *fail) {
  zem::c_entry call("d01rkc", d01rk_messages, fail);
  if (!f) return call.bad_param("f");
  if (!result) return call.bad_param("result");
  if (!abserr) return call.bad_param("abserr");
  if (!rinfo) return call.bad_param("rinfo");
  if (!iinfo) return call.bad_param("iinfo");
  void *cpuser = nullptr;
  d01rkft_(&call.en_data, reinterpret_cast<zem_routine>(f), nullptr, d01rkc_f_helper, &a, &b, &epsabs, &epsrel,
           &key, &maxsub, result, abserr, rinfo, iinfo, call.comm_slot(comm), call.ruser(), &cpuser, call.errbuf,
           &call.status);
  call.finish();
}
