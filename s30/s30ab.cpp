// s30ab: European call and put prices (as s30aa) with eleven sensitivities.
//
// With b = r - q, v = sigma sqrt(t), D_q = e^{-qt}, D_r = e^{-rt},
// phi(d1) = e^{-d1^2/2}/sqrt(2 pi), N(y) = erfc(-y c)/2, and
// g = (2 b t - d2 v) / (2 t v) = b/v - d2/(2t) (the rate of change of d1
// with t):
//
//   delta  dp/ds        call  D_q N(d1)                put  -D_q N(-d1)
//   gamma  d2p/ds2      D_q phi(d1) / (s v)
//   vega   dp/dsigma    s D_q phi(d1) sqrt(t)
//   theta  -dp/dt       -s D_q phi(d1) sigma / (2 sqrt t)
//                       call + q s D_q N(d1) - r x D_r N(d2)
//                       put  - q s D_q N(-d1) + r x D_r N(-d2)
//   rho    dp/dr        call  x t D_r N(d2)           put  -x t D_r N(-d2)
//   vanna  d2p/ds dsigma   -D_q phi(d1) d2 / sigma
//   charm  -d(delta)/dt    call  q D_q N(d1) - D_q phi(d1) g
//                          put  -q D_q N(-d1) - D_q phi(d1) g
//   speed  d3p/ds3      -gamma (d1/v + 1) / s
//   colour -d(gamma)/dt    gamma (q + 1/(2t) + d1 g)
//   zomma  d(gamma)/dsigma gamma (d1 d2 - 1) / sigma
//   vomma  d(vega)/dsigma  vega d1 d2 / sigma
//
// Time runs forward: theta, charm and colour are the changes per unit of
// calendar time passing (minus the derivative with respect to the expiry t).
// The price and the Normal probabilities are formed exactly as in s30aa
// (same loop order, same half-erfc products), so p agrees with s30aa bit
// for bit.  A d beyond 1e150 in magnitude (only for extreme parameters,
// where phi is 0) is held there, so that d1 d2 phi(d1) is 0, not NaN.
#include "s30/s30ab.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/grid.h"

inline constexpr zem::message s30ab_messages[] = {S30_GRID_ROWS};
ZEM_REGISTER_MESSAGES(s30ab)

ZEM_ENGINE_LAYERS(s30ab, S30AB_ARGS)

namespace zem::s30 {

struct greek_out {
  double *p, *delta, *gamma, *vega, *theta, *rho, *vanna, *charm, *speed, *colour, *zomma, *vomma;
};

inline double held(double d) { return std::fabs(d) <= 1e150 ? d : std::copysign(1e150, d); }

template <kind K>
inline void european_greeks_grid(const grid_args &g, const double *lnx, const greek_out &o) {
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  const double b = g.r - g.q;
  for (int64_t j = 0; j < g.n; ++j) {
    const expiry_terms e = per_expiry(g.s, g.t[j], g.sigma, g.r, g.q);
    const double hs = 0.5 * e.sdq;
    const double hr = 0.5 * e.dr;
    const double t = e.t;
    const double sig_half_sqrt_t = g.sigma / (2.0 * e.sqrt_t);
    for (int64_t i = 0; i < g.m; ++i) {
      const int64_t at = i * L.ri + j * L.cj;
      const double xk = g.x[i];
      const double d1 = (lns - lnx[i] + e.drift) / e.vol;
      const double d2 = d1 - e.vol;
      const double hk = xk * hr;
      // Half-erfc terms: with the sign of a call, or of a put.
      const double sgn = K == kind::call ? -1.0 : 1.0;
      const double e1 = zem::s15::erfc(sgn * d1 * c);  // 2 N(d1) for a call, 2 N(-d1) for a put
      const double e2 = zem::s15::erfc(sgn * d2 * c);
      const double price = K == kind::call ? hs * e1 - hk * e2 : -(hs * e1 - hk * e2);
      const double n1 = 0.5 * e1, n2 = 0.5 * e2;  // N(+-d1), N(+-d2)
      const double h1 = held(d1), h2 = held(d2);
      const double phi = inv_sqrt_2pi * std::exp(-0.5 * h1 * h1);
      const double xdr = xk * e.dr;
      o.p[at] = price;
      // Where phi(d1) is 0 every term it multiplies is 0, however large its
      // other factor (which may overflow for extreme t and sigma).
      double gam = 0, veg = 0, theta_phi = 0, charm_phi = 0, vanna = 0, speed = 0, colour = 0, zomma = 0, vomma = 0;
      if (phi != 0.0) {
        const double dqphi = e.dq * phi;
        const double gt = b / e.vol - h2 / (2.0 * t);  // (2 b t - d2 v) / (2 t v)
        gam = dqphi / g.s / e.vol;
        veg = e.sdq * phi * e.sqrt_t;
        theta_phi = -e.sdq * phi * sig_half_sqrt_t;
        charm_phi = -dqphi * gt;
        vanna = -dqphi * h2 / g.sigma;
        speed = -gam * (h1 / e.vol + 1.0) / g.s;
        colour = gam * (g.q + 0.5 / t + h1 * gt);
        zomma = gam * (h1 * h2 - 1.0) / g.sigma;
        vomma = veg * h1 * h2 / g.sigma;
      }
      if constexpr (K == kind::call) {
        o.delta[at] = e.dq * n1;
        o.theta[at] = theta_phi + g.q * e.sdq * n1 - g.r * xdr * n2;
        o.rho[at] = xdr * t * n2;
        o.charm[at] = g.q * e.dq * n1 + charm_phi;
      } else {
        o.delta[at] = -e.dq * n1;
        o.theta[at] = theta_phi - g.q * e.sdq * n1 + g.r * xdr * n2;
        o.rho[at] = -xdr * t * n2;
        o.charm[at] = -g.q * e.dq * n1 + charm_phi;
      }
      o.gamma[at] = gam;
      o.vega[at] = veg;
      o.vanna[at] = vanna;
      o.speed[at] = speed;
      o.colour[at] = colour;
      o.zomma[at] = zomma;
      o.vomma[at] = vomma;
    }
  }
}

}  // namespace zem::s30

ZEM_INTERNAL void s30abfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           double *p, const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta,
                           double *rho, double *vanna, double *charm, double *speed, double *colour, double *zomma,
                           double *vomma, const int64_t *order, char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, *q, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  std::unique_ptr<double[]> lnx(
      static_cast<uint64_t>(g.m) <= PTRDIFF_MAX / sizeof(double) ? new (std::nothrow) double[g.m] : nullptr);
  if (!lnx) return zem::alloc_fail(ifail);
  for (int64_t i = 0; i < g.m; ++i) lnx[i] = std::log(x[i]);
  const greek_out o{p, delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma, vomma};
  if (g.type == kind::call)
    european_greeks_grid<kind::call>(g, lnx.get(), o);
  else
    european_greeks_grid<kind::put>(g, lnx.get(), o);
}

ZEM_API void s30abf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, double *p,
                     const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta, double *rho,
                     double *vanna, double *charm, double *speed, double *colour, double *zomma, double *vomma,
                     int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30abf", s30ab_messages);
  const int64_t order = zem::s30::col_major;
  s30abft_(&call.en_data, calput, m, n, x, s, t, sigma, r, q, p, ldp, delta, gamma, vega, theta, rho, vanna, charm,
           speed, colour, zomma, vomma, &order, call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30abc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double q, double p[], int64_t ldp, double delta[],
                    double gamma[], double vega[], double theta[], double rho[], double vanna[], double charm[],
                    double speed[], double colour[], double zomma[], double vomma[], Zem_Fail *fail) {
  zem::c_entry call("s30abc", s30ab_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  const char *names[] = {"delta", "gamma", "vega", "theta", "rho", "vanna", "charm", "speed", "colour", "zomma", "vomma"};
  const double *arrays[] = {delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma, vomma};
  for (int a = 0; a < 11; ++a)
    if (!arrays[a]) return call.bad_param(names[a]);
  s30abft_(&call.en_data, &k, &m, &n, x, &s, t, &sigma, &r, &q, p, &ldp, delta, gamma, vega, theta, rho, vanna,
           charm, speed, colour, zomma, vomma, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
