// The option set of a handle, as the body holds it.  The registry and the
// option set's storage belong to the option module (e04/options.h); until it
// is part of the build a body carries no option set, and the model routines
// read "Infinite Bound Size" at its default, 1.0e20.
#include "e04/model.h"
#include "frame/units.h"

namespace zem::e04 {

bool attach_options(problem &p) noexcept {
  p.opts = nullptr;
  p.opts_ref = p.opts;
  return true;
}

void release_options(problem &p) noexcept { p.opts = p.opts_ref = nullptr; }

void print_options(const problem &, int64_t unit, bool, bool *failed) noexcept {
  if (zem::write_record(unit, " Begin of Options") != 0) *failed = true;
  if (zem::write_record(unit, " End of Options") != 0) *failed = true;
}

double infinite_bound_size(const problem &) noexcept { return 1.0e20; }

}  // namespace zem::e04
