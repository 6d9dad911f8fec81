/* x04aac and x04abc example: read and set the two message units.  They are
 * Fortran unit numbers; they govern where the Fortran interface writes its
 * messages and where the library prints advisory output (x04cac, a00aac). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  int64_t nerr = 0, nadv = 0;
  const double one = 1.0;
  x04aac(0, &nerr);
  x04abc(0, &nadv);
  printf("Error message unit %lld, advisory message unit %lld\n", (long long)nerr, (long long)nadv);

  /* A negative advisory unit silences advisory output such as x04cac's. */
  nadv = -1;
  x04abc(1, &nadv);
  x04cac(Zem_GeneralMatrix, Zem_NonUnitDiag, 1, 1, &one, 1, "Not printed", NULL);
  x04abc(0, &nadv);
  printf("Advisory unit now %lld\n", (long long)nadv);
  nadv = 6;
  x04abc(1, &nadv);
  x04cac(Zem_GeneralMatrix, Zem_NonUnitDiag, 1, 1, &one, 1, "Printed on unit 6 again", NULL);
  return 0;
}
