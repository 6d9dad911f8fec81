// The option set: the default loop, typed access, and the listing.
#include <cstdio>
#include <cstring>

#include "e04/registry.h"
#include "frame/errbuf.h"
#include "frame/units.h"

namespace zem::e04 {

void fill_defaults(option_set &set, fill_mode mode) noexcept {
  for (int i = 0; i < option_count; ++i) {
    const option_info &o = registry[i];
    const int64_t type = base_type(o.type);
    if (type != type_integer && type != type_real && type != type_character) continue;  // code 4: skipped
    const int sw = status_word(o);
    if (mode == fill_mode::solver_changed && set.istore[sw] != status_solver) continue;
    if (type == type_real) {
      set.rstore[o.rslot] = o.rdef;
    } else {
      set.istore[o.islot] = o.idef == adv_unit_default ? adv_unit() : o.idef;
    }
    set.istore[sw] = status_default;
  }
}

void init_options(option_set &set, int64_t solver_id) noexcept {
  std::memset(&set, 0, sizeof set);
  set.solver_id = solver_id;
  fill_defaults(set, fill_mode::all);
}

int64_t int_value(const option_set &set, opt id) noexcept {
  const option_info &o = info(id);
  return is_real(o) ? 0 : set.istore[o.islot];
}

double real_value(const option_set &set, opt id) noexcept {
  const option_info &o = info(id);
  return is_real(o) ? set.rstore[o.rslot] : 0.0;
}

int64_t status_of(const option_set &set, opt id) noexcept { return set.istore[status_word(info(id))]; }

void solver_set_int(option_set &set, opt id, int64_t value) noexcept {
  const option_info &o = info(id);
  if (is_real(o)) return;
  set.istore[o.islot] = value;
  set.istore[o.islot + 1] = status_solver;
}

void solver_set_real(option_set &set, opt id, double value) noexcept {
  const option_info &o = info(id);
  if (!is_real(o)) return;
  set.rstore[o.rslot] = value;
  set.istore[o.islot] = status_solver;
}

std::string_view display_name(opt id) noexcept { return info(id).name; }
std::string_view upper_name(opt id) noexcept { return upper_name_of(static_cast<int>(id) - 1); }

opt find_option(std::string_view name) noexcept { return static_cast<opt>(find_index(name) + 1); }

namespace {

// One listing line: the name, the value right-justified, and the origin of
// the value (d default, U set by the user, S changed by the solver).
//     "     Infinite Bound Size           =                     1.0e+20   * d"
int print_line(const option_set &set, int i, int64_t unit) {
  const option_info &o = registry[i];
  char value[40];
  if (is_real(o)) {
    const value_text t = format_value(set.rstore[o.rslot]);
    std::snprintf(value, sizeof value, "%.*s", t.len, t.text);
  } else if (is_character(o)) {
    const std::string_view k = keyword_of_code(i, set.istore[o.islot]);
    std::snprintf(value, sizeof value, "%.*s", static_cast<int>(k.size()), k.data());
  } else {
    std::snprintf(value, sizeof value, "%lld", static_cast<long long>(set.istore[o.islot]));
  }
  const int64_t st = set.istore[status_word(o)];
  const char origin = st == status_user ? 'U' : st == status_solver ? 'S' : 'd';
  char line[96];
  std::snprintf(line, sizeof line, "     %-30.*s= %25s   * %c", static_cast<int>(o.name.size()), o.name.data(), value,
                origin);
  return write_record(unit, line);
}

}  // namespace

int print_options(const option_set &set, int64_t unit, print_which which) noexcept {
  const bool changed_only = which == print_which::solver_changed;
  int rc = write_record(unit, changed_only ? "Begin of options modified by the solver" : "Begin of Options");
  for (int i = 0; i < option_count; ++i) {
    const option_info &o = registry[i];
    if (base_type(o.type) == type_skipped) continue;
    if ((which == print_which::user || which == print_which::changed) && is_internal(o)) continue;
    if (which == print_which::changed && set.istore[status_word(o)] == status_default) continue;
    if (changed_only && set.istore[status_word(o)] != status_solver) continue;
    rc |= print_line(set, i, unit);
  }
  rc |= write_record(unit, "End of Options");
  return rc;
}

}  // namespace zem::e04
