// s30qc: American calls and puts in the Black-Scholes-Merton model by the
// closed-form approximation of Bjerksund and Stensland (1993), for m
// strikes and n expiries.  The approximation exercises at a flat boundary
// I; the call (b = r - q):
//
//   b >= r (q = 0): never exercised early, the European price of s30aa.
//   beta = (1/2 - b/sigma^2) + sqrt((b/sigma^2 - 1/2)^2 + 2r/sigma^2)
//   B_inf = beta/(beta - 1) x,   B_0 = max(x, r/(r - b) x)
//   h(t) = -(b t + 2 sigma sqrt t) B_0 / (B_inf - B_0)
//   I = B_0 + (B_inf - B_0)(1 - e^{h(t)})
//   s >= I: call = s - x, else
//   call = a s^beta - a phi(beta, I) + phi(1, I) - phi(1, x) - x phi(0, I) + x phi(0, x),
//          a = (I - x) I^{-beta},
//   phi(g, H) = e^{lam} s^g [Phi(d) - (I/s)^kap Phi(d - 2 ln(I/s)/v)],
//   lam = (-r + g b + g(g - 1) sigma^2/2) t,  kap = 2b/sigma^2 + 2g - 1,
//   d = -(ln(s/H) + (b + (g - 1/2) sigma^2) t)/v,  v = sigma sqrt t.
//
// The put is the call of the put-call transformation P(s, x, r, q) =
// C(x, s, q, r) (Bjerksund and Stensland 1993; McDonald and Schroder 1998).
// a s^beta is formed as (I - x)(s/I)^beta, and each (I/s)^kap joined to its
// Normal probability (exp_phi), so no power overflows.  beta is the
// exponent of the perpetual American option; s^beta must stay below 2^1022
// (the reciprocal of the safe range), beta itself finite.
// Sources: P. Bjerksund and G. Stensland, Closed-form approximation of
// American options, Scandinavian J. Management 9 (1993) S87-S99;
// R. L. McDonald and M. D. Schroder, A parity result for American options,
// J. Computational Finance 1(3) (1998) 5-13; E. G. Haug, The Complete Guide
// to Option Pricing Formulas, 2nd ed. (2007), section 3.2.
#include "s30/s30qc.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/exotic.h"

inline constexpr double s30qc_bound = 0x1p1022;  // 4.49423283715579e+307

inline constexpr zem::message s30qc_messages[] = {
    S30_GRID_ROWS,
    {5, 1040, NE_REAL, {"On entry, s = %s and beta = %s.", "Constraint: s^beta < %s."},
     {"On entry, s = %s and beta = %s", "Constraint: s^beta < %s."}},
};
ZEM_REGISTER_MESSAGES(s30qc)

ZEM_ENGINE_LAYERS(s30qc, S30QC_ARGS)

namespace zem::s30 {

// The perpetual exponent beta of a call with rate r and carry b.
// With w = b - sigma^2/2 and the root's two forms chosen so that nothing
// cancels or overflows: beta = (-w + hypot(w, sigma sqrt(2r))) / sigma^2
// for w <= 0, 2r / (w + hypot(w, sigma sqrt(2r))) for w > 0.
inline double bs_beta(double r, double b, double sigma) {
  const double sig2 = sigma * sigma;
  const double w = b - sig2 / 2.0;
  const double root = std::hypot(w, sigma * std::sqrt(2.0 * r));
  return w <= 0.0 ? (root - w) / sig2 : 2.0 * r / (w + root);
}

// The approximate American call C(s, x, t, r, b, sigma).  Every Normal
// argument is formed from a logarithm of a ratio (ln(s/x), ln(I/s),
// ln(I/x)), never from a difference of two logarithms: far out of the
// money a price moves by |d| times the absolute error of its argument d,
// and ln s - ln x would carry eps |ln s| + eps |ln x|, against eps |ln(s/x)|.
inline double bs93_call(double s, double x, double t, double r, double b, double sigma, double beta) {
  const double sqt = std::sqrt(t);
  const double v = sigma * sqt;
  const double sig2 = sigma * sigma;
  const double lsx = log_ratio(s, x);
  if (b >= r) {  // the European call, with dividend yield r - b
    const double d1 = (lsx + t * (b + sig2 / 2.0)) / v;
    return 0.5 * s * std::exp((b - r) * t) * std::erfc(-d1 * c) - 0.5 * x * std::exp(-r * t) * std::erfc(-(d1 - v) * c);
  }
  const double binf = beta / (beta - 1.0) * x;
  const double b0 = std::fmax(x, r / (r - b) * x);
  // B_inf - B_0 > 0 in exact arithmetic; where it rounds to 0 (beta beyond
  // 2^52) the boundary is B_0.  Where b t + 2 sigma sqrt(t) < 0 (a strongly
  // negative carry over a long time) h(t) > 0 would put I below B_0, even
  // below the strike; the boundary is then held at B_0, the exercise
  // boundary at expiry, below which the true boundary never lies.
  const double gap = binf - b0;
  const double ht = gap > 0.0 ? -(b * t + 2.0 * v) * b0 / gap : 0.0;
  const double I = ht < 0.0 ? b0 + gap * -std::expm1(ht) : b0;
  if (s >= I) return s - x;
  const double lIs = log_ratio(I, s);  // ln(I/s) > 0
  const double lIx = log_ratio(I, x);  // ln(I/x) >= 0
  // phi(g, H) without its factor s^g e^{lam} is Phi(d) - (I/s)^kap Phi(d - 2 ln(I/s)/v);
  // the approximation uses it at H = I and H = x, through the difference of
  // the two brackets and one minus the first (each formed as a sum of
  // differences of Normal probabilities, so that none cancels).
  auto d_of = [&](double g, double lsH) { return -(lsH + (b + (g - 0.5) * sig2) * t) / v; };  // lsH = ln(s/H)
  auto kap_of = [&](double g) { return 2.0 * b / sig2 + (2.0 * g - 1.0); };
  const double shift = 2.0 * lIs / v;
  auto lam = [&](double g) { return (-r + g * b + 0.5 * g * (g - 1.0) * sig2) * t; };
  // lam(beta) = 0: beta solves sigma^2 g(g - 1)/2 + b g - r = 0.
  const double dB = d_of(beta, -lIs);
  const double one_minus = 0.5 * std::erfc(dB * c) + exp_phi(kap_of(beta) * lIs, dB - shift);
  const double head = (I - x) * std::exp(-beta * lIs) * one_minus;
  const double l1 = lam(1.0), l0 = lam(0.0);
  const double e1 = s * std::exp(l1);
  const double e0 = x * std::exp(l0);
  // The brackets' differences bracket(g, I) - bracket(g, x), g = 1 and 0,
  // each a sum of differences of Normal probabilities over the width
  // d(g, I) - d(g, x) = ln(I/x)/v (formed from ln(I/x) alone), are taken
  // times e1 and e0; far out of the money the two products are tails of
  // nearly equal size.  With d(0, H) = d(1, H) + v and
  //   e1 phi(d(1, H)) = (H/x) e0 phi(d(0, H)),
  // and the same for the mirror terms at d - shift with the powers (I/s)^kap
  // (kap(1) - kap(0) = 2), the plain parts are
  //   [e1 Q(d(1, x)) - e0 Q(d(0, x))] - [e1 Q(d(1, I)) - e0 Q(d(0, I))]
  // and the mirror parts the like with Phi at d - shift, each bracket a
  // scaled difference of Mills ratios (tail_pair, with gam = ln(I/x) at I);
  // where a bracket is no tail, the part is formed as before.
  const double dx1 = d_of(1.0, lsx), wI = lIx / v;
  double plain_part, mirror_part, ta, tb;
  if (tail_pair(1.0, -dx1, v, s, l1, x, l0, ta) && tail_pair(1.0, -(dx1 + wI), v, s, l1, x, l0, tb, lIx))
    plain_part = ta - tb;
  else
    plain_part = e1 * exp_ndiff(0.0, dx1, wI) - e0 * exp_ndiff(0.0, d_of(0.0, lsx), wI);
  const double dx0 = d_of(0.0, lsx), m1 = kap_of(1.0) * lIs, m0 = kap_of(0.0) * lIs;
  if (tail_pair(1.0, dx0 - shift, v, x, l0 + m0, s, l1 + m1, ta) &&
      tail_pair(1.0, dx0 + wI - shift, v, x, l0 + m0, s, l1 + m1, tb, -lIx))
    mirror_part = tb - ta;
  else
    mirror_part = e0 * exp_ndiff(m0, dx0 - shift, wI) - e1 * exp_ndiff(m1, dx1 - shift, wI);
  return head + plain_part + mirror_part;
}

}  // namespace zem::s30

ZEM_INTERNAL void s30qcfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           double *p, const int64_t *ldp, const int64_t *order, char *errbuf, int64_t *ifail,
                           size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, *q, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  // The call's rate and carry, or those of the transformed put.
  const bool call = g.type == kind::call;
  const double rr = call ? g.r : g.q, bb = call ? g.r - g.q : g.q - g.r;
  const double beta = bs_beta(rr, bb, g.sigma);
  if (!(std::isfinite(beta) && (g.s <= 1.0 || beta * std::log2(g.s) < 1022.0)))
    return zem::fail(errbuf, ifail, 5, 1040, g.s, beta, s30qc_bound);

  const layout L = make_layout(g.order, g.ld);
  for (int64_t j = 0; j < g.n; ++j) {
    double *col = p + j * L.cj;
    for (int64_t i = 0; i < g.m; ++i)
      col[i * L.ri] = call ? bs93_call(g.s, x[i], g.t[j], rr, bb, g.sigma, beta)
                           : bs93_call(x[i], g.s, g.t[j], rr, bb, g.sigma, beta);
  }
}

ZEM_API void s30qcf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, double *p,
                     const int64_t *ldp, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30qcf", s30qc_messages);
  const int64_t order = zem::s30::col_major;
  s30qcft_(&call.en_data, calput, m, n, x, s, t, sigma, r, q, p, ldp, &order, call.errbuf, &call.status,
           calput_len);
  call.finish(ifail);
}

ZEM_API void s30qcc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double q, double p[], int64_t ldp, Zem_Fail *fail) {
  zem::c_entry call("s30qcc", s30qc_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30qcft_(&call.en_data, &k, &m, &n, x, &s, t, &sigma, &r, &q, p, &ldp, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
