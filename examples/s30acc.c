/* s30acc example: four European options priced element by element; the
 * third has a negative volatility and is marked in ivalid. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const Zem_OptionType option[] = {Zem_Call, Zem_Put, Zem_Call, Zem_Put};
  const double x[] = {100.0, 100.0, 95.0, 1.1};
  const double s[] = {100.0, 100.0, 100.0, 1.2};
  const double t[] = {1.0, 1.0, 0.5, 0.25};
  const double sigma[] = {0.2, 0.2, -0.3, 0.1};
  const double r[] = {0.05, 0.05, 0.01, 0.03};
  const double q[] = {0.0, 0.0, 0.0, 0.04};
  double p[4];
  int64_t ivalid[4];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int k;

  s30acc(option, 4, x, s, t, sigma, r, q, p, ivalid, &fail);
  printf("code %d\n%s\n", fail.code, fail.message);
  printf("   k   type        x        s        t    sigma        price  ivalid\n");
  for (k = 0; k < 4; ++k)
    printf("%4d   %-4s %8.3f %8.3f %8.3f %8.3f %12.8f  %lld\n", k, option[k] == Zem_Call ? "call" : "put", x[k],
           s[k], t[k], sigma[k], p[k], (long long)ivalid[k]);
  return 0;
}
