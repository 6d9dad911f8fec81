/* g22ycc example: the design matrix of the model A + x under each of the
 * seven contrasts, for four observations of a categorical variable A
 * (3 levels) and a continuous x; the first call asks for the size. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  static const char *contrasts[] = {"FIRST", "LAST", "SUM FIRST", "SUM LAST", "HELMERT", "POLYNOMIAL", "DUMMY"};
  const char *vnames[] = {"A", "x"};
  const int64_t levels[] = {3, 1};
  /* One observation a row: A in column 1, x in column 2. */
  const double dat[8] = {1, 2, 3, 2, 0.5, 1.0, 1.5, 2.0};
  double x[4 * 8];
  void *hform = NULL, *hddesc = NULL, *hxdesc = NULL;
  int64_t mx = 0, i, j, k, ip, p, mlterm = 16, vinfo[3];
  char plab[8 * 16], optstr[40];
  Zem_Fail fail = ZEM_FAIL_INIT;

  printf("g22ycc example results\n\n");
  g22ybc(&hddesc, 4, 2, levels, 2, vnames, &fail);
  g22yac(&hform, "A + x", &fail);
  /* x of no size: a size query, answered with mx and a warning. */
  g22ycc(hform, hddesc, dat, 4, 2, &hxdesc, NULL, 0, 0, &mx, &fail);
  printf("Size query: mx = %ld\n%s\n", (long)mx, fail.message);
  for (k = 0; k < 7; ++k) {
    sprintf(optstr, "CONTRAST = %s", contrasts[k]);
    g22zmc(hform, optstr, &fail);
    zem_model_design_matrix(hform, hddesc, dat, 4, 2, &hxdesc, x, 4, 8, &mx, &fail);
    if (fail.code != NE_NOERROR) {
      printf("Error from g22ycc:\n%s\n", fail.message);
      return 1;
    }
    mlterm = 16; /* the width of each label field (on exit: the longest label) */
    g22ydc(1, NULL, hxdesc, &ip, &p, 0, NULL, 8, plab, 0, vinfo, &mlterm, &fail);
    printf("\nContrast %s\n", contrasts[k]);
    printf("   A");
    for (j = 0; j < mx; ++j) printf("%10s", plab + j * 16);
    printf("\n");
    for (i = 0; i < 4; ++i) {
      printf("%4.0f", dat[i]);
      for (j = 0; j < mx; ++j) printf("%10.4f", x[i + j * 4]);
      printf("\n");
    }
  }
  g22zac(&hform, &fail);
  g22zac(&hddesc, &fail);
  g22zac(&hxdesc, &fail);
  return 0;
}
