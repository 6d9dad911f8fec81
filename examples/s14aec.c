/* s14aec example: psi^(k)(x), the derivatives of the psi function. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {-2.5, 0.5, 1.0, 3.75, 100.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;
  int64_t k;

  printf("s14aec example results\n\n");
  printf("     x     k        psi^(k)(x)\n");
  for (i = 0; i < 5; ++i) {
    for (k = 0; k <= 6; k += 3) {
      const double y = s14aec(xs[i], k, &fail);
      if (fail.code != NE_NOERROR) {
        printf("Error from s14aec:\n%s\n", fail.message);
        return 1;
      }
      printf("%8.2f  %2lld  %23.15e\n", xs[i], (long long)k, y);
    }
  }
  return 0;
}
