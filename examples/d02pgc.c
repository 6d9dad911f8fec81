/* d02pgc example: the harmonic oscillator y'' = -y by reverse
 * communication: the program evaluates every derivative itself. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

int main(void) {
  double yinit[2] = {1.0, 0.0}, thresh[2] = {1e-8, 1e-8}, rwsav[128];
  double t, y[2], yp[2], tnow = 0, ynow[2], ypnow[2];
  int64_t iwsav[ZEM_D02P_LIWSAV], lrwsav = 128, irevcm, evaluations = 0, steps = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("d02pgc example results\n\n");
  d02pqc(2, 0.0, 10.0, yinit, 1e-6, thresh, Zem_RK_2_3, Zem_ErrorAssess_off, 0.0, iwsav, rwsav, &lrwsav, &fail);
  if (fail.code != NE_NOERROR) return 1;
  while (tnow < 10.0) {
    irevcm = 0;
    do {
      d02pgc(&irevcm, 2, &t, y, yp, &tnow, ynow, ypnow, iwsav, rwsav, &fail);
      if (irevcm != 0) { /* yp = f(t, y) */
        yp[0] = y[1];
        yp[1] = -y[0];
        ++evaluations;
      }
    } while (irevcm != 0);
    if (fail.code != NE_NOERROR) return 1;
    ++steps;
  }
  printf("t = %.1f: y = %.6f, y' = %.6f\n", tnow, ynow[0], ynow[1]);
  printf("cos(t) = %.6f, -sin(t) = %.6f\n", cos(10.0), -sin(10.0));
  printf("%ld steps, %ld evaluations\n", (long)steps, (long)evaluations);

  /* A negative irevcm is refused. */
  irevcm = -1;
  d02pgc(&irevcm, 2, &t, y, yp, &tnow, ynow, ypnow, iwsav, rwsav, &fail);
  printf("\n%s\n", fail.message);
  return 0;
}
