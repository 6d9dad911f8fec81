// g22yc: the design matrix that a model formula implies for a dataset,
// with its description (columns, labels, codings) in a design matrix handle.
#include <new>

#include "frame/frame.h"
#include "g22/design.h"
#include "g22/g22.h"

using namespace zem::g22;

inline constexpr zem::message g22yc_messages[] = {
    {11, 1001, NE_HANDLE, {"hform has not been initialized or is corrupt."}},
    {12, 1002, NE_HANDLE, {"hddesc has not been initialized or is corrupt."}},
    {13, 1003, NE_HANDLE, {"On entry, hxdesc is not NULL or a recognised G22 handle."}},
    {21, 1004, NE_INT, {"On entry, lddat = %s and nobs = %s.", "Constraint: lddat >= nobs."},
     {"On entry, lddat = %s,", "nobs = %s.", "Constraint: lddat >= nobs."}},
    {21, 1005, NE_INT, {"On entry, lddat = %s and nvar = %s.", "Constraint: lddat >= nvar."},
     {"On entry, lddat = %s,", "nvar = %s.", "Constraint: lddat >= nvar."}},
    {22, 1006, NE_INT, {"On entry, sddat = %s and nvar = %s.", "Constraint: sddat >= nvar."},
     {"On entry, sddat = %s,", "nvar = %s.", "Constraint: sddat >= nvar."}},
    {22, 1007, NE_INT, {"On entry, sddat = %s and nobs = %s.", "Constraint: sddat >= nobs."},
     {"On entry, sddat = %s,", "nobs = %s.", "Constraint: sddat >= nobs."}},
    {31, 1008, NE_FIELD_UNKNOWN,
     {"A variable name used when creating hform is not present in hddesc.", "Variable name: %s."}},
    {41, 1009, NE_REAL_ARRAY_INPUT,
     {"On entry, categorical variable %s,", "observation %s: value %s.",
      "Constraint: each value is a level number, 1 to levels[j-1]."},
     {"On entry, categorical variable %s,", "observation %s: value %s.",
      "Constraint: each value is a level number, 1 to levels(j)."}},
    {42, 1010, NE_ARRAY_SIZE, {"The design matrix would have more than %s columns."}},
    {43, 1017, NE_INT,
     {"A polynomial contrast is made for at most 1000 levels:", "variable %s has %s levels."}},
    {101, 1011, NW_POTENTIAL_PROBLEM,
     {"The model contains categorical variables, but no intercept",
      "or main effects terms have been requested.",
      "Please check the design matrix returned matches the model you require."}},
    {102, 1012, NW_ALTERNATIVE,
     {"On entry, the size of x is too small to hold the design matrix.", "dat can be used instead."}},
    {103, 1013, NW_ARRAY_SIZE, {"On entry, n = %s and pdx = %s.", "Constraint: pdx >= n."}},
    {103, 1014, NW_ARRAY_SIZE, {"On entry, m_x = %s and sdx = %s.", "Constraint: sdx >= m_x."},
     {"On entry, m_x = %s and sdx = %s", "Constraint: sdx >= m_x."}},
    {103, 1015, NW_ARRAY_SIZE, {"On entry, m_x = %s and pdx = %s.", "Constraint: pdx >= m_x."},
     {"On entry, m_x = %s and pdx = %s", "Constraint: pdx >= m_x."}},
    {103, 1016, NW_ARRAY_SIZE, {"On entry, n = %s and sdx = %s.", "Constraint: sdx >= n."}},
};
ZEM_REGISTER_MESSAGES(g22yc)

inline constexpr translation g22yc_translation[] = {
    {ierr_g22_handle_null, 1, 11, 1001},          {ierr_g22_handle_unknown, 1, 11, 1001},
    {ierr_g22_handle_corrupt, 1, 11, 1001},       {ierr_g22_handle_invalid_type, 1, 11, 1001},
    {ierr_g22_handle_null, 2, 12, 1002},          {ierr_g22_handle_unknown, 2, 12, 1002},
    {ierr_g22_handle_corrupt, 2, 12, 1002},       {ierr_g22_handle_invalid_type, 2, 12, 1002},
    {ierr_g22_handle_unknown, 3, 13, 1003},       {ierr_g22_handle_corrupt, 3, 13, 1003},
    {ierr_g22_bad_lddat, 0, 21, 1004},            {ierr_g22_bad_lddat, 1, 21, 1005},
    {ierr_g22_bad_sddat, 0, 22, 1006},            {ierr_g22_bad_sddat, 1, 22, 1007},
    {ierr_g22_unknown_variable, 0, 31, 1008},     {ierr_g22_bad_level_value, 0, 41, 1009},
    {ierr_g22_too_large, 0, 42, 1010},            {ierr_g22_poly_levels, 0, 43, 1017},            {ierr_g22_no_main_effects, 0, 101, 1011},
    {ierr_g22_size_alternative, 0, 102, 1012},    {ierr_g22_size_query, 1, 103, 1013},
    {ierr_g22_size_query, 2, 103, 1014},          {ierr_g22_size_query, 3, 103, 1015},
    {ierr_g22_size_query, 4, 103, 1016},
};

#define G22YC_ARGS(V, A, U)                                                                              \
  A(void *const *, hform) A(void *const *, hddesc) A(const double *, dat) V(const int64_t *, lddat)     \
  V(const int64_t *, sddat) A(void **, hxdesc) A(double *, x) V(const int64_t *, ldx)                   \
  V(const int64_t *, sdx) V(int64_t *, mx) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g22yc, G22YC_ARGS)

// The design matrix is written only when x is large enough; otherwise mx
// and the description are returned with the size warning (NW_ALTERNATIVE
// when dat itself is the design matrix).  A handle *hxdesc held before, of
// any g22 kind, is released when the new description is stored.
ZEM_INTERNAL void g22ycfn_(engine_data *, void *const *hform, void *const *hddesc, const double *dat,
                           const int64_t *lddat, const int64_t *sddat, void **hxdesc, double *x,
                           const int64_t *ldx, const int64_t *sdx, int64_t *mx, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  error_record e;
  e.routine = "g22yc";
  auto out = [&] { translate(e, g22yc_translation, errbuf, ifail); };
  if (!check_handle(*hform, kind::formula, false, 1, e)) return out();
  if (!check_handle(*hddesc, kind::data, false, 2, e)) return out();
  kind old{};
  const ierr hc = *hxdesc ? check(*hxdesc, &old) : ierr_g22_ok;
  if (hc != ierr_g22_ok) return e.raise(hc, "g22ycfn").var(3), out();
  const formula_model &f = *formula_of(*hform);
  const data_description &d = *data_of(*hddesc);
  const int64_t rows = d.by_variables ? d.nvar : d.nobs, cols = d.by_variables ? d.nobs : d.nvar;
  const int v = d.by_variables ? 1 : 0;
  if (*lddat < rows || *lddat < 1) return e.raise(ierr_g22_bad_lddat, "g22ycfn").var(v).i(*lddat).i(rows), out();
  if (*sddat < cols) return e.raise(ierr_g22_bad_sddat, "g22ycfn").var(1 - v).i(*sddat).i(cols), out();

  void *h = make_handle(kind::design);
  if (!h) return zem::alloc_fail(ifail);
  try {
    design_description &xd = *design_of(h);
    plan_design(f, d, xd, e);
    if (!e.failed()) {
      // Room for the matrix: rows by columns in the storage order.
      const int64_t xr = d.by_variables ? xd.mx : d.nobs, xc = d.by_variables ? d.nobs : xd.mx;
      const bool fits = *ldx >= xr && *ldx >= 1 && *sdx >= xc;
      if (!fits) {
        if (design_is_data(xd, d)) {
          e.raise(ierr_g22_size_alternative, "g22ycfn", severity::error);
        } else if (*ldx < xr || *ldx < 1) {
          e.raise(ierr_g22_size_query, "g22ycfn", severity::error).var(d.by_variables ? 3 : 1).i(xr).i(*ldx);
        } else {
          e.raise(ierr_g22_size_query, "g22ycfn", severity::error).var(d.by_variables ? 4 : 2).i(xc).i(*sdx);
        }
        e.sev = severity::warning;  // outputs (mx, hxdesc) are fully set
      } else if (check_levels(xd, d, dat, *lddat, e)) {
        fill_design(xd, dat, *lddat, x, *ldx);
      }
    }
  } catch (const std::bad_alloc &) {
    release(h);
    return zem::alloc_fail(ifail);
  }
  if (e.failed()) {
    release(h);
    return out();
  }
  *mx = design_of(h)->mx;
  if (*hxdesc) release(*hxdesc);
  *hxdesc = h;
  out();
}

ZEM_API void g22ycf_(void *const *hform, void *const *hddesc, const double dat[], const int64_t *lddat,
                     const int64_t *sddat, void **hxdesc, double x[], const int64_t *ldx, const int64_t *sdx,
                     int64_t *mx, int64_t *ifail) {
  zem::f_entry call("g22ycf", g22yc_messages);
  g22ycft_(&call.en_data, hform, hddesc, dat, lddat, sddat, hxdesc, x, ldx, sdx, mx, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void g22ycc(void *hform, void *hddesc, const double dat[], int64_t lddat, int64_t sddat, void **hxdesc,
                    double x[], int64_t ldx, int64_t sdx, int64_t *mx, Zem_Fail *fail) {
  zem::c_entry call("g22ycc", g22yc_messages, fail);
  if (!hxdesc) return call.bad_param("hxdesc");
  if (!mx) return call.bad_param("mx");
  if (!dat && lddat > 0 && sddat > 0) return call.bad_param("dat");
  if (!x && ldx > 0 && sdx > 0) return call.bad_param("x");
  g22ycft_(&call.en_data, &hform, &hddesc, dat, &lddat, &sddat, hxdesc, x, &ldx, &sdx, mx, call.errbuf,
           &call.status);
  call.finish();
}
