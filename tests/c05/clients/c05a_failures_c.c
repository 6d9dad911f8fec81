/* Every failure of c05auc, c05avc, c05awc and c05axc as a C client sees it:
 * code, error number and message in the fail record; one call with a NULL
 * fail record ends the program with the message on standard error. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static double cubic(double x, Zem_Comm *comm) { (void)comm; return x * x * x - 2.0; }
static double root2(double x, Zem_Comm *comm) { (void)comm; return x * x - 2.0; }
static double no_zero(double x, Zem_Comm *comm) { (void)comm; return x * x + 1.0; }
static double pole(double x, Zem_Comm *comm) { (void)comm; return 1.0 / (x - 0.5); }
static double flat(double x, Zem_Comm *comm) { (void)comm; (void)x; return 1.0; }
static double only_here(double x, Zem_Comm *comm) {
  (void)comm;
  return (x == 1.0 || x == 1.0 + 1e-8 || x == 1.0 - 1e-8) ? x : NAN;
}
static double stopper(double x, Zem_Comm *comm) {
  if (++comm->iuser[0] == 2) comm->flag = 5;
  return x - 0.37;
}

static void show(const char *what, const Zem_Fail *fail) {
  printf("-- %s: code %d, errnum %ld\n%s\n", what, fail->code, (long)fail->errnum, fail->message);
}

static void near(const char *what, double x, double h, double eps, Zem_C05AU_Fun f, double lo, double hi) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05auc(&x, h, eps, 0.0, f, lo, hi, NULL, &fail);
  show(what, &fail);
}

static void cont(const char *what, double x, double eps, Zem_C05AW_Fun f, int64_t nfmax) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05awc(&x, eps, 0.0, f, nfmax, NULL, &fail);
  show(what, &fail);
}

/* A search; after `after` returns, the refinement counter c[4] is set to 9. */
static void search(const char *what, double x, double h, double lo, double hi, Zem_C05AU_Fun f, int64_t ind,
                   int after) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double y = 0.0, fx = 0.0, c[12] = {0};
  int k;
  for (k = 0;; ++k) {
    if (k == after) c[4] = 9.0;
    c05avc(&x, fx, h, lo, hi, &y, c, &ind, &fail);
    if (ind == 0) break;
    fx = f(x, NULL);
  }
  show(what, &fail);
}

/* A continuation; after `after` returns, ind is replaced by new_ind (or the
 * direction c[7] by 0.5 when new_ind is 0). */
static void rcont(const char *what, double x, double tol, Zem_ErrorControl ir, double scal, Zem_C05AW_Fun f,
                  int64_t ind, int after, int64_t new_ind) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  double fx = 0.0, c[36] = {0};
  int k;
  for (k = 0;; ++k) {
    if (k == after && new_ind != 0) ind = new_ind;
    if (k == after && new_ind == 0) c[7] = 0.5;
    c05axc(&x, fx, tol, ir, scal, c, &ind, &fail);
    if (ind == 0) break;
    fx = f(x, NULL);
  }
  show(what, &fail);
}

int main(void) {
  double x = 0.0;
  int64_t count = 0;
  Zem_Comm comm = {0, NULL, NULL, NULL};
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("==== c05auc\n");
  near("eps", 1.0, 0.1, 0.0, cubic, 0.0, 2.0);
  near("boundl < boundu", 1.0, 0.1, 1e-8, cubic, 2.0, 2.0);
  near("boundl <= x <= boundu", 3.0, 0.1, 1e-8, cubic, 0.0, 2.0);
  near("x+h or x-h inside", 1.0, 5.0, 1e-8, cubic, 0.0, 2.0);
  near("x+h != x", 1.0, 1e-17, 1e-8, cubic, 0.0, 2.0);
  near("eps too small", 1.0, 0.1, 1e-30, root2, 0.0, 2.0);
  near("probable pole", 0.35, 0.1, 1e-10, pole, 0.0, 1.0);
  near("no interval", 0.0, 0.5, 1e-8, no_zero, -1.0, 1.0);
  comm.iuser = &count;
  c05auc(&x, 0.1, 1e-8, 0.0, stopper, -1.0, 1.0, &comm, &fail);
  show("user stop", &fail);
  c05auc(NULL, 0.1, 1e-8, 0.0, cubic, -1.0, 1.0, &comm, &fail);
  show("x null", &fail);

  printf("==== c05avc\n");
  search("ind", 0.0, 0.1, -1.0, 1.0, cubic, 7, -1);
  search("boundl < boundu", 0.0, 0.1, 1.0, -1.0, cubic, 1, -1);
  search("boundl <= x <= boundu", NAN, 0.1, -1.0, 1.0, cubic, 1, -1);
  search("x+h or x-h inside", 0.0, 3.0, -1.0, 1.0, cubic, 1, -1);
  search("h large enough", 0.5, 0.0, -1.0, 1.0, cubic, 1, -1);
  search("no interval", 0.0, 0.5, -1.0, 1.0, no_zero, 1, -1);
  search("state changed", 0.0, 0.1, -1.0, 1.0, no_zero, 1, 2);

  printf("==== c05awc\n");
  cont("eps", 1.0, NAN, cubic, 10);
  cont("nfmax", 1.0, 1e-8, cubic, 0);
  cont("internal scale", 1.0, 1e-8, flat, 100);
  cont("nfmax calls", 1.0, 1e-8, no_zero, 20);

  printf("==== c05axc\n");
  rcont("ind, initial entry", 1.0, 1e-8, Zem_Mixed, 1e-8, cubic, 0, -1, 0);
  rcont("ind, intermediate entry", 1.0, 1e-8, Zem_Mixed, 1e-8, cubic, 1, 1, 8);
  rcont("tol", 1.0, -1.0, Zem_Mixed, 1e-8, cubic, 1, -1, 0);
  rcont("ir", 1.0, 1e-8, (Zem_ErrorControl)0, 1e-8, cubic, 1, -1, 0);
  rcont("scal", 1.0, 1e-8, Zem_Mixed, 1e-20, cubic, 1, -1, 0);
  rcont("derivatives", 2.0, 1e-8, Zem_Relative, 1e-8, flat, 1, -1, 0);
  rcont("continuation away", 1.0, 1e-8, Zem_Mixed, 1e-8, only_here, 1, -1, 0);
  rcont("current problem", 1.0, 1e-8, Zem_Mixed, 1e-8, no_zero, 1, -1, 0);
  rcont("state changed", 1.0, 1e-8, Zem_Mixed, 1e-8, cubic, 1, 3, 0);
  rcont("final problem, pole", 0.5 - 0.5e-8, 1e-12, Zem_Absolute, 1e-8, pole, 1, -1, 0);
  rcont("final problem, accuracy", 3.0, 1e-30, Zem_Absolute, 1e-8, root2, 1, -1, 0);

  /* A NULL fail record: the message goes to standard error and the
   * program ends with exit status 1. */
  printf("==== c05awc with a NULL fail record\n");
  fflush(stdout);
  x = 1.0;
  comm.flag = 0;
  c05awc(&x, 1e-8, 0.0, no_zero, 5, &comm, NULL);
  printf("not reached\n");
  return 0;
}
