// The optimization handle: what every routine of the modelling suite (the
// model builders, the option entries, the solvers) shares.
//
// To the caller a handle is one untyped pointer.  It points to a header of
// nine 64-bit words:
//
//     word 0      the marker 65535
//     words 1..4  'Z' 'O' 'M' 'S', one character code per word (the tag)
//     words 5..7  0 0 0 for a problem handle; 'S' 'H' 'L' for a shell
//     word 8      address of the body (null when the body is missing)
//
// A problem handle's body is a `problem` (e04/model.h); a shell's body is
// two words, a kind code and the address of the object it wraps.  The
// header is filled from a constant template and its words are zeroed before
// its storage is released, so a stale copy of the pointer no longer carries
// the tag.
//
// This header is the suite's stable internal interface.  The body's layout
// is private to e04/model.h; other parts reach it only through the
// functions below.
//
// Every entry (except e04ra and e04sa, which make a handle) starts with
//
//     zem::e04::problem *p = zem::e04::open_problem(handle, errbuf, ifail);
//     if (!p) return;
//     if (!zem::e04::check_editable(*p, errbuf, ifail)) return;   // if it edits
//
// and its message table begins with ZEM_E04_HANDLE_ROWS (status 1, details
// 1001..1004) and, if it edits, ZEM_E04_PHASE_ROWS (status 2, details
// 1005..1006).  A routine's own rows use details from 1011 upward.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "frame/frame.h"

namespace zem::e04 {

// ---- Header layout ----------------------------------------------------
inline constexpr int header_words = 9;
inline constexpr int64_t handle_marker = 65535;
inline constexpr int word_marker = 0, word_tag = 1, word_variant = 5, word_body = 8;

// The template of a problem handle's header (word 8 is filled in later).
inline constexpr int64_t header_template[header_words] = {handle_marker, 'Z', 'O', 'M', 'S', 0, 0, 0, 0};
// The variant words of a shell handle.
inline constexpr int64_t shell_variant[3] = {'S', 'H', 'L'};

// A shell's body: a kind code and the object it wraps.
struct shell_body {
  int64_t kind;
  void *inner;
};
// Kind code of an ordinary problem handle.
inline constexpr int64_t kind_problem = 0;

// ---- Validation ---------------------------------------------------------
enum class handle_state : int {
  ok = 0,
  null = 1,       // the caller's pointer is null: never created, or destroyed
  foreign = 2,    // no marker or no tag: not ours, or overwritten
  no_body = 3,    // tag present but no body
};

// Checks a handle without reporting.  On ok, *kind and *inner are set: kind
// 0 with the problem body for a problem handle, the shell's kind code and
// wrapped address for a shell.  Never reads beyond the nine header words
// and, for a shell, the two words of its body.
handle_state validate(void *handle, int64_t *kind, void **inner) noexcept;

struct problem;  // the body of a problem handle (e04/model.h)

// Validates and reports (details 1001..1004 of ZEM_E04_HANDLE_ROWS):
// returns the problem body, or null with the failure in errbuf/ifail.  A
// shell handle is refused here: the model routines need kind 0.
problem *open_problem(void *handle, char *errbuf, int64_t *ifail) noexcept;

// ---- Phase ----------------------------------------------------------------
// The phase word of the body: 0 while the model and options may change, 1
// while a solver runs on the handle.
inline constexpr int64_t phase_editable = 0, phase_solving = 1;

int64_t phase(const problem &p) noexcept;
// A solver calls enter_solving on entry (false: another solve is running,
// report it with detail 1006) and leave_solving when it returns, on every
// path.  solving_scope does both.
bool enter_solving(problem &p) noexcept;
void leave_solving(problem &p) noexcept;

class solving_scope {
 public:
  explicit solving_scope(problem &p) noexcept : p_(p), ok_(enter_solving(p)) {}
  ~solving_scope() {
    if (ok_) leave_solving(p_);
  }
  solving_scope(const solving_scope &) = delete;
  solving_scope &operator=(const solving_scope &) = delete;
  bool entered() const { return ok_; }

 private:
  problem &p_;
  bool ok_;
};

// For every call that changes the model: false, with NE_PHASE "The problem
// cannot be modified right now, the solver is running." (status 2, detail
// 1005) in errbuf/ifail, while a solver runs.
bool check_editable(const problem &p, char *errbuf, int64_t *ifail) noexcept;
// For a solver: false, with NE_PHASE "The problem is already being solved."
// (status 2, detail 1006), if the handle is being solved.
bool check_not_solving(const problem &p, char *errbuf, int64_t *ifail) noexcept;

// ---- Options ----------------------------------------------------------------
struct option_set;  // e04/options.h
// The handle's general option set (filled with the defaults at creation)
// and the second reference, which starts equal to it.
option_set *options(problem &p) noexcept;
const option_set *options(const problem &p) noexcept;
option_set *options_ref(problem &p) noexcept;

// The value of "Infinite Bound Size" of the handle's options.
double infinite_bound_size(const problem &p) noexcept;

// ---- Result store -----------------------------------------------------------
// Named arrays kept in the handle for the solvers (results, warm starts):
// "PRIMAL", "DUAL", "SLACK", "WARM START BASIS", "COVARIANCE MATRIX", ...
// Names are compared exactly; storing replaces an array of the same name.
// store_* return false only when memory could not be obtained (status -999).
bool store_reals(problem &p, std::string_view name, std::span<const double> values) noexcept;
bool store_ints(problem &p, std::string_view name, std::span<const int64_t> values) noexcept;
// The stored array, or an empty span with found = false.
std::span<const double> stored_reals(const problem &p, std::string_view name, bool *found = nullptr) noexcept;
std::span<const int64_t> stored_ints(const problem &p, std::string_view name, bool *found = nullptr) noexcept;
// Drops every stored array (the model changed: old results no longer apply).
void clear_store(problem &p) noexcept;

// Number of variables of the model.
int64_t num_vars(const problem &p) noexcept;

// ---- Test support -------------------------------------------------------------
// A shell handle of the given kind around inner (null on memory failure),
// released by e04rz like any handle (inner is not released).
void *make_shell(int64_t kind, void *inner) noexcept;

}  // namespace zem::e04

// The rows every handle routine's table starts with.
#define ZEM_E04_HANDLE_ROWS                                                                   \
  {1, 1001, NE_HANDLE, {"handle has not been initialized."}},                                 \
  {1, 1002, NE_HANDLE, {"handle does not belong to the ZEM optimization modelling suite,",    \
                        "has not been initialized properly or is corrupted."}},               \
  {1, 1003, NE_HANDLE, {"handle has not been initialized properly or is corrupted."}},        \
  {1, 1004, NE_HANDLE, {"handle holds no optimization problem: a problem handle is required."}}
#define ZEM_E04_PHASE_ROWS                                                                    \
  {2, 1005, NE_PHASE, {"The problem cannot be modified right now, the solver is running."}},  \
  {2, 1006, NE_PHASE, {"The problem is already being solved."}}
