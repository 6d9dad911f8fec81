// g01fa: standard Normal deviates from tail probabilities, by the Normal
// inverse kernel Q (AS 241, g05/normal_inverse.cpp), Q(p) = x with
// P(X <= x) = p:
//   'L'  Q(p)
//   'U'  -Q(p)            (not Q(1 - p), which would lose small p)
//   'S'  -Q(p/2)          (non-negative)
//   'C'  Q(p/2 + 1/2)     (formed in that order)
// The 'C' argument p/2 + 1/2 is rounded to the spacing 2^-53 of doubles below
// 1: for p below 2^-53 it is 1/2 and the deviate 0, and for p near 1 the
// distance 1 - (p/2 + 1/2) keeps only part of 1 - p (p = 1 - 2^-53 even
// rounds to 1, and the safe-range guard gives 37.5); docs/g01fa.md has the
// figures.
#include "g01/g01fa.h"

#include "frame/errbuf.h"
#include "g01/tail.h"
#include "g05/normal_inverse.h"

ZEM_INTERNAL void g01fafn_(engine_data *, const char *tail, const double *p, double *result,
                           char *errbuf, int64_t *ifail, size_t tail_len) {
  using zem::g01::tail_kind;
  using zem::g05::normal_inverse;
  *result = 0.0;
  const tail_kind t = zem::g01::read_tail(tail, tail_len);
  if (t == tail_kind::invalid) return zem::fail(errbuf, ifail, 1, 1001, zem::g01::shown_tail(tail, tail_len));
  // One status for both ends of 0 < p < 1, told apart by the detail code:
  // 99998 for p <= 0, 89998 for p >= 1.  A NaN passes both tests.
  const double v = *p;
  if (v <= 0.0 || v >= 1.0) return zem::fail(errbuf, ifail, 2, 89998 + (v <= 0.0 ? 10000 : 0), v);

  switch (t) {
    case tail_kind::lower: *result = normal_inverse(v); break;
    case tail_kind::upper: *result = -normal_inverse(v); break;
    case tail_kind::signif: *result = -normal_inverse(0.5 * v); break;
    default: *result = normal_inverse(0.5 * v + 0.5); break;
  }
  zem::succeed(ifail);
}
