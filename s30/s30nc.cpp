// s30nc: European call and put prices in Heston's stochastic-volatility
// model with a term structure of its parameters, for m strikes and one
// expiry t.
//
// Model.  Time from 0 is cut into numts periods, period k of length ts(k)
// (k = 1..numts); the last period's parameters hold beyond its end.  In
// period k the variance follows
//   dv = lambda(k) (sigmat(k)^2 - v) dt + alpha(k) sqrt(v) dW2,
// d<W1, W2> = corr(k) dt, v(0) = var0, and the forward price F_t = fwd (to
// the expiry t) is the martingale dF/F = sqrt(v) dW1.
//
// Moment function.  M(w) = E[(F_t/fwd)^w] = exp(A + B var0), where A and B
// solve the Riccati equations of the model backwards from the expiry,
// period by period: with tau the time to expiry,
//   dB/dtau = alpha^2 B^2/2 - (lambda - corr alpha w) B - w(1 - w)/2,
//   dA/dtau = lambda sigmat^2 B,   A = B = 0 at tau = 0,
// whose closed form over a period with constant parameters, starting from
// the B reached at the period's end, is period_step (s30/heston.h): the same
// g- and e^{-d tau}-form as s30na, with g = (B0 - b1)/(B0 - b2).
// (The piecewise recursion is that of S. Mikhailov and U. Noegel, Heston's
// stochastic volatility model: implementation, calibration and some
// extensions, Wilmott Magazine (July 2003) 74-79.)
//
// Price.  With k = ln fwd - ln x(i),
//   call = disc (fwd - sqrt(fwd x)/pi I),   put = disc (x - sqrt(fwd x)/pi I),
//   I = int_0^inf Re[e^{iuk} M(1/2 + iu)]/(u^2 + 1/4) du,
// by the d01 engine with the target of s30na (1e-11 absolute on I); a miss
// is the warning NE_CONVERGENCE, a non-finite integral NE_ACCURACY.
//
// Bounds, chosen so that every exponent of the recursion stays far inside
// the safe range: fwd, disc, x(i) in [2^-511, 2^511]; 2^-20 <= t <= 2^10;
// ts(k), alpha(k), lambda(k), sigmat(k) in [2^-20, 2^10]; |corr(k)| <= 1;
// var0 > 0 (and at most 2^10).
#include "s30/s30nc.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/heston.h"

namespace {
constexpr double plo = 0x1p-20, phi_ = 0x1p10;
}

inline constexpr zem::message s30nc_messages[] = {
    S30_ROW_CALPUT,
    S30_ROW_M,
    {3, 1041, NE_INT, {"On entry, numts = %s.", "Constraint: numts >= 1."},
     {"On entry, numts = %s", "Constraint: numts >= 1."}},
    {4, 1042, NE_REAL_ARRAY, {"On entry, x[%s] = %s.", "Constraint: %s <= x[i-1] <= %s."},
     {"On entry, x(%s+1) = %s", "Constraint: %s <= x(i) <= %s."}},
    {5, 1043, NE_REAL, {"On entry, fwd = %s.", "Constraint: %s <= fwd <= %s."},
     {"On entry, fwd = %s", "Constraint: %s <= fwd <= %s."}},
    {6, 1044, NE_REAL, {"On entry, disc = %s.", "Constraint: %s <= disc <= %s."},
     {"On entry, disc = %s", "Constraint: %s <= disc <= %s."}},
    {7, 1045, NE_REAL_ARRAY, {"On entry, ts[%s] = %s.", "Constraint: %s <= ts[i-1] <= %s."},
     {"On entry, ts(%s+1) = %s", "Constraint: %s <= ts(i) <= %s."}},
    {8, 1046, NE_REAL, {"On entry, t = %s.", "Constraint: t >= %s."}, {"On entry, t = %s", "Constraint: t >= %s."}},
    {8, 1047, NE_REAL, {"On entry, t = %s.", "Constraint: t <= %s."}, {"On entry, t = %s", "Constraint: t <= %s."}},
    {9, 1048, NE_REAL_ARRAY, {"On entry, alpha[%s] = %s.", "Constraint: %s <= alpha[i-1] <= %s."},
     {"On entry, alpha(%s+1) = %s", "Constraint: alpha(i) >= %s and", "alpha(i) <= %s."}},
    {10, 1049, NE_REAL_ARRAY, {"On entry, lambda[%s] = %s.", "Constraint: %s <= lambda[i-1] <= %s."},
     {"On entry, lambda(%s+1) = %s", "Constraint: lambda(i) >= %s and", "lambda(i) <= %s."}},
    {11, 1050, NE_REAL_ARRAY, {"On entry, corr[%s] = %s.", "Constraint: abs(corr[i-1]) <= 1.0."},
     {"On entry, corr(%s+1) = %s", "Constraint: abs(corr(i)) <= 1.0."}},
    {12, 1051, NE_REAL_ARRAY, {"On entry, sigmat[%s] = %s.", "Constraint: %s <= sigmat[i-1] <= %s."},
     {"On entry, sigmat(%s+1) = %s", "Constraint: sigmat(i) >= %s and", "sigmat(i) <= %s."}},
    {13, 1052, NE_REAL, {"On entry, var0 = %s.", "Constraint: var0 > 0.0."},
     {"On entry, var0 = %s", "Constraint: var0 > 0.0."}},
    {13, 1053, NE_REAL, {"On entry, var0 = %s.", "Constraint: var0 <= %s."},
     {"On entry, var0 = %s", "Constraint: var0 <= %s."}},
    {18, 1037, NE_CONVERGENCE,
     {"Quadrature has not converged to the specified accuracy.",
      "However, the result should be a reasonable approximation."}},
    {20, 1038, NE_ACCURACY, {"Solution cannot be computed accurately. Check values of input arguments."}},
};
ZEM_REGISTER_MESSAGES(s30nc)

ZEM_ENGINE_LAYERS(s30nc, S30NC_ARGS)

namespace zem::s30 {

// ln M(1/2 + iu) over the segments seg[0..nseg), seg[nseg-1] the one that
// ends at the expiry.
inline cplx term_log_m(const heston_period *seg, int64_t nseg, double v0, double u) {
  cplx A(0.0), B(0.0);
  for (int64_t k = nseg - 1; k >= 0; --k) {
    const riccati R = period_step(seg[k], u, B, false);
    A += R.A;
    B = R.B;
  }
  return A + B * v0;
}

}  // namespace zem::s30

ZEM_INTERNAL void s30ncfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *numts,
                           const double *x, const double *fwd, const double *disc, const double *ts,
                           const double *t, const double *alpha, const double *lambda, const double *corr,
                           const double *sigmat, const double *var0, double *p, char *errbuf, int64_t *ifail,
                           size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const kind type = read_kind(calput, calput_len);
  if (type == kind::invalid) return zem::fail(errbuf, ifail, st_calput, 1001, shown_kind(calput, calput_len));
  if (!(*m >= 1)) return zem::fail(errbuf, ifail, st_m, 1002, *m);
  if (!(*numts >= 1)) return zem::fail(errbuf, ifail, 3, 1041, *numts);
  if (const int64_t i = first_outside(x, *m, lo, hi); i >= 0) return zem::fail(errbuf, ifail, 4, 1042, i, x[i], lo, hi);
  if (!(*fwd >= lo && *fwd <= hi)) return zem::fail(errbuf, ifail, 5, 1043, *fwd, lo, hi);
  if (!(*disc >= lo && *disc <= hi)) return zem::fail(errbuf, ifail, 6, 1044, *disc, lo, hi);
  const int64_t nt = *numts;
  if (const int64_t i = first_outside(ts, nt, plo, phi_); i >= 0)
    return zem::fail(errbuf, ifail, 7, 1045, i, ts[i], plo, phi_);
  if (!(*t >= plo)) return zem::fail(errbuf, ifail, 8, 1046, *t, plo);
  if (!(*t <= phi_)) return zem::fail(errbuf, ifail, 8, 1047, *t, phi_);
  if (const int64_t i = first_outside(alpha, nt, plo, phi_); i >= 0)
    return zem::fail(errbuf, ifail, 9, 1048, i, alpha[i], plo, phi_);
  if (const int64_t i = first_outside(lambda, nt, plo, phi_); i >= 0)
    return zem::fail(errbuf, ifail, 10, 1049, i, lambda[i], plo, phi_);
  if (const int64_t i = first_outside(corr, nt, -1.0, 1.0); i >= 0) return zem::fail(errbuf, ifail, 11, 1050, i, corr[i]);
  if (const int64_t i = first_outside(sigmat, nt, plo, phi_); i >= 0)
    return zem::fail(errbuf, ifail, 12, 1051, i, sigmat[i], plo, phi_);
  if (!(*var0 > 0.0)) return zem::fail(errbuf, ifail, 13, 1052, *var0);
  if (!(*var0 <= phi_)) return zem::fail(errbuf, ifail, 13, 1053, *var0, phi_);

  // The segments of [0, t]: period k cut at t, the last one extended to t.
  std::unique_ptr<heston_period[]> seg(
      static_cast<uint64_t>(nt) <= PTRDIFF_MAX / sizeof(heston_period) ? new (std::nothrow) heston_period[nt]
                                                                       : nullptr);
  if (!seg) return zem::alloc_fail(ifail);
  int64_t nseg = 0;
  double start = 0.0;
  for (int64_t k = 0; k < nt && start < *t; ++k) {
    const double end = k == nt - 1 ? *t : std::fmin(start + ts[k], *t);
    seg[nseg++] = {lambda[k], lambda[k] * sigmat[k] * sigmat[k], alpha[k], corr[k], end - start};
    start = end;
  }

  const double v0 = *var0, lnf = std::log(*fwd);
  bool missed = false;
  for (int64_t i = 0; i < *m; ++i) {
    const double k = lnf - std::log(x[i]);
    auto f = [&](const double *u, int64_t cnt, double *fv) -> int64_t {
      for (int64_t c = 0; c < cnt; ++c) {
        const cplx e = term_log_m(seg.get(), nseg, v0, u[c]) + cplx(0.0, u[c] * k);
        const double a = std::exp(e.real());
        fv[c] = a == 0.0 ? 0.0 : a * std::cos(e.imag()) / (u[c] * u[c] + 0.25);
      }
      return 0;
    };
    const quad_result I = integrate_half_line(f, tol_integral);
    if (!I.finite) return zem::fail(errbuf, ifail, 20, 1038);
    missed = missed || I.code != 0 || !(I.abserr <= tol_integral);
    const double a = std::sqrt(*fwd) * std::sqrt(x[i]) / M_PI;
    p[i] = *disc * ((type == kind::call ? *fwd : x[i]) - a * I.value);
  }
  if (missed) zem::fail(errbuf, ifail, 18, 1037);
}

ZEM_API void s30ncf_(const char *calput, const int64_t *m, const int64_t *numts, const double *x, const double *fwd,
                     const double *disc, const double *ts, const double *t, const double *alpha,
                     const double *lambda, const double *corr, const double *sigmat, const double *var0, double *p,
                     int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30ncf", s30nc_messages);
  s30ncft_(&call.en_data, calput, m, numts, x, fwd, disc, ts, t, alpha, lambda, corr, sigmat, var0, p, call.errbuf,
           &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30ncc(Zem_OptionType option, int64_t m, int64_t numts, const double x[], double fwd, double disc,
                    const double ts[], double t, const double alpha[], const double lambda[], const double corr[],
                    const double sigmat[], double var0, double p[], Zem_Fail *fail) {
  zem::c_entry call("s30ncc", s30nc_messages, fail);
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!ts) return call.bad_param("ts");
  if (!alpha) return call.bad_param("alpha");
  if (!lambda) return call.bad_param("lambda");
  if (!corr) return call.bad_param("corr");
  if (!sigmat) return call.bad_param("sigmat");
  if (!p) return call.bad_param("p");
  s30ncft_(&call.en_data, &k, &m, &numts, x, &fwd, &disc, ts, &t, alpha, lambda, corr, sigmat, &var0, p,
           call.errbuf, &call.status, 1);
  call.finish();
}
