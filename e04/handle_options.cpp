// The option set of a handle, as the body holds it: the general set,
// filled with the registry's defaults when the handle is created, and the
// second reference, which starts equal to it (e04/options.h has the
// registry and the set's storage).
#include <new>

#include "e04/model.h"
#include "e04/options.h"
#include "frame/units.h"

namespace zem::e04 {

bool attach_options(problem &p) noexcept {
  p.opts = new (std::nothrow) option_set;
  if (!p.opts) return false;
  init_options(*p.opts, 0);
  p.opts_ref = p.opts;
  return true;
}

void release_options(problem &p) noexcept {
  delete p.opts;
  p.opts = p.opts_ref = nullptr;
}

void print_options(const problem &p, int64_t unit, bool all, bool *failed) noexcept {
  if (!p.opts) return;
  if (zem::e04::print_options(*p.opts, unit, all ? print_which::all : print_which::user) != 0) *failed = true;
}

double infinite_bound_size(const problem &p) noexcept {
  return p.opts ? real_value(*p.opts, opt::infinite_bound_size) : 1.0e20;
}

}  // namespace zem::e04
