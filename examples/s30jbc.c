/* s30jbc example: a jump-diffusion call and its sensitivities. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const double x[] = {95.0, 105.0};
  const double t[] = {0.75};
  double g[12][2];
  const char *names[12] = {"price", "delta", "gamma", "vega",  "theta", "rho",
                           "vanna", "charm", "speed", "colour", "zomma", "vomma"};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int k;

  s30jbc(Zem_ColMajor, Zem_Call, 2, 1, x, 100.0, t, 0.3, 0.04, 2.0, 0.4, g[0], 2, g[1], g[2], g[3], g[4], g[5],
         g[6], g[7], g[8], g[9], g[10], g[11], &fail);
  if (fail.code != NE_NOERROR) {
    printf("s30jbc failed:\n%s\n", fail.message);
    return 1;
  }
  printf("Jump-diffusion call, s = 100, t = 0.75, sigma = 0.3, r = 0.04, lambda = 2, jvol = 0.4\n");
  printf("            x = 95          x = 105\n");
  for (k = 0; k < 12; ++k) printf("%-7s %15.8f %15.8f\n", names[k], g[k][0], g[k][1]);
  return 0;
}
