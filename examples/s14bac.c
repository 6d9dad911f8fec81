/* s14bac example: the regularised incomplete gamma functions P(a, x) and
 * Q(a, x) = 1 - P(a, x). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double a[] = {2.0, 7.0, 0.5, 20.0, 1e-8, 100.0};
  static const double x[] = {3.0, 1.0, 99.0, 21.0, 1.0, 250.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s14bac example results\n\n");
  printf("      a          x             P(a,x)                  Q(a,x)\n");
  for (i = 0; i < 6; ++i) {
    double p, q;
    s14bac(a[i], x[i], 0.0, &p, &q, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14bac:\n%s\n", fail.message);
      return 1;
    }
    printf("%9.2e  %9.2e  %22.15e  %22.15e\n", a[i], x[i], p, q);
  }
  return 0;
}
