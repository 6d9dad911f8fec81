/* e04rwc example: arrays in the handle's store (e04rwc for integers,
 * e04rxc for reals).  Before a solver runs, a caller may leave a starting
 * point ("PRIMAL") and a warm-start basis ("WARM START BASIS", one status
 * per variable and linear constraint row) in the handle; a solver leaves
 * its results there, and they are read back the same way.  Data a solver
 * has not stored yet are reported as not available. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const double cvec[3] = {1.0, 2.0, 3.0};
  const double lbl[1] = {1.0}, lbu[1] = {1.0e20}, b[3] = {1.0, 1.0, 1.0};
  const int64_t irowb[3] = {1, 1, 1}, icolb[3] = {1, 2, 3};
  double x0[3] = {0.5, 0.25, 0.25}, x[3] = {0.0, 0.0, 0.0}, dual[4];
  int64_t basis[4] = {1, 0, 0, 2}, back[4] = {0, 0, 0, 0};
  int64_t idlc = 0, i;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rwc example results\n\n");
  e04rac(&handle, 3, &fail);
  e04rec(handle, 3, cvec, &fail);
  e04rjc(handle, 1, lbl, lbu, 3, irowb, icolb, b, &idlc, &fail);
  e04rxc(handle, "PRIMAL", 1, 3, x0, &fail);
  e04rwc(handle, "WARM START BASIS", 1, 4, basis, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rwc:\n%s\n", fail.message);
    return 1;
  }
  e04rxc(handle, "Primal", 0, 3, x, &fail);
  e04rwc(handle, "warm start basis", 0, 4, back, &fail);
  printf("Starting point read back:");
  for (i = 0; i < 3; ++i) printf(" %6.3f", x[i]);
  printf("\nBasis read back:         ");
  for (i = 0; i < 4; ++i) printf(" %6ld", (long)back[i]);
  printf("\n");
  fail.print = 0;
  e04rwc(handle, "WARM START BASIS", 1, 3, basis, &fail);
  printf("\nA basis of 3 entries:\n%s\n", fail.message);
  e04rxc(handle, "DUAL VARIABLES", 0, 4, dual, &fail);
  printf("\nDual variables before a solve:\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
