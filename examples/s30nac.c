/* s30nac example: European call prices in Heston's stochastic-volatility
 * model for three strikes and two expiries, stored row by row. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double t[] = {0.5, 1.0};
  double p[3 * 2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i, j;

  /* sigmav 0.3, kappa 1.5, corr -0.7, var0 0.04, eta 0.06, grisk 0 */
  s30nac(Zem_RowMajor, Zem_Call, 3, 2, x, 100.0, t, 0.3, 1.5, -0.7, 0.04, 0.06, 0.0, 0.03, 0.01, p, 2, &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30nac failed:\n%s\n", fail.message);
    return 1;
  }
  printf("Heston call, s = 100, r = 0.03, q = 0.01\n");
  printf("  strike   t = %4.2f     t = %4.2f\n", t[0], t[1]);
  for (i = 0; i < 3; ++i) {
    printf("%8.2f", x[i]);
    for (j = 0; j < 2; ++j) printf("  %11.6f", p[i * 2 + j]);
    printf("\n");
  }
  return 0;
}
