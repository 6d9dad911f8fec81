/* Zem chapter d02: the Runge-Kutta initial value suite (d02p).  Included by
 * zem.h.
 *
 * y' = f(t, y), y(tstart) = yinit, integrated towards tend with one of three
 * embedded Runge-Kutta pairs (Zem_RK_2_3, Zem_RK_4_5, Zem_RK_7_8).  d02pq
 * sets a problem up in two caller-owned arrays, iwsav (ZEM_D02P_LIWSAV
 * elements) and rwsav (length returned by d02pq when *lrwsav <= 0:
 *     64 + n (7 + s)              without global error assessment,
 *     64 + n (11 + 2 s)           with it,
 * s = 4, 8, 13 stages for the three pairs); every later routine takes them.
 * Then either the range integrator d02pe (answers at points twant) or the
 * step integrator d02pf / d02pg (one step a call; dense output with d02ph +
 * d02pj or d02ps; a new end point with d02pr).  d02pt gives statistics,
 * d02pu the global error assessment.  share/doc/zem/d02pq.md describes the suite.
 *
 * errnum / ifail: 1 arguments or call sequence (the problem is over when an
 * integrator returns it), 2 evaluation budget used (warning), 3 stiffness
 * (warning), 4 step size too small, 5 inefficient use (warning), 6 global
 * error assessment failed; -1 the derivative function asked to stop.
 */
#define ZEM_D02P_LIWSAV 32

/* The derivative: yp[0..n) = f(t, y[0..n)).  Change comm->flag to stop. */
typedef void (*Zem_D02P_Fun)(double t, int64_t n, const double y[], double yp[], Zem_Comm *comm);
typedef void (*Zem_D02P_FFun)(const double *t, const int64_t *n, const double y[], double yp[], int64_t iuser[],
                              double ruser[]);

/* d02pq: setup.  tol relative tolerance (10 eps .. 0.01), thresh[i] > 0 the
 * magnitude below which component i is controlled absolutely; hstart the
 * first step (0: chosen automatically).  Fortran: method = 1, 2, 3 for the
 * three pairs, its negative to assess the global error as well. */
void d02pqc(int64_t n, double tstart, double tend, const double yinit[], double tol, const double thresh[],
            Zem_RK_method method, Zem_ErrorAssess errass, double hstart, int64_t iwsav[], double rwsav[],
            int64_t *lrwsav, Zem_Fail *fail);
void d02pqf_(const int64_t *n, const double *tstart, const double *tend, const double yinit[], const double *tol,
             const double thresh[], const int64_t *method, const double *hstart, int64_t iwsav[], double rwsav[],
             int64_t *lrwsav, int64_t *ifail);
#define zem_ode_ivp_rkts_setup d02pqc

/* d02pe: the range integrator: the solution at twant (tgot = twant), with
 * ymax[i] the largest |y_i| so far. */
void d02pec(Zem_D02P_Fun f, int64_t n, double twant, double *tgot, double ygot[], double ypgot[], double ymax[],
            Zem_Comm *comm, int64_t iwsav[], double rwsav[], Zem_Fail *fail);
void d02pef_(Zem_D02P_FFun f, const int64_t *n, const double *twant, double *tgot, double ygot[], double ypgot[],
             double ymax[], int64_t iuser[], double ruser[], int64_t iwsav[], double rwsav[], int64_t *ifail);
#define zem_ode_ivp_rkts_range d02pec

/* d02pf: the step integrator: one step, to tnow. */
void d02pfc(Zem_D02P_Fun f, int64_t n, double *tnow, double ynow[], double ypnow[], Zem_Comm *comm, int64_t iwsav[],
            double rwsav[], Zem_Fail *fail);
void d02pff_(Zem_D02P_FFun f, const int64_t *n, double *tnow, double ynow[], double ypnow[], int64_t iuser[],
             double ruser[], int64_t iwsav[], double rwsav[], int64_t *ifail);
#define zem_ode_ivp_rkts_onestep d02pfc

/* d02pg: d02pf in reverse communication.  Call with *irevcm = 0; while it
 * returns *irevcm = 1 or 2, put f(*t, y) into yp and call again with irevcm
 * unchanged; *irevcm = 0 on return: the step is done (or failed). */
void d02pgc(int64_t *irevcm, int64_t n, double *t, double y[], double yp[], double *tnow, double ynow[],
            double ypnow[], int64_t iwsav[], double rwsav[], Zem_Fail *fail);
void d02pgf_(int64_t *irevcm, const int64_t *n, double *t, double y[], double yp[], double *tnow, double ynow[],
             double ypnow[], int64_t iwsav[], double rwsav[], int64_t *ifail);
#define zem_ode_ivp_rkts_revcomm d02pgc

/* d02ph / d02pj: dense output on the last step, prepared for the first
 * nwant components in wcomm, then evaluated (ideriv 0: y, 1: y and y'). */
void d02phc(int64_t n, int64_t nwant, int64_t iwsav[], double rwsav[], double wcomm[], int64_t lwcomm,
            Zem_Fail *fail);
void d02phf_(const int64_t *n, const int64_t *nwant, int64_t iwsav[], double rwsav[], double wcomm[],
             const int64_t *lwcomm, int64_t *ifail);
#define zem_ode_ivp_rkts_interp_setup d02phc
void d02pjc(int64_t n, double twant, int64_t ideriv, int64_t nwant, double ywant[], double ypwant[],
            int64_t iwsav[], double rwsav[], const double wcomm[], int64_t lwcomm, Zem_Fail *fail);
void d02pjf_(const int64_t *n, const double *twant, const int64_t *ideriv, const int64_t *nwant, double ywant[],
             double ypwant[], int64_t iwsav[], double rwsav[], const double wcomm[], const int64_t *lwcomm,
             int64_t *ifail);
#define zem_ode_ivp_rkts_interp_eval d02pjc

/* d02pr: a new end point for the step integrator. */
void d02prc(double tendnu, int64_t iwsav[], double rwsav[], Zem_Fail *fail);
void d02prf_(const double *tendnu, int64_t iwsav[], double rwsav[], int64_t *ifail);
#define zem_ode_ivp_rkts_reset_tend d02prc

/* d02ps: dense output on the last step directly (ideriv 0: y, 1: y', 2: both). */
void d02psc(int64_t n, double twant, int64_t ideriv, int64_t nwant, double ywant[], double ypwant[],
            int64_t iwsav[], double rwsav[], Zem_Fail *fail);
void d02psf_(const int64_t *n, const double *twant, const int64_t *ideriv, const int64_t *nwant, double ywant[],
             double ypwant[], int64_t iwsav[], double rwsav[], int64_t *ifail);
#define zem_ode_ivp_rkts_interp d02psc

/* d02pt: evaluations, cost of a step, fraction of failed attempts, accepted
 * steps, next step size. */
void d02ptc(int64_t *fevals, int64_t *stepcost, double *waste, int64_t *stepsok, double *hnext, int64_t iwsav[],
            double rwsav[], Zem_Fail *fail);
void d02ptf_(int64_t *fevals, int64_t *stepcost, double *waste, int64_t *stepsok, double *hnext, int64_t iwsav[],
             double rwsav[], int64_t *ifail);
#define zem_ode_ivp_rkts_diag d02ptc

/* d02pu: the assessed global error (root-mean-square per component, the
 * maximum and its time). */
void d02puc(int64_t n, double rmserr[], double *errmax, double *terrmx, int64_t iwsav[], double rwsav[],
            Zem_Fail *fail);
void d02puf_(const int64_t *n, double rmserr[], double *errmax, double *terrmx, int64_t iwsav[], double rwsav[],
             int64_t *ifail);
#define zem_ode_ivp_rkts_errass d02puc
