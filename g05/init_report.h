// Failure reports of the two initialisation routines, g05kf and g05kg, which
// share the initialisation frame and its messages.
#pragma once

#include <cstdint>

#include "frame/errbuf.h"
#include "g05/state.h"

namespace zem::g05 {

// Engine statuses of g05kf and g05kg (the generator's own codes, see
// op_status) and their detail codes.
inline constexpr int64_t init_bad_genid = 1, init_bad_seed = 3, init_bad_lseed = 4,
                         init_lstate_small = 6, init_query = -1;

// Turns the result of initialise() into the routine's status and record;
// on a query, lstate receives the required length.
inline void report_init(int64_t op, int64_t genid, int64_t lseed, int64_t *lstate, int64_t len,
                        char *errbuf, int64_t *ifail) {
  switch (op) {
    case op_ok:
      return succeed(ifail);
    case op_wrong_generator:
      return fail(errbuf, ifail, init_bad_genid, 1001, genid);
    case op_lseed:
      return fail(errbuf, ifail, init_bad_lseed, 1002, lseed);
    case op_invalid_seed:
      return fail(errbuf, ifail, init_bad_seed, 1003);
    case op_lstate_small:
      return fail(errbuf, ifail, init_lstate_small, 1004, *lstate, len);
    default:  // op_query
      *lstate = len;
      return fail(errbuf, ifail, init_query, 1005);
  }
}

}  // namespace zem::g05
