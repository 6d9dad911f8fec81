// Patterson's nested quadrature (d01bd): the 21-, 43- and 87-point rules of
// one sequence on [a, b], each reusing every function value of the one
// before.
#pragma once

#include <cstdint>

#include "quad_kernel.h"
#include "quad_types.h"

namespace zem::quad {

struct patterson_outcome {
  double result = 0.0;
  double abserr = 0.0;
  int64_t neval = 0;  // 21, 43 or 87
  int64_t stage = 0;  // last stage completed: 1 (21 points), 2 (43), 3 (87)
  bool met = false;   // abserr <= max(epsabs, epsrel |result|)
  int64_t stop = 0;   // non-zero: the integrand asked to stop
};

// Stage s compares rule s with rule s-1 (Gauss 10 for the 21-point rule):
// abserr = |K_s - K_{s-1}| |h|, scaled by the spread resasc of f and floored
// by the rounding level as in the adaptive rules (quad_rule.h), resabs and
// resasc being those of the 21-point stage.  The sequence stops at the first
// stage that meets the tolerance.
patterson_outcome patterson_integrate(integrand_ref f, double a, double b, double epsabs, double epsrel,
                                      const rule_kernels &kern, const policy &P);

}  // namespace zem::quad
