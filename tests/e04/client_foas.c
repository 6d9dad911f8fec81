/* Client test of e04kfc as a C program uses it: a small bound-constrained
 * Rosenbrock problem with the iteration log, the results read back with
 * e04rxc, and the documented failures (model refused, nvar mismatch, user
 * stop through comm->flag and through inform, NaN objective), each leaving
 * the handle usable. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static int calls;
static int mode; /* 0 plain, 1 stop by flag at call 5, 2 inform at 5, 3 NaN at 5 */

static void objfun(int64_t n, const double x[], double *fx, int64_t *inform, Zem_Comm *comm) {
  double s = 0.0;
  int64_t i;
  for (i = 0; i + 1 < n; i += 2) s += 100.0 * pow(x[i + 1] - x[i] * x[i], 2) + pow(1.0 - x[i], 2);
  *fx = s;
  if (++calls == 5) {
    if (mode == 1) comm->flag = 42;
    if (mode == 2) *inform = -2;
    if (mode == 3) *fx = NAN;
  }
}

static void objgrd(int64_t n, const double x[], int64_t nnzfd, double fdx[], int64_t *inform, Zem_Comm *comm) {
  int64_t i;
  (void)nnzfd, (void)inform, (void)comm;
  for (i = 0; i + 1 < n; i += 2) {
    fdx[i] = -400.0 * (x[i + 1] - x[i] * x[i]) * x[i] - 2.0 * (1.0 - x[i]);
    fdx[i + 1] = 200.0 * (x[i + 1] - x[i] * x[i]);
  }
}

static void show(const char *what, const Zem_Fail *fail) {
  if (fail->code == NE_NOERROR)
    printf("%s: ok\n", what);
  else
    printf("%s: errnum %ld\n%s\n", what, (long)fail->errnum, fail->message);
}

int main(void) {
  void *h = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  Zem_Comm comm = {0};
  const int64_t idx[4] = {1, 2, 3, 4};
  const double bl[4] = {-2.0, -2.0, -2.0, -2.0}, bu[4] = {2.0, 0.5, 2.0, 2.0};
  double x[4] = {-1.2, 1.0, -1.2, 1.0}, u[4], rinfo[100], stats[100], obj;
  int m;

  e04rac(&h, 4, &fail);
  e04kfc(h, objfun, objgrd, NULL, 4, x, rinfo, stats, &comm, &fail);
  show("no objective", &fail);
  e04rgc(h, 4, idx, &fail);
  e04rhc(h, 4, bl, bu, &fail);
  e04kfc(h, objfun, objgrd, NULL, 3, x, rinfo, stats, &comm, &fail);
  show("nvar 3", &fail);
  e04zmc(h, "FOAS Print Frequency = 5", &fail);
  e04zmc(h, "Print Options = No", &fail);
  fflush(stdout);
  e04kfc(h, objfun, objgrd, NULL, 4, x, rinfo, stats, &comm, &fail);
  fflush(stdout);
  show("solve", &fail);
  printf("x = %.6f %.6f %.6f %.6f\n", x[0], x[1], x[2], x[3]);
  e04rxc(h, "DUAL VARIABLES", 0, 4, u, &fail);
  printf("multiplier of x2 <= 0.5: %.6f, of x4: %.6f\n", u[1], u[3]);
  e04rxc(h, "OBJECTIVE VALUE", 0, 1, &obj, &fail);
  printf("stored objective equals rinfo[0]: %s\n", obj == rinfo[0] ? "yes" : "no");

  e04zmc(h, "Print Level = 0", &fail);
  for (m = 1; m <= 3; ++m) {
    double y[4] = {-1.2, 1.0, -1.2, 1.0};
    calls = 0;
    mode = m;
    comm.flag = 0;
    e04kfc(h, objfun, objgrd, NULL, 4, y, rinfo, stats, &comm, &fail);
    show(m == 1 ? "stop by comm->flag" : m == 2 ? "stop by inform" : "NaN objective", &fail);
    e04zmc(h, "FOAS Memory = 3", &fail);
    show("  option set after it", &fail);
  }
  e04rzc(&h, &fail);
  return 0;
}
