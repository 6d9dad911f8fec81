/* s15aec example: the error function erf(x). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {-2.0, -0.5, 0.0, 1e-10, 0.5, 1.0, 2.0, 6.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s15aec example results\n\n");
  printf("     x           erf(x)\n");
  for (i = 0; i < 8; ++i) {
    const double y = s15aec(xs[i], &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s15aec:\n%s\n", fail.message);
      return 1;
    }
    printf("%7.2g  %22.15e\n", xs[i], y);
  }
  return 0;
}
