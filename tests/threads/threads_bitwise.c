/* Eight threads, each on its own data, call the library's routines at the
 * same time; every result must equal, bit for bit, what the same call gives
 * when the program runs it alone.  (tools/tsan.sh runs this program under
 * ThreadSanitizer as well.)  Each thread runs `rounds` passes over a work
 * list of routines from every chapter, with parameters of its own. */
#include <math.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <zem.h>

#define NTHREADS 8
#define NRESULTS 64

static double cubic(double x, Zem_Comm *comm) { return x * x * x - comm->user[0]; }

static void bump(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm) {
  int64_t i;
  (void)iflag;
  for (i = 0; i < nx; ++i) fv[i] = exp(-comm->user[0] * x[i] * x[i]) / (1.0 + fabs(x[i]));
}

static double bump_scalar(double x, Zem_Comm *comm) { return exp(-comm->user[0] * x * x) / (1.0 + fabs(x)); }

/* Every result of one pass for parameter p, in order. */
static int run(double p, double out[NRESULTS]) {
  int n = 0, i;
  double s = 2.0 + p, x = 0.0, y = 0.0, c[36], result = 0.0, abserr = 0.0, rinfo[400], u[50];
  int64_t iinfo[100], iw[100], ind, state[700], lstate = 700, seed[1];
  Zem_Comm comm = ZEM_COMM_INIT;
  Zem_Fail fail = ZEM_FAIL_INIT;
  comm.user = &s;

  c05ayc(0.0, 10.0, 1e-13, 0.0, cubic, &x, &comm, &fail);
  out[n++] = x;
  x = 1.0;
  c05auc(&x, 0.1, 1e-13, 0.0, cubic, -10.0, 10.0, &comm, &fail);
  out[n++] = x;
  x = 1.0;
  c05awc(&x, 1e-13, 0.0, cubic, 500, &comm, &fail);
  out[n++] = x;
  x = 0.0;
  y = 10.0;
  ind = 1;
  while (ind != 0) c05azc(&x, &y, x * x * x - s, 1e-13, Zem_Mixed, c, &ind, &fail);
  out[n++] = x;
  out[n++] = y;

  d01rjc(bump, -1.0, 2.0, 0.0, 1e-12, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
  out[n++] = result;
  out[n++] = abserr;
  d01rkc(bump, -1.0, 2.0, 0.0, 1e-12, 4, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
  out[n++] = result;
  out[n++] = abserr;
  d01rmc(bump, 0.5, 2, 0.0, 1e-10, 100, &result, &abserr, rinfo, iinfo, &comm, &fail);
  out[n++] = result;
  out[n++] = abserr;
  d01bdc(bump, 0.0, 1.0, 0.0, 1e-10, &result, &abserr, &comm, &fail);
  out[n++] = result;
  d01ajc(bump_scalar, 0.0, 3.0, 0.0, 1e-12, &result, &abserr, rinfo, 400, iw, 100, &comm, &fail);
  out[n++] = result;

  seed[0] = 1000 + (int64_t)(p * 1000.0);
  g05kfc(Zem_MersenneTwister, 1, seed, 1, state, &lstate, &fail);
  g05sac(50, state, u, &fail);
  for (i = 0; i < 50; i += 7) out[n++] = u[i];
  g05skc(10, p, 2.0, state, u, &fail);
  out[n++] = u[9];
  out[n++] = g01eac(Zem_LowerTail, p - 1.5, &fail);
  out[n++] = g01fac(Zem_UpperTail, 0.01 + p / 10.0, &fail);
  out[n++] = s15adc(p, &fail);
  while (n < NRESULTS) out[n++] = 0.0;
  return fail.code;
}

struct job {
  double p;
  int rounds, mismatches;
  double expected[NRESULTS];
};

static void *work(void *arg) {
  struct job *job = arg;
  double got[NRESULTS];
  int r;
  for (r = 0; r < job->rounds; ++r) {
    run(job->p, got);
    if (memcmp(got, job->expected, sizeof got) != 0) ++job->mismatches;
  }
  return NULL;
}

int main(void) {
  struct job jobs[NTHREADS];
  pthread_t threads[NTHREADS];
  int t, bad = 0;
  for (t = 0; t < NTHREADS; ++t) {
    jobs[t].p = 0.25 + 0.5 * t;
    jobs[t].rounds = 20;
    jobs[t].mismatches = 0;
    run(jobs[t].p, jobs[t].expected); /* the serial run */
  }
  for (t = 0; t < NTHREADS; ++t) pthread_create(&threads[t], NULL, work, &jobs[t]);
  for (t = 0; t < NTHREADS; ++t) pthread_join(threads[t], NULL);
  for (t = 0; t < NTHREADS; ++t) {
    if (jobs[t].mismatches != 0) printf("thread %d: %d of %d passes differ from the serial run\n", t,
                                        jobs[t].mismatches, jobs[t].rounds);
    bad += jobs[t].mismatches;
  }
  printf("%d threads x 20 passes: %s\n", NTHREADS, bad == 0 ? "every result bit for bit as in the serial run" : "MISMATCH");
  return bad != 0;
}
