// e04tb: deletes components of the model.  comp names the kind, idx[0 ..
// lidx-1] the identifiers:
//   "X"    variables (a deleted variable stays in the numbering, fixed at 0)
//   "LC"   linear constraint rows (identifiers of e04rj)
//   "QC"   quadratic constraints (e04rs)   "NLC"  nonlinear constraints
//   "CN"   cones (e04rb)                    "MI"   matrix inequality blocks
//   "NLS"  residuals of the least-squares objective
// Deleted components keep their identifiers: nothing is renumbered, and a
// second deletion is refused with NE_DELETED.  Nothing is deleted unless
// every identifier is valid.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04tb_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_STR_UNKNOWN, {"On entry, comp = %s.", "Constraint: comp = X, LC, QC, NLC, CN, MI or NLS."},
                              {"On entry, comp = %s", "Constraint: comp = X, LC, QC, NLC, CN, MI or NLS."}},
    {6, 1012, NE_INT, {"On entry, lidx = %s.", "Constraint: lidx >= 1."}},
    {8, 1013, NE_INVALID_ARRAY, {"On entry, comp = %s,", "i = %s and", "idx[i-1] = %s.", "Constraint: 1 <= idx[i-1] <= %s."},
                                {"On entry, comp = %s,", "i = %s and", "idx(i) = %s", "Constraint: 1 <= idx(i) <= %s."}},
    {7, 1014, NE_DELETED, {"On entry, comp = %s and", "idx[i-1] = %s.", "This component has been deleted."},
                          {"On entry, comp = %s and", "idx(i) = %s", "This component has been deleted."}},
};
ZEM_REGISTER_MESSAGES(e04tb)

#define E04TB_ARGS(V, A, U)                                                                      \
  A(void *const *, handle) A(const char *, comp) V(const int64_t *, lidx) A(const int64_t *, idx) \
  V(char *, errbuf) V(int64_t *, ifail) U(size_t, comp_len)
ZEM_ENGINE_LAYERS(e04tb, E04TB_ARGS)

ZEM_INTERNAL void e04tbfn_(engine_data *, void *const *handle, const char *comp, const int64_t *lidx,
                           const int64_t *idx, char *errbuf, int64_t *ifail, size_t comp_len) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const std::string k = keyword(comp, comp_len);
  const component c = component_of(k);
  if (c == component::none) return zem::fail(errbuf, ifail, 6, 1011, std::string_view(k));
  if (*lidx < 1) return zem::fail(errbuf, ifail, 6, 1012, *lidx);
  try {
    std::vector<char> flags = deleted_flags(*p, c);
    const int64_t count = static_cast<int64_t>(flags.size());
    for (int64_t i = 0; i < *lidx; ++i) {
      if (idx[i] < 1 || idx[i] > count)
        return zem::fail(errbuf, ifail, 8, 1013, std::string_view(k), i + 1, idx[i], count);
      if (flags[idx[i] - 1]) return zem::fail(errbuf, ifail, 7, 1014, std::string_view(k), idx[i]);
      flags[idx[i] - 1] = 1;
    }
    set_deleted_flags(*p, c, flags);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  clear_store(*p);
}

ZEM_API void e04tbf_(void *const *handle, const char *comp, const int64_t *lidx, const int64_t idx[], int64_t *ifail,
                     size_t comp_len) {
  zem::f_entry call("e04tbf", e04tb_messages);
  e04tbft_(&call.en_data, handle, comp, lidx, idx, call.errbuf, &call.status, comp_len);
  call.finish(ifail);
}

ZEM_API void e04tbc(void *handle, const char *comp, int64_t lidx, const int64_t idx[], Zem_Fail *fail) {
  zem::c_entry call("e04tbc", e04tb_messages, fail);
  if (!comp) return call.bad_param("comp");
  if (lidx > 0 && !idx) return call.bad_param("idx");
  e04tbft_(&call.en_data, &handle, comp, &lidx, idx, call.errbuf, &call.status, std::strlen(comp));
  call.finish();
}
