/* s30cac example: cash-or-nothing binary calls paying 10 for three strikes
 * and two expiries. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.25, 1.0};
  double p[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30cac(Zem_ColMajor, Zem_Call, 3, 2, x, 100.0, t, 0.3, 0.04, 0.0, 10.0, p, 3, &fail);
  printf("Binary call paying 10, s = 100, sigma = 0.3, r = 0.04, q = 0 (code %d)\n", fail.code);
  printf("  strike     t = 0.25     t = 1.00\n");
  for (i = 0; i < 3; ++i) printf("%8.2f  %11.8f  %11.8f\n", x[i], p[i], p[i + 3]);
  s30cac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.3, 0.04, 0.0, -1.0, p, 3, &fail);
  printf("%s\n", fail.message);
  return 0;
}
