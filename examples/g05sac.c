/* g05sac example: uniform numbers from each of the six base generators. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static int64_t state[1260];
  int64_t seed[1] = {1762}, lstate, i;
  double x[4];
  Zem_Fail fail = ZEM_FAIL_INIT;
  const Zem_BaseRNG gens[6] = {Zem_Basic, Zem_WichmannHill_I, Zem_MersenneTwister,
                               Zem_WichmannHill_II, Zem_ACORN, Zem_MRG32k3a};
  const char *names[6] = {"basic", "Wichmann-Hill I", "Mersenne Twister", "Wichmann-Hill II",
                          "ACORN", "MRG32k3a"};
  int g;

  printf("g05sac example results\n\n");
  for (g = 0; g < 6; ++g) {
    lstate = 1260;
    g05kfc(gens[g], 1, seed, 1, state, &lstate, &fail);
    zem_rand_uniform01(4, state, x, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from g05sac:\n%s\n", fail.message);
      return 1;
    }
    printf("%-16s", names[g]);
    for (i = 0; i < 4; ++i) printf("%10.6f", x[i]);
    printf("\n");
  }
  g05sac(-1, state, x, &fail);
  printf("\nWith n = -1:\n%s\n", fail.message);
  return 0;
}
