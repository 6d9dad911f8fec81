/* e04tdc example: editing bounds and coefficients in place (e04tdc and
 * e04tjc).  A production model
 *   maximize 3 x1 + 5 x2  (minimize -3 x1 - 5 x2)
 *   subject to x1 <= 4,  2 x2 <= 12,  3 x1 + 2 x2 <= 18,  x >= 0
 * is changed without rebuilding: the second variable gets an upper bound,
 * the third constraint's capacity grows to 20 and its coefficient of x2
 * becomes 3; a coefficient not yet in the matrix is added. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const double cvec[2] = {-3.0, -5.0};
  const double bl[2] = {0.0, 0.0}, bu[2] = {1.0e20, 1.0e20};
  const double lbl[3] = {-1.0e20, -1.0e20, -1.0e20}, lbu[3] = {4.0, 12.0, 18.0};
  const int64_t irowb[4] = {1, 2, 3, 3}, icolb[4] = {1, 2, 1, 2};
  const double b[4] = {1.0, 2.0, 3.0, 2.0};
  int64_t idlc = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04tdc example results\n\n");
  e04rac(&handle, 2, &fail);
  e04rec(handle, 2, cvec, &fail);
  e04rhc(handle, 2, bl, bu, &fail);
  e04rjc(handle, 3, lbl, lbu, 4, irowb, icolb, b, &idlc, &fail);
  e04ryc(handle, 6, "Simple Bounds, Linear Constraints Detailed", &fail);
  e04tdc(handle, "X", 2, 0.0, 5.0, &fail);
  e04tdc(handle, "LC", 3, -1.0e20, 20.0, &fail);
  e04tjc(handle, 3, 2, 3.0, &fail);
  e04tjc(handle, 1, 2, 0.5, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04tjc:\n%s\n", fail.message);
    return 1;
  }
  printf("\nAfter the edits\n");
  e04ryc(handle, 6, "Simple Bounds, Linear Constraints Detailed", &fail);
  fail.print = 0;
  e04tdc(handle, "X", 1, 3.0, 2.0, &fail);
  printf("\nBounds 3 <= x1 <= 2:\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
