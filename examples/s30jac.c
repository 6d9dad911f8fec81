/* s30jac example: European call prices in Merton's jump-diffusion model for
 * three strikes and two expiries, stored column by column. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.5, 1.0};
  double p[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i, j;

  /* total volatility 0.25, one jump a year on average, 30% of the variance
   * from jumps */
  s30jac(Zem_ColMajor, Zem_Call, 3, 2, x, 100.0, t, 0.25, 0.05, 1.0, 0.3, p, 3, &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30jac failed:\n%s\n", fail.message);
    return 1;
  }
  printf("Jump-diffusion call, s = 100, sigma = 0.25, r = 0.05, lambda = 1, jvol = 0.3\n");
  printf("  strike   t = %4.2f     t = %4.2f\n", t[0], t[1]);
  for (i = 0; i < 3; ++i) {
    printf("%8.2f", x[i]);
    for (j = 0; j < 2; ++j) printf("  %11.6f", p[i + j * 3]);
    printf("\n");
  }
  return 0;
}
