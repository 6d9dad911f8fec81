/* s14adc example: scaled derivatives (-1)^(k+1) psi^(k)(x)/k!, k = n..n+m-1. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {0.1, 1.0, 2.5, 40.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double ans[4];
  int i, j;

  printf("s14adc example results\n\n");
  printf("     x       k=0            k=1            k=2            k=9\n");
  for (i = 0; i < 4; ++i) {
    s14adc(xs[i], 0, 3, ans, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14adc:\n%s\n", fail.message);
      return 1;
    }
    s14adc(xs[i], 9, 1, ans + 3, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14adc:\n%s\n", fail.message);
      return 1;
    }
    printf("%7.2f", xs[i]);
    for (j = 0; j < 4; ++j) printf("  %13.6e", ans[j]);
    printf("\n");
  }
  return 0;
}
