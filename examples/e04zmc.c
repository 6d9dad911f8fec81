/* e04zmc example: set options of a handle by "Name = value" strings. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  static const char *const settings[] = {"Print Level = 1", "infinite bound size = 1.0e25", "Task = Maximize",
                                         "FOAS Memory = 500"};
  int64_t ivalue, optype;
  double rvalue;
  char cvalue[20];
  size_t i;

  printf("e04zmc example results\n\n");
  e04rac(&handle, 4, &fail);
  for (i = 0; i < sizeof settings / sizeof settings[0]; ++i) {
    e04zmc(handle, settings[i], &fail);
    printf("%-30s %s\n", settings[i], fail.code == NE_NOERROR ? "set" : "refused:");
    if (fail.code != NE_NOERROR) printf("%s\n", fail.message);
  }
  e04znc(handle, "Infinite Bound Size", &ivalue, &rvalue, cvalue, 20, &optype, &fail);
  printf("\nInfinite Bound Size is now %g\n", rvalue);
  e04znc(handle, "FOAS Memory", &ivalue, &rvalue, cvalue, 20, &optype, &fail);
  printf("FOAS Memory keeps its default %ld\n", (long)ivalue);
  e04rzc(&handle, &fail);
  return 0;
}
