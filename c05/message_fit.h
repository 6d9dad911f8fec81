// A compile-time check that every message line of a table fits the 80
// columns of a record when each value takes the longest text the message
// record allows (24 characters for a double in shortest form, 20 for an
// integer: 24 covers both), in both interfaces: "  " + line in C, "** " +
// line in Fortran.
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/messages.h"

namespace zem::c05 {

inline constexpr int longest_value = 24;

constexpr bool line_fits(const char *line, int prefix) {
  int len = prefix;
  for (std::string_view s(line); !s.empty();) {
    if (s.starts_with("%s")) {
      len += longest_value;
      s.remove_prefix(2);
    } else {
      ++len;
      s.remove_prefix(1);
    }
  }
  return len <= 80;
}

template <std::size_t N>
constexpr bool messages_fit(const zem::message (&table)[N]) {
  for (const zem::message &m : table) {
    for (const char *l : m.c_lines)
      if (l && !line_fits(l, 2)) return false;
    for (const char *l : m.fortran())
      if (l && !line_fits(l, 3)) return false;
    if (count_values(m.c_lines) != count_values(m.fortran())) return false;
  }
  return true;
}

}  // namespace zem::c05
