/* s14ccc example: the regularised incomplete beta function I_x(a, b). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double abx[][3] = {{1.0, 1.0, 0.25}, {2.0, 3.0, 0.5}, {0.5, 0.5, 0.1}, {30.0, 40.0, 0.45},
                                  {1000.0, 2000.0, 0.3}, {0.01, 5.0, 1e-4}};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double w, w1;
  int i;

  printf("s14ccc example results\n\n");
  printf("      a          b          x            I_x(a,b)              1 - I_x(a,b)\n");
  for (i = 0; i < 6; ++i) {
    s14ccc(abx[i][0], abx[i][1], abx[i][2], &w, &w1, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from s14ccc:\n%s\n", fail.message);
      return 1;
    }
    printf("%9.3g  %9.3g  %9.3g  %22.15e  %22.15e\n", abx[i][0], abx[i][1], abx[i][2], w, w1);
  }
  return 0;
}
