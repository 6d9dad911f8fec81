// e04rj: linear constraints  bl <= Bx <= bu.  idlc = 0 appends a block of
// nclin rows (B given in coordinate form, rows 1..nclin of the block) and
// returns in idlc the identifier of the block's last row: the rows are
// idlc-nclin+1 .. idlc.  idlc > 0 replaces that single row (nclin = 1,
// irowb all 1).  Rows are numbered across blocks in the order they were
// added and keep their numbers when rows are deleted.
#include <algorithm>
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rj_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, idlc = %s.", "Constraint: idlc >= 0."}},
    {6, 1012, NE_INT, {"On entry, idlc = %s.", "Constraint: idlc <= %s."},
                      {"On entry, idlc = %s", "Constraint: idlc <= %s."}},
    {6, 1013, NE_INT, {"On entry, nclin = %s.", "Constraint: nclin >= 0."}},
    {6, 1014, NE_INT_2, {"On entry, idlc = %s and", "nclin = %s.", "Constraint: if idlc > 0, nclin = 1."},
                        {"On entry, idlc = %s and", "nclin = %s", "Constraint: if idlc > 0, nclin = 1."}},
    {6, 1015, NE_INT, {"On entry, nnzb = %s.", "Constraint: nnzb >= 0."}},
    {7, 1016, NE_DELETED, {"On entry, comp = LC and idx[i-1] = %s.", "This component has been deleted."},
                          {"On entry, comp = LC and idx(i) = %s", "This component has been deleted."}},
    E04_ROW_RANGE(8, 1017, "irowb", "nclin"),
    E04_ROW_RANGE(8, 1018, "icolb", "n"),
    E04_ROW_UNIQUE(8, 1019),
    E04_ROW_FINITE(8, 1020, "b"),
    E04_ROWS_BOUNDS(10, 1021, "bl", "bu", "j"),
};
ZEM_REGISTER_MESSAGES(e04rj)

#define E04RJ_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) V(const int64_t *, nclin) A(const double *, bl) A(const double *, bu)     \
  V(const int64_t *, nnzb) A(const int64_t *, irowb) A(const int64_t *, icolb) A(const double *, b)  \
  V(int64_t *, idlc) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rj, E04RJ_ARGS)

ZEM_INTERNAL void e04rjfn_(engine_data *, void *const *handle, const int64_t *nclin, const double *bl,
                           const double *bu, const int64_t *nnzb, const int64_t *irowb, const int64_t *icolb,
                           const double *b, int64_t *idlc, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const int64_t id = *idlc, m = p->nlc();
  if (id < 0) return zem::fail(errbuf, ifail, 6, 1011, id);
  if (id > m) return zem::fail(errbuf, ifail, 6, 1012, id, m);
  if (*nclin < 0 || *nclin > max_vars) return zem::fail(errbuf, ifail, 6, 1013, *nclin);
  if (id > 0 && *nclin != 1) return zem::fail(errbuf, ifail, 6, 1014, id, *nclin);
  if (*nnzb < 0) return zem::fail(errbuf, ifail, 6, 1015, *nnzb);
  if (id > 0 && p->lc_deleted[id - 1]) return zem::fail(errbuf, ifail, 7, 1016, id);
  const checker ck{errbuf, ifail};
  try {
    if (!ck.range(irowb, *nnzb, 1, *nclin, 8, 1017) || !ck.range(icolb, *nnzb, 1, p->s.nvar, 8, 1018) ||
        !ck.unique(irowb, icolb, *nnzb, 8, 1019) || !ck.finite(b, *nnzb, 8, 1020) ||
        !ck.bounds(bl, bu, *nclin, infinite_bound_size(*p), 10, 1021))
      return;
    add_linear_rows(*p, id, *nclin, bl, bu, *nnzb, irowb, icolb, b);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  *idlc = id > 0 ? id : p->nlc();
}

ZEM_API void e04rjf_(void *const *handle, const int64_t *nclin, const double bl[], const double bu[],
                     const int64_t *nnzb, const int64_t irowb[], const int64_t icolb[], const double b[],
                     int64_t *idlc, int64_t *ifail) {
  zem::f_entry call("e04rjf", e04rj_messages);
  e04rjft_(&call.en_data, handle, nclin, bl, bu, nnzb, irowb, icolb, b, idlc, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rjc(void *handle, int64_t nclin, const double bl[], const double bu[], int64_t nnzb,
                    const int64_t irowb[], const int64_t icolb[], const double b[], int64_t *idlc, Zem_Fail *fail) {
  zem::c_entry call("e04rjc", e04rj_messages, fail);
  if (nclin > 0 && !bl) return call.bad_param("bl");
  if (nclin > 0 && !bu) return call.bad_param("bu");
  if (nnzb > 0 && (!irowb || !icolb || !b)) return call.bad_param(!irowb ? "irowb" : !icolb ? "icolb" : "b");
  if (!idlc) return call.bad_param("idlc");
  e04rjft_(&call.en_data, &handle, &nclin, bl, bu, &nnzb, irowb, icolb, b, idlc, call.errbuf, &call.status);
  call.finish();
}
