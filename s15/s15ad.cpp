// s15ad: the complementary error function, erfc(x) = 1 - erf(x), computed
// directly (not as 1 - erf) so that it keeps full relative accuracy for large
// x, where erfc(x) ~ exp(-x^2) / (x sqrt(pi)) underflows only beyond x = 27.2.
// The kernel is the platform's erfc (s15/error_functions.h).
#include "s15/s15ad.h"

#include "s15/error_functions.h"

ZEM_ENGINE_LAYERS(s15ad, S15AD_ARGS)

ZEM_INTERNAL void s15adfn_(engine_data *, const double *x, double *result, char *, int64_t *ifail) {
  *ifail = 0;
  *result = zem::s15::erfc(*x);
}

ZEM_API double s15adf_(const double *x, int64_t *ifail) {
  zem::f_entry call("s15adf", {});
  double result = 0.0;
  s15adft_(&call.en_data, x, &result, call.errbuf, &call.status);
  call.finish(ifail);
  return result;
}

ZEM_API double s15adc(double x, Zem_Fail *fail) {
  zem::c_entry call("s15adc", {}, fail);
  double result = 0.0;
  s15adft_(&call.en_data, &x, &result, call.errbuf, &call.status);
  call.finish();
  return result;
}
