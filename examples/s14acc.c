/* s14acc example: psi(x) - ln x. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {1e-5, 0.1, 0.5, 1.0, 2.5, 10.0, 1e3, 1e10};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s14acc example results\n\n");
  printf("        x          psi(x) - ln x\n");
  for (i = 0; i < 8; ++i) {
    const double y = s14acc(xs[i], &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14acc:\n%s\n", fail.message);
      return 1;
    }
    printf("%12.4e  %23.15e\n", xs[i], y);
  }
  return 0;
}
