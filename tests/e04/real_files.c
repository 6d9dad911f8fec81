/* Reads one problem file through e04sac and prints what the handle holds
 * with e04ryc, for tools/e04_real_files.py to compare with the reference
 * figures of tests/e04/data/real_files.ref:
 *   real_files MPS|SDPA <file> */
#include <stdio.h>
#include <string.h>

#include <zem.h>

int main(int argc, char **argv) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  int sdpa;
  if (argc != 3) {
    fprintf(stderr, "usage: real_files MPS|SDPA file\n");
    return 2;
  }
  sdpa = strcmp(argv[1], "SDPA") == 0;
  fail.print = 0;
  e04sac(&handle, argv[1], argv[2], &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04sac:\n%s\n", fail.message);
    return 1;
  }
  e04ryc(handle, 6,
         sdpa ? "OVERVIEW, OBJECTIVE, MATRIX CONSTRAINTS DETAILED"
              : "OVERVIEW, OBJECTIVE, SIMPLE BOUNDS, LINEAR CONSTRAINTS DETAILED",
         &fail);
  if (fail.code != NE_NOERROR) printf("Error from e04ryc:\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return fail.code == NE_NOERROR ? 0 : 1;
}
