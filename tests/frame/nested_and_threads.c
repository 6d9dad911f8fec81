/* c05ayc called from inside another c05ayc's user function, and two
 * threads solving at once: every call's state is its own. */
#include <math.h>
#include <pthread.h>
#include <stdio.h>
#include <zem.h>

/* g(t) = t^3 - s, solved inside the outer function for s = x + 1. */
static double inner(double t, Zem_Comm *comm) { return t * t * t - comm->user[0]; }

/* f(x) = cbrt(x + 1) - 1.5, each cube root found by a nested c05ayc. */
static double outer(double x, Zem_Comm *comm) {
  double s = x + 1.0, t = 0.0;
  Zem_Comm inner_comm = {0, NULL, NULL, NULL};
  Zem_Fail fail = ZEM_FAIL_INIT;
  inner_comm.user = &s;
  c05ayc(0.0, 10.0, 1e-14, 0.0, inner, &t, &inner_comm, &fail);
  if (fail.code != NE_NOERROR) comm->flag = 1;
  return t - 1.5;
}

struct job {
  double target, x;
  int code;
};

static double shifted_cube(double x, Zem_Comm *comm) { return x * x * x - comm->user[0]; }

static void *solve(void *arg) {
  struct job *job = arg;
  int i;
  for (i = 0; i < 2000; ++i) {
    Zem_Comm comm = {0, NULL, NULL, NULL};
    Zem_Fail fail = ZEM_FAIL_INIT;
    comm.user = &job->target;
    c05ayc(0.0, 10.0, 1e-13, 0.0, shifted_cube, &job->x, &comm, &fail);
    if (fail.code != NE_NOERROR || fabs(job->x - cbrt(job->target)) > 1e-12) {
      job->code = fail.code ? fail.code : -1;
      break;
    }
  }
  return NULL;
}

int main(void) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  Zem_Comm comm = {0, NULL, NULL, NULL};
  double x = 0.0;
  pthread_t t1, t2;
  struct job a = {2.0, 0.0, 0}, b = {7.0, 0.0, 0};

  c05ayc(0.0, 10.0, 1e-12, 0.0, outer, &x, &comm, &fail);
  printf("nested: code %d, x = %.10f (exact 2.375)\n", fail.code, x);

  pthread_create(&t1, NULL, solve, &a);
  pthread_create(&t2, NULL, solve, &b);
  pthread_join(t1, NULL);
  pthread_join(t2, NULL);
  printf("threads: %s, %s\n", a.code == 0 ? "cbrt(2) every time" : "wrong", b.code == 0 ? "cbrt(7) every time" : "wrong");
  return 0;
}
