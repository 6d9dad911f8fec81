// g05kg: non-repeatable initialisation of a base generator's state, seeded
// from the system clock and the run-time library's random source.
#include <chrono>
#include <cstdint>
#include <random>

#include "frame/engine.h"
#include "frame/errbuf.h"
#include "g05/init_report.h"
#include "g05/messages.h"
#include "g05/state.h"

namespace zem::g05 {

constexpr message_entry g05kg_messages[] = {
    {1, 1001, "NE_BAD_PARAM", "On entry, parameter genid had an illegal value.",
     "On entry, genid = %s.\nConstraint: genid = 1, 2, 3, 4, 5 or 6."},
    {6, 1004, "NE_INT", "On entry, lstate = %s.\nConstraint: lstate <= 0 or lstate >= %s.", nullptr},
    {-1, 1005, nullptr, "",
     "Required length of state array returned in lstate but state array not\ninitialized."},
};

namespace {

// seed(1) = (clock count mod (2^30 - 1)) + [2147483647 r / 2], r in [0,1).
int64_t clock_seed() {
  const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
  const int64_t c = static_cast<int64_t>(ticks % 1073741823);
  double r = 0.0;
  try {
    std::random_device source;
    r = static_cast<double>(source()) * 0x1p-32;
  } catch (...) {
    // No random source: the clock alone.
  }
  const int64_t s = (c < 0 ? -c : c) + static_cast<int64_t>(2147483647.0 * r / 2.0);
  return s >= 1 ? s : 1;
}

}  // namespace

}  // namespace zem::g05

ZEM_INTERNAL void g05kgfn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           int64_t *state, int64_t *lstate, char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  const int64_t seed[1] = {*lstate > 0 ? clock_seed() : 1};
  int64_t len = 0;
  const int64_t op = initialise(*genid, seed_array{seed, 1, *subid}, state, *lstate, &len);
  report_init(op, *genid, 1, lstate, len, errbuf, ifail);
}
