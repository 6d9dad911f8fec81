/* d01rlc example: x^3 log|(x^2 - 1)(x^2 - 2)| over [0,3], with break points at
   the two singularities 1 and sqrt(2). The integral is
   61 log(2) + (77/4) log(7) - 27. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void f(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx;
  for (i = 0; i < nx; i++) fv[i] = x[i] * x[i] * x[i] * log(fabs((x[i] * x[i] - 1.0) * (x[i] * x[i] - 2.0)));
}

int main(void) {
  int64_t count = 0, iinfo[100];
  double result, abserr, rinfo[400];
  double points[2];
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d01rlc example results\n\n");
  points[0] = 1.0;
  points[1] = sqrt(2.0);
  comm.iuser = &count;
  d01rlc(f, 0.0, 3.0, 2, points, 0.0, 1.0e-10, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from d01rlc:\n%s\n", fail.message);
    return 1;
  }
  printf("exact   = %18.14f\n", 61.0 * log(2.0) + 77.0 / 4.0 * log(7.0) - 27.0);
  printf("result  = %18.14f\n", result);
  printf("abserr  = %10.2e\n", abserr);
  printf("%d subintervals, %d evaluations of f\n", (int)iinfo[0], (int)count);

  points[1] = 3.5;
  d01rlc(f, 0.0, 3.0, 2, points, 0.0, 1.0e-10, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
  printf("\nWith a break point at 3.5:\n%s\n", fail.message);
  return 0;
}
