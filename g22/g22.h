// Chapter g22: model formulae, data descriptions and design matrices.
//
// The three objects a user builds (a parsed formula, a description of a
// dataset, a description of a design matrix) live in handles: blocks the
// library allocates and the caller holds by an opaque pointer until g22za
// releases them.  This header is the chapter's internal vocabulary: the
// handle kinds and their validation, the error record every g22 routine
// reports through, and the contrast codings.  The formula language is
// described once, in docs/g22-formulae.md.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/frame.h"

namespace zem::g22 {

// ---- Contrasts ---------------------------------------------------------
// The seven codings of a categorical variable with L levels, and how a
// specifier spells them.  `none` marks a variable occurrence without its
// own specifier (the handle's "CONTRAST" option applies).
enum contrast : int8_t {
  none = -1,
  first = 0,       // treatment coding, first level the base: columns for levels 2..L
  last = 1,        // treatment coding, last level the base: columns for levels 1..L-1
  sum_first = 2,   // sum-to-zero, first level coded -1: columns for levels 2..L
  sum_last = 3,    // sum-to-zero, last level coded -1: columns for levels 1..L-1
  helmert = 4,     // level j+1 against the mean of levels 1..j
  polynomial = 5,  // orthonormal polynomials in the level number
  dummy = 6,       // one indicator column per level
};
inline constexpr int n_contrasts = 7;
inline constexpr const char *contrast_names[n_contrasts] = {"FIRST", "LAST", "SUM FIRST", "SUM LAST",
                                                             "HELMERT", "POLYNOMIAL", "DUMMY"};
// The contrast named by s (any case; one blank inside), or none.
contrast contrast_of(std::string_view s);

// Longest variable name; longer names given to g22yb are cut to this.
inline constexpr size_t max_name = 50;
// Whether c may appear in a variable name: not one of the operators
// "-+():*.^", not '@' or '=' (they introduce specifiers and options), not a
// blank or a control character.
bool name_char(char c);

// ---- The error record ---------------------------------------------------
// Every g22 worker reports through one record; the entry's message table
// turns it into the code and text of each interface (translate() below).
enum ierr : int {
  ierr_g22_ok = 0,
  // formula parsing (g22ya)
  ierr_g22_frm_mismatched_brace,
  ierr_g22_frm_missing_op,
  ierr_g22_frm_invalid_op,
  ierr_g22_frm_invalid_power,
  ierr_g22_frm_invalid_colon,
  ierr_g22_frm_invalid_mean,
  ierr_g22_frm_invalid_var,
  ierr_g22_frm_missing_var,
  ierr_g22_frm_invalid_contrast,
  ierr_g22_frm_repeated_var,  // warning
  ierr_g22_empty,
  // names (g22yb)
  ierr_g22_invalid_name,
  ierr_g22_duplicate,
  ierr_g22_duplicate_truncated,
  ierr_g22_truncated,  // warning
  // handles
  ierr_g22_handle_null,
  ierr_g22_handle_corrupt,
  ierr_g22_handle_unknown,
  ierr_g22_handle_invalid_type,
  // options
  ierr_g22_unknown_option,
  ierr_g22_invalid_delimiter,
  ierr_g22_invalid_optval,
  ierr_g22_read_only,
  ierr_g22_not_integer,
  // scalar arguments
  ierr_g22_bad_nobs,
  ierr_g22_bad_nvar,
  ierr_g22_bad_levels,
  ierr_g22_bad_lvnames,
  ierr_g22_bad_lddat,
  ierr_g22_bad_sddat,
  ierr_g22_bad_what,
  ierr_g22_bad_lisx,
  ierr_g22_bad_lplab,
  ierr_g22_bad_lvinfo,
  // design matrices
  ierr_g22_unknown_variable,
  ierr_g22_bad_level_value,
  ierr_g22_too_large,
  ierr_g22_poly_levels,
  ierr_g22_no_main_effects,  // warning
  ierr_g22_size_alternative, // warning
  ierr_g22_size_query,       // warning
  ierr_g22_not_cons_term,
  ierr_g22_not_cons_mean,
  ierr_g22_diff_contrast,  // warning
  ierr_g22_alloc,
};

enum class severity : int8_t { none, warning, error };

// The record's fields: Code, Severity, Source (the piece that detected the
// failure), Routine (the entry), Integer, Real and Character Values (in the
// order the message uses them, see `order`), and the Call Stack of pieces
// the failure passed through on its way out.
struct error_record {
  ierr code = ierr_g22_ok;
  severity sev = severity::none;
  const char *source = "";
  const char *routine = "";
  int variant = 0;  // which of a code's messages (a dimension, a handle argument)
  int64_t ivalues[4] = {};
  int n_i = 0;
  double rvalues[2] = {};
  int n_r = 0;
  std::string cvalues[2];
  int n_c = 0;
  char order[8] = {};  // 'i', 'r', 'c' per message value, in message order
  const char *stack[8] = {};
  int depth = 0;
  bool ignoring = false;  // the last raise() kept an earlier failure

  bool failed() const { return sev == severity::error; }
  bool any() const { return sev != severity::none; }
  // Sets the record; later errors never overwrite an earlier error, and an
  // error overwrites a warning.
  error_record &raise(ierr c, const char *src, severity s = severity::error);
  error_record &i(int64_t v);
  error_record &r(double v);
  error_record &c(std::string_view v);
  error_record &var(int v) {
    if (!ignoring) variant = v;
    return *this;
  }
  void push(const char *piece) {
    if (depth < 8) stack[depth++] = piece;
  }
};

// One row of a routine's translation: record code (and variant) to the
// engine status and detail code of its message table.
struct translation {
  ierr code;
  int variant;
  int64_t status;
  int64_t detail;
};
// Writes the record into the engine's message record through the routine's
// translation table (values in message order); an unknown code becomes an
// internal error.  No record (sev none) is success.
void translate(const error_record &e, std::span<const translation> table, char *errbuf, int64_t *ifail);

// ---- Handles -----------------------------------------------------------
enum class kind : uint64_t {
  formula = 1,      // "Model Formula"
  data = 2,         // "Data Matrix Description"
  design = 3,       // "Design Matrix Description"
  lmm = 4,          // "LMM Model Description" (created by the mixed-model fitting routines)
};
const char *title(kind k);

struct term {
  std::vector<int> vars;           // formula variable numbers, increasing
  std::vector<contrast> own_contrasts;     // per variable: its own specifier or none
  bool operator==(const term &o) const { return vars == o.vars; }
};

struct formula_model {
  std::string text;                 // the formula as given (options included)
  std::vector<std::string> names;   // variables in order of first appearance
  std::vector<term> terms;          // by degree, then order of appearance
  int mean_written = 0;             // +1 "1" written last, -1 "-1", 0 neither
  contrast default_contrast = first;
  bool explicit_mean = false;
  std::string subject;
  bool has_mean() const { return mean_written > 0 || (mean_written == 0 && !explicit_mean); }
};

struct data_description {
  int64_t nobs = 0;
  int64_t nvar = 0;
  std::vector<int64_t> levels;
  std::vector<std::string> names;  // given (cut to 50) or generated "V1", "V2", ...
  bool names_given = false;
  bool by_variables = false;       // "STORAGE ORDER": false = Observations
};

// One categorical or continuous factor of a design column.
struct column_factor {
  int64_t var;      // data variable number, 0-based
  int64_t column;   // 0 for a continuous variable, else the coding column, 1-based
};
struct design_term {
  std::vector<int64_t> vars;       // data variables, in formula order
  std::vector<contrast> requested; // per variable: the contrast the formula asked for
  std::vector<contrast> coding;    // per variable: the coding used (dummy for full coding)
  std::vector<int64_t> levels;     // per variable: 1 continuous, else levels
  std::string label;               // "A:B"
};
struct design_description {
  std::string formula;             // the formula's text at construction
  int64_t nobs = 0;
  int64_t mx = 0;
  bool by_variables = false;
  bool mean = false;               // mean column present (the first column)
  std::vector<design_term> terms;
  std::vector<std::string> names;  // data variable names at construction
  std::vector<int64_t> col_term;   // per column: term number (1-based), 0 for the mean
  std::vector<std::string> labels; // per column
  std::vector<std::vector<column_factor>> col_factors;
};

struct lmm_description {
  std::string formula;
  std::string subject;
};

// Allocation, validation and release.  A handle points at a header of four
// tag words followed by the object; release zeroes the tag words first.
// check() reads the header through the kernel (it never faults, whatever the
// pointer), so a foreign, freed or corrupted pointer is reported, not
// followed.
void *make_handle(kind k);  // nullptr when memory is exhausted
// What h is: 0 a valid handle of some kind (written to *k), or the record
// code naming what is wrong with it (null, corrupt, unknown).
ierr check(const void *h, kind *k);
formula_model *formula_of(void *h);
data_description *data_of(void *h);
design_description *design_of(void *h);
lmm_description *lmm_of(void *h);
void release(void *h);

// Checks that the handle *h is a valid handle of kind want (null allowed when
// null_ok); sets the record otherwise.  variant tells the message which
// argument it was.
bool check_handle(void *h, kind want, bool null_ok, int variant, error_record &e);

// ---- Pieces ------------------------------------------------------------
// Parses formula text into m (g22ya).
void parse_formula(std::string_view text, formula_model &m, error_record &e);
// Label of a term of a formula ("A:B").
std::string term_label(const formula_model &m, const term &t);
// Options: set from "NAME = value", read by name.
void set_option(void *h, kind k, std::string_view optstr, error_record &e);
struct option_value {
  int64_t optype = 0;  // 1 integer, 2 real, 3 character
  int64_t i = 0;
  double r = 0.0;
  std::string c;
};
void get_option(void *h, kind k, std::string_view name, option_value &v, error_record &e);
// The lines that describe a handle under its title.
std::vector<std::string> describe(void *h, kind k);

// The coding matrix of a contrast for L levels: L rows, cols() columns,
// row-major; labels of its columns (appended to the variable name).
// Only the polynomial coding is stored (m[(level-1)*ncol + column-1]); the
// others are computed (value()), so a variable of many levels costs no
// L-by-L matrix.
struct coding {
  contrast c = first;
  int64_t levels = 0;
  int64_t ncol = 0;
  std::vector<double> m;
  std::vector<std::string> labels;
  double value(int64_t level, int64_t col) const;
  // The L values of coding column col (1-based) into out.
  void column(int64_t col, std::vector<double> &out) const;
};
// Most levels a polynomial coding is made for (beyond, its higher degrees
// carry no accuracy in double precision).
inline constexpr int64_t max_poly_levels = 1000;
// Number of coding columns of c for L levels.
inline int64_t coding_columns(contrast c, int64_t L) { return c == dummy ? L : L - 1; }
coding make_coding(contrast c, int64_t levels);

// Concatenation (written out: the compiler's warnings misfire on
// "text" + std::string).
inline std::string cat(std::initializer_list<std::string_view> parts) {
  std::string s;
  for (std::string_view p : parts) s.append(p);
  return s;
}
// Trims blanks on both sides.
std::string_view trim(std::string_view s);
// Case-insensitive equality of ASCII text.
bool same_text(std::string_view a, std::string_view b);

}  // namespace zem::g22
