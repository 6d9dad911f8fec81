/* Zem chapter s15.  Included by zem.h. */

/* s15ad: the complementary error function erfc(x). */
double s15adc(double x, Zem_Fail *fail);
double s15adf_(const double *x, int64_t *ifail);
#define zem_erfc s15adc

/* s15ae: the error function erf(x). */
double s15aec(double x, Zem_Fail *fail);
double s15aef_(const double *x, int64_t *ifail);
#define zem_erf s15aec
