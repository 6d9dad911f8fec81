// The handle header, its validation, the phase word and the result store.
#include "e04/handle.h"

#include <cstring>
#include <new>

#include "e04/model.h"

namespace zem::e04 {

handle_state validate(void *handle, int64_t *kind, void **inner) noexcept {
  if (!handle) return handle_state::null;
  const auto *w = static_cast<const int64_t *>(handle);
  for (int i = 0; i < word_variant; ++i)
    if (w[i] != header_template[i]) return handle_state::foreign;
  void *body = reinterpret_cast<void *>(w[word_body]);
  if (!body) return handle_state::no_body;
  const bool shell = w[5] == shell_variant[0] && w[6] == shell_variant[1] && w[7] == shell_variant[2];
  if (shell) {
    const auto *sb = static_cast<const shell_body *>(body);
    *kind = sb->kind;
    *inner = sb->inner;
  } else {
    *kind = kind_problem;
    *inner = body;
  }
  return handle_state::ok;
}

problem *open_problem(void *handle, char *errbuf, int64_t *ifail) noexcept {
  int64_t kind = 0;
  void *inner = nullptr;
  switch (validate(handle, &kind, &inner)) {
    case handle_state::null: return zem::fail(errbuf, ifail, 1, 1001), nullptr;
    case handle_state::foreign: return zem::fail(errbuf, ifail, 1, 1002), nullptr;
    case handle_state::no_body: return zem::fail(errbuf, ifail, 1, 1003), nullptr;
    case handle_state::ok: break;
  }
  if (kind != kind_problem || !inner) return zem::fail(errbuf, ifail, 1, 1004), nullptr;
  return static_cast<problem *>(inner);
}

int64_t phase(const problem &p) noexcept { return p.s.phase; }

bool enter_solving(problem &p) noexcept {
  if (p.s.phase == phase_solving) return false;
  p.s.phase = phase_solving;
  return true;
}

void leave_solving(problem &p) noexcept { p.s.phase = phase_editable; }

bool check_editable(const problem &p, char *errbuf, int64_t *ifail) noexcept {
  if (p.s.phase == phase_editable) return true;
  zem::fail(errbuf, ifail, 2, 1005);
  return false;
}

bool check_not_solving(const problem &p, char *errbuf, int64_t *ifail) noexcept {
  if (p.s.phase != phase_solving) return true;
  zem::fail(errbuf, ifail, 2, 1006);
  return false;
}

option_set *options(problem &p) noexcept { return p.opts; }
const option_set *options(const problem &p) noexcept { return p.opts; }
option_set *options_ref(problem &p) noexcept { return p.opts_ref; }

int64_t num_vars(const problem &p) noexcept { return p.s.nvar; }

namespace {
template <typename Vec, typename T>
bool store(Vec &list, std::string_view name, std::span<const T> values) noexcept {
  try {
    for (auto &e : list)
      if (e.name == name) {
        e.v.assign(values.begin(), values.end());
        return true;
      }
    list.push_back({std::string(name), std::vector<T>(values.begin(), values.end())});
    return true;
  } catch (const std::bad_alloc &) {
    return false;
  }
}
template <typename T, typename Vec>
std::span<const T> find(const Vec &list, std::string_view name, bool *found) noexcept {
  for (const auto &e : list)
    if (e.name == name) {
      if (found) *found = true;
      return {e.v.data(), e.v.size()};
    }
  if (found) *found = false;
  return {};
}
}  // namespace

bool store_reals(problem &p, std::string_view name, std::span<const double> values) noexcept {
  return store(p.reals, name, values);
}
bool store_ints(problem &p, std::string_view name, std::span<const int64_t> values) noexcept {
  return store(p.ints, name, values);
}
std::span<const double> stored_reals(const problem &p, std::string_view name, bool *found) noexcept {
  return find<double>(p.reals, name, found);
}
std::span<const int64_t> stored_ints(const problem &p, std::string_view name, bool *found) noexcept {
  return find<int64_t>(p.ints, name, found);
}
void clear_store(problem &p) noexcept {
  p.reals.clear();
  p.ints.clear();
}

void append_vars(problem &p, int64_t k) {
  const size_t n = static_cast<size_t>(p.s.nvar + k);
  p.bl.resize(n, -inf);
  p.bu.resize(n, inf);
  p.vtype.resize(n, var_continuous);
  if (!p.var_deleted.empty()) p.var_deleted.resize(n, 0);
  if (p.s.objective == obj_linear) p.c.resize(n, 0.0);
  p.s.nvar += k;
}

void clear_objective(problem &p) noexcept {
  p.c.clear();
  p.c.shrink_to_fit();
  p.h = coo{};
  p.f = coo{};
  p.mf = 0;
  p.cs = sparse_vec{};
  p.idxfd.clear();
  p.rd = coo{};
  p.s.objective = obj_none;
  p.s.factored = false;
  p.s.nres = 0;
  p.s.isparse = 0;
  p.s.obj_constant = 0.0;
}

void set_linear_objective(problem &p, const double *c) {
  std::vector<double> v(c, c + p.s.nvar);
  clear_objective(p);
  p.c = std::move(v);
  p.s.objective = obj_linear;
}

void add_linear_rows(problem &p, int64_t id, int64_t nrows, const double *bl, const double *bu, int64_t nnz,
                     const int64_t *irow, const int64_t *icol, const double *val) {
  const int64_t base = id > 0 ? id - 1 : p.nlc();
  // Reserve first, so that nothing below can fail half way.
  p.lc.row.reserve(p.lc.size() + static_cast<size_t>(nnz));
  p.lc.col.reserve(p.lc.size() + static_cast<size_t>(nnz));
  p.lc.val.reserve(p.lc.size() + static_cast<size_t>(nnz));
  if (id == 0) {
    p.lc_bl.reserve(p.lc_bl.size() + static_cast<size_t>(nrows));
    p.lc_bu.reserve(p.lc_bu.size() + static_cast<size_t>(nrows));
    p.lc_deleted.reserve(p.lc_deleted.size() + static_cast<size_t>(nrows));
  }
  if (id > 0) {
    size_t k = 0;
    for (size_t e = 0; e < p.lc.size(); ++e)
      if (p.lc.row[e] != id) {
        p.lc.row[k] = p.lc.row[e];
        p.lc.col[k] = p.lc.col[e];
        p.lc.val[k] = p.lc.val[e];
        ++k;
      }
    p.lc.row.resize(k);
    p.lc.col.resize(k);
    p.lc.val.resize(k);
    p.lc_bl[id - 1] = bl[0];
    p.lc_bu[id - 1] = bu[0];
  } else {
    p.lc_bl.insert(p.lc_bl.end(), bl, bl + nrows);
    p.lc_bu.insert(p.lc_bu.end(), bu, bu + nrows);
    p.lc_deleted.resize(p.lc_deleted.size() + static_cast<size_t>(nrows), 0);
  }
  for (int64_t e = 0; e < nnz; ++e) {
    p.lc.row.push_back(base + irow[e]);
    p.lc.col.push_back(icol[e]);
    p.lc.val.push_back(val[e]);
  }
}

component component_of(const std::string &k) noexcept {
  if (k == "X") return component::x;
  if (k == "LC") return component::lc;
  if (k == "QC") return component::qc;
  if (k == "NLC") return component::nlc;
  if (k == "CN") return component::cn;
  if (k == "MI") return component::mi;
  if (k == "NLS") return component::nls;
  return component::none;
}

std::vector<char> deleted_flags(const problem &p, component c) {
  std::vector<char> f;
  switch (c) {
    case component::x:
      f = p.var_deleted;
      f.resize(static_cast<size_t>(p.s.nvar), 0);
      break;
    case component::lc: f = p.lc_deleted; break;
    case component::nlc: f = p.nl_deleted; break;
    case component::qc:
      for (const auto &q : p.qcons) f.push_back(q.deleted);
      break;
    case component::cn:
      for (const auto &q : p.cones) f.push_back(q.deleted);
      break;
    case component::mi:
      for (const auto &q : p.blocks) f.push_back(q.deleted);
      break;
    case component::nls:
      if (p.s.objective == obj_nlls) {
        f = p.res_deleted;
        f.resize(static_cast<size_t>(p.s.nres), 0);
      }
      break;
    case component::none: break;
  }
  return f;
}

void set_deleted_flags(problem &p, component c, const std::vector<char> &f) {
  switch (c) {
    case component::x: p.var_deleted = f; break;
    case component::lc: p.lc_deleted = f; break;
    case component::nlc: p.nl_deleted = f; break;
    case component::qc:
      for (size_t i = 0; i < f.size(); ++i) p.qcons[i].deleted = f[i];
      break;
    case component::cn:
      for (size_t i = 0; i < f.size(); ++i) p.cones[i].deleted = f[i];
      break;
    case component::mi:
      for (size_t i = 0; i < f.size(); ++i) p.blocks[i].deleted = f[i];
      break;
    case component::nls: p.res_deleted = f; break;
    case component::none: break;
  }
}

void *new_header(problem *p) noexcept {
  auto *w = new (std::nothrow) int64_t[header_words];
  if (!w) return nullptr;
  std::memcpy(w, header_template, sizeof header_template);
  w[word_body] = reinterpret_cast<int64_t>(p);
  return w;
}

void *make_shell(int64_t kind, void *inner) noexcept {
  auto *sb = new (std::nothrow) shell_body{kind, inner};
  if (!sb) return nullptr;
  auto *w = new (std::nothrow) int64_t[header_words];
  if (!w) {
    delete sb;
    return nullptr;
  }
  std::memcpy(w, header_template, sizeof header_template);
  std::memcpy(w + word_variant, shell_variant, sizeof shell_variant);
  w[word_body] = reinterpret_cast<int64_t>(sb);
  return w;
}

}  // namespace zem::e04
