/* Zem chapter d01: one-dimensional quadrature.  Included by zem.h.
 *
 * The adaptive routines aim at |I - result| <= max(epsabs, epsrel |I|) and
 * return an error estimate abserr.  Their lists (rinfo, iinfo, or w, iw of
 * d01aj) hold on exit, for the n subintervals used:
 *   rinfo[0..n)  left ends      rinfo[n..2n)   right ends
 *   rinfo[2n..3n) error estimates rinfo[3n..4n) integral estimates
 *   iinfo[0] = n, iinfo[1..] = the subintervals (1-based) by decreasing error
 *   as far as the routine kept them ordered, at most maxsub - 1 of them.
 * ifail / errnum: 1 subdivision limit, 2 round-off, 3 bad integrand
 * behaviour, 4 round-off in the extrapolation, 5 divergence (warnings: every
 * output is set); 6 maxsub or workspace, 7 key/inf/npts, 8 break points
 * (errors); -1 the integrand asked to stop.
 */

/* The vectorised integrand: fv[i] = f(x[i]) for i < nx.  Set *iflag to a
 * negative value to stop the routine (it returns at once with NE_USER_STOP
 * and the best values it holds). */
typedef void (*Zem_D01_VecFun)(const double x[], int64_t nx, double fv[], int64_t *iflag, Zem_Comm *comm);
typedef void (*Zem_D01_FVecFun)(const double x[], const int64_t *nx, double fv[], int64_t *iflag,
                                int64_t iuser[], double ruser[], void **cpuser);

/* d01rj: adaptive integration over a finite interval, 21-point Gauss-Kronrod
 * rule with extrapolation by the epsilon algorithm.  rinfo has 4 maxsub
 * elements, iinfo maxsub. */
void d01rjc(Zem_D01_VecFun f, double a, double b, double epsabs, double epsrel, int64_t maxsub, double *result,
            double *abserr, double rinfo[], int64_t iinfo[], Zem_Comm *comm, Zem_Fail *fail);
void d01rjf_(Zem_D01_FVecFun f, const double *a, const double *b, const double *epsabs, const double *epsrel,
             const int64_t *maxsub, double *result, double *abserr, double rinfo[], int64_t iinfo[],
             int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail);
#define zem_quad_adapt_vec d01rjc

/* d01aj: as d01rj with a scalar integrand and workspace arrays: w (lw >= 4
 * elements) holds the lists of rinfo, iw (liw >= 1) those of iinfo, for at
 * most min(lw/4, liw) subintervals. */
typedef double (*Zem_D01AJ_Fun)(double x, Zem_Comm *comm);
typedef double (*Zem_D01AJ_FFun)(const double *x, int64_t iuser[], double ruser[]);
void d01ajc(Zem_D01AJ_Fun f, double a, double b, double epsabs, double epsrel, double *result, double *abserr,
            double w[], int64_t lw, int64_t iw[], int64_t liw, Zem_Comm *comm, Zem_Fail *fail);
void d01ajf_(Zem_D01AJ_FFun f, const double *a, const double *b, const double *epsabs, const double *epsrel,
             double *result, double *abserr, double w[], const int64_t *lw, int64_t iw[], const int64_t *liw,
             int64_t iuser[], double ruser[], int64_t *ifail);
#define zem_quad_adapt_scalar d01ajc

/* d01rk: adaptive integration without extrapolation, for smooth integrands;
 * key = 1..6 selects the Gauss-Kronrod pair 7-15, 10-21, 15-31, 20-41,
 * 25-51 or 30-61. */
void d01rkc(Zem_D01_VecFun f, double a, double b, double epsabs, double epsrel, int64_t key, int64_t maxsub,
            double *result, double *abserr, double rinfo[], int64_t iinfo[], Zem_Comm *comm, Zem_Fail *fail);
void d01rkf_(Zem_D01_FVecFun f, const double *a, const double *b, const double *epsabs, const double *epsrel,
             const int64_t *key, const int64_t *maxsub, double *result, double *abserr, double rinfo[],
             int64_t iinfo[], int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail);
#define zem_quad_adapt_gk_vec d01rkc

/* d01rl: as d01rj, with npts >= 0 break points (points[0..npts)) inside the
 * interval where f misbehaves; maxsub >= npts + 1. */
void d01rlc(Zem_D01_VecFun f, double a, double b, int64_t npts, const double points[], double epsabs,
            double epsrel, int64_t maxsub, double *result, double *abserr, double rinfo[], int64_t iinfo[],
            Zem_Comm *comm, Zem_Fail *fail);
void d01rlf_(Zem_D01_FVecFun f, const double *a, const double *b, const int64_t *npts, const double points[],
             const double *epsabs, const double *epsrel, const int64_t *maxsub, double *result, double *abserr,
             double rinfo[], int64_t iinfo[], int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail);
#define zem_quad_adapt_brkpts_vec d01rlc

/* d01rm: infinite range: inf = 1 for (bound, +inf), -1 for (-inf, bound),
 * 2 for (-inf, +inf) (bound unused); the range is mapped onto (0, 1] and the
 * lists describe subintervals of (0, 1]. */
void d01rmc(Zem_D01_VecFun f, double bound, int64_t inf, double epsabs, double epsrel, int64_t maxsub,
            double *result, double *abserr, double rinfo[], int64_t iinfo[], Zem_Comm *comm, Zem_Fail *fail);
void d01rmf_(Zem_D01_FVecFun f, const double *bound, const int64_t *inf, const double *epsabs,
             const double *epsrel, const int64_t *maxsub, double *result, double *abserr, double rinfo[],
             int64_t iinfo[], int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail);
#define zem_quad_adapt_inf_vec d01rmc

/* d01bd: non-adaptive: Patterson's nested 21-, 43- and 87-point rules on
 * [a,b], stopping at the first that meets the tolerance. */
void d01bdc(Zem_D01_VecFun f, double a, double b, double epsabs, double epsrel, double *result, double *abserr,
            Zem_Comm *comm, Zem_Fail *fail);
void d01bdf_(Zem_D01_FVecFun f, const double *a, const double *b, const double *epsabs, const double *epsrel,
             double *result, double *abserr, int64_t iuser[], double ruser[], void **cpuser, int64_t *ifail);
#define zem_quad_patterson d01bdc
