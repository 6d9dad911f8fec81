/* s14agc example: ln Gamma(z) for complex z. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const Zem_Complex zs[] = {{0.5, 0.0}, {1.0, 1.0}, {-2.5, 0.0}, {-2.5, 1e-3}, {3.0, -4.0}, {100.0, 50.0}};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s14agc example results\n\n");
  printf("        z                       ln Gamma(z)\n");
  for (i = 0; i < 6; ++i) {
    const Zem_Complex w = s14agc(zs[i], &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14agc:\n%s\n", fail.message);
      return 1;
    }
    printf("(%7.2f,%8.3f)  (%22.14e,%22.14e)\n", zs[i].re, zs[i].im, w.re, w.im);
  }
  return 0;
}
