/* d01rmc example: 1/((1 + x) sqrt(x)) over (0, +inf), which is pi, and
   exp(-x^2) over (-inf, +inf), which is sqrt(pi). */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void f1(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx;
  for (i = 0; i < nx; i++) fv[i] = 1.0 / ((1.0 + x[i]) * sqrt(x[i]));
}

static void f2(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  comm->iuser[0] += nx;
  for (i = 0; i < nx; i++) fv[i] = exp(-x[i] * x[i]);
}

int main(void) {
  int64_t count = 0, iinfo[50];
  double result, abserr, rinfo[200];
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d01rmc example results\n\n");
  comm.iuser = &count;
  d01rmc(f1, 0.0, 1, 0.0, 1.0e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from d01rmc:\n%s\n", fail.message);
    return 1;
  }
  printf("1/((1+x)sqrt(x)) over (0,+inf): result = %.14f, abserr = %.2e\n", result, abserr);
  printf("  %d subintervals of (0,1], %d evaluations of f\n", (int)iinfo[0], (int)count);

  count = 0;
  d01rmc(f2, 0.0, 2, 0.0, 1.0e-10, 50, &result, &abserr, rinfo, iinfo, &comm, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from d01rmc:\n%s\n", fail.message);
    return 1;
  }
  printf("exp(-x^2) over (-inf,+inf):     result = %.14f, abserr = %.2e\n", result, abserr);
  printf("  %d subintervals of (0,1], %d evaluations of f\n", (int)iinfo[0], (int)count);
  return 0;
}
