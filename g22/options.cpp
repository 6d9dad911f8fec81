// Options of the g22 handles, set from "NAME = value" and read by name, and
// the description a handle prints under its title.
//
//   option           short name      handles                 values (default first)
//   "STORAGE ORDER"  "SORDER"        data; design (read)     "Observations", "Variables"
//   "EXPLICIT MEAN"  "EXPLICIT_MEAN" formula                 "NO", "YES"
//   "FORMULA"        "FORMULA"       formula, design, LMM (read)  the formula text
//   "CONTRAST"       "CONTRAST"      formula                 "FIRST", "LAST", "SUM FIRST",
//                                                            "SUM LAST", "HELMERT",
//                                                            "POLYNOMIAL", "DUMMY"
//   "SUBJECT"        "SUBJECT"       formula; LMM (read)     a variable name, or blank
//   "PRINT"          "PRINT"         all                     a unit number: setting it writes
//                                                            the handle's description there;
//                                                            reading it gives the advisory unit
// Names and keyword values are matched without regard to case.
#include <charconv>
#include <cstdio>

#include "frame/units.h"
#include "g22/g22.h"

namespace zem::g22 {
namespace {

enum class opt { sorder, explicit_mean, formula, contrast, subject, print, unknown };

struct option_def {
  opt id;
  const char *long_name;
  const char *short_name;
};
constexpr option_def defs[] = {
    {opt::sorder, "STORAGE ORDER", "SORDER"}, {opt::explicit_mean, "EXPLICIT MEAN", "EXPLICIT_MEAN"},
    {opt::formula, "FORMULA", "FORMULA"},     {opt::contrast, "CONTRAST", "CONTRAST"},
    {opt::subject, "SUBJECT", "SUBJECT"},     {opt::print, "PRINT", "PRINT"},
};

opt find(std::string_view name) {
  name = trim(name);
  for (const option_def &d : defs)
    if (same_text(name, d.long_name) || same_text(name, d.short_name)) return d.id;
  return opt::unknown;
}

// Whether handle kind k has option o at all, and whether it may be set.
bool has(opt o, kind k) {
  switch (o) {
    case opt::sorder: return k == kind::data || k == kind::design;
    case opt::explicit_mean:
    case opt::contrast: return k == kind::formula;
    case opt::formula: return k != kind::data;
    case opt::subject: return k == kind::formula || k == kind::lmm;
    case opt::print: return true;
    case opt::unknown: return false;
  }
  return false;
}
bool writable(opt o, kind k) {
  switch (o) {
    case opt::sorder: return k == kind::data;
    case opt::explicit_mean:
    case opt::contrast:
    case opt::subject: return k == kind::formula;
    case opt::print: return true;
    default: return false;
  }
}

void print_handle(void *h, kind k, int64_t unit) {
  for (const std::string &line : describe(h, k)) write_record(unit, line);
}

}  // namespace

void set_option(void *h, kind k, std::string_view optstr, error_record &e) {
  const size_t eq = optstr.find('=');
  const std::string_view name = trim(optstr.substr(0, eq));
  opt o = find(name);
  if (eq == std::string_view::npos && o == opt::unknown) {
    // "NAME value" without the delimiter: a known name followed by a blank.
    for (const option_def &d : defs)
      for (const char *n : {d.long_name, d.short_name}) {
        const std::string_view sv(n);
        if (name.size() > sv.size() && name[sv.size()] == ' ' && same_text(name.substr(0, sv.size()), sv))
          o = d.id;
      }
    if (o != opt::unknown) return void(e.raise(ierr_g22_invalid_delimiter, "set_option").c(optstr));
  }
  if (o == opt::unknown || !has(o, k)) return void(e.raise(ierr_g22_unknown_option, "set_option").c(optstr));
  if (!writable(o, k)) return void(e.raise(ierr_g22_read_only, "set_option").c(optstr));
  if (eq == std::string_view::npos || eq == 0 || optstr[eq - 1] != ' ' || eq + 1 >= optstr.size() ||
      optstr[eq + 1] != ' ')
    return void(e.raise(ierr_g22_invalid_delimiter, "set_option").c(optstr));
  const std::string_view val = trim(optstr.substr(eq + 1));
  auto bad_value = [&] { e.raise(ierr_g22_invalid_optval, "set_option").c(optstr); };
  switch (o) {
    case opt::sorder: {
      data_description *d = data_of(h);
      if (same_text(val, "OBSERVATIONS"))
        d->by_variables = false;
      else if (same_text(val, "VARIABLES"))
        d->by_variables = true;
      else
        bad_value();
      return;
    }
    case opt::explicit_mean: {
      formula_model *f = formula_of(h);
      if (same_text(val, "YES"))
        f->explicit_mean = true;
      else if (same_text(val, "NO"))
        f->explicit_mean = false;
      else
        bad_value();
      return;
    }
    case opt::contrast: {
      const contrast c = contrast_of(val);
      if (c == none) return bad_value();
      formula_of(h)->default_contrast = c;
      return;
    }
    case opt::subject: {
      if (val.size() > max_name) return bad_value();
      for (char ch : val)
        if (!name_char(ch)) return bad_value();
      formula_of(h)->subject.assign(val);
      return;
    }
    case opt::print: {
      int64_t unit = 0;
      const auto r = std::from_chars(val.data(), val.data() + val.size(), unit);
      if (val.empty() || r.ec != std::errc() || r.ptr != val.data() + val.size())
        return void(e.raise(ierr_g22_not_integer, "set_option").c(optstr));
      print_handle(h, k, unit);
      return;
    }
    default: return;
  }
}

void get_option(void *h, kind k, std::string_view name, option_value &v, error_record &e) {
  const opt o = find(name);
  if (o == opt::unknown || !has(o, k)) return void(e.raise(ierr_g22_unknown_option, "get_option").c(name));
  v.optype = 3;
  switch (o) {
    case opt::sorder:
      v.c = (k == kind::data ? data_of(h)->by_variables : design_of(h)->by_variables) ? "Variables"
                                                                                      : "Observations";
      return;
    case opt::explicit_mean: v.c = formula_of(h)->explicit_mean ? "YES" : "NO"; return;
    case opt::formula:
      v.c = k == kind::formula ? formula_of(h)->text : k == kind::design ? design_of(h)->formula : lmm_of(h)->formula;
      return;
    case opt::contrast: v.c = contrast_names[formula_of(h)->default_contrast]; return;
    case opt::subject: v.c = k == kind::formula ? formula_of(h)->subject : lmm_of(h)->subject; return;
    case opt::print:
      v.optype = 1;
      v.i = adv_unit();
      return;
    default: return;
  }
}

// ---- Description -------------------------------------------------------
namespace {

// Appends "label: text", wrapped at 80 characters.
void put(std::vector<std::string> &out, const std::string &label, const std::string &text) {
  std::string line = cat({" ", label, text});
  while (line.size() > 80) {
    out.push_back(line.substr(0, 80));
    line = cat({"     ", std::string_view(line).substr(80)});
  }
  out.push_back(line);
}

}  // namespace

std::vector<std::string> describe(void *h, kind k) {
  std::vector<std::string> out;
  out.emplace_back(title(k));
  out.emplace_back(std::string(std::string_view(title(k)).size(), '-'));
  switch (k) {
    case kind::formula: {
      const formula_model &f = *formula_of(h);
      std::string text(trim(f.text));
      if (!f.subject.empty()) text += cat({" / SUBJECT=", f.subject});
      put(out, "Formula: ", text);
      put(out, "Number of terms in model: ", std::to_string(f.terms.size() + (f.has_mean() ? 1 : 0)));
      put(out, "Mean: ", f.has_mean() ? "included" : "excluded");
      put(out, "Contrast: ", contrast_names[f.default_contrast]);
      put(out, "Explicit mean: ", f.explicit_mean ? "YES" : "NO");
      if (f.has_mean()) put(out, "  Term 0: ", "Intercept");
      for (size_t t = 0; t < f.terms.size(); ++t)
        put(out, cat({"  Term ", std::to_string(t + 1), ": "}), term_label(f, f.terms[t]));
      break;
    }
    case kind::data: {
      const data_description &d = *data_of(h);
      put(out, "Number of observations: ", std::to_string(d.nobs));
      put(out, "Number of variables: ", std::to_string(d.nvar));
      put(out, "Storage order: ", d.by_variables ? "Variables" : "Observations");
      for (int64_t j = 0; j < d.nvar; ++j)
        put(out, cat({"  Variable ", std::to_string(j + 1), ": "}),
            d.levels[j] > 1 ? cat({d.names[j], ", ", std::to_string(d.levels[j]), " levels"})
                            : cat({d.names[j], ", continuous"}));
      break;
    }
    case kind::design: {
      const design_description &x = *design_of(h);
      put(out, "Formula: ", std::string(trim(x.formula)));
      put(out, "Number of columns: ", std::to_string(x.mx));
      put(out, "Storage order: ", x.by_variables ? "Variables" : "Observations");
      put(out, "Mean: ", x.mean ? "included" : "excluded");
      for (int64_t c = 0; c < x.mx; ++c) {
        std::string s = x.labels[c];
        const int64_t t = x.col_term[c];
        if (t > 0) {
          const design_term &dt = x.terms[t - 1];
          std::string codes;
          for (size_t k = 0; k < dt.vars.size(); ++k)
            if (dt.levels[k] > 1) codes += cat({codes.empty() ? "" : ", ", contrast_names[dt.coding[k]]});
          s += cat({"  (term ", std::to_string(t), codes.empty() ? "" : ", ", codes, ")"});
        }
        put(out, cat({"  Column ", std::to_string(c + 1), ": "}), s);
      }
      break;
    }
    case kind::lmm: {
      const lmm_description &l = *lmm_of(h);
      put(out, "Formula: ", cat({trim(l.formula), l.subject.empty() ? "" : " / SUBJECT=", l.subject}));
      break;
    }
  }
  return out;
}

}  // namespace zem::g22
