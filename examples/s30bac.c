/* s30bac example: floating-strike lookback calls and puts for three values
 * of the extreme reached so far and two expiries, and a put refused because
 * its maximum so far lies below the spot. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double smin[] = {80.0, 90.0, 100.0}, smax[] = {100.0, 110.0, 120.0};
  const double t[] = {0.5, 1.0};
  double p[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30bac(Zem_ColMajor, Zem_Call, 3, 2, smin, 100.0, t, 0.25, 0.05, 0.02, p, 3, &fail);
  printf("Lookback calls, s = 100, sigma = 0.25, r = 0.05, q = 0.02 (code %d)\n", fail.code);
  printf("  minimum    t = 0.5      t = 1.0\n");
  for (i = 0; i < 3; ++i) printf("%9.2f  %11.6f  %11.6f\n", smin[i], p[i], p[i + 3]);
  s30bac(Zem_ColMajor, Zem_Put, 3, 2, smax, 100.0, t, 0.25, 0.05, 0.02, p, 3, &fail);
  printf("Lookback puts (code %d)\n", fail.code);
  printf("  maximum    t = 0.5      t = 1.0\n");
  for (i = 0; i < 3; ++i) printf("%9.2f  %11.6f  %11.6f\n", smax[i], p[i], p[i + 3]);
  s30bac(Zem_ColMajor, Zem_Put, 3, 2, smin, 100.0, t, 0.25, 0.05, 0.02, p, 3, &fail);
  printf("%s\n", fail.message);
  return 0;
}
