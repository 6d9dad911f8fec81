// Handles, the error record, and the small pieces every g22 routine shares.
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>

#include "g22/g22.h"

namespace zem::g22 {

// ---- Handles -----------------------------------------------------------
//
// A handle is the address of a header of four 64-bit tag words followed by
// the object:
//     tag_a  = magic_a                 (a g22 handle at all?)
//     kind   = 1..4
//     self   = address ^ magic_s ^ kind  (a copy, or a changed kind, fails)
//     tag_b  = magic_b
// release() zeroes the four words before it frees the block, so a stale
// copy of a released pointer no longer carries the tags.  The header is
// read with process_vm_readv on the calling process: for an address that is
// not mapped the kernel answers EFAULT instead of the processor faulting,
// so any pointer a caller hands in is examined without risk.
namespace {

constexpr uint64_t magic_a = 0x5a454d4732324841ull;  // "ZEMG22HA"
constexpr uint64_t magic_b = 0x2d68616e646c652dull;
constexpr uint64_t magic_s = 0x9e3779b97f4a7c15ull;

struct header {
  uint64_t tag_a, kind, self, tag_b;
};

template <typename T>
struct block {
  header h;
  T obj;
};

uint64_t self_word(const void *h, uint64_t k) { return reinterpret_cast<uintptr_t>(h) ^ magic_s ^ k; }

// Reads the header at h without trusting h: false when it cannot be read.
bool read_header(const void *h, header *out) {
  iovec local{out, sizeof *out};
  iovec remote{const_cast<void *>(h), sizeof *out};
  const ssize_t n = process_vm_readv(getpid(), &local, 1, &remote, 1, 0);
  if (n == static_cast<ssize_t>(sizeof *out)) return true;
  if (n < 0 && (errno == ENOSYS || errno == EPERM)) {
    // A kernel without the call (or one that forbids it): read directly;
    // the alignment check has already refused the most common strays.
    std::memcpy(out, h, sizeof *out);
    return true;
  }
  return false;
}

template <typename T>
void *make(kind k) {
  auto *b = new (std::nothrow) block<T>;
  if (!b) return nullptr;
  b->h = header{magic_a, static_cast<uint64_t>(k), self_word(b, static_cast<uint64_t>(k)), magic_b};
  return b;
}

template <typename T>
void destroy(void *h) {
  auto *b = static_cast<block<T> *>(h);
  std::memset(&b->h, 0, sizeof b->h);
  delete b;
}

}  // namespace

void *make_handle(kind k) {
  try {
    switch (k) {
      case kind::formula: return make<formula_model>(k);
      case kind::data: return make<data_description>(k);
      case kind::design: return make<design_description>(k);
      case kind::lmm: return make<lmm_description>(k);
    }
  } catch (const std::bad_alloc &) {
  }
  return nullptr;
}

ierr check(const void *h, kind *k) {
  if (!h) return ierr_g22_handle_null;
  if (reinterpret_cast<uintptr_t>(h) % alignof(header) != 0) return ierr_g22_handle_unknown;
  header hd{};
  if (!read_header(h, &hd) || hd.tag_a != magic_a) return ierr_g22_handle_unknown;
  if (hd.tag_b != magic_b || hd.kind < 1 || hd.kind > 4 || hd.self != self_word(h, hd.kind))
    return ierr_g22_handle_corrupt;
  *k = static_cast<kind>(hd.kind);
  return ierr_g22_ok;
}

formula_model *formula_of(void *h) { return &static_cast<block<formula_model> *>(h)->obj; }
data_description *data_of(void *h) { return &static_cast<block<data_description> *>(h)->obj; }
design_description *design_of(void *h) { return &static_cast<block<design_description> *>(h)->obj; }
lmm_description *lmm_of(void *h) { return &static_cast<block<lmm_description> *>(h)->obj; }

void release(void *h) {
  kind k{};
  if (check(h, &k) != ierr_g22_ok) return;
  switch (k) {
    case kind::formula: return destroy<formula_model>(h);
    case kind::data: return destroy<data_description>(h);
    case kind::design: return destroy<design_description>(h);
    case kind::lmm: return destroy<lmm_description>(h);
  }
}

const char *title(kind k) {
  switch (k) {
    case kind::formula: return "Model Formula";
    case kind::data: return "Data Matrix Description";
    case kind::design: return "Design Matrix Description";
    case kind::lmm: return "LMM Model Description";
  }
  return "";
}

bool check_handle(void *h, kind want, bool null_ok, int variant, error_record &e) {
  if (!h && null_ok) return true;
  kind k{};
  ierr c = check(h, &k);
  if (c == ierr_g22_ok && k != want) c = ierr_g22_handle_invalid_type;
  if (c == ierr_g22_ok) return true;
  e.raise(c, "check_handle").var(variant);
  return false;
}

// ---- The error record --------------------------------------------------
error_record &error_record::raise(ierr code_, const char *src, severity s) {
  if (sev == severity::error || (sev == severity::warning && s == severity::warning)) {
    ignoring = true;  // keep the first failure; the values of this one are dropped
    return *this;
  }
  ignoring = false;
  code = code_;
  sev = s;
  source = src;
  variant = 0;
  n_i = n_r = n_c = 0;
  order[0] = '\0';
  return *this;
}

namespace {
void add_order(char *order, char t) {
  const size_t n = std::strlen(order);
  if (n < 7) {
    order[n] = t;
    order[n + 1] = '\0';
  }
}
}  // namespace

error_record &error_record::i(int64_t v) {
  if (!ignoring && n_i < 4) {
    ivalues[n_i++] = v;
    add_order(order, 'i');
  }
  return *this;
}
error_record &error_record::r(double v) {
  if (!ignoring && n_r < 2) {
    rvalues[n_r++] = v;
    add_order(order, 'r');
  }
  return *this;
}
error_record &error_record::c(std::string_view v) {
  if (!ignoring && n_c < 2) {
    try {
      cvalues[n_c].assign(v.substr(0, value_len));
    } catch (...) {
    }
    ++n_c;
    add_order(order, 'c');
  }
  return *this;
}

namespace {
// A message value may not be empty or hold the record's separators.
value_text printable(const std::string &s) {
  value_text t = format_value(std::string_view(s));
  for (int k = 0; k < t.len; ++k)
    if (static_cast<unsigned char>(t.text[k]) < 0x20 || t.text[k] == 0x7f) t.text[k] = '?';
  if (t.len == 0) t.text[t.len++] = ' ';
  return t;
}
std::string_view sv(const value_text &t) { return std::string_view(t.text, t.len); }
}  // namespace

void translate(const error_record &e, std::span<const translation> table, char *errbuf, int64_t *ifail) {
  if (e.sev == severity::none) return succeed(ifail);
  if (e.code == ierr_g22_alloc) return alloc_fail(ifail);
  for (const translation &t : table) {
    if (t.code != e.code || t.variant != e.variant) continue;
    value_text v[4];
    int ni = 0, nr = 0, nc = 0, n = 0;
    for (const char *o = e.order; *o && n < 4; ++o, ++n) {
      if (*o == 'i')
        v[n] = format_value(e.ivalues[ni++]);
      else if (*o == 'r')
        v[n] = format_value(e.rvalues[nr++]);
      else
        v[n] = printable(e.cvalues[nc++]);
    }
    switch (n) {
      case 0: return fail(errbuf, ifail, t.status, t.detail);
      case 1: return fail(errbuf, ifail, t.status, t.detail, sv(v[0]));
      case 2: return fail(errbuf, ifail, t.status, t.detail, sv(v[0]), sv(v[1]));
      case 3: return fail(errbuf, ifail, t.status, t.detail, sv(v[0]), sv(v[1]), sv(v[2]));
      default: return fail(errbuf, ifail, t.status, t.detail, sv(v[0]), sv(v[1]), sv(v[2]), sv(v[3]));
    }
  }
  // A code the routine does not report: the entry says "internal error".
  fail(errbuf, ifail, 99, 9999);
}

// ---- Text --------------------------------------------------------------
std::string_view trim(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}

bool same_text(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 32);
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 32);
    if (x != y) return false;
  }
  return true;
}

bool name_char(char c) {
  const auto u = static_cast<unsigned char>(c);
  if (u <= 0x20 || u == 0x7f) return false;
  return std::strchr("-+():*.^@=", c) == nullptr;
}

contrast contrast_of(std::string_view s) {
  for (int i = 0; i < n_contrasts; ++i)
    if (same_text(s, contrast_names[i])) return static_cast<contrast>(i);
  return none;
}

}  // namespace zem::g22
