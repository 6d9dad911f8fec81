// Message tables of the c05a routines: one entry per failure detail.
//
// Each entry holds the engine status, the detail code, the C error code and
// the message lines of each interface (without the code-name heading and
// indentation of the C message, and without the "** " prefix of the Fortran
// lines, which the entry layer adds).  "%s" marks each value of the message
// record, in order.  An entry whose Fortran lines are empty uses the C lines.
#pragma once

#include <cstdint>

namespace zem::c05 {

inline constexpr int max_lines = 5;

struct message {
  int64_t status;
  int64_t detail;
  const char *code;
  const char *c_lines[max_lines];
  const char *f_lines[max_lines];
};

}  // namespace zem::c05
