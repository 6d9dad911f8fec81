/* s30qcc example: American puts by the closed-form approximation beside the
 * European puts, and a spot whose power s^beta is too large. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.5, 2.0};
  double pa[3 * 2], pe[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30qcc(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.3, 0.08, 0.0, pa, 3, &fail);
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.3, 0.08, 0.0, pe, 3, &fail);
  printf("Puts, s = 100, sigma = 0.3, r = 0.08, q = 0 (code %d)\n", fail.code);
  printf("  strike  expiry   American   European\n");
  for (i = 0; i < 6; ++i) printf("%8.2f  %6.2f  %9.6f  %9.6f\n", x[i % 3], t[i / 3], pa[i], pe[i]);
  s30qcc(Zem_ColMajor, Zem_Call, 3, 2, x, 1e150, t, 0.1, 0.01, 0.5, pa, 3, &fail);
  printf("%s\n", fail.message);
  return 0;
}
