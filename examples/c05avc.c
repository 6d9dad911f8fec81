/* c05avc example: an interval on which exp(-x) - x changes sign, searched
 * from x = 3 with step 0.5 inside [0,10] by reverse communication (the walk
 * goes up to the bound first, then back from x = 3); then the
 * zero on it with c05azc, started from the values the search left. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

int main(void) {
  double x = 3.0, y = 0.0, fx = 0.0, c[12], cz[10];
  int64_t ind = 1;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("c05avc example results\n\n");
  printf("  ind        x            f(x)\n");
  for (;;) {
    c05avc(&x, fx, 0.5, 0.0, 10.0, &y, c, &ind, &fail);
    if (ind == 0) break;
    fx = exp(-x) - x;
    printf("  %3d  %10.4f  %14.8f\n", (int)ind, x, fx);
  }
  if (fail.code != NE_NOERROR) {
    printf("Error from c05avc:\n%s\n", fail.message);
    return 1;
  }
  printf("\nSign change between x = %.4f and y = %.4f\n", x, y);

  /* f(x) is in fx and f(y) in c[0]: c05azc can start with ind = -1. */
  cz[0] = c[0];
  ind = -1;
  for (;;) {
    c05azc(&x, &y, fx, 1e-10, Zem_Absolute, cz, &ind, &fail);
    if (ind == 0) break;
    fx = exp(-x) - x;
  }
  printf("Zero at x = %12.8f\n", x);
  return 0;
}
