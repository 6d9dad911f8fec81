// Reading one option setting: "Name = value" split, the value converted to
// the option's type and checked against its bounds or keywords, then stored.
// Shared by e04zm (one string) and e04zp (a file of them); each routine
// turns an outcome into its own message.
#pragma once

#include <cstdint>
#include <string_view>

#include "e04/registry.h"
#include "frame/errbuf.h"

namespace zem::e04 {

enum class set_outcome : int {
  ok,              // stored, status 2
  defaults,        // the word "Defaults": every option back to its default
  unknown_option,  // the name is not in the registry
  not_integer,     // an integer option's value does not read as an integer
  not_real,        // a real option's value does not read as a finite real
  bad_keyword,     // a character option's value is not one of its keywords
  int_bound,       // an integer value outside a bound (broken, bound)
  real_bound,      // a real value outside a bound
};

struct set_result {
  set_outcome outcome = set_outcome::ok;
  int index = -1;  // registry index (0-based) of the option named
  bound_kind broken = b_none;
  double bound = 0.0;
  int64_t ivalue = 0;
  double rvalue = 0.0;
};

// Blanks (and tabs, carriage returns, newlines) dropped at both ends.
std::string_view trim(std::string_view s) noexcept;

// Conversions of a whole (trimmed) text; false when it is not a number of
// that kind.  An integer is an optional sign and decimal digits within the
// 64-bit range; a real is a finite decimal number, with an exponent letter
// e, E, d or D.
bool read_integer(std::string_view s, int64_t &v) noexcept;
bool read_real(std::string_view s, double &v) noexcept;

// Converts value for the option name and, when all is well, stores it in
// set with status 2.  With name "Defaults" (any case) and an empty value,
// every option is reset.  set is unchanged on any failure.
set_result apply_setting(option_set &set, std::string_view name, std::string_view value) noexcept;

// A text shown in a message, in two record values of at most 25 characters
// each: open + text + close, the text cut to fit (ending "...") and control
// characters shown as '?'.  Lines show it as "%s%s".
struct message_text {
  char a[value_len + 1];
  char b[value_len + 1];
};
message_text split_for_message(std::string_view text, std::string_view open, std::string_view close) noexcept;

}  // namespace zem::e04
