/* Zem chapter c05: zeros of a continuous function of one variable.
 * Included by zem.h. */

/* c05ay: a zero of f in the interval [a,b] (Brent's method).
 * C: f(x, comm); Fortran: f(x, iuser, ruser), all by reference. */
typedef double (*Zem_C05AY_Fun)(double x, Zem_Comm *comm);
typedef double (*Zem_C05AY_FFun)(const double *x, int64_t iuser[], double ruser[]);
void c05ayc(double a, double b, double eps, double eta, Zem_C05AY_Fun f, double *x, Zem_Comm *comm,
            Zem_Fail *fail);
void c05ayf_(const double *a, const double *b, const double *eps, const double *eta, Zem_C05AY_FFun f,
             double *x, int64_t iuser[], double ruser[], int64_t *ifail);
#define zem_zero_cont_func_brent c05ayc

/* c05az: a zero of a continuous function by reverse communication.
 * Start with *ind = 1 (or -1 with f(x) in fx and f(y) in c[0]); while *ind is
 * non-zero on return, evaluate f at *x and call again with the value in fx.
 * c holds the whole state (10 elements) and must not be changed. */
void c05azc(double *x, double *y, double fx, double tolx, Zem_ErrorControl ir, double c[], int64_t *ind,
            Zem_Fail *fail);
void c05azf_(double *x, double *y, const double *fx, const double *tolx, const int64_t *ir, double c[],
             int64_t *ind, int64_t *ifail);
#define zem_zero_cont_func_brent_rcomm c05azc

/* c05au: a zero of f near the point *x.  A search from *x with step h
 * (then h*(-0.1)^k, k = 1, 2, 3) inside [boundl, boundu] finds an interval
 * on which f changes sign (as c05avc), then Brent's method solves on it to
 * the absolute tolerance eps (as c05ayc); any point with |f| < eta is
 * accepted at once.  *x is the start point on entry and the zero on exit.
 * C: f(x, comm); Fortran: f(x, iuser, ruser), all by reference. */
typedef double (*Zem_C05AU_Fun)(double x, Zem_Comm *comm);
typedef double (*Zem_C05AU_FFun)(const double *x, int64_t iuser[], double ruser[]);
void c05auc(double *x, double h, double eps, double eta, Zem_C05AU_Fun f, double boundl, double boundu,
            Zem_Comm *comm, Zem_Fail *fail);
void c05auf_(double *x, const double *h, const double *eps, const double *eta, Zem_C05AU_FFun f,
             const double *boundl, const double *boundu, int64_t iuser[], double ruser[], int64_t *ifail);
#define zem_zero_cont_func_brent_bsrch c05auc

/* c05av: by reverse communication, an interval on which f changes sign,
 * searched from *x with step h inside [boundl, boundu].  Start with *ind = 1
 * (or -1 with f(*x) in fx); while *ind is non-zero on return (2: f at the
 * start point, 3: f at a search point), evaluate f at *x and call again with
 * the value in fx.  On success *x and *y bracket the zero, fx was f(*x) and
 * c[0] holds f(*y), ready for c05azc with ind = -1 (*y = *x when f(*x) = 0).
 * c holds the whole state (12 elements) and must not be changed. */
void c05avc(double *x, double fx, double h, double boundl, double boundu, double *y, double c[], int64_t *ind,
            Zem_Fail *fail);
void c05avf_(double *x, const double *fx, const double *h, const double *boundl, const double *boundu, double *y,
             double c[], int64_t *ind, int64_t *ifail);
#define zem_interval_search_rcomm c05avc

/* c05aw: a zero of f near the point *x by continuation (see c05axc), with at
 * most nfmax calls of f, the absolute tolerance eps, and any point with
 * |f| < eta accepted at once.  A failed continuation is restarted from the
 * best point found while calls remain. */
typedef double (*Zem_C05AW_Fun)(double x, Zem_Comm *comm);
typedef double (*Zem_C05AW_FFun)(const double *x, int64_t iuser[], double ruser[]);
void c05awc(double *x, double eps, double eta, Zem_C05AW_Fun f, int64_t nfmax, Zem_Comm *comm, Zem_Fail *fail);
void c05awf_(double *x, const double *eps, const double *eta, Zem_C05AW_FFun f, const int64_t *nfmax,
             int64_t iuser[], double ruser[], int64_t *ifail);
#define zem_zero_cont_func_cntin c05awc

/* c05ax: a zero of f near the point *x by continuation, by reverse
 * communication.  Start with *ind = 1 (or -1 with f(*x) in fx); while *ind
 * is non-zero on return (2: f at the initial point, 3: f for the initial
 * derivative estimate, 4: f at a point of the continuation or of the final
 * solve), evaluate f at *x and call again with the value in fx.  tol and ir
 * (Zem_Mixed, Zem_Absolute, Zem_Relative) set the final accuracy as in
 * c05azc; scal is the increment of the initial derivative estimate.  c holds
 * the whole state (36 elements) and must not be changed. */
void c05axc(double *x, double fx, double tol, Zem_ErrorControl ir, double scal, double c[], int64_t *ind,
            Zem_Fail *fail);
void c05axf_(double *x, const double *fx, const double *tol, const int64_t *ir, const double *scal, double c[],
             int64_t *ind, int64_t *ifail);
#define zem_zero_cont_func_cntin_rcomm c05axc
