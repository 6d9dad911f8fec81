/* g05skc example: Normal variates N(xmu, var) from a Mersenne Twister state. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  int64_t seed[1] = {1762543};
  int64_t state[1260];
  int64_t lstate = 1260;
  double x[10];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("g05skc example results\n\n");
  g05kfc(Zem_MersenneTwister, 1, seed, 1, state, &lstate, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from g05kfc:\n%s\n", fail.message);
    return 1;
  }
  /* Ten variates with mean 0.5 and variance 1.0. */
  g05skc(10, 0.5, 1.0, state, x, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from g05skc:\n%s\n", fail.message);
    return 1;
  }
  for (i = 0; i < 10; ++i) printf("%10.4f\n", x[i]);

  /* A negative variance is refused. */
  g05skc(10, 0.5, -1.0, state, x, &fail);
  printf("\nWith var = -1.0:\n%s\n", fail.message);
  return 0;
}
