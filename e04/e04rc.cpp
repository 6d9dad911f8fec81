// e04rc: the type of the listed variables: "CONT" or "LIN" continuous,
// "INT" or "GEN" general integer, "BIN" binary (integer within [0,1]; the
// bounds are the solver's to impose).  ptype is matched without regard to
// case or trailing blanks.
#include <cstdint>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rc_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_STR_UNKNOWN, {"On entry, ptype = %s.", "Constraint: ptype = BIN, CONT, GEN, INT or LIN."},
                              {"On entry, ptype = %s", "Constraint: ptype = BIN, CONT, GEN, INT or LIN."}},
    {6, 1012, NE_INT, {"On entry, lidx = %s.", "Constraint: lidx >= 1."}},
    E04_ROW_RANGE(8, 1013, "idx", "n"),
};
ZEM_REGISTER_MESSAGES(e04rc)

#define E04RC_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) A(const char *, ptype) V(const int64_t *, lidx) A(const int64_t *, idx)   \
  V(char *, errbuf) V(int64_t *, ifail) U(size_t, ptype_len)
ZEM_ENGINE_LAYERS(e04rc, E04RC_ARGS)

ZEM_INTERNAL void e04rcfn_(engine_data *, void *const *handle, const char *ptype, const int64_t *lidx,
                           const int64_t *idx, char *errbuf, int64_t *ifail, size_t ptype_len) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const std::string k = keyword(ptype, ptype_len);
  int64_t t = -1;
  if (k == "CONT" || k == "LIN") t = var_continuous;
  else if (k == "INT" || k == "GEN") t = var_integer;
  else if (k == "BIN") t = var_binary;
  if (t < 0) return zem::fail(errbuf, ifail, 6, 1011, std::string_view(k));
  if (*lidx < 1) return zem::fail(errbuf, ifail, 6, 1012, *lidx);
  const checker ck{errbuf, ifail};
  if (!ck.range(idx, *lidx, 1, p->s.nvar, 8, 1013)) return;
  for (int64_t i = 0; i < *lidx; ++i) p->vtype[idx[i] - 1] = t;
}

ZEM_API void e04rcf_(void *const *handle, const char *ptype, const int64_t *lidx, const int64_t idx[],
                     int64_t *ifail, size_t ptype_len) {
  zem::f_entry call("e04rcf", e04rc_messages);
  e04rcft_(&call.en_data, handle, ptype, lidx, idx, call.errbuf, &call.status, ptype_len);
  call.finish(ifail);
}

ZEM_API void e04rcc(void *handle, const char *ptype, int64_t lidx, const int64_t idx[], Zem_Fail *fail) {
  zem::c_entry call("e04rcc", e04rc_messages, fail);
  if (!ptype) return call.bad_param("ptype");
  if (lidx > 0 && !idx) return call.bad_param("idx");
  e04rcft_(&call.en_data, &handle, ptype, &lidx, idx, call.errbuf, &call.status, std::strlen(ptype));
  call.finish();
}
