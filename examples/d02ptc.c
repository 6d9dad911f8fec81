/* d02ptc example: the stiff problem y' = -1000 (y - cos t) with the 4(5)
 * pair: the range integrator warns that the problem is stiff, the program
 * continues, and d02ptc reports what it cost. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void f(double t, int64_t n, const double y[], double yp[], Zem_Comm *comm) {
  (void)n;
  (void)comm;
  yp[0] = -1000.0 * (y[0] - cos(t));
}

int main(void) {
  double yinit[1] = {0.0}, thresh[1] = {1e-8}, rwsav[256], tgot = 0, y[1], yp[1], ymax[1], waste, hnext;
  int64_t iwsav[ZEM_D02P_LIWSAV], lrwsav = 256, fevals, stepcost, stepsok;
  Zem_Fail fail = ZEM_FAIL_INIT;
  int warnings = 0;

  printf("d02ptc example results\n\n");
  d02pqc(1, 0.0, 10.0, yinit, 1e-4, thresh, Zem_RK_4_5, Zem_ErrorAssess_off, 0.0, iwsav, rwsav, &lrwsav, &fail);
  if (fail.code != NE_NOERROR) return 1;
  while (tgot < 10.0) {
    d02pec(f, 1, 10.0, &tgot, y, yp, ymax, NULL, iwsav, rwsav, &fail);
    if (fail.code == NE_STIFF_PROBLEM) {
      if (++warnings == 1) printf("At t = %.4f:\n%s\n\n", tgot, fail.message);
    } else if (fail.code != NE_NOERROR) {
      printf("%s\n", fail.message);
      return 1;
    }
  }
  printf("Stiffness warnings: %d\n", warnings);
  printf("y(10) = %.6f (true: %.6f)\n", y[0], (cos(10.0) + 1e-3 * sin(10.0)) / (1 + 1e-6));
  d02ptc(&fevals, &stepcost, &waste, &stepsok, &hnext, iwsav, rwsav, &fail);
  printf("Evaluations %ld, cost of a step %ld, accepted steps %ld\n", (long)fevals, (long)stepcost, (long)stepsok);
  printf("Fraction of failed attempts %.3f, next step %.2e\n", waste, hnext);
  return 0;
}
