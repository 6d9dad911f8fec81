/* g22ydc example: a design matrix built for the model A*B + x, and the
 * columns, labels and description of the reduced model B + x within it. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  const char *vnames[] = {"A", "B", "x"};
  const int64_t levels[] = {2, 3, 1};
  const double dat[18] = {1, 2, 1, 2, 1, 2, 1, 1, 2, 2, 3, 3, 0.1, 0.4, 0.2, 0.5, 0.3, 0.6};
  double x[6 * 7];
  void *hform = NULL, *hsub = NULL, *hddesc = NULL, *hxdesc = NULL;
  int64_t mx, iintcpt, p, isx[7], vinfo[64], mlterm = 12, j, k, at;
  char plab[7 * 12];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22ydc example results\n\n");
  g22ybc(&hddesc, 6, 3, levels, 3, vnames, &fail);
  g22yac(&hform, "A*B + x", &fail);
  g22ycc(hform, hddesc, dat, 6, 3, &hxdesc, x, 6, 7, &mx, &fail);
  g22yac(&hsub, "B + x", &fail);
  /* lvinfo too small: the lengths needed come back in vinfo[0..2]. */
  zem_model_submodel(0, hsub, hxdesc, &iintcpt, &p, 7, isx, 7, plab, 3, vinfo, &mlterm, &fail);
  printf("Lengths needed: lisx %ld, lplab %ld, lvinfo %ld\n", (long)vinfo[0], (long)vinfo[1], (long)vinfo[2]);
  mlterm = 12; /* the label field width; on exit, the longest label's length */
  zem_model_submodel(0, hsub, hxdesc, &iintcpt, &p, 7, isx, 7, plab, 64, vinfo, &mlterm, &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from g22ydc:\n%s\n", fail.message);
    return 1;
  }
  printf("Columns of the design matrix: %ld; used by B + x: %ld; mean at %ld\n", (long)mx, (long)p,
         (long)iintcpt);
  printf("isx:");
  for (j = 0; j < mx; ++j) printf(" %ld", (long)isx[j]);
  printf("\n\n  Label       Term  Variables (number, coding column)\n");
  for (j = 0, at = 0; j < p; ++j) {
    printf("  %-10s %5ld ", plab + j * 12, (long)vinfo[at]);
    for (k = 0; k < vinfo[at + 1]; ++k) printf(" (%ld, %ld)", (long)vinfo[at + 2 + 2 * k], (long)vinfo[at + 3 + 2 * k]);
    printf("\n");
    at += 2 + 2 * vinfo[at + 1];
  }
  g22yac(&hsub, "A:x", &fail);
  g22ydc(0, hsub, hxdesc, &iintcpt, &p, 0, NULL, 0, NULL, 0, NULL, &mlterm, &fail);
  printf("\n%s\n", fail.message);
  g22zac(&hform, &fail);
  g22zac(&hsub, &fail);
  g22zac(&hddesc, &fail);
  g22zac(&hxdesc, &fail);
  return 0;
}
