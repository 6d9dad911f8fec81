/* A user's first program: a root, an integral and random numbers, with the
   library found through pkg-config or find_package(Zem).  exp() and log()
   come from libm, which zem.pc and Zem::zem bring. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static double g(double x, Zem_Comm *comm) {
  (void)comm;
  return exp(-x) - x;
}

static double h(double x, Zem_Comm *comm) {
  (void)comm;
  return 1.0 / sqrt(x) + log(x);
}

int main(void) {
  Zem_Comm comm = {0, NULL, NULL, NULL};
  Zem_Fail fail = ZEM_FAIL_INIT;
  double root, integral, abserr, w[400], u[1000], sum = 0.0;
  int64_t iw[100], seed[1] = {1762543}, state[1260], lstate = 1260;
  int i;

  c05ayc(0.0, 1.0, 1e-12, 0.0, g, &root, &comm, &fail);
  if (fail.code != NE_NOERROR) return 1;
  d01ajc(h, 0.0, 1.0, 0.0, 1e-10, &integral, &abserr, w, 400, iw, 100, &comm, &fail);
  if (fail.code != NE_NOERROR) return 2;
  g05kfc(Zem_MersenneTwister, 1, seed, 1, state, &lstate, &fail);
  if (fail.code != NE_NOERROR) return 3;
  g05sac(1000, state, u, &fail);
  if (fail.code != NE_NOERROR) return 4;
  for (i = 0; i < 1000; ++i) sum += u[i];
  printf("root %.8f integral %.8f mean %.8f\n", root, integral, sum / 1000);
  return 0;
}
