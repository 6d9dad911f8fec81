// The common worker of e04rw and e04rx: look the command up, check the
// mode, the phase and the size, then copy between the caller's array and
// the handle's store.
#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <span>
#include <string>

#include "e04/model.h"
#include "e04/sparse_check.h"
#include "e04/store_commands.h"

namespace zem::e04 {

// Rows shared by both routines (len names liarr or lrarr).
#define E04_STORE_ROWS(len)                                                                        \
  ZEM_E04_HANDLE_ROWS, ZEM_E04_PHASE_ROWS,                                                         \
  {2, 1007, NE_PHASE, {"The request cannot be processed at this phase."}},                        \
  {3, 1011, NE_STR_UNKNOWN, {"The provided cmdstr is not recognised."}},                          \
  {3, 1012, NE_WRITE_ERROR, {"Writing mode is not supported for the given cmdstr."}},             \
  {3, 1013, NE_READ_ERROR, {"Reading mode is not supported for the given cmdstr."}},              \
  {6, 1014, NE_INT, {"On entry, ioflag = %s.", "Constraint: ioflag = 0 or 1."}},                 \
  {4, 1015, NE_NOT_AVAILABLE, {"The requested information is not available."}},                   \
  {5, 1016, NE_DIM_MATCH, {"On entry, " len " = %s,", "expected value = %s.",                      \
                           "Constraint: " len " must match the size of the data identified in cmdstr."}, \
   {"On entry, " len " = %s,", "expected value = %s",                                              \
    "Constraint: " len " must match the size of the data identified in cmdstr."}},               \
  {6, 1017, NE_INVALID_ARRAY, {"On entry, i = %s and", "iarr[i-1] = %s.",                          \
                               "Constraint: 0 <= iarr[i-1] <= 5 for the warm start basis."},      \
   {"On entry, i = %s and", "iarr(i) = %s", "Constraint: 0 <= iarr(i) <= 5 for the warm start basis."}}

template <typename T>
void store_io(problem &p, std::span<const store_command> table, const char *cmdstr, size_t cmd_len, int64_t ioflag,
              int64_t len, T *arr, char *errbuf, int64_t *ifail) {
  const std::string k = keyword(cmdstr, cmd_len, 80);
  const store_command *c = nullptr;
  for (const auto &e : table)
    if (e.cmd == k) c = &e;
  if (!c) return zem::fail(errbuf, ifail, 3, 1011);
  if (ioflag != 0 && ioflag != 1) return zem::fail(errbuf, ifail, 6, 1014, ioflag);
  const bool write = ioflag == 1;
  if (write && !c->writable) return zem::fail(errbuf, ifail, 3, 1012);
  if (!write && !c->readable) return zem::fail(errbuf, ifail, 3, 1013);
  if (write && !check_editable(p, errbuf, ifail)) return;
  bool found = false;
  std::span<const T> have;
  if constexpr (std::is_same_v<T, double>) have = stored_reals(p, c->store, &found);
  else have = stored_ints(p, c->store, &found);
  int64_t size = 0;
  switch (c->size) {
    case size_rule::nvar: size = p.s.nvar; break;
    case size_rule::nvar_nlc: size = p.s.nvar + p.nlc(); break;
    case size_rule::nlc: size = p.nlc(); break;
    case size_rule::nres:
      if (p.s.objective != obj_nlls) return zem::fail(errbuf, ifail, 2, 1007);
      size = p.s.nres;
      break;
    case size_rule::stored:
      if (!found) return zem::fail(errbuf, ifail, 4, 1015);
      size = static_cast<int64_t>(have.size());
      break;
    case size_rule::mcs_list: {
      bool any = false;
      const auto np = stored_ints(p, "MCS NUMBER POINTS", &any);
      if (!any) return zem::fail(errbuf, ifail, 2, 1007);
      for (int64_t v : np) size += std::max<int64_t>(v, 0);
      break;
    }
  }
  if (len != size) return zem::fail(errbuf, ifail, 5, 1016, len, size);
  if (!write) {
    if (!found || static_cast<int64_t>(have.size()) != size) return zem::fail(errbuf, ifail, 4, 1015);
    std::copy(have.begin(), have.end(), arr);
    return;
  }
  if constexpr (std::is_same_v<T, int64_t>) {
    if (c->store == "[WARM START BASIS]")
      for (int64_t i = 0; i < len; ++i)
        if (arr[i] < 0 || arr[i] > 5) return zem::fail(errbuf, ifail, 6, 1017, i + 1, arr[i]);
  }
  bool ok;
  if constexpr (std::is_same_v<T, double>) ok = store_reals(p, c->store, {arr, static_cast<size_t>(len)});
  else ok = store_ints(p, c->store, {arr, static_cast<size_t>(len)});
  if (!ok) zem::alloc_fail(ifail);
}

}  // namespace zem::e04
