// The core of c05az: a zero of a continuous function by reverse communication,
// with Brent's method (bisection, secant and inverse quadratic interpolation,
// always keeping a bracket).  The routine never calls f: it returns with
// ind != 0 and a point x, and the caller comes back with f(x) in fx.  The
// whole state between calls lives in the caller's array c (10 elements):
//
//   c[0] f(y), supplied on an initial entry with ind = -1
//   c[1] fa, the value at the previous iterate a
//   c[2] a (on the first entries, the initial x)
//   c[3] b, the current iterate
//   c[4] d, the last step           c[5] e, the step before the last
//   c[6] the contrapoint c          c[7] fc
//   c[8] the largest |f| at the two starting points (for the pole test)
//   c[9] 1 once the convergence test has passed and the final evaluation
//        of f at the converged point is pending, else 0
//
// Every sign test compares the two values by whether each is not greater
// than 0, so a NaN counts as non-positive.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "frame/errbuf.h"

// The core is inline so that a direct solver driving it in a loop (c05ay)
// keeps the state in registers; c05azfn_ is the same code behind the frame.
namespace zem::c05 {

// Relative rounding unit: an interval narrower than this relative to b
// cannot be halved any further.
inline constexpr double eps_rel = 0x1p-53;

// Half the largest double: a half-width beyond it overflowed.
inline constexpr double max_half_width = 0x1.fffffffffffffp+1022;

// A bound on the work of one solve.  The bracket starts finite (end points
// are checked) and at most as wide as the range of the doubles, 2^1025; the
// iteration ends once it is below the rounding unit of b or the tolerance,
// which bisection alone reaches within k = 1025 + 1074 + 1 = 2100 halvings.
// Brent's method needs at most (k + 1)^2 evaluations where bisection needs
// k (his proof: an interpolation step is accepted only while the steps keep
// halving every second iteration), so no solve can run past this count; the
// direct solvers stop there with the "no further improvement" warning.
inline constexpr int64_t max_iterations = 2101 * 2101;

inline bool non_positive(double v) { return v <= 0.0; }

// The bracket and the last steps: b the best point, c the contrapoint
// (b and c bracket the zero), a the previous iterate, d and e the last two
// steps.
struct brent_state {
  double a, fa, b, fb, c, fc, d, e;
};

enum class brent_next { evaluate, converged, too_small };

// One iteration of Brent's method from s, with f(b) just known in s.fb.
// On evaluate, b_new is the next point and s has moved on (a := b), with
// s.fb to be replaced by f(b_new); on converged, b and c are the final
// bracket; on too_small, the bracket is down to the rounding unit of b.
[[gnu::always_inline]] inline brent_next brent_iterate(brent_state &s, double tolx, int64_t ir, double &b_new) {
  // 1. Keep b and c on opposite sides of the zero.
  if (non_positive(s.fb) == non_positive(s.fc)) {
    s.c = s.a;
    s.fc = s.fa;
    s.d = s.e = s.b - s.a;
  }
  // 2. b is the best point so far.
  if (std::fabs(s.fc) < std::fabs(s.fb)) {
    s.a = s.b;
    s.b = s.c;
    s.c = s.a;
    s.fa = s.fb;
    s.fb = s.fc;
    s.fc = s.fa;
  }
  // 3. Tolerance: tolx * max(|b|, 1) mixed (ir = 0), tolx absolute (1),
  //    tolx * |b| relative (2).
  const double tol = ir == 1 ? tolx : ir == 2 ? tolx * std::fabs(s.b) : tolx * std::max(std::fabs(s.b), 1.0);
  // (On an interval as wide as the range of the doubles, c - b overflows;
  //  the halves are subtracted instead, which rounds the same way.)
  double m = (s.c - s.b) * 0.5;
  if (__builtin_expect(std::fabs(m) > max_half_width, 0)) m = s.c * 0.5 - s.b * 0.5;
  // 4. Converged (the caller asks for f at b once more, for the pole test).
  if (std::fabs(m) <= tol || s.fb == 0.0) return brent_next::converged;
  // 5. The bracket is down to the rounding unit of b.  A bracket that is no
  //    longer a number (an infinite end point met an infinite step) cannot
  //    be improved either; reporting it here keeps the iteration finite.
  if (std::fabs(m) <= std::fabs(s.b) * eps_rel || std::isnan(m)) return brent_next::too_small;
  // 6. Step: bisection unless an interpolation is safe.
  const double d_old = s.d, e_old = s.e;
  s.d = s.e = m;
  if (std::fabs(e_old) >= tol && std::fabs(s.fb) < std::fabs(s.fa)) {
    const double sr = s.fb / s.fa;
    double p, q;
    if (s.a == s.c) {  // secant through the two distinct points
      p = 2.0 * m * sr;
      q = 1.0 - sr;
    } else {  // inverse quadratic interpolation
      q = s.fa / s.fc;
      const double r = s.fb / s.fc;
      p = sr * (2.0 * m * q * (q - r) - (s.b - s.a) * (r - 1.0));
      q = (q - 1.0) * (r - 1.0) * (sr - 1.0);
    }
    if (p > 0.0) q = -q;
    p = std::fabs(p);
    if (2.0 * p < 3.0 * m * q - std::fabs(tol * q) && p < std::fabs(0.5 * e_old * q)) {
      s.e = d_old;
      s.d = p / q;
    }
  }
  // 7. New point, at least tol away from b.  A NaN tolerance (it passes the
  //    check on purpose) gives no minimum step: the step is taken as it is,
  //    and the iteration ends through the test of step 5.
  b_new = std::fabs(s.d) > tol || std::isnan(tol) ? s.b + s.d : s.c <= s.b ? s.b - tol : s.b + tol;
  // 8. The current point becomes the previous one.
  s.a = s.b;
  s.fa = s.fb;
  s.b = b_new;
  return brent_next::evaluate;
}

// Whether x, y and c are what the request `ind` left: the point to evaluate
// is the one stored, and the stored function values are ones a caller
// supplied (never 0: an exact zero ends the solve).  A state that no proper
// sequence of calls leaves (a first entry with ind = 2, 3 or 4, an array
// cleared or overwritten mid-solve, x changed) fails this test, so that it
// is reported instead of being taken for a bracket.
inline bool state_is_consistent(double x, double y, const double *c, int64_t ind) {
  if (!std::isfinite(x) || !std::isfinite(y)) return false;
  const auto same = [](double u, double v) { return u == v || (std::isnan(u) && std::isnan(v)); };
  switch (ind) {
    case 2:  // x and y as stored by the initial entry
      return x == c[2] && y == c[3] && x != y;
    case 3:  // x and y swapped, f(x0) stored
      return x == c[3] && y == c[2] && c[9] == 0.0 && c[1] != 0.0 && same(c[8], std::fabs(c[1]));
    default:  // 4: an iterate, or the converged point
      if (c[8] == 0.0 || !(c[9] == 0.0 || c[9] == 1.0)) return false;
      if (c[9] == 1.0) return x == c[3] && y == c[6];
      return x == c[3] && c[1] != 0.0 && c[7] != 0.0 && std::isfinite(c[2]) && std::isfinite(c[6]);
  }
}

// The reverse-communication entry: checks, the state machine of ind, and
// one iteration with the state kept in c.
[[gnu::always_inline]] inline void c05az_core(double *x, double *y, const double *fx, const double *tolx, const int64_t *ir, double *c,
                       int64_t *ind, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  const int64_t entry = *ind;
  if (entry != -1 && entry != 1 && entry != 2 && entry != 3 && entry != 4) {
    *ind = 0;
    return zem::fail(errbuf, ifail, 2, 1002, entry);
  }
  if (*tolx <= 0.0) {  // a NaN passes
    *ind = 0;
    return zem::fail(errbuf, ifail, 3, 1003, *tolx);
  }
  if (static_cast<uint64_t>(*ir) > 2) {
    *ind = 0;
    return zem::fail(errbuf, ifail, 3, 1004, *ir);
  }
  // The entries that start a solve need two distinct finite end points (an
  // infinite one would be handed back as a point to evaluate); a re-entry
  // must find the
  // state its request left (state_is_consistent).
  if (entry == 1 || entry == -1) {
    if (!std::isfinite(*x) || !std::isfinite(*y) || *x == *y) {
      *ind = 0;
      return zem::fail(errbuf, ifail, 3, 1007, *x, *y);
    }
  } else if (!state_is_consistent(*x, *y, c, entry)) {
    *ind = 0;
    return zem::fail(errbuf, ifail, 2, 1008, entry);
  }
  auto done = [&] {  // f is exactly zero at x
    *y = *x;
    *ind = 0;
  };

  brent_state s{};
  switch (entry) {
    case 1:
      c[2] = *x;
      c[3] = *y;  // (becomes b at the next entry; kept for its check)
      *ind = 2;
      return;
    case -1:
    case 2: {
      if (entry == -1) c[2] = *x;
      if (*fx == 0.0) return done();
      c[1] = *fx;
      c[8] = std::fabs(*fx);
      c[9] = 0.0;
      std::swap(*x, *y);
      c[3] = *x;
      if (entry == 2) {
        *ind = 3;
        return;
      }
      // ind = -1: f(y) is already known; no exact-zero test of it, so a zero
      // f(y) goes straight to the sign test.
      s.fb = c[0];
      break;
    }
    case 3:
      if (*fx == 0.0) return done();
      s.fb = *fx;
      break;
    case 4: {
      if (*fx == 0.0) return done();
      if (c[9] != 0.0) {
        // The pole check: at a zero |f| is small, at a pole it has grown
        // beyond the values at the starting points.
        *ind = 0;
        if (std::fabs(*fx) <= c[8]) return;
        return zem::fail(errbuf, ifail, 4, 1005);
      }
      s = {c[2], c[1], c[3], *fx, c[6], c[7], c[4], c[5]};
      break;
    }
  }

  if (entry != 4) {
    // Second starting value known: check the bracket and set up.
    if (non_positive(s.fb) == non_positive(c[1])) {
      std::swap(*x, *y);  // the caller's x and y, in the caller's order
      *ind = 0;
      return zem::fail(errbuf, ifail, 1, 1001, c[1], s.fb);
    }
    c[8] = std::max(c[8], std::fabs(s.fb));
    s.a = c[2];
    s.fa = c[1];
    s.b = c[3];
    s.c = s.a;
    s.fc = s.fa;
    s.d = s.e = s.b - s.a;
  }

  double b_new = 0.0;
  switch (brent_iterate(s, *tolx, *ir, b_new)) {
    case brent_next::converged:
      *x = s.b;
      *y = s.c;
      c[3] = s.b;  // the final bracket, for the consistency check of the
      c[6] = s.c;  // pending evaluation
      c[9] = 1.0;
      *ind = 4;
      return;
    case brent_next::too_small:
      *x = s.b;
      *y = s.c;
      *ind = 0;
      return zem::fail(errbuf, ifail, 5, 1006, *tolx);
    case brent_next::evaluate:
      break;
  }
  // Save the state for the next entry.
  c[1] = s.fa;
  c[2] = s.a;
  c[3] = s.b;
  c[4] = s.d;
  c[5] = s.e;
  c[6] = s.c;
  c[7] = s.fc;
  *x = b_new;
  *ind = 4;
}

}  // namespace zem::c05
