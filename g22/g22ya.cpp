// g22ya: parse a model formula into a model formula handle.
#include <cstring>
#include <new>

#include "frame/frame.h"
#include "g22/g22.h"
#include "g22/messages.h"

using namespace zem::g22;

namespace {
constexpr const char *invalid_op = "Invalid use of an operator.";
}

inline constexpr zem::message g22ya_messages[] = {
    {11, 1001, NE_HANDLE, {"On entry, hform is not NULL or a recognised G22 handle."}},
    {21, 1101, NE_INVALID_FORMAT, {"The formula contained a mismatched parenthesis.", pos_c},
     {"The formula contained a mismatched parenthesis.", pos_f}},
    {21, 1102, NE_INVALID_FORMAT, {"An operator was missing.", pos_c}, {"An operator was missing.", pos_f}},
    {21, 1103, NE_INVALID_FORMAT, {invalid_op, pos_c}, {invalid_op, pos_f}},
    {21, 1104, NE_INVALID_FORMAT, {"Invalid specification for the power operator.", pos_c},
     {"Invalid specification for the power operator.", pos_f}},
    {21, 1105, NE_INVALID_FORMAT, {"Invalid specification for the colon operator.", pos_c},
     {"Invalid specification for the colon operator.", pos_f}},
    {21, 1106, NE_INVALID_FORMAT, {"Invalid specification for the mean.", pos_c},
     {"Invalid specification for the mean.", pos_f}},
    {21, 1107, NE_INVALID_FORMAT, {"Invalid variable name.", pos_c}, {"Invalid variable name.", pos_f}},
    {21, 1108, NE_INVALID_FORMAT, {"Missing variable name.", pos_c}, {"Missing variable name.", pos_f}},
    {21, 1110, NE_INVALID_FORMAT, {"An invalid contrast specifier has been supplied.", pos_c},
     {"An invalid contrast specifier has been supplied.", pos_f}},
    {22, 1109, NE_INVALID_FORMAT, {"After processing, the model contains no terms."}},
    {31, 1201, NE_INVALID_OPTION, {"On entry, an invalid option was supplied in formula.", pos_c},
     {"On entry, an invalid option was supplied in formula.", pos_f}},
    {32, 1202, NE_INVALID_FORMAT,
     {"On entry, an option was supplied in formula,", "but the expected delimiter ' = ' was not found.", pos_c},
     {"On entry, an option was supplied in formula,", "but the expected delimiter ' = ' was not found.", pos_f}},
    {33, 1203, NE_INVALID_FORMAT,
     {"On entry, an option was supplied in formula,", "but the supplied optval was invalid.", pos_c},
     {"On entry, an option was supplied in formula,", "but the supplied optval was invalid.", pos_f}},
    {101, 1301, NW_POTENTIAL_PROBLEM, {"A term contained a repeated variable with a", "different contrast specifier.", pos_c},
     {"A term contained a repeated variable with a", "different contrast specifier.", pos_f}},
};
ZEM_REGISTER_MESSAGES(g22ya)

inline constexpr translation g22ya_translation[] = {
    {ierr_g22_handle_unknown, 0, 11, 1001},         {ierr_g22_handle_corrupt, 0, 11, 1001},
    {ierr_g22_frm_mismatched_brace, 0, 21, 1101},   {ierr_g22_frm_missing_op, 0, 21, 1102},
    {ierr_g22_frm_invalid_op, 0, 21, 1103},         {ierr_g22_frm_invalid_power, 0, 21, 1104},
    {ierr_g22_frm_invalid_colon, 0, 21, 1105},      {ierr_g22_frm_invalid_mean, 0, 21, 1106},
    {ierr_g22_frm_invalid_var, 0, 21, 1107},        {ierr_g22_frm_missing_var, 0, 21, 1108},
    {ierr_g22_frm_invalid_contrast, 0, 21, 1110},   {ierr_g22_empty, 0, 22, 1109},
    {ierr_g22_unknown_option, 0, 31, 1201},         {ierr_g22_invalid_delimiter, 0, 32, 1202},
    {ierr_g22_invalid_optval, 0, 33, 1203},         {ierr_g22_frm_repeated_var, 0, 101, 1301},
};

#define G22YA_ARGS(V, A, U) \
  A(void **, hform) A(const char *, formula) V(char *, errbuf) V(int64_t *, ifail) U(size_t, formula_len)
ZEM_ENGINE_LAYERS(g22ya, G22YA_ARGS)

// On success (or the repeated-specifier warning) *hform holds a new handle;
// a handle it held before, of any g22 kind, is released.  On failure *hform
// is left as it was.
ZEM_INTERNAL void g22yafn_(engine_data *, void **hform, const char *formula, char *errbuf, int64_t *ifail,
                           size_t formula_len) {
  *ifail = 0;
  error_record e;
  e.routine = "g22ya";
  kind old{};
  const ierr hc = *hform ? check(*hform, &old) : ierr_g22_ok;
  if (hc != ierr_g22_ok) {
    e.raise(hc, "g22yafn");
    return translate(e, g22ya_translation, errbuf, ifail);
  }
  void *h = make_handle(kind::formula);
  if (!h) return zem::alloc_fail(ifail);
  try {
    std::string_view text(formula, formula_len);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    parse_formula(text, *formula_of(h), e);
  } catch (const std::bad_alloc &) {
    release(h);
    return zem::alloc_fail(ifail);
  }
  if (e.failed()) {
    release(h);
    return translate(e, g22ya_translation, errbuf, ifail);
  }
  if (*hform) release(*hform);
  *hform = h;
  translate(e, g22ya_translation, errbuf, ifail);
}

ZEM_API void g22yaf_(void **hform, const char *formula, int64_t *ifail, size_t formula_len) {
  zem::f_entry call("g22yaf", g22ya_messages);
  g22yaft_(&call.en_data, hform, formula, call.errbuf, &call.status, formula_len);
  call.finish(ifail);
}

ZEM_API void g22yac(void **hform, const char *formula, Zem_Fail *fail) {
  zem::c_entry call("g22yac", g22ya_messages, fail);
  if (!hform) return call.bad_param("hform");
  if (!formula) return call.bad_param("formula");
  g22yaft_(&call.en_data, hform, formula, call.errbuf, &call.status, std::strlen(formula));
  call.finish();
}
