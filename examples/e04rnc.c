/* e04rnc example: a matrix inequality and its bilinear terms (e04rnc and
 * e04rpc).  In two variables the 3 x 3 block-diagonal constraint
 *   x1 A1 + x2 A2 - A0 >= 0,  blocks of sizes 2 and 1,
 *   A1 = [1 0; 0 0] (+) [0],  A2 = [0 0; 0 1] (+) [1],
 *   A0 = [0 1; 1 0] (+) [-1]
 * says x1 x2 >= 1 (x1, x2 >= 0) and x2 >= -1.  The bilinear term
 * x1 x2 Q with Q = [0 0; 0 0] (+) [1] is then added to the block, and the
 * constraint reads x1 A1 + x2 A2 + x1 x2 Q - A0 >= 0. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  /* A0, A1, A2 one after the other, upper triangles. */
  const int64_t nnza[3] = {2, 1, 2};
  const int64_t irowa[5] = {1, 3, 1, 2, 3}, icola[5] = {2, 3, 1, 2, 3};
  const double a[5] = {1.0, -1.0, 1.0, 1.0, 1.0};
  const int64_t blksizea[2] = {2, 1};
  const int64_t qi[1] = {1}, qj[1] = {2}, nnzq[1] = {1}, irowq[1] = {3}, icolq[1] = {3};
  const double q[1] = {1.0};
  int64_t idblk = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rnc example results\n\n");
  e04rac(&handle, 2, &fail);
  e04rnc(handle, 2, 3, nnza, 5, irowa, icola, a, 2, blksizea, &idblk, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rnc:\n%s\n", fail.message);
    return 1;
  }
  printf("Matrix inequality defined, idblk = %ld\n", (long)idblk);
  e04rpc(handle, idblk, 3, 1, qi, qj, nnzq, 1, irowq, icolq, q, &fail);
  e04ryc(handle, 6, "Overview, Matrix Constraints, Matrix Constraints Detailed", &fail);
  /* A block takes its bilinear terms once. */
  fail.print = 0;
  e04rpc(handle, idblk, 3, 1, qi, qj, nnzq, 1, irowq, icolq, q, &fail);
  printf("\nSecond e04rpc on block %ld:\n%s\n", (long)idblk, fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
