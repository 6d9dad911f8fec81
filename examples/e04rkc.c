/* e04rkc example: nonlinear constraints (e04rkc) and the Hessian structure
 * of one of them (e04rlc).  Three variables, a linear objective
 * x1 + x2 + x3 and the constraints
 *   g1(x) = x1^2 + x2^2 + x3^2   in [1, 4]    (a spherical shell)
 *   g2(x) = x1 x2                >= 0.5
 * The Jacobian has five nonzeros: dg1/dx1, dg1/dx2, dg1/dx3, dg2/dx1,
 * dg2/dx2. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const double cvec[3] = {1.0, 1.0, 1.0};
  const double bl[2] = {1.0, 0.5}, bu[2] = {4.0, 1.0e20};
  const int64_t irowgd[5] = {1, 1, 1, 2, 2}, icolgd[5] = {1, 2, 3, 1, 2};
  const int64_t irowh1[3] = {1, 2, 3}, icolh1[3] = {1, 2, 3};
  const int64_t irowh2[1] = {1}, icolh2[1] = {2};
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rkc example results\n\n");
  e04rac(&handle, 3, &fail);
  e04rec(handle, 3, cvec, &fail);
  e04rkc(handle, 2, bl, bu, 5, irowgd, icolgd, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rkc:\n%s\n", fail.message);
    return 1;
  }
  /* Second derivatives: 2 I for g1, one off-diagonal element for g2. */
  e04rlc(handle, 1, 3, irowh1, icolh1, &fail);
  e04rlc(handle, 2, 1, irowh2, icolh2, &fail);
  e04ryc(handle, 6, "Overview, Nonlinear Constraints Bounds, Nonlinear Constraints Detailed", &fail);
  /* The objective is linear: it has no Hessian to describe. */
  fail.print = 0;
  e04rlc(handle, 0, 1, irowh2, icolh2, &fail);
  printf("\nHessian of the objective:\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
