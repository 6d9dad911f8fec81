// s30ja: European call and put prices in Merton's jump-diffusion model
// (jumps of mean relative size zero), over a grid of strikes and expiries:
//
//   p = sum_{i >= 0} e^{-lambda t} (lambda t)^i / i!  B(s, x, t, r, sigma_i),
//   sigma_i^2 = (1 - jvol) sigma^2 + i jvol sigma^2 / (lambda t),
//
// B the Black-Scholes price without dividends.  The model, the summation from
// the mode of the Poisson weights and the truncation rule are described in
// s30/jump.h.  Loop order and layout as s30aa: expiries outside, strikes
// inside, p(i, j) at i ri + j cj.  Bounds: those of s30aa (q = 0), then
// lambda > 0, 0 <= jvol < 1 and lambda t(j) <= 2^24 for every j.
#include "s30/s30ja.h"

#include <cstdint>

#include "s30/jump.h"

inline constexpr zem::message s30ja_messages[] = {S30_GRID_ROWS, S30_JUMP_ROWS};
ZEM_REGISTER_MESSAGES(s30ja)

ZEM_ENGINE_LAYERS(s30ja, S30JA_ARGS)

namespace zem::s30 {

template <kind K>
inline void jump_grid(const grid_args &g, double lambda, double gamma, double *p) {
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  for (int64_t j = 0; j < g.n; ++j) {
    const double t = g.t[j];
    const double dr = std::exp(-g.r * t);
    const double mu = lambda * t;
    const double hs = 0.5 * g.s;
    for (int64_t i = 0; i < g.m; ++i) {
      const double x = g.x[i];
      const double a = lns - std::log(x) + g.r * t;
      const double hk = 0.5 * x * dr;
      const double bound = K == kind::call ? g.s : x * dr;
      double sum = 0.0;
      poisson_mixture(
          mu, bound,
          [&](double k, double w) { sum += w * bs_price<K>(a, jump_vol(g.sigma, gamma, lambda, t, k), hs, hk); },
          [&] { return sum; });
      p[i * L.ri + j * L.cj] = sum;
    }
  }
}

}  // namespace zem::s30

ZEM_INTERNAL void s30jafn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r,
                           const double *lambda, const double *jvol, double *p, const int64_t *ldp,
                           const int64_t *order, char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, 0.0, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  if (check_jump(*lambda, *jvol, t, g.n, errbuf, ifail)) return;
  if (g.type == kind::call)
    jump_grid<kind::call>(g, *lambda, *jvol, p);
  else
    jump_grid<kind::put>(g, *lambda, *jvol, p);
}

ZEM_API void s30jaf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *lambda, const double *jvol,
                     double *p, const int64_t *ldp, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30jaf", s30ja_messages);
  const int64_t order = zem::s30::col_major;
  s30jaft_(&call.en_data, calput, m, n, x, s, t, sigma, r, lambda, jvol, p, ldp, &order, call.errbuf, &call.status,
           calput_len);
  call.finish(ifail);
}

ZEM_API void s30jac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double lambda, double jvol, double p[], int64_t ldp,
                    Zem_Fail *fail) {
  zem::c_entry call("s30jac", s30ja_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30jaft_(&call.en_data, &k, &m, &n, x, &s, t, &sigma, &r, &lambda, &jvol, p, &ldp, &ord, call.errbuf,
           &call.status, 1);
  call.finish();
}
