/* A null fail record and a failure: the message on stderr, then the
 * program ends with exit status 1. */
#include <stdio.h>
#include <zem.h>

static double f(double x, Zem_Comm *comm) {
  (void)comm;
  return x * x + 1.0;
}

int main(void) {
  double x;
  c05ayc(-1.0, 1.0, 1e-12, 0.0, f, &x, NULL, NULL);
  printf("not reached\n");
  return 0;
}
