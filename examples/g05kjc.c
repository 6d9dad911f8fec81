/* g05kjc example: independent blocks of one MRG32k3a stream for parallel
 * workers; worker w skips ahead by w * 10^12 values. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

int main(void) {
  int64_t seed[1] = {1762}, base[61], state[61], lstate = 61, w, i;
  double x[3];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g05kjc example results\n\n");
  g05kfc(Zem_MRG32k3a, 0, seed, 1, base, &lstate, &fail);
  for (w = 0; w < 4; ++w) {
    memcpy(state, base, sizeof state);
    zem_rand_skip_ahead(w * 1000000000000, state, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from g05kjc:\n%s\n", fail.message);
      return 1;
    }
    g05sac(3, state, x, &fail);
    printf("Worker %ld:", (long)w);
    for (i = 0; i < 3; ++i) printf("%10.6f", x[i]);
    printf("\n");
  }
  /* Skipping 5 values equals drawing them. */
  memcpy(state, base, sizeof state);
  g05kjc(5, state, &fail);
  g05sac(1, state, x, &fail);
  printf("\nValue 6 after skipping 5: %10.6f\n", x[0]);
  memcpy(state, base, sizeof state);
  for (i = 0; i < 6; ++i) g05sac(1, state, x, &fail);
  printf("Value 6 after drawing 5:  %10.6f\n", x[0]);
  return 0;
}
