/* g05kgc example: a non-repeatable state for MRG32k3a.  The numbers differ
 * from run to run, so the example prints only what does not. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  int64_t state[61], lstate = 0, i, inside = 0;
  double x[1000], sum = 0.0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g05kgc example results\n\n");
  g05kgc(Zem_MRG32k3a, 0, state, &lstate, &fail);
  printf("Required length of state: %ld\n", (long)lstate);
  zem_rand_init_nonrepeatable(Zem_MRG32k3a, 0, state, &lstate, &fail);
  g05sac(1000, state, x, &fail);
  for (i = 0; i < 1000; ++i) {
    inside += x[i] > 0.0 && x[i] < 1.0;
    sum += x[i];
  }
  printf("Values strictly inside (0,1): %ld of 1000\n", (long)inside);
  printf("Mean within 0.05 of 1/2: %s\n", sum / 1000 > 0.45 && sum / 1000 < 0.55 ? "yes" : "no");
  return 0;
}
