/* g22zac example: handles of three kinds released; a stale copy of a
 * released handle is refused, not followed. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const int64_t levels[] = {1};
  void *hform = NULL, *hddesc = NULL, *stale;
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22zac example results\n\n");
  g22yac(&hform, "V1", &fail);
  g22ybc(&hddesc, 5, 1, levels, 0, NULL, &fail);
  stale = hform;
  zem_g22_handle_free(&hform, &fail);
  printf("Released the formula handle: %s; it is now %s\n", fail.code == NE_NOERROR ? "yes" : "no",
         hform == NULL ? "NULL" : "set");
  g22zac(&hddesc, &fail);
  printf("Released the data handle: %s\n", fail.code == NE_NOERROR ? "yes" : "no");
  g22zac(&hddesc, &fail);
  printf("Releasing NULL: %s\n", fail.code == NE_NOERROR ? "nothing to do" : fail.message);
  g22zac(&stale, &fail);
  printf("Releasing a stale copy:\n%s\n", fail.message);
  return 0;
}
