/* s14aac example: the gamma function Gamma(x). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {-2.5, -0.5, 1e-10, 0.5, 1.0, 1.5, 5.0, 10.1, 100.0, 170.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s14aac example results\n\n");
  printf("        x             Gamma(x)\n");
  for (i = 0; i < 10; ++i) {
    const double y = s14aac(xs[i], &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14aac:\n%s\n", fail.message);
      return 1;
    }
    printf("%12.4e  %23.15e\n", xs[i], y);
  }
  return 0;
}
