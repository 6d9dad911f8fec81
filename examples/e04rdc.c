/* e04rdc example: a semidefinite programme read in SDPA sparse format from
 * an open file descriptor.  The first call, with limits too small, reports
 * the sizes the stream needs; the stream is rewound and read again. */
#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>
#include <zem.h>

static const char *sdpa =
    "\"minimize x1 + x2 subject to [[x1, 1], [1, x2]] >= 0 and x1, x2 >= 0\"\n"
    "2 = mDIM\n"
    "2 = nBLOCK\n"
    "2 -2 = bLOCKsTRUCT\n"
    "1.0 1.0\n"
    "0 1 1 2 -1.0\n"
    "1 1 1 1 1.0\n"
    "1 2 1 1 1.0\n"
    "2 1 2 2 1.0\n"
    "2 2 2 2 1.0\n";

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  FILE *f = fopen("e04rdc.dat-s", "w");
  int fd;
  if (!f) return 1;
  fputs(sdpa, f);
  fclose(f);
  fd = open("e04rdc.dat-s", O_RDONLY);
  if (fd < 0) return 1;

  printf("e04rdc example results\n\n");
  e04rac(&handle, 0, &fail);
  fail.print = 0;
  e04rdc(handle, fd, 1, 1, 1, &fail);
  printf("With limits 1, 1, 1:\n%s\n\n", fail.message);
  lseek(fd, 0, SEEK_SET);
  fail.print = 1;
  e04rdc(handle, fd, 2, 2, 5, &fail);
  close(fd);
  remove("e04rdc.dat-s");
  if (fail.code != NE_NOERROR) return 1;
  e04ryc(handle, 6, "Overview, Objective, Matrix Constraints Detailed", &fail);
  e04rzc(&handle, &fail);
  return 0;
}
