// e04ra: creates a problem handle for nvar variables.  The body starts from
// its template, the variables are appended as e04ta appends them, the
// option set is filled with its defaults, and only then does the caller's
// handle receive the header's address: a failure leaves it untouched.
#include <cstdint>
#include <new>

#include "e04/model.h"

inline constexpr zem::message e04ra_messages[] = {
    {6, 1011, NE_INT, {"On entry, nvar = %s.", "Constraint: nvar >= 0."}},
};
ZEM_REGISTER_MESSAGES(e04ra)

#define E04RA_ARGS(V, A, U) A(void **, handle) V(const int64_t *, nvar) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04ra, E04RA_ARGS)

ZEM_INTERNAL void e04rafn_(engine_data *, void **handle, const int64_t *nvar, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  if (*nvar < 0) return zem::fail(errbuf, ifail, 6, 1011, *nvar);
  if (*nvar > max_vars) return zem::alloc_fail(ifail);
  problem *p = new (std::nothrow) problem;
  if (!p) return zem::alloc_fail(ifail);
  try {
    append_vars(*p, *nvar);
  } catch (const std::bad_alloc &) {
    delete p;
    return zem::alloc_fail(ifail);
  }
  void *h = attach_options(*p) ? new_header(p) : nullptr;
  if (!h) {
    release_options(*p);
    delete p;
    return zem::alloc_fail(ifail);
  }
  *handle = h;
}

ZEM_API void e04raf_(void **handle, const int64_t *nvar, int64_t *ifail) {
  zem::f_entry call("e04raf", e04ra_messages);
  e04raft_(&call.en_data, handle, nvar, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rac(void **handle, int64_t nvar, Zem_Fail *fail) {
  zem::c_entry call("e04rac", e04ra_messages, fail);
  if (!handle) return call.bad_param("handle");
  e04raft_(&call.en_data, handle, &nvar, call.errbuf, &call.status);
  call.finish();
}
