// e04te: changes coefficient idxci of a linear objective to cvalue.  With
// no objective defined yet, the objective becomes linear (all other
// coefficients zero); any other kind of objective is refused.
#include <cmath>
#include <cstdint>
#include <new>

#include "e04/model.h"

inline constexpr zem::message e04te_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {3, 1011, NE_SETUP_ERROR, {"The objective function is not linear."}},
    {6, 1012, NE_INT, {"On entry, idxci = %s.", "Constraint: 1 <= idxci <= %s."},
                      {"On entry, idxci = %s", "Constraint: 1 <= idxci <= %s."}},
    {6, 1013, NE_REAL, {"On entry, cvalue = %s.", "Constraint: cvalue must be finite."},
                       {"On entry, cvalue = %s", "Constraint: cvalue must be finite."}},
};
ZEM_REGISTER_MESSAGES(e04te)

#define E04TE_ARGS(V, A, U) \
  A(void *const *, handle) V(const int64_t *, idxci) V(const double *, cvalue) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04te, E04TE_ARGS)

ZEM_INTERNAL void e04tefn_(engine_data *, void *const *handle, const int64_t *idxci, const double *cvalue,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (p->s.objective != obj_linear && p->s.objective != obj_none) return zem::fail(errbuf, ifail, 3, 1011);
  if (*idxci < 1 || *idxci > p->s.nvar) return zem::fail(errbuf, ifail, 6, 1012, *idxci, p->s.nvar);
  if (!std::isfinite(*cvalue)) return zem::fail(errbuf, ifail, 6, 1013, *cvalue);
  if (p->s.objective == obj_none) {
    try {
      std::vector<double> zero(static_cast<size_t>(p->s.nvar), 0.0);
      set_linear_objective(*p, zero.data());
    } catch (const std::bad_alloc &) {
      return zem::alloc_fail(ifail);
    }
  }
  p->c[*idxci - 1] = *cvalue;
}

ZEM_API void e04tef_(void *const *handle, const int64_t *idxci, const double *cvalue, int64_t *ifail) {
  zem::f_entry call("e04tef", e04te_messages);
  e04teft_(&call.en_data, handle, idxci, cvalue, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04tec(void *handle, int64_t idxci, double cvalue, Zem_Fail *fail) {
  zem::c_entry call("e04tec", e04te_messages, fail);
  e04teft_(&call.en_data, &handle, &idxci, &cvalue, call.errbuf, &call.status);
  call.finish();
}
