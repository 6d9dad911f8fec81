// The Hock-Schittkowski test problems 1 to 50.
//
// What: fifty small nonlinear programs (2 to 5 variables, up to 6 general
// constraints) with known optima, the classic accuracy set for solvers of
// constrained optimization. Source: W. Hock and K. Schittkowski, "Test
// Examples for Nonlinear Programming Codes", Lecture Notes in Economics and
// Mathematical Systems 187, Springer 1981. Formulas, starting points and
// optima are those of the book; every function here is written from the
// problem statements.
//
// Conventions (read before using a record):
// - Minimize f(x) subject to  bl <= x <= bu  and  cl <= c(x) <= cu.
//   An infinite bound is +-1e20 (hs::inf); an equality has cl == cu.
// - The book writes inequalities as g(x) >= 0 and equalities as h(x) = 0.
//   A NONLINEAR constraint is kept exactly as the book writes it: c = g with
//   [cl, cu] = [0, inf], or c = h with cl = cu = 0.
// - A LINEAR constraint (linear[i] != 0) has no constant term: c_i(x) =
//   sum_j a[i*n + j] x_j exactly, and the book's constant sits in cl/cu
//   (x1 - 2 x2 + 1 = 0 becomes c = x1 - 2 x2, cl = cu = -1). A solver can
//   therefore declare these rows as linear constraints with the row a_i and
//   the bounds cl_i, cu_i as they stand. Rows of nonlinear constraints in
//   `a` are zero.
// - Constraints appear in the book's order (inequalities first, then
//   equalities, as the book numbers them).
// - Derivatives are exact: gradient, dense Jacobian (m x n, row-major), and
//   the dense Hessian of the Lagrangian  sigma * H_f + sum_i lambda_i H_ci
//   (n x n, full symmetric, row-major), the sign convention of a solver that
//   minimizes f with multipliers lambda on c(x) in [cl, cu].
// - `objective` tells how f may be declared: linear (constant gradient,
//   also the constant objective of problem 8), quadratic (constant Hessian:
//   grad f(0) and hess(sigma = 1, lambda = 0) give the explicit data, f(0)
//   the constant term), nonlinear.
// - fstar is the book's optimal value, xstar its optimal point (the book
//   gives one for every problem of 1..50; where there are several optima,
//   the one listed). Every xstar is a closed form evaluated in double (for
//   problems 8 and 19 the book prints rounded digits of that same point).
//   ftol is the half unit of the last printed digit where the book prints
//   f* rounded (problems 2, 11, 19), else 1e-12 relative; xtol bounds the
//   violation of bounds and constraints at xstar (rounding only). The note
//   of each record says which. Where a solver started at x0 may
//   legitimately stop at another local minimum (problems 2, 16, 20, 44),
//   xlocal lists it.
// - x0 is the book's starting point; it need not be feasible (it violates
//   the general constraints in 19 problems) nor lie within the bounds
//   (problems 2, 13, 16, 17, 20, 21, 41, 45 start outside them).
//
// Use:
//   for (const auto &p : zem_test::hs::problems()) {
//     double f = p.f(p.x0.data());  ... p.grad, p.cons, p.jac, p.hess ...
//   }
//   const auto &p = zem_test::hs::problem(50);
// The records are built once, are immutable, and every evaluation works on
// the caller's arrays only (safe to call from several threads).
#pragma once

#include <vector>

namespace zem_test::hs {

inline constexpr double inf = 1e20;

enum class Objective { linear, quadratic, nonlinear };

struct Jet;  // second-order forward derivative (hs_problems.cpp)

struct Problem {
  int number = 0;
  int n = 0;  // variables
  int m = 0;  // general constraints
  Objective objective = Objective::nonlinear;
  std::vector<double> x0, bl, bu;  // size n
  std::vector<double> cl, cu;      // size m
  std::vector<char> linear;        // size m: 1 when c_i is linear
  std::vector<double> a;           // m x n row-major: rows of linear c_i
  double fstar = 0;
  std::vector<double> xstar;       // size n
  double ftol = 0;  // |f(xstar) - fstar| allowed by the published digits
  double xtol = 0;  // bound and constraint violation allowed at xstar
  const char *note = "";  // where the published optimum is rounded, and why
  // Other local minima a solver may reach from x0 (problems 2, 16, 20, 44):
  // feasible first-order points with f above fstar, each n values.
  std::vector<std::vector<double>> xlocal;

  double f(const double *x) const;
  void grad(const double *x, double *g) const;
  void cons(const double *x, double *c) const;  // nothing when m == 0
  void jac(const double *x, double *J) const;   // m x n row-major
  // sigma * H_f + sum_i lambda_i H_ci, n x n full symmetric row-major;
  // lambda may be null when m == 0.
  void hess(const double *x, double sigma, const double *lambda, double *H) const;

  // The problem, written once for both scalar types: f and c at x.
  void (*eval)(const double *x, double &f, double *c) = nullptr;
  void (*eval_jet)(const Jet *x, Jet &f, Jet *c) = nullptr;
};

// Problems 1..50, in order (problems()[k] is problem k + 1).
const std::vector<Problem> &problems();
const Problem &problem(int number);

}  // namespace zem_test::hs
