/* Client test of the g05 generator routines through the C interface: the
 * failure messages, with the state left as it was (length queries, values,
 * leap-frog, skip-ahead, g05kfc's seed and g05sac's n are in the examples).
 * The last call passes a null fail record and so ends the program through
 * the error exit. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

#define LS 1260

static void show(const char *what, const Zem_Fail *fail) {
  printf("%s: code %d, errnum %ld\n%s\n", what, fail->code, (long)fail->errnum, fail->message);
}

int main(void) {
  static int64_t state[LS], copy[LS];
  int64_t lstate = LS, seed[1] = {1762};
  double x[3];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("Failures of the initialisation\n");
  g05kfc((Zem_BaseRNG)0, 1, seed, 1, state, &lstate, &fail);
  show("genid", &fail);
  g05kfc(Zem_Basic, 1, seed, 0, state, &lstate, &fail);
  show("lseed 0", &fail);
  lstate = 16;
  g05kfc(Zem_Basic, 1, seed, 1, state, &lstate, &fail);
  show("lstate 16", &fail);
  lstate = 10;
  g05kgc(Zem_MRG32k3a, 0, state, &lstate, &fail);
  show("g05kgc lstate 10", &fail);
  lstate = LS;
  g05kfc(Zem_Basic, 1, NULL, 1, state, &lstate, &fail);
  show("null seed", &fail);

  printf("\nFailures of the routines taking a state\n");
  lstate = LS;
  g05kfc(Zem_ACORN, 0, seed, 1, state, &lstate, &fail);
  memcpy(copy, state, sizeof state);
  g05khc(2, 1, state, &fail);
  show("leap-frog of ACORN", &fail);
  g05khc(0, 1, state, &fail);
  show("n 0", &fail);
  g05khc(3, 4, state, &fail);
  show("k 4 of 3", &fail);
  g05kjc(-1, state, &fail);
  show("skip -1", &fail);
  printf("state unchanged: %s\n", memcmp(state, copy, sizeof state) ? "no" : "yes");

  state[state[0] - 1] += 1; /* the trailing check word */
  memcpy(copy, state, sizeof state);
  g05sac(1, state, x, &fail);
  show("corrupted, g05sac", &fail);
  g05khc(2, 1, state, &fail);
  show("corrupted, g05khc", &fail);
  g05kkc(1, state, &fail);
  show("corrupted, g05kkc", &fail);
  printf("state unchanged: %s\n", memcmp(state, copy, sizeof state) ? "no" : "yes");

  lstate = 700;
  g05kfc(Zem_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  printf("\nMersenne Twister with lstate 700: state(1) = %ld, code %d\n", (long)state[0], fail.code);
  g05kjc(5, state, &fail);
  show("g05kjc", &fail);
  g05kkc(5, state, &fail);
  show("g05kkc", &fail);
  g05sac(1, NULL, x, &fail);
  show("null state", &fail);

  printf("\nA null fail record ends the program on failure:\n");
  fflush(stdout);
  g05sac(-1, state, x, NULL);
  printf("not reached\n");
  return 0;
}
