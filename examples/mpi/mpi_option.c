/* Monte Carlo price of a European call on several MPI processes, with one
   random stream split between them, and a result that is the same, bit for
   bit, for any number of processes.

   The work is cut into BLOCKS blocks of PATHS / BLOCKS paths; the cut
   belongs to the problem, not to the machine.  Block b draws its own part
   of the one stream of one seed:
     skip-ahead: the values b*L .. b*L+L-1 (g05kjc moves a copy of the
                 seeded state on by b*L values);
     leap-frog:  the values b, b+BLOCKS, b+2*BLOCKS, ... (g05khc makes a
                 copy of the seeded state draw every BLOCKS-th value).
   Each process prices the blocks b = rank, rank + size, ..., summing each
   block's payoffs in path order; process 0 gathers the block sums and adds
   them in block order.  The additions are then the same, in the same order,
   for 1, 2, 4 or BLOCKS processes.  Process 0 checks this against a plain
   serial run: all PATHS values drawn from one state in one go, path i
   taking value i, its payoff added to the sum of its block.

   Run: mpirun -np 4 ./mpi_option */
#include <math.h>
#include <mpi.h>
#include <stdio.h>
#include <string.h>
#include <zem.h>

enum { BLOCKS = 64, PATHS = 1 << 20, LEN = PATHS / BLOCKS, LSTATE = 61 };

static const double S0 = 100.0, K = 100.0, R = 0.05, SIGMA = 0.2, T = 1.0;

static double payoff(double z) {
  const double st = S0 * exp((R - 0.5 * SIGMA * SIGMA) * T + SIGMA * sqrt(T) * z);
  return st > K ? st - K : 0.0;
}

static void check(const Zem_Fail *fail) {
  if (fail->code != NE_NOERROR) {
    fprintf(stderr, "%s\n", fail->message);
    MPI_Abort(MPI_COMM_WORLD, 1);
  }
}

/* The sum of the payoffs of block b, drawn from a copy of the
   seeded state. */
static double block_sum(const int64_t seeded[LSTATE], int leapfrog, int b) {
  int64_t state[LSTATE];
  double z[LEN], sum = 0.0;
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i;
  memcpy(state, seeded, sizeof state);
  if (leapfrog)
    g05khc(BLOCKS, b + 1, state, &fail);
  else
    g05kjc((int64_t)b * LEN, state, &fail);
  check(&fail);
  g05skc(LEN, 0.0, 1.0, state, z, &fail);
  check(&fail);
  for (i = 0; i < LEN; ++i) sum += payoff(z[i]);
  return sum;
}

/* The serial run: the block sums from one stream drawn in one go. */
static void serial_sums(const int64_t seeded[LSTATE], int leapfrog, double sums[BLOCKS]) {
  static double z[PATHS];
  int64_t state[LSTATE];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int b, i;
  memcpy(state, seeded, sizeof state);
  g05skc(PATHS, 0.0, 1.0, state, z, &fail);
  check(&fail);
  for (b = 0; b < BLOCKS; ++b) {
    sums[b] = 0.0;
    for (i = 0; i < LEN; ++i) sums[b] += payoff(z[leapfrog ? b + i * BLOCKS : b * LEN + i]);
  }
}

/* The price from the block sums, added in block order. */
static double price(const double sums[BLOCKS]) {
  double total = 0.0;
  int b;
  for (b = 0; b < BLOCKS; ++b) total += sums[b];
  return exp(-R * T) * total / PATHS;
}

int main(int argc, char **argv) {
  int rank, size, b, leapfrog, status = 0;
  int64_t seed[1] = {20260401}, seeded[LSTATE], lstate = LSTATE;
  Zem_Fail fail = ZEM_FAIL_INIT;

  MPI_Init(&argc, &argv);
  MPI_Comm_rank(MPI_COMM_WORLD, &rank);
  MPI_Comm_size(MPI_COMM_WORLD, &size);
  if (BLOCKS % size != 0) {
    if (rank == 0) fprintf(stderr, "the number of processes must divide %d\n", BLOCKS);
    MPI_Finalize();
    return 1;
  }
  /* Every process seeds the same state: one seed, one stream. */
  g05kfc(Zem_MRG32k3a, 1, seed, 1, seeded, &lstate, &fail);
  check(&fail);
  if (rank == 0) printf("European call, S0 = K = 100, r = 0.05, sigma = 0.2, T = 1: %d paths\n", PATHS);
  for (leapfrog = 0; leapfrog <= 1; ++leapfrog) {
    double mine[BLOCKS], all[BLOCKS], serial[BLOCKS];
    int n = 0;
    /* Blocks rank, rank + size, ...: gathered in rank order, so block
       rank + j*size arrives at all[rank * (BLOCKS/size) + j]. */
    for (b = rank; b < BLOCKS; b += size) mine[n++] = block_sum(seeded, leapfrog, b);
    MPI_Gather(mine, n, MPI_DOUBLE, all, n, MPI_DOUBLE, 0, MPI_COMM_WORLD);
    if (rank == 0) {
      double sums[BLOCKS], p, q;
      int r, j;
      for (r = 0; r < size; ++r)
        for (j = 0; j < n; ++j) sums[r + j * size] = all[r * n + j];
      serial_sums(seeded, leapfrog, serial);
      p = price(sums);
      q = price(serial);
      printf("%-10s price %.17g, the serial run's %.17g: %s\n", leapfrog ? "leap-frog" : "skip-ahead", p, q,
             memcmp(&p, &q, sizeof p) == 0 ? "identical bits" : "DIFFERENT");
      if (memcmp(&p, &q, sizeof p) != 0) status = 1;
    }
  }
  if (rank == 0) {
    /* Black-Scholes, for scale: the standard error of the estimate is about 0.015. */
    const double d1 = (log(S0 / K) + (R + 0.5 * SIGMA * SIGMA) * T) / (SIGMA * sqrt(T)), d2 = d1 - SIGMA * sqrt(T);
    printf("closed form  %.12f\n", S0 * 0.5 * erfc(-d1 / sqrt(2.0)) - K * exp(-R * T) * 0.5 * erfc(-d2 / sqrt(2.0)));
  }
  MPI_Bcast(&status, 1, MPI_INT, 0, MPI_COMM_WORLD);
  MPI_Finalize();
  return status;
}
