// The body of a problem handle: the model as the definition and editing
// routines build it.  Private to the model routines (e04r*, e04s*, e04t*);
// everything else reaches the body through e04/handle.h.
//
// Indices are stored 1-based, as the caller gives them, so that messages and
// printing show the caller's numbers.  Every component that can be deleted
// (linear constraint rows, nonlinear constraints, cones, quadratic
// constraints, matrix blocks) keeps its place and its identifier when
// deleted: identifiers are positions and never move.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "e04/handle.h"

namespace zem::e04 {

inline constexpr double inf = std::numeric_limits<double>::infinity();
// Largest number of variables (and of rows of any component): 2^30, whose
// per-variable arrays alone take 24 GB.  Beyond it a request is reported as
// a memory failure at once, instead of committing (and touching) memory
// the machine does not have.
inline constexpr int64_t max_vars = int64_t{1} << 30;

enum objective_kind : int64_t {
  obj_none = 0,       // "not defined"
  obj_linear = 1,
  obj_quadratic = 2,  // explicit upper triangle (e04rf) or factor (e04rt)
  obj_nonlinear = 3,
  obj_nlls = 4,       // nonlinear least squares
};

enum var_type : int64_t { var_continuous = 0, var_integer = 1, var_binary = 2 };

// A sparse matrix in coordinate form (1-based).
struct coo {
  std::vector<int64_t> row, col;
  std::vector<double> val;
  size_t size() const { return row.size(); }
};

// A sparse vector: strictly increasing 1-based indices.
struct sparse_vec {
  std::vector<int64_t> idx;
  std::vector<double> val;
};

struct cone {
  int64_t type = 0;  // 1 quadratic, 2 rotated quadratic
  std::vector<int64_t> members;
  bool deleted = false;
};

struct quad_con {
  coo q;           // upper triangle of Q: 0.5 x'Qx
  sparse_vec r;
  double bl = -inf, bu = inf;
  bool deleted = false;
};

// A linear matrix inequality  sum_{i=1..n} x_i A_i - A_0 >= 0  (positive
// semidefinite), block diagonal with blocks blksize, optionally with the
// bilinear terms sum x_i x_j Q_ij.
struct matrix_block {
  int64_t dim = 0;
  int64_t nvar = 0;                 // matrices A_0 .. A_nvar
  std::vector<int64_t> blksize;
  std::vector<int64_t> nnz;         // per matrix
  coo a;                            // all matrices, in order
  bool has_q = false;
  std::vector<int64_t> qi, qj, nnzq;
  coo q;
  bool deleted = false;
};

// Scalars of the body: every field starts from body_template.
struct body_scalars {
  int64_t phase = phase_editable;
  int64_t status = 0;
  int64_t nvar = 0;
  int64_t objective = obj_none;
  bool factored = false;            // quadratic objective held as a factor
  bool bounds_defined = false;
  double obj_constant = 0.0;
  int64_t ncnln = 0;                // nonlinear constraints, 0: not defined
  bool nlc_defined = false;
  int64_t nres = 0;                 // least-squares residuals
  int64_t isparse = 0;
};
inline constexpr body_scalars body_template{};

struct problem {
  body_scalars s = body_template;

  // Variables.
  std::vector<double> bl, bu;
  std::vector<int64_t> vtype;

  // Objective.
  std::vector<double> c;            // linear part, dense, n
  coo h;                            // quadratic: upper triangle of H (0.5 x'Hx)
  coo f;                            // factored: F (mf by n), objective 0.5 ||F x||^2
  int64_t mf = 0;
  sparse_vec cs;                    // quadratic objective: sparse linear part
  std::vector<int64_t> idxfd;       // nonlinear objective: gradient sparsity
  coo rd;                           // least squares: first derivative sparsity (var, residual)

  // Linear constraints: rows 1..nlc; entries in coordinate form (row id, col).
  std::vector<double> lc_bl, lc_bu;
  std::vector<char> lc_deleted;
  coo lc;

  // Nonlinear constraints.
  std::vector<double> nl_bl, nl_bu;
  std::vector<char> nl_deleted;
  coo gd;                           // Jacobian sparsity (constraint, variable)
  std::vector<coo> hess;            // index idf + 1: -1 Lagrangian, 0 objective, i constraint i
  std::vector<char> hess_defined;

  std::vector<cone> cones;
  std::vector<quad_con> qcons;
  std::vector<matrix_block> blocks;
  bool nls_deleted = false;
  std::vector<char> var_deleted;    // variables deleted by e04tb
  std::vector<char> res_deleted;    // least-squares residuals deleted by e04tb

  // Options: the general set and the second reference (starts equal).
  option_set *opts = nullptr;
  option_set *opts_ref = nullptr;

  // Result store.
  struct named_reals {
    std::string name;
    std::vector<double> v;
  };
  struct named_ints {
    std::string name;
    std::vector<int64_t> v;
  };
  std::vector<named_reals> reals;
  std::vector<named_ints> ints;

  int64_t nlc() const { return static_cast<int64_t>(lc_bl.size()); }
};

// Appends k variables (free, continuous); the model's per-variable arrays
// grow with them.  Throws std::bad_alloc.
void append_vars(problem &p, int64_t k);

// Replaces the objective by the linear c'x (c dense, n values).  Throws
// std::bad_alloc.
void set_linear_objective(problem &p, const double *c);
// Drops the objective's data (before a new objective is stored).
void clear_objective(problem &p) noexcept;

// Linear constraint rows: id = 0 appends nrows rows, id > 0 replaces row id
// (nrows = 1).  Entries (irow within 1..nrows, icol, val), already checked.
// Throws std::bad_alloc, leaving the model as it was.
void add_linear_rows(problem &p, int64_t id, int64_t nrows, const double *bl, const double *bu, int64_t nnz,
                     const int64_t *irow, const int64_t *icol, const double *val);

// The kinds of component e04tb and e04td name.
enum class component { none, x, lc, qc, nlc, cn, mi, nls };
component component_of(const std::string &keyword) noexcept;
// The deleted flags of every item of a kind (a copy), and their update.
std::vector<char> deleted_flags(const problem &p, component c);
void set_deleted_flags(problem &p, component c, const std::vector<char> &flags);

// The option module's side of a handle (e04/handle_options.cpp): a default
// option set for a new body, and its release.  false: no memory.
bool attach_options(problem &p) noexcept;
void release_options(problem &p) noexcept;
// Prints the option set on unit (all options, or those not at their
// default), framed by "Begin of Options" and "End of Options"; sets *failed
// when a write fails.
void print_options(const problem &p, int64_t unit, bool all, bool *failed) noexcept;

// The caller's handle for a new body: a header filled from the template,
// linked to p.  Null on memory failure.
void *new_header(problem *p) noexcept;

}  // namespace zem::e04

// The NE_REF_MATCH row for an nvar that is not the handle's.
#define ZEM_E04_REF_MATCH_ROW(st, det)                                                      \
  {st, det, NE_REF_MATCH, {"On entry, nvar = %s,", "expected value = %s.",                   \
                           "Constraint: nvar must match the current number of variables",   \
                           "of the model in the handle."},                                   \
   {"On entry, nvar = %s,", "expected value = %s",                                           \
    "Constraint: nvar must match the current number of variables", "of the model in the handle."}}

// The start of every model-changing worker: validate the handle, then the
// phase.  Declares `p`, the problem body.
#define E04_OPEN_EDITABLE(handle)                                                  \
  zem::e04::problem *p = zem::e04::open_problem(handle, errbuf, ifail);            \
  if (!p || !zem::e04::check_editable(*p, errbuf, ifail)) return
