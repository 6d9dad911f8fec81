// Message rows and reporting shared by the option routines e04zm, e04zn and
// e04zp.  Their failures, by ifail value:
//     1  NE_HANDLE          the handle (rows of e04/handle.h)
//     2  NE_PHASE           options cannot change while a solver runs
//    11  NE_INVALID_OPTION  unknown option name
//    12  NE_INVALID_FORMAT  value not of the option's numerical type; no
//                           delimiter (e04zp)
//    13  NE_INVALID_VALUE   value outside the option's bounds or keywords
//    14  NE_NOT_READ_FILE   (e04zp) the file cannot be read, or has no BEGIN
//                           or no END line
//    15  NE_INT             (e04zn) cvalue too short for the keyword
#pragma once

#include "e04/handle.h"
#include "e04/option_parse.h"

// The phase row of the option routines (their own text).
#define ZEM_E04_OPTION_PHASE_ROW \
  {2, 1011, NE_PHASE, {"The options cannot be modified while solver is running."}}

// The rows of a string setting (e04zm) and a name look-up (e04zn).  A text
// from the caller travels as two values (see split_for_message).
#define ZEM_E04_OPTSTR_ROWS                                                                              \
  {11, 1021, NE_INVALID_OPTION, {"On entry, the option supplied in optstr was not recognized:", "optstr = %s%s"}}, \
  {12, 1022, NE_INVALID_FORMAT, {"On entry, could not convert the specified optval to an integer:",          \
                                 "optval = %s%s"}},                                                     \
  {12, 1023, NE_INVALID_FORMAT, {"On entry, could not convert the specified optval to a real:", "optval = %s%s"}}, \
  {13, 1024, NE_INVALID_VALUE, {"On entry, the optval supplied for the character optional parameter is not", \
                                "valid.", "Option: %s%s", "optval = %s%s"}},                            \
  {13, 1031, NE_INVALID_VALUE, {"On entry, the optval supplied for the integer optional parameter is not", \
                                "valid.", "Option: %s%s", "optval = %s.", "Constraint: optval >= %s."}}, \
  {13, 1032, NE_INVALID_VALUE, {"On entry, the optval supplied for the integer optional parameter is not", \
                                "valid.", "Option: %s%s", "optval = %s.", "Constraint: optval > %s."}}, \
  {13, 1033, NE_INVALID_VALUE, {"On entry, the optval supplied for the integer optional parameter is not", \
                                "valid.", "Option: %s%s", "optval = %s.", "Constraint: optval <= %s."}}, \
  {13, 1034, NE_INVALID_VALUE, {"On entry, the optval supplied for the integer optional parameter is not", \
                                "valid.", "Option: %s%s", "optval = %s.", "Constraint: optval < %s."}}, \
  {13, 1041, NE_INVALID_VALUE, {"On entry, the optval supplied for the real optional parameter is not valid.", \
                                "Option: %s%s", "optval = %s.", "Constraint: optval >= %s."}},         \
  {13, 1042, NE_INVALID_VALUE, {"On entry, the optval supplied for the real optional parameter is not valid.", \
                                "Option: %s%s", "optval = %s.", "Constraint: optval > %s."}},          \
  {13, 1043, NE_INVALID_VALUE, {"On entry, the optval supplied for the real optional parameter is not valid.", \
                                "Option: %s%s", "optval = %s.", "Constraint: optval <= %s."}},         \
  {13, 1044, NE_INVALID_VALUE, {"On entry, the optval supplied for the real optional parameter is not valid.", \
                                "Option: %s%s", "optval = %s.", "Constraint: optval < %s."}}

// For a solver: two options whose values contradict each other, found when
// the solver starts.  The names are the options' mixed-case names, the two
// values the record's, constraint the relation they must satisfy:
//   ZEM_E04_OPTION_PAIR_ROW(6, 1101, "LPIPM NE Pert Min", "LPIPM NE Pert Max",
//                           "'LPIPM NE Pert Min' <= 'LPIPM NE Pert Max'.")
//   ... zem::fail(errbuf, ifail, 6, 1101, min_value, max_value);
#define ZEM_E04_OPTION_PAIR_ROW(status, detail, name_a, name_b, constraint)            \
  {status, detail, NE_REAL_2, {"On entry, '" name_a "' = %s and", "'" name_b "' = %s.", \
                               "Constraint: " constraint,                                 \
                               "Use zem_opt_handle_opt_set (e04zmc) to set compatible option values."}}

namespace zem::e04 {

// The option routines' first steps: the problem behind the handle, and for
// a routine that changes options, a refusal while a solver runs.  Null with
// the failure written.
problem *open_for_options(void *handle, bool changes, char *errbuf, int64_t *ifail) noexcept;

// Writes the failure of a setting from optstr (e04zm): details 1021..1044.
void report_setting(const set_result &r, std::string_view optstr, std::string_view value, char *errbuf,
                    int64_t *ifail) noexcept;

}  // namespace zem::e04
