// The floating-strike lookback closed form shared by s30ba (on doubles) and
// s30bb (on dual numbers, for the sensitivities), and the checks of sm.
//
// With b = r - q, v = sigma sqrt(t), d = 2 b sqrt(t) / sigma and
// a1 = (ln s - ln sm + t (b + sigma^2/2)) / v, a2 = a1 - v:
//
//   call = s e^{-qt} Phi(a1) - sm e^{-rt} Phi(a2) + s e^{-qt} v L(a1, d)
//   put  = sm e^{-rt} Phi(-a2) - s e^{-qt} Phi(-a1) + s e^{-qt} v L(-a1, -d)
//
// L(z, d) = phi(z) (M(z - d) - M(z)) / d (s30/exotic.h) is the published
// reflection term s e^{-rt} (sigma^2 / 2b) [(s/sm)^{-2b/sigma^2} Phi(.) -
// e^{bt} Phi(-a1)] rewritten through the identity
// (s/sm)^{-2b/sigma^2} phi(a1 - d) = e^{bt} phi(a1): a divided difference
// whose limit at b = 0 is H(z) = phi(z) - z Q(z), so r = q needs no special
// case and r near q loses nothing.
#pragma once

#include "s30/exotic.h"

namespace zem::s30 {

template <class D> struct lookback_expiry {
  D sdq, hsdq, hdr, drift, vol, d, nu, bt, rt;
};

template <class D>
inline lookback_expiry<D> lookback_terms(const D &s, const D &t, const D &sigma, const D &r, double q) {
  lookback_expiry<D> e;
  const D sqrt_t = sqrt_(t);
  e.sdq = s * exp_(-q * t);
  e.hsdq = 0.5 * e.sdq;
  e.hdr = 0.5 * exp_(-r * t);
  e.drift = t * ((r - q) + sigma * sigma / 2.0);
  e.vol = sigma * sqrt_t;
  e.d = 2.0 * (r - q) * sqrt_t / sigma;
  e.nu = 2.0 * (r - q) / sigma / sigma;  // 2b/sigma^2, possibly infinite
  e.bt = (r - q) * t;
  e.rt = r * t;
  return e;
}

template <kind K, class D>
inline D lookback_price(const lookback_expiry<D> &e, const D &s, const D &lns, double sm, double lnsm) {
  const D ls = lns - lnsm;
  const D a1 = (ls + e.drift) / e.vol;
  // The exponent -(nu ln(s/sm) + r t) <= 0 of the reflection term with its
  // factor e^{-qt} (0 * inf is avoided where s = sm and nu overflowed).
  const D ex = val(ls) == 0.0 && !std::isfinite(val(e.nu)) ? -e.rt : -(e.nu * ls + e.rt);
  const D a2 = a1 - e.vol;
  const double hm = sm;
  if constexpr (K == kind::call) {
    return e.hsdq * erfc_(-a1 * c) - (hm * e.hdr) * erfc_(-a2 * c) + e.vol * lookback_kernel(a1, e.d, s, e.sdq, ex);
  } else {
    return (hm * e.hdr) * erfc_(a2 * c) - e.hsdq * erfc_(a1 * c) + e.vol * lookback_kernel(-a1, -e.d, s, e.sdq, ex);
  }
}

// sm(i) within [lo, hi], and at most s (call) or at least s (put): status
// 4 (the position of sm), details 1020 (bounds), 1021 (put), 1022 (call).
inline bool check_sm(kind type, const double *sm, int64_t m, double s, char *errbuf, int64_t *ifail) {
  if (const int64_t i = first_outside(sm, m, lo, hi); i >= 0)
    return fail_index(errbuf, ifail, 4, 1020, i, sm[i], lo, hi), true;
  for (int64_t i = 0; i < m; ++i) {
    if (type == kind::put && !(sm[i] >= s)) return fail_index(errbuf, ifail, 4, 1021, i, sm[i], s), true;
    if (type == kind::call && !(sm[i] <= s)) return fail_index(errbuf, ifail, 4, 1022, i, sm[i], s), true;
  }
  return false;
}

}  // namespace zem::s30

#define S30_ROWS_SM                                                                                          \
  {4, 1020, NE_REAL_ARRAY, {"On entry, sm[%s] = %s.", "Constraint: %s <= sm[i] <= %s for", "all i."},       \
   {"On entry, sm(%s+1) = %s", "Constraint: sm(i) >= %s and", "sm(i) <= %s for all i."}},                              \
  {4, 1021, NE_REAL_ARRAY,                                                                                   \
   {"On entry with a put option,", "sm[%s] = %s.", "Constraint: for put options, sm[i] >= %s for all i."},   \
   {"On entry with a put option,", "sm(%s+1) = %s", "Constraint: for put options, sm(i) >= %s for all i."}}, \
  {4, 1022, NE_REAL_ARRAY,                                                                                   \
   {"On entry with a call option,", "sm[%s] = %s.", "Constraint: for call options, sm[i] <= %s for all i."}, \
   {"On entry with a call option,", "sm(%s+1) = %s", "Constraint: for call options, sm(i) <= %s for all i."}}
