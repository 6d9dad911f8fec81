// s30cb: cash-or-nothing binary options (as s30ca, the same prices bit for
// bit) with five sensitivities in closed form.  With e = +1 for a call and
// -1 for a put, K_r = k e^{-rt}, b = r - q, v = sigma sqrt(t):
//
//   p      K_r Phi(e d2)
//   delta  dp/ds       e K_r phi(d2) / (s v)
//   gamma  d2p/ds2    -e K_r phi(d2) d1 / (s^2 v^2)
//   vega   dp/dsigma  -e K_r phi(d2) d1 / sigma
//   theta  -dp/dt      r p - e K_r phi(d2) ((b - sigma^2/2)/v - d2/(2t))
//   rho    dp/dr      -t p + e K_r phi(d2) sqrt(t) / sigma
//
// Each term that carries phi(d2) is set to 0 where phi(d2) is 0 (its other
// factor may then overflow at the ends of the accepted ranges).
// Sources: as s30ca (Rubinstein and Reiner 1991); the derivatives are those
// of the closed form.
#include "s30/s30cb.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/binary.h"

inline constexpr zem::message s30cb_messages[] = {
    S30_GRID_ROWS,
    S30_ROWS_K,
};
ZEM_REGISTER_MESSAGES(s30cb)

ZEM_ENGINE_LAYERS(s30cb, S30CB_ARGS)

ZEM_INTERNAL void s30cbfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           const double *k, double *p, const int64_t *ldp, double *delta, double *gamma,
                           double *vega, double *theta, double *rho, const int64_t *order, char *errbuf,
                           int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, *q, *ldp, *order};
  const double e = g.type == kind::call ? 1.0 : -1.0;
  const double b2 = (g.r - g.q) - g.sigma * g.sigma / 2.0;
  binary_grid(g, *k, calput, calput_len, errbuf, ifail, [&](const binary_point &b) {
    const expiry_terms &et = *b.e;
    const double ph = b.kr * inv_sqrt_2pi * std::exp(-0.5 * b.d2 * b.d2);  // K_r phi(d2)
    double dl = 0, gm = 0, vg = 0, th = 0, rh = 0;
    if (ph != 0.0) {
      // The products with ph are formed before the divisions by s and v,
      // so that a quotient beyond the double range is an infinity of the
      // right sign (or 0 with d1 = 0), never inf * 0.
      const double d1 = b.d2 + et.vol;
      dl = e * ph / g.s / et.vol;
      gm = -e * (ph * d1) / g.s / et.vol / g.s / et.vol;
      vg = -e * (ph * d1) / g.sigma;
      th = -e * ph * (b2 / et.vol - b.d2 / (2.0 * et.t));
      rh = e * ph * et.sqrt_t / g.sigma;
    }
    p[b.at] = b.price;
    delta[b.at] = dl;
    gamma[b.at] = gm;
    vega[b.at] = vg;
    theta[b.at] = g.r * b.price + th;
    rho[b.at] = -et.t * b.price + rh;
  });
}

ZEM_API void s30cbf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, const double *k,
                     double *p, const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta,
                     double *rho, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30cbf", s30cb_messages);
  const int64_t order = zem::s30::col_major;
  s30cbft_(&call.en_data, calput, m, n, x, s, t, sigma, r, q, k, p, ldp, delta, gamma, vega, theta, rho, &order,
           call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30cbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double q, double k, double p[], int64_t ldp,
                    double delta[], double gamma[], double vega[], double theta[], double rho[], Zem_Fail *fail) {
  zem::c_entry call("s30cbc", s30cb_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char kc = zem::s30::kind_character(option);
  if (!kc) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  const char *names[] = {"delta", "gamma", "vega", "theta", "rho"};
  const double *arrays[] = {delta, gamma, vega, theta, rho};
  for (int a = 0; a < 5; ++a)
    if (!arrays[a]) return call.bad_param(names[a]);
  s30cbft_(&call.en_data, &kc, &m, &n, x, &s, t, &sigma, &r, &q, &k, p, &ldp, delta, gamma, vega, theta, rho, &ord,
           call.errbuf, &call.status, 1);
  call.finish();
}
