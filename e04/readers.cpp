// The MPS and SDPA readers (see readers.h).
//
// MPS: every line is split into blank-separated fields, which reads both the
// fixed and the free format as long as names hold no blanks.  A line whose
// first character is not blank starts a section; '*' in column 1 starts a
// comment.  Sections: NAME, OBJSENSE is not supported, ROWS, COLUMNS (with
// 'MARKER' 'INTORG'/'INTEND' integer sections), RHS (on the objective row:
// minus the objective's constant), RANGES, BOUNDS (UP LO FX FR MI PL BV LI
// UI SC), QUADOBJ (upper triangle) or QMATRIX/QSECTION (full matrix, its
// upper triangle is kept) for 0.5 x'Hx, CSECTION (one cone per section:
// "CSECTION name value QUAD|RQUAD" and its member columns), OBJNAME (the
// objective among the free rows; otherwise the first free row), ENDATA.
// Two conventions of the fixed format are kept as well: a field that
// begins with '$' starts a comment to the end of the line, and a COLUMNS
// line whose name field (columns 5 to 12) is blank, with its first field
// at column 15 or later, continues the column of the line before.
// Other free rows are dropped with their entries.
//
// Semantics: columns default to bounds [0, inf); UP with a negative value
// on a column whose lower bound is 0 makes the lower bound -inf; SC (semi
// continuous) sets the upper bound only, since the handle has no
// semi-continuous type; BV, LI and UI make the column integer.
// Ranges R on row of type E: [rhs, rhs+R] for R > 0, [rhs+R, rhs] for R < 0;
// L: [rhs-|R|, rhs]; G: [rhs, rhs+|R|].
#include "e04/readers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zem::e04 {

namespace {

read_error err(int64_t detail, std::initializer_list<std::string_view> vals, int64_t status = 8) {
  read_error e;
  e.status = status;
  e.detail = detail;
  for (std::string_view v : vals)
    if (e.nv < 6) e.v[e.nv++] = std::string(v.substr(0, 25));
  return e;
}

bool parse_real(std::string_view s, double *out) {
  if (!s.empty() && s[0] == '+') s.remove_prefix(1);
  if (s.empty()) return false;
  const char *b = s.data(), *e = s.data() + s.size();
  auto r = std::from_chars(b, e, *out);
  return r.ec == std::errc() && r.ptr == e && !std::isnan(*out);
}

bool printable(std::string_view s) {
  for (unsigned char ch : s)
    if (ch < 33 || ch > 126) return false;
  return true;
}

// Fields of a line (at most 8 are kept; more is an error for every section).
struct fields {
  std::string_view f[8];
  int n = 0;
  bool too_many = false;
};
fields split(std::string_view line) {
  fields r;
  size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
    if (i >= line.size()) break;
    if (line[i] == '$') break;  // a comment to the end of the line
    size_t j = i;
    while (j < line.size() && line[j] != ' ' && line[j] != '\t' && line[j] != '\r') ++j;
    if (r.n < 8) r.f[r.n++] = line.substr(i, j - i);
    else r.too_many = true;
    i = j;
  }
  return r;
}

enum class sec { none, name, rows, columns, rhs, ranges, bounds, quad_upper, quad_full, cone, done };

const char *sec_name(sec s) {
  switch (s) {
    case sec::name: return "NAME";
    case sec::rows: return "ROWS";
    case sec::columns: return "COLUMNS";
    case sec::rhs: return "RHS";
    case sec::ranges: return "RANGES";
    case sec::bounds: return "BOUNDS";
    case sec::quad_upper: return "QUADOBJ";
    case sec::quad_full: return "QMATRIX";
    case sec::cone: return "CSECTION";
    default: return "(none)";
  }
}

struct mps_row {
  char type;  // 'E', 'L', 'G'; 'N' free
  int64_t index;  // constraint row number (1-based), 0 for the objective, -1 other free rows
  double rhs = 0.0, range = 0.0;
  bool has_range = false;
};

}  // namespace

read_error read_mps(std::string_view text, problem &out) {
  std::unordered_map<std::string_view, int64_t> row_of, col_of;  // name -> position in rows / columns
  std::vector<mps_row> rows;
  std::vector<std::string_view> col_names;
  std::vector<double> c, bl, bu;
  std::vector<int64_t> vtype;
  coo a;          // constraint entries: row = constraint number, col = column number
  coo h;          // quadratic objective, upper triangle
  std::unordered_set<uint64_t> h_seen;
  std::vector<cone> cones;
  std::vector<int64_t> cone_lines;
  std::vector<std::unordered_set<int64_t>> cone_sets;
  std::vector<int64_t> last_col_in_row;  // for repeated (row, column) entries
  std::string_view objname;
  int64_t obj_row = -1, ncons = 0;
  double obj_constant = 0.0;
  bool integer_section = false, seen_rows = false, seen_columns = false, ended = false, objname_next = false;
  sec s = sec::none;
  int64_t current_col = -1, line_no = 0;
  std::string ln_text;

  auto line_str = [&]() { return std::to_string(line_no); };
  auto check_cone_size = [&]() -> read_error {
    if (!cones.empty()) {
      const cone &k = cones.back();
      const size_t need = k.type == 1 ? 2 : 3;
      if (k.members.size() < need)
        return err(1111, {std::to_string(cone_lines.back()), std::to_string(cones.size())});
    }
    return {};
  };

  size_t pos = 0;
  while (pos < text.size() && !ended) {
    size_t eol = text.find('\n', pos);
    if (eol == std::string_view::npos) eol = text.size();
    std::string_view line = text.substr(pos, eol - pos);
    pos = eol + 1;
    ++line_no;
    if (line.empty() || line[0] == '*') continue;
    const fields fl = split(line);
    if (fl.n == 0) continue;
    const bool header = line[0] != ' ' && line[0] != '\t';
    if (header) {
      if (s == sec::cone) {
        if (read_error e = check_cone_size(); e.status) return e;
      }
      const std::string_view w = fl.f[0];
      objname_next = false;
      if (w == "NAME") s = sec::name;
      else if (w == "ROWS") s = sec::rows, seen_rows = true;
      else if (w == "COLUMNS") s = sec::columns, seen_columns = true;
      else if (w == "RHS") s = sec::rhs;
      else if (w == "RANGES") s = sec::ranges;
      else if (w == "BOUNDS") s = sec::bounds;
      else if (w == "QUADOBJ") s = sec::quad_upper;
      else if (w == "QMATRIX" || w == "QSECTION") s = sec::quad_full;
      else if (w == "OBJNAME") {
        s = sec::none;
        if (fl.n >= 2) objname = fl.f[1];
        else objname_next = true;
      } else if (w == "CSECTION") {
        s = sec::cone;
        if (fl.n < 3) return err(1102, {line_str(), "CSECTION"});
        const std::string_view type = fl.f[fl.n - 1];
        int64_t t = 0;
        if (type == "QUAD") t = 1;
        else if (type == "RQUAD") t = 2;
        else return err(1110, {line_str(), type});
        if (!seen_columns) return err(1115, {"COLUMNS"});
        cones.push_back(cone{t, {}, false});
        cone_lines.push_back(line_no);
        cone_sets.emplace_back();
      } else if (w == "ENDATA") {
        ended = true;
      } else {
        return err(1101, {line_str(), w});
      }
      continue;
    }
    if (fl.too_many) return err(1102, {line_str(), sec_name(s)});
    for (int k = 0; k < fl.n; ++k)
      if (!printable(fl.f[k])) return err(1113, {line_str(), sec_name(s)});
    switch (s) {
      case sec::none:
        if (objname_next) {
          objname = fl.f[0];
          objname_next = false;
          break;
        }
        return err(1119, {line_str(), "(none)"});
      case sec::name:
        break;
      case sec::rows: {
        if (fl.n < 2) return err(1102, {line_str(), "ROWS"});
        const std::string_view t = fl.f[0], name = fl.f[1];
        if (t.size() != 1 || (t[0] != 'N' && t[0] != 'E' && t[0] != 'L' && t[0] != 'G'))
          return err(1103, {line_str(), t});
        if (row_of.count(name)) return err(1104, {line_str(), "ROWS", name});
        mps_row r{t[0], -1};
        if (t[0] == 'N') {
          const bool is_obj = objname.empty() ? obj_row < 0 : name == objname;
          if (is_obj) {
            r.index = 0;
            obj_row = static_cast<int64_t>(rows.size());
          }
        } else {
          r.index = ++ncons;
        }
        row_of.emplace(name, static_cast<int64_t>(rows.size()));
        rows.push_back(r);
        break;
      }
      case sec::columns: {
        if (fl.n >= 3 && fl.f[1] == "'MARKER'") {
          if (fl.f[2] == "'INTORG'") integer_section = true;
          else if (fl.f[2] == "'INTEND'") integer_section = false;
          else return err(1117, {line_str(), "COLUMNS", fl.f[2]});
          break;
        }
        // A blank name field continues the column of the line before.
        const bool continued = fl.n % 2 == 0 && current_col >= 0 && line.find_first_not_of(" \t") >= 14;
        if (!continued && (fl.n < 3 || fl.n == 4)) return err(1102, {line_str(), "COLUMNS"});
        const std::string_view name = continued ? col_names[current_col] : fl.f[0];
        const int first = continued ? 0 : 1;
        auto it = col_of.find(name);
        if (it == col_of.end()) {
          current_col = static_cast<int64_t>(col_names.size());
          col_of.emplace(name, current_col);
          col_names.push_back(name);
          c.push_back(0.0);
          bl.push_back(0.0);
          bu.push_back(std::numeric_limits<double>::infinity());
          vtype.push_back(integer_section ? var_integer : var_continuous);
        } else if (it->second != current_col) {
          return err(1104, {line_str(), "COLUMNS", name});
        }
        if (last_col_in_row.size() < rows.size()) last_col_in_row.resize(rows.size(), -1);
        for (int k = first; k + 1 < fl.n; k += 2) {
          auto r = row_of.find(fl.f[k]);
          if (r == row_of.end()) return err(1105, {line_str(), "COLUMNS", fl.f[k]});
          double v;
          if (!parse_real(fl.f[k + 1], &v)) return err(1107, {line_str(), "COLUMNS", fl.f[k + 1]});
          if (last_col_in_row[r->second] == current_col) return err(1109, {line_str(), "COLUMNS", fl.f[k]});
          last_col_in_row[r->second] = current_col;
          const mps_row &row = rows[r->second];
          if (row.index == 0) {
            c[current_col] = v;
          } else if (row.index > 0) {
            a.row.push_back(row.index);
            a.col.push_back(current_col + 1);
            a.val.push_back(v);
          }
        }
        break;
      }
      case sec::rhs:
      case sec::ranges: {
        const int first = fl.n % 2 == 1 ? 1 : 0;  // an odd count starts with the set name
        if (fl.n < 2) return err(1102, {line_str(), sec_name(s)});
        for (int k = first; k + 1 < fl.n; k += 2) {
          auto r = row_of.find(fl.f[k]);
          if (r == row_of.end()) return err(1105, {line_str(), sec_name(s), fl.f[k]});
          double v;
          if (!parse_real(fl.f[k + 1], &v)) return err(1107, {line_str(), sec_name(s), fl.f[k + 1]});
          mps_row &row = rows[r->second];
          if (s == sec::rhs) {
            if (row.index == 0) obj_constant = -v;
            else row.rhs = v;
          } else if (row.index > 0) {
            row.range = v;
            row.has_range = true;
          }
        }
        break;
      }
      case sec::bounds: {
        if (fl.n < 2) return err(1102, {line_str(), "BOUNDS"});
        const std::string_view t = fl.f[0];
        const bool valued = t == "UP" || t == "LO" || t == "FX" || t == "LI" || t == "UI" || t == "SC";
        const bool plain = t == "FR" || t == "MI" || t == "PL" || t == "BV";
        if (!valued && !plain) return err(1108, {line_str(), t});
        std::string_view col, val;
        if (valued) {
          if (fl.n >= 4) col = fl.f[2], val = fl.f[3];
          else if (fl.n == 3) col = fl.f[1], val = fl.f[2];
          else return err(1102, {line_str(), "BOUNDS"});
        } else {
          if (fl.n >= 3 && col_of.count(fl.f[2])) col = fl.f[2];
          else col = fl.f[1];
        }
        auto ci = col_of.find(col);
        if (ci == col_of.end()) return err(1106, {line_str(), "BOUNDS", col});
        const int64_t j = ci->second;
        double v = 0.0;
        if (valued && !parse_real(val, &v)) return err(1107, {line_str(), "BOUNDS", val});
        const double inf = std::numeric_limits<double>::infinity();
        if (t == "UP" || t == "UI" || t == "SC") {
          if (v < 0.0 && bl[j] == 0.0 && t == "UP") bl[j] = -inf;
          bu[j] = v;
        } else if (t == "LO" || t == "LI") {
          bl[j] = v;
        } else if (t == "FX") {
          bl[j] = bu[j] = v;
        } else if (t == "FR") {
          bl[j] = -inf, bu[j] = inf;
        } else if (t == "MI") {
          bl[j] = -inf;
        } else if (t == "PL") {
          bu[j] = inf;
        } else if (t == "BV") {
          bl[j] = 0.0, bu[j] = 1.0;
        }
        if (t == "LI" || t == "UI") vtype[j] = var_integer;
        if (t == "BV") vtype[j] = var_binary;
        break;
      }
      case sec::quad_upper:
      case sec::quad_full: {
        if (fl.n < 3) return err(1102, {line_str(), sec_name(s)});
        auto c1 = col_of.find(fl.f[0]);
        if (c1 == col_of.end()) return err(1106, {line_str(), sec_name(s), fl.f[0]});
        auto c2 = col_of.find(fl.f[1]);
        if (c2 == col_of.end()) return err(1106, {line_str(), sec_name(s), fl.f[1]});
        double v;
        if (!parse_real(fl.f[2], &v)) return err(1107, {line_str(), sec_name(s), fl.f[2]});
        int64_t i = c1->second + 1, j = c2->second + 1;
        if (s == sec::quad_full && i > j) break;  // the lower half repeats the upper
        if (i > j) std::swap(i, j);
        const uint64_t key = static_cast<uint64_t>(i) * (uint64_t{1} << 32) + static_cast<uint64_t>(j);
        if (!h_seen.insert(key).second) return err(1109, {line_str(), sec_name(s), fl.f[0]});
        h.row.push_back(i);
        h.col.push_back(j);
        h.val.push_back(v);
        break;
      }
      case sec::cone: {
        auto ci = col_of.find(fl.f[0]);
        if (ci == col_of.end()) return err(1106, {line_str(), "CSECTION", fl.f[0]});
        if (!cone_sets.back().insert(ci->second).second) return err(1112, {line_str(), fl.f[0]});
        cones.back().members.push_back(ci->second + 1);
        break;
      }
      case sec::done: break;
    }
  }
  if (s == sec::cone) {
    if (read_error e = check_cone_size(); e.status) return e;
  }
  if (!seen_rows) return err(1115, {"ROWS"});
  if (!seen_columns) return err(1115, {"COLUMNS"});
  if (!ended) return err(1116, {});
  if (h.size() && !cones.empty()) return err(1114, {});
  for (size_t j = 0; j < bl.size(); ++j)
    if (!(bl[j] <= bu[j])) return err(1118, {col_names[j]});

  // The model.
  const int64_t n = static_cast<int64_t>(col_names.size());
  problem p;
  append_vars(p, n);
  p.bl = std::move(bl);
  p.bu = std::move(bu);
  p.vtype = std::move(vtype);
  p.s.bounds_defined = true;
  if (h.size()) {
    for (int64_t j = 0; j < n; ++j)
      if (c[j] != 0.0) {
        p.cs.idx.push_back(j + 1);
        p.cs.val.push_back(c[j]);
      }
    p.h = std::move(h);
    p.s.objective = obj_quadratic;
  } else if (obj_row >= 0) {
    p.c = std::move(c);
    p.s.objective = obj_linear;
  }
  p.s.obj_constant = obj_constant;
  const double inf = std::numeric_limits<double>::infinity();
  p.lc_bl.resize(static_cast<size_t>(ncons));
  p.lc_bu.resize(static_cast<size_t>(ncons));
  p.lc_deleted.assign(static_cast<size_t>(ncons), 0);
  for (const mps_row &r : rows) {
    if (r.index <= 0) continue;
    double lo = r.rhs, up = r.rhs;
    const double R = std::fabs(r.range);
    if (r.type == 'L') lo = r.has_range ? r.rhs - R : -inf;
    if (r.type == 'G') up = r.has_range ? r.rhs + R : inf;
    if (r.type == 'E' && r.has_range) {
      if (r.range > 0.0) up = r.rhs + R;
      else lo = r.rhs - R;
    }
    p.lc_bl[r.index - 1] = lo;
    p.lc_bu[r.index - 1] = up;
  }
  p.lc = std::move(a);
  p.cones = std::move(cones);
  // Everything but the options and the store.
  out.s = p.s;
  out.bl = std::move(p.bl);
  out.bu = std::move(p.bu);
  out.vtype = std::move(p.vtype);
  out.c = std::move(p.c);
  out.cs = std::move(p.cs);
  out.h = std::move(p.h);
  out.lc_bl = std::move(p.lc_bl);
  out.lc_bu = std::move(p.lc_bu);
  out.lc_deleted = std::move(p.lc_deleted);
  out.lc = std::move(p.lc);
  out.cones = std::move(p.cones);
  return {};
}

// ---- SDPA ------------------------------------------------------------------

namespace {

struct token {
  std::string_view text;
  int64_t position;  // 1-based column
};

std::vector<token> sdpa_tokens(std::string_view line) {
  std::vector<token> t;
  size_t i = 0;
  auto sep = [](char ch) { return ch == ' ' || ch == '\t' || ch == '\r' || ch == ',' || ch == '{' || ch == '}' || ch == '(' || ch == ')'; };
  while (i < line.size()) {
    while (i < line.size() && sep(line[i])) ++i;
    if (i >= line.size()) break;
    size_t j = i;
    while (j < line.size() && !sep(line[j])) ++j;
    t.push_back({line.substr(i, j - i), static_cast<int64_t>(i + 1)});
    i = j;
  }
  return t;
}

bool number_like(std::string_view s) {
  const char ch = s[0];
  return (ch >= '0' && ch <= '9') || ch == '+' || ch == '-' || ch == '.';
}

}  // namespace

read_error read_sdpa(const std::function<bool(std::string &)> &next_line, const sdpa_limits &lim, problem &out) {
  std::string line;
  int64_t line_no = 0;
  std::vector<token> toks;
  size_t tk = 0;
  // Next number of a header item: skips comment lines and text that is not
  // a number; a number-like token that does not read is malformed.
  enum class got { number, end, bad };
  double value = 0.0;
  int64_t bad_pos = 0;
  auto next_number = [&](bool header) -> got {
    for (;;) {
      while (tk < toks.size()) {
        const token &t = toks[tk++];
        if (!number_like(t.text)) {
          if (header) {
            tk = toks.size();  // the rest of the line is a comment
            break;
          }
          bad_pos = t.position;
          return got::bad;
        }
        double v;
        if (!parse_real(t.text, &v) || !std::isfinite(v)) {
          bad_pos = t.position;
          return got::bad;
        }
        value = v;
        return got::number;
      }
      if (!next_line(line)) return got::end;
      ++line_no;
      toks.clear();
      tk = 0;
      if (!line.empty() && (line[0] == '"' || line[0] == '*')) continue;
      toks = sdpa_tokens(line);
    }
  };
  auto bad = [&]() { return err(1137, {std::to_string(line_no), std::to_string(bad_pos)}); };
  auto integral = [](double v) { return v == std::floor(v) && std::fabs(v) < 9.0e15; };

  // m and nBlock, each the first number of its line.
  got g = next_number(true);
  if (g == got::bad) return bad();
  if (g == got::end) return err(1131, {});
  if (!integral(value) || value < 0) return err(1138, {std::to_string(line_no), "the number of variables"});
  const int64_t m = static_cast<int64_t>(value);
  tk = toks.size();
  g = next_number(true);
  if (g == got::bad) return bad();
  if (g == got::end) return err(1132, {});
  if (!integral(value) || value < 1) return err(1138, {std::to_string(line_no), "the number of blocks"});
  const int64_t nblock = static_cast<int64_t>(value);
  tk = toks.size();
  if (nblock > max_vars) return err(1138, {std::to_string(line_no), "the number of blocks"});
  std::vector<int64_t> bsize;
  for (int64_t b = 0; b < nblock; ++b) {
    g = next_number(true);
    if (g == got::bad) return bad();
    if (g == got::end) return err(1133, {});
    if (!integral(value) || std::fabs(value) > 1.0e9) return err(1138, {std::to_string(line_no), "a block size"});
    if (value == 0.0) return err(1143, {std::to_string(line_no)});
    bsize.push_back(static_cast<int64_t>(value));
  }
  tk = toks.size();
  if (m > max_vars) return err(1138, {std::to_string(line_no), "the number of variables"});
  std::vector<double> c;
  for (int64_t i = 0; i < m; ++i) {
    g = next_number(false);
    if (g == got::bad) return bad();
    if (g == got::end) return err(1134, {});
    c.push_back(value);
  }
  tk = toks.size();
  // Offsets of the blocks in the whole matrix.
  std::vector<int64_t> offset(static_cast<size_t>(nblock) + 1, 0);
  for (int64_t b = 0; b < nblock; ++b) offset[b + 1] = offset[b] + std::llabs(bsize[b]);
  const int64_t dim = offset[nblock];
  struct entry {
    int64_t mat, i, j;
    double v;
  };
  std::vector<entry> entries;
  std::unordered_map<uint64_t, int64_t> seen;  // (mat, i, j) -> line
  for (;;) {
    if (!next_line(line)) break;
    ++line_no;
    if (!line.empty() && (line[0] == '"' || line[0] == '*')) continue;
    const std::vector<token> t = sdpa_tokens(line);
    if (t.empty()) continue;
    double v[5];
    size_t k = 0;
    for (; k < 5 && k < t.size(); ++k)
      if (!parse_real(t[k].text, &v[k]) || !std::isfinite(v[k])) return err(1137, {std::to_string(line_no), std::to_string(t[k].position)});
    if (k < 5) return err(1136, {std::to_string(line_no)});
    const std::string ls = std::to_string(line_no);
    for (int q = 0; q < 4; ++q)
      if (!integral(v[q])) return err(1137, {ls, std::to_string(t[q].position)});
    const int64_t mat = static_cast<int64_t>(v[0]), blk = static_cast<int64_t>(v[1]);
    const int64_t i = static_cast<int64_t>(v[2]), j = static_cast<int64_t>(v[3]);
    if (mat < 0 || mat > m) return err(1138, {ls, "the matrix number"});
    if (blk < 1 || blk > nblock) return err(1138, {ls, "the block number"});
    const int64_t size = std::llabs(bsize[blk - 1]);
    if (i < 1 || i > size || j < 1 || j > size) return err(1138, {ls, "the row or column"});
    if (i > j) return err(1139, {ls});
    if (bsize[blk - 1] < 0 && i != j) return err(1140, {ls});
    const int64_t gi = offset[blk - 1] + i, gj = offset[blk - 1] + j;
    const uint64_t key = (static_cast<uint64_t>(mat) * static_cast<uint64_t>(dim) + static_cast<uint64_t>(gi - 1)) *
                             static_cast<uint64_t>(dim) + static_cast<uint64_t>(gj - 1);
    auto [it, fresh] = seen.emplace(key, line_no);
    if (!fresh) return err(1141, {ls, std::to_string(it->second)});
    entries.push_back({mat, gi, gj, v[4]});
  }
  if (entries.empty()) return err(1135, {});
  const int64_t nnz = static_cast<int64_t>(entries.size());
  if (m > lim.maxnvar || nblock > lim.maxnblk || nnz > lim.maxnnz)
    return err(1142, {std::to_string(m), std::to_string(lim.maxnvar), std::to_string(nblock), std::to_string(lim.maxnblk),
                      std::to_string(nnz), std::to_string(lim.maxnnz)}, 9);

  // The block: matrices in order A_0 .. A_m, diagonal blocks split into 1x1.
  matrix_block mb;
  mb.dim = dim;
  mb.nvar = m;
  for (int64_t b = 0; b < nblock; ++b) {
    if (bsize[b] > 0) mb.blksize.push_back(bsize[b]);
    else mb.blksize.insert(mb.blksize.end(), static_cast<size_t>(-bsize[b]), 1);
  }
  mb.nnz.assign(static_cast<size_t>(m) + 1, 0);
  for (const entry &e : entries) ++mb.nnz[e.mat];
  std::stable_sort(entries.begin(), entries.end(), [](const entry &x, const entry &y) { return x.mat < y.mat; });
  for (const entry &e : entries) {
    mb.a.row.push_back(e.i);
    mb.a.col.push_back(e.j);
    mb.a.val.push_back(e.v);
  }
  problem p;
  append_vars(p, m);
  p.c = std::move(c);
  p.s.objective = obj_linear;
  out.s = p.s;
  out.bl = std::move(p.bl);
  out.bu = std::move(p.bu);
  out.vtype = std::move(p.vtype);
  out.c = std::move(p.c);
  out.blocks.push_back(std::move(mb));
  return {};
}

}  // namespace zem::e04
