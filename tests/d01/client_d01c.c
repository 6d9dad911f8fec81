/* Client test of the d01 C interface: messages through the fail record,
   printing, the handler, the user stop, and the null-record exit. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static int stop_on_call = 0, calls = 0;

static void f(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)comm;
  if (++calls == stop_on_call) *iflag = -5;
  for (i = 0; i < nx; i++) fv[i] = 1.0 / sqrt(x[i]);
}

static void handler(const char *message, int code, const char *routine) {
  printf("handler: %s code %d, message %s\n", routine, code, code == 0 ? "NE_NOERROR" : message);
}

int main(void) {
  double result, abserr, rinfo[40];
  int64_t iinfo[10];
  Zem_Fail fail = ZEM_FAIL_INIT;

  /* Success still calls the handler, with code 0. */
  fail.handler = handler;
  d01rjc(f, 0.0, 1.0, 0.0, 1.0e-10, 10, &result, &abserr, rinfo, iinfo, NULL, &fail);
  printf("success: code %d errnum %d n %d result %.12f\n", fail.code, (int)fail.errnum, (int)iinfo[0], result);

  /* A warning with printing on: the error heading goes to standard error. */
  fail.handler = NULL;
  fail.print = 1;
  d01rjc(f, 0.0, 1.0, 0.0, 1.0e-10, 3, &result, &abserr, rinfo, iinfo, NULL, &fail);
  printf("limit: code %d errnum %d n %d\n", fail.code, (int)fail.errnum, (int)iinfo[0]);

  /* The user stop on the second call. */
  fail.print = 0;
  calls = 0;
  stop_on_call = 2;
  d01rjc(f, 0.0, 1.0, 0.0, 1.0e-10, 10, &result, &abserr, rinfo, iinfo, NULL, &fail);
  printf("stop: code %d errnum %d n %d calls %d\n%s\n", fail.code, (int)fail.errnum, (int)iinfo[0], calls,
         fail.message);
  stop_on_call = 0;

  /* d01bdc's warning prints with the warning heading. */
  fail.print = 1;
  d01bdc(f, 0.0, 1.0, 0.0, 1.0e-10, &result, &abserr, NULL, &fail);
  printf("d01bdc: code %d errnum %d\n", fail.code, (int)fail.errnum);
  fflush(stdout);

  /* No fail record: the message is printed and the program ends. */
  d01rkc(f, 0.0, 1.0, 0.0, 1.0e-10, 2, 0, &result, &abserr, rinfo, iinfo, NULL, NULL);
  printf("not reached\n");
  return 0;
}
