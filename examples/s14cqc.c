/* s14cqc example: I_x(a, b) and its complement for vectors, a bad element in ivalid. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double a[] = {1.0, 2.0, 0.5, 30.0, 0.0, 2.0};
  static const double b[] = {1.0, 3.0, 0.5, 40.0, 0.0, 2.0};
  static const double x[] = {0.25, 0.5, 0.1, 0.45, 0.5, 1.5};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double w[6], w1[6];
  int64_t ivalid[6];
  int i;

  printf("s14cqc example results\n\n");
  s14cqc(6, a, b, x, w, w1, ivalid, &fail);
  if (fail.code != NE_NOERROR && fail.code != NW_IVALID) {
    printf("Error from s14cqc:\n%s\n", fail.message);
    return 1;
  }
  if (fail.code == NW_IVALID) printf("Warning from s14cqc:\n%s\n\n", fail.message);
  printf("     a      b      x          I_x(a,b)               1 - I_x(a,b)      ivalid\n");
  for (i = 0; i < 6; ++i)
    printf("%6.2f %6.2f %6.2f  %22.15e  %22.15e  %lld\n", a[i], b[i], x[i], w[i], w1[i], (long long)ivalid[i]);
  return 0;
}
