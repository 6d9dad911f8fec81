// s14ap: ln Gamma of each element of a vector, with the checks and substitute
// values of s14ab element by element; the common classes of arguments are
// evaluated a vector of four or eight at a time (the loop shared with
// s14an, s14/gamma_vector.h), each element bit for bit what s14ab gives.  A bad
// element is reported in ivalid and the loop goes on.
#include "s14/s14ap.h"

#include "s14/gamma_vector.h"

inline constexpr zem::message s14ap_messages[] = {
    {1, 1001, NW_IVALID, {"On entry, at least one value of x was invalid.", "Check ivalid for more information."}},
    {2, 1002, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
};
ZEM_REGISTER_MESSAGES(s14ap)

ZEM_ENGINE_LAYERS(s14ap, S14AP_ARGS)

ZEM_INTERNAL void s14apfn_(engine_data *, const int64_t *n, const double *x, double *f, int64_t *ivalid, char *errbuf,
                           int64_t *ifail) {
  *ifail = 0;
  const int64_t m = *n;
  if (m < 0) return zem::fail(errbuf, ifail, 2, 1002, m);
  const bool any = zem::s14::lgamma_vector(m, x, f, ivalid);
  if (any) zem::fail(errbuf, ifail, 1, 1001);
}

ZEM_API void s14apf_(const int64_t *n, const double *x, double *f, int64_t *ivalid, int64_t *ifail) {
  zem::f_entry call("s14apf", s14ap_messages);
  s14apft_(&call.en_data, n, x, f, ivalid, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void s14apc(int64_t n, const double x[], double f[], int64_t ivalid[], Zem_Fail *fail) {
  zem::c_entry call("s14apc", s14ap_messages, fail);
  if (n > 0) {
    if (!x) return call.bad_param("x");
    if (!f) return call.bad_param("f");
    if (!ivalid) return call.bad_param("ivalid");
  }
  s14apft_(&call.en_data, &n, x, f, ivalid, call.errbuf, &call.status);
  call.finish();
}
