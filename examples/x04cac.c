/* x04cac example: print a general and a triangular matrix. */
#include <zem.h>

int main(void) {
  double a[3 * 4];
  Zem_Fail fail = ZEM_FAIL_INIT;
  for (int j = 0; j < 4; ++j)
    for (int i = 0; i < 3; ++i) a[i + 3 * j] = 10.0 * (i + 1) + (j + 1) / 8.0;
  x04cac(Zem_GeneralMatrix, Zem_NonUnitDiag, 3, 4, a, 3, "A general 3 by 4 matrix", &fail);
  x04cac(Zem_UpperMatrix, Zem_UnitDiag, 3, 3, a, 3, "Its upper triangle with a unit diagonal", &fail);
  a[0] = 1.0e-7;
  x04cac(Zem_LowerMatrix, Zem_NonUnitDiag, 3, 3, a, 3, "A lower triangle needing the exponent form", &fail);
  return 0;
}
