/* c05ayc example: the zero of exp(-x) - x in [0,1]. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static double f(double x, Zem_Comm *comm) {
  comm->iuser[0]++; /* count the evaluations */
  return exp(-x) - x;
}

int main(void) {
  int64_t count = 0;
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x;

  printf("c05ayc example results\n\n");
  comm.iuser = &count;
  c05ayc(0.0, 1.0, 1e-10, 0.0, f, &x, &comm, &fail);
  if (fail.code == NE_NOERROR) {
    printf("Zero at x = %12.8f after %d evaluations\n", x, (int)count);
  } else {
    printf("Error from c05ayc:\n%s\n", fail.message);
    return 1;
  }

  /* An interval without a sign change: the fail record says so. */
  c05ayc(2.0, 3.0, 1e-10, 0.0, f, &x, &comm, &fail);
  printf("\nWith [2,3]:\n%s\n", fail.message);
  return 0;
}
