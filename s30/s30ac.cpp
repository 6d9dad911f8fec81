// s30ac: European call and put prices element by element, with the closed
// form and arithmetic of s30aa (docs/s30aa.md), each element with its own
// option type and parameters.  A bad element does not stop the call: it gets
// p(k) = 0.0 and in ivalid(k) the number of its first argument out of range
// (1 calput, 2 x, 3 s, 4 t, 5 sigma, 6 r, 7 q, the bounds of s30aa), and the
// call ends with the warning NW_IVALID after every element was done.
#include "s30/s30ac.h"

#include <cstdint>
#include <new>
#include <vector>

#include "s30/grid.h"

inline constexpr zem::message s30ac_messages[] = {
    {1, 1001, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}, {"On entry, n = %s", "Constraint: n >= 0."}},
    {2, 1002, NW_IVALID, {"On entry at least one input argument was invalid.", "Check ivalid for more information."}},
};
ZEM_REGISTER_MESSAGES(s30ac)

ZEM_ENGINE_LAYERS(s30ac, S30AC_ARGS)

namespace zem::s30 {

// The number of the first argument of one element that is out of range, or 0.
inline int64_t element_check(kind k, double x, double s, double t, double sigma, double r, double q) {
  if (k == kind::invalid) return 1;
  if (!(x >= lo && x <= hi)) return 2;
  if (!(s >= lo && s <= hi)) return 3;
  if (!(t >= lo && t <= hi)) return 4;
  if (!(sigma >= lo && sigma <= par)) return 5;
  if (!(r >= 0.0 && r <= par)) return 6;
  if (!(q >= 0.0 && q <= par)) return 7;
  return 0;
}

// One price by the steps of s30aa.
inline double european_price(kind k, double x, double s, double t, double sigma, double r, double q) {
  const expiry_terms e = per_expiry(s, t, sigma, r, q);
  const double hs = 0.5 * e.sdq;
  const double hk = x * (0.5 * e.dr);
  const double d1 = (std::log(s) - std::log(x) + e.drift) / e.vol;
  const double d2 = d1 - e.vol;
  if (k == kind::call) return hs * zem::s15::erfc(-d1 * c) - hk * zem::s15::erfc(-d2 * c);
  return -(hs * zem::s15::erfc(d1 * c) - hk * zem::s15::erfc(d2 * c));
}

}  // namespace zem::s30

ZEM_INTERNAL void s30acfn_(engine_data *, const char *calput, const int64_t *n, const double *x, const double *s,
                           const double *t, const double *sigma, const double *r, const double *q, double *p,
                           int64_t *ivalid, char *errbuf, int64_t *ifail, size_t calput_len) {
  using namespace zem::s30;
  *ifail = 0;
  if (!(*n >= 0)) return zem::fail(errbuf, ifail, 1, 1001, *n);
  bool any_bad = false;
  for (int64_t k = 0; k < *n; ++k) {
    const kind type = calput_len ? read_kind(calput + k * calput_len, calput_len) : kind::invalid;
    ivalid[k] = element_check(type, x[k], s[k], t[k], sigma[k], r[k], q[k]);
    if (ivalid[k] != 0) {
      any_bad = true;
      p[k] = 0.0;
      continue;
    }
    p[k] = european_price(type, x[k], s[k], t[k], sigma[k], r[k], q[k]);
  }
  if (any_bad) zem::fail(errbuf, ifail, 2, 1002);
}

ZEM_API void s30acf_(const char *calput, const int64_t *n, const double *x, const double *s, const double *t,
                     const double *sigma, const double *r, const double *q, double *p, int64_t *ivalid,
                     int64_t *ifail, size_t calput_len) {
  zem::f_entry call("s30acf", s30ac_messages);
  s30acft_(&call.en_data, calput, n, x, s, t, sigma, r, q, p, ivalid, call.errbuf, &call.status, calput_len);
  call.finish(ifail);
}

ZEM_API void s30acc(const Zem_OptionType option[], int64_t n, const double x[], const double s[], const double t[],
                    const double sigma[], const double r[], const double q[], double p[], int64_t ivalid[],
                    Zem_Fail *fail) {
  zem::c_entry call("s30acc", s30ac_messages, fail);
  if (n > 0) {
    const void *arrays[] = {option, x, s, t, sigma, r, q, p, ivalid};
    const char *names[] = {"option", "x", "s", "t", "sigma", "r", "q", "p", "ivalid"};
    for (int a = 0; a < 9; ++a)
      if (!arrays[a]) return call.bad_param(names[a]);
  }
  // The engine reads the option types as characters: one per element, '?'
  // for a value that is not a member (that element's ivalid is 1).
  std::vector<char> kinds;
  try {
    kinds.resize(n > 0 ? static_cast<size_t>(n) : 1);
  } catch (...) {
    call.status = zem::status_alloc_fail;
    return call.finish();
  }
  for (int64_t k = 0; k < n; ++k) {
    const char c = zem::s30::kind_character(option[k]);
    kinds[k] = c ? c : '?';
  }
  s30acft_(&call.en_data, kinds.data(), &n, x, s, t, sigma, r, q, p, ivalid, call.errbuf, &call.status, 1);
  call.finish();
}
