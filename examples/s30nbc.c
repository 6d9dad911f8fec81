/* s30nbc example: Heston call prices and their sensitivities. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {95.0, 105.0};
  const double t[] = {1.0};
  double g[6][2];
  const char *names[6] = {"price", "delta", "gamma", "vega", "theta", "rho"};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int k;

  s30nbc(Zem_ColMajor, Zem_Call, 2, 1, x, 100.0, t, 0.3, 1.5, -0.7, 0.04, 0.06, 0.0, 0.03, 0.01, g[0], 2, g[1],
         g[2], g[3], g[4], g[5], &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30nbc failed:\n%s\n", fail.message);
    return 1;
  }
  printf("Heston call, s = 100, t = 1, r = 0.03, q = 0.01\n");
  printf("           x = 95          x = 105\n");
  for (k = 0; k < 6; ++k) printf("%-6s %15.8f %15.8f\n", names[k], g[k][0], g[k][1]);
  return 0;
}
