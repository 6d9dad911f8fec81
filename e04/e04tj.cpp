// e04tj: changes element (idlc, icolbj) of the linear constraint matrix to
// bij; an element not yet present is added (a zero value is stored like
// any other, so the structure does not change under the caller).
#include <cmath>
#include <cstdint>
#include <new>

#include "e04/model.h"

inline constexpr zem::message e04tj_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {3, 1011, NE_SETUP_ERROR, {"There are no linear constraints in the problem."}},
    {6, 1012, NE_INT, {"On entry, idlc = %s.", "Constraint: 1 <= idlc <= %s."},
                      {"On entry, idlc = %s", "Constraint: 1 <= idlc <= %s."}},
    {7, 1013, NE_DELETED, {"On entry, comp = LC and idx[i-1] = %s.", "This component has been deleted."},
                          {"On entry, comp = LC and idx(i) = %s", "This component has been deleted."}},
    {6, 1014, NE_INT, {"On entry, icolbj = %s.", "Constraint: 1 <= icolbj <= %s."},
                      {"On entry, icolbj = %s", "Constraint: 1 <= icolbj <= %s."}},
    {6, 1015, NE_REAL, {"On entry, bij = %s.", "Constraint: bij must be finite."},
                       {"On entry, bij = %s", "Constraint: bij must be finite."}},
};
ZEM_REGISTER_MESSAGES(e04tj)

#define E04TJ_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) V(const int64_t *, idlc) V(const int64_t *, icolbj) V(const double *, bij) \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04tj, E04TJ_ARGS)

ZEM_INTERNAL void e04tjfn_(engine_data *, void *const *handle, const int64_t *idlc, const int64_t *icolbj,
                           const double *bij, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const int64_t m = p->nlc();
  if (m == 0) return zem::fail(errbuf, ifail, 3, 1011);
  if (*idlc < 1 || *idlc > m) return zem::fail(errbuf, ifail, 6, 1012, *idlc, m);
  if (p->lc_deleted[*idlc - 1]) return zem::fail(errbuf, ifail, 7, 1013, *idlc);
  if (*icolbj < 1 || *icolbj > p->s.nvar) return zem::fail(errbuf, ifail, 6, 1014, *icolbj, p->s.nvar);
  if (!std::isfinite(*bij)) return zem::fail(errbuf, ifail, 6, 1015, *bij);
  for (size_t e = 0; e < p->lc.size(); ++e)
    if (p->lc.row[e] == *idlc && p->lc.col[e] == *icolbj) {
      p->lc.val[e] = *bij;
      return;
    }
  try {
    p->lc.row.reserve(p->lc.size() + 1);
    p->lc.col.reserve(p->lc.size() + 1);
    p->lc.val.reserve(p->lc.size() + 1);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  p->lc.row.push_back(*idlc);
  p->lc.col.push_back(*icolbj);
  p->lc.val.push_back(*bij);
}

ZEM_API void e04tjf_(void *const *handle, const int64_t *idlc, const int64_t *icolbj, const double *bij,
                     int64_t *ifail) {
  zem::f_entry call("e04tjf", e04tj_messages);
  e04tjft_(&call.en_data, handle, idlc, icolbj, bij, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04tjc(void *handle, int64_t idlc, int64_t icolbj, double bij, Zem_Fail *fail) {
  zem::c_entry call("e04tjc", e04tj_messages, fail);
  e04tjft_(&call.en_data, &handle, &idlc, &icolbj, &bij, call.errbuf, &call.status);
  call.finish();
}
