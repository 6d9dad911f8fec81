// The pieces of e04kf that do not depend on the user's functions: the
// model's own linear or quadratic objective, the iteration log and the
// summary (written through the output units), and the model check.
#pragma once

#include <cstdint>
#include <vector>

#include "e04/foas.h"

namespace zem::e04 {
struct problem;
}

namespace zem::e04::foas {

// True when the model is one e04kf solves: a linear, quadratic (explicit or
// factored) or nonlinear objective, simple bounds, continuous variables,
// and nothing else (deleted components do not count).
bool model_supported(const problem &p) noexcept;

// The objective of a linear or quadratic model, evaluated from the handle.
// prepare() allocates the factor's work vector (false: no memory).
class model_objective {
 public:
  explicit model_objective(const problem &p) : p_(p) {}
  bool prepare() noexcept;
  void f(const double *x, double *fx) const;
  void grad(const double *x, double *g) const;

 private:
  const problem &p_;
  mutable std::vector<double> fx_;  // F x for a factored quadratic
};

// Output of one solve: where the log and the summary go.
struct printer {
  int64_t print_unit = -1, print_level = 0, mon_unit = -1, mon_level = 0;
  bool stats_time = false;
  void header(int64_t n, int64_t nfixed, int64_t nbounded, int objective_kind, const settings &st) const;
  void line(const state_view &v) const;
  void summary(outcome how, const result &r) const;
  // "Print Solution": x, bounds and multipliers (what = 1 all, 2 x, 3 x and
  // u, 4 u).
  void solution(int64_t what, int64_t n, const double *x, const double *lo, const double *hi, const double *z) const;

 private:
  void put(int64_t min_level, const char *text) const;
};

}  // namespace zem::e04::foas
