/* Client test of the d02p C interface: the stiffness warning in its two
 * forms.  y' = -1000 (y - cos t) over [0, 20] with the 4(5) pair through
 * the range integrator and through the step integrator: the first warning
 * is the short form; when the evaluation budget runs out while the problem
 * is still stiff, the warning states the evaluations first (the long form).
 * Every warning leaves the problem alive; the answer at tend is checked. */
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <zem.h>

static void f(double t, int64_t n, const double y[], double yp[], Zem_Comm *comm) {
  (void)n;
  (void)comm;
  yp[0] = -1000.0 * (y[0] - cos(t));
}

/* Prints the first warning of each form and counts them all. */
static void note(const Zem_Fail *fail, double t, int *nshort, int *nlong) {
  const int is_long = strstr(fail->message, "Approximately") != NULL;
  int *count = is_long ? nlong : nshort;
  if (++*count == 1) printf("%s form at t = %.1f, errnum %ld:\n%s\n", is_long ? "long" : "short", t,
                            (long)fail->errnum, fail->message);
}

int main(void) {
  const double tend = 20.0, yref = (cos(20.0) + 1e-3 * sin(20.0)) / (1 + 1e-6);
  double yinit[1] = {0.0}, thresh[1] = {1e-8}, rwsav[256], t = 0, y[1], yp[1], ymax[1];
  int64_t iwsav[ZEM_D02P_LIWSAV], lrwsav = 256, calls = 0, fevals, stepcost, stepsok;
  double waste, hnext;
  int nshort = 0, nlong = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("Range integrator\n");
  d02pqc(1, 0.0, tend, yinit, 1e-4, thresh, Zem_RK_4_5, Zem_ErrorAssess_off, 0.0, iwsav, rwsav, &lrwsav, &fail);
  while (t < tend && ++calls < 1000) {
    d02pec(f, 1, tend, &t, y, yp, ymax, NULL, iwsav, rwsav, &fail);
    if (fail.code == NE_STIFF_PROBLEM) {
      note(&fail, t, &nshort, &nlong);
    } else if (fail.code != NE_NOERROR) {
      printf("unexpected: %s\n", fail.message);
      return 1;
    }
  }
  d02ptc(&fevals, &stepcost, &waste, &stepsok, &hnext, iwsav, rwsav, &fail);
  printf("warnings: %d short, %d long; evaluations %s 50000; |y(20) - ref| %s 1e-3\n", nshort, nlong,
         fevals > 50000 ? ">" : "<=", fabs(y[0] - yref) < 1e-3 ? "<" : ">=");

  printf("\nStep integrator\n");
  nshort = nlong = 0;
  t = 0;
  calls = 0;
  d02pqc(1, 0.0, tend, yinit, 1e-4, thresh, Zem_RK_4_5, Zem_ErrorAssess_off, 0.0, iwsav, rwsav, &lrwsav, &fail);
  while (t < tend && ++calls < 100000) {
    d02pfc(f, 1, &t, y, yp, NULL, iwsav, rwsav, &fail);
    if (fail.code == NE_STIFF_PROBLEM) {
      note(&fail, t, &nshort, &nlong);
    } else if (fail.code != NE_NOERROR) {
      printf("unexpected: %s\n", fail.message);
      return 1;
    }
  }
  printf("warnings: %d short, %d long; t = %.1f; |y(20) - ref| %s 1e-3\n", nshort, nlong, t,
         fabs(y[0] - yref) < 1e-3 ? "<" : ">=");
  return 0;
}
