// e04rf: a quadratic objective  c'x + 0.5 x'Hx  with c sparse (idxc
// strictly ascending) and H symmetric, given by its upper triangle.  With
// nnzh = 0 the objective is linear.  Replaces any objective defined before.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rf_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, nnzc = %s.", "Constraint: nnzc >= 0."}},
    {6, 1012, NE_INT, {"On entry, nnzh = %s.", "Constraint: nnzh >= 0."}},
    E04_ROW_RANGE(8, 1013, "idxc", "n"),
    E04_ROW_RANGE(8, 1014, "irowh", "n"),
    E04_ROW_RANGE(8, 1015, "icolh", "n"),
    E04_ROW_UPPER(8, 1016, "irowh", "icolh"),
    E04_ROW_INCREASING(8, 1017, "idxc"),
    E04_ROW_UNIQUE(8, 1018),
    E04_ROW_FINITE(8, 1019, "c"),
    E04_ROW_FINITE(8, 1020, "h"),
};
ZEM_REGISTER_MESSAGES(e04rf)

#define E04RF_ARGS(V, A, U)                                                                           \
  A(void *const *, handle) V(const int64_t *, nnzc) A(const int64_t *, idxc) A(const double *, c)     \
  V(const int64_t *, nnzh) A(const int64_t *, irowh) A(const int64_t *, icolh) A(const double *, h)   \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rf, E04RF_ARGS)

ZEM_INTERNAL void e04rffn_(engine_data *, void *const *handle, const int64_t *nnzc, const int64_t *idxc,
                           const double *c, const int64_t *nnzh, const int64_t *irowh, const int64_t *icolh,
                           const double *h, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const int64_t n = p->s.nvar;
  if (*nnzc < 0) return zem::fail(errbuf, ifail, 6, 1011, *nnzc);
  if (*nnzh < 0) return zem::fail(errbuf, ifail, 6, 1012, *nnzh);
  const checker ck{errbuf, ifail};
  try {
    if (!ck.range(idxc, *nnzc, 1, n, 8, 1013) || !ck.range(irowh, *nnzh, 1, n, 8, 1014) ||
        !ck.range(icolh, *nnzh, 1, n, 8, 1015) || !ck.upper(irowh, icolh, *nnzh, 8, 1016) ||
        !ck.increasing(idxc, *nnzc, 8, 1017) || !ck.unique(irowh, icolh, *nnzh, 8, 1018) ||
        !ck.finite(c, *nnzc, 8, 1019) || !ck.finite(h, *nnzh, 8, 1020))
      return;
    if (*nnzh == 0) {
      std::vector<double> dense(static_cast<size_t>(n), 0.0);
      for (int64_t i = 0; i < *nnzc; ++i) dense[idxc[i] - 1] = c[i];
      set_linear_objective(*p, dense.data());
      return;
    }
    sparse_vec cs{{idxc, idxc + *nnzc}, {c, c + *nnzc}};
    coo hm{{irowh, irowh + *nnzh}, {icolh, icolh + *nnzh}, {h, h + *nnzh}};
    clear_objective(*p);
    p->cs = std::move(cs);
    p->h = std::move(hm);
    p->s.objective = obj_quadratic;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rff_(void *const *handle, const int64_t *nnzc, const int64_t idxc[], const double c[],
                     const int64_t *nnzh, const int64_t irowh[], const int64_t icolh[], const double h[],
                     int64_t *ifail) {
  zem::f_entry call("e04rff", e04rf_messages);
  e04rfft_(&call.en_data, handle, nnzc, idxc, c, nnzh, irowh, icolh, h, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rfc(void *handle, int64_t nnzc, const int64_t idxc[], const double c[], int64_t nnzh,
                    const int64_t irowh[], const int64_t icolh[], const double h[], Zem_Fail *fail) {
  zem::c_entry call("e04rfc", e04rf_messages, fail);
  if (nnzc > 0 && !idxc) return call.bad_param("idxc");
  if (nnzc > 0 && !c) return call.bad_param("c");
  if (nnzh > 0 && !irowh) return call.bad_param("irowh");
  if (nnzh > 0 && !icolh) return call.bad_param("icolh");
  if (nnzh > 0 && !h) return call.bad_param("h");
  e04rfft_(&call.en_data, &handle, &nnzc, idxc, c, &nnzh, irowh, icolh, h, call.errbuf, &call.status);
  call.finish();
}
