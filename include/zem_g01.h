/* Zem chapter g01.  Included by zem.h. */

/* g01ea: a tail probability of the standard Normal distribution for the
 * deviate x: Zem_LowerTail P(X <= x), Zem_UpperTail P(X >= x),
 * Zem_TwoTailSignif P(|X| >= |x|), Zem_TwoTailConfid P(|X| <= |x|).  The
 * Fortran entry takes 'L', 'U', 'S' or 'C' in either case.  On failure the
 * result is 0.0. */
double g01eac(Zem_TailProbability tail, double x, Zem_Fail *fail);
double g01eaf_(const char *tail, const double *x, int64_t *ifail, size_t tail_len);
#define zem_prob_normal g01eac

/* g01fa: the deviate of the standard Normal distribution whose tail
 * probability (as for g01ea) is p, 0 < p < 1.  On failure the result is
 * 0.0. */
double g01fac(Zem_TailProbability tail, double p, Zem_Fail *fail);
double g01faf_(const char *tail, const double *p, int64_t *ifail, size_t tail_len);
#define zem_deviates_normal g01fac
