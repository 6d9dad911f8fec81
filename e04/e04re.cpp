// e04re: a linear objective c'x with dense coefficients cvec.  Replaces any
// objective defined before.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04re_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    ZEM_E04_REF_MATCH_ROW(5, 1011),
    E04_ROW_FINITE(8, 1012, "cvec"),
};
ZEM_REGISTER_MESSAGES(e04re)

#define E04RE_ARGS(V, A, U) \
  A(void *const *, handle) V(const int64_t *, nvar) A(const double *, cvec) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04re, E04RE_ARGS)

ZEM_INTERNAL void e04refn_(engine_data *, void *const *handle, const int64_t *nvar, const double *cvec, char *errbuf,
                           int64_t *ifail) {
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*nvar != p->s.nvar) return zem::fail(errbuf, ifail, 5, 1011, *nvar, p->s.nvar);
  const zem::e04::checker ck{errbuf, ifail};
  if (!ck.finite(cvec, *nvar, 8, 1012)) return;
  try {
    zem::e04::set_linear_objective(*p, cvec);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04ref_(void *const *handle, const int64_t *nvar, const double cvec[], int64_t *ifail) {
  zem::f_entry call("e04ref", e04re_messages);
  e04reft_(&call.en_data, handle, nvar, cvec, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rec(void *handle, int64_t nvar, const double cvec[], Zem_Fail *fail) {
  zem::c_entry call("e04rec", e04re_messages, fail);
  if (nvar > 0 && !cvec) return call.bad_param("cvec");
  e04reft_(&call.en_data, &handle, &nvar, cvec, call.errbuf, &call.status);
  call.finish();
}
