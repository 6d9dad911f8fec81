/* s14afc example: psi^(k)(z) for complex z. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const Zem_Complex zs[] = {{1.0, 1.0}, {-2.5, 0.5}, {0.5, -3.0}, {30.0, 10.0}};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;
  int64_t k;

  printf("s14afc example results\n\n");
  printf("        z            k             psi^(k)(z)\n");
  for (i = 0; i < 4; ++i) {
    for (k = 0; k <= 2; k += 2) {
      const Zem_Complex w = s14afc(zs[i], k, &fail);
      if (fail.code != NE_NOERROR) {
        printf("Error from s14afc:\n%s\n", fail.message);
        return 1;
      }
      printf("(%6.2f,%6.2f)  %2lld  (%22.14e,%22.14e)\n", zs[i].re, zs[i].im, (long long)k, w.re, w.im);
    }
  }
  return 0;
}
