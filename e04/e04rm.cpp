// e04rm: a nonlinear least-squares objective  0.5 sum_i r_i(x)^2  with nres
// residuals, evaluated by the solver's user functions.  isparse = 0: the
// first derivatives are dense (irowrd, icolrd not read); isparse = 1: their
// sparsity is given, element (irowrd[i], icolrd[i]) = dr_icol/dx_irow.
// Replaces any objective defined before.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rm_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, nres = %s.", "Constraint: nres >= 0."}},
    {6, 1012, NE_INT, {"On entry, isparse = %s.", "Constraint: isparse = 0 or 1."}},
    {6, 1013, NE_INT, {"On entry, nnzrd = %s.", "Constraint: nnzrd > 0."}},
    E04_ROW_RANGE(8, 1014, "irowrd", "n"),
    E04_ROW_RANGE(8, 1015, "icolrd", "nres"),
    E04_ROW_UNIQUE(8, 1016),
};
ZEM_REGISTER_MESSAGES(e04rm)

#define E04RM_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) V(const int64_t *, nres) V(const int64_t *, isparse) V(const int64_t *, nnzrd) \
  A(const int64_t *, irowrd) A(const int64_t *, icolrd) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rm, E04RM_ARGS)

ZEM_INTERNAL void e04rmfn_(engine_data *, void *const *handle, const int64_t *nres, const int64_t *isparse,
                           const int64_t *nnzrd, const int64_t *irowrd, const int64_t *icolrd, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*nres < 0 || *nres > max_vars) return zem::fail(errbuf, ifail, 6, 1011, *nres);
  if (*isparse != 0 && *isparse != 1) return zem::fail(errbuf, ifail, 6, 1012, *isparse);
  const bool sparse = *isparse == 1;
  if (sparse && *nnzrd <= 0) return zem::fail(errbuf, ifail, 6, 1013, *nnzrd);
  const checker ck{errbuf, ifail};
  try {
    if (sparse && (!ck.range(irowrd, *nnzrd, 1, p->s.nvar, 8, 1014) ||
                   !ck.range(icolrd, *nnzrd, 1, *nres, 8, 1015) || !ck.unique(irowrd, icolrd, *nnzrd, 8, 1016)))
      return;
    coo rd;
    if (sparse) {
      rd.row.assign(irowrd, irowrd + *nnzrd);
      rd.col.assign(icolrd, icolrd + *nnzrd);
    }
    clear_objective(*p);
    p->rd = std::move(rd);
    p->s.nres = *nres;
    p->s.isparse = *isparse;
    p->s.objective = obj_nlls;
    p->nls_deleted = false;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rmf_(void *const *handle, const int64_t *nres, const int64_t *isparse, const int64_t *nnzrd,
                     const int64_t irowrd[], const int64_t icolrd[], int64_t *ifail) {
  zem::f_entry call("e04rmf", e04rm_messages);
  e04rmft_(&call.en_data, handle, nres, isparse, nnzrd, irowrd, icolrd, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rmc(void *handle, int64_t nres, int64_t isparse, int64_t nnzrd, const int64_t irowrd[],
                    const int64_t icolrd[], Zem_Fail *fail) {
  zem::c_entry call("e04rmc", e04rm_messages, fail);
  if (isparse == 1 && nnzrd > 0 && !irowrd) return call.bad_param("irowrd");
  if (isparse == 1 && nnzrd > 0 && !icolrd) return call.bad_param("icolrd");
  e04rmft_(&call.en_data, &handle, &nres, &isparse, &nnzrd, irowrd, icolrd, call.errbuf, &call.status);
  call.finish();
}
