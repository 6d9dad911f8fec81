// e04zm: set one option of a handle from a string "Name = value".
//
// The name is everything before the first '=', the value everything after
// it (blanks around both are dropped).  The value is converted to the
// option's type, checked against its bounds or keywords and stored with
// status 2 (set by the user).  The single word "Defaults" puts every option
// back to its default.  Nothing changes on a failure.
#include "e04/option_messages.h"

inline constexpr zem::message e04zm_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_OPTION_PHASE_ROW,
    ZEM_E04_OPTSTR_ROWS,
};
ZEM_REGISTER_MESSAGES(e04zm)

#define E04ZM_ARGS(V, A, U) \
  A(void *const *, handle) A(const char *, optstr) V(char *, errbuf) V(int64_t *, ifail) U(size_t, optstr_len)
ZEM_ENGINE_LAYERS(e04zm, E04ZM_ARGS)

ZEM_INTERNAL void e04zmfn_(engine_data *, void *const *handle, const char *optstr, char *errbuf, int64_t *ifail,
                           size_t optstr_len) {
  *ifail = 0;
  zem::e04::problem *p = zem::e04::open_for_options(*handle, true, errbuf, ifail);
  if (!p) return;
  const std::string_view s(optstr, optstr_len);
  const size_t eq = s.find('=');
  const std::string_view name = eq == std::string_view::npos ? s : s.substr(0, eq);
  const std::string_view value = eq == std::string_view::npos ? std::string_view{} : s.substr(eq + 1);
  const zem::e04::set_result r = zem::e04::apply_setting(*zem::e04::options(*p), name, value);
  if (r.outcome == zem::e04::set_outcome::ok || r.outcome == zem::e04::set_outcome::defaults) return;
  zem::e04::report_setting(r, zem::e04::trim(s), zem::e04::trim(value), errbuf, ifail);
}

ZEM_API void e04zmf_(void *const *handle, const char *optstr, int64_t *ifail, size_t optstr_len) {
  zem::f_entry call("e04zmf", e04zm_messages);
  e04zmft_(&call.en_data, handle, optstr, call.errbuf, &call.status, optstr_len);
  call.finish(ifail);
}

ZEM_API void e04zmc(void *handle, const char *optstr, Zem_Fail *fail) {
  zem::c_entry call("e04zmc", e04zm_messages, fail);
  if (!optstr) return call.bad_param("optstr");
  e04zmft_(&call.en_data, &handle, optstr, call.errbuf, &call.status, std::strlen(optstr));
  call.finish();
}
