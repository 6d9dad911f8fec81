// d01rl: the integral of f over a finite interval [a, b] with break points:
// as d01rj (21-point Gauss-Kronrod rule, epsilon-algorithm extrapolation),
// but the lists start from the partition of [min(a,b), max(a,b)] at the
// caller's npts points, and an interval counts as large for the
// extrapolation by its bisection level rather than its length: every
// initial interval starts at level 0, whatever its length.
//
// The lists keep the increasing orientation (a_i < b_i, r_i the integral
// over [a_i, b_i]); for b < a only result changes sign.  rinfo and iinfo are
// packed as in d01rj.  maxsub >= npts + 1, so that the partition fits.
#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "d01/quad_driver.h"
#include "d01/quad_engine.h"
#include "d01/quad_rule.h"

inline constexpr zem::message d01rl_messages[] = {
    {7, zem::quad::detail_selector, NE_INT, {"On entry, npts = %s.", "Constraint: npts >= 0."}},
    {8, zem::quad::detail_breakpoints, NE_QUAD_BRKPTS_INVAL,
     {"On entry, break-points are specified outside (a,b):", "a = %s and b = %s."}},
    {6, zem::quad::detail_maxsub, NE_INT, {"On entry, maxsub = %s.", "Constraint: maxsub >= 1."}},
    {6, zem::quad::detail_maxsub_npts, NE_INT_2,
     {"On entry, maxsub = %s", "and npts = %s.", "Constraint: maxsub >= npts + 1."}},
    ZEM_D01_RUN_MESSAGES,
};
ZEM_REGISTER_MESSAGES(d01rl)

ZEM_D01_VEC_CALLBACK(d01rl)

#define D01RL_ARGS(V, A, U)                                                                                 \
  U(zem_routine, f) U(zem_routine, internal) U(d01rl_f_adaptor, adaptor) V(const double *, a)            \
  V(const double *, b) V(const int64_t *, npts) A(const double *, points) V(const double *, epsabs)         \
  V(const double *, epsrel) V(const int64_t *, maxsub) V(double *, result) V(double *, abserr)             \
  A(double *, rinfo) A(int64_t *, iinfo) A(int64_t *, iuser) A(double *, ruser) A(void **, cpuser)          \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d01rl, D01RL_ARGS)

ZEM_INTERNAL void d01rlfn_(engine_data *en_data, zem_routine f, zem_routine, d01rl_f_adaptor adaptor,
                           const double *a, const double *b, const int64_t *npts, const double *points,
                           const double *epsabs, const double *epsrel, const int64_t *maxsub, double *result,
                           double *abserr, double *rinfo, int64_t *iinfo, int64_t *iuser, double *ruser,
                           void **cpuser, char *errbuf, int64_t *ifail) {
  namespace q = zem::quad;
  *ifail = 0;
  if (*npts < 0) return zem::fail(errbuf, ifail, 7, q::detail_selector, *npts);
  // (Written so that a NaN limit is kept, never dropped by a min or max: it
  //  then fails the break-point test, or makes the result a failure.)
  const double lo = *a <= *b ? *a : *b, hi = *a <= *b ? *b : *a;
  for (int64_t i = 0; i < *npts; ++i)
    if (!(points[i] >= lo && points[i] <= hi)) return zem::fail(errbuf, ifail, 8, q::detail_breakpoints, *a, *b);
  if (*maxsub < 1) return zem::fail(errbuf, ifail, 6, q::detail_maxsub, *maxsub);
  if (*maxsub - 1 < *npts) return zem::fail(errbuf, ifail, 6, q::detail_maxsub_npts, *maxsub, *npts);

  // Work: the ordering list and the levels (limit each), the flags of the
  // initial intervals (nint) and the partition (nint + 1 reals).
  // (maxsub >= npts + 1 >= 1, so 3 maxsub bounds the integer work; it is
  //  checked against the largest allocatable count before it is formed.)
  const int64_t limit = *maxsub, nint = *npts + 1;
  if (limit > q::max_count<int64_t>() / 3) return zem::alloc_fail(ifail);
  q::int_work iwork;
  int64_t *iord = iwork.get(2 * limit + nint);
  std::unique_ptr<double[]> pts(new (std::nothrow) double[nint + 1]);
  if (!iord || !pts) return zem::alloc_fail(ifail);
  int64_t *level = iord + limit, *ndin = level + limit;
  pts[0] = lo;
  std::copy(points, points + *npts, pts.get() + 1);
  std::sort(pts.get() + 1, pts.get() + nint);
  pts[nint] = hi;
  const double sign = *a > *b ? -1.0 : 1.0;

  ZEM_D01_VEC_INTEGRAND(d01rl, integrand);
  q::gk_rule rule(q::gk21.block(), integrand, q::active_kernels(), q::zem_policy);
  const q::quad_lists lists{rinfo, rinfo + limit, rinfo + 2 * limit, rinfo + 3 * limit, iord, limit};
  q::quad_outcome o = q::adaptive_breakpoints(rule, rule.points(), pts.get(), nint, sign, *epsabs,
                                                    *epsrel, lists, level, ndin, q::zem_policy);

  q::settle_nonfinite(o, *a, *b);
  *result = o.result;
  *abserr = o.abserr;
  q::pack_lists(rinfo, limit, o.last);
  q::fill_iinfo(iinfo, limit, o.last, iord);
  q::report_outcome(o, integrand_iflag_stop, errbuf, ifail, *epsabs, *epsrel, limit);
}

ZEM_API void d01rlf_(Zem_D01_FVecFun f, const double *a, const double *b, const int64_t *npts,
                     const double points[], const double *epsabs, const double *epsrel, const int64_t *maxsub,
                     double *result, double *abserr, double rinfo[], int64_t iinfo[], int64_t iuser[],
                     double ruser[], void **cpuser, int64_t *ifail) {
  zem::f_entry call("d01rlf", d01rl_messages);
  d01rlft_(&call.en_data, reinterpret_cast<zem_routine>(f), y90jdsn_, d01rlf_fh_, a, b, npts, points, epsabs,
           epsrel, maxsub, result, abserr, rinfo, iinfo, iuser, ruser, cpuser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d01rlc(Zem_D01_VecFun f, double a, double b, int64_t npts, const double points[], double epsabs,
                    double epsrel, int64_t maxsub, double *result, double *abserr, double rinfo[],
                    int64_t iinfo[], Zem_Comm *comm, Zem_Fail *fail) {
  zem::c_entry call("d01rlc", d01rl_messages, fail);
  if (!f) return call.bad_param("f");
  if (!points && npts > 0) return call.bad_param("points");
  if (!result) return call.bad_param("result");
  if (!abserr) return call.bad_param("abserr");
  if (!rinfo) return call.bad_param("rinfo");
  if (!iinfo) return call.bad_param("iinfo");
  void *cpuser = nullptr;
  d01rlft_(&call.en_data, reinterpret_cast<zem_routine>(f), nullptr, d01rlc_f_helper, &a, &b, &npts, points,
           &epsabs, &epsrel, &maxsub, result, abserr, rinfo, iinfo, call.comm_slot(comm), call.ruser(), &cpuser,
           call.errbuf, &call.status);
  call.finish();
}
