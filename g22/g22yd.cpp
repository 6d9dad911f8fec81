// g22yd: relate a (possibly reduced) model formula to an existing design
// matrix: which columns it uses, their labels, and what each column is.
//
//   what = 0  the columns of the design matrix that the model in hform uses
//   what = 1  every column of the design matrix (hform may be NULL)
//
// vinfo, per returned column in order: the term number in the design
// matrix (0 for the mean), the number of variables nv of the term, then nv
// pairs (data variable number, coding column: 0 for a continuous variable).
#include <algorithm>
#include <cstring>
#include <new>

#include "frame/frame.h"
#include "g22/g22.h"

using namespace zem::g22;

inline constexpr zem::message g22yd_messages[] = {
    {11, 1001, NE_HANDLE, {"hform has not been initialized or is corrupt."}},
    {12, 1002, NE_HANDLE, {"hxdesc has not been initialized or is corrupt."}},
    {21, 1003, NE_INVALID_ENUM_RANGE, {"Supplied value of what is not valid for the G22 handle supplied in hxdesc."}},
    {31, 1004, NE_NOT_CONS,
     {"The model and the design matrix are not consistent.",
      "The model includes a term not present in the design matrix.", "Term: %s."}},
    {32, 1005, NE_NOT_CONS,
     {"The model and the design matrix are not consistent.",
      "The model includes a mean effect not present in the design matrix."}},
    {41, 1006, NE_INT, {"On entry, lisx = %s and m_x = %s.", "Constraint: lisx = 0 or lisx >= m_x."},
     {"On entry, lisx = %s", "and m_x = %s.", "Constraint: lisx = 0 or lisx >= m_x."}},
    {42, 1007, NE_INT, {"On entry, lplab = %s and p = %s.", "Constraint: lplab = 0 or lplab >= p."},
     {"On entry, lplab = %s and p = %s", "Constraint: lplab = 0 or lplab >= p."}},
    {43, 1008, NE_INT,
     {"On entry, lvinfo = %s,", "the required length is %s.",
      "Constraint: lvinfo = 0 or lvinfo >= the required length."}},
    {101, 1009, NW_NOT_CONS,
     {"The model specifies different contrasts to those used when the design matrix",
      "was constructed. The contrasts specified in hform will be ignored."}},
};
ZEM_REGISTER_MESSAGES(g22yd)

inline constexpr translation g22yd_translation[] = {
    {ierr_g22_handle_null, 1, 11, 1001},       {ierr_g22_handle_unknown, 1, 11, 1001},
    {ierr_g22_handle_corrupt, 1, 11, 1001},    {ierr_g22_handle_invalid_type, 1, 11, 1001},
    {ierr_g22_handle_null, 2, 12, 1002},       {ierr_g22_handle_unknown, 2, 12, 1002},
    {ierr_g22_handle_corrupt, 2, 12, 1002},    {ierr_g22_handle_invalid_type, 2, 12, 1002},
    {ierr_g22_bad_what, 0, 21, 1003},          {ierr_g22_not_cons_term, 0, 31, 1004},
    {ierr_g22_not_cons_mean, 0, 32, 1005},     {ierr_g22_bad_lisx, 0, 41, 1006},
    {ierr_g22_bad_lplab, 0, 42, 1007},         {ierr_g22_bad_lvinfo, 0, 43, 1008},
    {ierr_g22_diff_contrast, 0, 101, 1009},
};

// plab holds lplab fields of plab_len characters; with cstrings non-zero
// each label is a C string (cut to plab_len - 1 characters), otherwise it
// is blank-padded Fortran text (cut to plab_len).
#define G22YD_ARGS(V, A, U)                                                                                 \
  V(const int64_t *, what) A(void *const *, hform) A(void *const *, hxdesc) V(int64_t *, iintcpt)            \
  V(int64_t *, p) V(const int64_t *, lisx) A(int64_t *, isx) V(const int64_t *, lplab) A(char *, plab)       \
  V(const int64_t *, lvinfo) A(int64_t *, vinfo) V(int64_t *, mlterm) V(const int64_t *, cstrings)          \
  V(char *, errbuf) V(int64_t *, ifail) U(size_t, plab_len)
ZEM_ENGINE_LAYERS(g22yd, G22YD_ARGS)

namespace {

// The columns of design x that formula f uses (what = 0), or all (what = 1).
void select_columns(int64_t what, const formula_model *f, const design_description &x, std::vector<char> &use,
                    error_record &e) {
  use.assign(static_cast<size_t>(x.mx), what == 1);
  if (what == 1) return;
  std::vector<char> term_used(x.terms.size() + 1, 0);
  bool other_contrasts = false;
  for (const term &t : f->terms) {
    // The term's variables as data variables of the design matrix.
    std::vector<int64_t> vars;
    for (int v : t.vars) {
      const auto it = std::find(x.names.begin(), x.names.end(), f->names[v]);
      vars.push_back(it == x.names.end() ? -1 : it - x.names.begin());
    }
    size_t found = 0;
    for (size_t k = 0; k < x.terms.size() && !found; ++k) {
      std::vector<int64_t> a = x.terms[k].vars, b = vars;
      std::sort(a.begin(), a.end());
      std::sort(b.begin(), b.end());
      if (a == b) found = k + 1;
    }
    if (!found) return void(e.raise(ierr_g22_not_cons_term, "select_columns").c(term_label(*f, t)));
    term_used[found] = 1;
    const design_term &dt = x.terms[found - 1];
    for (size_t k = 0; k < t.vars.size(); ++k) {
      const auto pos = std::find(dt.vars.begin(), dt.vars.end(), vars[k]) - dt.vars.begin();
      const contrast want = t.own_contrasts[k] != none ? t.own_contrasts[k] : f->default_contrast;
      if (dt.levels[pos] > 1 && want != dt.requested[pos]) other_contrasts = true;
    }
  }
  if (f->has_mean() && !x.mean) return void(e.raise(ierr_g22_not_cons_mean, "select_columns"));
  term_used[0] = f->has_mean();
  for (int64_t c = 0; c < x.mx; ++c) use[c] = term_used[x.col_term[c]];
  if (other_contrasts) e.raise(ierr_g22_diff_contrast, "select_columns", severity::warning);
}

}  // namespace

ZEM_INTERNAL void g22ydfn_(engine_data *, const int64_t *what, void *const *hform, void *const *hxdesc,
                           int64_t *iintcpt, int64_t *p, const int64_t *lisx, int64_t *isx, const int64_t *lplab,
                           char *plab, const int64_t *lvinfo, int64_t *vinfo, int64_t *mlterm,
                           const int64_t *cstrings, char *errbuf, int64_t *ifail, size_t plab_len) {
  *ifail = 0;
  error_record e;
  e.routine = "g22yd";
  auto out = [&] { translate(e, g22yd_translation, errbuf, ifail); };
  if (!check_handle(*hform, kind::formula, *what == 1, 1, e)) return out();
  kind k{};
  const ierr hc = check(*hxdesc, &k);
  if (hc != ierr_g22_ok || (k != kind::design && k != kind::lmm)) {
    e.raise(hc != ierr_g22_ok ? hc : ierr_g22_handle_invalid_type, "g22ydfn").var(2);
    return out();
  }
  // No value of what is defined for a mixed-model description yet.
  if (k != kind::design || (*what != 0 && *what != 1)) return e.raise(ierr_g22_bad_what, "g22ydfn"), out();
  const design_description &x = *design_of(*hxdesc);
  try {
    std::vector<char> use;
    select_columns(*what, *hform ? formula_of(*hform) : nullptr, x, use, e);
    if (e.failed()) return out();
    int64_t np = 0, need_vinfo = 0, longest = 0;
    for (int64_t c = 0; c < x.mx; ++c)
      if (use[c]) {
        ++np;
        need_vinfo += 2 + 2 * static_cast<int64_t>(x.col_factors[c].size());
        longest = std::max<int64_t>(longest, static_cast<int64_t>(x.labels[c].size()));
      }
    need_vinfo = std::max<int64_t>(need_vinfo, 3);
    const bool bad_isx = *lisx != 0 && *lisx < x.mx;
    const bool bad_plab = *lplab != 0 && *lplab < np;
    const bool bad_vinfo = *lvinfo != 0 && *lvinfo < need_vinfo;
    *p = np;
    *mlterm = longest;
    if (bad_isx || bad_plab || bad_vinfo) {
      if (*lvinfo >= 3) {
        vinfo[0] = x.mx;
        vinfo[1] = np;
        vinfo[2] = need_vinfo;
      }
      if (bad_isx)
        e.raise(ierr_g22_bad_lisx, "g22ydfn").i(*lisx).i(x.mx);
      else if (bad_plab)
        e.raise(ierr_g22_bad_lplab, "g22ydfn").i(*lplab).i(np);
      else
        e.raise(ierr_g22_bad_lvinfo, "g22ydfn").i(*lvinfo).i(need_vinfo);
      return out();
    }
    *iintcpt = 0;
    int64_t j = 0, at = 0;
    for (int64_t c = 0; c < x.mx; ++c) {
      if (*lisx > 0) isx[c] = use[c] ? 1 : 0;
      if (!use[c]) continue;
      if (x.col_term[c] == 0) *iintcpt = j + 1;
      if (*lplab > 0 && plab_len > 0) {
        char *field = plab + j * plab_len;
        const std::string &lab = x.labels[c];
        const size_t room = *cstrings ? plab_len - 1 : plab_len;
        const size_t n = std::min(lab.size(), room);
        std::memcpy(field, lab.data(), n);
        if (*cstrings)
          field[n] = '\0';
        else
          std::memset(field + n, ' ', plab_len - n);
      }
      if (*lvinfo > 0) {
        const int64_t t = x.col_term[c];
        vinfo[at++] = t;
        vinfo[at++] = static_cast<int64_t>(x.col_factors[c].size());
        for (const column_factor &cf : x.col_factors[c]) {
          vinfo[at++] = cf.var + 1;
          vinfo[at++] = cf.column;
        }
      }
      ++j;
    }
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  out();
}

ZEM_API void g22ydf_(const int64_t *what, void *const *hform, void *const *hxdesc, int64_t *iintcpt, int64_t *p,
                     const int64_t *lisx, int64_t isx[], const int64_t *lplab, char *plab, const int64_t *lvinfo,
                     int64_t vinfo[], int64_t *mlterm, int64_t *ifail, size_t plab_len) {
  zem::f_entry call("g22ydf", g22yd_messages);
  const int64_t fortran_text = 0;
  g22ydft_(&call.en_data, what, hform, hxdesc, iintcpt, p, lisx, isx, lplab, plab, lvinfo, vinfo, mlterm,
           &fortran_text, call.errbuf, &call.status, plab_len);
  call.finish(ifail);
}

ZEM_API void g22ydc(int64_t what, void *hform, void *hxdesc, int64_t *iintcpt, int64_t *p, int64_t lisx,
                    int64_t isx[], int64_t lplab, char plab[], int64_t lvinfo, int64_t vinfo[], int64_t *mlterm,
                    Zem_Fail *fail) {
  zem::c_entry call("g22ydc", g22yd_messages, fail);
  if (!iintcpt) return call.bad_param("iintcpt");
  if (!p) return call.bad_param("p");
  if (!mlterm) return call.bad_param("mlterm");
  if (lisx > 0 && !isx) return call.bad_param("isx");
  if (lplab > 0 && (!plab || *mlterm < 1)) return call.bad_param(!plab ? "plab" : "mlterm");
  if (lvinfo > 0 && !vinfo) return call.bad_param("vinfo");
  const int64_t c_text = 1;
  const size_t width = lplab > 0 ? static_cast<size_t>(*mlterm) : 0;
  g22ydft_(&call.en_data, &what, &hform, &hxdesc, iintcpt, p, &lisx, isx, &lplab, plab, &lvinfo, vinfo, mlterm,
           &c_text, call.errbuf, &call.status, width);
  call.finish();
}
