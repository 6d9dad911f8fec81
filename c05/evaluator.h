// One evaluation of the user's function, as the direct solvers of the c05a
// family see it.  The worker wraps the callback chain of the call frame in
// an evaluator, so that the algorithm pieces read as mathematics and can be
// driven by a plain function in the engine's own tests.
#pragma once

#include <cstdint>

namespace zem::c05 {

struct evaluator {
  // Stores f(x) in *fx; returns the callback status (non-zero: the user has
  // asked the engine to stop).
  int64_t (*call)(void *context, double x, double *fx);
  void *context;

  int64_t operator()(double x, double *fx) const { return call(context, x, fx); }
};

}  // namespace zem::c05
