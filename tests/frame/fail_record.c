/* The fail record as a C client sees it: codes, messages, the print flag,
 * the handler (on success too, and before the copy), warnings. */
#include <stdio.h>
#include <string.h>
#include <zem.h>

static Zem_Fail *watched;
static void handler(const char *message, int code, const char *routine) {
  printf("handler: routine %s, code %d, record still holds \"%.20s\"\n", routine, code, watched->message);
  printf("handler: message \"%s\"\n", message);
}

static int calls;
static double cube_minus_two(double x, Zem_Comm *comm) {
  (void)comm;
  ++calls;
  return x * x * x - 2.0;
}
static double square_minus_two(double x, Zem_Comm *comm) {
  (void)comm;
  return x * x - 2.0;
}

int main(void) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double x = -1.0, y, c[10];
  int64_t ind;
  watched = &fail;

  printf("1. success with a handler\n");
  strcpy(fail.message, "stale text from before");
  fail.handler = handler;
  c05ayc(0.0, 2.0, 1e-12, 0.0, cube_minus_two, &x, NULL, &fail);
  printf("code %d errnum %lld message \"%s\" x %.15f\n\n", fail.code, (long long)fail.errnum, fail.message, x);

  printf("2. failure, print flag 0, handler set: nothing on stderr\n");
  c05ayc(0.0, 2.0, -1.0, 0.0, cube_minus_two, &x, NULL, &fail);
  printf("code %d errnum %lld\n\n", fail.code, (long long)fail.errnum);

  printf("3. print flag set: the message also goes to stderr\n");
  fail.handler = NULL;
  fail.print = 1;
  c05ayc(0.0, 0.0, 1e-12, 0.0, cube_minus_two, &x, NULL, &fail);
  printf("code %d errnum %lld\n\n", fail.code, (long long)fail.errnum);

  printf("4. a warning prints with the warning heading\n");
  x = 1.0;
  y = 2.0;
  ind = 1;
  for (;;) {
    double fx = square_minus_two(x, NULL);
    c05azc(&x, &y, fx, 1e-30, Zem_Relative, c, &ind, &fail);
    if (ind == 0) break;
  }
  printf("code %d errnum %lld bracket width %.3g\n\n", fail.code, (long long)fail.errnum, y > x ? y - x : x - y);

  printf("5. a null x: NE_BAD_PARAM, f never called\n");
  calls = 0;
  fail.print = 0;
  c05ayc(0.0, 2.0, 1e-12, 0.0, cube_minus_two, NULL, NULL, &fail);
  printf("code %d errnum %lld calls %d\n%s\n", fail.code, (long long)fail.errnum, calls, fail.message);
  return 0;
}
