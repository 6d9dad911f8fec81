// d01aj: the integral of f over a finite interval [a, b], as d01rj (the same
// engine: 21-point Gauss-Kronrod rule, epsilon-algorithm extrapolation),
// with a scalar integrand and caller workspace instead of rinfo/iinfo.
//
// w (lw elements) holds the four lists and iw (liw elements) the count and
// the ordering list, exactly as rinfo and iinfo of d01rj for
// maxsub = min(lw/4, liw) subintervals.  Each rule application calls f once
// per abscissa, 21 times, through the callback chain.
#include <algorithm>

#include "d01/quad_driver.h"
#include "d01/quad_engine.h"
#include "d01/quad_rule.h"

inline constexpr zem::message d01aj_messages[] = {
    {6, zem::quad::detail_lw, NE_INT, {"On entry, lw = %s.", "Constraint: lw >= 4."}},
    {6, zem::quad::detail_liw, NE_INT, {"On entry, liw = %s.", "Constraint: liw >= 1."}},
    {1, zem::quad::detail_limit, NE_QUAD_MAX_SUBDIV,
     {"The maximum number of subdivisions, min(lw/4, liw), has been reached:", "lw = %s and liw = %s."}},
    {2, zem::quad::detail_roundoff, NE_QUAD_ROUNDOFF_TOL,
     {"Round-off error prevents the requested tolerance from being achieved:", "epsabs = %s and epsrel = %s."}},
    {3, zem::quad::detail_bad, NE_QUAD_BAD_SUBDIV,
     {"Extremely bad integrand behaviour occurs around the sub-interval", "(%s,%s)."}},
    {4, zem::quad::detail_extrapolation, NE_QUAD_ROUNDOFF_EXTRAPL,
     {"Round-off error is detected in the extrapolation table."}},
    {5, zem::quad::detail_divergence, NE_QUAD_NO_CONV, {"The integral is probably divergent or slowly convergent."}},
};
ZEM_REGISTER_MESSAGES(d01aj)

// One evaluation of the scalar f.
#define D01AJ_F_ARGS(V, A, U) V(const double *, x) V(double *, retval) A(int64_t *, iuser) A(double *, ruser)
ZEM_CALLBACK_CHAIN(d01aj, f, D01AJ_F_ARGS)

ZEM_INTERNAL void d01ajf_fh_(engine_data *, zem_routine f, const double *x, double *retval, int64_t *iuser,
                             double *ruser) {
  *retval = reinterpret_cast<Zem_D01AJ_FFun>(f)(x, iuser, ruser);
}
ZEM_INTERNAL void d01ajc_f_helper(engine_data *en_data, zem_routine f, const double *x, double *retval,
                                  int64_t *iuser, double *) {
  Zem_Comm *comm = zem::comm_from(iuser);
  const zem::comm_watch watch(comm);
  *retval = reinterpret_cast<Zem_D01AJ_Fun>(f)(*x, comm);
  watch.take(en_data);
}

#define D01AJ_ARGS(V, A, U)                                                                                  \
  U(zem_routine, f) U(zem_routine, internal) U(d01aj_f_adaptor, adaptor) V(const double *, a)             \
  V(const double *, b) V(const double *, epsabs) V(const double *, epsrel) V(double *, result)              \
  V(double *, abserr) A(double *, w) V(const int64_t *, lw) A(int64_t *, iw) V(const int64_t *, liw)        \
  A(int64_t *, iuser) A(double *, ruser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d01aj, D01AJ_ARGS)

ZEM_INTERNAL void d01ajfn_(engine_data *en_data, zem_routine f, zem_routine, d01aj_f_adaptor adaptor,
                           const double *a, const double *b, const double *epsabs, const double *epsrel,
                           double *result, double *abserr, double *w, const int64_t *lw, int64_t *iw,
                           const int64_t *liw, int64_t *iuser, double *ruser, char *errbuf, int64_t *ifail) {
  namespace q = zem::quad;
  *ifail = 0;
  if (*lw < 4) return zem::fail(errbuf, ifail, 6, q::detail_lw, *lw);
  if (*liw < 1) return zem::fail(errbuf, ifail, 6, q::detail_liw, *liw);

  const int64_t limit = std::min(*lw / 4, *liw);
  q::int_work work;
  int64_t *iord = work.get(limit);
  if (!iord) return zem::alloc_fail(ifail);

  // The engine asks for all points of a rule at once; the scalar f is
  // called for each in turn, and a stop request ends the batch.
  auto batch = [&](const double *x, int64_t n, double *fv) -> int64_t {
    for (int64_t i = 0; i < n; ++i)
      if (int64_t s = d01ajf_print_fh_(adaptor, en_data, f, x + i, fv + i, iuser, ruser)) return s;
    return 0;
  };
  q::integrand_ref integrand(batch);
  q::gk_rule rule(q::gk21.block(), integrand, q::active_kernels(), q::zem_policy);
  const q::quad_lists lists{w, w + limit, w + 2 * limit, w + 3 * limit, iord, limit};
  q::quad_outcome o =
      q::adaptive_extrapolated(rule, rule.points(), *a, *b, *epsabs, *epsrel, lists, q::zem_policy);

  q::settle_nonfinite(o, *a, *b);
  *result = o.result;
  *abserr = o.abserr;
  q::pack_lists(w, limit, o.last);
  q::fill_iinfo(iw, limit, o.last, iord);
  if (o.stop == 0 && o.code == 1) return zem::fail(errbuf, ifail, 1, q::detail_limit, *lw, *liw);
  q::report_outcome(o, false, errbuf, ifail, *epsabs, *epsrel, limit);
}

ZEM_API void d01ajf_(Zem_D01AJ_FFun f, const double *a, const double *b, const double *epsabs,
                     const double *epsrel, double *result, double *abserr, double w[], const int64_t *lw,
                     int64_t iw[], const int64_t *liw, int64_t iuser[], double ruser[], int64_t *ifail) {
  zem::f_entry call("d01ajf", d01aj_messages);
  d01ajft_(&call.en_data, reinterpret_cast<zem_routine>(f), y90jdsn_, d01ajf_fh_, a, b, epsabs, epsrel, result,
           abserr, w, lw, iw, liw, iuser, ruser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d01ajc(Zem_D01AJ_Fun f, double a, double b, double epsabs, double epsrel, double *result,
                    double *abserr, double w[], int64_t lw, int64_t iw[], int64_t liw, Zem_Comm *comm,
                    Zem_Fail *fail) {
  zem::c_entry call("d01ajc", d01aj_messages, fail);
  if (!f) return call.bad_param("f");
  if (!result) return call.bad_param("result");
  if (!abserr) return call.bad_param("abserr");
  if (!w) return call.bad_param("w");
  if (!iw) return call.bad_param("iw");
  d01ajft_(&call.en_data, reinterpret_cast<zem_routine>(f), nullptr, d01ajc_f_helper, &a, &b, &epsabs, &epsrel,
           result, abserr, w, &lw, iw, &liw, call.comm_slot(comm), call.ruser(), call.errbuf, &call.status);
  call.finish();
}
