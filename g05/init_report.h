// What the two initialisation routines, g05kf and g05kg, share besides the
// initialisation frame (state.h): their failure statuses, message rows, the
// reading of the C enumeration and the treatment of a length query.
#pragma once

#include <cstdint>

#include "frame/frame.h"
#include "g05/state.h"

namespace zem::g05 {

// Engine statuses of g05kf and g05kg: the generator's own codes (op_status).
inline constexpr int64_t init_bad_genid = 1, init_bad_seed = 3, init_bad_lseed = 4,
                         init_lstate_small = 6, init_query = -1;

// Message rows (status, detail, C code, C lines, Fortran lines).  The C
// interface takes genid as an enumeration and refuses an unknown member
// itself, so the genid row is the Fortran interface's.  The length query is
// a warning of the Fortran interface only.
inline constexpr message row_genid = {init_bad_genid, 1001, NE_BAD_PARAM,
                                      {"On entry, parameter genid had an illegal value."},
                                      {"On entry, genid = %s.", "Constraint: genid = 1, 2, 3, 4, 5 or 6."}};
inline constexpr message row_lseed = {init_bad_lseed, 1002, NE_INT,
                                      {"On entry, lseed = %s.", "Constraint: lseed >= 1."}};
inline constexpr message row_seed = {init_bad_seed, 1003, NE_INT_ARRAY, {"On entry, invalid seed."}};
inline constexpr message row_lstate = {init_lstate_small, 1004, NE_INT,
                                       {"On entry, lstate = %s.", "Constraint: lstate <= 0 or lstate >= %s."}};
inline constexpr message row_query = {
    init_query, 1005, NE_NOERROR,
    {"Required length of state array returned in lstate but state array not", "initialized."}};

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

// genid of a member of the C enumeration Zem_BaseRNG, or 0 for any other value.
inline int64_t genid_of(Zem_BaseRNG member) {
  switch (member) {
    case Zem_Basic: return gen_basic;
    case Zem_WichmannHill_I: return gen_wichmann_hill_1;
    case Zem_MersenneTwister: return gen_mersenne_twister;
    case Zem_WichmannHill_II: return gen_wichmann_hill_2;
    case Zem_ACORN: return gen_acorn;
    case Zem_MRG32k3a: return gen_mrg32k3a;
  }
  return 0;
}

// The end of a C entry: the length query is no failure in the C interface.
inline void finish_init(c_entry &call) {
  if (call.status == init_query) call.status = 0;
  call.finish();
}

// The end of a Fortran entry: the length query is a warning, printed as the
// caller's ifail asks but never stopping the program (with ifail = 0 on entry
// it prints as with -1).
inline void finish_init(f_entry &call, int64_t *ifail) {
  if (call.status == init_query && *ifail == 0) *ifail = -1;
  call.finish(ifail);
}

}  // namespace zem::g05
