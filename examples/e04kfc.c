/* e04kfc example: an extended Rosenbrock problem with 100000 variables and
 * simple bounds, solved by the first-order active-set method.  Every second
 * variable is bounded above by 0.5, which is active at the solution. */
#include <stdio.h>
#include <stdlib.h>
#include <zem.h>

static void objfun(int64_t nvar, const double x[], double *fx, int64_t *inform, Zem_Comm *comm) {
  double s = 0.0;
  int64_t i;
  (void)inform;
  (void)comm;
  for (i = 0; i + 1 < nvar; i += 2) {
    const double a = x[i + 1] - x[i] * x[i], b = 1.0 - x[i];
    s += 100.0 * a * a + b * b;
  }
  *fx = s;
}

static void objgrd(int64_t nvar, const double x[], int64_t nnzfd, double fdx[], int64_t *inform, Zem_Comm *comm) {
  int64_t i;
  (void)nnzfd;
  (void)inform;
  (void)comm;
  for (i = 0; i + 1 < nvar; i += 2) {
    const double a = x[i + 1] - x[i] * x[i];
    fdx[i] = -400.0 * a * x[i] - 2.0 * (1.0 - x[i]);
    fdx[i + 1] = 200.0 * a;
  }
}

int main(void) {
  enum { n = 100000 };
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  double *x = malloc(n * sizeof *x), *bl = malloc(n * sizeof *bl), *bu = malloc(n * sizeof *bu);
  double *u = malloc(n * sizeof *u);
  int64_t *idx = malloc(n * sizeof *idx);
  double rinfo[100], stats[100];
  int64_t i;

  printf("e04kfc example results\n");
  fflush(stdout);
  for (i = 0; i < n; ++i) {
    idx[i] = i + 1;
    x[i] = i % 2 ? 1.0 : -1.2;
    bl[i] = -10.0;
    bu[i] = i % 2 ? 0.5 : 10.0;
  }
  e04rac(&handle, n, &fail);
  e04rgc(handle, n, idx, &fail);
  e04rhc(handle, n, bl, bu, &fail);
  e04zmc(handle, "Print Level = 1", &fail);
  e04zmc(handle, "FOAS Stop Tolerance = 1.0e-8", &fail);
  e04kfc(handle, objfun, objgrd, NULL, n, x, rinfo, stats, NULL, &fail);
  if (fail.code != NE_NOERROR) {
    printf("e04kfc failed:\n%s\n", fail.message);
    return 1;
  }
  e04rxc(handle, "DUAL VARIABLES", 0, n, u, &fail);
  printf("\nFirst pair of the solution:  x1 = %.8f  x2 = %.8f\n", x[0], x[1]);
  printf("Multiplier of the bound x2 <= 0.5: %.6f\n", u[1]);
  printf("Objective: %.8f  (%ld pairs)\n", rinfo[0], (long)(n / 2));
  e04rzc(&handle, &fail);
  free(x), free(bl), free(bu), free(u), free(idx);
  return 0;
}
