/* Client test: g05skc as a C99 program uses it, from the basic generator. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

int main(void) {
  int64_t seed[1] = {1762543}, state[17], saved[17], lstate = 17;
  double x[5];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  g05kfc(Zem_Basic, 0, seed, 1, state, &lstate, &fail);
  g05skc(5, 10.0, 4.0, state, x, &fail);
  printf("N(10, 4):");
  for (i = 0; i < 5; ++i) printf(" %.15g", x[i]);
  printf("\ncode %d\n", fail.code);

  memcpy(saved, state, sizeof state);
  g05skc(5, -2.5, 0.0, state, x, &fail);
  printf("var = 0:");
  for (i = 0; i < 5; ++i) printf(" %g", x[i]);
  printf("\nstate unchanged: %s, code %d\n", memcmp(saved, state, sizeof state) == 0 ? "yes" : "no", fail.code);
  g05skc(0, 0.0, 1.0, state, NULL, &fail);
  printf("n = 0 with x NULL: code %d, state unchanged: %s\n", fail.code,
         memcmp(saved, state, sizeof state) == 0 ? "yes" : "no");

  g05skc(-3, 0.0, 1.0, state, x, &fail);
  printf("%s\nerrnum %lld\n", fail.message, (long long)fail.errnum);
  state[16] = 0; /* break the trailing check word */
  g05skc(5, 0.0, 1.0, state, x, &fail);
  printf("%s\nerrnum %lld\n", fail.message, (long long)fail.errnum);
  g05skc(5, 0.0, 1.0, NULL, x, &fail);
  printf("%s\n", fail.message);
  g05skc(5, 0.0, 1.0, state, NULL, &fail);
  printf("%s\n", fail.message);
  return 0;
}
