/* g05kkc example: streams 2^100 values apart for Wichmann-Hill II and
 * the Mersenne Twister; skipping 2^10 equals skipping 1024. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

int main(void) {
  static int64_t state[1260], other[1260];
  int64_t seed[1] = {1762}, lstate, s;
  double x[2], y[2];
  Zem_Fail fail = ZEM_FAIL_INIT;
  const Zem_BaseRNG gens[2] = {Zem_WichmannHill_II, Zem_MersenneTwister};
  const char *names[2] = {"Wichmann-Hill II", "Mersenne Twister"};
  int g;

  printf("g05kkc example results\n\n");
  for (g = 0; g < 2; ++g) {
    lstate = 1260;
    g05kfc(gens[g], 0, seed, 1, state, &lstate, &fail);
    memcpy(other, state, sizeof state);
    for (s = 1; s <= 3; ++s) {
      zem_rand_skip_ahead_power2(100, state, &fail);
      if (fail.code != NE_NOERROR) {
        printf("Error from g05kkc:\n%s\n", fail.message);
        return 1;
      }
      g05sac(2, state, x, &fail);
      printf("%-16s block %ld:%10.6f%10.6f\n", names[g], (long)s, x[0], x[1]);
    }
    g05kkc(10, other, &fail);
    g05sac(2, other, x, &fail);
    lstate = 1260;
    g05kfc(gens[g], 0, seed, 1, state, &lstate, &fail);
    g05kjc(1024, state, &fail);
    g05sac(2, state, y, &fail);
    printf("%-16s 2^10 and 1024 agree: %s\n\n", names[g], x[0] == y[0] && x[1] == y[1] ? "yes" : "no");
  }
  return 0;
}
