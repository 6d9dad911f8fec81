// s30ca: cash-or-nothing binary options in the Black-Scholes-Merton model:
// the option pays the fixed amount k at expiry t if the spot then lies above
// the strike x (call) or below it (put):
//
//   call = k e^{-rt} Phi(d2),   put = k e^{-rt} Phi(-d2),
//
// d2 as in s30aa (docs/s30aa.md), Phi(y) = erfc(-y c)/2.  Same loop order,
// bounds and layout as s30aa; each price is one product of a half-erfc with
// the per-expiry factor 0.5 k e^{-rt}, so there is no cancellation: the
// relative accuracy is that of erfc at the rounded argument.
// Source: M. Rubinstein and E. Reiner, Unscrambling the binary code, Risk 4
// (1991) 75-83; E. G. Haug, The Complete Guide to Option Pricing Formulas,
// 2nd ed. (2007), section 4.19.
#include "s30/s30ca.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/binary.h"

inline constexpr zem::message s30ca_messages[] = {
    S30_GRID_ROWS,
    S30_ROWS_K,
};
ZEM_REGISTER_MESSAGES(s30ca)

ZEM_ENGINE_LAYERS(s30ca, S30CA_ARGS)

ZEM_INTERNAL void s30cafn_(engine_data *, const char *calput, const int64_t *m, const int64_t *n, const double *x,
                           const double *s, const double *t, const double *sigma, const double *r, const double *q,
                           const double *k, double *p, const int64_t *ldp, const int64_t *order, char *errbuf,
                           int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, *q, *ldp, *order};
  // k is checked after the shared arguments (ldp among them).
  binary_grid(g, *k, calput, calput_len, errbuf, ifail, [p](const binary_point &b) { p[b.at] = b.price; });
}

ZEM_API void s30caf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
                     const double *t, const double *sigma, const double *r, const double *q, const double *k,
                     double *p, const int64_t *ldp, int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30caf", s30ca_messages);
  const int64_t order = zem::s30::col_major;
  s30caft_(&call.en_data, calput, m, n, x, s, t, sigma, r, q, k, p, ldp, &order, call.errbuf, &call.status,
           calput_len);
  call.finish(ifail);
}

ZEM_API void s30cac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
                    const double t[], double sigma, double r, double q, double k, double p[], int64_t ldp,
                    Zem_Fail *fail) {
  zem::c_entry call("s30cac", s30ca_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char kc = zem::s30::kind_character(option);
  if (!kc) return call.bad_param("option");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30caft_(&call.en_data, &kc, &m, &n, x, &s, t, &sigma, &r, &q, &k, p, &ldp, &ord, call.errbuf, &call.status, 1);
  call.finish();
}
