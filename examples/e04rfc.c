/* e04rfc example: a convex quadratic programme
 *   minimize  x1^2 + x1 x2 + x2^2 + 2 x3^2 - 3 x1 - x3
 *   subject to x1 + x2 + x3 <= 1,  x >= 0
 * with the Hessian H = [2 1 0; 1 2 0; 0 0 4] of 0.5 x'Hx given by its
 * upper triangle and the linear part as a sparse vector. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const int64_t idxc[2] = {1, 3};
  const double c[2] = {-3.0, -1.0};
  const int64_t irowh[4] = {1, 1, 2, 3}, icolh[4] = {1, 2, 2, 3};
  const double h[4] = {2.0, 1.0, 2.0, 4.0};
  const double bl[3] = {0.0, 0.0, 0.0}, bu[3] = {1.0e20, 1.0e20, 1.0e20};
  const double lbl[1] = {-1.0e20}, lbu[1] = {1.0}, b[3] = {1.0, 1.0, 1.0};
  const int64_t irowb[3] = {1, 1, 1}, icolb[3] = {1, 2, 3};
  const int64_t bad_row[1] = {2}, bad_col[1] = {1};
  int64_t idlc = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rfc example results\n\n");
  e04rac(&handle, 3, &fail);
  e04rfc(handle, 2, idxc, c, 4, irowh, icolh, h, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rfc:\n%s\n", fail.message);
    return 1;
  }
  e04rhc(handle, 3, bl, bu, &fail);
  e04rjc(handle, 1, lbl, lbu, 3, irowb, icolb, b, &idlc, &fail);
  e04ryc(handle, 6, "Overview, Objective", &fail);
  /* An element below the diagonal is refused; the objective stays as it was. */
  fail.print = 0;
  e04rfc(handle, 2, idxc, c, 1, bad_row, bad_col, h, &fail);
  printf("\nH(2,1) given instead of H(1,2):\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
