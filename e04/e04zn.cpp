// e04zn: the value of one option of a handle, by name.
//
// optstr holds the option's name (any case; anything from an '=' on is
// ignored, so a setting string can be passed back as it was set).  By the
// option's type: an integer option's value goes to ivalue; a real option's
// to rvalue; a character option's keyword to cvalue (its canonical
// spelling, the first keyword listed for its code) and its code to ivalue.
// optype receives 1 (integer), 2 (real) or 3 (character); the arguments not
// used by the type are left as they are.
#include <algorithm>
#include <cstring>

#include "e04/option_messages.h"

inline constexpr zem::message e04zn_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    {11, 1021, NE_INVALID_OPTION, {"On entry, the option supplied in optstr was not recognized:", "optstr = %s%s"}},
    {15, 1051, NE_INT, {"On entry, lcvalue = %s.", "Constraint: lcvalue >= %s.", "Option: %s%s"},
     {"On entry, the length of cvalue is %s.", "Constraint: the length of cvalue must be at least %s.",
      "Option: %s%s"}},
};
ZEM_REGISTER_MESSAGES(e04zn)

// cvalue_len is the room in cvalue; with nul = 1 (C) the keyword is ended
// by a NUL, which needs one more character, otherwise (Fortran) it is padded
// with blanks.
#define E04ZN_ARGS(V, A, U)                                                                                  \
  A(void *const *, handle) A(const char *, optstr) V(int64_t *, ivalue) V(double *, rvalue) A(char *, cvalue) \
  V(const int64_t *, cvalue_len) V(const int64_t *, nul) V(int64_t *, optype) V(char *, errbuf)             \
  V(int64_t *, ifail) U(size_t, optstr_len)
ZEM_ENGINE_LAYERS(e04zn, E04ZN_ARGS)

ZEM_INTERNAL void e04znfn_(engine_data *, void *const *handle, const char *optstr, int64_t *ivalue, double *rvalue,
                           char *cvalue, const int64_t *cvalue_len, const int64_t *nul, int64_t *optype, char *errbuf,
                           int64_t *ifail, size_t optstr_len) {
  using namespace zem::e04;
  *ifail = 0;
  problem *p = open_for_options(*handle, false, errbuf, ifail);
  if (!p) return;
  const std::string_view s(optstr, optstr_len);
  const int i = find_index(s.substr(0, s.find('=')));
  if (i < 0) {
    const message_text m = split_for_message(trim(s), "\"", "\".");
    return zem::fail(errbuf, ifail, 11, 1021, m.a, m.b);
  }
  const option_info &o = registry[i];
  const option_set &set = *options(*p);
  const int64_t type = base_type(o.type);
  if (type == type_real) {
    *rvalue = set.rstore[o.rslot];
  } else if (type == type_character) {
    const std::string_view k = keyword_of_code(i, set.istore[o.islot]);
    const int64_t need = static_cast<int64_t>(k.size()) + (*nul ? 1 : 0);
    if (*cvalue_len < need) {
      const message_text m = split_for_message(o.name, "'", "'.");
      return zem::fail(errbuf, ifail, 15, 1051, *cvalue_len, need, m.a, m.b);
    }
    std::memcpy(cvalue, k.data(), k.size());
    if (*nul)
      cvalue[k.size()] = '\0';
    else
      std::fill(cvalue + k.size(), cvalue + *cvalue_len, ' ');
    *ivalue = set.istore[o.islot];
  } else {
    *ivalue = set.istore[o.islot];
  }
  *optype = type;
}

ZEM_API void e04znf_(void *const *handle, const char *optstr, int64_t *ivalue, double *rvalue, char *cvalue,
                     int64_t *optype, int64_t *ifail, size_t optstr_len, size_t cvalue_len) {
  zem::f_entry call("e04znf", e04zn_messages);
  const int64_t len = static_cast<int64_t>(cvalue_len), nul = 0;
  e04znft_(&call.en_data, handle, optstr, ivalue, rvalue, cvalue, &len, &nul, optype, call.errbuf, &call.status,
           optstr_len);
  call.finish(ifail);
}

ZEM_API void e04znc(void *handle, const char *optstr, int64_t *ivalue, double *rvalue, char *cvalue, int64_t lcvalue,
                    int64_t *optype, Zem_Fail *fail) {
  zem::c_entry call("e04znc", e04zn_messages, fail);
  if (!optstr) return call.bad_param("optstr");
  if (!ivalue) return call.bad_param("ivalue");
  if (!rvalue) return call.bad_param("rvalue");
  if (!cvalue && lcvalue > 0) return call.bad_param("cvalue");
  if (!optype) return call.bad_param("optype");
  const int64_t nul = 1;
  e04znft_(&call.en_data, &handle, optstr, ivalue, rvalue, cvalue, &lcvalue, &nul, optype, call.errbuf, &call.status,
           std::strlen(optstr));
  call.finish();
}
