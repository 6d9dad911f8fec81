// The formula language: lexing, parsing and expansion into terms.
//
// Grammar (docs/g22-formulae.md says it for users), lowest precedence first:
//     formula := sum [options]
//     sum     := ["-"] prod { ("+" | "-") prod }
//     prod    := colon { ("*" | ".") colon }
//     colon   := power { ":" power }
//     power   := primary [ "^" digits ]          primary a parenthesised sum
//     primary := name ["@" specifier] | "1" | "(" sum ")"
// Expansion follows the usual rules of statistical model formulae:
//     A:B    every union a|b of a term of A with a term of B
//     A*B    A, then B, then A:B       ("." is the same operator)
//     (S)^n  S*S*...*S (n times): interactions of S's terms up to order n
//     A - B  the terms of B removed from those built so far
// Each result drops repeated terms (the first occurrence stays); at the end
// the terms are ordered by degree, keeping the order of appearance within a
// degree, and each term lists its variables in order of first appearance.
#include <algorithm>
#include <cstring>
#include <unordered_set>

#include "g22/g22.h"

namespace zem::g22 {
namespace {

// Limits that keep any input's work bounded.
constexpr size_t max_terms = 4096;            // terms one expression may expand to
constexpr size_t max_products = size_t{1} << 18;  // unions one operator may form
constexpr size_t max_unions = size_t{1} << 20;    // unions one formula may form
constexpr int max_depth = 200;        // nesting of parentheses

enum class tok { name, number, op, end };

struct token {
  tok type = tok::end;
  char op = 0;
  int64_t pos = 0;  // 1-based
  std::string_view text;
  contrast own_contrast = none;
};

// Terms without repeats, in order of first appearance; the keys make each
// insertion constant time, whatever the number of terms.
struct term_list {
  std::vector<term> terms;
  std::unordered_set<std::string> keys;
  static std::string key(const term &t) {
    return std::string(reinterpret_cast<const char *>(t.vars.data()), t.vars.size() * sizeof(int));
  }
  void add(term t) {
    if (keys.insert(key(t)).second) terms.push_back(std::move(t));
  }
  void remove(const term &t) {
    if (keys.erase(key(t))) std::erase(terms, t);
  }
  size_t size() const { return terms.size(); }
};

struct value {
  std::vector<term> terms;
  bool mean = false;   // the term "1"
  bool group = false;  // a parenthesised sum
  int64_t pos = 0;
};

class parser {
 public:
  parser(std::string_view text, formula_model &m, error_record &e) : s_(text), m_(m), e_(e) {}

  void run() {
    lex();
    if (e_.failed()) return;
    if (toks_.size() == 1) return;  // nothing written: no terms (checked by the caller)
    value v = sum(0);
    if (e_.failed()) return;
    const token &t = cur();
    if (t.type == tok::op && t.op == ')') return error(ierr_g22_frm_mismatched_brace, t.pos);
    if (t.type != tok::end) return error(ierr_g22_frm_missing_op, t.pos);
    terms_ = std::move(v.terms);
  }
  std::vector<term> &terms() { return terms_; }

 private:
  // ---- Lexing ----
  void lex() {
    size_t i = 0;
    const size_t n = s_.size();
    while (i < n) {
      const char c = s_[i];
      const int64_t pos = static_cast<int64_t>(i) + 1;
      if (c == ' ') {
        ++i;
        continue;
      }
      if (std::strchr("-+():*.^", c)) {
        toks_.push_back(token{tok::op, c, pos, s_.substr(i, 1)});
        ++i;
        continue;
      }
      if (c == '@') return error(ierr_g22_frm_missing_var, pos);
      if (!name_char(c)) return error(ierr_g22_frm_invalid_var, pos);
      size_t j = i;
      while (j < n && name_char(s_[j])) ++j;
      token t{tok::name, 0, pos, s_.substr(i, j - i)};
      if (std::all_of(t.text.begin(), t.text.end(), [](char d) { return d >= '0' && d <= '9'; }))
        t.type = tok::number;
      else if (t.text.size() > max_name)
        return error(ierr_g22_frm_invalid_var, pos);
      if (j < n && s_[j] == '@') {
        if (t.type == tok::number) return error(ierr_g22_frm_invalid_var, pos);
        j = specifier(j + 1, t);
        if (e_.failed()) return;
      }
      toks_.push_back(t);
      i = j;
    }
    toks_.push_back(token{tok::end, 0, static_cast<int64_t>(n) + 1, {}});
  }

  // A specifier starts at i (after "@"): a word, or two words with one blank
  // between them ("SUM FIRST").  Returns the index after it.
  size_t specifier(size_t i, token &t) {
    const size_t n = s_.size();
    size_t j = i;
    while (j < n && name_char(s_[j])) ++j;
    if (j == i) {
      error(ierr_g22_frm_invalid_contrast, static_cast<int64_t>(i) + 1);
      return j;
    }
    if (j + 1 < n && s_[j] == ' ' && name_char(s_[j + 1])) {
      size_t k = j + 1;
      while (k < n && name_char(s_[k])) ++k;
      const contrast two = contrast_of(s_.substr(i, k - i));
      if (two != none) {
        t.own_contrast = two;
        return k;
      }
    }
    t.own_contrast = contrast_of(s_.substr(i, j - i));
    if (t.own_contrast == none) error(ierr_g22_frm_invalid_contrast, static_cast<int64_t>(i) + 1);
    return j;
  }

  // ---- Parsing ----
  const token &cur() const { return toks_[at_]; }
  bool is_op(char c) const { return cur().type == tok::op && cur().op == c; }

  void error(ierr c, int64_t pos) {
    if (!e_.failed()) e_.raise(c, "parse_formula").i(pos);
  }

  // The operand a binary operator (or the start) needs is missing: say why.
  void missing_operand() {
    const token &t = cur();
    const token *prev = at_ > 0 ? &toks_[at_ - 1] : nullptr;
    if (t.type == tok::op && t.op != '(' && t.op != ')') return error(ierr_g22_frm_invalid_op, t.pos);
    if (prev && prev->type == tok::op && prev->op == '(') return error(ierr_g22_frm_missing_var, t.pos);
    if (prev && prev->type == tok::op) return error(ierr_g22_frm_invalid_op, prev->pos);
    if (t.type == tok::op && t.op == ')') return error(ierr_g22_frm_mismatched_brace, t.pos);
    error(ierr_g22_frm_missing_var, t.pos);
  }

  value sum(int depth) {
    value out;
    out.group = true;
    term_list acc;
    int sign = +1;
    if (is_op('-')) {
      sign = -1;
      ++at_;
    }
    for (;;) {
      value v = prod(depth);
      if (e_.failed()) return out;
      if (v.mean) {
        if (depth > 0) {
          error(ierr_g22_frm_invalid_mean, v.pos);
          return out;
        }
        m_.mean_written = sign;
      } else if (sign > 0) {
        for (term &t : v.terms) acc.add(std::move(t));
      } else {
        for (const term &t : v.terms) acc.remove(t);
      }
      if (acc.size() > max_terms) {
        error(ierr_g22_frm_invalid_op, toks_[at_ > 0 ? at_ - 1 : 0].pos);
        return out;
      }
      if (is_op('+')) {
        sign = +1;
      } else if (is_op('-')) {
        sign = -1;
      } else {
        out.terms = std::move(acc.terms);
        return out;
      }
      ++at_;
    }
  }

  value prod(int depth) {
    value left = colon(depth);
    while (!e_.failed() && (is_op('*') || is_op('.'))) {
      const int64_t pos = cur().pos;
      if (left.mean) {
        error(ierr_g22_frm_invalid_mean, left.pos);
        break;
      }
      ++at_;
      value right = colon(depth);
      if (e_.failed()) break;
      if (right.mean) {
        error(ierr_g22_frm_invalid_mean, right.pos);
        break;
      }
      term_list r;
      for (const term &t : left.terms) r.add(t);
      for (const term &t : right.terms) r.add(t);
      if (!product(left.terms, right.terms, r, pos)) break;
      left.terms = std::move(r.terms);
      left.group = false;
    }
    return left;
  }

  value colon(int depth) {
    value left = power(depth);
    while (!e_.failed() && is_op(':')) {
      const int64_t pos = cur().pos;
      if (left.mean) {
        error(ierr_g22_frm_invalid_colon, pos);
        break;
      }
      ++at_;
      value right = power(depth);
      if (e_.failed()) break;
      if (right.mean) {
        error(ierr_g22_frm_invalid_colon, pos);
        break;
      }
      term_list r;
      if (!product(left.terms, right.terms, r, pos)) break;
      left.terms = std::move(r.terms);
      left.group = false;
    }
    return left;
  }

  value power(int depth) {
    value p = primary(depth);
    if (e_.failed() || !is_op('^')) return p;
    const int64_t pos = cur().pos;
    if (p.mean) {
      error(ierr_g22_frm_invalid_mean, p.pos);
      return p;
    }
    if (!p.group) {
      error(ierr_g22_frm_invalid_power, pos);
      return p;
    }
    ++at_;
    const token &t = cur();
    if (t.type != tok::number) {
      error(ierr_g22_frm_invalid_power, t.pos);
      return p;
    }
    // Powers beyond the number of variables add nothing: clamp first, so
    // that a long string of digits cannot overflow.
    size_t nvars = 0;
    {
      std::vector<int> seen;
      for (const term &x : p.terms)
        for (int v : x.vars)
          if (std::find(seen.begin(), seen.end(), v) == seen.end()) seen.push_back(v);
      nvars = seen.size();
    }
    size_t k = 0;
    for (char d : t.text) {
      k = k * 10 + static_cast<size_t>(d - '0');
      if (k > nvars + 1) k = nvars + 1;
    }
    if (k == 0) {
      error(ierr_g22_frm_invalid_power, t.pos);
      return p;
    }
    // The interactions up to order k of nvars variables number at most
    // sum_{j<=k} C(nvars, j): refuse at once what would pass the limit.
    {
      size_t bound = 0, c = 1;
      for (size_t j = 1; j <= k && j <= nvars && bound <= max_terms; ++j) {
        c = c * (nvars - j + 1) / j;
        bound += c;
      }
      if (bound > max_terms) {
        error(ierr_g22_frm_invalid_op, pos);
        return p;
      }
    }
    ++at_;
    std::vector<term> right = p.terms;
    for (size_t i = 1; i < k && i < nvars; ++i) {
      term_list r;
      if (!product(p.terms, right, r, pos)) return p;
      right = std::move(r.terms);
    }
    p.terms = std::move(right);
    p.group = false;
    return p;
  }

  value primary(int depth) {
    const token t = cur();
    value v;
    v.pos = t.pos;
    if (t.type == tok::name) {
      ++at_;
      term x;
      x.vars.push_back(variable(t.text));
      x.own_contrasts.push_back(t.own_contrast);
      v.terms.push_back(std::move(x));
      return v;
    }
    if (t.type == tok::number) {
      ++at_;
      if (t.text != "1") error(ierr_g22_frm_invalid_mean, t.pos);
      v.mean = true;
      return v;
    }
    if (t.type == tok::op && t.op == '(') {
      if (depth >= max_depth) {
        error(ierr_g22_frm_invalid_op, t.pos);
        return v;
      }
      ++at_;
      if (is_op(')')) {
        error(ierr_g22_frm_missing_var, cur().pos);
        return v;
      }
      v = sum(depth + 1);
      v.pos = t.pos;
      if (e_.failed()) return v;
      if (cur().type == tok::end) {
        error(ierr_g22_frm_mismatched_brace, t.pos);
        return v;
      }
      if (!is_op(')')) {
        error(ierr_g22_frm_missing_op, cur().pos);
        return v;
      }
      ++at_;
      v.group = true;
      return v;
    }
    missing_operand();
    return v;
  }

  // ---- Terms ----
  int variable(std::string_view name) {
    for (size_t i = 0; i < m_.names.size(); ++i)
      if (m_.names[i] == name) return static_cast<int>(i);
    m_.names.emplace_back(name);
    return static_cast<int>(m_.names.size() - 1);
  }

  // The union of two terms; a variable in both with two different
  // specifiers keeps the first and leaves a warning.
  term merge(const term &a, const term &b, int64_t pos) {
    term t;
    size_t i = 0, j = 0;
    while (i < a.vars.size() || j < b.vars.size()) {
      if (j == b.vars.size() || (i < a.vars.size() && a.vars[i] < b.vars[j])) {
        t.vars.push_back(a.vars[i]);
        t.own_contrasts.push_back(a.own_contrasts[i++]);
      } else if (i == a.vars.size() || b.vars[j] < a.vars[i]) {
        t.vars.push_back(b.vars[j]);
        t.own_contrasts.push_back(b.own_contrasts[j++]);
      } else {
        contrast c = a.own_contrasts[i];
        if (c == none) c = b.own_contrasts[j];
        if (a.own_contrasts[i] != none && b.own_contrasts[j] != none && a.own_contrasts[i] != b.own_contrasts[j] && !e_.any())
          e_.raise(ierr_g22_frm_repeated_var, "parse_formula", severity::warning).i(pos);
        t.vars.push_back(a.vars[i++]);
        t.own_contrasts.push_back(c);
        ++j;
      }
    }
    return t;
  }

  // Appends every union l|r (l of left, r of right) to out.
  bool product(const std::vector<term> &left, const std::vector<term> &right, term_list &out, int64_t pos) {
    unions_ += left.size() * right.size();
    if (left.size() * right.size() > max_products || unions_ > max_unions) {
      error(ierr_g22_frm_invalid_op, pos);
      return false;
    }
    for (const term &l : left)
      for (const term &r : right) {
        out.add(merge(l, r, pos));
        if (out.size() > max_terms) {
          error(ierr_g22_frm_invalid_op, pos);
          return false;
        }
      }
    return true;
  }

  std::string_view s_;
  formula_model &m_;
  error_record &e_;
  std::vector<token> toks_;
  size_t at_ = 0;
  size_t unions_ = 0;
  std::vector<term> terms_;
};

// ---- Options written after the formula ----
// The option part begins at the name before the first "=".
size_t options_start(std::string_view s) {
  const size_t eq = s.find('=');
  if (eq == std::string_view::npos) return s.size();
  size_t j = eq;
  while (j > 0 && s[j - 1] == ' ') --j;
  while (j > 0 && name_char(s[j - 1])) --j;
  return j;
}

void formula_options(std::string_view s, size_t start, formula_model &m, error_record &e) {
  size_t i = start;
  const size_t n = s.size();
  while (i < n && !e.failed()) {
    while (i < n && s[i] == ' ') ++i;
    if (i >= n) break;
    const size_t name_at = i;
    while (i < n && name_char(s[i])) ++i;
    const std::string_view name = s.substr(name_at, i - name_at);
    const size_t eq = s.find('=', i);
    // The delimiter is exactly " = ".
    if (eq == std::string_view::npos || eq != i + 1 || s[i] != ' ' || eq + 1 >= n || s[eq + 1] != ' ') {
      const int64_t pos = static_cast<int64_t>(eq == std::string_view::npos ? i : eq) + 1;
      e.raise(ierr_g22_invalid_delimiter, "formula_options").i(pos);
      return;
    }
    // The value runs to the name of the next option, or to the end.
    const size_t vstart = eq + 2;
    size_t vend = n;
    const size_t next_eq = s.find('=', vstart);
    if (next_eq != std::string_view::npos) vend = vstart + options_start(s.substr(vstart, next_eq - vstart + 1));
    const std::string_view val = trim(s.substr(vstart, vend - vstart));
    const int64_t vpos = static_cast<int64_t>(vstart) + 1;
    if (same_text(name, "CONTRAST")) {
      const contrast c = contrast_of(val);
      if (c == none) return void(e.raise(ierr_g22_invalid_optval, "formula_options").i(vpos));
      m.default_contrast = c;
    } else if (same_text(name, "EXPLICIT_MEAN")) {
      if (same_text(val, "YES"))
        m.explicit_mean = true;
      else if (same_text(val, "NO"))
        m.explicit_mean = false;
      else
        return void(e.raise(ierr_g22_invalid_optval, "formula_options").i(vpos));
    } else if (same_text(name, "SUBJECT")) {
      if (val.empty() || val.size() > max_name || !std::all_of(val.begin(), val.end(), name_char))
        return void(e.raise(ierr_g22_invalid_optval, "formula_options").i(vpos));
      m.subject.assign(val);
    } else {
      return void(e.raise(ierr_g22_unknown_option, "formula_options").i(static_cast<int64_t>(name_at) + 1));
    }
    i = vend;
  }
}

}  // namespace

void parse_formula(std::string_view text, formula_model &m, error_record &e) {
  m.text.assign(text);
  const size_t opt = options_start(text);
  formula_options(text, opt, m, e);
  if (e.failed()) return;
  parser p(text.substr(0, opt), m, e);
  p.run();
  if (e.failed()) return;
  m.terms = std::move(p.terms());
  std::stable_sort(m.terms.begin(), m.terms.end(),
                   [](const term &a, const term &b) { return a.vars.size() < b.vars.size(); });
  if (m.terms.empty() && !m.has_mean()) e.raise(ierr_g22_empty, "parse_formula");
  if (trim(text.substr(0, opt)).empty()) e.raise(ierr_g22_empty, "parse_formula");
}

std::string term_label(const formula_model &m, const term &t) {
  std::string s;
  for (size_t i = 0; i < t.vars.size(); ++i) {
    if (i) s += ':';
    s += m.names[t.vars[i]];
    if (t.own_contrasts[i] != none) {
      s += '@';
      s += contrast_names[t.own_contrasts[i]];
    }
  }
  return s;
}

}  // namespace zem::g22
