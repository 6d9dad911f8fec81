// e04rl: the sparsity structure of a second-derivative matrix, upper
// triangle: idf = 0 the objective's Hessian, idf = i > 0 the Hessian of
// nonlinear constraint i, idf = -1 the Hessian of the Lagrangian (objective
// and all constraints together).  A second call for the same idf replaces it.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rl_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {2, 1007, NE_PHASE, {"Neither nonlinear objective nor nonlinear constraints are present.",
                         "The structure of the Hessian cannot be defined."}},
    {2, 1008, NE_PHASE, {"No nonlinear objective has been defined, its Hessian cannot be set."}},
    {6, 1011, NE_INT, {"On entry, idf = %s.", "Constraint: -1 <= idf <= %s."},
                      {"On entry, idf = %s", "Constraint: -1 <= idf <= %s."}},
    {6, 1012, NE_INT, {"On entry, nnzh = %s.", "Constraint: nnzh > 0."}},
    E04_ROW_RANGE(8, 1013, "irowh", "n"),
    E04_ROW_RANGE(8, 1014, "icolh", "n"),
    E04_ROW_UPPER(8, 1015, "irowh", "icolh"),
    E04_ROW_UNIQUE(8, 1016),
};
ZEM_REGISTER_MESSAGES(e04rl)

#define E04RL_ARGS(V, A, U)                                                                           \
  A(void *const *, handle) V(const int64_t *, idf) V(const int64_t *, nnzh) A(const int64_t *, irowh) \
  A(const int64_t *, icolh) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rl, E04RL_ARGS)

ZEM_INTERNAL void e04rlfn_(engine_data *, void *const *handle, const int64_t *idf, const int64_t *nnzh,
                           const int64_t *irowh, const int64_t *icolh, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const bool nlobj = p->s.objective == obj_nonlinear;
  if (!nlobj && p->s.ncnln == 0) return zem::fail(errbuf, ifail, 2, 1007);
  if (*idf < -1 || *idf > p->s.ncnln) return zem::fail(errbuf, ifail, 6, 1011, *idf, p->s.ncnln);
  if (*idf == 0 && !nlobj) return zem::fail(errbuf, ifail, 2, 1008);
  if (*nnzh <= 0) return zem::fail(errbuf, ifail, 6, 1012, *nnzh);
  const checker ck{errbuf, ifail};
  try {
    const int64_t n = p->s.nvar;
    if (!ck.range(irowh, *nnzh, 1, n, 8, 1013) || !ck.range(icolh, *nnzh, 1, n, 8, 1014) ||
        !ck.upper(irowh, icolh, *nnzh, 8, 1015) || !ck.unique(irowh, icolh, *nnzh, 8, 1016))
      return;
    if (p->hess.size() < static_cast<size_t>(p->s.ncnln) + 2) {
      p->hess.resize(static_cast<size_t>(p->s.ncnln) + 2);
      p->hess_defined.resize(static_cast<size_t>(p->s.ncnln) + 2, 0);
    }
    coo hm{{irowh, irowh + *nnzh}, {icolh, icolh + *nnzh}, {}};
    p->hess[*idf + 1] = std::move(hm);
    p->hess_defined[*idf + 1] = 1;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rlf_(void *const *handle, const int64_t *idf, const int64_t *nnzh, const int64_t irowh[],
                     const int64_t icolh[], int64_t *ifail) {
  zem::f_entry call("e04rlf", e04rl_messages);
  e04rlft_(&call.en_data, handle, idf, nnzh, irowh, icolh, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rlc(void *handle, int64_t idf, int64_t nnzh, const int64_t irowh[], const int64_t icolh[],
                    Zem_Fail *fail) {
  zem::c_entry call("e04rlc", e04rl_messages, fail);
  if (nnzh > 0 && !irowh) return call.bad_param("irowh");
  if (nnzh > 0 && !icolh) return call.bad_param("icolh");
  e04rlft_(&call.en_data, &handle, &idf, &nnzh, irowh, icolh, call.errbuf, &call.status);
  call.finish();
}
