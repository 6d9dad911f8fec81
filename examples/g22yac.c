/* g22yac example: a formula parsed into a handle and printed under its
 * title; then a formula with an unclosed parenthesis. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *hform = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22yac example results\n\n");
  fflush(stdout);
  zem_model_formula(&hform, "(A + B@HELMERT + x)^2 - A:x CONTRAST = SUM LAST", &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from g22yac:\n%s\n", fail.message);
    return 1;
  }
  g22zmc(hform, "PRINT = 6", &fail);
  g22yac(&hform, "A + (B*C", &fail);
  printf("\n%s\n", fail.message);
  g22zac(&hform, &fail);
  return 0;
}
