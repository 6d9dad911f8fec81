// s30bb: floating-strike lookback options (as s30ba) with delta, gamma,
// vega, theta and rho.  The closed form of s30/lookback.h is evaluated on
// dual numbers (s30/exotic.h) seeded with the spot, the volatility, the rate
// and the expiry: each sensitivity is the exact derivative of the arithmetic
// that forms the price, and the price is bit for bit that of s30ba.
//   delta dp/ds, gamma d2p/ds2, vega dp/dsigma, theta -dp/dt (calendar time
//   passing, sm held), rho dp/dr (q held).
// r = q is refused, as this routine's interface documents (the published
// sensitivities divide by r - q); s30ba prices it.  Where a sensitivity is
// not a number (only at the very ends of the accepted ranges) the routine
// returns status 20 (NE_ACCURACY) with everything else written.
#include "s30/s30bb.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <new>

#include "s30/lookback.h"

inline constexpr zem::message s30bb_messages[] = {
    S30_GRID_ROWS, S30_ROWS_SM,
    {8, 1023, NE_REAL_2,
     {"On entry, r = %s and q = %s.", "Constraint: abs(r-q) > 10*eps*MAX(abs(r),1),",
      "where eps is the machine precision."},
     {"On entry, r = %s and q = %s", "Constraint: abs(r-q) > 10*eps*MAX(abs(r),1),",
      "where eps is the machine precision."}},
    {20, 1038, NE_ACCURACY, {"Solution cannot be computed accurately. Check values of input arguments."}},
};
ZEM_REGISTER_MESSAGES(s30bb)

ZEM_ENGINE_LAYERS(s30bb, S30BB_ARGS)

namespace zem::s30 {

struct lookback_out {
  double *p, *delta, *gamma, *vega, *theta, *rho;
};

// Returns whether some sensitivity is not a number: at the very ends of
// the accepted ranges (sigma near 2^-511, with the drift terms 2(r - q)/
// sigma^2 beyond the double range) two infinite parts of a derivative may
// meet.  The prices are numbers always.
template <kind K>
inline bool lookback_greeks_grid(const grid_args &g, const double *lnsm, const lookback_out &o) {
  bool undefined = false;
  const layout L = make_layout(g.order, g.ld);
  dual s(g.s), sigma(g.sigma), r(g.r);
  s.g[0] = 1.0;
  sigma.g[1] = 1.0;
  r.g[2] = 1.0;
  const dual lns = log_(s);
  for (int64_t j = 0; j < g.n; ++j) {
    dual t(g.t[j]);
    t.g[3] = 1.0;
    const lookback_expiry<dual> e = lookback_terms<dual>(s, t, sigma, r, g.q);
    for (int64_t i = 0; i < g.m; ++i) {
      const dual v = lookback_price<K, dual>(e, s, lns, g.x[i], lnsm[i]);
      const int64_t at = i * L.ri + j * L.cj;
      o.p[at] = v.v;
      o.delta[at] = v.g[0];
      o.gamma[at] = v.h;
      o.vega[at] = v.g[1];
      o.theta[at] = -v.g[3];
      o.rho[at] = v.g[2];
      undefined |= std::isnan(v.g[0]) || std::isnan(v.h) || std::isnan(v.g[1]) || std::isnan(v.g[3]) ||
                   std::isnan(v.g[2]);
    }
  }
  return undefined;
}

}  // namespace zem::s30

ZEM_INTERNAL void s30bbfn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *sm,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           double *p, const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta,
                           double *rho, const int64_t *order, char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, sm, *s, t, *sigma, *r, *q, *ldp, *order};
  if (check_grid(g, false, calput, calput_len, errbuf, ifail)) return;
  if (check_sm(g.type, sm, g.m, g.s, errbuf, ifail)) return;
  constexpr double eps = std::numeric_limits<double>::epsilon() / 2;  // 2^-53, as x02aj
  if (!(std::fabs(g.r - g.q) > 10.0 * eps * std::fmax(std::fabs(g.r), 1.0)))
    return zem::fail(errbuf, ifail, 8, 1023, g.r, g.q);
  std::unique_ptr<double[]> lnsm(
      static_cast<uint64_t>(g.m) <= PTRDIFF_MAX / sizeof(double) ? new (std::nothrow) double[g.m] : nullptr);
  if (!lnsm) return zem::alloc_fail(ifail);
  for (int64_t i = 0; i < g.m; ++i) lnsm[i] = std::log(sm[i]);
  const lookback_out o{p, delta, gamma, vega, theta, rho};
  const bool undefined = g.type == kind::call ? lookback_greeks_grid<kind::call>(g, lnsm.get(), o)
                                              : lookback_greeks_grid<kind::put>(g, lnsm.get(), o);
  // Every price and every other sensitivity stands; the status says that
  // some sensitivity is NaN.
  if (undefined) zem::fail(errbuf, ifail, 20, 1038);
}

ZEM_API void s30bbf_(const char *calput, const int64_t *m, const int64_t *n, const double *sm, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, double *p,
                     const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta, double *rho,
                     int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30bbf", s30bb_messages);
  const int64_t order = zem::s30::col_major;
  s30bbft_(&call.en_data, calput, m, n, sm, s, t, sigma, r, q, p, ldp, delta, gamma, vega, theta, rho, &order,
           call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30bbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double sm[], double s,
                    const double t[], double sigma, double r, double q, double p[], int64_t ldp, double delta[],
                    double gamma[], double vega[], double theta[], double rho[], Zem_Fail *fail) {
  zem::c_entry call("s30bbc", s30bb_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!sm) return call.bad_param("sm");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  const char *names[] = {"delta", "gamma", "vega", "theta", "rho"};
  const double *arrays[] = {delta, gamma, vega, theta, rho};
  for (int a = 0; a < 5; ++a)
    if (!arrays[a]) return call.bad_param(names[a]);
  s30bbft_(&call.en_data, &k, &m, &n, sm, &s, t, &sigma, &r, &q, p, &ldp, delta, gamma, vega, theta, rho, &ord,
           call.errbuf, &call.status, 1);
  call.finish();
}
