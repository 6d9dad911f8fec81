// s15ae: the error function erf(x) = (2/sqrt(pi)) * integral of exp(-t^2)
// from 0 to x; odd, with full relative accuracy near 0.  The kernel is the
// platform's erf (s15/error_functions.h).
#include "s15/s15ae.h"

#include "s15/error_functions.h"

ZEM_ENGINE_LAYERS(s15ae, S15AE_ARGS)

ZEM_INTERNAL void s15aefn_(engine_data *, const double *x, double *result, char *, int64_t *ifail) {
  *ifail = 0;
  *result = zem::s15::erf(*x);
}

ZEM_API double s15aef_(const double *x, int64_t *ifail) {
  zem::f_entry call("s15aef", {});
  double result = 0.0;
  s15aeft_(&call.en_data, x, &result, call.errbuf, &call.status);
  call.finish(ifail);
  return result;
}

ZEM_API double s15aec(double x, Zem_Fail *fail) {
  zem::c_entry call("s15aec", {}, fail);
  double result = 0.0;
  s15aeft_(&call.en_data, &x, &result, call.errbuf, &call.status);
  call.finish();
  return result;
}
