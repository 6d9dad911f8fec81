// e04rt: a quadratic objective in factored form  0.5 ||F x||^2 + r'x  with F
// of mf rows given in coordinate form (any element pattern, no repeats) and
// r sparse (idxr strictly ascending).  Replaces any objective defined before.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rt_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, mf = %s.", "Constraint: mf > 0."}},
    {6, 1012, NE_INT, {"On entry, nnzf = %s.", "Constraint: nnzf >= 0."}},
    {6, 1013, NE_INT, {"On entry, nnzr = %s.", "Constraint: nnzr >= 0."}},
    E04_ROW_RANGE(8, 1014, "irowf", "mf"),
    E04_ROW_RANGE(8, 1015, "icolf", "n"),
    E04_ROW_RANGE(8, 1016, "idxr", "n"),
    E04_ROW_INCREASING(8, 1017, "idxr"),
    E04_ROW_UNIQUE(8, 1018),
    E04_ROW_FINITE(8, 1019, "f"),
    E04_ROW_FINITE(8, 1020, "r"),
};
ZEM_REGISTER_MESSAGES(e04rt)

#define E04RT_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) V(const int64_t *, mf) V(const int64_t *, nnzf) A(const int64_t *, irowf) \
  A(const int64_t *, icolf) A(const double *, f) V(const int64_t *, nnzr) A(const int64_t *, idxr)   \
  A(const double *, r) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rt, E04RT_ARGS)

ZEM_INTERNAL void e04rtfn_(engine_data *, void *const *handle, const int64_t *mf, const int64_t *nnzf,
                           const int64_t *irowf, const int64_t *icolf, const double *f, const int64_t *nnzr,
                           const int64_t *idxr, const double *r, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*mf <= 0 || *mf > max_vars) return zem::fail(errbuf, ifail, 6, 1011, *mf);
  if (*nnzf < 0) return zem::fail(errbuf, ifail, 6, 1012, *nnzf);
  if (*nnzr < 0) return zem::fail(errbuf, ifail, 6, 1013, *nnzr);
  const checker ck{errbuf, ifail};
  const int64_t n = p->s.nvar;
  try {
    if (!ck.range(irowf, *nnzf, 1, *mf, 8, 1014) || !ck.range(icolf, *nnzf, 1, n, 8, 1015) ||
        !ck.range(idxr, *nnzr, 1, n, 8, 1016) || !ck.increasing(idxr, *nnzr, 8, 1017) ||
        !ck.unique(irowf, icolf, *nnzf, 8, 1018) || !ck.finite(f, *nnzf, 8, 1019) || !ck.finite(r, *nnzr, 8, 1020))
      return;
    coo fm{{irowf, irowf + *nnzf}, {icolf, icolf + *nnzf}, {f, f + *nnzf}};
    sparse_vec rv{{idxr, idxr + *nnzr}, {r, r + *nnzr}};
    clear_objective(*p);
    p->f = std::move(fm);
    p->cs = std::move(rv);
    p->mf = *mf;
    p->s.factored = true;
    p->s.objective = obj_quadratic;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rtf_(void *const *handle, const int64_t *mf, const int64_t *nnzf, const int64_t irowf[],
                     const int64_t icolf[], const double f[], const int64_t *nnzr, const int64_t idxr[],
                     const double r[], int64_t *ifail) {
  zem::f_entry call("e04rtf", e04rt_messages);
  e04rtft_(&call.en_data, handle, mf, nnzf, irowf, icolf, f, nnzr, idxr, r, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rtc(void *handle, int64_t mf, int64_t nnzf, const int64_t irowf[], const int64_t icolf[],
                    const double f[], int64_t nnzr, const int64_t idxr[], const double r[], Zem_Fail *fail) {
  zem::c_entry call("e04rtc", e04rt_messages, fail);
  if (nnzf > 0 && (!irowf || !icolf || !f)) return call.bad_param(!irowf ? "irowf" : !icolf ? "icolf" : "f");
  if (nnzr > 0 && (!idxr || !r)) return call.bad_param(!idxr ? "idxr" : "r");
  e04rtft_(&call.en_data, &handle, &mf, &nnzf, irowf, icolf, f, &nnzr, idxr, r, call.errbuf, &call.status);
  call.finish();
}
