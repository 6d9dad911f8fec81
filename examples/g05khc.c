/* g05khc example: three consumers share one Wichmann-Hill II stream by
 * leap-frog; consumer k gets values k, k+3, k+6, ... */
#include <stdio.h>
#include <string.h>
#include <zem.h>

int main(void) {
  int64_t seed[1] = {1762}, base[29], state[29], lstate = 29, k, i;
  double x[12];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g05khc example results\n\n");
  g05kfc(Zem_WichmannHill_II, 0, seed, 1, base, &lstate, &fail);
  memcpy(state, base, sizeof state);
  g05sac(12, state, x, &fail);
  printf("The stream:\n");
  for (i = 0; i < 12; ++i) printf("%9.6f%s", x[i], i % 6 == 5 ? "\n" : "");
  for (k = 1; k <= 3; ++k) {
    memcpy(state, base, sizeof state);
    zem_rand_leap_frog(3, k, state, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from g05khc:\n%s\n", fail.message);
      return 1;
    }
    g05sac(4, state, x, &fail);
    printf("Consumer %ld:", (long)k);
    for (i = 0; i < 4; ++i) printf("%9.6f", x[i]);
    printf("\n");
  }
  return 0;
}
