/* c05auc example: the zero of exp(-x) - x near x = 1, searched with step
 * -0.1 inside [-10,10] (the search walks first in the direction of h, as far
 * as the bound, so h points to where the zero is expected); then a function
 * without a zero. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static double f(double x, Zem_Comm *comm) {
  comm->iuser[0]++; /* count the evaluations */
  return exp(-x) - x;
}

static double g(double x, Zem_Comm *comm) {
  (void)comm;
  return x * x + 1.0;
}

int main(void) {
  int64_t count = 0;
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = 1.0;

  printf("c05auc example results\n\n");
  comm.iuser = &count;
  c05auc(&x, -0.1, 1e-10, 0.0, f, -10.0, 10.0, &comm, &fail);
  if (fail.code == NE_NOERROR) {
    printf("Zero at x = %12.8f after %d evaluations\n", x, (int)count);
  } else {
    printf("Error from c05auc:\n%s\n", fail.message);
    return 1;
  }

  /* x^2 + 1 has no real zero: the search fails and says how to go on. */
  x = 0.0;
  c05auc(&x, 0.5, 1e-10, 0.0, g, -5.0, 5.0, &comm, &fail);
  printf("\nWith x^2 + 1:\n%s\nx = %g (the start point)\n", fail.message, x);
  return 0;
}
