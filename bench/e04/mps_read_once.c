/* Reads one MPS file into a handle with e04sac and destroys it: the
 * process whose time and peak memory bench_e04_mps_read sets beside
 * `glpsol --check` on the same file.
 *   bench_e04_mps_read_once file.mps */
#include <stdio.h>
#include <zem.h>

int main(int argc, char **argv) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  if (argc != 2) return 2;
  e04sac(&handle, "MPS", argv[1], &fail);
  if (fail.code != NE_NOERROR) return 1;
  e04rzc(&handle, &fail);
  return 0;
}
