/* Client test of the g05 generator routines through the C interface:
 * length queries, first values of every generator, leap-frog and skip-ahead,
 * and every failure message, with the state left as it was.  The last call
 * passes a null fail record and so ends the program through the error exit. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

#define LS 1260

static const Zem_BaseRNG gens[6] = {Zem_Basic, Zem_WichmannHill_I, Zem_MersenneTwister,
                                    Zem_WichmannHill_II, Zem_ACORN, Zem_MRG32k3a};
static const char *names[6] = {"basic", "Wichmann-Hill I", "Mersenne Twister", "Wichmann-Hill II",
                               "ACORN", "MRG32k3a"};

static void show(const char *what, const Zem_Fail *fail) {
  printf("%s: code %d, errnum %ld\n%s\n", what, fail->code, (long)fail->errnum, fail->message);
}

static int init(Zem_BaseRNG genid, int64_t subid, int64_t seed, int64_t *state, int64_t *lstate) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t s[1];
  s[0] = seed;
  *lstate = LS;
  g05kfc(genid, subid, s, 1, state, lstate, &fail);
  if (fail.code != NE_NOERROR) show("init", &fail);
  return fail.code == NE_NOERROR;
}

int main(void) {
  static int64_t state[LS], copy[LS], other[LS];
  int64_t lstate, seed[3] = {1762, 0, 0};
  double x[12];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int g;

  printf("Length queries and first values\n");
  for (g = 0; g < 6; ++g) {
    lstate = 0;
    g05kfc(gens[g], 1, seed, 1, NULL, &lstate, &fail);
    printf("%-16s lstate %4ld code %d", names[g], (long)lstate, fail.code);
    g05kfc(gens[g], 1, seed, 1, state, &lstate, &fail);
    g05sac(3, state, x, &fail);
    printf("  %.17g %.17g %.17g\n", x[0], x[1], x[2]);
  }

  printf("\nLeap-frog: stream 2 of 3 is every third value from the second\n");
  init(Zem_MRG32k3a, 0, 5, state, &lstate);
  memcpy(copy, state, sizeof state);
  g05sac(9, state, x, &fail);
  g05khc(3, 2, copy, &fail);
  g05sac(3, copy, x + 9, &fail);
  printf("values 2, 5, 8: %.17g %.17g %.17g\n", x[1], x[4], x[7]);
  printf("stream 2 of 3:  %.17g %.17g %.17g\n", x[9], x[10], x[11]);

  printf("\nSkip-ahead: 2^10 values by g05kkc and by g05kjc\n");
  init(Zem_WichmannHill_II, 0, 5, state, &lstate);
  memcpy(copy, state, sizeof state);
  g05kkc(10, state, &fail);
  g05kjc(1024, copy, &fail);
  g05sac(2, state, x, &fail);
  g05sac(2, copy, x + 2, &fail);
  printf("%.17g %.17g\n%.17g %.17g\n", x[0], x[1], x[2], x[3]);

  printf("\nFailures of the initialisation\n");
  g05kfc((Zem_BaseRNG)0, 1, seed, 1, state, &lstate, &fail);
  show("genid", &fail);
  g05kfc(Zem_Basic, 1, seed, 0, state, &lstate, &fail);
  show("lseed 0", &fail);
  seed[0] = -3;
  g05kfc(Zem_Basic, 1, seed, 1, state, &lstate, &fail);
  show("seed -3", &fail);
  seed[0] = 1762;
  lstate = 16;
  g05kfc(Zem_Basic, 1, seed, 1, state, &lstate, &fail);
  show("lstate 16", &fail);
  seed[1] = 0;
  lstate = 100;
  g05kfc(Zem_ACORN, 1, seed, 2, state, &lstate, &fail);
  show("ACORN order 0", &fail);
  lstate = 10;
  g05kgc(Zem_MRG32k3a, 0, state, &lstate, &fail);
  show("g05kgc lstate 10", &fail);
  lstate = LS;
  g05kfc(Zem_Basic, 1, NULL, 1, state, &lstate, &fail);
  show("null seed", &fail);

  printf("\nFailures of the routines taking a state\n");
  init(Zem_ACORN, 0, 5, state, &lstate);
  memcpy(copy, state, sizeof state);
  g05khc(2, 1, state, &fail);
  show("leap-frog of ACORN", &fail);
  g05khc(0, 1, state, &fail);
  show("n 0", &fail);
  g05khc(3, 4, state, &fail);
  show("k 4 of 3", &fail);
  g05kjc(-1, state, &fail);
  show("skip -1", &fail);
  g05sac(-2, state, x, &fail);
  show("fill -2", &fail);
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

  /* A Mersenne Twister state without working room generates but does not
   * skip ahead. */
  lstate = 700;
  seed[0] = 5;
  g05kfc(Zem_MersenneTwister, 0, seed, 1, other, &lstate, &fail);
  printf("\nMersenne Twister with lstate 700: state(1) = %ld, code %d\n", (long)other[0], fail.code);
  g05kjc(5, other, &fail);
  show("g05kjc", &fail);
  g05kkc(5, other, &fail);
  show("g05kkc", &fail);
  g05sac(1, NULL, x, &fail);
  show("null state", &fail);

  printf("\nA null fail record ends the program on failure:\n");
  fflush(stdout);
  g05sac(-1, other, x, NULL);
  printf("not reached\n");
  return 0;
}
