// g05kh: leap-frog.  Turns the stream of an initialised state into the k-th
// of n interleaved streams: values k, k+n, k+2n, ... of the stream as it was.
#include <cstdint>

#include "frame/engine.h"
#include "frame/errbuf.h"
#include "g05/messages.h"
#include "g05/modarith.h"
#include "g05/state.h"

namespace zem::g05 {

constexpr message_entry g05kh_messages[] = {
    {1, 1001, "NE_INT", "On entry, n = %s.\nConstraint: n >= 1.", nullptr},
    {2, 1002, "NE_INT_2", "On entry, k = %s and n = %s.\nConstraint: 0 < k <= n.", nullptr},
    {3, 1003, "NE_INT_ARRAY", "On entry, state vector has been corrupted or not initialized.",
     nullptr},
    {4, 1004, "NE_INT_ARRAY",
     "On entry, cannot use leap-frog with the base generator defined by state.", nullptr},
};

}  // namespace zem::g05

ZEM_INTERNAL void g05khfn_(engine_data *, const int64_t *n, const int64_t *k, int64_t *state,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  if (!state_valid(state)) return zem::fail(errbuf, ifail, 3, 1003);
  if (*n < 1) return zem::fail(errbuf, ifail, 1, 1001, *n);
  if (*k < 1 || *k > *n) return zem::fail(errbuf, ifail, 2, 1002, *k, *n);
  const int64_t stride = stride_word(state), stream = stream_word(state);
  if (generator_for(state[pos_genid]).leapfrog(state, *n, *k) != op_ok)
    return zem::fail(errbuf, ifail, 4, 1004);
  // Stream k of n within stream `stream` of `stride`: stream
  // stream + (k - 1) stride of stride n (saturating; informative except for
  // the Mersenne Twister, whose stride stays below 2^24).
  stride_word(state) = sat_mul(stride, *n);
  stream_word(state) = sat_add(stream, sat_mul(*k - 1, stride));
  zem::succeed(ifail);
}
