// e04ta: appends nadd new variables to the model.  They are free and
// continuous; a linear objective gets zero coefficients for them, every other
// component ignores them until it is redefined.  Stored results no longer
// fit the model and are dropped.
#include <cstdint>
#include <new>

#include "e04/model.h"

inline constexpr zem::message e04ta_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, nadd = %s.", "Constraint: nadd > 0."}},
};
ZEM_REGISTER_MESSAGES(e04ta)

#define E04TA_ARGS(V, A, U) A(void *const *, handle) V(const int64_t *, nadd) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04ta, E04TA_ARGS)

ZEM_INTERNAL void e04tafn_(engine_data *, void *const *handle, const int64_t *nadd, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*nadd <= 0 || *nadd > zem::e04::max_vars - p->s.nvar) return zem::fail(errbuf, ifail, 6, 1011, *nadd);
  try {
    zem::e04::append_vars(*p, *nadd);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  zem::e04::clear_store(*p);
}

ZEM_API void e04taf_(void *const *handle, const int64_t *nadd, int64_t *ifail) {
  zem::f_entry call("e04taf", e04ta_messages);
  e04taft_(&call.en_data, handle, nadd, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04tac(void *handle, int64_t nadd, Zem_Fail *fail) {
  zem::c_entry call("e04tac", e04ta_messages, fail);
  e04taft_(&call.en_data, &handle, &nadd, call.errbuf, &call.status);
  call.finish();
}
