/* e04stc example: Hock and Schittkowski's problem 71, a small nonlinear
 * program with a nonlinear equality and inequality, solved with exact
 * second derivatives; then a linear program read from an MPS file. */
#include <stdio.h>
#include <zem.h>

/* f(x) = x1 x4 (x1 + x2 + x3) + x3 */
static void objfun(int64_t nvar, const double x[], double *fx, int64_t *inform, Zem_Comm *comm) {
  (void)nvar, (void)inform, (void)comm;
  *fx = x[0] * x[3] * (x[0] + x[1] + x[2]) + x[2];
}
static void objgrd(int64_t nvar, const double x[], int64_t nnzfd, double fdx[], int64_t *inform, Zem_Comm *comm) {
  (void)nvar, (void)nnzfd, (void)inform, (void)comm;
  fdx[0] = x[3] * (2 * x[0] + x[1] + x[2]);
  fdx[1] = x[0] * x[3];
  fdx[2] = x[0] * x[3] + 1;
  fdx[3] = x[0] * (x[0] + x[1] + x[2]);
}
/* g1 = x1 x2 x3 x4 >= 25,  g2 = x1^2 + x2^2 + x3^2 + x4^2 = 40 */
static void confun(int64_t nvar, const double x[], int64_t ncnln, double gx[], int64_t *inform, Zem_Comm *comm) {
  (void)nvar, (void)ncnln, (void)inform, (void)comm;
  gx[0] = x[0] * x[1] * x[2] * x[3];
  gx[1] = x[0] * x[0] + x[1] * x[1] + x[2] * x[2] + x[3] * x[3];
}
static void congrd(int64_t nvar, const double x[], int64_t nnzgd, double gdx[], int64_t *inform, Zem_Comm *comm) {
  int k;
  (void)nvar, (void)nnzgd, (void)inform, (void)comm;
  gdx[0] = x[1] * x[2] * x[3];
  gdx[1] = x[0] * x[2] * x[3];
  gdx[2] = x[0] * x[1] * x[3];
  gdx[3] = x[0] * x[1] * x[2];
  for (k = 0; k < 4; k++) gdx[4 + k] = 2 * x[k];
}
/* Hessian of the Lagrangian sigma f + lambda1 g1 + lambda2 g2, upper triangle */
static void hess(int64_t nvar, const double x[], int64_t ncnln, int64_t idf, double s, const double l[], int64_t nnzh,
                 double h[], int64_t *inform, Zem_Comm *comm) {
  (void)nvar, (void)ncnln, (void)idf, (void)nnzh, (void)inform, (void)comm;
  h[0] = s * 2 * x[3] + 2 * l[1];
  h[1] = s * x[3] + l[0] * x[2] * x[3];
  h[2] = s * x[3] + l[0] * x[1] * x[3];
  h[3] = s * (2 * x[0] + x[1] + x[2]) + l[0] * x[1] * x[2];
  h[4] = 2 * l[1];
  h[5] = l[0] * x[0] * x[3];
  h[6] = s * x[0] + l[0] * x[0] * x[2];
  h[7] = 2 * l[1];
  h[8] = s * x[0] + l[0] * x[0] * x[1];
  h[9] = 2 * l[1];
}

static const char *lp =
    "NAME          DIET\n"
    "ROWS\n"
    " N  COST\n"
    " G  PROTEIN\n"
    " G  ENERGY\n"
    " L  FAT\n"
    "COLUMNS\n"
    "    BEANS     COST         2.0   PROTEIN      8.0\n"
    "    BEANS     ENERGY       3.0   FAT          1.0\n"
    "    BREAD     COST         1.5   PROTEIN      3.0\n"
    "    BREAD     ENERGY       6.0   FAT          0.5\n"
    "    CHEESE    COST         4.0   PROTEIN     10.0\n"
    "    CHEESE    ENERGY       4.0   FAT          3.0\n"
    "RHS\n"
    "    RHS       PROTEIN     30.0   ENERGY      24.0\n"
    "    RHS       FAT          9.0\n"
    "ENDATA\n";

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  const double bl[4] = {1, 1, 1, 1}, bu[4] = {5, 5, 5, 5};
  const int64_t idxfd[4] = {1, 2, 3, 4};
  const double cl[2] = {25, 40}, cu[2] = {1e20, 40};
  const int64_t irowgd[8] = {1, 1, 1, 1, 2, 2, 2, 2}, icolgd[8] = {1, 2, 3, 4, 1, 2, 3, 4};
  const int64_t irowh[10] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 4}, icolh[10] = {1, 2, 3, 4, 2, 3, 4, 3, 4, 4};
  double x[4] = {1, 5, 5, 1}, u[6], rinfo[100], stats[100], xl[3];
  Zem_Comm comm = ZEM_COMM_INIT;
  FILE *f;
  int k;

  printf("e04stc example results\n\n");
  zem_opt_handle_init(&handle, 4, &fail);
  e04rhc(handle, 4, bl, bu, &fail);
  e04rgc(handle, 4, idxfd, &fail);
  e04rkc(handle, 2, cl, cu, 8, irowgd, icolgd, &fail);
  e04rlc(handle, -1, 10, irowh, icolh, &fail);
  e04zmc(handle, "Print Level = 1", &fail);
  e04zmc(handle, "Print Options = No", &fail);
  zem_opt_handle_solve_ipopt(handle, objfun, objgrd, confun, congrd, hess, NULL, 4, x, 6, u, rinfo, stats, &comm,
                             &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04stc:\n%s\n", fail.message);
    return 1;
  }
  printf("\nHS 71: f = %.5f at x =", rinfo[0]);
  for (k = 0; k < 4; k++) printf(" %.5f", x[k]);
  printf("\nmultipliers of g1, g2: %.5f %.5f\n", u[4], u[5]);
  e04rzc(&handle, &fail);

  /* A linear program from an MPS file, solved quietly. */
  f = fopen("diet.mps", "w");
  if (!f) return 1;
  fputs(lp, f);
  fclose(f);
  e04sac(&handle, "MPS", "diet.mps", &fail);
  remove("diet.mps");
  e04zmc(handle, "Print Level = 0", &fail);
  xl[0] = xl[1] = xl[2] = 0.0;
  e04stc(handle, NULL, NULL, NULL, NULL, NULL, NULL, 3, xl, 0, NULL, rinfo, stats, NULL, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04stc:\n%s\n", fail.message);
    return 1;
  }
  printf("\nDiet LP: cost = %.5f, beans %.5f, bread %.5f, cheese %.5f\n", rinfo[0], xl[0], xl[1], xl[2]);
  e04rzc(&handle, &fail);
  return 0;
}
