/* s14anc example: Gamma(x) for a vector of arguments, with a per-element
 * status in ivalid (the third and fourth arguments are invalid). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const double x[] = {0.5, 2.5, -3.0, 0.0, 25.0, 1e-3};
  double f[6];
  int64_t ivalid[6];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;

  printf("s14anc example results\n\n");
  s14anc(6, x, f, ivalid, &fail);
  if (fail.code != NE_NOERROR && fail.code != NW_IVALID) {
    printf("Error from s14anc:\n%s\n", fail.message);
    return 1;
  }
  if (fail.code == NW_IVALID) printf("Warning: %s\n\n", fail.message);
  printf("       x        Gamma(x)          ivalid\n");
  for (i = 0; i < 6; ++i) printf("%10.3e  %22.15e  %lld\n", x[i], f[i], (long long)ivalid[i]);
  return 0;
}
