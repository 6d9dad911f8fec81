// e04rh: simple bounds bl <= x <= bu of all variables.  A bound at or
// beyond "Infinite Bound Size" in magnitude means no bound.  A second call
// replaces the bounds.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rh_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    ZEM_E04_REF_MATCH_ROW(5, 1011),
    E04_ROWS_BOUNDS(10, 1021, "bl", "bu", "j"),
};
ZEM_REGISTER_MESSAGES(e04rh)

#define E04RH_ARGS(V, A, U) \
  A(void *const *, handle) V(const int64_t *, nvar) A(const double *, bl) A(const double *, bu) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rh, E04RH_ARGS)

ZEM_INTERNAL void e04rhfn_(engine_data *, void *const *handle, const int64_t *nvar, const double *bl, const double *bu,
                           char *errbuf, int64_t *ifail) {
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*nvar != p->s.nvar) return zem::fail(errbuf, ifail, 5, 1011, *nvar, p->s.nvar);
  const zem::e04::checker ck{errbuf, ifail};
  if (!ck.bounds(bl, bu, *nvar, zem::e04::infinite_bound_size(*p), 10, 1021)) return;
  p->bl.assign(bl, bl + *nvar);
  p->bu.assign(bu, bu + *nvar);
  p->s.bounds_defined = true;
}

ZEM_API void e04rhf_(void *const *handle, const int64_t *nvar, const double bl[], const double bu[], int64_t *ifail) {
  zem::f_entry call("e04rhf", e04rh_messages);
  e04rhft_(&call.en_data, handle, nvar, bl, bu, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rhc(void *handle, int64_t nvar, const double bl[], const double bu[], Zem_Fail *fail) {
  zem::c_entry call("e04rhc", e04rh_messages, fail);
  if (nvar > 0 && !bl) return call.bad_param("bl");
  if (nvar > 0 && !bu) return call.bad_param("bu");
  e04rhft_(&call.en_data, &handle, &nvar, bl, bu, call.errbuf, &call.status);
  call.finish();
}
