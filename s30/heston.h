// What s30na, s30nb and s30nc share: the stochastic-volatility model of
// Heston, its characteristic function in a form free of the branch-cut
// problem, and the pricing integral, integrated by the adaptive engine of
// chapter d01.
//
// Model (pricing measure).  dS/S = (r - q) dt + sqrt(v) dW1,
//   dv = kappa (eta - v) dt + sigmav sqrt(v) dW2,   d<W1, W2> = corr dt,
// v(0) = var0.  (S. L. Heston, A closed-form solution for options with
// stochastic volatility, Rev. Financial Studies 6 (1993) 327-343.)
//
// Pricing integral (A. Lewis, Option valuation under stochastic volatility,
// Finance Press 2000, ch. 2): with F = s e^{(r-q)t}, k = ln s - ln x +
// (r - q) t, A = sqrt(s x) e^{-(r+q)t/2} and M(w) = E[(S_t/F)^w],
//   call = s e^{-qt} - (A/pi) I,   put = x e^{-rt} - (A/pi) I,
//   I = integral_0^inf Re[e^{iuk} M(1/2 + iu)] / (u^2 + 1/4) du.
// At w = 1/2 + iu, w(1 - w) = u^2 + 1/4 is real, and |M| <= M(1/2) <= 1,
// so the integrand is bounded by 4 and I is of order one whatever s and x.
//
// Characteristic function.  With beta = kappa - corr sigmav w,
// d = sqrt(beta^2 + sigmav^2 (u^2 + 1/4)) (principal root, Re d >= 0),
// h = (u^2 + 1/4)/(beta + d) = (d - beta)/sigmav^2, g = (beta - d)/(beta + d)
// = -sigmav^2 h/(beta + d) and E = e^{-dt}:
//   ln M = kappa eta [-h t - 2 L / sigmav^2] - var0 h (1 - E)/(1 - g E),
//   L = ln((1 - g E)/(1 - g)) = log1p(g (1 - E)/(1 - g)).
// This is the rearrangement with g and e^{-dt} (|g E| < 1) of
// H. Albrecher, P. Mayer, W. Schoutens and J. Tistaert, The little Heston
// trap, Wilmott Magazine (Jan. 2007) 83-92, which follows the principal
// branch of the logarithm continuously; h and g are formed without the
// difference beta - d, and L and 1 - E by log1p and expm1, so that small
// sigmav and small t lose nothing to cancellation.
//
// Quadrature.  u in (0, inf) is mapped onto (0, 1] by u = (1 - v)/v and the
// adaptive scheme with extrapolation of chapter d01 (15-point Gauss-Kronrod
// rule) integrates with the absolute target tol_integral on I, at most
// max_intervals subintervals.  The price error is then at most
// A tol_integral / pi, i.e. 3.2e-12 sqrt(s x) e^{-(r+q)t/2} (3.2e-10 for
// s = x = 100).
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>

#include "d01/quad_engine.h"
#include "d01/quad_inf_rule.h"
#include "d01/quad_kernel.h"
#include "s30/grid.h"

namespace zem::s30 {

inline constexpr double tol_integral = 1e-11;
inline constexpr int64_t max_intervals = 200;

using cplx = std::complex<double>;

// Complex log1p and expm1 with full relative accuracy near 0.
inline cplx log1p_c(cplx z) {
  const double x = z.real(), y = z.imag();
  return {0.5 * std::log1p(x * (2.0 + x) + y * y), std::atan2(y, 1.0 + x)};
}
inline cplx expm1_c(cplx z) {
  const double a = z.real(), b = z.imag();
  const double sh = std::sin(0.5 * b);
  return {std::expm1(a) * std::cos(b) - 2.0 * sh * sh, std::exp(a) * std::sin(b)};
}

// Parameters of the characteristic function of one period.
// ke is the product kappa eta (kept as such: it is what the function needs,
// and it stays right where kappa is 0).
struct heston_period {
  double kappa, ke, sigmav, corr, tau;
};

// The two Riccati coefficients of ln M over one period of length tau,
// starting (at the period's end, time to maturity 0) from B0:
//   ln M gains A, and the coefficient of v becomes B.
// With B0 = 0 this is the formula above; in general (with the roots
// b1 = (beta - d)/sigmav^2 = -h, b2 = (beta + d)/sigmav^2)
//   g = (B0 - b1)/(B0 - b2), B = (b1 - b2 g E)/(1 - g E),
//   A = kappa eta [b1 tau - 2 ln((1 - g E)/(1 - g)) / sigmav^2].
struct riccati {
  cplx A, B;
  // Derivatives in tau (for the time sensitivity of s30nb, B0 = 0 only).
  cplx dA, dB;
};

inline riccati period_step(const heston_period &P, double u, cplx B0, bool with_time) {
  const double s2 = P.sigmav * P.sigmav;
  const double ww = u * u + 0.25;  // w (1 - w)
  const cplx w(0.5, u);
  const cplx beta = P.kappa - P.corr * P.sigmav * w;
  const cplx d = std::sqrt(beta * beta + s2 * ww);
  const cplx bpd = beta + d;
  const cplx h = ww / bpd;           // (d - beta)/sigmav^2
  const cplx one_m_E = -expm1_c(-d * P.tau);
  const cplx E = 1.0 - one_m_E;
  riccati R;
  if (B0 == cplx(0.0)) {
    const cplx g = -s2 * h / bpd;
    const cplx den = 1.0 - g * E;
    const cplx L = log1p_c(g * one_m_E / (1.0 - g));
    // L / sigmav^2 without dividing a tiny L by a tiny sigmav^2 where
    // sigmav is 0 to working precision: L ~ g (1 - E)/(1 - g).
    const cplx L_s2 = s2 > 0.0 ? L / s2 : -h / bpd * one_m_E;
    R.A = P.ke * (-h * P.tau - 2.0 * L_s2);
    R.B = -h * one_m_E / den;
    if (with_time) {
      // dA/dtau = kappa eta B, dB/dtau = -h d E (1 - g) / (1 - g E)^2.
      R.dA = P.ke * R.B;
      R.dB = -h * d * E * (1.0 - g) / (den * den);
    }
  } else {
    const cplx b1 = -h, b2 = bpd / s2;
    const cplx g = (B0 - b1) / (B0 - b2);
    const cplx den = 1.0 - g * E;
    R.B = (b1 - b2 * g * E) / den;
    const cplx L = log1p_c(g * one_m_E / (1.0 - g));
    R.A = P.ke * (b1 * P.tau - 2.0 * L / s2);
  }
  return R;
}

// ln M(1/2 + iu) of the constant-parameter model over time t.
inline cplx heston_log_m(const heston_period &P, double v0, double u) {
  const riccati R = period_step(P, u, cplx(0.0), false);
  return R.A + R.B * v0;
}

// Integrates f over (0, inf) by the engine; the lists live on the stack.
struct quad_result {
  double value, abserr;
  int64_t code;
  bool finite;
};

template <typename F>
inline quad_result integrate_half_line(F &f, double epsabs) {
  namespace q = zem::quad;
  double alist[max_intervals], blist[max_intervals], elist[max_intervals], rlist[max_intervals];
  int64_t iord[max_intervals];
  q::integrand_ref fr(f);
  q::infinite_range_rule rule(0.0, 1, fr, q::active_kernels(), q::zem_policy);
  const q::quad_lists lists{alist, blist, elist, rlist, iord, max_intervals};
  const q::quad_outcome o = q::adaptive_extrapolated(rule, rule.points(), 0.0, 1.0, epsabs, 0.0, lists, q::zem_policy);
  return {o.result, o.abserr, o.code, std::isfinite(o.result) && std::isfinite(o.abserr)};
}

}  // namespace zem::s30

// The message rows of the model parameters of s30na and s30nb.
#define S30_HESTON_ROWS                                                                                  \
  {12, 1031, NE_REAL, {"On entry, sigmav = %s.", "Constraint: sigmav > 0.0."},                          \
   {"On entry, sigmav = %s", "Constraint: sigmav > 0.0."}},                                             \
      {13, 1032, NE_REAL, {"On entry, kappa = %s.", "Constraint: kappa > 0.0."},                        \
       {"On entry, kappa = %s", "Constraint: kappa > 0.0."}},                                           \
      {14, 1033, NE_REAL, {"On entry, corr = %s.", "Constraint: abs(corr) <= 1.0."},                    \
       {"On entry, corr = %s", "Constraint: abs(corr) <= 1.0."}},                                       \
      {15, 1034, NE_REAL, {"On entry, var0 = %s.", "Constraint: var0 >= 0.0."},                         \
       {"On entry, var0 = %s", "Constraint: var0 >= 0.0."}},                                            \
      {15, 1039, NE_REAL, {"On entry, var0 = %s.", "Constraint: var0 <= %s."},                          \
       {"On entry, var0 = %s", "Constraint: var0 <= %s."}},                                             \
      {16, 1035, NE_REAL, {"On entry, eta = %s.", "Constraint: eta > 0.0."},                            \
       {"On entry, eta = %s", "Constraint: eta > 0.0."}},                                               \
      {17, 1036, NE_REAL,                                                                                \
       {"On entry, grisk = %s,", "sigmav = %s and", "kappa = %s.", "Constraint: 0.0 <= grisk <= 1.0",    \
        "and grisk*(1.0-grisk)*sigmav^2 <= kappa^2."}},                                                  \
      {20, 1038, NE_ACCURACY, {"Solution cannot be computed accurately. Check values of input arguments."}}

namespace zem::s30 {

struct heston_args {
  double sigmav, kappa, corr, var0, eta, grisk;
};

// The checks of the model parameters, in argument order, after the grid's.
inline bool check_heston(const heston_args &h, char *errbuf, int64_t *ifail) {
  if (!(h.sigmav > 0.0)) return zem::fail(errbuf, ifail, 12, 1031, h.sigmav), true;
  if (!(h.kappa > 0.0)) return zem::fail(errbuf, ifail, 13, 1032, h.kappa), true;
  if (!(std::fabs(h.corr) <= 1.0)) return zem::fail(errbuf, ifail, 14, 1033, h.corr), true;
  if (!(h.var0 >= 0.0)) return zem::fail(errbuf, ifail, 15, 1034, h.var0), true;
  // (An infinite var0 would make vega = 2 sqrt(var0) dp/dvar0 the product
  //  of an infinity and a zero.)
  if (!(h.var0 <= par)) return zem::fail(errbuf, ifail, 15, 1039, h.var0, par), true;
  if (!(h.eta > 0.0)) return zem::fail(errbuf, ifail, 16, 1035, h.eta), true;
  // grisk (1 - grisk) sigmav^2 <= kappa^2; with grisk 0 or 1 the product is
  // 0 (written so, not formed, so that an infinite sigmav does not make it
  // NaN).
  const double gg = h.grisk * (1.0 - h.grisk);
  if (!(h.grisk >= 0.0 && h.grisk <= 1.0 && (gg == 0.0 || gg * h.sigmav * h.sigmav <= h.kappa * h.kappa)))
    return zem::fail(errbuf, ifail, 17, 1036, h.grisk, h.sigmav, h.kappa), true;
  return false;
}

// The parameters of the pricing measure: the variance risk premium set by
// grisk changes the mean reversion to kappa* = sqrt(kappa^2 - grisk (1 -
// grisk) sigmav^2) and keeps kappa* eta* = kappa eta (so grisk = 0 or 1 is
// the plain model).
inline heston_period pricing_period(const heston_args &h, double t) {
  const double gg = h.grisk * (1.0 - h.grisk);
  if (gg == 0.0) return {h.kappa, h.kappa * h.eta, h.sigmav, h.corr, t};
  // kappa^2 - gg sigmav^2 = (kappa - s)(kappa + s), s = sqrt(gg) sigmav.
  const double sv = std::sqrt(gg) * h.sigmav;
  const double ks = std::sqrt((h.kappa - sv) * (h.kappa + sv));
  return {ks, h.kappa * h.eta, h.sigmav, h.corr, t};
}

}  // namespace zem::s30
