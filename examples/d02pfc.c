/* d02pfc example: the orbit of d02pec with the step integrator, dense
 * output at the same eight points (d02phc, d02pjc; d02psc), and tend moved
 * on by d02prc. */
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
  const double pi = 3.14159265358979323846, e = 0.5;
  double yinit[4], thresh[4] = {1e-10, 1e-10, 1e-10, 1e-10}, rwsav[256], wcomm[32];
  double tnow = 0, ynow[4], ypnow[4], ywant[4], ypwant[4], tnext = pi / 4;
  int64_t iwsav[ZEM_D02P_LIWSAV], lrwsav = 256, steps = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d02pfc example results\n\n");
  yinit[0] = 1 - e;
  yinit[1] = 0;
  yinit[2] = 0;
  yinit[3] = sqrt((1 + e) / (1 - e));
  d02pqc(4, 0.0, 2 * pi, yinit, 1e-8, thresh, Zem_RK_4_5, Zem_ErrorAssess_off, 0.0, iwsav, rwsav, &lrwsav, &fail);
  if (fail.code != NE_NOERROR) return 1;
  printf("      t          x          y         vx         vy\n");
  while (tnow < 2 * pi) {
    d02pfc(orbit, 4, &tnow, ynow, ypnow, NULL, iwsav, rwsav, &fail);
    if (fail.code != NE_NOERROR) return 1;
    ++steps;
    /* Output points inside the step just taken. */
    if (tnow >= tnext) d02phc(4, 2, iwsav, rwsav, wcomm, 32, &fail);
    while (tnext <= tnow + 1e-12) {
      d02pjc(4, tnext, 0, 2, ywant, ypwant, iwsav, rwsav, wcomm, 32, &fail);
      d02psc(4, tnext, 1, 4, ypwant, ypwant, iwsav, rwsav, &fail);
      printf("%9.5f %10.6f %10.6f %10.6f %10.6f\n", tnext, ywant[0], ywant[1], ypwant[0], ypwant[1]);
      tnext += pi / 4;
    }
  }
  printf("\n%ld steps to t = 2 pi\n", (long)steps);

  /* Half a period more. */
  d02prc(3 * pi, iwsav, rwsav, &fail);
  while (tnow < 3 * pi) d02pfc(orbit, 4, &tnow, ynow, ypnow, NULL, iwsav, rwsav, &fail);
  printf("At t = 3 pi: x = %.6f, y = %.6f (aphelion: -1.5, 0)\n", ynow[0], fabs(ynow[1]));
  return 0;
}
