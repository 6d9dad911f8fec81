// The command strings of e04rw (integer arrays) and e04rx (real arrays):
// which stored array each names, whether it may be read and written, and
// its size.  One table, so the reference pages and the code cannot differ.
//
//   size rule   the array's length
//   nvar        number of variables
//   nvar_nlc    variables plus linear constraint rows
//   nlc         linear constraint rows
//   nres        least-squares residuals
//   stored      whatever the solver stored (read only)
//   mcs_list    sum of the "MCS NUMBER POINTS" entries
#pragma once

#include <cstdint>
#include <string_view>

namespace zem::e04 {

enum class size_rule { nvar, nvar_nlc, nlc, nres, stored, mcs_list };

struct store_command {
  std::string_view cmd;    // as the caller writes it (upper case)
  std::string_view store;  // name of the stored array
  bool readable, writable;
  size_rule size;
};

inline constexpr store_command int_commands[] = {
    {"WARM START BASIS", "[WARM START BASIS]", true, true, size_rule::nvar_nlc},
    {"MCS NUMBER POINTS", "MCS NUMBER POINTS", true, true, size_rule::nvar},
    {"MCS INITIAL POINTS", "MCS INITIAL POINTS", true, true, size_rule::nvar},
    {"EXPORT TRF", "EXPORT TRF", true, false, size_rule::stored},
};

inline constexpr store_command real_commands[] = {
    {"PRIMAL", "PRIMAL", true, true, size_rule::nvar},
    {"PRIMAL VARIABLES", "PRIMAL", true, true, size_rule::nvar},
    {"DUAL VARIABLES", "DUAL", true, false, size_rule::stored},
    {"DUAL CONE", "DUAL CONE", true, false, size_rule::stored},
    {"DUAL CONE VARIABLES", "DUAL CONE", true, false, size_rule::stored},
    {"DUAL MATRIX", "DUAL MATRIX", true, false, size_rule::stored},
    {"DUAL MATRIX VARIABLES", "DUAL MATRIX", true, false, size_rule::stored},
    {"RESIDUAL WEIGHTS", "RESIDUAL WEIGHTS", true, true, size_rule::nres},
    {"COVARIANCE MATRIX", "COVARIANCE MATRIX", true, false, size_rule::stored},
    {"HESSIAN MATRIX", "HESSIAN MATRIX", true, false, size_rule::stored},
    {"SLACK VARIABLES", "[SLACK]", true, true, size_rule::nlc},
    {"MCS LIST", "MCS LIST", true, true, size_rule::mcs_list},
    // Written by the nonlinear programming solver e04st.
    {"CONSTRAINT VALUES", "CONSTRAINT VALUES", true, false, size_rule::stored},
    {"OBJECTIVE VALUE", "OBJECTIVE VALUE", true, false, size_rule::stored},
    {"SOLVER STATISTICS", "SOLVER STATISTICS", true, false, size_rule::stored},
    // Written by the first-order solver e04kf (besides the shared
    // "OBJECTIVE VALUE" and "SOLVER STATISTICS" above, in its own layout).
    {"SOLVER RINFO", "RINFO", true, false, size_rule::stored},
};

}  // namespace zem::e04
