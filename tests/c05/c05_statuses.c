/* Every exit of c05ayc and c05azc, as a C client sees it. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static int calls;
static double x; /* kept across calls: a failed check leaves it as it was */
static double square_minus_two(double x, Zem_Comm *comm) { (void)comm; return x * x - 2.0; }
static double pole(double x, Zem_Comm *comm) { (void)comm; return 1.0 / (x - 0.5); }
static double linear(double x, Zem_Comm *comm) { (void)comm; ++calls; return x - 0.25; }

static void ay(const char *what, double a, double b, double eps, double (*f)(double, Zem_Comm *)) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05ayc(a, b, eps, 0.0, f, &x, NULL, &fail);
  printf("%s: code %d errnum %lld x %.6f\n%s\n\n", what, fail.code, (long long)fail.errnum, x, fail.message);
}

/* Runs c05azc from ind = 1 on f. */
static void rcomm(double (*f)(double, Zem_Comm *), double x, double y, double tolx, Zem_ErrorControl ir,
                  Zem_Fail *fail) {
  double c[10], fx = 0.0;
  int64_t ind = 1;
  int n = 0;
  for (;;) {
    c05azc(&x, &y, fx, tolx, ir, c, &ind, fail);
    if (ind == 0 || ++n > 200) break;
    fx = f(x, NULL);
  }
  printf("c05azc: code %d errnum %lld x %.6f y %.6f\n%s\n\n", fail->code, (long long)fail->errnum, x, y,
         fail->message);
}

int main(void) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double c[10], fx = 0.0;
  int64_t ind;

  printf("---- c05ayc\n");
  ay("success", 1.0, 2.0, 1e-12, square_minus_two);
  ay("eps = 0", 1.0, 2.0, 0.0, square_minus_two);
  ay("a = b", 1.0, 1.0, 1e-12, square_minus_two);
  ay("no sign change", 2.0, 3.0, 1e-12, square_minus_two);
  ay("eps too small (x still returned)", 1.0, 2.0, 1e-30, square_minus_two);
  ay("a pole (x still returned)", 0.0, 1.0, 1e-10, pole);
  calls = 0;
  c05ayc(0.25, 1.0, 1e-12, 0.0, linear, &x, NULL, &fail);
  printf("f(a) = 0: x = %g after %d evaluation(s), code %d\n", x, calls, fail.code);
  calls = 0;
  c05ayc(0.0, 1.0, 1e-12, 10.0, linear, &x, NULL, &fail);
  printf("eta = 10: x = %g after %d evaluation(s), code %d\n", x, calls, fail.code);
  c05ayc(1.0, 2.0, NAN, 0.0, square_minus_two, &x, NULL, &fail);
  printf("eps = NaN passes the check: code %d\n\n", fail.code);

  printf("---- c05azc\n");
  rcomm(square_minus_two, 1.0, 2.0, 1e-10, Zem_Mixed, &fail);
  rcomm(square_minus_two, 2.0, 3.0, 1e-10, Zem_Mixed, &fail);
  rcomm(pole, 0.0, 1.0, 1e-10, Zem_Absolute, &fail);
  rcomm(square_minus_two, 1.0, 2.0, 1e-30, Zem_Relative, &fail);
  rcomm(square_minus_two, 1.0, 2.0, 0.0, Zem_Mixed, &fail);
  ind = 0;
  c05azc(&x, &x, fx, 1e-5, Zem_Mixed, c, &ind, &fail);
  printf("ind = 0: code %d errnum %lld\n%s\n\n", fail.code, (long long)fail.errnum, fail.message);
  ind = 1;
  c05azc(&x, &x, fx, 1e-5, (Zem_ErrorControl)1, c, &ind, &fail);
  printf("ir = 1 (not a member): ind %lld code %d\n%s\n\n", (long long)ind, fail.code, fail.message);
  ind = 1;
  c05azc(&x, NULL, fx, 1e-5, Zem_Mixed, c, &ind, &fail);
  printf("y null: ind %lld\n%s\n\n", (long long)ind, fail.message);
  ind = 1;
  c05azc(&x, &x, fx, 1e-5, Zem_Mixed, NULL, &ind, &fail);
  printf("c null: ind %lld\n%s\n\n", (long long)ind, fail.message);
  c05azc(&x, &x, fx, 1e-5, Zem_Mixed, c, NULL, &fail);
  printf("ind null:\n%s\n", fail.message);
  return 0;
}
