// The worker shared by both skip-aheads, g05kj (by n values) and g05kk (by
// 2^n values): the checks, then the generator's own operation, chosen by
// the caller as a member of the generator's table of operations.
// Statuses: 1 n < 0, 2 invalid state, 3 refused by the generator, 4 a
// Mersenne Twister state without working room, -999 no scratch memory.
#pragma once

#include <cstdint>

#include "frame/errbuf.h"
#include "g05/state.h"

namespace zem::g05 {

inline void skip_worker(const int64_t *n, int64_t *state, char *errbuf, int64_t *ifail,
                        int64_t (*generator::*operation)(int64_t *, int64_t)) {
  *ifail = 0;
  if (!state_valid(state)) return zem::fail(errbuf, ifail, 2, 1002);
  if (*n < 0) return zem::fail(errbuf, ifail, 1, 1001, *n);
  switch ((generator_for(state[pos_genid]).*operation)(state, *n)) {
    case op_ok:
      return;
    case op_too_small:
      return zem::fail(errbuf, ifail, 4, 1004);
    case op_no_memory:
      *ifail = zem::status_alloc_fail;
      return;
    default:
      return zem::fail(errbuf, ifail, 3, 1003);
  }
}

}  // namespace zem::g05
