// g05kf: repeatable initialisation of a base generator's state from a seed.
#include <cstdint>

#include "frame/engine.h"
#include "frame/errbuf.h"
#include "g05/init_report.h"
#include "g05/messages.h"
#include "g05/state.h"

namespace zem::g05 {

constexpr message_entry g05kf_messages[] = {
    {1, 1001, "NE_BAD_PARAM", "On entry, parameter genid had an illegal value.",
     "On entry, genid = %s.\nConstraint: genid = 1, 2, 3, 4, 5 or 6."},
    {4, 1002, "NE_INT", "On entry, lseed = %s.\nConstraint: lseed >= 1.", nullptr},
    {3, 1003, "NE_INT_ARRAY", "On entry, invalid seed.", nullptr},
    {6, 1004, "NE_INT", "On entry, lstate = %s.\nConstraint: lstate <= 0 or lstate >= %s.", nullptr},
    {-1, 1005, nullptr, "",
     "Required length of state array returned in lstate but state array not\ninitialized."},
};

}  // namespace zem::g05

ZEM_INTERNAL void g05kffn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           const int64_t *seed, const int64_t *lseed, int64_t *state,
                           int64_t *lstate, char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  int64_t len = 0;
  const int64_t op = initialise(*genid, seed_array{seed, *lseed, *subid}, state, *lstate, &len);
  report_init(op, *genid, *lseed, lstate, len, errbuf, ifail);
}
