// What the option routines share: opening the handle for them, and the
// messages of a failed setting.
#include "e04/option_messages.h"

namespace zem::e04 {

problem *open_for_options(void *handle, bool changes, char *errbuf, int64_t *ifail) noexcept {
  problem *p = open_problem(handle, errbuf, ifail);
  if (!p) return nullptr;
  if (changes && phase(*p) != phase_editable) {
    fail(errbuf, ifail, 2, 1011);
    return nullptr;
  }
  return p;
}

void report_setting(const set_result &r, std::string_view optstr, std::string_view value, char *errbuf,
                    int64_t *ifail) noexcept {
  const message_text val = split_for_message(value, "\"", "\".");
  if (r.outcome == set_outcome::unknown_option) {
    const message_text s = split_for_message(optstr, "\"", "\".");
    return fail(errbuf, ifail, 11, 1021, s.a, s.b);
  }
  if (r.outcome == set_outcome::not_integer) return fail(errbuf, ifail, 12, 1022, val.a, val.b);
  if (r.outcome == set_outcome::not_real) return fail(errbuf, ifail, 12, 1023, val.a, val.b);
  const message_text name = split_for_message(registry[r.index].name, "'", "'.");
  if (r.outcome == set_outcome::bad_keyword) return fail(errbuf, ifail, 13, 1024, name.a, name.b, val.a, val.b);
  const int64_t kind = r.broken == b_ge ? 1 : r.broken == b_gt ? 2 : r.broken == b_le ? 3 : 4;
  if (r.outcome == set_outcome::int_bound)
    return fail(errbuf, ifail, 13, 1030 + kind, name.a, name.b, r.ivalue, static_cast<int64_t>(r.bound));
  return fail(errbuf, ifail, 13, 1040 + kind, name.a, name.b, r.rvalue, r.bound);
}

}  // namespace zem::e04
