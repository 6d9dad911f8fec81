/* s30abc example: a European put with its eleven sensitivities, for two
 * strikes and one expiry. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {95.0, 105.0};
  const double t[] = {0.75};
  double p[2], g[11][2];
  const char *name[] = {"delta", "gamma", "vega", "theta", "rho", "vanna", "charm", "speed", "colour", "zomma", "vomma"};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i, k;

  s30abc(Zem_ColMajor, Zem_Put, 2, 1, x, 100.0, t, 0.3, 0.04, 0.01, p, 2, g[0], g[1], g[2], g[3], g[4], g[5],
         g[6], g[7], g[8], g[9], g[10], &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30abc failed:\n%s\n", fail.message);
    return 1;
  }
  printf("European put, s = 100, t = 0.75, sigma = 0.3, r = 0.04, q = 0.01\n");
  printf("%-8s %14.6e %14.6e\n", "strike", x[0], x[1]);
  printf("%-8s %14.6e %14.6e\n", "price", p[0], p[1]);
  for (k = 0; k < 11; ++k) {
    printf("%-8s", name[k]);
    for (i = 0; i < 2; ++i) printf(" %14.6e", g[k][i]);
    printf("\n");
  }
  return 0;
}
