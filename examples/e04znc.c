/* e04znc example: read options of each type back from a handle. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  static const char *const names[] = {"Print Level", "FOAS Stop Tolerance", "Stats Time", "Task"};
  int64_t ivalue, optype;
  double rvalue;
  char cvalue[20];
  size_t i;

  printf("e04znc example results\n\n");
  e04rac(&handle, 2, &fail);
  e04zmc(handle, "Stats Time = Wall Clock", &fail);
  for (i = 0; i < sizeof names / sizeof names[0]; ++i) {
    e04znc(handle, names[i], &ivalue, &rvalue, cvalue, 20, &optype, &fail);
    if (optype == 1)
      printf("%-20s integer    %ld\n", names[i], (long)ivalue);
    else if (optype == 2)
      printf("%-20s real       %g\n", names[i], rvalue);
    else
      printf("%-20s character  %s (code %ld)\n", names[i], cvalue, (long)ivalue);
  }
  e04znc(handle, "Stop Tolerance", &ivalue, &rvalue, cvalue, 20, &optype, &fail);
  printf("\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
