/* c05awc example: zeros found by continuation from starting points at which
 * Newton's method fails: atan(x) from 10 and exp(x) - 1e6 from 0 (Newton
 * diverges), x^3 - 2x - 5 from 0 (Newton wanders before it settles). */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static double f_atan(double x, Zem_Comm *comm) {
  comm->iuser[0]++;
  return atan(x);
}
static double f_cubic(double x, Zem_Comm *comm) {
  comm->iuser[0]++;
  return x * x * x - 2.0 * x - 5.0;
}
static double f_exp(double x, Zem_Comm *comm) {
  comm->iuser[0]++;
  return exp(x) - 1e6;
}

static void solve(const char *name, Zem_C05AW_Fun f, double x) {
  int64_t count = 0;
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x0 = x;
  comm.iuser = &count;
  c05awc(&x, 1e-12, 0.0, f, 1000, &comm, &fail);
  if (fail.code == NE_NOERROR)
    printf("  %-16s from %5.1f: zero at x = %16.12f, %3d evaluations\n", name, x0, x, (int)count);
  else
    printf("  %-16s from %5.1f:\n%s\n", name, x0, fail.message);
}

int main(void) {
  printf("c05awc example results\n\n");
  solve("atan(x)", f_atan, 10.0);
  solve("x^3 - 2x - 5", f_cubic, 0.0);
  solve("exp(x) - 1e6", f_exp, 0.0);
  return 0;
}
