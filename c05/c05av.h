// c05av: reverse-communication search for an interval on which f changes
// sign, starting from a point x with a step h, inside [boundl, boundu].
//
// The caller starts a search with ind = 1 (nothing known) or ind = -1 (fx
// holds f(x)); the routine returns with ind = 2 (evaluate f at the start
// point x) or ind = 3 (evaluate f at the search point x), and the caller
// re-enters with the value in fx and ind unchanged.  The search ends with
// ind = 0:
//   * success, sign change: x and y are neighbouring search points with f of
//     opposite signs, fx = f(x) as supplied, and c[0] = f(y), so that the
//     pair can be handed to the Brent core c05az with ind = -1 at once;
//   * success, exact zero: f(x) = 0 and y = x;
//   * failure: the status and the message record say why.
// All state lives in the caller's array c of length state_len; the
// caller must not change it, nor boundl and boundu, during a search.
#pragma once

#include <cstdint>

#include "frame/frame.h"

namespace zem::c05av {

// Length of the state array c.
inline constexpr int64_t state_len = 12;

// Largest number of search points on one side of the start point in one
// sweep: a sweep with step h covers at most side_steps * |h| on each side.
inline constexpr int64_t side_steps = 100;

// Number of sweeps: the first with h, then refinements h * (-0.1)^k,
// k = 1, 2, 3.
inline constexpr int64_t last_refinement = 3;

// Request codes returned in ind.
inline constexpr int64_t want_start_value = 2;
inline constexpr int64_t want_search_value = 3;

// Positions in the state array (0-based).  Integer quantities are stored as
// doubles holding exact small integers.
enum slot : int {
  f_prev = 0,    // f at the previous search point; on final exit f(y)
  start = 1,     // start point x0
  f_start = 2,   // f(x0)
  step0 = 3,     // initial step h0 (signed, as given)
  refine = 4,    // refinement counter k, 0..3
  side = 5,      // 0: walking in the direction of h0 (-0.1)^k, 1: the other way
  nsteps = 6,    // search points taken on the current side
  prev = 7,      // previous search point
  current = 8,   // point whose value is requested
  lower = 9,     // boundl
  upper = 10,    // boundu
  request = 11,  // outstanding request code (2 or 3), 0 when none
};

}  // namespace zem::c05av

// Engine arguments, in Fortran order.  Worker statuses: 1 bad initial
// arguments (details 1002-1005), 2 bad ind (1001), 3 no interval found
// (1006) or state changed by the caller (1007).
#define C05AV_ARGS(V, A, U)                                                                               \
  V(double *, x) V(const double *, fx) V(const double *, h) V(const double *, boundl)                   \
  V(const double *, boundu) V(double *, y) A(double *, c) V(int64_t *, ind) V(char *, errbuf)           \
  V(int64_t *, ifail)

ZEM_INTERNAL void c05avfn_(ZEM_PARAMS(C05AV_ARGS));
