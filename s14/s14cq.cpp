// s14cq: I_x(a, b) and 1 - I_x(a, b) element by element, with the checks
// and substitutes of s14cc (s14/beta.h); a bad element is reported in ivalid
// and the loop goes on.
#include "s14/s14cq.h"

#include "s14/beta.h"

inline constexpr zem::message s14cq_messages[] = {
    {1, 1001, NW_IVALID, {"On entry, at least one argument had an invalid value.", "Check ivalid for more information."}},
    {2, 1002, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
};
ZEM_REGISTER_MESSAGES(s14cq)

ZEM_ENGINE_LAYERS(s14cq, S14CQ_ARGS)

ZEM_INTERNAL void s14cqfn_(engine_data *, const int64_t *n, const double *a, const double *b, const double *x,
                           double *w, double *w1, int64_t *ivalid, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  const int64_t m = *n;
  if (m < 0) return zem::fail(errbuf, ifail, 2, 1002, m);
  bool any = false;
  for (int64_t i = 0; i < m; ++i) {
    int which = 0;
    double wi = 0.0, w1i = 0.0;
    const int code = zem::s14::incomplete_beta_checked(a[i], b[i], x[i], wi, w1i, which);
    w[i] = wi;
    w1[i] = w1i;
    ivalid[i] = code;
    any |= code != 0;
  }
  if (any) zem::fail(errbuf, ifail, 1, 1001);
}

ZEM_API void s14cqf_(const int64_t *n, const double *a, const double *b, const double *x, double *w, double *w1,
                     int64_t *ivalid, int64_t *ifail) {
  zem::f_entry call("s14cqf", s14cq_messages);
  s14cqft_(&call.en_data, n, a, b, x, w, w1, ivalid, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void s14cqc(int64_t n, const double a[], const double b[], const double x[], double w[], double w1[],
                    int64_t ivalid[], Zem_Fail *fail) {
  zem::c_entry call("s14cqc", s14cq_messages, fail);
  if (n > 0) {
    if (!a) return call.bad_param("a");
    if (!b) return call.bad_param("b");
    if (!x) return call.bad_param("x");
    if (!w) return call.bad_param("w");
    if (!w1) return call.bad_param("w1");
    if (!ivalid) return call.bad_param("ivalid");
  }
  s14cqft_(&call.en_data, &n, a, b, x, w, w1, ivalid, call.errbuf, &call.status);
  call.finish();
}
