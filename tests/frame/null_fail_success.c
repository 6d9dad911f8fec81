/* A null fail record and success: nothing printed, no termination. */
#include <stdio.h>
#include <zem.h>

static double f(double x, Zem_Comm *comm) {
  (void)comm;
  return x - 0.25;
}

int main(void) {
  double x;
  c05ayc(0.0, 1.0, 1e-12, 0.0, f, &x, NULL, NULL);
  printf("x = %.17g, control returned\n", x);
  return 0;
}
