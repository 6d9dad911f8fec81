// Lines every g22 message table shares.
#pragma once

namespace zem::g22 {

// The last line of a formula error (the Fortran line drops the period after
// the value so that it keeps within 80 characters).
inline constexpr const char *pos_c = "The position in the formula string of the error is %s.";
inline constexpr const char *pos_f = "The position in the formula string of the error is %s";
// The line that echoes an option string (cut to 25 characters).
inline constexpr const char *echo = "optstr: %s";

}  // namespace zem::g22
