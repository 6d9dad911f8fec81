/* Writes the stream of one g05 base generator to standard output as raw
 * 32-bit words (w = floor(u 2^32) of each uniform u), for dieharder's
 * stdin_input_raw generator.  Usage: g05_stream genid [subid [seed]]
 * Runs until the reader closes the pipe.  Built and run by
 * tools/g05_dieharder.sh; not part of the test suite. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <zem.h>

int main(int argc, char **argv) {
  static const Zem_BaseRNG gens[7] = {Zem_Basic, Zem_Basic, Zem_WichmannHill_I, Zem_MersenneTwister,
                                      Zem_WichmannHill_II, Zem_ACORN, Zem_MRG32k3a};
  static int64_t state[1260];
  static double x[65536];
  static uint32_t w[65536];
  int64_t genid = argc > 1 ? atoll(argv[1]) : 1, subid = argc > 2 ? atoll(argv[2]) : 0;
  int64_t seed[1], lstate = 1260, i;
  Zem_Fail fail = ZEM_FAIL_INIT;
  seed[0] = argc > 3 ? atoll(argv[3]) : 1762;
  if (genid < 1 || genid > 6) return 2;
  g05kfc(gens[genid], subid, seed, 1, state, &lstate, &fail);
  if (fail.code != NE_NOERROR) return 1;
  for (;;) {
    g05sac(65536, state, x, &fail);
    for (i = 0; i < 65536; ++i) w[i] = (uint32_t)(x[i] * 4294967296.0);
    if (fwrite(w, sizeof w[0], 65536, stdout) != 65536) return 0;
  }
}
