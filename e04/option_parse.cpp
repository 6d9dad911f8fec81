// Reading one option setting (see option_parse.h).
#include "e04/option_parse.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace zem::e04 {

namespace {
constexpr bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
}  // namespace

std::string_view trim(std::string_view s) noexcept {
  while (!s.empty() && is_blank(s.front())) s.remove_prefix(1);
  while (!s.empty() && is_blank(s.back())) s.remove_suffix(1);
  return s;
}

bool read_integer(std::string_view s, int64_t &v) noexcept {
  s = trim(s);
  if (!s.empty() && s.front() == '+') s.remove_prefix(1);
  if (s.empty() || s.front() == '+') return false;
  const auto r = std::from_chars(s.data(), s.data() + s.size(), v, 10);
  return r.ec == std::errc{} && r.ptr == s.data() + s.size();
}

bool read_real(std::string_view s, double &v) noexcept {
  s = trim(s);
  if (!s.empty() && s.front() == '+') s.remove_prefix(1);
  // Longest text read: enough for any double written out in full.
  constexpr size_t max_len = 400;
  if (s.empty() || s.size() > max_len) return false;
  char buf[max_len];
  size_t n = 0;
  for (char c : s) {
    // Only the characters of a decimal number: this keeps out the words
    // "inf" and "nan" and hexadecimal forms.
    if (c == 'd' || c == 'D') c = 'e';
    if (!((c >= '0' && c <= '9') || c == '.' || c == 'e' || c == 'E' || c == '+' || c == '-')) return false;
    buf[n++] = c;
  }
  const auto r = std::from_chars(buf, buf + n, v, std::chars_format::general);
  return r.ec == std::errc{} && r.ptr == buf + n && std::isfinite(v);
}

namespace {

// The first bound the value breaks, or b_none.
bound_kind broken_bound(const option_info &o, double v, double &bound) {
  if ((o.lo_kind == b_ge && !(v >= o.lo)) || (o.lo_kind == b_gt && !(v > o.lo))) {
    bound = o.lo;
    return o.lo_kind;
  }
  if ((o.hi_kind == b_le && !(v <= o.hi)) || (o.hi_kind == b_lt && !(v < o.hi))) {
    bound = o.hi;
    return o.hi_kind;
  }
  return b_none;
}

}  // namespace

set_result apply_setting(option_set &set, std::string_view name, std::string_view value) noexcept {
  set_result r;
  value = trim(value);
  r.index = find_index(name);
  if (r.index < 0) {
    char folded[max_name_len + 1];
    if (value.empty() && fold_name(name, folded) == 8 && std::string_view(folded) == "DEFAULTS") {
      fill_defaults(set, fill_mode::all);
      r.outcome = set_outcome::defaults;
      return r;
    }
    r.outcome = set_outcome::unknown_option;
    return r;
  }
  const option_info &o = registry[r.index];
  switch (base_type(o.type)) {
    case type_integer: {
      if (!read_integer(value, r.ivalue)) {
        r.outcome = set_outcome::not_integer;
        return r;
      }
      r.broken = broken_bound(o, static_cast<double>(r.ivalue), r.bound);
      if (r.broken != b_none) {
        r.outcome = set_outcome::int_bound;
        return r;
      }
      set.istore[o.islot] = r.ivalue;
      set.istore[o.islot + 1] = status_user;
      return r;
    }
    case type_real: {
      if (!read_real(value, r.rvalue)) {
        r.outcome = set_outcome::not_real;
        return r;
      }
      r.broken = broken_bound(o, r.rvalue, r.bound);
      if (r.broken != b_none) {
        r.outcome = set_outcome::real_bound;
        return r;
      }
      set.rstore[o.rslot] = r.rvalue;
      set.istore[o.islot] = status_user;
      return r;
    }
    case type_character: {
      // Keywords compare like names: any case, runs of blanks as one.
      char folded[max_name_len + 1];
      const int n = fold_name(value, folded);
      if (n > 0) {
        const std::string_view key(folded, n);
        for (const keyword &k : keywords_of(r.index)) {
          if (k.word == key) {
            r.ivalue = k.code;
            set.istore[o.islot] = k.code;
            set.istore[o.islot + 1] = status_user;
            return r;
          }
        }
      }
      r.outcome = set_outcome::bad_keyword;
      return r;
    }
    default:
      r.outcome = set_outcome::unknown_option;  // a skipped entry cannot be set
      return r;
  }
}

message_text split_for_message(std::string_view text, std::string_view open, std::string_view close) noexcept {
  constexpr size_t room = 2 * value_len;
  char q[room + 1];
  size_t n = 0;
  auto put = [&](std::string_view s) {
    for (char c : s) {
      const unsigned char u = static_cast<unsigned char>(c);
      q[n++] = (u < 0x20 || u == 0x7f) ? '?' : c;
    }
  };
  const size_t fit = room - open.size() - close.size();
  put(open);
  if (text.size() <= fit) {
    put(text);
  } else {
    put(text.substr(0, fit - 3));
    put("...");
  }
  put(close);
  // Two non-empty pieces: the record cannot carry an empty value.
  const size_t first = n - 1 < static_cast<size_t>(value_len) ? n - 1 : value_len;
  message_text m{};
  std::memcpy(m.a, q, first);
  std::memcpy(m.b, q + first, n - first);
  return m;
}

}  // namespace zem::e04
