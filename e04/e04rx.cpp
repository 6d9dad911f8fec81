// e04rx: reads (ioflag = 0) or writes (ioflag = 1) a real array of the
// handle's store, named by cmdstr (e04/store_commands.h lists the commands,
// their modes and sizes).  lrarr must equal the size of the data.
#include <cstdint>

#include "e04/store_io.h"

inline constexpr zem::message e04rx_messages[] = {E04_STORE_ROWS("lrarr")};
ZEM_REGISTER_MESSAGES(e04rx)

#define E04RX_ARGS(V, A, U)                                                                            \
  A(void *const *, handle) A(const char *, cmdstr) V(const int64_t *, ioflag) V(const int64_t *, lrarr) \
  A(double *, rarr) V(char *, errbuf) V(int64_t *, ifail) U(size_t, cmdstr_len)
ZEM_ENGINE_LAYERS(e04rx, E04RX_ARGS)

ZEM_INTERNAL void e04rxfn_(engine_data *, void *const *handle, const char *cmdstr, const int64_t *ioflag,
                           const int64_t *lrarr, double *rarr, char *errbuf, int64_t *ifail, size_t cmdstr_len) {
  *ifail = 0;
  zem::e04::problem *p = zem::e04::open_problem(*handle, errbuf, ifail);
  if (!p) return;
  zem::e04::store_io<double>(*p, zem::e04::real_commands, cmdstr, cmdstr_len, *ioflag, *lrarr, rarr, errbuf, ifail);
}

ZEM_API void e04rxf_(void *const *handle, const char *cmdstr, const int64_t *ioflag, const int64_t *lrarr,
                     double rarr[], int64_t *ifail, size_t cmdstr_len) {
  zem::f_entry call("e04rxf", e04rx_messages);
  e04rxft_(&call.en_data, handle, cmdstr, ioflag, lrarr, rarr, call.errbuf, &call.status, cmdstr_len);
  call.finish(ifail);
}

ZEM_API void e04rxc(void *handle, const char *cmdstr, int64_t ioflag, int64_t lrarr, double rarr[], Zem_Fail *fail) {
  zem::c_entry call("e04rxc", e04rx_messages, fail);
  if (!cmdstr) return call.bad_param("cmdstr");
  if (lrarr > 0 && !rarr) return call.bad_param("rarr");
  e04rxft_(&call.en_data, &handle, cmdstr, &ioflag, &lrarr, rarr, call.errbuf, &call.status, std::strlen(cmdstr));
  call.finish();
}
