// Wynn's epsilon algorithm on the sequence of partial sums of the adaptive
// engines.
//
// The table holds the lower diagonal of the epsilon scheme, newest element
// last; with n entries it holds eps^(0) of the newest sum and the even-order
// extrapolants of the older ones.  Appending a partial sum and running one
// step builds the new diagonal in place: for each of the (n-1)/2 rhombi
//
//            e0
//      e3    e1    new = e1 + 1 / (1/(e1-e3) + 1/(e2-e1) - 1/(e1-e0))
//            e2
//
// (e0, e1, e2 older to newer on one column, e3 the element two columns back).
// The estimate of each new element is |e2-e1| + |new-e2| + |e1-e0|, and the
// element with the smallest estimate is the step's result.  The error that is
// returned compares the result with the last three results, a safer measure
// than the local estimate.  Steps, as the engine's description numbers them:
//   1. nres += 1; abserr = oflow; with fewer than 3 entries only the result
//      bookkeeping (6, 7) is done.
//   2. the rhombus sweep, with three exits: convergence to machine accuracy
//      (result = e2, abserr = |e2-e1| + |e1-e0|, return after the floor);
//      two equal neighbours, or |ss e1| <= 1e-4 (the new element would be
//      numerically meaningless): the table is cut to 2i - 1 entries.
//   3. a table of 50 entries becomes 49 (its capacity);
//   4. the new diagonal is shifted down so that the table starts with an
//      element of the right parity;
//   5. a cut table keeps its last n entries;
//   6. abserr from the last three results (oflow until there are three);
//   7. abserr >= floor * |result|.
// The sum ss leaves out every term 1/delta whose |delta| exceeds sqrt(oflow)
// (P.overflow_guard): such a term is below 1/sqrt(oflow) anyway, and no
// reciprocal of a difference with the "infinite" sentinel is formed.

#include <algorithm>
#include <cmath>

#include "quad_engine.h"

namespace zem::quad {

void epsilon_extrapolate(epsilon_state &E, double &result, double &abserr, const policy &P) {
  // 1-based access keeps the index arithmetic of the rhombus rule readable.
  auto e = [&E](int64_t i) -> double & { return E.tab[i - 1]; };
  const double epmach = P.epmach;
  const double guard = std::sqrt(P.oflow);
  auto inv = [&](double d) { return (P.overflow_guard && std::fabs(d) > guard) ? 0.0 : 1.0 / d; };

  int64_t n = E.n;
  ++E.nres;
  abserr = P.oflow;
  result = e(n);
  if (n >= 3) {
    e(n + 2) = e(n);
    const int64_t newelm = (n - 1) / 2;
    e(n) = P.oflow;
    const int64_t num = n;
    int64_t k1 = n;
    for (int64_t i = 1; i <= newelm; ++i) {
      const int64_t k2 = k1 - 1, k3 = k1 - 2;
      double res = e(k1 + 2);
      const double e0 = e(k3), e1 = e(k2), e2 = res;
      const double e1abs = std::fabs(e1);
      const double delta2 = e2 - e1, err2 = std::fabs(delta2);
      const double tol2 = std::max(std::fabs(e2), e1abs) * epmach;
      const double delta3 = e1 - e0, err3 = std::fabs(delta3);
      const double tol3 = std::max(e1abs, std::fabs(e0)) * epmach;
      if (err2 <= tol2 && err3 <= tol3) {
        // e0, e1, e2 agree to machine accuracy.
        result = res;
        abserr = err2 + err3;
        abserr = std::max(abserr, P.eps_floor * std::fabs(result));
        E.n = n;
        return;
      }
      const double e3 = e(k1);
      e(k1) = e1;
      const double delta1 = e1 - e3, err1 = std::fabs(delta1);
      const double tol1 = std::max(e1abs, std::fabs(e3)) * epmach;
      if (err1 <= tol1 || err2 <= tol2 || err3 <= tol3) {
        n = i + i - 1;
        break;
      }
      const double ss = inv(delta1) + inv(delta2) - inv(delta3);
      const double epsinf = std::fabs(ss * e1);
      if (!(epsinf > 1e-4)) {
        n = i + i - 1;
        break;
      }
      res = e1 + 1.0 / ss;
      e(k1) = res;
      k1 -= 2;
      const double error = err2 + std::fabs(res - e2) + err3;
      if (error <= abserr) {
        abserr = error;
        result = res;
      }
    }
    // 3. Capacity.
    if (n == epsilon_state::limexp) n = 2 * (epsilon_state::limexp / 2) - 1;
    // 4. Shift the new diagonal down two places, every second element.
    int64_t ib = (num % 2 == 0) ? 2 : 1;
    for (int64_t i = 1; i <= newelm + 1; ++i) {
      e(ib) = e(ib + 2);
      ib += 2;
    }
    // 5. A cut table keeps its newest n entries.
    if (num != n) {
      int64_t indx = num - n + 1;
      for (int64_t i = 1; i <= n; ++i) e(i) = e(indx++);
    }
    // 6. Error from the last three results.
    if (E.nres < 4) {
      E.res3la[E.nres - 1] = result;
      abserr = P.oflow;
    } else {
      abserr = std::fabs(result - E.res3la[2]) + std::fabs(result - E.res3la[1]) +
               std::fabs(result - E.res3la[0]);
      E.res3la[0] = E.res3la[1];
      E.res3la[1] = E.res3la[2];
      E.res3la[2] = result;
    }
  }
  // 7. Floor.
  abserr = std::max(abserr, P.eps_floor * std::fabs(result));
  E.n = n;
}

}  // namespace zem::quad
