// e04kf's model check, the model's own objective and the printed output.
#include "e04/foas_model.h"

#include <cmath>
#include <cstdio>

#include "e04/model.h"
#include "frame/units.h"

namespace zem::e04::foas {

bool model_supported(const problem &p) noexcept {
  const int64_t k = p.s.objective;
  if (k != obj_linear && k != obj_quadratic && k != obj_nonlinear) return false;
  for (size_t i = 0; i < p.lc_bl.size(); ++i)
    if (i >= p.lc_deleted.size() || !p.lc_deleted[i]) return false;
  for (size_t i = 0; i < p.nl_bl.size(); ++i)
    if (i >= p.nl_deleted.size() || !p.nl_deleted[i]) return false;
  if (p.s.ncnln > 0 && p.nl_bl.empty()) return false;
  for (const cone &c : p.cones)
    if (!c.deleted) return false;
  for (const quad_con &q : p.qcons)
    if (!q.deleted) return false;
  for (const matrix_block &b : p.blocks)
    if (!b.deleted) return false;
  for (size_t i = 0; i < p.vtype.size(); ++i) {
    const bool deleted = i < p.var_deleted.size() && p.var_deleted[i];
    if (!deleted && p.vtype[i] != var_continuous) return false;
  }
  return true;
}

bool model_objective::prepare() noexcept {
  try {
    if (p_.s.objective == obj_quadratic && p_.s.factored) fx_.assign(static_cast<size_t>(p_.mf), 0.0);
  } catch (...) {
    return false;
  }
  return true;
}

void model_objective::f(const double *x, double *fx) const {
  double s = p_.s.obj_constant;
  if (p_.s.objective == obj_linear) {
    for (size_t i = 0; i < p_.c.size(); ++i) s += p_.c[i] * x[i];
  } else {
    for (size_t k = 0; k < p_.cs.idx.size(); ++k) s += p_.cs.val[k] * x[p_.cs.idx[k] - 1];
    if (p_.s.factored) {
      std::fill(fx_.begin(), fx_.end(), 0.0);
      for (size_t k = 0; k < p_.f.size(); ++k) fx_[p_.f.row[k] - 1] += p_.f.val[k] * x[p_.f.col[k] - 1];
      double q = 0;
      for (double v : fx_) q += v * v;
      s += 0.5 * q;
    } else {
      double q = 0;  // x'Hx from the upper triangle
      for (size_t k = 0; k < p_.h.size(); ++k) {
        const int64_t r = p_.h.row[k] - 1, c = p_.h.col[k] - 1;
        q += (r == c ? 1.0 : 2.0) * p_.h.val[k] * x[r] * x[c];
      }
      s += 0.5 * q;
    }
  }
  *fx = s;
}

void model_objective::grad(const double *x, double *g) const {
  const size_t n = static_cast<size_t>(p_.s.nvar);
  std::fill(g, g + n, 0.0);
  if (p_.s.objective == obj_linear) {
    for (size_t i = 0; i < p_.c.size(); ++i) g[i] = p_.c[i];
    return;
  }
  for (size_t k = 0; k < p_.cs.idx.size(); ++k) g[p_.cs.idx[k] - 1] += p_.cs.val[k];
  if (p_.s.factored) {
    std::fill(fx_.begin(), fx_.end(), 0.0);
    for (size_t k = 0; k < p_.f.size(); ++k) fx_[p_.f.row[k] - 1] += p_.f.val[k] * x[p_.f.col[k] - 1];
    for (size_t k = 0; k < p_.f.size(); ++k) g[p_.f.col[k] - 1] += p_.f.val[k] * fx_[p_.f.row[k] - 1];
  } else {
    for (size_t k = 0; k < p_.h.size(); ++k) {
      const int64_t r = p_.h.row[k] - 1, c = p_.h.col[k] - 1;
      g[r] += p_.h.val[k] * x[c];
      if (r != c) g[c] += p_.h.val[k] * x[r];
    }
  }
}

void printer::put(int64_t min_level, const char *text) const {
  if (print_unit >= 0 && print_level >= min_level) write_record(print_unit, text);
  if (mon_unit >= 0 && mon_level >= min_level) write_record(mon_unit, text);
}

namespace {
const char *const rule = " ------------------------------------------------------------------------------";
const char *kind_name(int k) {
  switch (k) {
    case obj_linear: return "linear";
    case obj_quadratic: return "quadratic";
    default: return "nonlinear";
  }
}
}  // namespace

void printer::header(int64_t n, int64_t nfixed, int64_t nbounded, int objective_kind, const settings &st) const {
  char b[128];
  put(1, " ");
  put(1, " E04KF, first-order active-set method for bound-constrained problems");
  std::snprintf(b, sizeof b, " Number of variables %20lld", static_cast<long long>(n));
  put(1, b);
  std::snprintf(b, sizeof b, " Variables with bounds %18lld   (fixed %lld)", static_cast<long long>(nbounded),
                static_cast<long long>(nfixed));
  put(1, b);
  std::snprintf(b, sizeof b, " Objective function %21s", kind_name(objective_kind));
  put(1, b);
  std::snprintf(b, sizeof b, " Subsolver %30s   Memory %lld", st.subsolver == sub_both ? "both (NPG and CG)"
                                                                : st.subsolver == sub_npg ? "NPG" : "CG",
                static_cast<long long>(st.memory));
  put(1, b);
  put(2, " ");
  put(2, rule);
  put(2, "   iter  phase      objective     pgrad norm  step length      nfree       nf       ng");
  put(2, rule);
}

void printer::line(const state_view &v) const {
  char b[160];
  std::snprintf(b, sizeof b, " %6lld  %-5s %14.6E %14.3E %12.2E %10lld %8lld %8lld", static_cast<long long>(v.iter),
                v.iter == 0 ? "-" : v.phase == 1 ? "CG" : "NPG", v.f, v.pgnorm, v.step, static_cast<long long>(v.nfree),
                static_cast<long long>(v.nf), static_cast<long long>(v.ng));
  put(2, b);
}

void printer::summary(outcome how, const result &r) const {
  static const char *const text[] = {
      "converged: the projected gradient is small enough.",
      "stopped at the user's request.",
      "the iteration limit was reached.",
      "no progress: the objective stopped decreasing.",
      "no progress: the line search found no lower objective.",
      "the time limit was reached.",
      "the problem seems to be unbounded.",
      "the objective function returned a value that is not finite.",
      "the gradient has an element that is not finite.",
  };
  char b[160];
  put(2, rule);
  put(1, " ");
  std::snprintf(b, sizeof b, " Status: %s", text[static_cast<int>(how)]);
  put(1, b);
  std::snprintf(b, sizeof b, " Final objective value %28.10E", r.rinfo[ri_f]);
  put(1, b);
  std::snprintf(b, sizeof b, " Projected gradient norm %26.3E", r.rinfo[ri_pgnorm]);
  put(1, b);
  const char *const names[] = {"Iterations", "Objective evaluations", "Gradient evaluations", "Variables at a bound"};
  const int idx[] = {st_iter, st_nf, st_ng, st_atbound};
  for (int k = 0; k < 4; ++k) {
    std::snprintf(b, sizeof b, " %-28s %21lld", names[k], static_cast<long long>(r.stats[idx[k]]));
    put(1, b);
  }
  if (stats_time) {
    std::snprintf(b, sizeof b, " %-28s %21.2f", "Solve time (wall, s)", r.stats[st_time]);
    put(1, b);
  }
}

void printer::solution(int64_t what, int64_t n, const double *x, const double *lo, const double *hi,
                       const double *z) const {
  if (what == 0) return;
  char b[160];
  put(1, " ");
  if (what != 4) {
    put(1, " Primal variables:");
    put(1, "   idx   Lower bound       Value       Upper bound");
    for (int64_t i = 0; i < n; ++i) {
      std::snprintf(b, sizeof b, " %5lld %13.5E %13.5E %13.5E", static_cast<long long>(i + 1), lo[i], x[i], hi[i]);
      put(1, b);
    }
  }
  if (what == 1 || what == 3 || what == 4) {
    put(1, " Bound multipliers:");
    put(1, "   idx   Lower bound       Value       Upper bound");
    for (int64_t i = 0; i < n; ++i) {
      std::snprintf(b, sizeof b, " %5lld %13.5E %13.5E %13.5E", static_cast<long long>(i + 1), lo[i], z[i], hi[i]);
      put(1, b);
    }
  }
}

}  // namespace zem::e04::foas
