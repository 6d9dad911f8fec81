// Message tables: how a routine's failures read in each interface.
//
// Each routine keeps one table beside its worker, one row per failure the
// worker can report:
//
//     inline constexpr zem::message c05ay_messages[] = {
//       {1, 1001, NE_REAL, {"On entry, eps = %s.", "Constraint: eps > 0.0."}},
//       {1, 1002, NE_REAL_2, {"On entry, a = %s and b = %s.", "Constraint: a != b."},
//                            {"On entry, a = %s and b = %s.", "Constraint: a /= b."}},
//     };
//
// status and detail are what the worker writes into the message record;
// code is the C interface's NE_/NW_ code.  The lines are the text without
// decoration: the C message becomes "CODE_NAME:\n  line1\n  line2", the
// Fortran message the records "** line1", "** line2".  The Fortran lines are
// given only where they differ from the C lines.  Each "%s" takes the next
// value of the record, in order; a row needs exactly as many values as its
// C lines have "%s".
#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <cstdint>
#include <span>
#include <string_view>

#include <zem.h>

namespace zem {

inline constexpr int max_message_lines = 8;

struct message {
  int64_t status;
  int64_t detail;
  int code;
  std::array<const char *, max_message_lines> c_lines;
  std::array<const char *, max_message_lines> f_lines{};

  // The Fortran lines: their own where given, else the C lines.
  constexpr const std::array<const char *, max_message_lines> &fortran() const {
    return f_lines[0] ? f_lines : c_lines;
  }
};

using message_table = std::span<const message>;

// Every table registers itself in the object section "zem_messages", so
// that a test can check all of them (placeholders, line widths, codes)
// without a list that could forget one:  ZEM_REGISTER_MESSAGES(c05ay).
struct registered_table {
  const char *routine;
  const message *rows;
  size_t size;
};
// The section holds pointers (8 bytes each, no padding between them).
#define ZEM_REGISTER_MESSAGES(rtn)                                                                     \
  static constexpr zem::registered_table rtn##_messages_registered{#rtn, rtn##_messages,               \
                                                                   std::size(rtn##_messages)};        \
  [[gnu::used, gnu::section("zem_messages")]] static const zem::registered_table *const rtn##_messages_entry = \
      &rtn##_messages_registered;

// Number of "%s" conversions in a set of lines: the values a row needs.
constexpr int count_values(const std::array<const char *, max_message_lines> &lines) {
  int n = 0;
  for (const char *l : lines) {
    if (!l) break;
    for (std::string_view s(l); !s.empty(); s.remove_prefix(1))
      if (s.starts_with("%s")) ++n;
  }
  return n;
}

// The name of an error code ("NE_REAL"), or nullptr for an unknown code.
const char *code_name(int code);

// Rows every routine shares, looked up after the routine's own table:
// the user stop (status -1), reported with the flag value the user set.
inline constexpr int64_t status_user_stop = -1;
inline constexpr int64_t detail_user_stop = 9001;

}  // namespace zem
