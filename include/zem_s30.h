/* Zem chapter s30: option pricing.  Included by zem.h.
 *
 * The grid routines price one option type for m strikes x[] and n expiries
 * t[] in one call; p(i, j), i < m, j < n, the price for strike x[i] and
 * expiry t[j], lies at p[i + j*ldp] for Zem_ColMajor (ldp >= m) and at
 * p[i*ldp + j] for Zem_RowMajor (ldp >= n).  The Fortran entries store
 * column by column and take the option type as 'C' (call) or 'P' (put). */

/* s30aa: European options in the Black-Scholes-Merton model with spot s,
 * volatility sigma, risk-free rate r and continuous dividend yield q. */
void s30aac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double q, double p[], int64_t ldp, Zem_Fail *fail);
void s30aaf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, double *p, const int64_t *ldp,
             int64_t *ifail, size_t calput_len);
#define zem_opt_bsm_price s30aac

/* s30ab: as s30aa, with eleven sensitivities, each a matrix of the layout of
 * p: delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma,
 * vomma (share/doc/zem/s30ab.md). */
void s30abc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double q, double p[], int64_t ldp, double delta[],
            double gamma[], double vega[], double theta[], double rho[], double vanna[], double charm[],
            double speed[], double colour[], double zomma[], double vomma[], Zem_Fail *fail);
void s30abf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, double *p, const int64_t *ldp,
             double *delta, double *gamma, double *vega, double *theta, double *rho, double *vanna, double *charm,
             double *speed, double *colour, double *zomma, double *vomma, int64_t *ifail, size_t calput_len);
#define zem_opt_bsm_greeks s30abc

/* s30ac: European prices element by element: p[k] for option[k], x[k], s[k],
 * t[k], sigma[k], r[k], q[k], k < n.  A bad element gets p[k] = 0.0 and in
 * ivalid[k] the number of its first bad argument (1 option, 2 x, 3 s, 4 t,
 * 5 sigma, 6 r, 7 q), and the call ends with NW_IVALID; the other elements
 * are priced. */
void s30acc(const Zem_OptionType option[], int64_t n, const double x[], const double s[], const double t[],
            const double sigma[], const double r[], const double q[], double p[], int64_t ivalid[], Zem_Fail *fail);
void s30acf_(const char *calput, const int64_t *n, const double *x, const double *s, const double *t,
             const double *sigma, const double *r, const double *q, double *p, int64_t *ivalid, int64_t *ifail,
             size_t calput_len);
#define zem_opt_bsm_price_vector s30acc

/* s30ca: cash-or-nothing binary options: p(i, j) is the value of receiving
 * the amount k at expiry t[j] if the spot then lies above (Zem_Call) or
 * below (Zem_Put) x[i]; layout and bounds as s30aa, 0 <= k <= 2^511. */
void s30cac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double q, double k, double p[], int64_t ldp, Zem_Fail *fail);
void s30caf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, const double *k, double *p,
             const int64_t *ldp, int64_t *ifail, size_t calput_len);
#define zem_opt_binary_con_price s30cac

/* s30ba: floating-strike lookback options: p(i, j) for sm[i], the minimum
 * (Zem_Call) or maximum (Zem_Put) of the spot so far, and expiry t[j];
 * sm[i] <= s for calls, sm[i] >= s for puts; layout and bounds as s30aa. */
void s30bac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double sm[], double s,
            const double t[], double sigma, double r, double q, double p[], int64_t ldp, Zem_Fail *fail);
void s30baf_(const char *calput, const int64_t *m, const int64_t *n, const double *sm, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, double *p, const int64_t *ldp,
             int64_t *ifail, size_t calput_len);
#define zem_opt_lookback_fls_price s30bac

/* s30bb: as s30ba, with delta, gamma, vega, theta and rho, each a matrix of
 * the layout of p (share/doc/zem/s30bb.md); r and q must differ. */
void s30bbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double sm[], double s,
            const double t[], double sigma, double r, double q, double p[], int64_t ldp, double delta[],
            double gamma[], double vega[], double theta[], double rho[], Zem_Fail *fail);
void s30bbf_(const char *calput, const int64_t *m, const int64_t *n, const double *sm, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, double *p, const int64_t *ldp,
             double *delta, double *gamma, double *vega, double *theta, double *rho, int64_t *ifail,
             size_t calput_len);
#define zem_opt_lookback_fls_greeks s30bbc

/* s30cb: as s30ca, with delta, gamma, vega, theta and rho, each a matrix of
 * the layout of p (share/doc/zem/s30cb.md). */
void s30cbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double q, double k, double p[], int64_t ldp, double delta[],
            double gamma[], double vega[], double theta[], double rho[], Zem_Fail *fail);
void s30cbf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, const double *k, double *p,
             const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta, double *rho,
             int64_t *ifail, size_t calput_len);
#define zem_opt_binary_con_greeks s30cbc

/* s30fa: single-barrier options: p(i, j) for strike x[i] and expiry t[j] of
 * a call or put knocked in or out when the spot touches h from above
 * (Zem_DownandIn, Zem_DownandOut; s > h) or below (Zem_UpandIn,
 * Zem_UpandOut; s < h), with rebate k >= 0 (paid at expiry for a knock-in
 * never knocked in, at the touch for a knock-out); layout as s30aa. */
void s30fac(Zem_OrderType order, Zem_OptionType option, Zem_BarrierType type, int64_t m, int64_t n,
            const double x[], double s, double h, double k, const double t[], double sigma, double r, double q,
            double p[], int64_t ldp, Zem_Fail *fail);
void s30faf_(const char *calput, const char *btype, const int64_t *m, const int64_t *n, const double *x,
             const double *s, const double *h, const double *k, const double *t, const double *sigma,
             const double *r, const double *q, double *p, const int64_t *ldp, int64_t *ifail, size_t calput_len,
             size_t btype_len);
#define zem_opt_barrier_std_price s30fac

/* s30qc: American options by the Bjerksund-Stensland (1993) closed-form
 * approximation: p(i, j) for strike x[i] and expiry t[j]; layout and bounds
 * as s30aa, and s^beta < 2^1022 for the perpetual exponent beta
 * (share/doc/zem/s30qc.md). */
void s30qcc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double q, double p[], int64_t ldp, Zem_Fail *fail);
void s30qcf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *q, double *p, const int64_t *ldp,
             int64_t *ifail, size_t calput_len);
#define zem_opt_amer_bs_price s30qcc

/* s30ja: European options in Merton's jump-diffusion model (jumps of mean
 * relative size zero): total volatility sigma, risk-free rate r, jump
 * intensity lambda > 0 and jvol in [0, 1) the share of the variance due to
 * jumps; lambda*t[j] <= 2^24.  Layout and other bounds as s30aa
 * (share/doc/zem/s30ja.md). */
void s30jac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double lambda, double jvol, double p[], int64_t ldp,
            Zem_Fail *fail);
void s30jaf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *lambda, const double *jvol,
             double *p, const int64_t *ldp, int64_t *ifail, size_t calput_len);
#define zem_opt_jumpdiff_merton_price s30jac

/* s30jb: as s30ja, with the eleven sensitivities of s30ab in the same order
 * (share/doc/zem/s30jb.md). */
void s30jbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigma, double r, double lambda, double jvol, double p[], int64_t ldp,
            double delta[], double gamma[], double vega[], double theta[], double rho[], double vanna[],
            double charm[], double speed[], double colour[], double zomma[], double vomma[], Zem_Fail *fail);
void s30jbf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigma, const double *r, const double *lambda, const double *jvol,
             double *p, const int64_t *ldp, double *delta, double *gamma, double *vega, double *theta, double *rho,
             double *vanna, double *charm, double *speed, double *colour, double *zomma, double *vomma,
             int64_t *ifail, size_t calput_len);
#define zem_opt_jumpdiff_merton_greeks s30jbc

/* s30na: European options in Heston's stochastic-volatility model, by
 * numerical quadrature: volatility of variance sigmav > 0, mean reversion
 * kappa > 0, correlation |corr| <= 1, initial variance var0 >= 0, long-run
 * variance eta > 0, variance risk parameter grisk in [0, 1] with
 * grisk*(1-grisk)*sigmav^2 <= kappa^2, rate r, dividend yield q.  Layout and
 * bounds of x, s, t, r, q as s30aa.  NE_CONVERGENCE is a warning (every
 * price set) where the quadrature misses its accuracy target
 * (share/doc/zem/s30na.md). */
void s30nac(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigmav, double kappa, double corr, double var0, double eta, double grisk,
            double r, double q, double p[], int64_t ldp, Zem_Fail *fail);
void s30naf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigmav, const double *kappa, const double *corr, const double *var0,
             const double *eta, const double *grisk, const double *r, const double *q, double *p, const int64_t *ldp,
             int64_t *ifail, size_t calput_len);
#define zem_opt_heston_price s30nac

/* s30nb: as s30na, with delta, gamma, vega (d/d sqrt(var0)), theta (-d/dt)
 * and rho (share/doc/zem/s30nb.md). */
void s30nbc(Zem_OrderType order, Zem_OptionType option, int64_t m, int64_t n, const double x[], double s,
            const double t[], double sigmav, double kappa, double corr, double var0, double eta, double grisk,
            double r, double q, double p[], int64_t ldp, double delta[], double gamma[], double vega[],
            double theta[], double rho[], Zem_Fail *fail);
void s30nbf_(const char *calput, const int64_t *m, const int64_t *n, const double *x, const double *s,
             const double *t, const double *sigmav, const double *kappa, const double *corr, const double *var0,
             const double *eta, const double *grisk, const double *r, const double *q, double *p, const int64_t *ldp,
             double *delta, double *gamma, double *vega, double *theta, double *rho, int64_t *ifail,
             size_t calput_len);
#define zem_opt_heston_greeks s30nbc

/* s30nc: European options in Heston's model with piecewise-constant
 * parameters: period k (k < numts) of length ts[k] has volatility of
 * variance alpha[k], mean reversion lambda[k], correlation corr[k] and
 * long-run volatility sigmat[k] (the last period's values hold beyond it);
 * p[i] for strike x[i], expiry t, forward fwd and discount factor disc to t,
 * initial variance var0 (share/doc/zem/s30nc.md). */
void s30ncc(Zem_OptionType option, int64_t m, int64_t numts, const double x[], double fwd, double disc,
            const double ts[], double t, const double alpha[], const double lambda[], const double corr[],
            const double sigmat[], double var0, double p[], Zem_Fail *fail);
void s30ncf_(const char *calput, const int64_t *m, const int64_t *numts, const double *x, const double *fwd,
             const double *disc, const double *ts, const double *t, const double *alpha, const double *lambda,
             const double *corr, const double *sigmat, const double *var0, double *p, int64_t *ifail,
             size_t calput_len);
#define zem_opt_heston_term s30ncc
