// e04rg: declares a nonlinear objective, evaluated by the solver's user
// functions, with the sparsity of its gradient (idxfd strictly ascending).
// Replaces any objective defined before.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rg_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, nnzfd = %s.", "Constraint: nnzfd >= 0."}},
    E04_ROW_RANGE(8, 1012, "idxfd", "n"),
    E04_ROW_INCREASING(8, 1013, "idxfd"),
};
ZEM_REGISTER_MESSAGES(e04rg)

#define E04RG_ARGS(V, A, U) \
  A(void *const *, handle) V(const int64_t *, nnzfd) A(const int64_t *, idxfd) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rg, E04RG_ARGS)

ZEM_INTERNAL void e04rgfn_(engine_data *, void *const *handle, const int64_t *nnzfd, const int64_t *idxfd,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*nnzfd < 0) return zem::fail(errbuf, ifail, 6, 1011, *nnzfd);
  const checker ck{errbuf, ifail};
  if (!ck.range(idxfd, *nnzfd, 1, p->s.nvar, 8, 1012) || !ck.increasing(idxfd, *nnzfd, 8, 1013)) return;
  try {
    std::vector<int64_t> idx(idxfd, idxfd + *nnzfd);
    clear_objective(*p);
    p->idxfd = std::move(idx);
    p->s.objective = obj_nonlinear;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rgf_(void *const *handle, const int64_t *nnzfd, const int64_t idxfd[], int64_t *ifail) {
  zem::f_entry call("e04rgf", e04rg_messages);
  e04rgft_(&call.en_data, handle, nnzfd, idxfd, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rgc(void *handle, int64_t nnzfd, const int64_t idxfd[], Zem_Fail *fail) {
  zem::c_entry call("e04rgc", e04rg_messages, fail);
  if (nnzfd > 0 && !idxfd) return call.bad_param("idxfd");
  e04rgft_(&call.en_data, &handle, &nnzfd, idxfd, call.errbuf, &call.status);
  call.finish();
}
