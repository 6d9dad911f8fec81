// c05ax: reverse-communication zero of f near a point, by continuation.
//
// The caller starts with ind = 1 (nothing known) or ind = -1 (fx = f(x)) and
// then, each time the routine returns with ind = 2, 3 or 4, evaluates f at x
// and re-enters with the value in fx and ind unchanged:
//   ind = 2  f at the initial point,
//   ind = 3  f at a point of the initial derivative estimate (x +- scal),
//   ind = 4  f at a point of the continuation or of the final solve.
// ind = 0 on return ends the solve: success with x the zero, or a failure
// described by the status and the message record.  tol and ir control the
// final accuracy as in the Brent core c05az: the zero is bracketed to within
// tol * max(wr |x|, wa), (wr, wa) = (1, 1), (0, 1), (1, 0) for ir = 0, 1, 2.
// scal is the increment of the initial derivative estimate.  The method is
// described in docs/c05-continuation.md.
#pragma once

#include <cstdint>

#include "c05/c05az.h"
#include "frame/frame.h"

namespace zem::c05ax {

// Length of the state array c.
inline constexpr int64_t state_len = 36;

// Request codes returned in ind.
inline constexpr int64_t want_start_value = 2;
inline constexpr int64_t want_derivative_value = 3;
inline constexpr int64_t want_path_value = 4;

// Continuation steps (trials, accepted or not) allowed on one branch.
inline constexpr int64_t max_branch_steps = 1000;
// Evaluations allowed in the final bracketed solve (the Brent core needs far
// fewer; the limit only guards against a state damaged between calls).
inline constexpr int64_t max_final_steps = 2000;
// A branch along which |f| grows beyond this multiple of |f(x0)| is taken to
// lead away from every zero.
inline constexpr double theta_max = 1e15;
// A branch is abandoned after this many accepted steps in a row along which
// theta rises (the step bound doubling at each, they span a range of about
// 2^60 times the first) ...
inline constexpr int64_t max_ascent_steps = 60;
// ... or after this many accepted steps in a row at which the Newton
// distance to theta = 0 does not shrink below slow_ratio times the one
// before: theta then decays towards an asymptote rather than reaching zero
// (near a zero of multiplicity m the distance shrinks by (m-1)/m per Newton
// step, which passes for m < 20).
inline constexpr int64_t max_slow_steps = 20;
inline constexpr double slow_ratio = 0.95;

// Positions in the state array (0-based).
enum slot : int {
  request = 0,     // outstanding request (2, 3 or 4), 0 when none
  phase = 1,       // see c05ax.cpp
  start = 2,       // x0
  f_start = 3,     // f0 = f(x0)
  scale = 4,       // scal
  slope0 = 5,      // derivative estimate at x0
  branch = 6,      // 0: first branch (theta decreasing at x0), 1: the other
  dir = 7,         // direction of travel in x on this branch, +1 or -1
  xi = 8,          // current point of the path
  fi = 9,          // f(xi)
  slope = 10,      // secant slope of f at xi
  radius = 11,     // step bound
  trial = 12,      // point whose value is requested
  theta_pred = 13, // theta predicted at the trial point
  step_len = 14,   // length of the trial step
  nsteps = 15,     // trials on this branch
  naccepted = 16,  // accepted steps, both branches
  best = 17,       // point with the smallest |f| seen
  f_best = 18,     // f(best)
  radius0 = 19,    // first step bound, |f0 / f'(x0)|
  other_end = 20,  // second end of the final bracket (the core's y)
  nfinal = 21,     // evaluations in the final solve
  prev_newton = 22,  // Newton distance |theta/theta'| at xi, 0 where theta rises
  slow_steps = 23,   // accepted steps in a row whose Newton distance hardly shrank
  ascent_steps = 24, // accepted steps in a row with theta rising
  fold_radius = 25,  // step bound when theta first rose against a predicted fall, else 0
  core = 26,       // 10 elements: state of the Brent core
};

}  // namespace zem::c05ax

// Engine arguments, in Fortran order.  Worker statuses: 1 bad tol, ir or
// scal (details 1003-1005); 2 bad ind (1001 initial entry, 1002
// intermediate entry); 3 no significant derivative (1006); 4 no step away
// from x0 (1007); 5 the continuation cannot reach theta = 0 (1008) or the
// state was changed by the caller (1011); 6 the final problem cannot be
// solved (1009 pole or jump, 1010 accuracy).
#define C05AX_ARGS(V, A, U)                                                                               \
  V(double *, x) V(const double *, fx) V(const double *, tol) V(const int64_t *, ir)                     \
  V(const double *, scal) A(double *, c) V(int64_t *, ind) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void c05axfn_(ZEM_PARAMS(C05AX_ARGS));
