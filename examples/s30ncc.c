/* s30ncc example: calls in Heston's model with a term structure of three
 * periods (0.25, 0.25 and 0.5 years) and expiry 1. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {90.0, 100.0, 110.0};
  const double ts[] = {0.25, 0.25, 0.5};
  const double alpha[] = {0.5, 0.4, 0.3}, lambda[] = {2.0, 1.5, 1.0}, corr[] = {-0.8, -0.7, -0.6};
  const double sigmat[] = {0.3, 0.25, 0.22};
  double p[3];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  s30ncc(Zem_Call, 3, 3, x, 102.0, 0.97, ts, 1.0, alpha, lambda, corr, sigmat, 0.04, p, &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30ncc failed:\n%s\n", fail.message);
    return 1;
  }
  printf("Term-structure Heston call, fwd = 102, disc = 0.97, t = 1, var0 = 0.04\n");
  for (i = 0; i < 3; ++i) printf("%8.2f  %11.6f\n", x[i], p[i]);
  return 0;
}
