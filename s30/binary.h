// The cash-or-nothing grid shared by s30ca (prices) and s30cb (prices and
// sensitivities): the checks of the payoff k after the shared ones, the
// logarithms of the strikes, and the loop of s30aa's order that forms
// d2 and the price k e^{-rt} Phi(e d2) = (k e^{-rt}/2) erfc(-e d2 c) of
// each element, so that both routines return the same prices bit for bit.
#pragma once

#include "s30/grid.h"

namespace zem::s30 {

// What the loop hands to the routine's writer for element (i, j), stored
// at offset at of every output matrix.
struct binary_point {
  int64_t at;
  double d2, price, kr;  // kr = k e^{-rt}
  const expiry_terms *e;
};

// The shared checks and those of k (status 10: detail 1016 below 0, 1017
// above hi), then write(point) for every element; after a failed check the
// record is written and nothing is stored.
template <class Write>
inline void binary_grid(const grid_args &g, double k, const char *calput, size_t calput_len, char *errbuf,
                        int64_t *ifail, Write write) {
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  if (!(k >= 0.0)) return zem::fail(errbuf, ifail, 10, 1016, k);
  if (!(k <= hi)) return zem::fail(errbuf, ifail, 10, 1017, k, hi);
  const std::unique_ptr<double[]> lnx = logs_of(g.x, g.m);
  if (!lnx) return zem::alloc_fail(ifail);
  const layout L = make_layout(g.order, g.ld);
  const double lns = std::log(g.s);
  const double sg = g.type == kind::call ? -1.0 : 1.0;  // erfc(sg d2 c) = 2 Phi(e d2)
  for (int64_t j = 0; j < g.n; ++j) {
    const expiry_terms e = per_expiry(g.s, g.t[j], g.sigma, g.r, g.q);
    const double kr = k * e.dr;
    const double hk = 0.5 * kr;
    for (int64_t i = 0; i < g.m; ++i) {
      const double d2 = (lns - lnx[i] + e.drift) / e.vol - e.vol;
      write(binary_point{i * L.ri + j * L.cj, d2, hk * zem::s15::erfc(sg * d2 * c), kr, &e});
    }
  }
}

}  // namespace zem::s30

// The rows of the payoff's checks.
#define S30_ROWS_K                                                                                                 \
  {10, 1016, NE_REAL, {"On entry, k = %s.", "Constraint: k >= 0.0."}, {"On entry, k = %s", "Constraint: k >= 0.0."}}, \
  {10, 1017, NE_REAL, {"On entry, k = %s.", "Constraint: k <= %s."}, {"On entry, k = %s", "Constraint: k <= %s."}}
