// g22zm: set an option of a g22 handle from "NAME = value" (options.cpp
// lists the options of each handle kind).
#include <cstring>
#include <new>

#include "frame/frame.h"
#include "g22/g22.h"
#include "g22/messages.h"

using namespace zem::g22;

inline constexpr zem::message g22zm_messages[] = {
    {11, 1001, NE_HANDLE, {"handle has not been initialized or is corrupt."}},
    {11, 1002, NE_HANDLE, {"handle has been corrupted."}},
    {11, 1003, NE_HANDLE, {"handle is a handle to an unknown data structure."}},
    {21, 1004, NE_INVALID_OPTION, {"On entry, option was not recognized.", echo}},
    {22, 1005, NE_WRITE_ERROR, {"On entry, option is read only.", echo}},
    {31, 1006, NE_INVALID_FORMAT, {"On entry, the expected delimiter ' = ' was not found.", echo}},
    {32, 1007, NE_INVALID_FORMAT, {"On entry, could not convert optval to an integer.", echo}},
    {41, 1008, NE_INVALID_VALUE, {"On entry, optval is not a valid value for option.", echo}},
};
ZEM_REGISTER_MESSAGES(g22zm)

inline constexpr translation g22zm_translation[] = {
    {ierr_g22_handle_null, 0, 11, 1001},     {ierr_g22_handle_corrupt, 0, 11, 1002},
    {ierr_g22_handle_unknown, 0, 11, 1003},  {ierr_g22_unknown_option, 0, 21, 1004},
    {ierr_g22_read_only, 0, 22, 1005},       {ierr_g22_invalid_delimiter, 0, 31, 1006},
    {ierr_g22_not_integer, 0, 32, 1007},     {ierr_g22_invalid_optval, 0, 41, 1008},
};

#define G22ZM_ARGS(V, A, U) \
  A(void *const *, handle) A(const char *, optstr) V(char *, errbuf) V(int64_t *, ifail) U(size_t, optstr_len)
ZEM_ENGINE_LAYERS(g22zm, G22ZM_ARGS)

ZEM_INTERNAL void g22zmfn_(engine_data *, void *const *handle, const char *optstr, char *errbuf, int64_t *ifail,
                           size_t optstr_len) {
  *ifail = 0;
  error_record e;
  e.routine = "g22zm";
  kind k{};
  const ierr c = check(*handle, &k);
  if (c != ierr_g22_ok) {
    e.raise(c, "g22zmfn");
    return translate(e, g22zm_translation, errbuf, ifail);
  }
  std::string_view s(optstr, optstr_len);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  try {
    set_option(*handle, k, s, e);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  translate(e, g22zm_translation, errbuf, ifail);
}

ZEM_API void g22zmf_(void *const *handle, const char *optstr, int64_t *ifail, size_t optstr_len) {
  zem::f_entry call("g22zmf", g22zm_messages);
  g22zmft_(&call.en_data, handle, optstr, call.errbuf, &call.status, optstr_len);
  call.finish(ifail);
}

ZEM_API void g22zmc(void *handle, const char *optstr, Zem_Fail *fail) {
  zem::c_entry call("g22zmc", g22zm_messages, fail);
  if (!optstr) return call.bad_param("optstr");
  g22zmft_(&call.en_data, &handle, optstr, call.errbuf, &call.status, std::strlen(optstr));
  call.finish();
}
