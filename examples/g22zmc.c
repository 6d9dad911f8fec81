/* g22zmc example: options of a formula handle set by long and short name,
 * read back, and two option strings that are refused. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *hform = NULL;
  int64_t ivalue, optype;
  double rvalue;
  char cvalue[40];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22zmc example results\n\n");
  g22yac(&hform, "A*B", &fail);
  zem_g22_optset(hform, "Contrast = Helmert", &fail);
  zem_g22_optset(hform, "EXPLICIT_MEAN = YES", &fail);
  g22znc(hform, "CONTRAST", &ivalue, &rvalue, cvalue, 40, &optype, &fail);
  printf("CONTRAST = %s\n", cvalue);
  g22znc(hform, "Explicit Mean", &ivalue, &rvalue, cvalue, 40, &optype, &fail);
  printf("EXPLICIT MEAN = %s\n", cvalue);
  g22zmc(hform, "CONTRAST = SUM MIDDLE", &fail);
  printf("\n%s\n", fail.message);
  g22zmc(hform, "FORMULA = A + B", &fail);
  printf("\n%s\n", fail.message);
  g22zac(&hform, &fail);
  return 0;
}
