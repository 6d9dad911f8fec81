/* d01bdc example: exp(-x^2) over [-2,2] by Patterson's nested rules, at two
   tolerances; then 1/sqrt(x) over [0,1], beyond what 87 points can do. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void f(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx;
  for (i = 0; i < nx; i++) fv[i] = exp(-x[i] * x[i]);
}

static void g(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx;
  for (i = 0; i < nx; i++) fv[i] = 1.0 / sqrt(x[i]);
}

int main(void) {
  int64_t count;
  double result, abserr, epsrel[2] = {1.0e-6, 1.0e-13};
  int k;
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d01bdc example results\n\n");
  comm.iuser = &count;
  printf("exact   = %18.15f\n", sqrt(4.0 * atan(1.0)) * erf(2.0));
  for (k = 0; k < 2; k++) {
    count = 0;
    d01bdc(f, -2.0, 2.0, 0.0, epsrel[k], &result, &abserr, &comm, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from d01bdc:\n%s\n", fail.message);
      return 1;
    }
    printf("epsrel = %.0e: result = %18.15f, abserr = %.2e, %d points\n", epsrel[k], result, abserr, (int)count);
  }

  count = 0;
  d01bdc(g, 0.0, 1.0, 0.0, 1.0e-10, &result, &abserr, &comm, &fail);
  printf("\n1/sqrt(x) over [0,1]: result = %.6f, abserr = %.2e, %d points\n%s\n", result, abserr, (int)count,
         fail.message);
  return 0;
}
