/* d02puc example: the global error of a two-body orbit of eccentricity 0.9
 * over one period, assessed by a second integration beside the first, and
 * compared with the true error from Kepler's equation (the orbit is
 * periodic: the true solution after one period is the initial value). */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void orbit(double t, int64_t n, const double y[], double yp[], Zem_Comm *comm) {
  double r = sqrt(y[0] * y[0] + y[1] * y[1]);
  (void)t;
  (void)n;
  (void)comm;
  yp[0] = y[2];
  yp[1] = y[3];
  yp[2] = -y[0] / (r * r * r);
  yp[3] = -y[1] / (r * r * r);
}

int main(void) {
  const double pi = 3.14159265358979323846, e = 0.9;
  double yinit[4], thresh[4] = {1e-3, 1e-3, 1e-3, 1e-3}, rwsav[512], tgot, y[4], yp[4], ymax[4];
  double rmserr[4], errmax, terrmx, tol;
  int64_t iwsav[ZEM_D02P_LIWSAV], lrwsav, i;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d02puc example results\n\n");
  yinit[0] = 1 - e;
  yinit[1] = 0;
  yinit[2] = 0;
  yinit[3] = sqrt((1 + e) / (1 - e));
  printf("   tol    true error   largest assessed  at t\n");
  for (tol = 1e-5; tol >= 1e-9; tol *= 1e-2) {
    lrwsav = 512;
    d02pqc(4, 0.0, 2 * pi, yinit, tol, thresh, Zem_RK_7_8, Zem_ErrorAssess_on, 0.0, iwsav, rwsav, &lrwsav, &fail);
    d02pec(orbit, 4, 2 * pi, &tgot, y, yp, ymax, NULL, iwsav, rwsav, &fail);
    if (fail.code != NE_NOERROR) return 1;
    d02puc(4, rmserr, &errmax, &terrmx, iwsav, rwsav, &fail);
    double err = 0;
    for (i = 0; i < 4; ++i) err = fmax(err, fabs(y[i] - yinit[i]) / fmax(fabs(y[i]), thresh[i]));
    printf("%7.0e %10.1e %14.1e %9.3f\n", tol, err, errmax, terrmx);
  }
  printf("\nRoot-mean-square assessed errors, tol = 1e-9:\n");
  for (i = 0; i < 4; ++i) printf("  component %ld: %.1e\n", (long)i + 1, rmserr[i]);
  return 0;
}
