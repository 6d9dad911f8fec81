/* s30aac example: European call prices for three strikes and two expiries,
 * stored row by row (one row per strike). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.5, 1.0};
  double p[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i, j;

  s30aac(Zem_RowMajor, Zem_Call, 3, 2, x, 100.0, t, 0.25, 0.05, 0.02, p, 2, &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30aac failed:\n%s\n", fail.message);
    return 1;
  }
  printf("European call, s = 100, sigma = 0.25, r = 0.05, q = 0.02\n");
  printf("  strike   t = %4.2f     t = %4.2f\n", t[0], t[1]);
  for (i = 0; i < 3; ++i) {
    printf("%8.2f", x[i]);
    for (j = 0; j < 2; ++j) printf("  %11.6f", p[i * 2 + j]);
    printf("\n");
  }
  return 0;
}
