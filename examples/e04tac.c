/* e04tac example: growing and pruning a model (e04tac and e04tbc).  A
 * transport-like model starts with two variables and two linear
 * constraints; two variables are appended, a third constraint row on them
 * is added, and then the first row and the variable x2 are deleted.
 * Identifiers are never renumbered: the remaining rows keep theirs, and a
 * second deletion is refused. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const double lbl[2] = {-1.0e20, 1.0}, lbu[2] = {10.0, 1.0e20};
  const int64_t irowb[3] = {1, 2, 2}, icolb[3] = {1, 1, 2};
  const double b[3] = {1.0, 1.0, 1.0};
  const double lbl3[1] = {0.0}, lbu3[1] = {5.0}, b3[2] = {1.0, -1.0};
  const int64_t irow3[2] = {1, 1}, icol3[2] = {3, 4};
  const int64_t row1[1] = {1}, var2[1] = {2};
  int64_t idlc = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04tac example results\n\n");
  e04rac(&handle, 2, &fail);
  e04rjc(handle, 2, lbl, lbu, 3, irowb, icolb, b, &idlc, &fail);
  e04tac(handle, 2, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04tac:\n%s\n", fail.message);
    return 1;
  }
  idlc = 0;
  e04rjc(handle, 1, lbl3, lbu3, 2, irow3, icol3, b3, &idlc, &fail);
  printf("Two variables appended, constraint row %ld added on them\n", (long)idlc);
  e04ryc(handle, 6, "Overview, Linear Constraints Detailed", &fail);
  e04tbc(handle, "LC", 1, row1, &fail);
  e04tbc(handle, "X", 1, var2, &fail);
  printf("\nRow 1 and variable x2 deleted\n");
  e04ryc(handle, 6, "Overview, Linear Constraints Detailed", &fail);
  fail.print = 0;
  e04tbc(handle, "LC", 1, row1, &fail);
  printf("\nDeleting row 1 again:\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
