// s30ba: floating-strike lookback calls and puts in the Black-Scholes-Merton
// model, for m values of the extreme so far (sm) and n expiries: the call
// pays s_T - min s at expiry, the put max s - s_T, the extreme taken over
// the option's life, sm(i) the extreme reached up to now.  The closed form
// and its stable reflection term are in s30/lookback.h; loop order and
// layout as s30aa.
// Sources: M. B. Goldman, H. B. Sosin and M. A. Gatto, Path dependent
// options: "buy at the low, sell at the high", J. Finance 34 (1979)
// 1111-1127; A. Conze and Viswanathan, Path dependent options: the case of
// lookback options, J. Finance 46 (1991) 1893-1907.
#include "s30/s30ba.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/lookback.h"

inline constexpr zem::message s30ba_messages[] = {S30_GRID_ROWS, S30_ROWS_SM};
ZEM_REGISTER_MESSAGES(s30ba)

ZEM_ENGINE_LAYERS(s30ba, S30BA_ARGS)

namespace zem::s30 {

template <kind K>
inline void lookback_grid(const grid_args &g, const double *lnsm, double *p) {
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  for (int64_t j = 0; j < g.n; ++j) {
    const lookback_expiry<double> e = lookback_terms<double>(g.s, g.t[j], g.sigma, g.r, g.q);
    double *col = p + j * L.cj;
    for (int64_t i = 0; i < g.m; ++i) col[i * L.ri] = lookback_price<K, double>(e, g.s, lns, g.x[i], lnsm[i]);
  }
}

}  // namespace zem::s30

ZEM_INTERNAL void s30bafn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *sm,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           double *p, const int64_t *ldp, const int64_t *order, char *errbuf, int64_t *ifail,
                           size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, sm, *s, t, *sigma, *r, *q, *ldp, *order};
  // sm is checked after the shared arguments: its constraint involves s.
  if (check_grid(g, false, calput, calput_len, errbuf, ifail)) return;
  if (check_sm(g.type, sm, g.m, g.s, errbuf, ifail)) return;
  std::unique_ptr<double[]> lnsm(
      static_cast<uint64_t>(g.m) <= PTRDIFF_MAX / sizeof(double) ? new (std::nothrow) double[g.m] : nullptr);
  if (!lnsm) return zem::alloc_fail(ifail);
  for (int64_t i = 0; i < g.m; ++i) lnsm[i] = std::log(sm[i]);
  if (g.type == kind::call)
    lookback_grid<kind::call>(g, lnsm.get(), p);
  else
    lookback_grid<kind::put>(g, lnsm.get(), p);
}

ZEM_API void s30baf_(const char *calput, const int64_t *m, const int64_t *n, const double *sm, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, double *p,
                     const int64_t *ldp, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30baf", s30ba_messages);
  const int64_t order = zem::s30::col_major;
  s30baft_(&call.en_data, calput, m, n, sm, s, t, sigma, r, q, p, ldp, &order, call.errbuf, &call.status,
           calput_len);
  call.finish(ifail);
}

ZEM_API void s30bac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double sm[], double s,
                    const double t[], double sigma, double r, double q, double p[], int64_t ldp, Zem_Fail *fail) {
  zem::c_entry call("s30bac", s30ba_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char k = zem::s30::kind_character(option);
  if (!k) return call.bad_param("option");
  if (!sm) return call.bad_param("sm");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30baft_(&call.en_data, &k, &m, &n, sm, &s, t, &sigma, &r, &q, p, &ldp, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
