// e04rb: a second-order cone constraint on the variables group:
//   "QUAD" (or "Q"):   x_{g1} >= ||(x_{g2}, ..., x_{gl})||,       l >= 2
//   "RQUAD" (or "R"):  2 x_{g1} x_{g2} >= ||(x_{g3}, ..., x_{gl})||^2,
//                      x_{g1}, x_{g2} >= 0,                      l >= 3
// idgroup = 0 adds the cone and returns its identifier; idgroup > 0
// replaces that cone.  lgroup = 0 is accepted (an empty cone, a place
// holder kept for a later replacement).
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rb_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_STR_UNKNOWN, {"On entry, gtype = %s.", "Constraint: gtype = QUAD, Q, RQUAD or R."},
                              {"On entry, gtype = %s", "Constraint: gtype = QUAD, Q, RQUAD or R."}},
    {6, 1012, NE_INT, {"On entry, lgroup = %s.", "Constraint: lgroup = 0 or lgroup >= 2 for a quadratic cone."}},
    {6, 1013, NE_INT, {"On entry, lgroup = %s.", "Constraint: lgroup = 0 or lgroup >= 3 for a rotated cone."}},
    {6, 1014, NE_INT, {"On entry, idgroup = %s.", "Constraint: 0 <= idgroup <= %s."},
                      {"On entry, idgroup = %s", "Constraint: 0 <= idgroup <= %s."}},
    {7, 1015, NE_DELETED, {"On entry, comp = CN and idx[i-1] = %s.", "This component has been deleted."},
                          {"On entry, comp = CN and idx(i) = %s", "This component has been deleted."}},
    E04_ROW_RANGE(8, 1016, "group", "n"),
    {8, 1017, NE_REPEAT_CONEVAR_SM, {"On entry, i = %s,", "j = %s and", "group[i-1] = group[j-1] = %s.",
                                     "Constraint: a variable may appear in a cone only once."},
                                    {"On entry, i = %s,", "j = %s and", "group(i) = group(j) = %s",
                                     "Constraint: a variable may appear in a cone only once."}},
};
ZEM_REGISTER_MESSAGES(e04rb)

#define E04RB_ARGS(V, A, U)                                                                               \
  A(void *const *, handle) A(const char *, gtype) V(const int64_t *, lgroup) A(const int64_t *, group)    \
  V(int64_t *, idgroup) V(char *, errbuf) V(int64_t *, ifail) U(size_t, gtype_len)
ZEM_ENGINE_LAYERS(e04rb, E04RB_ARGS)

ZEM_INTERNAL void e04rbfn_(engine_data *, void *const *handle, const char *gtype, const int64_t *lgroup,
                           const int64_t *group, int64_t *idgroup, char *errbuf, int64_t *ifail, size_t gtype_len) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const std::string k = keyword(gtype, gtype_len);
  int64_t type = 0;
  if (k == "QUAD" || k == "Q") type = 1;
  else if (k == "RQUAD" || k == "R") type = 2;
  else return zem::fail(errbuf, ifail, 6, 1011, std::string_view(k));
  const int64_t l = *lgroup;
  if (type == 1 && (l < 0 || l == 1)) return zem::fail(errbuf, ifail, 6, 1012, l);
  if (type == 2 && (l < 0 || l == 1 || l == 2)) return zem::fail(errbuf, ifail, 6, 1013, l);
  const int64_t ncone = static_cast<int64_t>(p->cones.size());
  if (*idgroup < 0 || *idgroup > ncone) return zem::fail(errbuf, ifail, 6, 1014, *idgroup, ncone);
  if (*idgroup > 0 && p->cones[*idgroup - 1].deleted) return zem::fail(errbuf, ifail, 7, 1015, *idgroup);
  const checker ck{errbuf, ifail};
  if (!ck.range(group, l, 1, p->s.nvar, 8, 1016)) return;
  try {
    // A repeated variable: the earliest second occurrence, with the first.
    std::vector<int64_t> seen(static_cast<size_t>(p->s.nvar), 0);
    for (int64_t i = 0; i < l; ++i) {
      int64_t &s = seen[group[i] - 1];
      if (s) return zem::fail(errbuf, ifail, 8, 1017, s, i + 1, group[i]);
      s = i + 1;
    }
    cone c{type, {group, group + l}, false};
    if (*idgroup > 0) {
      p->cones[*idgroup - 1] = std::move(c);
    } else {
      p->cones.push_back(std::move(c));
      *idgroup = ncone + 1;
    }
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rbf_(void *const *handle, const char *gtype, const int64_t *lgroup, const int64_t group[],
                     int64_t *idgroup, int64_t *ifail, size_t gtype_len) {
  zem::f_entry call("e04rbf", e04rb_messages);
  e04rbft_(&call.en_data, handle, gtype, lgroup, group, idgroup, call.errbuf, &call.status, gtype_len);
  call.finish(ifail);
}

ZEM_API void e04rbc(void *handle, const char *gtype, int64_t lgroup, const int64_t group[], int64_t *idgroup,
                    Zem_Fail *fail) {
  zem::c_entry call("e04rbc", e04rb_messages, fail);
  if (!gtype) return call.bad_param("gtype");
  if (lgroup > 0 && !group) return call.bad_param("group");
  if (!idgroup) return call.bad_param("idgroup");
  e04rbft_(&call.en_data, &handle, gtype, &lgroup, group, idgroup, call.errbuf, &call.status, std::strlen(gtype));
  call.finish();
}
