// g01ea: standard Normal tail probabilities through erfc and erf.
//
// With z = x c, c = 1/sqrt(2):
//   P(X <= x)      = erfc(-z) / 2
//   P(X >= x)      = erfc(z) / 2
//   P(|X| >= |x|)  = erfc(|z|)
//   P(|X| <= |x|)  = erf(|z|)
// No branch forms 1 - P: a small tail probability keeps its full relative
// accuracy (P(X >= 30) = 4.9e-198, not 0).  Only 'C' uses erf.
//
// Accuracy.  erfc(z) falls like exp(-z^2), so a relative perturbation d of z
// moves erfc(z) by about 2 z^2 d relatively.  The product x c is rounded
// (|d| <= 2^-53) and c itself is 0x1.6a09e667f3bccp-1 =
// 0.7071067811865475, 8.9e-17 relatively below 1/sqrt(2) (the neighbouring
// double 0x1.6a09e667f3bcdp-1 is closer); in the far tails these two terms,
// not erfc, set the error: about z^2 (1.6 +- 2) units in the last place,
// some 1500 units at x = 38.  docs/g01ea.md has the measured figures.
#include "g01/g01ea.h"

#include <cmath>

#include "frame/errbuf.h"
#include "g01/tail.h"
#include "s15/error_functions.h"

namespace {

constexpr double c = 0.7071067811865475;  // 1/sqrt(2) as the routine defines it

}  // namespace

ZEM_INTERNAL void g01eafn_(engine_data *, const char *tail, const double *x, double *result,
                           char *errbuf, int64_t *ifail, size_t tail_len) {
  using zem::g01::tail_kind;
  *result = 0.0;
  const tail_kind t = zem::g01::read_tail(tail, tail_len);
  if (t == tail_kind::invalid) return zem::fail(errbuf, ifail, 1, 1001, zem::g01::shown_tail(tail, tail_len));

  const double v = *x;
  switch (t) {
    case tail_kind::lower: *result = 0.5 * zem::s15::erfc(-v * c); break;
    case tail_kind::upper: *result = 0.5 * zem::s15::erfc(v * c); break;
    case tail_kind::signif: *result = zem::s15::erfc(std::fabs(v) * c); break;
    default: *result = zem::s15::erf(std::fabs(v) * c); break;
  }
  zem::succeed(ifail);
}
