/* s14abc example: the logarithm of the gamma function, ln Gamma(x). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {1e-20, 0.5, 1.0, 1.5, 2.0, 3.5, 10.0, 1e3, 1e100, 1e305};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s14abc example results\n\n");
  printf("        x           ln Gamma(x)\n");
  for (i = 0; i < 10; ++i) {
    const double y = s14abc(xs[i], &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14abc:\n%s\n", fail.message);
      return 1;
    }
    printf("%12.4e  %23.15e\n", xs[i], y);
  }
  return 0;
}
