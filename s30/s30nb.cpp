// s30nb: European prices in Heston's stochastic-volatility model (as s30na)
// with five sensitivities, each by its own integral of the same kind.
//
// With Z(u) = e^{iuk} M(w), w = 1/2 + iu, A = sqrt(s x) e^{-(r+q)t/2},
// B = d ln M / d var0 and Q = d ln M / dt (s30/heston.h), differentiating
// A e^{iuk} = x e^{-rt} e^{wk} under the integral gives
//
//   price  call s e^{-qt} - (A/pi) I0          put  x e^{-rt} - (A/pi) I0
//   delta  call e^{-qt} - A/(pi s) I1          put  -A/(pi s) I1
//   gamma  A/(pi s^2) I2
//   vega   -2 sqrt(var0) A/pi I3                (d/d sqrt(var0))
//   theta  call q s e^{-qt} + (A/pi) I4        put  (A/pi) I4 + r x e^{-rt}
//   rho    call t A/pi I5                      put  t A/pi I5 - t x e^{-rt}
//
//   I0 = int Re[Z/(w(1-w))],  I1 = int Re[Z/(1-w)],  I2 = int Re[Z],
//   I3 = int Re[Z B/(w(1-w))], I4 = int Re[Z (-r + w(r-q) + Q)/(w(1-w))],
//   I5 = int Re[Z/w],  all over (0, inf) in u.
//
// Each integral has the target of s30na (1e-11 absolute); if one misses it
// every output is still set and the call ends with the warning
// NE_CONVERGENCE, worded "required accuracy".
#include "s30/s30nb.h"

#include <cstdint>

#include "s30/heston.h"

inline constexpr zem::message s30nb_messages[] = {
    S30_GRID_ROWS, S30_HESTON_ROWS,
    {18, 1037, NE_CONVERGENCE,
     {"Quadrature has not converged to the required accuracy.",
      "However, the result should be a reasonable approximation."}},
};
ZEM_REGISTER_MESSAGES(s30nb)

ZEM_ENGINE_LAYERS(s30nb, S30NB_ARGS)

namespace zem::s30 {

// Integral `which` (0 to 5 as above) for one strike and expiry.
inline quad_result heston_sens_integral(const heston_period &P, double v0, double k, double r, double q,
                                        int which) {
  auto f = [&](const double *u, int64_t cnt, double *fv) -> int64_t {
    for (int64_t i = 0; i < cnt; ++i) {
      const riccati R = period_step(P, u[i], cplx(0.0), which == 4);
      const cplx e = R.A + R.B * v0 + cplx(0.0, u[i] * k);
      const double a = std::exp(e.real());
      if (a == 0.0) {
        fv[i] = 0.0;
        continue;
      }
      const cplx Z = a * cplx(std::cos(e.imag()), std::sin(e.imag()));
      const cplx w(0.5, u[i]);
      const double ww = u[i] * u[i] + 0.25;
      cplx v;
      switch (which) {
        case 0: v = Z / ww; break;
        case 1: v = Z / (1.0 - w); break;
        case 2: v = Z; break;
        case 3: v = Z * R.B / ww; break;
        case 4: v = Z * (-r + w * (r - q) + R.dA + R.dB * v0) / ww; break;
        default: v = Z / w; break;
      }
      fv[i] = v.real();
    }
    return 0;
  };
  return integrate_half_line(f, tol_integral);
}

}  // namespace zem::s30

ZEM_INTERNAL void s30nbfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigmav, const double *kappa,
                           const double *corr, const double *var0, const double *eta, const double *grisk,
                           const double *r, const double *q, double *p, const int64_t *ldp, double *delta,
                           double *gamma, double *vega, double *theta, double *rho, const int64_t *order,
                           char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, 1.0, *r, *q, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  const heston_args h{*sigmav, *kappa, *corr, *var0, *eta, *grisk};
  if (check_heston(h, errbuf, ifail)) return;

  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  const bool call = g.type == kind::call;
  bool missed = false;
  for (int64_t j = 0; j < g.n; ++j) {
    const double tj = t[j];
    const heston_period P = pricing_period(h, tj);
    const double dq = std::exp(-g.q * tj), dr = std::exp(-g.r * tj);
    const double half = std::exp(-0.5 * (g.r + g.q) * tj);
    for (int64_t i = 0; i < g.m; ++i) {
      const double k = lns - std::log(x[i]) + (g.r - g.q) * tj;
      double I[6];
      for (int w = 0; w < 6; ++w) {
        const quad_result R = heston_sens_integral(P, h.var0, k, g.r, g.q, w);
        if (!R.finite) return zem::fail(errbuf, ifail, 20, 1038);
        missed = missed || R.code != 0 || !(R.abserr <= tol_integral);
        I[w] = R.value;
      }
      const double a = std::sqrt(g.s) * std::sqrt(x[i]) * half / M_PI;
      const double xdr = x[i] * dr;
      const int64_t at = i * L.ri + j * L.cj;
      p[at] = (call ? g.s * dq : xdr) - a * I[0];
      delta[at] = (call ? dq : 0.0) - a / g.s * I[1];
      gamma[at] = a / g.s / g.s * I[2];
      vega[at] = -2.0 * std::sqrt(h.var0) * a * I[3];
      theta[at] = (call ? g.q * g.s * dq : g.r * xdr) + a * I[4];
      rho[at] = tj * a * I[5] - (call ? 0.0 : tj * xdr);
    }
  }
  if (missed) zem::fail(errbuf, ifail, 18, 1037);
}

ZEM_API void s30nbf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigmav, const double *kappa, const double *corr,
                     const double *var0, const double *eta, const double *grisk, const double *r, const double *q,
                     double *p, const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta,
                     double *rho, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30nbf", s30nb_messages);
  const int64_t order = zem::s30::col_major;
  s30nbft_(&call.en_data, calput, m, n, x, s, t, sigmav, kappa, corr, var0, eta, grisk, r, q, p, ldp, delta, gamma,
           vega, theta, rho, &order, call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30nbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigmav, double kappa, double corr, double var0, double eta,
                    double grisk, double r, double q, double p[], int64_t ldp, double delta[], double gamma[],
                    double vega[], double theta[], double rho[], Zem_Fail *fail) {
  zem::c_entry call("s30nbc", s30nb_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  const char *names[] = {"delta", "gamma", "vega", "theta", "rho"};
  const double *arrays[] = {delta, gamma, vega, theta, rho};
  for (int a = 0; a < 5; ++a)
    if (!arrays[a]) return call.bad_param(names[a]);
  s30nbft_(&call.en_data, &k, &m, &n, x, &s, t, &sigmav, &kappa, &corr, &var0, &eta, &grisk, &r, &q, p, &ldp, delta,
           gamma, vega, theta, rho, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
