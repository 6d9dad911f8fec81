// e04rk: nonlinear constraints  bl <= g(x) <= bu  (g evaluated by the
// solver's user functions) with the sparsity of their Jacobian: element
// (irowgd[i], icolgd[i]) = dg_irow/dx_icol.  A second call replaces them
// (and forgets the Hessian structures of the constraints).  ncnln = 0 with
// nnzgd = 0 removes them.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rk_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, ncnln = %s.", "Constraint: ncnln >= 0."}},
    {6, 1012, NE_INT, {"On entry, nnzgd = %s.", "Constraint: nnzgd > 0."}},
    {6, 1013, NE_INT, {"On entry, nnzgd = %s.", "Constraint: nnzgd = 0 when ncnln = 0."}},
    E04_ROW_RANGE(8, 1014, "irowgd", "ncnln"),
    E04_ROW_RANGE(8, 1015, "icolgd", "n"),
    E04_ROW_UNIQUE(8, 1016),
    E04_ROWS_BOUNDS(10, 1021, "bl", "bu", "j"),
};
ZEM_REGISTER_MESSAGES(e04rk)

#define E04RK_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) V(const int64_t *, ncnln) A(const double *, bl) A(const double *, bu)     \
  V(const int64_t *, nnzgd) A(const int64_t *, irowgd) A(const int64_t *, icolgd) V(char *, errbuf)  \
  V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rk, E04RK_ARGS)

ZEM_INTERNAL void e04rkfn_(engine_data *, void *const *handle, const int64_t *ncnln, const double *bl,
                           const double *bu, const int64_t *nnzgd, const int64_t *irowgd, const int64_t *icolgd,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const int64_t m = *ncnln;
  if (m < 0 || m > max_vars) return zem::fail(errbuf, ifail, 6, 1011, m);
  if (m > 0 && *nnzgd <= 0) return zem::fail(errbuf, ifail, 6, 1012, *nnzgd);
  if (m == 0 && *nnzgd != 0) return zem::fail(errbuf, ifail, 6, 1013, *nnzgd);
  const checker ck{errbuf, ifail};
  try {
    if (!ck.range(irowgd, *nnzgd, 1, m, 8, 1014) || !ck.range(icolgd, *nnzgd, 1, p->s.nvar, 8, 1015) ||
        !ck.unique(irowgd, icolgd, *nnzgd, 8, 1016) || !ck.bounds(bl, bu, m, infinite_bound_size(*p), 10, 1021))
      return;
    std::vector<double> l(bl, bl + m), u(bu, bu + m);
    std::vector<char> del(static_cast<size_t>(m), 0);
    coo g{{irowgd, irowgd + *nnzgd}, {icolgd, icolgd + *nnzgd}, {}};
    // Hessian structures: index idf + 1 (the Lagrangian's at 0, the
    // objective's at 1, constraint i's at i + 1); only the objective's
    // survives a change of the constraints.
    std::vector<coo> hess(static_cast<size_t>(m) + 2);
    std::vector<char> hdef(static_cast<size_t>(m) + 2, 0);
    if (p->hess.size() > 1) {
      hess[1] = p->hess[1];
      hdef[1] = p->hess_defined[1];
    }
    p->nl_bl = std::move(l);
    p->nl_bu = std::move(u);
    p->nl_deleted = std::move(del);
    p->gd = std::move(g);
    p->hess = std::move(hess);
    p->hess_defined = std::move(hdef);
    p->s.ncnln = m;
    p->s.nlc_defined = m > 0;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rkf_(void *const *handle, const int64_t *ncnln, const double bl[], const double bu[],
                     const int64_t *nnzgd, const int64_t irowgd[], const int64_t icolgd[], int64_t *ifail) {
  zem::f_entry call("e04rkf", e04rk_messages);
  e04rkft_(&call.en_data, handle, ncnln, bl, bu, nnzgd, irowgd, icolgd, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rkc(void *handle, int64_t ncnln, const double bl[], const double bu[], int64_t nnzgd,
                    const int64_t irowgd[], const int64_t icolgd[], Zem_Fail *fail) {
  zem::c_entry call("e04rkc", e04rk_messages, fail);
  if (ncnln > 0 && !bl) return call.bad_param("bl");
  if (ncnln > 0 && !bu) return call.bad_param("bu");
  if (nnzgd > 0 && !irowgd) return call.bad_param("irowgd");
  if (nnzgd > 0 && !icolgd) return call.bad_param("icolgd");
  e04rkft_(&call.en_data, &handle, &ncnln, bl, bu, &nnzgd, irowgd, icolgd, call.errbuf, &call.status);
  call.finish();
}
