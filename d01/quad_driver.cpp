// The workers' shared glue (see quad_driver.h).

#include "quad_driver.h"

#include <cstring>

namespace zem::quad {

void pack_lists_moves(double *rinfo, int64_t limit, int64_t n) {
  // Each list moves to a lower address, after the lists below it have moved;
  // a move may overlap its own source.
  for (int64_t k = 1; k < 4; ++k) std::memmove(rinfo + k * n, rinfo + k * limit, sizeof(double) * n);
}

void report_failure(const quad_outcome &o, bool iflag_stop, char *errbuf, int64_t *ifail, double epsabs,
                    double epsrel, int64_t maxsub) {
  if (o.stop != 0) return iflag_stop ? fail(errbuf, ifail, -1, detail_iflag) : user_stop(errbuf, ifail, o.stop);
  switch (o.code) {
    case 0: return succeed(ifail);
    case 1: return fail(errbuf, ifail, 1, detail_limit, maxsub);
    case 2: return fail(errbuf, ifail, 2, detail_roundoff, epsabs, epsrel);
    case 3: return fail(errbuf, ifail, 3, detail_bad, o.bad_a, o.bad_b);
    case 4: return fail(errbuf, ifail, 4, detail_extrapolation);
    default: return fail(errbuf, ifail, 5, detail_divergence);
  }
}

}  // namespace zem::quad
