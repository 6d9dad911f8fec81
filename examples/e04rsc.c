/* e04rsc example: a quadratic constraint and a factored quadratic
 * objective (e04rsc and e04rtc).  A least-squares problem over the unit
 * disc:
 *   minimize   0.5 ||F x||^2 - x1,   F = [1 1; 0 2; 3 0]
 *   subject to x1^2 + x2^2 <= 1      (0.5 x'Qx with Q = 2 I)
 *              x1 x2 >= -0.25        (Q(1,2) = 1)
 * The second constraint is then replaced by x1 + x2 <= 1.5 written as a
 * purely linear quadratic-constraint row. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const int64_t irowf[4] = {1, 1, 2, 3}, icolf[4] = {1, 2, 2, 1};
  const double f[4] = {1.0, 1.0, 2.0, 3.0};
  const int64_t idxr[2] = {1, 2};
  const double r[1] = {-1.0}, ones[2] = {1.0, 1.0};
  const int64_t irowq[2] = {1, 2}, icolq[2] = {1, 2}, irowx[1] = {1}, icolx[1] = {2};
  const double qdisc[2] = {2.0, 2.0}, qx[1] = {1.0};
  int64_t iddisc = 0, idprod = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rsc example results\n\n");
  e04rac(&handle, 2, &fail);
  e04rtc(handle, 3, 4, irowf, icolf, f, 1, idxr, r, &fail);
  e04rsc(handle, 2, irowq, icolq, qdisc, 0, idxr, r, -1.0e20, 1.0, &iddisc, &fail);
  e04rsc(handle, 1, irowx, icolx, qx, 0, idxr, r, -0.25, 1.0e20, &idprod, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rsc:\n%s\n", fail.message);
    return 1;
  }
  printf("Quadratic constraints %ld and %ld defined\n", (long)iddisc, (long)idprod);
  e04ryc(handle, 6, "Overview, Objective, Quadratic Constraints Detailed", &fail);
  e04rsc(handle, 0, irowq, icolq, qdisc, 2, idxr, ones, -1.0e20, 1.5, &idprod, &fail);
  printf("\nConstraint %ld replaced\n", (long)idprod);
  e04ryc(handle, 6, "Quadratic Constraints Detailed", &fail);
  e04rzc(&handle, &fail);
  return 0;
}
