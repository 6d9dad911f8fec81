/* g22ybc example: a dataset of 100 observations described by its names
 * and levels, printed; then one described without names (V1, V2, ...). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const char *vnames[] = {"dose", "group", "site", "weight"};
  const int64_t levels[] = {1, 3, 4, 1};
  void *hddesc = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22ybc example results\n\n");
  fflush(stdout);
  zem_model_data_description(&hddesc, 100, 4, levels, 4, vnames, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from g22ybc:\n%s\n", fail.message);
    return 1;
  }
  g22zmc(hddesc, "SORDER = Variables", &fail);
  g22zmc(hddesc, "PRINT = 6", &fail);
  g22ybc(&hddesc, 10, 2, levels, 0, NULL, &fail);
  g22zmc(hddesc, "PRINT = 6", &fail);
  vnames[2] = "dose";
  g22ybc(&hddesc, 100, 4, levels, 4, vnames, &fail);
  printf("\n%s\n", fail.message);
  g22zac(&hddesc, &fail);
  return 0;
}
