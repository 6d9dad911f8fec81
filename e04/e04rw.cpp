// e04rw: reads (ioflag = 0) or writes (ioflag = 1) an integer array of the
// handle's store, named by cmdstr (e04/store_commands.h lists the commands,
// their modes and sizes).  liarr must equal the size of the data.
#include <cstdint>

#include "e04/store_io.h"

inline constexpr zem::message e04rw_messages[] = {E04_STORE_ROWS("liarr")};
ZEM_REGISTER_MESSAGES(e04rw)

#define E04RW_ARGS(V, A, U)                                                                            \
  A(void *const *, handle) A(const char *, cmdstr) V(const int64_t *, ioflag) V(const int64_t *, liarr) \
  A(int64_t *, iarr) V(char *, errbuf) V(int64_t *, ifail) U(size_t, cmdstr_len)
ZEM_ENGINE_LAYERS(e04rw, E04RW_ARGS)

ZEM_INTERNAL void e04rwfn_(engine_data *, void *const *handle, const char *cmdstr, const int64_t *ioflag,
                           const int64_t *liarr, int64_t *iarr, char *errbuf, int64_t *ifail, size_t cmdstr_len) {
  *ifail = 0;
  zem::e04::problem *p = zem::e04::open_problem(*handle, errbuf, ifail);
  if (!p) return;
  zem::e04::store_io<int64_t>(*p, zem::e04::int_commands, cmdstr, cmdstr_len, *ioflag, *liarr, iarr, errbuf, ifail);
}

ZEM_API void e04rwf_(void *const *handle, const char *cmdstr, const int64_t *ioflag, const int64_t *liarr,
                     int64_t iarr[], int64_t *ifail, size_t cmdstr_len) {
  zem::f_entry call("e04rwf", e04rw_messages);
  e04rwft_(&call.en_data, handle, cmdstr, ioflag, liarr, iarr, call.errbuf, &call.status, cmdstr_len);
  call.finish(ifail);
}

ZEM_API void e04rwc(void *handle, const char *cmdstr, int64_t ioflag, int64_t liarr, int64_t iarr[], Zem_Fail *fail) {
  zem::c_entry call("e04rwc", e04rw_messages, fail);
  if (!cmdstr) return call.bad_param("cmdstr");
  if (liarr > 0 && !iarr) return call.bad_param("iarr");
  e04rwft_(&call.en_data, &handle, cmdstr, &ioflag, &liarr, iarr, call.errbuf, &call.status, std::strlen(cmdstr));
  call.finish();
}
