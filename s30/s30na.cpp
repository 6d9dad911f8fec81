// s30na: European call and put prices in Heston's stochastic-volatility
// model, each by one adaptive quadrature of the pricing integral
//
//   call = s e^{-qt} - (A/pi) I,   put = x e^{-rt} - (A/pi) I,
//   I = integral_0^inf Re[e^{iuk} M(1/2 + iu)] / (u^2 + 1/4) du,
//
// A = sqrt(s x) e^{-(r+q)t/2}, k = ln s - ln x + (r - q) t, M the moment
// function of the log price (s30/heston.h gives the model, the form of M
// free of the branch-cut problem, and the quadrature).
//
// Accuracy target: the engine's error estimate of I at most 1e-11, i.e. a
// price error of at most 3.2e-12 sqrt(s x) e^{-(r+q)t/2}.  Where the engine
// cannot meet it within 200 subintervals (very short expiries with far
// strikes, extreme sigmav), every price is still returned and the call ends
// with the warning NE_CONVERGENCE "specified accuracy"; where an integral is
// not a finite number (parameters so extreme that M overflows) the call ends
// with NE_ACCURACY, the prices computed so far in p.
//
// Loop order and layout as s30aa.  Bounds: those of s30aa for x, s, t, r and
// q; sigmav, kappa, eta > 0, var0 >= 0, |corr| <= 1, 0 <= grisk <= 1 and
// grisk (1 - grisk) sigmav^2 <= kappa^2.
#include "s30/s30na.h"

#include <cstdint>

#include "s30/heston.h"

inline constexpr zem::message s30na_messages[] = {
    S30_GRID_ROWS, S30_HESTON_ROWS,
    {18, 1037, NE_CONVERGENCE,
     {"Quadrature has not converged to the specified accuracy.",
      "However, the result should be a reasonable approximation."}},
};
ZEM_REGISTER_MESSAGES(s30na)

ZEM_ENGINE_LAYERS(s30na, S30NA_ARGS)

namespace zem::s30 {

// The pricing integral I for one strike and expiry.
inline quad_result heston_integral(const heston_period &P, double v0, double k) {
  auto f = [&](const double *u, int64_t cnt, double *fv) -> int64_t {
    for (int64_t i = 0; i < cnt; ++i) {
      const cplx e = heston_log_m(P, v0, u[i]) + cplx(0.0, u[i] * k);
      const double a = std::exp(e.real());
      fv[i] = a == 0.0 ? 0.0 : a * std::cos(e.imag()) / (u[i] * u[i] + 0.25);
    }
    return 0;
  };
  return integrate_half_line(f, tol_integral);
}

}  // namespace zem::s30

ZEM_INTERNAL void s30nafn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigmav, const double *kappa,
                           const double *corr, const double *var0, const double *eta, const double *grisk,
                           const double *r, const double *q, double *p, const int64_t *ldp, const int64_t *order,
                           char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  // The grid's checks (sigma is not an argument: a valid stand-in).
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, 1.0, *r, *q, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  const heston_args h{*sigmav, *kappa, *corr, *var0, *eta, *grisk};
  if (check_heston(h, errbuf, ifail)) return;

  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  bool missed = false;
  for (int64_t j = 0; j < g.n; ++j) {
    const double tj = t[j];
    const heston_period P = pricing_period(h, tj);
    const double sdq = g.s * std::exp(-g.q * tj), dr = std::exp(-g.r * tj);
    const double half = std::exp(-0.5 * (g.r + g.q) * tj);
    for (int64_t i = 0; i < g.m; ++i) {
      const double k = lns - std::log(x[i]) + (g.r - g.q) * tj;
      const quad_result I = heston_integral(P, h.var0, k);
      if (!I.finite) return zem::fail(errbuf, ifail, 20, 1038);
      missed = missed || I.code != 0 || !(I.abserr <= tol_integral);
      const double a = std::sqrt(g.s) * std::sqrt(x[i]) * half / M_PI;
      const double v = (g.type == kind::call ? sdq : x[i] * dr) - a * I.value;
      p[i * L.ri + j * L.cj] = v;
    }
  }
  if (missed) zem::fail(errbuf, ifail, 18, 1037);
}

ZEM_API void s30naf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigmav, const double *kappa, const double *corr,
                     const double *var0, const double *eta, const double *grisk, const double *r, const double *q,
                     double *p, const int64_t *ldp, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30naf", s30na_messages);
  const int64_t order = zem::s30::col_major;
  s30naft_(&call.en_data, calput, m, n, x, s, t, sigmav, kappa, corr, var0, eta, grisk, r, q, p, ldp, &order,
           call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30nac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigmav, double kappa, double corr, double var0, double eta,
                    double grisk, double r, double q, double p[], int64_t ldp, Zem_Fail *fail) {
  zem::c_entry call("s30nac", s30na_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30naft_(&call.en_data, &k, &m, &n, x, &s, t, &sigmav, &kappa, &corr, &var0, &eta, &grisk, &r, &q, p, &ldp, &ord,
           call.errbuf, &call.status, 1);
  call.finish();
}
