// e04td: changes the bounds of one variable ("X"), one linear constraint
// row ("LC") or one nonlinear constraint ("NLC").  The bounds follow the
// rules of e04rh; a deleted component is refused.
#include <cstdint>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04td_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_STR_UNKNOWN, {"On entry, comp = %s.", "Constraint: comp = X, LC or NLC."},
                              {"On entry, comp = %s", "Constraint: comp = X, LC or NLC."}},
    {6, 1012, NE_INT, {"On entry, comp = %s and", "idx = %s.", "Constraint: 1 <= idx <= %s."},
                      {"On entry, comp = %s and", "idx = %s", "Constraint: 1 <= idx <= %s."}},
    {7, 1013, NE_DELETED, {"On entry, comp = %s and", "idx = %s.", "This component has been deleted."},
                          {"On entry, comp = %s and", "idx = %s", "This component has been deleted."}},
    {10, 1021, NE_BOUND, {"On entry, idx = %s,", "bli = %s and", "bui = %s.", "Constraint: bli <= bui."},
                         {"On entry, idx = %s,", "bli = %s and", "bui = %s", "Constraint: bli <= bui."}},
    {10, 1022, NE_BOUND, {"On entry, idx = %s,", "bli = %s,", "bigbnd = %s.", "Constraint: bli < bigbnd."},
                         {"On entry, idx = %s,", "bli = %s,", "bigbnd = %s", "Constraint: bli < bigbnd."}},
    {10, 1023, NE_BOUND, {"On entry, idx = %s,", "bui = %s,", "bigbnd = %s.", "Constraint: bui > -bigbnd."},
                         {"On entry, idx = %s,", "bui = %s,", "bigbnd = %s", "Constraint: bui > -bigbnd."}},
};
ZEM_REGISTER_MESSAGES(e04td)

#define E04TD_ARGS(V, A, U)                                                                    \
  A(void *const *, handle) A(const char *, comp) V(const int64_t *, idx) V(const double *, bli) \
  V(const double *, bui) V(char *, errbuf) V(int64_t *, ifail) U(size_t, comp_len)
ZEM_ENGINE_LAYERS(e04td, E04TD_ARGS)

ZEM_INTERNAL void e04tdfn_(engine_data *, void *const *handle, const char *comp, const int64_t *idx,
                           const double *bli, const double *bui, char *errbuf, int64_t *ifail, size_t comp_len) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const std::string k = keyword(comp, comp_len);
  const component c = component_of(k);
  if (c != component::x && c != component::lc && c != component::nlc)
    return zem::fail(errbuf, ifail, 6, 1011, std::string_view(k));
  const int64_t count = c == component::x ? p->s.nvar : c == component::lc ? p->nlc() : p->s.ncnln;
  const int64_t i = *idx;
  if (i < 1 || i > count) return zem::fail(errbuf, ifail, 6, 1012, std::string_view(k), i, count);
  const std::vector<char> &del = c == component::x ? p->var_deleted : c == component::lc ? p->lc_deleted : p->nl_deleted;
  if (static_cast<size_t>(i) <= del.size() && del[i - 1]) return zem::fail(errbuf, ifail, 7, 1013, std::string_view(k), i);
  const checker ck{errbuf, ifail};
  if (!ck.bound(i, *bli, *bui, infinite_bound_size(*p), 10, 1021)) return;
  std::vector<double> &bl = c == component::x ? p->bl : c == component::lc ? p->lc_bl : p->nl_bl;
  std::vector<double> &bu = c == component::x ? p->bu : c == component::lc ? p->lc_bu : p->nl_bu;
  bl[i - 1] = *bli;
  bu[i - 1] = *bui;
  if (c == component::x) p->s.bounds_defined = true;
}

ZEM_API void e04tdf_(void *const *handle, const char *comp, const int64_t *idx, const double *bli, const double *bui,
                     int64_t *ifail, size_t comp_len) {
  zem::f_entry call("e04tdf", e04td_messages);
  e04tdft_(&call.en_data, handle, comp, idx, bli, bui, call.errbuf, &call.status, comp_len);
  call.finish(ifail);
}

ZEM_API void e04tdc(void *handle, const char *comp, int64_t idx, double bli, double bui, Zem_Fail *fail) {
  zem::c_entry call("e04tdc", e04td_messages, fail);
  if (!comp) return call.bad_param("comp");
  e04tdft_(&call.en_data, &handle, comp, &idx, &bli, &bui, call.errbuf, &call.status, std::strlen(comp));
  call.finish();
}
