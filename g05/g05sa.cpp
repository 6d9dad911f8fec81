// g05sa: n uniform (0,1) numbers from a generator state.
#include <cstdint>

#include "frame/engine.h"
#include "frame/errbuf.h"
#include "g05/messages.h"
#include "g05/state.h"
#include "g05/uniform.h"

namespace zem::g05 {

constexpr message_entry g05sa_messages[] = {
    {1, 1001, "NE_INT", "On entry, n = %s.\nConstraint: n >= 0.", nullptr},
    {2, 1002, "NE_INT_ARRAY", "On entry, state vector has been corrupted or not initialized.",
     nullptr},
};

}  // namespace zem::g05

ZEM_INTERNAL void g05safn_(engine_data *, const int64_t *n, int64_t *state, double *x,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  if (!state_valid(state)) return zem::fail(errbuf, ifail, 2, 1002);
  if (*n < 0) return zem::fail(errbuf, ifail, 1, 1001, *n);
  uniform_fill(state, *n, x);
  zem::succeed(ifail);
}
