/* e04rac example: the life of a handle.  A small linear programme
 *   minimize  x1 + 2 x2 - x3  subject to  x1 + x2 <= 4,  x2 - x3 = 1,
 *             0 <= x1 <= 3, x2 >= 0, x3 free
 * is built piece by piece, a coefficient is edited, the model is printed
 * and the handle destroyed. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL; /* null before creation */
  const double bl[3] = {0.0, 0.0, -1.0e20}, bu[3] = {3.0, 1.0e20, 1.0e20};
  const double cvec[3] = {1.0, 2.0, -1.0};
  const double lbl[2] = {-1.0e20, 1.0}, lbu[2] = {4.0, 1.0};
  const int64_t irowb[4] = {1, 1, 2, 2}, icolb[4] = {1, 2, 2, 3};
  const double b[4] = {1.0, 1.0, 1.0, -1.0};
  int64_t idlc = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rac example results\n\n");
  zem_opt_handle_init(&handle, 3, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rac:\n%s\n", fail.message);
    return 1;
  }
  e04rec(handle, 3, cvec, &fail);
  e04rhc(handle, 3, bl, bu, &fail);
  e04rjc(handle, 2, lbl, lbu, 4, irowb, icolb, b, &idlc, &fail);
  printf("Linear constraints added, last identifier %ld\n", (long)idlc);
  e04tec(handle, 2, 1.5, &fail); /* objective coefficient of x2 */
  e04ryc(handle, 6, "Overview, Objective, Simple Bounds, Linear Constraints Detailed", &fail);
  e04rzc(&handle, &fail);
  printf("\nHandle destroyed: %s\n", handle == NULL ? "yes" : "no");
  return 0;
}
