/* s14cpc example: ln B(a, b) for vectors, with a bad element reported in ivalid. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double a[] = {1.0, 0.5, 2.0, 1e-5, 50.0, -1.0};
  static const double b[] = {1.0, 0.5, 3.0, 10.0, 1e6, 2.0};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double f[6];
  int64_t ivalid[6];
  int i;

  printf("s14cpc example results\n\n");
  s14cpc(6, a, b, f, ivalid, &fail);
  if (fail.code != NE_NOERROR && fail.code != NW_IVALID) {
    printf("Error from s14cpc:\n%s\n", fail.message);
    return 1;
  }
  if (fail.code == NW_IVALID) printf("Warning from s14cpc:\n%s\n\n", fail.message);
  printf("        a            b              ln B(a,b)      ivalid\n");
  for (i = 0; i < 6; ++i) printf("%11.4e  %11.4e  %23.15e  %lld\n", a[i], b[i], f[i], (long long)ivalid[i]);
  return 0;
}
