/* The comm record of the C interface, through all nine routines that take
 * one: whatever the record holds when the routine is called (stack garbage,
 * the flag of an earlier stop, the library's -8888) changes nothing, a null
 * comm is allowed, and only a change of flag made by the user function
 * during its call stops the routine, with NE_USER_STOP and the new value. */
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <zem.h>

static int stop_mode = 0; /* 1: the user function changes comm->flag */

static void ask_stop(Zem_Comm *comm) {
  if (stop_mode && comm) comm->flag = comm->flag == 7 ? 8 : 7;
}
static double line(double x, Zem_Comm *comm) {
  ask_stop(comm);
  return x - 0.5;
}
static double bump(double x, Zem_Comm *comm) {
  ask_stop(comm);
  return exp(-x * x);
}
static void bumps(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  ask_stop(comm);
  for (i = 0; i < nx; ++i) fv[i] = exp(-x[i] * x[i]);
}

/* Calls routine k with comm (may be NULL); returns the fail record's code. */
static int call(int k, Zem_Comm *comm, Zem_Fail *fail, double *value) {
  double x = 0.0, result = 0.0, abserr = 0.0, rinfo[400], w[400], pts[1] = {0.3};
  int64_t iinfo[100], iw[100];
  *fail = (Zem_Fail)ZEM_FAIL_INIT;
  switch (k) {
    case 0: c05ayc(0.0, 1.0, 1e-12, 0.0, line, &x, comm, fail); break;
    case 1: c05auc(&x, 0.1, 1e-12, 0.0, line, -5.0, 5.0, comm, fail); break;
    case 2: c05awc(&x, 1e-12, 0.0, line, 200, comm, fail); break;
    case 3: d01rjc(bumps, 0.0, 1.0, 0.0, 1e-10, 100, &result, &abserr, rinfo, iinfo, comm, fail); break;
    case 4: d01ajc(bump, 0.0, 1.0, 0.0, 1e-10, &result, &abserr, w, 400, iw, 100, comm, fail); break;
    case 5: d01rkc(bumps, 0.0, 1.0, 0.0, 1e-10, 2, 100, &result, &abserr, rinfo, iinfo, comm, fail); break;
    case 6: d01rlc(bumps, 0.0, 1.0, 1, pts, 0.0, 1e-10, 100, &result, &abserr, rinfo, iinfo, comm, fail); break;
    case 7: d01rmc(bumps, 0.0, 1, 0.0, 1e-10, 100, &result, &abserr, rinfo, iinfo, comm, fail); break;
    default: d01bdc(bumps, 0.0, 1.0, 0.0, 1e-8, &result, &abserr, comm, fail); break;
  }
  *value = k < 3 ? x : result;
  return fail->code;
}

int main(void) {
  static const char *names[] = {"c05ayc", "c05auc", "c05awc", "d01rjc", "d01ajc",
                                "d01rkc", "d01rlc", "d01rmc", "d01bdc"};
  int k;
  for (k = 0; k < 9; ++k) {
    Zem_Fail fail;
    Zem_Comm garbage, stale = ZEM_COMM_INIT, repeat = ZEM_COMM_INIT, before;
    double clean, v;
    int same = 1;
    memset(&garbage, 0xa5, sizeof garbage);
    stale.flag = 7;
    repeat.flag = -8888;
    stop_mode = 0;
    call(k, NULL, &fail, &clean);
    printf("%s: null comm %s", names[k], fail.code == NE_NOERROR ? "ok" : "FAILED");
    before = garbage;
    same &= call(k, &garbage, &fail, &v) == NE_NOERROR && v == clean;
    same &= memcmp(&before, &garbage, sizeof garbage) == 0; /* never written */
    same &= call(k, &stale, &fail, &v) == NE_NOERROR && v == clean && stale.flag == 7;
    same &= call(k, &repeat, &fail, &v) == NE_NOERROR && v == clean && repeat.flag == -8888;
    printf(", garbage/stale/-8888 %s", same ? "same result, record untouched" : "DIFFER");
    stop_mode = 1;
    call(k, &stale, &fail, &v);
    printf(", stop by change: errnum %ld\n  %s\n", (long)fail.errnum, fail.message);
  }
  return 0;
}
