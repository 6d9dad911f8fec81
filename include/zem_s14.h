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

/* s14ae: psi^(k)(x), the derivative of order k <= 6 of the psi function. */
double s14aec(double x, int64_t k, Zem_Fail *fail);
double s14aef_(const double *x, const int64_t *k, int64_t *ifail);
#define zem_psi_deriv_real s14aec

/* s14ad: (-1)^(k+1) psi^(k)(x)/k!, k = n, ..., n + m - 1, x > 0. */
void s14adc(double x, int64_t n, int64_t m, double ans[], Zem_Fail *fail);
void s14adf_(const double *x, const int64_t *n, const int64_t *m, double ans[], int64_t *ifail);
#define zem_psi_deriv_scaled s14adc

/* s14af: psi^(k)(z), the derivative of order k <= 4 of psi, complex z. */
Zem_Complex s14afc(Zem_Complex z, int64_t k, Zem_Fail *fail);
Zem_Complex s14aff_(const Zem_Complex *z, const int64_t *k, int64_t *ifail);
#define zem_psi_deriv_complex s14afc

/* s14ag: ln Gamma(z), complex z. */
Zem_Complex s14agc(Zem_Complex z, Zem_Fail *fail);
Zem_Complex s14agf_(const Zem_Complex *z, int64_t *ifail);
#define zem_log_gamma_complex s14agc

/* s14cc: the regularised incomplete beta function I_x(a, b) and 1 - I_x(a, b). */
void s14ccc(double a, double b, double x, double *w, double *w1, Zem_Fail *fail);
void s14ccf_(const double *a, const double *b, const double *x, double *w, double *w1, int64_t *ifail);
#define zem_incomplete_beta s14ccc

/* s14cp: ln B(a[i], b[i]), the log of the complete beta function, for vectors. */
void s14cpc(int64_t n, const double a[], const double b[], double f[], int64_t ivalid[], Zem_Fail *fail);
void s14cpf_(const int64_t *n, const double a[], const double b[], double f[], int64_t ivalid[], int64_t *ifail);
#define zem_log_beta_vector s14cpc

/* s14cq: I_x(a, b) and 1 - I_x(a, b) for vectors of (a, b, x). */
void s14cqc(int64_t n, const double a[], const double b[], const double x[], double w[], double w1[],
            int64_t ivalid[], Zem_Fail *fail);
void s14cqf_(const int64_t *n, const double a[], const double b[], const double x[], double w[], double w1[],
             int64_t ivalid[], int64_t *ifail);
#define zem_incomplete_beta_vector s14cqc
