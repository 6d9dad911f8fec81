/* g01eac example: tail probabilities of the standard Normal distribution. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const struct {
    Zem_TailProbability tail;
    const char *name;
    double x;
  } cases[] = {
      {Zem_LowerTail, "lower", 1.96},       {Zem_UpperTail, "upper", 1.96},
      {Zem_TwoTailSignif, "signif", 1.96},  {Zem_TwoTailConfid, "confid", 1.96},
      {Zem_UpperTail, "upper", 10.0},       {Zem_UpperTail, "upper", 30.0},
      {Zem_LowerTail, "lower", -37.5},
  };
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("g01eac example results\n\n");
  printf(" tail       x        probability\n");
  for (i = 0; i < 7; ++i) {
    const double p = g01eac(cases[i].tail, cases[i].x, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from g01eac:\n%s\n", fail.message);
      return 1;
    }
    printf(" %-7s %7.2f  %.10e\n", cases[i].name, cases[i].x, p);
  }
  return 0;
}
