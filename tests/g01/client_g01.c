/* Client test: g01eac, g01fac, s15adc and s15aec as a C99 program uses
 * them, with fail records, a handler and the print flag. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

static const char *name[] = {"lower", "upper", "signif", "confid"};
static const Zem_TailProbability tail[] = {Zem_LowerTail, Zem_UpperTail, Zem_TwoTailSignif, Zem_TwoTailConfid};

static void handler(const char *message, int code, const char *routine) {
  printf("handler: %s code %d, message heading %.*s\n", routine, code, (int)strcspn(message, "\n"), message);
}

int main(void) {
  static const double xs[] = {0.0, -1.959963984540054, 1.0, 10.0, 30.0};
  static const double ps[] = {1e-300, 0.05, 0.5, 0.975};
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i, t;

  printf("g01eac\n");
  for (i = 0; i < 5; ++i) {
    printf("x = %8.4f", xs[i]);
    for (t = 0; t < 4; ++t) printf("  %s %.10e", name[t], g01eac(tail[t], xs[i], &fail));
    printf("  code %d\n", fail.code);
  }
  printf("g01fac\n");
  for (i = 0; i < 4; ++i) {
    printf("p = %-8g", ps[i]);
    for (t = 0; t < 4; ++t) printf("  %s %.12f", name[t], g01fac(tail[t], ps[i], &fail));
    printf("  code %d\n", fail.code);
  }
  printf("s15adc(0.5) = %.15f, s15aec(0.5) = %.15f, s15adc(10) = %.10e\n", s15adc(0.5, &fail), s15aec(0.5, &fail),
         s15adc(10.0, NULL));

  printf("\nFailures\n");
  printf("g01fac(lower, 0.0) = %g\n", g01fac(Zem_LowerTail, 0.0, &fail));
  printf("code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  printf("g01fac(confid, 1.0) = %g\n", g01fac(Zem_TwoTailConfid, 1.0, &fail));
  printf("code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  printf("g01eac(9999, 1.0) = %g\n", g01eac((Zem_TailProbability)9999, 1.0, &fail));
  printf("code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);

  printf("\nHandler and print flag\n");
  fail.handler = handler;
  fail.print = 1;
  printf("g01fac = %g\n", g01fac(Zem_UpperTail, 2.0, &fail));
  printf("g01eac = %g\n", g01eac(Zem_UpperTail, 0.0, &fail));
  fflush(stdout);
  return 0;
}
