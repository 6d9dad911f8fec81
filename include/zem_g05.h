/* Zem chapter g05: random number generators.  Included by zem.h.
 *
 * A generator's whole state lives in the caller's 64-bit integer array
 * state, filled by g05kf/g05kg and advanced in place by every routine that
 * draws from it; the installed page share/doc/zem/g05-generators.md (and
 * its html/ rendering) describes the six base generators
 * (enumeration Zem_BaseRNG: genid 1 to 6). */

/* g05kf: repeatable initialisation of state from seed[0 .. lseed-1].
 * *lstate <= 0 asks for the required length, returned in *lstate. */
void g05kfc(Zem_BaseRNG genid, int64_t subid, const int64_t seed[], int64_t lseed, int64_t state[],
            int64_t *lstate, Zem_Fail *fail);
void g05kff_(const int64_t *genid, const int64_t *subid, const int64_t seed[], const int64_t *lseed,
             int64_t state[], int64_t *lstate, int64_t *ifail);
#define zem_rand_init_repeatable g05kfc

/* g05kg: non-repeatable initialisation (seeded from the clock). */
void g05kgc(Zem_BaseRNG genid, int64_t subid, int64_t state[], int64_t *lstate, Zem_Fail *fail);
void g05kgf_(const int64_t *genid, const int64_t *subid, int64_t state[], int64_t *lstate, int64_t *ifail);
#define zem_rand_init_nonrepeatable g05kgc

/* g05kh: leap-frog; state then gives values k, k+n, k+2n, ... (0 < k <= n). */
void g05khc(int64_t n, int64_t k, int64_t state[], Zem_Fail *fail);
void g05khf_(const int64_t *n, const int64_t *k, int64_t state[], int64_t *ifail);
#define zem_rand_leap_frog g05khc

/* g05kj: skip-ahead by n >= 0 values. */
void g05kjc(int64_t n, int64_t state[], Zem_Fail *fail);
void g05kjf_(const int64_t *n, int64_t state[], int64_t *ifail);
#define zem_rand_skip_ahead g05kjc

/* g05kk: skip-ahead by 2^n values, n >= 0. */
void g05kkc(int64_t n, int64_t state[], Zem_Fail *fail);
void g05kkf_(const int64_t *n, int64_t state[], int64_t *ifail);
#define zem_rand_skip_ahead_power2 g05kkc

/* g05sa: n >= 0 uniform numbers strictly inside (0,1) into x. */
void g05sac(int64_t n, int64_t state[], double x[], Zem_Fail *fail);
void g05saf_(const int64_t *n, int64_t state[], double x[], int64_t *ifail);
#define zem_rand_uniform01 g05sac

/* g05sk: n >= 0 pseudo-random variates from the Normal distribution with
 * mean xmu and variance var >= 0, by inversion (one uniform per variate);
 * var = 0 gives n copies of xmu and leaves state unchanged. */
void g05skc(int64_t n, double xmu, double var, int64_t state[], double x[], Zem_Fail *fail);
void g05skf_(const int64_t *n, const double *xmu, const double *var, int64_t state[], double x[],
             int64_t *ifail);
#define zem_rand_normal g05skc
