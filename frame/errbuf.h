// Writing the engine's message record.
//
// A failing worker describes its failure in the 200-character record that
// the entry layer owns:
//     0x01 status 0x01 detail 0x01 value1 0x01 value2 0x01 ... (blanks) NUL
// status is the routine's documented ifail value, detail a code from 1001
// upward unique within the routine, and each value is text of at most 25
// characters.  The entry layer turns the record into the interface's message
// (frame/messages.h).  A worker reports a failure in one line:
//
//     if (0.0 >= *eps) return zem::fail(errbuf, ifail, 1, 1001, *eps);
//
// Reals are written in the shortest form that reads back to the same double
// (so a message never hides the value that was passed), with ".0" added to a
// value that would otherwise look like an integer.
#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "engine.h"

namespace zem {

// Longest value text the record carries.
inline constexpr int value_len = 25;

// Text of one message value: at most 25 characters, no terminator needed.
struct value_text {
  char text[value_len + 1];
  int len;
};

inline value_text format_value(double v) {
  value_text t{};
  auto r = std::to_chars(t.text, t.text + value_len, v);
  t.len = static_cast<int>(r.ptr - t.text);
  std::string_view s(t.text, t.len);
  if (s.find_first_of(".en") == std::string_view::npos && t.len + 2 <= value_len) {
    t.text[t.len++] = '.';
    t.text[t.len++] = '0';
  }
  return t;
}

template <typename I>
  requires std::is_integral_v<I>
inline value_text format_value(I v) {
  value_text t{};
  auto r = std::to_chars(t.text, t.text + value_len, static_cast<long long>(v));
  t.len = static_cast<int>(r.ptr - t.text);
  return t;
}

// A single character (a tail selector, a matrix letter).
inline value_text format_value(char c) {
  value_text t{};
  t.text[0] = c;
  t.len = 1;
  return t;
}

inline value_text format_value(std::string_view s) {
  value_text t{};
  t.len = static_cast<int>(s.size() < value_len ? s.size() : value_len);
  std::memcpy(t.text, s.data(), t.len);
  return t;
}

inline value_text format_value(const char *s) { return format_value(std::string_view(s)); }

namespace detail {

inline void put(char *buf, int &pos, const char *s, int n) {
  for (int i = 0; i < n && pos < errbuf_len - 2; ++i) buf[pos++] = s[i];
}

inline void put_field(char *buf, int &pos, const value_text &t) {
  put(buf, pos, t.text, t.len);
  buf[pos++] = '\x01';
}

}  // namespace detail

// Writes the message record and the status; returns nothing so that a worker
// can end with `return zem::fail(...)`.  Failures are the cold path: kept
// out of line, they leave the worker's loop small.
// The values come by value: a worker's local whose address went to this
// out-of-line call would have to live in memory on the hot path too.
template <typename... V>
[[gnu::cold, gnu::noinline]] void fail(char *errbuf, int64_t *ifail, int64_t status, int64_t detail, V... values) {
  int pos = 0;
  errbuf[pos++] = '\x01';
  detail::put_field(errbuf, pos, format_value(status));
  detail::put_field(errbuf, pos, format_value(detail));
  (detail::put_field(errbuf, pos, format_value(values)), ...);
  std::memset(errbuf + pos, ' ', errbuf_len - 1 - pos);
  errbuf[errbuf_len - 1] = '\0';
  *ifail = status;
}

// Success: status 0; the record is left as the entry gave it.
inline void succeed(int64_t *ifail) { *ifail = 0; }

}  // namespace zem

namespace zem {
// Dynamic memory could not be obtained: status -999, no record needed.
inline void alloc_fail(int64_t *ifail) { *ifail = status_alloc_fail; }
}  // namespace zem
