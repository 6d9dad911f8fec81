/* e04zpc example: read options from a file. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t ivalue, optype;
  double rvalue;
  char cvalue[20];
  FILE *f = fopen("e04zpc.opt", "w");

  printf("e04zpc example results\n\n");
  fputs("Options of the e04zpc example\n"
        "Begin\n"
        "* output\n"
        "  Print Level = 1\n"
        "  Time Limit = 3600\n"
        "End\n", f);
  fclose(f);
  e04rac(&handle, 2, &fail);
  e04zpc(handle, "e04zpc.opt", &fail);
  printf("e04zpc: %s\n", fail.message);
  e04znc(handle, "Print Level", &ivalue, &rvalue, cvalue, 20, &optype, &fail);
  printf("Print Level = %ld\n", (long)ivalue);
  e04znc(handle, "Time Limit", &ivalue, &rvalue, cvalue, 20, &optype, &fail);
  printf("Time Limit = %g\n", rvalue);

  /* A file with a mistake changes nothing. */
  f = fopen("e04zpc.opt", "w");
  fputs("BEGIN\nPrint Level = 3\nTime Limit = -1\nEND\n", f);
  fclose(f);
  e04zpc(handle, "e04zpc.opt", &fail);
  printf("\n%s\n", fail.message);
  e04znc(handle, "Print Level", &ivalue, &rvalue, cvalue, 20, &optype, &fail);
  printf("Print Level = %ld\n", (long)ivalue);
  e04rzc(&handle, &fail);
  return 0;
}
