/* Client test: s14ad, s14ae, s14af, s14ag, s14cc, s14cp, s14cq as a C99
 * program uses them; every failure with its code, status and exact message. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void show(const char *call, double v, const Zem_Fail *fail) {
  printf("%s = %.17g  code %d errnum %lld\n%s\n", call, v, fail->code, (long long)fail->errnum, fail->message);
}

static void showz(const char *call, Zem_Complex v, const Zem_Fail *fail) {
  printf("%s = (%.17g, %.17g)  code %d errnum %lld\n%s\n", call, v.re, v.im, fail->code, (long long)fail->errnum,
         fail->message);
}

int main(void) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double ans[3], w, w1, f[4];
  int64_t ivalid[4];
  static const double pa[] = {1.0, 0.0, INFINITY, 2.0}, pb[] = {1.0, 1.0, 1.0, 3.0};
  static const double qa[] = {2.0, -1.0, 0.0, 1.0}, qb[] = {3.0, 1.0, 0.0, 1.0}, qx[] = {0.5, 0.5, 0.5, 2.0};
  int i;

  show("s14aec(1, 7)", s14aec(1.0, 7, &fail), &fail);
  show("s14aec(1, -1)", s14aec(1.0, -1, &fail), &fail);
  show("s14aec(-3, 1)", s14aec(-3.0, 1, &fail), &fail);
  show("s14aec(1e300, 6)", s14aec(1e300, 6, &fail), &fail);
  show("s14aec(1e-310, 0)", s14aec(1e-310, 0, &fail), &fail);
  show("s14aec(0.5, 2)", s14aec(0.5, 2, &fail), &fail);

  s14adc(0.0, 0, 2, ans, &fail);
  show("s14adc(0, 0, 2)[0]", ans[0], &fail);
  s14adc(1.0, -1, 2, ans, &fail);
  show("s14adc(1, -1, 2)[0]", ans[0], &fail);
  s14adc(1.0, 0, 0, ans, &fail);
  printf("s14adc(1, 0, 0): code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  s14adc(1.0, 0, 101, ans, &fail);
  printf("s14adc(1, 0, 101): code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  s14adc(1e200, 4, 3, ans, &fail);
  show("s14adc(1e200, 4, 3)[0]", ans[0], &fail);
  s14adc(1e-200, 3, 3, ans, &fail);
  show("s14adc(1e-200, 3, 3)[2]", ans[2], &fail);
  s14adc(1.0, 0, 3, ans, &fail);
  printf("s14adc(1, 0, 3) = %.17g %.17g %.17g  code %d\n", ans[0], ans[1], ans[2], fail.code);

  {
    const Zem_Complex z1 = {1.0, 1.0}, zp = {-2.0, 0.0}, zq = {-2.0, 1e-300}, zn = {-2.5, 0.0};
    showz("s14afc((1,1), 5)", s14afc(z1, 5, &fail), &fail);
    showz("s14afc((-2,0), 1)", s14afc(zp, 1, &fail), &fail);
    showz("s14afc((-2,1e-300), 2)", s14afc(zq, 2, &fail), &fail);
    showz("s14afc((1,1), 1)", s14afc(z1, 1, &fail), &fail);
    showz("s14agc((-2,0))", s14agc(zp, &fail), &fail);
    showz("s14agc((-2.5,0))", s14agc(zn, &fail), &fail);
  }

  s14ccc(-1.0, 1.0, 0.5, &w, &w1, &fail);
  show("s14ccc(-1, 1, 0.5)", w, &fail);
  s14ccc(1.0, -1.0, 0.5, &w, &w1, &fail);
  show("s14ccc(1, -1, 0.5)", w, &fail);
  s14ccc(1.0, 1.0, 1.5, &w, &w1, &fail);
  show("s14ccc(1, 1, 1.5)", w, &fail);
  s14ccc(0.0, 0.0, 0.5, &w, &w1, &fail);
  show("s14ccc(0, 0, 0.5)", w, &fail);
  s14ccc(0.0, 1.0, 0.0, &w, &w1, &fail);
  show("s14ccc(0, 1, 0)", w, &fail);
  s14ccc(1.0, 0.0, 1.0, &w, &w1, &fail);
  show("s14ccc(1, 0, 1)", w, &fail);
  s14ccc(2.0, 3.0, 0.5, &w, &w1, &fail);
  printf("s14ccc(2, 3, 0.5) = %.17g %.17g  code %d\n", w, w1, fail.code);

  s14cpc(4, pa, pb, f, ivalid, &fail);
  printf("s14cpc: code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  for (i = 0; i < 4; ++i) printf("  a = %-4g b = %-4g f = %-24.17g ivalid %lld\n", pa[i], pb[i], f[i], (long long)ivalid[i]);
  s14cpc(-1, pa, pb, f, ivalid, &fail);
  printf("s14cpc(n = -1): code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
  {
    double qw[4], qw1[4];
    s14cqc(4, qa, qb, qx, qw, qw1, ivalid, &fail);
    printf("s14cqc: code %d errnum %lld\n%s\n", fail.code, (long long)fail.errnum, fail.message);
    for (i = 0; i < 4; ++i) printf("  w = %-24.17g w1 = %-24.17g ivalid %lld\n", qw[i], qw1[i], (long long)ivalid[i]);
    s14cqc(2, qa, qb, qx, NULL, qw1, ivalid, &fail);
    printf("s14cqc(w = NULL): code %d\n%s\n", fail.code, fail.message);
  }
  return 0;
}
