/* d02pec example: a two-body orbit of eccentricity 0.5 with the range
 * integrator, answers at eight points of one period. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void orbit(double t, int64_t n, const double y[], double yp[], Zem_Comm *comm) {
  double r = sqrt(y[0] * y[0] + y[1] * y[1]);
  (void)t;
  (void)n;
  comm->iuser[0]++;
  yp[0] = y[2];
  yp[1] = y[3];
  yp[2] = -y[0] / (r * r * r);
  yp[3] = -y[1] / (r * r * r);
}

int main(void) {
  const double pi = 3.14159265358979323846, e = 0.5;
  double yinit[4], thresh[4] = {1e-10, 1e-10, 1e-10, 1e-10}, rwsav[256];
  double tgot, ygot[4], ypgot[4], ymax[4], waste, hnext;
  int64_t iwsav[ZEM_D02P_LIWSAV], lrwsav = 256, nfev = 0, fevals, stepcost, stepsok;
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;
  int k;

  printf("d02pec example results\n\n");
  yinit[0] = 1 - e;
  yinit[1] = 0;
  yinit[2] = 0;
  yinit[3] = sqrt((1 + e) / (1 - e));
  comm.iuser = &nfev;
  d02pqc(4, 0.0, 2 * pi, yinit, 1e-8, thresh, Zem_RK_4_5, Zem_ErrorAssess_off, 0.0, iwsav, rwsav, &lrwsav, &fail);
  if (fail.code != NE_NOERROR) return 1;
  printf("      t          x          y\n");
  for (k = 1; k <= 8; ++k) {
    d02pec(orbit, 4, k * pi / 4, &tgot, ygot, ypgot, ymax, &comm, iwsav, rwsav, &fail);
    if (fail.code != NE_NOERROR) return 1;
    printf("%9.5f %10.6f %10.6f\n", tgot, ygot[0], ygot[1]);
  }
  printf("\nAfter one period: |y - yinit| = %.1e\n",
         fmax(fmax(fabs(ygot[0] - yinit[0]), fabs(ygot[1] - yinit[1])),
              fmax(fabs(ygot[2] - yinit[2]), fabs(ygot[3] - yinit[3]))));
  printf("Largest |x| and |y| on the way: %.6f %.6f\n", ymax[0], ymax[1]);
  d02ptc(&fevals, &stepcost, &waste, &stepsok, &hnext, iwsav, rwsav, &fail);
  printf("Evaluations %ld (counted by f: %ld), accepted steps %ld\n", (long)fevals, (long)nfev, (long)stepsok);

  /* tend has been reached: a further call is refused. */
  printf("\nOne more call:\n");
  d02pec(orbit, 4, 7.0, &tgot, ygot, ypgot, ymax, &comm, iwsav, rwsav, &fail);
  printf("%s\n", fail.message);
  return 0;
}
