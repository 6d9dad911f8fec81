/* d01ajc example: the integral of 1/sqrt(x) + log(x) over [0,1], which is 1,
   with a scalar integrand and caller workspace. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static double f(double x, Zem_Comm *comm) {
  comm->iuser[0]++;
  return 1.0 / sqrt(x) + log(x);
}

int main(void) {
  int64_t count = 0, iw[100];
  double result, abserr, w[400];
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d01ajc example results\n\n");
  comm.iuser = &count;
  d01ajc(f, 0.0, 1.0, 0.0, 1.0e-10, &result, &abserr, w, 400, iw, 100, &comm, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from d01ajc:\n%s\n", fail.message);
    return 1;
  }
  printf("result  = %18.14f\n", result);
  printf("abserr  = %10.2e\n", abserr);
  printf("%d subintervals, %d evaluations of f\n", (int)iw[0], (int)count);

  /* Too little workspace. */
  d01ajc(f, 0.0, 1.0, 0.0, 1.0e-10, &result, &abserr, w, 3, iw, 100, &comm, &fail);
  printf("\nWith lw = 3:\n%s\n", fail.message);
  return 0;
}
