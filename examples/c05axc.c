/* c05axc example: the zero of x^3 - 2x - 5 from x = 0 by continuation and
 * reverse communication, counting the requests of each kind. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  double x = 0.0, fx = 0.0, c[36];
  int64_t ind = 1;
  int counts[5] = {0, 0, 0, 0, 0};
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("c05axc example results\n\n");
  for (;;) {
    c05axc(&x, fx, 1e-12, Zem_Mixed, 1e-8, c, &ind, &fail);
    if (ind == 0) break;
    counts[ind]++;
    fx = x * x * x - 2.0 * x - 5.0;
  }
  if (fail.code != NE_NOERROR) {
    printf("Error from c05axc:\n%s\n", fail.message);
    return 1;
  }
  printf("Zero at x = %16.12f\n", x);
  printf("Requests: %d initial value, %d derivative estimate, %d continuation and final solve\n",
         counts[2], counts[3], counts[4]);
  return 0;
}
