/* s30fac example: down-and-out and down-and-in calls with barrier 90, their
 * sum the European call, and a down-and-out barrier above the spot refused. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.5, 1.0};
  double pout[3 * 2], pin[3 * 2], pe[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30fac(Zem_ColMajor, Zem_Call, Zem_DownandOut, 3, 2, x, 100.0, 90.0, 0.0, t, 0.25, 0.05, 0.02, pout, 3, &fail);
  s30fac(Zem_ColMajor, Zem_Call, Zem_DownandIn, 3, 2, x, 100.0, 90.0, 0.0, t, 0.25, 0.05, 0.02, pin, 3, &fail);
  s30aac(Zem_ColMajor, Zem_Call, 3, 2, x, 100.0, t, 0.25, 0.05, 0.02, pe, 3, &fail);
  printf("Calls with barrier 90, s = 100, sigma = 0.25, r = 0.05, q = 0.02, no rebate\n");
  printf("  strike  expiry   down-out    down-in   out + in   European\n");
  for (i = 0; i < 6; ++i)
    printf("%8.2f  %6.2f  %9.6f  %9.6f  %9.6f  %9.6f\n", x[i % 3], t[i / 3], pout[i], pin[i], pout[i] + pin[i], pe[i]);
  s30fac(Zem_ColMajor, Zem_Call, Zem_DownandOut, 3, 2, x, 100.0, 105.0, 0.0, t, 0.25, 0.05, 0.02, pout, 3, &fail);
  printf("%s\n", fail.message);
  return 0;
}
