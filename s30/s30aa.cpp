// s30aa: European call and put prices in the Black-Scholes-Merton model with
// a continuous dividend yield, for every strike x(i) and expiry t(j):
//
//   d1 = (ln s - ln x + t (r - q + sigma^2/2)) / (sigma sqrt(t)),
//   d2 = d1 - sigma sqrt(t),
//   call = s e^{-qt} Phi(d1) - x e^{-rt} Phi(d2),
//   put  = x e^{-rt} Phi(-d2) - s e^{-qt} Phi(-d1),
//
// with Phi(y) = erfc(-y c)/2, c = 0.7071067811865475.
//
// Loop order and arithmetic, fixed: expiries outside, strikes inside; per
// expiry the factors e^{-qt}, e^{-rt}, the drift t((r - q) + sigma^2/2) and
// the volatility term sigma sqrt(t); per strike ln x (taken once per strike
// for the whole grid, and subtracted from ln s, never formed as ln(s/x):
// the two logarithms are exact to half a unit each, while s/x would first
// round the ratio), then one product of each half-erfc with its factor
// 0.5 s e^{-qt} or 0.5 x e^{-rt}.  A put is the negated difference of the
// same two products with erfc(+d c).  Going through erfc keeps the relative
// accuracy of deep out-of-the-money prices: no term is formed as 1 - Phi.
#include "s30/s30aa.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/grid.h"

inline constexpr zem::message s30aa_messages[] = {S30_GRID_ROWS};
ZEM_REGISTER_MESSAGES(s30aa)

ZEM_ENGINE_LAYERS(s30aa, S30AA_ARGS)

namespace zem::s30 {

// The price loop of s30aa, over checked arguments.  lnx holds ln x(i).
template <kind K>
inline void european_grid(const grid_args &g, const double *lnx, double *p) {
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  for (int64_t j = 0; j < g.n; ++j) {
    const expiry_terms e = per_expiry(g.s, g.t[j], g.sigma, g.r, g.q);
    const double hs = 0.5 * e.sdq;  // 0.5 s e^{-qt}
    const double hr = 0.5 * e.dr;   // 0.5 e^{-rt}
    double *col = p + j * L.cj;
    for (int64_t i = 0; i < g.m; ++i) {
      const double d1 = (lns - lnx[i] + e.drift) / e.vol;
      const double d2 = d1 - e.vol;
      const double hk = g.x[i] * hr;  // 0.5 x e^{-rt}
      double v;
      if constexpr (K == kind::call)
        v = hs * zem::s15::erfc(-d1 * c) - hk * zem::s15::erfc(-d2 * c);
      else
        v = -(hs * zem::s15::erfc(d1 * c) - hk * zem::s15::erfc(d2 * c));
      col[i * L.ri] = v;
    }
  }
}

}  // namespace zem::s30

ZEM_INTERNAL void s30aafn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           double *p, const int64_t *ldp, const int64_t *order, char *errbuf, int64_t *ifail,
                           size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, *q, *ldp, *order};
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;

  // ln x(i) once for all expiries.
  std::unique_ptr<double[]> lnx(
      static_cast<uint64_t>(g.m) <= PTRDIFF_MAX / sizeof(double) ? new (std::nothrow) double[g.m] : nullptr);
  if (!lnx) return zem::alloc_fail(ifail);
  for (int64_t i = 0; i < g.m; ++i) lnx[i] = std::log(x[i]);

  if (g.type == kind::call)
    european_grid<kind::call>(g, lnx.get(), p);
  else
    european_grid<kind::put>(g, lnx.get(), p);
}

ZEM_API void s30aaf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, double *p,
                     const int64_t *ldp, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30aaf", s30aa_messages);
  const int64_t order = zem::s30::col_major;
  s30aaft_(&call.en_data, calput, m, n, x, s, t, sigma, r, q, p, ldp, &order, call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30aac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double q, double p[], int64_t ldp, Zem_Fail *fail) {
  zem::c_entry call("s30aac", s30aa_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30aaft_(&call.en_data, &k, &m, &n, x, &s, t, &sigma, &r, &q, p, &ldp, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
