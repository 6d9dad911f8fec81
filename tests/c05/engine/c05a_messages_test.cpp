// Every failure of c05au, c05av, c05aw and c05ax, triggered through the C
// entry, with its code, error number and exact message text.
#include <gtest/gtest.h>

#include <zem.h>

#include <cmath>
#include <functional>
#include <ostream>
#include <limits>
#include <string>

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

double plain(double x, Zem_Comm *) { return x * x * x - 2.0; }
double no_zero(double x, Zem_Comm *) { return x * x + 1.0; }
double pole(double x, Zem_Comm *) { return 1.0 / (x - 0.5); }
double flat(double, Zem_Comm *) { return 1.0; }
// No double makes x^2 - 2 vanish, so a solve to 1e-30 cannot end on an exact zero.
double root2(double x, Zem_Comm *) { return x * x - 2.0; }

Zem_Fail near(double x, double h, double eps, Zem_C05AU_Fun f, double lo, double hi) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  Zem_Comm comm = {0, nullptr, nullptr, nullptr};
  c05auc(&x, h, eps, 0.0, f, lo, hi, &comm, &fail);
  return fail;
}

Zem_Fail cont(double x, double eps, Zem_C05AW_Fun f, int64_t nfmax) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  Zem_Comm comm = {0, nullptr, nullptr, nullptr};
  c05awc(&x, eps, 0.0, f, nfmax, &comm, &fail);
  return fail;
}

// A whole reverse-communication search with c05avc; `change` may alter the
// state or ind after the given number of returns.
Zem_Fail search(double x, double h, double lo, double hi, double (*f)(double, Zem_Comm *), int64_t ind0 = 1,
                int change_after = -1, std::function<void(double *, int64_t *)> change = nullptr) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double y = 0.0, fx = 0.0, c[12] = {};
  int64_t ind = ind0;
  for (int k = 0;; ++k) {
    if (k == change_after) change(c, &ind);
    c05avc(&x, fx, h, lo, hi, &y, c, &ind, &fail);
    if (ind == 0) break;
    fx = f(x, nullptr);
  }
  return fail;
}

Zem_Fail rcont(double x, double tol, Zem_ErrorControl ir, double scal, double (*f)(double, Zem_Comm *),
               int64_t ind0 = 1, int change_after = -1, std::function<void(double *, int64_t *)> change = nullptr) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double fx = 0.0, c[36] = {};
  int64_t ind = ind0;
  for (int k = 0;; ++k) {
    if (k == change_after) change(c, &ind);
    c05axc(&x, fx, tol, ir, scal, c, &ind, &fail);
    if (ind == 0) break;
    fx = f(x, nullptr);
  }
  return fail;
}

double only_here(double x, Zem_Comm *) { return (x == 1.0 || x == 1.0 + 1e-8 || x == 1.0 - 1e-8) ? x : nan; }

struct row {
  const char *what;
  std::function<Zem_Fail()> run;
  int code;
  int64_t errnum;
  const char *message;
};
// Test names print the case by its description (not the bytes of the struct).
std::ostream &operator<<(std::ostream &os, const row &t) { return os << t.what; }

class C05aMessages : public ::testing::TestWithParam<row> {};

TEST_P(C05aMessages, ExactText) {
  const row &r = GetParam();
  const Zem_Fail f = r.run();
  EXPECT_EQ(f.code, r.code) << r.what;
  EXPECT_EQ(f.errnum, r.errnum) << r.what;
  EXPECT_STREQ(f.message, r.message) << r.what;
}

INSTANTIATE_TEST_SUITE_P(
    C05au, C05aMessages,
    ::testing::Values(
        row{"eps", [] { return near(1.0, 0.1, 0.0, plain, 0.0, 2.0); }, NE_REAL, 1,
            "NE_REAL:\n  On entry, eps = 0.0.\n  Constraint: eps > 0.0."},
        row{"bounds", [] { return near(1.0, 0.1, 1e-8, plain, 2.0, 2.0); }, NE_REAL_2, 1,
            "NE_REAL_2:\n  On entry, boundl = 2.0,\n  boundu = 2.0.\n  Constraint: boundl < boundu."},
        row{"x outside", [] { return near(3.0, 0.1, 1e-8, plain, 0.0, 2.0); }, NE_3_REAL_ARG_CONS, 1,
            "NE_3_REAL_ARG_CONS:\n  On entry, x = 3.0,\n  boundl = 0.0 and boundu = 2.0.\n"
            "  Constraint: boundl <= x <= boundu."},
        row{"x+-h outside", [] { return near(1.0, 5.0, 1e-8, plain, 0.0, 2.0); }, NE_4_REAL_ARG_CONS, 1,
            "NE_4_REAL_ARG_CONS:\n  On entry, x = 1.0 and h = 5.0,\n  boundl = 0.0 and boundu = 2.0.\n"
            "  Constraint: either x+h or x-h must lie inside the closed interval\n  [boundl,boundu]."},
        row{"x+h = x", [] { return near(1.0, 1e-17, 1e-8, plain, 0.0, 2.0); }, NE_REAL_2, 1,
            "NE_REAL_2:\n  On entry, x = 1.0 and h = 1e-17.\n  Constraint: x+h != x (to machine accuracy)."},
        row{"eps too small", [] { return near(1.0, 0.1, 1e-30, root2, 0.0, 2.0); }, NE_TOO_SMALL, 2,
            "NE_TOO_SMALL:\n  No further improvement in the solution is possible.\n  eps is too small: eps = 1e-30.\n"
            "  The final value of x returned is an accurate approximation to the zero."},
        row{"pole", [] { return near(0.35, 0.1, 1e-10, pole, 0.0, 1.0); }, NE_PROBABLE_POLE, 3,
            "NE_PROBABLE_POLE:\n  The function values in the interval [a,b] might contain\n"
            "  a pole rather than a zero. Reducing eps may help in distinguishing between\n  a pole and a zero."},
        row{"no interval", [] { return near(0.0, 0.5, 1e-8, no_zero, -1.0, 1.0); }, NE_NO_BRACKET, 4,
            "NE_NO_BRACKET:\n  An interval containing the zero could not be found.\n"
            "  Increasing h and calling c05auc again will increase the range searched for\n"
            "  the zero. Decreasing h and calling c05auc again will refine the mesh used\n"
            "  in the search for the zero."}));

INSTANTIATE_TEST_SUITE_P(
    C05av, C05aMessages,
    ::testing::Values(
        row{"ind", [] { return search(0.0, 0.1, -1.0, 1.0, plain, 7); }, NE_INT, 2,
            "NE_INT:\n  On entry, ind = 7.\n  Constraint: ind = -1, 1, 2 or 3."},
        row{"bounds", [] { return search(0.0, 0.1, 1.0, -1.0, plain); }, NE_REAL_2, 1,
            "NE_REAL_2:\n  On entry, boundl = 1.0,\n  boundu = -1.0.\n  Constraint: boundl < boundu."},
        row{"x outside", [] { return search(nan, 0.1, -1.0, 1.0, plain); }, NE_3_REAL_ARG_CONS, 1,
            "NE_3_REAL_ARG_CONS:\n  On entry, x = nan,\n  boundl = -1.0 and boundu = 1.0.\n"
            "  Constraint: boundl <= x <= boundu."},
        row{"x+-h outside", [] { return search(0.0, 3.0, -1.0, 1.0, plain); }, NE_4_REAL_ARG_CONS, 1,
            "NE_4_REAL_ARG_CONS:\n  On entry, x = 0.0 and h = 3.0,\n  boundl = -1.0 and boundu = 1.0.\n"
            "  Constraint: either x+h or x-h must lie inside the closed interval\n  [boundl,boundu]."},
        row{"h too small", [] { return search(0.5, 0.0, -1.0, 1.0, plain); }, NE_REAL_2, 1,
            "NE_REAL_2:\n  On entry, x = 0.5 and h = 0.0.\n"
            "  Constraint: h must be sufficiently large that x+h != x on the computer."},
        row{"not found", [] { return search(0.0, 0.5, -1.0, 1.0, no_zero); }, NE_NO_BRACKET, 3,
            "NE_NO_BRACKET:\n  An interval containing the zero could not be found.\n"
            "  Try restarting with modified x and h."},
        row{"state changed",
            [] { return search(0.0, 0.1, -1.0, 1.0, no_zero, 1, 2, [](double *c, int64_t *) { c[4] = 9; }); },
            NE_NO_BRACKET, 3,
            "NE_NO_BRACKET:\n  An interval containing the zero could not be found.\n"
            "  The state array c was changed between calls; restart the search."}));

INSTANTIATE_TEST_SUITE_P(
    C05aw, C05aMessages,
    ::testing::Values(
        row{"eps", [] { return cont(1.0, nan, plain, 10); }, NE_REAL, 1,
            "NE_REAL:\n  On entry, eps = nan.\n  Constraint: eps > 0.0."},
        row{"nfmax", [] { return cont(1.0, 1e-8, plain, 0); }, NE_INT, 1,
            "NE_INT:\n  On entry, nfmax = 0.\n  Constraint: nfmax > 0."},
        row{"scale", [] { return cont(1.0, 1e-8, flat, 100); }, NE_BAD_INTERNAL_SCALE, 2,
            "NE_BAD_INTERNAL_SCALE:\n  Internal scale factor invalid for this problem.\n"
            "  Consider using c05axc instead and setting scal."},
        row{"nfmax calls", [] { return cont(1.0, 1e-8, no_zero, 20); }, NE_TOO_MANY_CALLS, 3,
            "NE_TOO_MANY_CALLS:\n  More than nfmax calls have been made to f.\n"
            "  Either f has no zero near x or too much accuracy has been requested.\n"
            "  Check the coding of f or increase eps."}));

INSTANTIATE_TEST_SUITE_P(
    C05ax, C05aMessages,
    ::testing::Values(
        row{"ind initial", [] { return rcont(1.0, 1e-8, Zem_Mixed, 1e-8, plain, 0); }, NE_INT, 2,
            "NE_INT:\n  On initial entry, ind = 0.\n  Constraint: ind = -1 or 1."},
        row{"ind intermediate",
            [] { return rcont(1.0, 1e-8, Zem_Mixed, 1e-8, plain, 1, 1, [](double *, int64_t *ind) { *ind = 8; }); },
            NE_INT, 2, "NE_INT:\n  On intermediate entry, ind = 8.\n  Constraint: ind = 2, 3 or 4."},
        row{"tol", [] { return rcont(1.0, -1.0, Zem_Mixed, 1e-8, plain); }, NE_REAL, 1,
            "NE_REAL:\n  On entry, tol = -1.0.\n  Constraint: tol > 0.0."},
        row{"scal", [] { return rcont(1.0, 1e-8, Zem_Mixed, 1e-20, plain); }, NE_REAL_2, 1,
            "NE_REAL_2:\n  On entry, x = 1.0 and scal = 1e-20.\n  Constraint: x+scal != x (to machine accuracy)."},
        row{"derivatives", [] { return rcont(2.0, 1e-8, Zem_Mixed, 1e-8, flat); }, NE_NO_SIGNIF_DERIV, 3,
            "NE_NO_SIGNIF_DERIV:\n  Significant derivatives of f cannot be computed.\n"
            "  f(x+scal) and f(x-scal) do not differ significantly from f(x),\n  where x = 2.0 and scal = 1e-08."},
        row{"away", [] { return rcont(1.0, 1e-8, Zem_Mixed, 1e-8, only_here); }, NE_CONT_AWAY_NOT_POSS, 4,
            "NE_CONT_AWAY_NOT_POSS:\n  Continuation away from the initial point is not possible.\n"
            "  No continuation step from the initial point x = 1.0\n  could be taken in either direction."},
        row{"path lost", [] { return rcont(1.0, 1e-8, Zem_Mixed, 1e-8, no_zero); }, NE_CONT_PROB_NOT_SOLVED, 5,
            "NE_CONT_PROB_NOT_SOLVED:\n  Current problem in the continuation sequence cannot be solved.\n"
            "  The path from the initial point was followed in both directions without\n"
            "  reaching theta = 0. The point with the smallest |f| found is returned:\n  x = 0.0, f(x) = 1.0."},
        row{"state changed",
            [] {
              return rcont(1.0, 1e-8, Zem_Mixed, 1e-8, plain, 1, 3, [](double *c, int64_t *) { c[7] = 0.5; });
            },
            NE_CONT_PROB_NOT_SOLVED, 5,
            "NE_CONT_PROB_NOT_SOLVED:\n  Current problem in the continuation sequence cannot be solved.\n"
            "  The state array c was changed between calls; restart the solve."},
        row{"pole", [] { return rcont(0.5 - 0.5e-8, 1e-12, Zem_Absolute, 1e-8, pole); }, NE_FINAL_PROB_NOT_SOLVED, 6,
            "NE_FINAL_PROB_NOT_SOLVED:\n  Final problem (with theta_m = 0) cannot be solved.\n"
            "  f changes sign at x = 0.5000000000012204\n"
            "  but |f| does not decrease there: f may have a pole or a jump at x."},
        row{"accuracy", [] { return rcont(3.0, 1e-30, Zem_Absolute, 1e-8, root2); }, NE_FINAL_PROB_NOT_SOLVED, 6,
            "NE_FINAL_PROB_NOT_SOLVED:\n  Final problem (with theta_m = 0) cannot be solved.\n"
            "  The zero near x = 1.4142135623730951\n  cannot be located to within tol = 1e-30:\n"
            "  too much accuracy has been requested."}));

}  // namespace
