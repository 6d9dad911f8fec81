// The bridge between the handle solver e04st and the interior-point
// dependency.  Nothing of the dependency's C++ types leaves
// e04/ipopt_bridge.cpp: e04st sees only this header.
//
// e04st checks the handle, the model and the arguments, then calls solve()
// with the user's functions wrapped as `user_functions` (each call goes
// through e04st's callback chain).  solve() builds the problem the
// dependency sees from the model in the handle, maps the options, runs the
// solver, prints through the library's output units and stores the results
// in the handle.  It never throws.
#pragma once

#include <cstdint>

#include "e04/handle.h"
#include "frame/frame.h"

namespace zem::e04::nlp {

// Lengths of rinfo and stats (both interfaces).
inline constexpr int64_t info_len = 100;

// The user's functions.  Each returns the callback status (non-zero: the
// user asked to stop) and leaves the user's inform in *inform (> 0: x could
// not be evaluated).  has_* tell which ones the caller supplied.
struct user_functions {
  bool has_objfun = false, has_objgrd = false, has_confun = false, has_congrd = false, has_hess = false,
       has_monit = false;
  virtual int64_t objfun(const double *x, double *fx, int64_t *inform) = 0;
  virtual int64_t objgrd(const double *x, int64_t nnzfd, double *fdx, int64_t *inform) = 0;
  virtual int64_t confun(const double *x, int64_t ncnln, double *gx, int64_t *inform) = 0;
  virtual int64_t congrd(const double *x, int64_t nnzgd, double *gdx, int64_t *inform) = 0;
  virtual int64_t hess(const double *x, int64_t ncnln, int64_t idf, double sigma, const double *lambda, int64_t nnzh,
                       double *hx, int64_t *inform) = 0;
  virtual int64_t monit(const double *x, int64_t *inform, const double *rinfo, const double *stats) = 0;

 protected:
  ~user_functions() = default;
};

// What the model in the handle needs before a solve.
enum class model_check {
  ok,
  unsupported,      // cones, matrix inequalities, integer variables, least squares, no objective data
  needs_objective,  // nonlinear objective: objfun and objgrd must be given
  needs_constraints,// nonlinear constraints: confun and congrd must be given
  needs_hessian,    // "Hessian Mode = Exact" with nonlinear pieces but no hess or no structure
  too_large,        // beyond the dependency's 32-bit indices
};
model_check check_model(const problem &p, const user_functions &f) noexcept;

// Number of multipliers: nvar + linear rows + quadratic + nonlinear
// constraints (deleted ones keep their places).
int64_t multiplier_count(const problem &p) noexcept;

enum class outcome {
  success,
  acceptable,      // stopped at an acceptable point short of the tolerance
  small_step,      // the search direction became too small
  iteration_limit,
  time_limit,
  user_stop,
  infeasible,
  unbounded,
  numerical,
  invalid_number,  // a user function gave a value that is not finite where the solver could not step back
  derivative_errors,  // "Verify Derivatives" found wrong derivatives; no step was taken
  memory,
  internal,
};

struct result {
  outcome out = outcome::internal;
  int64_t stop_flag = 0;  // the callback status of a user stop
  int64_t wrong_derivatives = 0;  // entries the derivative check flagged
};

// Solves; x is the start on entry and the final point on exit (when the
// solver reached one), u (null when nnzu = 0) the multipliers, rinfo and
// stats info_len values each.
result solve(problem &p, engine_data en, user_functions &f, double *x, double *u, double *rinfo,
             double *stats) noexcept;

}  // namespace zem::e04::nlp
