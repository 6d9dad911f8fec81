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

#include "s30/grid.h"

inline constexpr zem::message s30cb_messages[] = {
    S30_GRID_ROWS,
    {10, 1016, NE_REAL, {"On entry, k = %s.", "Constraint: k >= 0.0."}, {"On entry, k = %s", "Constraint: k >= 0.0."}},
    {10, 1017, NE_REAL, {"On entry, k = %s.", "Constraint: k <= %s."}, {"On entry, k = %s", "Constraint: k <= %s."}},
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
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  if (!(*k >= 0.0)) return zem::fail(errbuf, ifail, 10, 1016, *k);
  if (!(*k <= hi)) return zem::fail(errbuf, ifail, 10, 1017, *k, hi);

  std::unique_ptr<double[]> lnx(
      static_cast<uint64_t>(g.m) <= PTRDIFF_MAX / sizeof(double) ? new (std::nothrow) double[g.m] : nullptr);
  if (!lnx) return zem::alloc_fail(ifail);
  for (int64_t i = 0; i < g.m; ++i) lnx[i] = std::log(x[i]);
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  const double sg = g.type == kind::call ? -1.0 : 1.0;  // erfc(sg d2 c) = 2 Phi(e d2)
  const double e = -sg;
  const double b2 = (g.r - g.q) - g.sigma * g.sigma / 2.0;
  for (int64_t j = 0; j < g.n; ++j) {
    const expiry_terms et = per_expiry(g.s, g.t[j], g.sigma, g.r, g.q);
    const double hk = 0.5 * *k * et.dr;  // 0.5 k e^{-rt}
    const double kr = *k * et.dr;
    for (int64_t i = 0; i < g.m; ++i) {
      const int64_t at = i * L.ri + j * L.cj;
      const double d2 = (lns - lnx[i] + et.drift) / et.vol - et.vol;
      const double price = hk * zem::s15::erfc(sg * d2 * c);
      p[at] = price;
      const double ph = kr * inv_sqrt_2pi * std::exp(-0.5 * d2 * d2);  // K_r phi(d2)
      double dl = 0, gm = 0, vg = 0, th = 0, rh = 0;
      if (ph != 0.0) {
        const double d1 = d2 + et.vol;
        dl = e * ph / g.s / et.vol;
        gm = -dl * d1 / g.s / et.vol;
        vg = -e * ph * d1 / g.sigma;
        th = -e * ph * (b2 / et.vol - d2 / (2.0 * et.t));
        rh = e * ph * et.sqrt_t / g.sigma;
      }
      delta[at] = dl;
      gamma[at] = gm;
      vega[at] = vg;
      theta[at] = g.r * price + th;
      rho[at] = -et.t * price + rh;
    }
  }
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
