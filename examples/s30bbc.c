/* s30bbc example: a floating-strike lookback call with its sensitivities,
 * and r = q refused. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double sm[] = {90.0, 100.0};
  const double t[] = {1.0};
  double p[2], delta[2], gamma[2], vega[2], theta[2], rho[2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30bbc(Zem_ColMajor, Zem_Call, 2, 1, sm, 100.0, t, 0.3, 0.04, 0.01, p, 2, delta, gamma, vega, theta, rho, &fail);
  printf("Lookback call, s = 100, t = 1, sigma = 0.3, r = 0.04, q = 0.01 (code %d)\n", fail.code);
  printf(" minimum        price        delta        gamma         vega        theta          rho\n");
  for (i = 0; i < 2; ++i)
    printf("%8.2f %12.6f %12.6f %12.6f %12.6f %12.6f %12.6f\n", sm[i], p[i], delta[i], gamma[i], vega[i], theta[i],
           rho[i]);
  s30bbc(Zem_ColMajor, Zem_Call, 2, 1, sm, 100.0, t, 0.3, 0.03, 0.03, p, 2, delta, gamma, vega, theta, rho, &fail);
  printf("%s\n", fail.message);
  return 0;
}
