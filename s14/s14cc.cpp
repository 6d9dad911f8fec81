// s14cc: the regularised incomplete beta function I_x(a, b) and its
// complement, a, b >= 0, 0 <= x <= 1 (the continued fraction and the
// factor of s14/beta.h), with the domain checks first.
#include "s14/s14cc.h"

#include "s14/beta.h"

inline constexpr zem::message s14cc_messages[] = {
    {1, 1001, NE_REAL, {"On entry, a = %s.", "Constraint: a >= 0.0."}},
    {1, 1002, NE_REAL, {"On entry, b = %s.", "Constraint: b >= 0.0."}},
    {1, 1003, NE_REAL, {"On entry, x = %s.", "Constraint: 0.0 <= x <= 1.0."}},
    {2, 1004, NE_REAL_2, {"On entry, a and b were zero.", "Constraint: a or b must be nonzero."}},
    {2, 1005, NE_REAL_2, {"On entry, x and a were zero.", "Constraint: x or a must be nonzero."}},
    {2, 1006, NE_REAL_2, {"On entry, 1.0-x and b were zero.", "Constraint: 1.0-x or b must be nonzero."}},
};
ZEM_REGISTER_MESSAGES(s14cc)

ZEM_ENGINE_LAYERS(s14cc, S14CC_ARGS)

ZEM_INTERNAL void s14ccfn_(engine_data *, const double *a, const double *b, const double *x, double *w, double *w1,
                           char *errbuf, int64_t *ifail) {
  *ifail = 0;
  int which = 0;
  const int code = zem::s14::incomplete_beta_checked(*a, *b, *x, *w, *w1, which);
  switch (which) {
    case 0: return;
    case 1: return zem::fail(errbuf, ifail, code, 1001, *a);
    case 2: return zem::fail(errbuf, ifail, code, 1002, *b);
    case 3: return zem::fail(errbuf, ifail, code, 1003, *x);
    default: return zem::fail(errbuf, ifail, code, 1000 + which);
  }
}

ZEM_API void s14ccf_(const double *a, const double *b, const double *x, double *w, double *w1, int64_t *ifail) {
  zem::f_entry call("s14ccf", s14cc_messages);
  s14ccft_(&call.en_data, a, b, x, w, w1, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void s14ccc(double a, double b, double x, double *w, double *w1, Zem_Fail *fail) {
  zem::c_entry call("s14ccc", s14cc_messages, fail);
  if (!w) return call.bad_param("w");
  if (!w1) return call.bad_param("w1");
  s14ccft_(&call.en_data, &a, &b, &x, w, w1, call.errbuf, &call.status);
  call.finish();
}
