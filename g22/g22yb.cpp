// g22yb: describe a dataset (observations, variables, levels, names) in a
// data description handle.
#include <cstring>
#include <new>

#include "frame/frame.h"
#include "g22/g22.h"

using namespace zem::g22;

inline constexpr zem::message g22yb_messages[] = {
    {11, 1001, NE_HANDLE, {"On entry, hddesc is not NULL or a recognised G22 handle."}},
    {21, 1002, NE_INT, {"On entry, nobs = %s.", "Constraint: nobs >= 0."}},
    {22, 1003, NE_INT, {"On entry, nvar = %s.", "Constraint: nvar >= 0."}},
    {31, 1004, NE_INT_ARRAY, {"On entry, j = %s and levels[j-1] = %s.", "Constraint: levels[i-1] >= 1."},
     {"On entry, j = %s", "and levels(j) = %s.", "Constraint: levels(i) >= 1."}},
    {41, 1005, NE_ARRAY_SIZE, {"On entry, lvnames = %s and nvar = %s.", "Constraint: lvnames = 0 or nvar."},
     {"On entry, lvnames = %s", "and nvar = %s.", "Constraint: lvnames = 0 or nvar."}},
    {51, 1006, NE_INVALID_FORMAT, {"On entry, variable name i contains one more invalid characters,", "i = %s."}},
    {52, 1007, NE_NON_UNIQUE, {"On entry, variable names i and j are not unique,", "i = %s and j = %s."}},
    {52, 1008, NE_NON_UNIQUE,
     {"On entry, variable names i and j are not unique (possibly due to truncation),", "i = %s and j = %s.",
      "Maximum variable name length is 50."}},
    {101, 1009, NW_TRUNCATED,
     {"At least one variable name was truncated to 50 characters.",
      "Each truncated name is unique and will be used in all output."}},
};
ZEM_REGISTER_MESSAGES(g22yb)

inline constexpr translation g22yb_translation[] = {
    {ierr_g22_handle_unknown, 0, 11, 1001}, {ierr_g22_handle_corrupt, 0, 11, 1001},
    {ierr_g22_bad_nobs, 0, 21, 1002},       {ierr_g22_bad_nvar, 0, 22, 1003},
    {ierr_g22_bad_levels, 0, 31, 1004},     {ierr_g22_bad_lvnames, 0, 41, 1005},
    {ierr_g22_invalid_name, 0, 51, 1006},   {ierr_g22_duplicate, 0, 52, 1007},
    {ierr_g22_duplicate_truncated, 0, 52, 1008}, {ierr_g22_truncated, 0, 101, 1009},
};

// The names come either as C strings (cnames, from the C entry) or as one
// block of lvnames fields of vnames_len characters, blank-padded (vnames,
// from the Fortran entry).
#define G22YB_ARGS(V, A, U)                                                                            \
  A(void **, hddesc) V(const int64_t *, nobs) V(const int64_t *, nvar) A(const int64_t *, levels)     \
  V(const int64_t *, lvnames) A(const char *, vnames) A(const char *const *, cnames) V(char *, errbuf) \
  V(int64_t *, ifail) U(size_t, vnames_len)
ZEM_ENGINE_LAYERS(g22yb, G22YB_ARGS)

namespace {

void describe_data(data_description &d, int64_t nobs, int64_t nvar, const int64_t *levels, int64_t lvnames,
                   const char *vnames, const char *const *cnames, size_t vnames_len, error_record &e) {
  d.nobs = nobs;
  d.nvar = nvar;
  d.levels.assign(levels, levels + nvar);
  d.names_given = lvnames > 0;
  d.names.resize(nvar);
  bool cut = false;
  std::vector<char> was_cut(nvar, 0);
  for (int64_t j = 0; j < nvar; ++j) {
    if (!d.names_given) {
      d.names[j] = cat({"V", std::to_string(j + 1)});
      continue;
    }
    std::string_view s;
    if (cnames) {
      s = cnames[j];
    } else {
      s = std::string_view(vnames + j * vnames_len, vnames_len);
      while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
    }
    bool digits_only = !s.empty();
    for (char c : s) digits_only = digits_only && c >= '0' && c <= '9';
    bool ok = !s.empty() && !digits_only;
    for (char c : s) ok = ok && name_char(c);
    if (!ok) return void(e.raise(ierr_g22_invalid_name, "describe_data").i(j + 1));
    if (s.size() > max_name) {
      s = s.substr(0, max_name);
      was_cut[j] = 1;
      cut = true;
    }
    d.names[j].assign(s);
  }
  for (int64_t j = 1; j < nvar; ++j)
    for (int64_t i = 0; i < j; ++i)
      if (d.names[i] == d.names[j]) {
        const ierr c = (was_cut[i] || was_cut[j]) ? ierr_g22_duplicate_truncated : ierr_g22_duplicate;
        return void(e.raise(c, "describe_data").i(i + 1).i(j + 1));
      }
  if (cut) e.raise(ierr_g22_truncated, "describe_data", severity::warning);
}

}  // namespace

ZEM_INTERNAL void g22ybfn_(engine_data *, void **hddesc, const int64_t *nobs, const int64_t *nvar,
                           const int64_t *levels, const int64_t *lvnames, const char *vnames,
                           const char *const *cnames, char *errbuf, int64_t *ifail, size_t vnames_len) {
  *ifail = 0;
  error_record e;
  e.routine = "g22yb";
  auto out = [&] { translate(e, g22yb_translation, errbuf, ifail); };
  if (*nobs < 0) return e.raise(ierr_g22_bad_nobs, "g22ybfn").i(*nobs), out();
  if (*nvar < 0) return e.raise(ierr_g22_bad_nvar, "g22ybfn").i(*nvar), out();
  kind old{};
  const ierr hc = *hddesc ? check(*hddesc, &old) : ierr_g22_ok;
  if (hc != ierr_g22_ok) return e.raise(hc, "g22ybfn"), out();
  for (int64_t j = 0; j < *nvar; ++j)
    if (levels[j] < 1) return e.raise(ierr_g22_bad_levels, "g22ybfn").i(j + 1).i(levels[j]), out();
  if (*lvnames != 0 && *lvnames != *nvar)
    return e.raise(ierr_g22_bad_lvnames, "g22ybfn").i(*lvnames).i(*nvar), out();
  void *h = make_handle(kind::data);
  if (!h) return zem::alloc_fail(ifail);
  try {
    describe_data(*data_of(h), *nobs, *nvar, levels, *lvnames, vnames, cnames, vnames_len, e);
  } catch (const std::bad_alloc &) {
    release(h);
    return zem::alloc_fail(ifail);
  }
  if (e.failed()) {
    release(h);
    return out();
  }
  if (*hddesc) release(*hddesc);
  *hddesc = h;
  out();
}

ZEM_API void g22ybf_(void **hddesc, const int64_t *nobs, const int64_t *nvar, const int64_t levels[],
                     const int64_t *lvnames, const char *vnames, int64_t *ifail, size_t vnames_len) {
  zem::f_entry call("g22ybf", g22yb_messages);
  g22ybft_(&call.en_data, hddesc, nobs, nvar, levels, lvnames, vnames, nullptr, call.errbuf, &call.status,
           vnames_len);
  call.finish(ifail);
}

ZEM_API void g22ybc(void **hddesc, int64_t nobs, int64_t nvar, const int64_t levels[], int64_t lvnames,
                    const char *vnames[], Zem_Fail *fail) {
  zem::c_entry call("g22ybc", g22yb_messages, fail);
  if (!hddesc) return call.bad_param("hddesc");
  if (!levels && nvar > 0) return call.bad_param("levels");
  if (lvnames == nvar && nvar > 0) {
    if (!vnames) return call.bad_param("vnames");
    for (int64_t j = 0; j < nvar; ++j)
      if (!vnames[j]) return call.bad_param("vnames");
  }
  g22ybft_(&call.en_data, hddesc, &nobs, &nvar, levels, &lvnames, nullptr, vnames, call.errbuf, &call.status, 0);
  call.finish();
}
