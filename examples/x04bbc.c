/* x04bbc example: read records from a Fortran unit until its end.  Unit 5
 * is standard input; here a file is connected to unit 20 by writing to it
 * with x04bac first (the Fortran run-time opens fort.20). */
#include <stdio.h>
#include <string.h>
#include <zem.h>

int main(void) {
  char rec[33];
  Zem_Fail fail = ZEM_FAIL_INIT;
  FILE *f = fopen("fort.21", "w");
  fputs("first record\nsecond record\n", f);
  fclose(f);
  for (;;) {
    x04bbc(21, rec, 32, &fail);
    if (fail.code != NE_NOERROR) break;
    printf("Read: %s|\n", rec);
  }
  printf("Stopped with %d:\n%s\n", fail.code, fail.message);
  return 0;
}
