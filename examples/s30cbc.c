/* s30cbc example: cash-or-nothing binary calls paying 10 with their
 * sensitivities. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.5};
  double p[3], delta[3], gamma[3], vega[3], theta[3], rho[3];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30cbc(Zem_ColMajor, Zem_Call, 3, 1, x, 100.0, t, 0.3, 0.04, 0.0, 10.0, p, 3, delta, gamma, vega, theta, rho,
         &fail);
  printf("Binary call paying 10, s = 100, t = 0.5, sigma = 0.3, r = 0.04, q = 0 (code %d)\n", fail.code);
  printf("  strike        price        delta        gamma         vega        theta          rho\n");
  for (i = 0; i < 3; ++i)
    printf("%8.2f %12.6f %12.6f %12.6f %12.6f %12.6f %12.6f\n", x[i], p[i], delta[i], gamma[i], vega[i], theta[i],
           rho[i]);
  return 0;
}
