/* e04rmc example: a nonlinear least-squares objective.  Fitting the model
 *   y = x1 exp(x2 t) + x3
 * to five observations gives five residuals r_i(x) = y(t_i) - y_i, each
 * depending on all three parameters (dense first derivatives).  The model is
 * then changed to two exponentials with separate data sets, whose
 * derivatives are sparse. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  /* Residuals 1-3 use x1, x2; residuals 4-6 use x3, x4 (irowrd: variable,
   * icolrd: residual). */
  const int64_t irowrd[12] = {1, 2, 1, 2, 1, 2, 3, 4, 3, 4, 3, 4};
  const int64_t icolrd[12] = {1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6};
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("e04rmc example results\n\n");
  e04rac(&handle, 3, &fail);
  e04rmc(handle, 5, 0, 0, NULL, NULL, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04rmc:\n%s\n", fail.message);
    return 1;
  }
  printf("Dense model, 5 residuals in 3 parameters\n");
  e04ryc(handle, 6, "Overview, Objective", &fail);
  e04tac(handle, 1, &fail);
  e04rmc(handle, 6, 1, 12, irowrd, icolrd, &fail);
  printf("\nSparse model, 6 residuals in 4 parameters\n");
  e04ryc(handle, 6, "Overview, Objective", &fail);
  e04rzc(&handle, &fail);
  return 0;
}
