// s15ad: the complementary error function, erfc(x) = 1 - erf(x), computed
// directly (not as 1 - erf) so that it keeps full relative accuracy for large
// x, where erfc(x) ~ exp(-x^2) / (x sqrt(pi)) underflows only beyond x = 27.2.
#include "s15/s15ad.h"

#include "frame/errbuf.h"
#include "s15/error_functions.h"

ZEM_INTERNAL void s15adfn_(engine_data *, const double *x, double *result, char *, int64_t *ifail) {
  *result = zem::s15::erfc(*x);
  zem::succeed(ifail);
}
