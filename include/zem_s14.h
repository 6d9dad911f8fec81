/* Zem chapter s14: the gamma function family.  Included by zem.h. */

/* s14aa: the gamma function Gamma(x). */
double s14aac(double x, Zem_Fail *fail);
double s14aaf_(const double *x, int64_t *ifail);
#define zem_gamma s14aac

/* s14ab: ln Gamma(x), x > 0. */
double s14abc(double x, Zem_Fail *fail);
double s14abf_(const double *x, int64_t *ifail);
#define zem_log_gamma s14abc

/* s14an: Gamma(x[i]) for a vector, per-element status in ivalid. */
void s14anc(int64_t n, const double x[], double f[], int64_t ivalid[], Zem_Fail *fail);
void s14anf_(const int64_t *n, const double x[], double f[], int64_t ivalid[], int64_t *ifail);
#define zem_gamma_vector s14anc

/* s14ap: ln Gamma(x[i]) for a vector, per-element status in ivalid. */
void s14apc(int64_t n, const double x[], double f[], int64_t ivalid[], Zem_Fail *fail);
void s14apf_(const int64_t *n, const double x[], double f[], int64_t ivalid[], int64_t *ifail);
#define zem_log_gamma_vector s14apc

/* s14ba: the regularised incomplete gamma functions P(a, x) and Q(a, x). */
void s14bac(double a, double x, double tol, double *p, double *q, Zem_Fail *fail);
void s14baf_(const double *a, const double *x, const double *tol, double *p, double *q, int64_t *ifail);
#define zem_incomplete_gamma s14bac

/* s14ac: psi(x) - ln x, x > 0. */
double s14acc(double x, Zem_Fail *fail);
double s14acf_(const double *x, int64_t *ifail);
#define zem_psi_deriv_minus_log s14acc
