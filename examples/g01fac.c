/* g01fac example: deviates of the standard Normal distribution. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const struct {
    Zem_TailProbability tail;
    const char *name;
    double p;
  } cases[] = {
      {Zem_LowerTail, "lower", 0.975},    {Zem_UpperTail, "upper", 0.025},
      {Zem_TwoTailSignif, "signif", 0.05}, {Zem_TwoTailConfid, "confid", 0.95},
      {Zem_LowerTail, "lower", 1e-300},
  };
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x;
  int i;

  printf("g01fac example results\n\n");
  printf(" tail        p         deviate\n");
  for (i = 0; i < 5; ++i) {
    x = g01fac(cases[i].tail, cases[i].p, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from g01fac:\n%s\n", fail.message);
      return 1;
    }
    printf(" %-7s %9.3g  %18.14f\n", cases[i].name, cases[i].p, x);
  }

  /* p must lie strictly between 0 and 1. */
  x = g01fac(Zem_LowerTail, 1.0, &fail);
  printf("\ng01fac(Zem_LowerTail, 1.0) = %.1f, with\n%s\n", x, fail.message);
  return 0;
}
