/* A user function stops the solver through the comm record's flag. */
#include <stdio.h>
#include <zem.h>

static double f(double x, Zem_Comm *comm) {
  if (++comm->iuser[0] == 3) comm->flag = 7;
  return x * x * x - 2.0;
}

int main(void) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t count = 0;
  Zem_Comm comm = {0, NULL, NULL, NULL};
  double x = 0.0;
  comm.iuser = &count;
  c05ayc(0.0, 2.0, 1e-12, 0.0, f, &x, &comm, &fail);
  printf("evaluations %lld, code %d, errnum %lld, flag %lld\n%s\n", (long long)count, fail.code,
         (long long)fail.errnum, (long long)comm.flag, fail.message);
  printf("x is the point of the last evaluation: %s\n", x != 0.0 && x != 2.0 ? "yes" : "no");
  return 0;
}
