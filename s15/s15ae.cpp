// s15ae: the error function erf(x) = (2/sqrt(pi)) * integral of exp(-t^2)
// from 0 to x; odd, with full relative accuracy near 0.
#include "s15/s15ae.h"

#include "frame/errbuf.h"
#include "s15/error_functions.h"

ZEM_INTERNAL void s15aefn_(engine_data *, const double *x, double *result, char *, int64_t *ifail) {
  *result = zem::s15::erf(*x);
  zem::succeed(ifail);
}
