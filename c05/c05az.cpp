// c05az: a zero of a continuous function by reverse communication, with
// Brent's method (bisection, secant and inverse quadratic interpolation,
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
#include <algorithm>
#include <cmath>

#include "c05/c05az.h"

inline constexpr zem::message c05az_messages[] = {
    {1, 1001, NE_NOT_SIGN_CHANGE,
     {"On entry, f(x) and f(y) have the same sign with neither equalling 0.0:", "f(x) = %s and f(y) = %s."},
     {"On entry, f(x) and f(y) have the same sign with neither equalling 0.0:", "f(x) = %s and f(y) = %s"}},
    {2, 1002, NE_INT, {"On entry, ind = %s.", "Constraint: ind = -1, 1, 2, 3 or 4."}},
    {3, 1003, NE_REAL, {"On entry, tolx = %s.", "Constraint: tolx > 0.0."}},
    {3, 1004, NE_INT, {"On entry, ir = %s.", "Constraint: ir = 0, 1 or 2."}},
    {4, 1005, NE_PROBABLE_POLE,
     {"The final interval may contain a pole rather than a zero.",
      "Note that this error exit is not completely reliable: it may be taken",
      "in extreme cases when [x,y] contains a zero, or it may not be taken", "when [x,y] contains a pole.",
      "Both these cases occur most frequently when tolx is large."}},
    {5, 1006, NW_TOO_MUCH_ACC_REQUESTED,
     {"The tolerance tolx has been set too small for the problem",
      "being solved. However, the values x and y returned may well", "be good approximations to the zero.",
      "tolx = %s."},
     {"The tolerance tolx has been set too small for the problem",
      "being solved. However, the values x and y returned may well", "be good approximations to the zero.",
      "tolx = %s"}},
};
ZEM_REGISTER_MESSAGES(c05az)

namespace {

// Relative rounding unit: an interval narrower than this relative to b
// cannot be halved any further.
constexpr double eps_rel = 0x1p-53;

bool non_positive(double v) { return v <= 0.0; }

struct brent_state {
  double a, fa, b, fb, c, fc, d, e;
};

}  // namespace

ZEM_ENGINE_LAYERS(c05az, C05AZ_ARGS)

ZEM_INTERNAL void c05azfn_(engine_data *, double *x, double *y, const double *fx, const double *tolx,
                           const int64_t *ir, double *c, int64_t *ind, char *errbuf, int64_t *ifail) {
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
  auto done = [&] {  // f is exactly zero at x
    *y = *x;
    *ind = 0;
  };

  brent_state s{};
  switch (entry) {
    case 1:
      c[2] = *x;
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

  // One iteration of Brent's method.
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
  // 3. Tolerance: weights (relative, absolute) = (1,1) mixed, (0,1) absolute,
  //    (1,0) relative.
  const double wr = *ir == 1 ? 0.0 : 1.0;
  const double wa = *ir == 2 ? 0.0 : 1.0;
  const double tol = *tolx * std::max(wr * std::fabs(s.b), wa);
  const double m = (s.c - s.b) * 0.5;
  // 4. Converged: ask for f at b once more; the pole test uses that value.
  if (std::fabs(m) <= tol || s.fb == 0.0) {
    *x = s.b;
    *y = s.c;
    c[9] = 1.0;
    *ind = 4;
    return;
  }
  // 5. The bracket is down to the rounding unit of b.  A bracket that is no
  //    longer a number (an infinite end point met an infinite step) cannot
  //    be improved either; reporting it here keeps the iteration finite.
  if (std::fabs(m) <= std::fabs(s.b) * eps_rel || std::isnan(m)) {
    *x = s.b;
    *y = s.c;
    *ind = 0;
    return zem::fail(errbuf, ifail, 5, 1006, *tolx);
  }
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
  const double b_new =
      std::fabs(s.d) > tol || std::isnan(tol) ? s.b + s.d : s.c <= s.b ? s.b - tol : s.b + tol;
  // 8. Save the state for the next entry.
  c[1] = s.fb;
  c[2] = s.b;
  c[3] = b_new;
  c[4] = s.d;
  c[5] = s.e;
  c[6] = s.c;
  c[7] = s.fc;
  *x = b_new;
  *ind = 4;
}

ZEM_API void c05azf_(double *x, double *y, const double *fx, const double *tolx, const int64_t *ir, double c[],
                     int64_t *ind, int64_t *ifail) {
  zem::f_entry call("c05azf", c05az_messages);
  c05azft_(&call.en_data, x, y, fx, tolx, ir, c, ind, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05azc(double *x, double *y, double fx, double tolx, Zem_ErrorControl ir, double c[], int64_t *ind,
                    Zem_Fail *fail) {
  zem::c_entry call("c05azc", c05az_messages, fail);
  if (!ind) return call.bad_param("ind");
  auto bad = [&](const char *arg) {
    *ind = 0;
    call.bad_param(arg);
  };
  if (!x) return bad("x");
  if (!y) return bad("y");
  if (!c) return bad("c");
  const int64_t irc = ir == Zem_Mixed ? 0 : ir == Zem_Absolute ? 1 : ir == Zem_Relative ? 2 : -1;
  if (irc < 0) return bad("ir");
  c05azft_(&call.en_data, x, y, &fx, &tolx, &irc, c, ind, call.errbuf, &call.status);
  // A function value is wanted: return at once, nothing to report.
  if (*ind != 0) return;
  call.finish();
}
