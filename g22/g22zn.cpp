// g22zn: read an option of a g22 handle by its long or short name.
#include <algorithm>
#include <cstring>
#include <new>

#include "frame/frame.h"
#include "g22/g22.h"
#include "g22/messages.h"

using namespace zem::g22;

inline constexpr zem::message g22zn_messages[] = {
    {11, 1001, NE_HANDLE, {"handle has not been initialized or is corrupt."}},
    {11, 1002, NE_HANDLE, {"handle has been corrupted."}},
    {11, 1003, NE_HANDLE, {"handle is a handle to an unknown data structure."}},
    {21, 1004, NE_INVALID_OPTION, {"On entry, option was not recognized.", echo}},
};
ZEM_REGISTER_MESSAGES(g22zn)

inline constexpr translation g22zn_translation[] = {
    {ierr_g22_handle_null, 0, 11, 1001},
    {ierr_g22_handle_corrupt, 0, 11, 1002},
    {ierr_g22_handle_unknown, 0, 11, 1003},
    {ierr_g22_unknown_option, 0, 21, 1004},
};

// A character value is written to cvalue (cvalue_len characters): as a C
// string cut to cvalue_len - 1 characters when cstrings is non-zero, else
// blank-padded.  optype: 1 integer (ivalue), 2 real (rvalue), 3 character.
#define G22ZN_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) A(const char *, optstr) V(int64_t *, ivalue) V(double *, rvalue)         \
  A(char *, cvalue) V(const int64_t *, cstrings) V(int64_t *, optype) V(char *, errbuf)             \
  V(int64_t *, ifail) U(size_t, optstr_len) U(size_t, cvalue_len)
ZEM_ENGINE_LAYERS(g22zn, G22ZN_ARGS)

ZEM_INTERNAL void g22znfn_(engine_data *, void *const *handle, const char *optstr, int64_t *ivalue,
                           double *rvalue, char *cvalue, const int64_t *cstrings, int64_t *optype, char *errbuf,
                           int64_t *ifail, size_t optstr_len, size_t cvalue_len) {
  *ifail = 0;
  error_record e;
  e.routine = "g22zn";
  kind k{};
  const ierr c = check(*handle, &k);
  if (c != ierr_g22_ok) {
    e.raise(c, "g22znfn");
    return translate(e, g22zn_translation, errbuf, ifail);
  }
  try {
    option_value v;
    get_option(*handle, k, std::string_view(optstr, optstr_len), v, e);
    if (!e.failed()) {
      *optype = v.optype;
      if (v.optype == 1) *ivalue = v.i;
      if (v.optype == 2) *rvalue = v.r;
      if (v.optype == 3 && cvalue_len > 0) {
        const size_t room = *cstrings ? cvalue_len - 1 : cvalue_len;
        const size_t n = std::min(v.c.size(), room);
        std::memcpy(cvalue, v.c.data(), n);
        if (*cstrings)
          cvalue[n] = '\0';
        else
          std::memset(cvalue + n, ' ', cvalue_len - n);
      }
    }
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  translate(e, g22zn_translation, errbuf, ifail);
}

ZEM_API void g22znf_(void *const *handle, const char *optstr, int64_t *ivalue, double *rvalue, char *cvalue,
                     int64_t *optype, int64_t *ifail, size_t optstr_len, size_t cvalue_len) {
  zem::f_entry call("g22znf", g22zn_messages);
  const int64_t fortran_text = 0;
  g22znft_(&call.en_data, handle, optstr, ivalue, rvalue, cvalue, &fortran_text, optype, call.errbuf,
           &call.status, optstr_len, cvalue_len);
  call.finish(ifail);
}

ZEM_API void g22znc(void *handle, const char *optstr, int64_t *ivalue, double *rvalue, char cvalue[],
                    int64_t lcvalue, int64_t *optype, Zem_Fail *fail) {
  zem::c_entry call("g22znc", g22zn_messages, fail);
  if (!optstr) return call.bad_param("optstr");
  if (!ivalue) return call.bad_param("ivalue");
  if (!rvalue) return call.bad_param("rvalue");
  if (!optype) return call.bad_param("optype");
  if (lcvalue > 0 && !cvalue) return call.bad_param("cvalue");
  const int64_t c_text = 1;
  g22znft_(&call.en_data, &handle, optstr, ivalue, rvalue, cvalue, &c_text, optype, call.errbuf, &call.status,
           std::strlen(optstr), lcvalue > 0 ? static_cast<size_t>(lcvalue) : 0);
  call.finish();
}
