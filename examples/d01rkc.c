/* d01rkc example: a smooth peak, 1/(1 + (230x - 30)^2) over [0,1], with each
   of the six Gauss-Kronrod pairs. The integral is (atan(200) + atan(30))/230. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void f(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx;
  for (i = 0; i < nx; i++) fv[i] = 1.0 / (1.0 + (230.0 * x[i] - 30.0) * (230.0 * x[i] - 30.0));
}

int main(void) {
  int64_t key, count, iinfo[100];
  double result, abserr, rinfo[400];
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d01rkc example results\n\n");
  printf("exact   = %18.15f\n\n", (atan(200.0) + atan(30.0)) / 230.0);
  printf("key        result            abserr  subintervals  evaluations\n");
  comm.iuser = &count;
  for (key = 1; key <= 6; key++) {
    count = 0;
    d01rkc(f, 0.0, 1.0, 0.0, 1.0e-12, key, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from d01rkc:\n%s\n", fail.message);
      return 1;
    }
    printf("%3d  %18.15f  %10.2e  %12d  %11d\n", (int)key, result, abserr, (int)iinfo[0], (int)count);
  }
  d01rkc(f, 0.0, 1.0, 0.0, 1.0e-12, 7, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
  printf("\nWith key = 7:\n%s\n", fail.message);
  return 0;
}
