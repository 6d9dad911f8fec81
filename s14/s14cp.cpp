// s14cp: ln B(a, b) element by element (s14/beta.h); a bad element is
// reported in ivalid and the loop goes on.
#include "s14/s14cp.h"

#include <cmath>

#include "frame/constants.h"
#include "s14/beta.h"

inline constexpr zem::message s14cp_messages[] = {
    {1, 1001, NW_IVALID, {"On entry, at least one value of a or b was invalid.", "Check ivalid for more information."}},
    {2, 1002, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
};
ZEM_REGISTER_MESSAGES(s14cp)

ZEM_ENGINE_LAYERS(s14cp, S14CP_ARGS)

ZEM_INTERNAL void s14cpfn_(engine_data *, const int64_t *n, const double *a, const double *b, double *f,
                           int64_t *ivalid, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  const int64_t m = *n;
  if (m < 0) return zem::fail(errbuf, ifail, 2, 1002, m);
  bool any = false;
  for (int64_t i = 0; i < m; ++i) {
    const double ai = a[i], bi = b[i];
    int64_t code = 0;
    double v;
    if (ai <= 0.0 || bi <= 0.0) {
      code = 1;
      v = 0.0;
    } else if (ai != ai || bi != bi) {
      v = std::nan("");
    } else if (std::isinf(ai) || std::isinf(bi)) {
      code = 2;
      v = -zem::max_double;
    } else {
      v = zem::s14::log_beta(ai, bi);
      if (!(v >= -zem::max_double)) {  // both parameters near the largest double
        code = 2;
        v = -zem::max_double;
      }
    }
    f[i] = v;
    ivalid[i] = code;
    any |= code != 0;
  }
  if (any) zem::fail(errbuf, ifail, 1, 1001);
}

ZEM_API void s14cpf_(const int64_t *n, const double *a, const double *b, double *f, int64_t *ivalid,
                     int64_t *ifail) {
  zem::f_entry call("s14cpf", s14cp_messages);
  s14cpft_(&call.en_data, n, a, b, f, ivalid, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void s14cpc(int64_t n, const double a[], const double b[], double f[], int64_t ivalid[], Zem_Fail *fail) {
  zem::c_entry call("s14cpc", s14cp_messages, fail);
  if (n > 0) {
    if (!a) return call.bad_param("a");
    if (!b) return call.bad_param("b");
    if (!f) return call.bad_param("f");
    if (!ivalid) return call.bad_param("ivalid");
  }
  s14cpft_(&call.en_data, &n, a, b, f, ivalid, call.errbuf, &call.status);
  call.finish();
}
