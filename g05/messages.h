// Message tables of the g05 routines, as data: one entry per engine failure
// (status and detail code), with the C error code, the C lines and, where
// they differ, the Fortran lines.  Lines are separated by '\n' and carry no
// "** " prefix; "%s" marks each value of the message record, in order.
#pragma once

#include <cstdint>

namespace zem::g05 {

struct message_entry {
  int64_t status;
  int64_t detail;
  const char *c_code;  // null: not a failure in the C interface
  const char *c_text;
  const char *f_text;  // null: the C lines
};

}  // namespace zem::g05
