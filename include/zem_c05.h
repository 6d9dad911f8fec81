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
