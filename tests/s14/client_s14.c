/* Client test: the s14 routines as a C99 program uses them; every failure
 * with its code, status and exact message, and the vector routines' ivalid. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void show(const char *call, double v, const Zem_Fail *fail) {
  printf("%s = %.17g  code %d errnum %lld\n%s\n", call, v, fail->code, (long long)fail->errnum, fail->message);
}

/* The handler sees the record before the message is copied in. */
static Zem_Fail *watched;
static void handler(const char *message, int code, const char *routine) {
  printf("handler: routine %s, code %d, errnum %lld, record still holds \"%.10s\"\n  \"%s\"\n", routine, code,
         (long long)watched->errnum, watched->message, message);
}

int main(void) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  static const double xv[] = {0.5, 171.0, -171.0, 0.0, -3.0, 1e-17};
  static const double lv[] = {0.5, 0.0, 3e305, 1e-17};
  double f[6];
  int64_t ivalid[6];
  int i;

  show("s14aac(170)", s14aac(170.0, &fail), &fail);
  show("s14aac(170.0000001)", s14aac(170.0000001, &fail), &fail);
  show("s14aac(-170.5)", s14aac(-170.5, &fail), &fail);
  show("s14aac(1e-309)", s14aac(1e-309, &fail), &fail);
  show("s14aac(-1e-309)", s14aac(-1e-309, &fail), &fail);
  show("s14aac(-3)", s14aac(-3.0, &fail), &fail);
  show("s14aac(-2.5)", s14aac(-2.5, &fail), &fail);
  show("s14aac(nan)", s14aac(NAN, &fail), &fail);
  show("s14abc(0)", s14abc(0.0, &fail), &fail);
  show("s14abc(3e305)", s14abc(3e305, &fail), &fail);
  show("s14abc(-inf)", s14abc(-INFINITY, &fail), &fail);
  show("s14abc(1e-17)", s14abc(1e-17, &fail), &fail);
  show("s14acc(1)", s14acc(1.0, &fail), &fail);
  show("s14acc(-1)", s14acc(-1.0, &fail), &fail);
  show("s14acc(1e308)", s14acc(1e308, &fail), &fail);
  show("s14acc(1e-309)", s14acc(1e-309, &fail), &fail);

  s14anc(6, xv, f, ivalid, &fail);
  printf("s14anc: code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  for (i = 0; i < 6; ++i) printf("  x = %-8g f = %-24.17g ivalid %lld\n", xv[i], f[i], (long long)ivalid[i]);
  s14apc(4, lv, f, ivalid, &fail);
  printf("s14apc: code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  for (i = 0; i < 4; ++i) printf("  x = %-8g f = %-24.17g ivalid %lld\n", lv[i], f[i], (long long)ivalid[i]);
  s14anc(-1, xv, f, ivalid, &fail);
  printf("s14anc(n = -1): code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  s14apc(0, NULL, NULL, NULL, &fail);
  printf("s14apc(n = 0, nulls): code %d\n", fail.code);
  s14apc(2, lv, NULL, ivalid, &fail);
  printf("s14apc(f = NULL): code %d\n%s\n", fail.code, fail.message);
  {
    double p = -1.0, q = -1.0;
    s14bac(2.0, 3.0, 0.0, &p, &q, &fail);
    printf("s14bac(2, 3): p = %.15f q = %.15f code %d\n", p, q, fail.code);
    s14bac(0.0, 3.0, 0.0, &p, &q, &fail);
    printf("s14bac(0, 3): p = %g q = %g code %d errnum %lld\n%s\n", p, q, fail.code, (long long)fail.errnum,
           fail.message);
    s14bac(2.0, -3.0, 0.0, &p, &q, &fail);
    printf("s14bac(2, -3): p = %g q = %g code %d errnum %lld\n%s\n", p, q, fail.code, (long long)fail.errnum,
           fail.message);
    s14bac(2.0, 3.0, 0.0, NULL, &q, &fail);
    printf("s14bac(p = NULL): code %d\n%s\n", fail.code, fail.message);
  }
  /* A success right after a failure, with a handler: the record is reset
   * (code and errnum 0) and the handler called before the copy. */
  watched = &fail;
  fail.handler = handler;
  show("s14abc(-1)", s14abc(-1.0, &fail), &fail);
  show("s14abc(2.5)", s14abc(2.5, &fail), &fail);
  show("s14aac(0)", s14aac(0.0, &fail), &fail);
  show("s14aac(4.5)", s14aac(4.5, &fail), &fail);
  fail.handler = NULL;
  return 0;
}
