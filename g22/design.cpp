// Contrast codings and the plan of a design matrix: which columns a model
// implies for a dataset, their labels, and how each is computed.
#include <algorithm>
#include <cmath>

#include "g22/design.h"

namespace zem::g22 {

// ---- Codings -----------------------------------------------------------
// The matrix of a contrast for L levels: row l holds the values the columns
// take for an observation at level l.
//   FIRST       e_2 .. e_L                       (level 1 is all zeros)
//   LAST        e_1 .. e_{L-1}                   (level L is all zeros)
//   SUM FIRST   columns for levels 2..L, level 1 is -1 in each
//   SUM LAST    columns for levels 1..L-1, level L is -1 in each
//   HELMERT     column j: -1 for levels 1..j, j for level j+1, 0 after
//   POLYNOMIAL  orthonormal polynomials of degree 1..L-1 in the level number
//   DUMMY       e_1 .. e_L
coding make_coding(contrast c, int64_t L) {
  coding k;
  k.c = c;
  k.levels = L;
  k.ncol = coding_columns(c, L);
  auto label = [&](int64_t v) { k.labels.push_back(std::to_string(v)); };
  switch (c) {
    case first:
    case sum_first:
      for (int64_t j = 1; j <= L - 1; ++j) label(j + 1);
      break;
    case last:
    case sum_last:
    case helmert:
      for (int64_t j = 1; j <= L - 1; ++j) label(j);
      break;
    case dummy:
    case none:
      for (int64_t j = 1; j <= L; ++j) label(j);
      break;
    case polynomial: {
      // Three-term recurrence on the centred level numbers, each column
      // normalised as it is made (so nothing grows with the degree) and
      // orthogonalised twice more against the two before it.
      k.m.assign(static_cast<size_t>(L * k.ncol), 0.0);
      std::vector<double> x(L), prev(L, 0.0), q(L, 1.0 / std::sqrt(static_cast<double>(L))), r(L);
      for (int64_t l = 0; l < L; ++l) x[l] = static_cast<double>(l) - static_cast<double>(L - 1) / 2.0;
      auto dot = [&](const std::vector<double> &a, const std::vector<double> &b) {
        double s = 0.0;
        for (int64_t l = 0; l < L; ++l) s += a[l] * b[l];
        return s;
      };
      for (int64_t j = 1; j <= L - 1; ++j) {
        for (int64_t l = 0; l < L; ++l) r[l] = x[l] * q[l];
        for (const std::vector<double> *b : {&q, &prev}) {
          for (int pass = 0; pass < 2; ++pass) {
            const double c2 = dot(r, *b);
            for (int64_t l = 0; l < L; ++l) r[l] -= c2 * (*b)[l];
          }
        }
        const double nr = std::sqrt(dot(r, r));
        for (int64_t l = 0; l < L; ++l) r[l] /= nr;
        prev = q;
        q = r;
        for (int64_t l = 1; l <= L; ++l) k.m[(l - 1) * k.ncol + (j - 1)] = std::fabs(q[l - 1]) < 1e-15 ? 0.0 : q[l - 1];
        std::string lab = j == 1 ? ".L" : j == 2 ? ".Q" : j == 3 ? ".C" : "^";
        if (j > 3) lab += std::to_string(j);
        k.labels.push_back(std::move(lab));
      }
      break;
    }
  }
  return k;
}

// The codings (row l = the values of the columns for level l):
//   FIRST       e_2 .. e_L                       (level 1 is all zeros)
//   LAST        e_1 .. e_{L-1}                   (level L is all zeros)
//   SUM FIRST   columns for levels 2..L, level 1 is -1 in each
//   SUM LAST    columns for levels 1..L-1, level L is -1 in each
//   HELMERT     column j: -1 for levels 1..j, j for level j+1, 0 after
//   POLYNOMIAL  orthonormal polynomials of degree 1..L-1 in the level number
//   DUMMY       e_1 .. e_L
double coding::value(int64_t l, int64_t j) const {
  switch (c) {
    case first: return l == j + 1 ? 1.0 : 0.0;
    case last: return l == j ? 1.0 : 0.0;
    case sum_first: return l == 1 ? -1.0 : l == j + 1 ? 1.0 : 0.0;
    case sum_last: return l == levels ? -1.0 : l == j ? 1.0 : 0.0;
    case helmert: return l <= j ? -1.0 : l == j + 1 ? static_cast<double>(j) : 0.0;
    case polynomial: return m[(l - 1) * ncol + (j - 1)];
    default: return l == j ? 1.0 : 0.0;
  }
}

void coding::column(int64_t j, std::vector<double> &out) const {
  out.resize(static_cast<size_t>(levels));
  for (int64_t l = 1; l <= levels; ++l) out[l - 1] = value(l, j);
}

// ---- The plan ----------------------------------------------------------
namespace {

bool subset(const std::vector<int> &a, const std::vector<int> &b) {
  return std::includes(b.begin(), b.end(), a.begin(), a.end());
}

}  // namespace

void plan_design(const formula_model &f, const data_description &d, design_description &x, error_record &e) {
  x.formula = f.text;
  x.nobs = d.nobs;
  x.by_variables = d.by_variables;
  x.mean = f.has_mean();
  x.names = d.names;

  // Formula variables to data variables (names match exactly).
  std::vector<int64_t> datavar(f.names.size(), -1);
  for (const term &t : f.terms)
    for (int v : t.vars) {
      if (datavar[v] >= 0) continue;
      for (int64_t j = 0; j < d.nvar; ++j)
        if (d.names[j] == f.names[v]) datavar[v] = j;
      if (datavar[v] < 0) return void(e.raise(ierr_g22_unknown_variable, "plan_design").c(f.names[v]));
    }
  auto categorical = [&](int v) { return d.levels[datavar[v]] > 1; };

  // How each categorical variable of each term is coded.  A variable is
  // coded by its contrast when the rest of its term (its margin) is empty or
  // lies inside an earlier term; otherwise the margin is not in the model
  // and the variable gets one indicator per level, so that the term spans
  // what the missing margin would have.  Without a mean, the first
  // categorical variable of the first term that has one is coded by
  // indicators.
  bool full_done = x.mean;
  for (size_t ti = 0; ti < f.terms.size(); ++ti) {
    const term &t = f.terms[ti];
    design_term dt;
    std::string label;
    for (size_t k = 0; k < t.vars.size(); ++k) {
      const int v = t.vars[k];
      dt.vars.push_back(datavar[v]);
      dt.levels.push_back(d.levels[datavar[v]]);
      if (k) label += ':';
      label += f.names[v];
      contrast c = t.own_contrasts[k] != none ? t.own_contrasts[k] : f.default_contrast;
      dt.requested.push_back(c);
      if (categorical(v) && c != dummy) {
        std::vector<int> margin = t.vars;
        margin.erase(margin.begin() + static_cast<long>(k));
        bool inside = margin.empty();
        for (size_t tj = 0; tj < ti && !inside; ++tj) inside = subset(margin, f.terms[tj].vars);
        if (!inside) c = dummy;
      }
      if (categorical(v) && !full_done) {
        c = dummy;
        full_done = true;
      }
      dt.coding.push_back(c);
    }
    dt.label = label;
    x.terms.push_back(std::move(dt));
  }

  // Columns: the mean, then term by term; within a term the first
  // variable's columns vary fastest.
  constexpr int64_t max_columns = 1000000;
  x.mx = 0;
  if (x.mean) {
    x.col_term.push_back(0);
    x.labels.emplace_back("Intercept");
    x.col_factors.emplace_back();
    ++x.mx;
  }
  for (size_t ti = 0; ti < x.terms.size(); ++ti) {
    const design_term &dt = x.terms[ti];
    std::vector<coding> codes(dt.vars.size());
    int64_t ncol = 1;
    for (size_t k = 0; k < dt.vars.size(); ++k) {  // sizes first: nothing is made for a refused term
      if (dt.levels[k] <= 1) continue;
      if (dt.coding[k] == polynomial && dt.levels[k] > max_poly_levels)
        return void(e.raise(ierr_g22_poly_levels, "plan_design").c(d.names[dt.vars[k]]).i(dt.levels[k]));
      const int64_t cc = coding_columns(dt.coding[k], dt.levels[k]);
      if (cc > max_columns || ncol > max_columns / cc)
        return void(e.raise(ierr_g22_too_large, "plan_design").i(max_columns));
      ncol *= cc;
    }
    for (size_t k = 0; k < dt.vars.size(); ++k)
      if (dt.levels[k] > 1) codes[k] = make_coding(dt.coding[k], dt.levels[k]);
    if (x.mx + ncol > max_columns) return void(e.raise(ierr_g22_too_large, "plan_design").i(max_columns));
    std::vector<int64_t> idx(dt.vars.size(), 1);
    for (int64_t c = 0; c < ncol; ++c) {
      std::string lab;
      std::vector<column_factor> fac;
      for (size_t k = 0; k < dt.vars.size(); ++k) {
        if (k) lab += ':';
        lab += d.names[dt.vars[k]];
        if (dt.levels[k] > 1) {
          lab += codes[k].labels[idx[k] - 1];
          fac.push_back({dt.vars[k], idx[k]});
        } else {
          fac.push_back({dt.vars[k], 0});
        }
      }
      x.col_term.push_back(static_cast<int64_t>(ti) + 1);
      x.labels.push_back(std::move(lab));
      x.col_factors.push_back(std::move(fac));
      for (size_t k = 0; k < dt.vars.size(); ++k) {  // next combination, first variable fastest
        if (dt.levels[k] <= 1) continue;
        if (++idx[k] <= codes[k].ncol) break;
        idx[k] = 1;
      }
    }
    x.mx += ncol;
  }

  // Categorical variables, but neither a mean nor a main effect of one.
  if (!x.mean) {
    bool any_cat = false, cat_main = false;
    for (const design_term &dt : x.terms)
      for (int64_t L : dt.levels)
        if (L > 1) {
          any_cat = true;
          if (dt.vars.size() == 1) cat_main = true;
        }
    if (any_cat && !cat_main) e.raise(ierr_g22_no_main_effects, "plan_design", severity::warning);
  }
}

bool design_is_data(const design_description &x, const data_description &d) {
  if (x.mean || x.mx != d.nvar || static_cast<int64_t>(x.terms.size()) != d.nvar) return false;
  for (int64_t j = 0; j < d.nvar; ++j) {
    const design_term &t = x.terms[j];
    if (t.vars.size() != 1 || t.vars[0] != j || t.levels[0] != 1) return false;
  }
  return true;
}

bool check_levels(const design_description &x, const data_description &d, const double *dat, int64_t lddat,
                  error_record &e) {
  std::vector<char> seen(d.nvar, 0);
  for (const design_term &t : x.terms)
    for (size_t k = 0; k < t.vars.size(); ++k) {
      const int64_t j = t.vars[k];
      if (t.levels[k] <= 1 || seen[j]) continue;
      seen[j] = 1;
      const double L = static_cast<double>(t.levels[k]);
      for (int64_t i = 0; i < d.nobs; ++i) {
        const double v = d.by_variables ? dat[j + i * lddat] : dat[i + j * lddat];
        if (!(v >= 1.0 && v <= L && v == std::floor(v))) {
          e.raise(ierr_g22_bad_level_value, "check_levels").i(j + 1).i(i + 1).r(v);
          return false;
        }
      }
    }
  return true;
}

namespace {

// One column: its factors, each a data variable and either a table of L
// values (a categorical variable's coding column) or none (continuous).
struct column_plan {
  std::vector<int64_t> var;
  std::vector<const double *> table;
  int n = 0;
  bool mean = false;
};

template <bool ByVar>
void fill_columns(const std::vector<column_plan> &cols, int64_t nobs, const double *dat, int64_t lddat, double *out,
                  int64_t ldx) {
  auto D = [&](int64_t i, int64_t j) { return ByVar ? dat[j + i * lddat] : dat[i + j * lddat]; };
  auto X = [&](int64_t i, int64_t c) -> double & { return ByVar ? out[c + i * ldx] : out[i + c * ldx]; };
  for (size_t c = 0; c < cols.size(); ++c) {
    const column_plan &p = cols[c];
    const int64_t cc = static_cast<int64_t>(c);
    if (p.mean) {
      for (int64_t i = 0; i < nobs; ++i) X(i, cc) = 1.0;
    } else if (p.n == 1 && !p.table[0]) {
      for (int64_t i = 0; i < nobs; ++i) X(i, cc) = D(i, p.var[0]);
    } else if (p.n == 1) {
      const double *t = p.table[0];
      for (int64_t i = 0; i < nobs; ++i) X(i, cc) = t[static_cast<int64_t>(D(i, p.var[0])) - 1];
    } else if (p.n == 2) {
      // Two-variable interactions, the common case, without the inner loop.
      const double *ta = p.table[0], *tb = p.table[1];
      const int64_t a = p.var[0], b = p.var[1];
      if (ta && tb) {
        for (int64_t i = 0; i < nobs; ++i)
          X(i, cc) = ta[static_cast<int64_t>(D(i, a)) - 1] * tb[static_cast<int64_t>(D(i, b)) - 1];
      } else if (ta) {
        for (int64_t i = 0; i < nobs; ++i) X(i, cc) = ta[static_cast<int64_t>(D(i, a)) - 1] * D(i, b);
      } else if (tb) {
        for (int64_t i = 0; i < nobs; ++i) X(i, cc) = D(i, a) * tb[static_cast<int64_t>(D(i, b)) - 1];
      } else {
        for (int64_t i = 0; i < nobs; ++i) X(i, cc) = D(i, a) * D(i, b);
      }
    } else {
      for (int64_t i = 0; i < nobs; ++i) {
        double v = 1.0;
        for (int k = 0; k < p.n; ++k) {
          const double a = D(i, p.var[k]);
          v *= p.table[k] ? p.table[k][static_cast<int64_t>(a) - 1] : a;
        }
        X(i, cc) = v;
      }
    }
  }
}

}  // namespace

void fill_design(const design_description &x, const double *dat, int64_t lddat, double *out, int64_t ldx) {
  // Column by column, each with the coding columns it needs (L values per
  // categorical variable): the memory used is a few columns' tables, never
  // the whole coding of a many-level variable.
  std::vector<coding> codes;
  std::vector<std::vector<size_t>> code_of(x.terms.size());
  for (size_t ti = 0; ti < x.terms.size(); ++ti) {
    const design_term &t = x.terms[ti];
    for (size_t k = 0; k < t.vars.size(); ++k) {
      code_of[ti].push_back(codes.size());
      codes.push_back(t.levels[k] > 1 ? make_coding(t.coding[k], t.levels[k]) : coding{});
    }
  }
  std::vector<std::vector<double>> tables;
  for (int64_t c = 0; c < x.mx; ++c) {
    std::vector<column_plan> cols(1);
    column_plan &p = cols[0];
    const int64_t ti = x.col_term[c];
    if (ti == 0) {
      p.mean = true;
    } else {
      const std::vector<column_factor> &f = x.col_factors[c];
      if (tables.size() < f.size()) tables.resize(f.size());
      for (size_t k = 0; k < f.size(); ++k) {
        p.var.push_back(f[k].var);
        if (f[k].column == 0) {
          p.table.push_back(nullptr);
        } else {
          codes[code_of[ti - 1][k]].column(f[k].column, tables[k]);
          p.table.push_back(tables[k].data());
        }
        ++p.n;
      }
    }
    double *xc = x.by_variables ? out + c : out + c * ldx;
    if (x.by_variables)
      fill_columns<true>(cols, x.nobs, dat, lddat, xc, ldx);
    else
      fill_columns<false>(cols, x.nobs, dat, lddat, xc, ldx);
  }
}

}  // namespace zem::g22
