/* d01rjc example: the integral of log(x)/sqrt(x) over [0,1], which is -4. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void f(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx; /* count the evaluations */
  for (i = 0; i < nx; i++) fv[i] = log(x[i]) / sqrt(x[i]);
}

int main(void) {
  int64_t count = 0, iinfo[50];
  double result, abserr, rinfo[200];
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d01rjc example results\n\n");
  comm.iuser = &count;
  d01rjc(f, 0.0, 1.0, 0.0, 1.0e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from d01rjc:\n%s\n", fail.message);
    return 1;
  }
  printf("Integral of log(x)/sqrt(x) over [0,1]\n");
  printf("result  = %18.14f\n", result);
  printf("abserr  = %10.2e\n", abserr);
  printf("%d subintervals, %d evaluations of f\n", (int)iinfo[0], (int)count);

  /* With room for only four subintervals the limit is reached; result and
     abserr still hold the best estimate. */
  d01rjc(f, 0.0, 1.0, 0.0, 1.0e-10, 4, &result, &abserr, rinfo, iinfo, &comm, &fail);
  printf("\nWith maxsub = 4: result = %.8f, abserr = %.2e\n%s\n", result, abserr, fail.message);
  return 0;
}
