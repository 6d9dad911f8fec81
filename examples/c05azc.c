/* c05azc example: the zero of exp(-x) - x in [0,1] by reverse communication. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

int main(void) {
  double x = 0.0, y = 1.0, fx = 0.0, c[10];
  int64_t ind = 1;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("c05azc example results\n\n");
  printf("  Iterate        x               y\n");
  for (int k = 1;; ++k) {
    c05azc(&x, &y, fx, 1e-5, Zem_Mixed, c, &ind, &fail);
    if (ind == 0) break;
    fx = exp(-x) - x;
    printf("  %4d    %14.8f  %14.8f\n", k, x, y);
  }
  if (fail.code == NE_NOERROR) {
    printf("\nZero at x = %12.5f\n", x);
  } else {
    printf("\nError from c05azc:\n%s\n", fail.message);
    if (fail.code == NE_PROBABLE_POLE || fail.code == NW_TOO_MUCH_ACC_REQUESTED)
      printf("Final bracket [%12.5f, %12.5f]\n", x, y);
  }
  return 0;
}
