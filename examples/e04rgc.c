/* e04rgc example: a nonlinear objective and the structure of its Hessian
 * (e04rgc and e04rlc).  The generalized Rosenbrock function of four
 * variables
 *   f(x) = sum_{i=1..3} 100 (x_{i+1} - x_i^2)^2 + (1 - x_i)^2
 * depends on every variable; its Hessian is tridiagonal.  The solver will
 * evaluate f and its derivatives through user functions; the handle holds
 * which derivatives are nonzero. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const int64_t idxfd[4] = {1, 2, 3, 4};
  const int64_t irowh[7] = {1, 1, 2, 2, 3, 3, 4}, icolh[7] = {1, 2, 2, 3, 3, 4, 4};
  const double bl[4] = {-2.0, -2.0, -2.0, -2.0}, bu[4] = {2.0, 2.0, 2.0, 2.0};
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rgc example results\n\n");
  e04rac(&handle, 4, &fail);
  /* Before an objective or constraint is nonlinear, no Hessian has a place. */
  fail.print = 0;
  e04rlc(handle, 0, 7, irowh, icolh, &fail);
  printf("Hessian structure before e04rgc:\n%s\n\n", fail.message);
  fail.print = 1;
  e04rgc(handle, 4, idxfd, &fail);
  e04rlc(handle, 0, 7, irowh, icolh, &fail);
  e04rhc(handle, 4, bl, bu, &fail);
  if (fail.code != NE_NOERROR) return 1;
  printf("Gradient with 4 nonzeros, Hessian with 7 in its upper triangle\n");
  e04ryc(handle, 6, "Overview, Objective, Simple Bounds", &fail);
  e04rzc(&handle, &fail);
  return 0;
}
