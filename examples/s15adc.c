/* s15adc example: the complementary error function erfc(x). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double xs[] = {-10.0, -1.0, 0.0, 0.5, 1.0, 5.0, 10.0, 26.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s15adc example results\n\n");
  printf("     x           erfc(x)\n");
  for (i = 0; i < 8; ++i) {
    const double y = s15adc(xs[i], &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s15adc:\n%s\n", fail.message);
      return 1;
    }
    printf("%7.2f  %22.15e\n", xs[i], y);
  }
  return 0;
}
