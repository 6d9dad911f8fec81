// d01bd: the integral of f over [a, b] by Patterson's nested sequence of
// 21, 43 and 87 points (the Kronrod extension of the 10-point Gauss rule and
// its two optimal extensions), non-adaptive.  Each stage adds new abscissae
// only: one call of the integrand with 21, then 22, then 44 points.  The
// first stage whose error estimate meets max(epsabs, epsrel |result|) ends
// the computation (stage tolerances as in the classic non-adaptive scheme:
// the same bound at every stage, the estimate being the difference of two
// successive rules, scaled as in the adaptive rules).  If even the 87-point
// stage does not meet it, the 87-point result is returned with a warning.
#include <algorithm>
#include <cmath>

#include "d01/quad_driver.h"
#include "d01/quad_patterson.h"
#include "d01/quad_rule.h"

inline constexpr int64_t d01bd_detail_accuracy = 1013;

inline constexpr zem::message d01bd_messages[] = {
    {1, d01bd_detail_accuracy, NW_TOO_MUCH_ACC_REQUESTED,
     {"The requested accuracy could not be achieved with the 87-point rule:", "epsabs = %s and epsrel = %s.",
      "The error estimate is abserr = %s."}},
    {3, zem::quad::detail_bad, NE_QUAD_BAD_SUBDIV,
     {"Extremely bad integrand behaviour occurs around the sub-interval", "(%s,%s)."}},
    {-1, zem::quad::detail_iflag, NE_USER_STOP, {"Exit from f with iflag < 0."}},
};
ZEM_REGISTER_MESSAGES(d01bd)

namespace zem::quad {

patterson_outcome patterson_integrate(integrand_ref f, double a, double b, double epsabs, double epsrel,
                                      const rule_kernels &kern, const policy &P) {
  const patterson_layout &L = patterson;
  const pair_block b1_21 = L.b1.block(L.w21_1, L.w21_c, L.g10_1, 0.0);
  const pair_block b1_43 = L.b1.block(L.w43_1, L.w43_c, L.zero, 0.0);
  const pair_block b1_87 = L.b1.block(L.w87_1, L.w87_c, L.zero, 0.0);
  const pair_block b2_43 = L.b2.block(L.w43_2, 0.0, L.zero, 0.0);
  const pair_block b2_87 = L.b2.block(L.w87_2, 0.0, L.zero, 0.0);
  const pair_block b3_87 = L.b3.block(L.w87_3, 0.0, L.zero, 0.0);

  const double centre = 0.5 * (a + b), hlgth = 0.5 * (b - a);
  alignas(64) double x[block_buffer] = {};
  alignas(64) double fv1[block_buffer] = {}, fv2[block_buffer] = {}, fv3[block_buffer] = {};
  patterson_outcome out;
  auto meets = [&](const rule_estimate &r) { return r.abserr <= std::max(epsabs, epsrel * std::fabs(r.result)); };

  // Stage 1: Kronrod 21 against Gauss 10.
  kern.abscissae(b1_21, centre, hlgth, x);
  if ((out.stop = f(x, b1_21.points(), fv1))) return out;
  const kernel_sums s1 = kern.sums(b1_21, fv1);
  rule_estimate r = estimate_from_sums(s1.k, s1.g, s1.abs, s1.asc, hlgth, P);
  out = {r.result, r.abserr, 21, 1, meets(r), 0};
  if (out.met) return out;

  // Stage 2: 43 points against 21.
  kern.abscissae(b2_43, centre, hlgth, x);
  if ((out.stop = f(x, b2_43.points(), fv2))) return out;
  const double k43 = kern.sums(b1_43, fv1).k + kern.sums(b2_43, fv2).k;
  r = estimate_from_sums(k43, s1.k, s1.abs, s1.asc, hlgth, P);
  out = {r.result, r.abserr, 43, 2, meets(r), 0};
  if (out.met) return out;

  // Stage 3: 87 points against 43.
  kern.abscissae(b3_87, centre, hlgth, x);
  if ((out.stop = f(x, b3_87.points(), fv3))) return out;
  const double k87 = kern.sums(b1_87, fv1).k + kern.sums(b2_87, fv2).k + kern.sums(b3_87, fv3).k;
  r = estimate_from_sums(k87, k43, s1.abs, s1.asc, hlgth, P);
  out = {r.result, r.abserr, 87, 3, meets(r), 0};
  return out;
}

}  // namespace zem::quad

ZEM_D01_VEC_CALLBACK(d01bd)

#define D01BD_ARGS(V, A, U)                                                                                 \
  U(zem_routine, f) U(zem_routine, internal) U(d01bd_f_adaptor, adaptor) V(const double *, a)            \
  V(const double *, b) V(const double *, epsabs) V(const double *, epsrel) V(double *, result)              \
  V(double *, abserr) A(int64_t *, iuser) A(double *, ruser) A(void **, cpuser) V(char *, errbuf)           \
  V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(d01bd, D01BD_ARGS)

ZEM_INTERNAL void d01bdfn_(engine_data *en_data, zem_routine f, zem_routine, d01bd_f_adaptor adaptor,
                           const double *a, const double *b, const double *epsabs, const double *epsrel,
                           double *result, double *abserr, int64_t *iuser, double *ruser, void **cpuser,
                           char *errbuf, int64_t *ifail) {
  namespace q = zem::quad;
  *ifail = 0;
  ZEM_D01_VEC_INTEGRAND(d01bd, integrand);
  const q::patterson_outcome o =
      q::patterson_integrate(integrand, *a, *b, *epsabs, *epsrel, q::active_kernels(), q::zem_policy);
  *result = o.result;
  *abserr = o.abserr;
  if (o.stop != 0)
    return integrand_iflag_stop ? zem::fail(errbuf, ifail, -1, q::detail_iflag)
                                : zem::user_stop(errbuf, ifail, o.stop);
  // A result that is not a finite number (NaN or infinite values of f, sums
  // that overflowed, a limit that is not finite) is a failure, never success.
  if (!std::isfinite(o.result) || !std::isfinite(o.abserr))
    return zem::fail(errbuf, ifail, 3, q::detail_bad, *a, *b);
  if (!o.met) return zem::fail(errbuf, ifail, 1, d01bd_detail_accuracy, *epsabs, *epsrel, o.abserr);
}

ZEM_API void d01bdf_(Zem_D01_FVecFun f, const double *a, const double *b, const double *epsabs,
                     const double *epsrel, double *result, double *abserr, int64_t iuser[], double ruser[],
                     void **cpuser, int64_t *ifail) {
  zem::f_entry call("d01bdf", d01bd_messages);
  d01bdft_(&call.en_data, reinterpret_cast<zem_routine>(f), y90jdsn_, d01bdf_fh_, a, b, epsabs, epsrel, result,
           abserr, iuser, ruser, cpuser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void d01bdc(Zem_D01_VecFun f, double a, double b, double epsabs, double epsrel, double *result,
                    double *abserr, Zem_Comm *comm, Zem_Fail *fail) {
  zem::c_entry call("d01bdc", d01bd_messages, fail);
  if (!f) return call.bad_param("f");
  if (!result) return call.bad_param("result");
  if (!abserr) return call.bad_param("abserr");
  void *cpuser = nullptr;
  d01bdft_(&call.en_data, reinterpret_cast<zem_routine>(f), nullptr, d01bdc_f_helper, &a, &b, &epsabs, &epsrel,
           result, abserr, call.comm_slot(comm), call.ruser(), &cpuser, call.errbuf, &call.status);
  call.finish();
}
