/* g05kfc example: a repeatable state for the Mersenne Twister, its length
 * asked for first, then five uniform numbers. */
#include <stdio.h>
#include <stdlib.h>
#include <zem.h>

int main(void) {
  int64_t seed[1] = {1762}, lstate = 0, i;
  int64_t *state;
  double x[5];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g05kfc example results\n\n");
  /* lstate <= 0: the required length comes back in lstate. */
  g05kfc(Zem_MersenneTwister, 0, seed, 1, NULL, &lstate, &fail);
  printf("Required length of state: %ld\n", (long)lstate);
  state = malloc((size_t)lstate * sizeof *state);
  zem_rand_init_repeatable(Zem_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from g05kfc:\n%s\n", fail.message);
    return 1;
  }
  g05sac(5, state, x, &fail);
  for (i = 0; i < 5; ++i) printf("%10.6f\n", x[i]);

  /* A non-positive seed cannot seed a generator. */
  seed[0] = 0;
  g05kfc(Zem_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  printf("\nWith seed 0:\n%s\n", fail.message);
  free(state);
  return 0;
}
