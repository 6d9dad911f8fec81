// g05kj: skip-ahead by n values.
#include <cstdint>

#include "frame/engine.h"
#include "frame/errbuf.h"
#include "g05/messages.h"
#include "g05/state.h"

namespace zem::g05 {

constexpr message_entry g05kj_messages[] = {
    {1, 1001, "NE_INT", "On entry, n = %s.\nConstraint: n >= 0.", nullptr},
    {2, 1002, "NE_INT_ARRAY", "On entry, state vector has been corrupted or not initialized.",
     nullptr},
    {3, 1003, "NE_INT_ARRAY",
     "On entry, cannot use skip-ahead with the base generator defined by state.", nullptr},
    {4, 1004, "NE_ARRAY_SIZE",
     "On entry, the base generator is Mersenne Twister, but\nthe state vector defined on initialization is not large enough\nto perform a skip ahead. See the initialization function zem_rand_init_repeatable (g05kfc) or zem_rand_init_nonrepeatable (g05kgc).",
     "On entry, the base generator is Mersenne Twister, but\nthe state vector defined on initialization is not large enough\nto perform a skip ahead. See the initialization routine g05kff or g05kgf."},
};

}  // namespace zem::g05

ZEM_INTERNAL void g05kjfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::g05;
  if (!state_valid(state)) return zem::fail(errbuf, ifail, 2, 1002);
  if (*n < 0) return zem::fail(errbuf, ifail, 1, 1001, *n);
  switch (generator_for(state[pos_genid]).skip(state, *n)) {
    case op_ok:
      return zem::succeed(ifail);
    case op_too_small:
      return zem::fail(errbuf, ifail, 4, 1004);
    case op_no_memory:
      return zem::fail(errbuf, ifail, zem::status_alloc_fail, 1005);
    default:
      return zem::fail(errbuf, ifail, 3, 1003);
  }
}
