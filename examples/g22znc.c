/* g22znc example: every option of a formula and a data handle read back,
 * with the kind of value each returns. */
#include <stdio.h>
#include <zem.h>

static void show(void *h, const char *name) {
  int64_t ivalue = 0, optype = 0;
  double rvalue = 0.0;
  char cvalue[40];
  Zem_Fail fail = ZEM_FAIL_INIT;
  zem_g22_optget(h, name, &ivalue, &rvalue, cvalue, 40, &optype, &fail);
  if (fail.code != NE_NOERROR)
    printf("%s\n", fail.message);
  else if (optype == 1)
    printf("%-14s (integer)   %ld\n", name, (long)ivalue);
  else
    printf("%-14s (character) %s\n", name, cvalue);
}

int main(void) {
  const int64_t levels[] = {2, 1};
  void *hform = NULL, *hddesc = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22znc example results\n\n");
  g22yac(&hform, "V1*V2 SUBJECT = id", &fail);
  g22ybc(&hddesc, 8, 2, levels, 0, NULL, &fail);
  show(hform, "FORMULA");
  show(hform, "CONTRAST");
  show(hform, "EXPLICIT MEAN");
  show(hform, "SUBJECT");
  show(hform, "PRINT");
  show(hddesc, "SORDER");
  show(hddesc, "CONTRAST");
  g22zac(&hform, &fail);
  g22zac(&hddesc, &fail);
  return 0;
}
