// s30jb: European prices in Merton's jump-diffusion model (as s30ja) with
// the eleven sensitivities of s30ab, in the same order and with the same time
// convention (theta, charm and colour per unit of calendar time passing).
//
// With w_i the Poisson weights, mu = lambda t, sigma_i^2 = (1 - jvol) sigma^2
// + e_i, e_i = i jvol sigma^2 / (lambda t), and G_i any of price, delta,
// gamma of the i-jump Black-Scholes term (docs/s30ab.md with q = 0):
//
//   d/ds, d/dr      term by term:  delta, gamma, speed, rho = sum w_i G'_i;
//   d/dsigma        sigma_i = sigma a_i:  vega = sum w_i a_i vega_i,
//                   vanna, zomma likewise, vomma = sum w_i a_i^2 vomma_i;
//   -d/dt           the weights move (dw_i/dt = lambda (w_{i-1} - w_i)) and
//                   sigma_i moves (dsigma_i/dt = -e_i / (2 sigma_i t)):
//      -d/dt sum w_i G_i = -(1/t) sum (i - mu) w_i G_i
//                          + sum w_i (Theta_i + D_i e_i / (2 sigma_i t)),
//   Theta_i the Black-Scholes theta, charm, colour of the term and D_i its
//   sensitivity to sigma_i (vega, vanna, zomma).
//
// The terms are summed with the price's truncation rule (s30/jump.h).
#include "s30/s30jb.h"

#include <cstdint>

#include "s30/jump.h"

inline constexpr zem::message s30jb_messages[] = {S30_GRID_ROWS, S30_JUMP_ROWS};
ZEM_REGISTER_MESSAGES(s30jb)

ZEM_ENGINE_LAYERS(s30jb, S30JB_ARGS)

namespace zem::s30 {

struct jump_out {
  double *a[12];  // p, delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma, vomma
};

template <kind K>
inline void jump_greeks_grid(const grid_args &g, double lambda, double gamma, const jump_out &o) {
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  for (int64_t j = 0; j < g.n; ++j) {
    const double t = g.t[j], sqrt_t = std::sqrt(t);
    const double dr = std::exp(-g.r * t);
    const double mu = lambda * t;
    const double diff2 = (1.0 - gamma) * g.sigma * g.sigma;  // (1 - jvol) sigma^2
    for (int64_t i = 0; i < g.m; ++i) {
      const double x = g.x[i];
      const double a = lns - std::log(x) + g.r * t;
      const double bound = K == kind::call ? g.s : x * dr;
      // Sums of w G (s), of (i - mu) w G (m: price, delta, gamma), and of
      // w D e / (2 sigma_i t) (e: vega, vanna, zomma).
      double s[12] = {};
      double mp = 0, md = 0, mg = 0, ep = 0, ed = 0, eg = 0;
      poisson_mixture(
          mu, bound,
          [&](double k, double w) {
            const double v = jump_vol(g.sigma, gamma, lambda, t, k);
            const bs_term b = bs_greeks<K>(g.s, x, t, sqrt_t, g.r, dr, a, v);
            const double sig_i = v / sqrt_t;
            const double ai = sig_i / g.sigma;
            s[0] += w * b.price;
            s[1] += w * b.delta;
            s[2] += w * b.gamma;
            s[3] += w * ai * b.vega;
            s[4] += w * b.theta;
            s[5] += w * b.rho;
            s[6] += w * ai * b.vanna;
            s[7] += w * b.charm;
            s[8] += w * b.speed;
            s[9] += w * b.colour;
            s[10] += w * ai * b.zomma;
            s[11] += w * ai * ai * b.vomma;
            const double km = (k - mu) * w;
            mp += km * b.price;
            md += km * b.delta;
            mg += km * b.gamma;
            // e_i / (2 sigma_i t); 0 without jumps (and where sigma_i is
            // held, the D_i are 0).
            const double e = sig_i * sig_i - diff2;
            const double f = k == 0.0 ? 0.0 : e / (2.0 * sig_i * t);
            ep += w * b.vega * f;
            ed += w * b.vanna * f;
            eg += w * b.zomma * f;
          },
          [&] { return s[0]; });
      const int64_t at = i * L.ri + j * L.cj;
      for (int q = 0; q < 12; ++q) o.a[q][at] = s[q];
      o.a[4][at] = s[4] - mp / t + ep;
      o.a[7][at] = s[7] - md / t + ed;
      o.a[9][at] = s[9] - mg / t + eg;
    }
  }
}

}  // namespace zem::s30

ZEM_INTERNAL void s30jbfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r,
                           const double *lambda, const double *jvol, double *p, const int64_t *ldp, double *delta,
                           double *gamma, double *vega, double *theta, double *rho, double *vanna, double *charm,
                           double *speed, double *colour, double *zomma, double *vomma, const int64_t *order,
                           char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, 0.0, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  if (check_jump(*lambda, *jvol, t, g.n, errbuf, ifail)) return;
  const jump_out o{{p, delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma, vomma}};
  if (g.type == kind::call)
    jump_greeks_grid<kind::call>(g, *lambda, *jvol, o);
  else
    jump_greeks_grid<kind::put>(g, *lambda, *jvol, o);
}

ZEM_API void s30jbf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *lambda, const double *jvol,
                     double *p, const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta,
                     double *rho, double *vanna, double *charm, double *speed, double *colour, double *zomma,
                     double *vomma, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30jbf", s30jb_messages);
  const int64_t order = zem::s30::col_major;
  s30jbft_(&call.en_data, calput, m, n, x, s, t, sigma, r, lambda, jvol, p, ldp, delta, gamma, vega, theta, rho,
           vanna, charm, speed, colour, zomma, vomma, &order, call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30jbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double lambda, double jvol, double p[], int64_t ldp,
                    double delta[], double gamma[], double vega[], double theta[], double rho[], double vanna[],
                    double charm[], double speed[], double colour[], double zomma[], double vomma[],
                    Zem_Fail *fail) {
  zem::c_entry call("s30jbc", s30jb_messages, fail);
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
  s30jbft_(&call.en_data, &k, &m, &n, x, &s, t, &sigma, &r, &lambda, &jvol, p, &ldp, delta, gamma, vega, theta, rho,
           vanna, charm, speed, colour, zomma, vomma, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
