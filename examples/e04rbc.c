/* e04rbc example: second-order cones and integer variables (e04rbc and
 * e04rcc).  A model in five variables (x1, x2, x3, x4, t):
 *   minimize   t + x3 + x4
 *   subject to t >= ||(x1, x2)||            (quadratic cone)
 *              2 x3 x4 >= x1^2               (rotated quadratic cone)
 *              x1 + x2 = 2,  x3 and x4 integer.
 * The first cone is defined, then replaced through its identifier. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  const double cvec[5] = {0.0, 0.0, 1.0, 1.0, 1.0};
  const double lbl[1] = {2.0}, lbu[1] = {2.0}, b[2] = {1.0, 1.0};
  const int64_t irowb[2] = {1, 1}, icolb[2] = {1, 2};
  const int64_t quad[3] = {5, 1, 2}, rquad[3] = {3, 4, 1}, integers[2] = {3, 4};
  int64_t idlc = 0, idcone = 0, idrot = 0;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rbc example results\n\n");
  e04rac(&handle, 5, &fail);
  e04rec(handle, 5, cvec, &fail);
  e04rjc(handle, 1, lbl, lbu, 2, irowb, icolb, b, &idlc, &fail);
  /* A first cone on (t, x1) only, replaced below by the cone on (t, x1, x2). */
  e04rbc(handle, "QUAD", 2, quad, &idcone, &fail);
  e04rbc(handle, "RQUAD", 3, rquad, &idrot, &fail);
  printf("Cones defined with identifiers %ld and %ld\n", (long)idcone, (long)idrot);
  e04rbc(handle, "Q", 3, quad, &idcone, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rbc:\n%s\n", fail.message);
    return 1;
  }
  printf("Cone %ld replaced\n", (long)idcone);
  e04rcc(handle, "INT", 2, integers, &fail);
  printf("x3 and x4 declared integer: %s\n", fail.code == NE_NOERROR ? "yes" : "no");
  fail.print = 0;
  e04rcc(handle, "REAL", 2, integers, &fail);
  printf("An unknown type is refused:\n%s\n", fail.message);
  e04ryc(handle, 6, "Overview, Cone Constraints Detailed", &fail);
  e04rzc(&handle, &fail);
  return 0;
}
