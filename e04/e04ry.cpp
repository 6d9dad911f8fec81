// e04ry: prints parts of the model on unit nout, through the library's
// record writer (so the lines interleave with a Fortran caller's own
// output).  cmdstr holds one or more keywords separated by commas, matched
// without regard to case or surrounding blanks:
//   OVERVIEW, OBJECTIVE, SIMPLE BOUNDS, LINEAR CONSTRAINTS BOUNDS,
//   LINEAR CONSTRAINTS DETAILED, NONLINEAR CONSTRAINTS BOUNDS,
//   NONLINEAR CONSTRAINTS DETAILED, MATRIX CONSTRAINTS,
//   MATRIX CONSTRAINTS DETAILED, CONE CONSTRAINTS, CONE CONSTRAINTS DETAILED,
//   QUADRATIC CONSTRAINTS DETAILED, MULTIPLIERS SIZES, OPTIONS, ALL OPTIONS.
// Every keyword is checked before anything is printed.  Lines are at most
// 80 characters; a negative nout prints nothing.

// g++ 12 warns wrongly about overlapping copies inside std::string's
// operator+ at -O2 (its bug 105329); the concatenations below are ordinary.
#pragma GCC diagnostic ignored "-Wrestrict"
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "e04/model.h"
#include "e04/sparse_check.h"
#include "frame/units.h"

inline constexpr zem::message e04ry_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    {3, 1011, NE_STR_UNKNOWN, {"Keyword number %s is not recognized."}},
    {3, 1012, NE_STR_UNKNOWN, {"Keyword number %s is not recognized, it is too long."}},
    {3, 1013, NE_STR_UNKNOWN, {"cmdstr does not contain any keywords or is empty."}},
    {4, 1014, NE_WRITE_ERROR, {"An error occurred when writing to output."}},
};
ZEM_REGISTER_MESSAGES(e04ry)

namespace {

using namespace zem::e04;

enum section {
  s_overview, s_objective, s_bounds, s_lc_bounds, s_lc_detailed, s_nlc_bounds, s_nlc_detailed, s_matrix,
  s_matrix_detailed, s_cone, s_cone_detailed, s_qc_detailed, s_multipliers, s_options, s_all_options
};
struct keyword_entry {
  const char *word;
  section s;
};
constexpr keyword_entry keywords[] = {
    {"OVERVIEW", s_overview},
    {"OBJECTIVE", s_objective},
    {"SIMPLE BOUNDS", s_bounds},
    {"LINEAR CONSTRAINTS BOUNDS", s_lc_bounds},
    {"LINEAR CONSTRAINTS DETAILED", s_lc_detailed},
    {"NONLINEAR CONSTRAINTS BOUNDS", s_nlc_bounds},
    {"NONLINEAR CONSTRAINTS DETAILED", s_nlc_detailed},
    {"MATRIX CONSTRAINTS", s_matrix},
    {"MATRIX CONSTRAINTS DETAILED", s_matrix_detailed},
    {"CONE CONSTRAINTS", s_cone},
    {"CONE CONSTRAINTS DETAILED", s_cone_detailed},
    {"QUADRATIC CONSTRAINTS DETAILED", s_qc_detailed},
    {"MULTIPLIERS SIZES", s_multipliers},
    {"OPTIONS", s_options},
    {"ALL OPTIONS", s_all_options},
};
constexpr size_t longest_keyword = 30;

// The printer: collects failures of the writer instead of stopping, so a
// section is either printed whole or the call reports the write error.
struct printer {
  int64_t unit;
  double bigbnd;
  bool failed = false;

  void line(const std::string &s) {
    if (zem::write_record(unit, s.substr(0, 80)) != 0) failed = true;
  }
  static std::string num(double v) {
    char b[32];
    std::snprintf(b, sizeof b, "%13.5E", v);
    return b;
  }
  std::string lower(double v) const { return v <= -bigbnd ? "         -inf" : num(v); }
  std::string upper(double v) const { return v >= bigbnd ? "          inf" : num(v); }
  static std::string item(const char *prefix, int64_t i) {
    char b[40];
    std::snprintf(b, sizeof b, "%s[%" PRId64 "]", prefix, i);
    return b;
  }
  static std::string field(const std::string &s, size_t w) { return s.size() >= w ? s + " " : s + std::string(w - s.size(), ' '); }
  void kv(const char *key, const std::string &value) { line("   " + field(key, 26) + value); }

  // Terms "name[i] value" three to a line under an indent.
  void terms(const char *indent, const char *prefix, const std::vector<int64_t> &idx, const std::vector<double> &val) {
    std::string l = indent;
    int k = 0;
    for (size_t e = 0; e < idx.size(); ++e) {
      l += field(item(prefix, idx[e]), 10) + num(val[e]) + "  ";
      if (++k == 3) {
        line(l);
        l = indent;
        k = 0;
      }
    }
    if (k) line(l);
  }
  // Index lists ten to a line.
  void indices(const std::string &head, const std::vector<int64_t> &idx) {
    std::string l = head;
    for (size_t e = 0; e < idx.size(); ++e) {
      std::string t = std::to_string(idx[e]) + (e + 1 < idx.size() ? "," : "");
      if (l.size() + t.size() + 1 > 78) {
        line(l);
        l = std::string(head.size(), ' ');
      }
      l += " " + t;
    }
    line(l);
  }
  // Matrix elements "(i,j) value" three to a line.
  void elements(const char *indent, const coo &m, size_t first, size_t count, bool values) {
    std::string l = indent;
    int k = 0;
    for (size_t e = first; e < first + count; ++e) {
      std::string t = "(" + std::to_string(m.row[e]) + "," + std::to_string(m.col[e]) + ")";
      l += field(t, 12) + (values ? num(m.val[e]) + "  " : "");
      if (++k == (values ? 2 : 6)) {
        line(l);
        l = indent;
        k = 0;
      }
    }
    if (k) line(l);
  }
};

int64_t count_active(const std::vector<char> &deleted) {
  int64_t n = 0;
  for (char d : deleted) n += !d;
  return n;
}
template <typename T>
int64_t count_active_items(const std::vector<T> &v) {
  int64_t n = 0;
  for (const auto &x : v) n += !x.deleted;
  return n;
}
std::string count_or_undefined(int64_t n) { return n > 0 ? std::to_string(n) : "not defined"; }

const char *objective_name(const problem &p) {
  switch (p.s.objective) {
    case obj_linear: return "linear";
    case obj_quadratic: return "quadratic";
    case obj_nonlinear: return "nonlinear";
    case obj_nlls: return "nonlinear least-squares";
    default: return "not defined";
  }
}

void overview(printer &w, const problem &p) {
  w.line(" Overview");
  w.kv("Status:", p.s.phase == phase_solving ? "Problem is being solved, no changes allowed."
                                             : "Problem and option settings are editable.");
  w.kv("No of variables:", std::to_string(p.s.nvar));
  w.kv("Objective function:", objective_name(p));
  w.kv("Simple bounds:", p.s.bounds_defined ? std::to_string(p.s.nvar) : "not defined");
  w.kv("Linear constraints:", count_or_undefined(count_active(p.lc_deleted)));
  w.kv("Nonlinear constraints:", count_or_undefined(count_active(p.nl_deleted)));
  w.kv("Cone constraints:", count_or_undefined(count_active_items(p.cones)));
  w.kv("Quadratic constraints:", count_or_undefined(count_active_items(p.qcons)));
  w.kv("Matrix constraints:", count_or_undefined(count_active_items(p.blocks)));
}

void quadratic_function(printer &w, const sparse_vec &lin, const coo *q, const coo *f, double constant) {
  if (constant != 0.0) {
    w.line("   constant part");
    w.line("     " + printer::num(constant));
  }
  if (!lin.idx.empty()) {
    w.line("   linear part");
    w.terms("     ", "x", lin.idx, lin.val);
  }
  if (q && q->size()) {
    w.line("   quadratic part");
    w.elements("     ", *q, 0, q->size(), true);
  }
  if (f && f->size()) {
    w.line("   quadratic part (factorized quadratic term)");
    w.elements("     ", *f, 0, f->size(), true);
  }
}

void objective(printer &w, const problem &p) {
  w.line(" Objective function");
  switch (p.s.objective) {
    case obj_linear: {
      sparse_vec lin;
      for (int64_t j = 0; j < p.s.nvar; ++j)
        if (p.c[j] != 0.0) {
          lin.idx.push_back(j + 1);
          lin.val.push_back(p.c[j]);
        }
      if (p.s.obj_constant != 0.0) {
        w.line("   constant part");
        w.line("     " + printer::num(p.s.obj_constant));
      }
      w.line("   linear part");
      w.terms("     ", "x", lin.idx, lin.val);
      break;
    }
    case obj_quadratic:
      quadratic_function(w, p.cs, p.s.factored ? nullptr : &p.h, p.s.factored ? &p.f : nullptr, p.s.obj_constant);
      break;
    case obj_nonlinear:
      w.line("   nonlinear, gradient sparsity:");
      w.indices("     variables", p.idxfd);
      break;
    case obj_nlls:
      w.kv("nonlinear least-squares,", std::to_string(p.s.nres) + " residuals" +
                                           (p.s.isparse ? ", sparse derivatives" : ", dense derivatives"));
      break;
    default: w.line("   not defined");
  }
}

void bounds(printer &w, const char *title, const char *prefix, const std::vector<double> &bl,
            const std::vector<double> &bu, const std::vector<char> &deleted) {
  w.line(title);
  w.line("   " + printer::field("", 12) + "      lower bound      upper bound");
  for (size_t j = 0; j < bl.size(); ++j) {
    const bool del = j < deleted.size() && deleted[j];
    w.line("   " + printer::field(printer::item(prefix, static_cast<int64_t>(j + 1)), 12) + "    " + w.lower(bl[j]) +
           "    " + w.upper(bu[j]) + (del ? "  (deleted)" : ""));
  }
}

void linear_detailed(printer &w, const problem &p) {
  w.line(" Linear constraints (detailed)");
  std::vector<std::vector<size_t>> rows(static_cast<size_t>(p.nlc()));
  for (size_t e = 0; e < p.lc.size(); ++e) rows[p.lc.row[e] - 1].push_back(e);
  for (int64_t i = 0; i < p.nlc(); ++i) {
    w.line("   " + printer::item("l", i + 1) + ":  " + w.lower(p.lc_bl[i]) + "  <=  ...  <=  " + w.upper(p.lc_bu[i]) +
           (p.lc_deleted[i] ? "  (deleted)" : ""));
    std::vector<int64_t> idx;
    std::vector<double> val;
    for (size_t e : rows[i]) {
      idx.push_back(p.lc.col[e]);
      val.push_back(p.lc.val[e]);
    }
    w.terms("     ", "x", idx, val);
  }
}

void nonlinear_detailed(printer &w, const problem &p) {
  w.line(" Sparsity pattern of the nonlinear constraints");
  std::vector<std::vector<int64_t>> rows(static_cast<size_t>(p.s.ncnln));
  for (size_t e = 0; e < p.gd.size(); ++e) rows[p.gd.row[e] - 1].push_back(p.gd.col[e]);
  for (int64_t i = 0; i < p.s.ncnln; ++i) w.indices("   " + printer::item("g", i + 1) + ": variables", rows[i]);
}

void matrix(printer &w, const problem &p, bool detailed) {
  w.line(detailed ? " Matrix constraints (detailed)" : " Matrix constraints");
  for (size_t b = 0; b < p.blocks.size(); ++b) {
    const matrix_block &m = p.blocks[b];
    w.line("   Block " + std::to_string(b + 1) + ": dimension " + std::to_string(m.dim) + ", " +
           std::to_string(m.blksize.size()) + " diagonal block(s), " + (m.has_q ? "bilinear" : "linear") +
           (m.deleted ? "  (deleted)" : ""));
    if (!detailed) continue;
    size_t start = 0;
    for (size_t k = 0; k < m.nnz.size(); ++k) {
      w.line("     A_" + std::to_string(k) + ": " + std::to_string(m.nnz[k]) + " element(s)");
      w.elements("       ", m.a, start, static_cast<size_t>(m.nnz[k]), true);
      start += static_cast<size_t>(m.nnz[k]);
    }
    start = 0;
    for (size_t k = 0; k < m.nnzq.size(); ++k) {
      w.line("     Q for x[" + std::to_string(m.qi[k]) + "]*x[" + std::to_string(m.qj[k]) + "]: " +
             std::to_string(m.nnzq[k]) + " element(s)");
      w.elements("       ", m.q, start, static_cast<size_t>(m.nnzq[k]), true);
      start += static_cast<size_t>(m.nnzq[k]);
    }
  }
}

void cones(printer &w, const problem &p, bool detailed) {
  w.line(detailed ? " Cone constraints (detailed)" : " Cone constraints");
  for (size_t c = 0; c < p.cones.size(); ++c) {
    const cone &k = p.cones[c];
    w.line("   Cone " + std::to_string(c + 1) + ": " + (k.type == 1 ? "quadratic" : "rotated quadratic") + ", " +
           std::to_string(k.members.size()) + " variable(s)" + (k.deleted ? "  (deleted)" : ""));
    if (detailed) w.indices("     variables", k.members);
  }
}

void quadratic_constraints(printer &w, const problem &p) {
  w.line("Quadratic constraints (detailed)");
  for (size_t c = 0; c < p.qcons.size(); ++c) {
    const quad_con &q = p.qcons[c];
    w.line("   " + printer::item("q", static_cast<int64_t>(c + 1)) + ":  " + w.lower(q.bl) + "  <=  ...  <=  " +
           w.upper(q.bu) + (q.deleted ? "  (deleted)" : ""));
    quadratic_function(w, q.r, &q.q, nullptr, 0.0);
  }
}

void multipliers(printer &w, const problem &p) {
  w.line(" Lagrangian multipliers sizes");
  int64_t cone_size = 0, matrix_size = 0;
  for (const auto &c : p.cones) cone_size += static_cast<int64_t>(c.members.size());
  for (const auto &m : p.blocks)
    for (int64_t b : m.blksize) matrix_size += b * (b + 1) / 2;
  const int64_t lin = 2 * (p.s.nvar + p.nlc() + p.s.ncnln) + 2 * static_cast<int64_t>(p.qcons.size());
  w.kv("Linear and nonlinear:", std::to_string(lin) + "  (2 per variable and constraint)");
  w.kv("Cone constraints:", std::to_string(cone_size));
  w.kv("Matrix constraints:", std::to_string(matrix_size));
}

}  // namespace

#define E04RY_ARGS(V, A, U) \
  A(void *const *, handle) V(const int64_t *, nout) A(const char *, cmdstr) V(char *, errbuf) V(int64_t *, ifail) \
  U(size_t, cmdstr_len)
ZEM_ENGINE_LAYERS(e04ry, E04RY_ARGS)

ZEM_INTERNAL void e04ryfn_(engine_data *, void *const *handle, const int64_t *nout, const char *cmdstr,
                           char *errbuf, int64_t *ifail, size_t cmdstr_len) {
  *ifail = 0;
  problem *p = open_problem(*handle, errbuf, ifail);
  if (!p) return;
  std::vector<section> todo;
  try {
    size_t i = 0, number = 0;
    const size_t n = cmdstr ? cmdstr_len : 0;
    bool any = false;
    while (i <= n) {
      size_t j = i;
      while (j < n && cmdstr[j] != ',' && cmdstr[j]) ++j;
      const std::string k = keyword(cmdstr + i, j - i, j - i);
      if (!k.empty() || j < n) ++number;
      if (!k.empty()) {
        any = true;
        if (k.size() > longest_keyword) return zem::fail(errbuf, ifail, 3, 1012, number);
        bool found = false;
        for (const auto &e : keywords)
          if (k == e.word) {
            todo.push_back(e.s);
            found = true;
          }
        if (!found) return zem::fail(errbuf, ifail, 3, 1011, number);
      }
      if (j >= n || !cmdstr[j]) break;
      i = j + 1;
    }
    if (!any) return zem::fail(errbuf, ifail, 3, 1013);
    printer w{*nout, infinite_bound_size(*p)};
    for (section s : todo) {
      switch (s) {
        case s_overview: overview(w, *p); break;
        case s_objective: objective(w, *p); break;
        case s_bounds: bounds(w, " Simple bounds", "x", p->bl, p->bu, p->var_deleted); break;
        case s_lc_bounds: bounds(w, " Linear constraints bounds", "l", p->lc_bl, p->lc_bu, p->lc_deleted); break;
        case s_lc_detailed: linear_detailed(w, *p); break;
        case s_nlc_bounds: bounds(w, " Nonlinear constraints bounds", "g", p->nl_bl, p->nl_bu, p->nl_deleted); break;
        case s_nlc_detailed: nonlinear_detailed(w, *p); break;
        case s_matrix: matrix(w, *p, false); break;
        case s_matrix_detailed: matrix(w, *p, true); break;
        case s_cone: cones(w, *p, false); break;
        case s_cone_detailed: cones(w, *p, true); break;
        case s_qc_detailed: quadratic_constraints(w, *p); break;
        case s_multipliers: multipliers(w, *p); break;
        case s_options:
          w.line(" Option settings");
          print_options(*p, w.unit, false, &w.failed);
          break;
        case s_all_options:
          w.line(" All option settings");
          print_options(*p, w.unit, true, &w.failed);
          break;
      }
      if (w.failed) return zem::fail(errbuf, ifail, 4, 1014);
    }
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04ryf_(void *const *handle, const int64_t *nout, const char *cmdstr, int64_t *ifail, size_t cmdstr_len) {
  zem::f_entry call("e04ryf", e04ry_messages);
  e04ryft_(&call.en_data, handle, nout, cmdstr, call.errbuf, &call.status, cmdstr_len);
  call.finish(ifail);
}

ZEM_API void e04ryc(void *handle, int64_t nout, const char *cmdstr, Zem_Fail *fail) {
  zem::c_entry call("e04ryc", e04ry_messages, fail);
  if (!cmdstr) return call.bad_param("cmdstr");
  e04ryft_(&call.en_data, &handle, &nout, cmdstr, call.errbuf, &call.status, std::strlen(cmdstr));
  call.finish();
}
