/* Client test of the modelling suite through the C interface: a model
 * built piece by piece and printed, the documented failures of the sparse
 * checks, the phase-free editing routines, the handle checks on null,
 * destroyed, foreign and corrupted handles, and the readers on good,
 * truncated and malformed files.  Run in a directory where data/ is
 * reachable through the ZEM_E04_DATA environment variable. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <zem.h>

static Zem_Fail fail;

static void show(const char *what) {
  if (fail.code == NE_NOERROR)
    printf("%s: ok\n", what);
  else
    printf("%s: errnum %ld\n%s\n", what, (long)fail.errnum, fail.message);
}

static char path[1024];
static const char *data(const char *name) {
  const char *dir = getenv("ZEM_E04_DATA");
  snprintf(path, sizeof path, "%s/%s", dir ? dir : "data", name);
  return path;
}

int main(void) {
  void *h = NULL;
  const double bl[3] = {-1.0, 0.0, -1.0e20}, bu[3] = {1.0, 1.0e20, 2.0};
  const double lbl[2] = {-1.0e20, 1.0}, lbu[2] = {4.0, 1.0};
  const int64_t irowb[4] = {1, 1, 2, 2}, icolb[4] = {1, 2, 2, 3};
  const double b[4] = {1.0, 2.0, -1.0, 3.0};
  const int64_t idxc[2] = {1, 3}, irowh[2] = {1, 2}, icolh[2] = {1, 3};
  const double c[2] = {1.0, -2.0}, hv[2] = {2.0, 0.5};
  int64_t idlc = 0, idgroup = 0, idqc = 0, group[3] = {3, 1, 2};
  int64_t badi[2] = {2, 2}, badr[2] = {2, 1}, badc[2] = {1, 1}, idx[1] = {1};
  double x[5] = {0.5, 0.25, 0.125, 0.0625, 0.03125}, y[5];
  int64_t hdr[9];

  fail.print = 0;
  printf("Building a model\n");
  e04rac(&h, -1, &fail);
  show("e04rac nvar -1");
  e04rac(&h, 3, &fail);
  show("e04rac nvar 3");
  e04rhc(h, 2, bl, bu, &fail);
  show("e04rhc nvar 2");
  e04rhc(h, 3, bl, bu, &fail);
  show("e04rhc");
  e04rjc(h, 2, lbl, lbu, 4, irowb, icolb, b, &idlc, &fail);
  show("e04rjc");
  printf("idlc = %ld\n", (long)idlc);
  e04rfc(h, 2, idxc, c, 2, irowh, icolh, hv, &fail);
  show("e04rfc");
  e04rbc(h, "quad", 3, group, &idgroup, &fail);
  show("e04rbc");
  e04rsc(h, 2, irowh, icolh, hv, 2, idxc, c, -1.0e20, 1.0, &idqc, &fail);
  show("e04rsc");
  e04ryc(h, 6, "Overview, objective, simple bounds, linear constraints detailed", &fail);
  show("e04ryc");
  e04ryc(h, 6, "cone constraints detailed,quadratic constraints detailed,multipliers sizes", &fail);
  show("e04ryc");

  printf("\nSparse checks\n");
  e04rfc(h, 2, badi, c, 0, irowh, icolh, hv, &fail);
  show("e04rfc idxc (2,2)");
  e04rfc(h, 0, idxc, c, 2, badr, badc, hv, &fail);
  show("e04rfc irowh > icolh");
  e04rfc(h, 0, idxc, c, 2, badc, badc, hv, &fail);
  show("e04rfc repeated pair");
  badi[0] = 4;
  e04rfc(h, 2, badi, c, 0, irowh, icolh, hv, &fail);
  show("e04rfc idxc out of range");
  e04rjc(h, 2, lbl, lbu, 4, irowb, icolb, b, &idlc, &fail);
  show("e04rjc idlc 2, nclin 2");
  idlc = 4;
  e04rjc(h, 1, lbl, lbu, 0, irowb, icolb, b, &idlc, &fail);
  show("e04rjc idlc 4");
  e04tdc(h, "X", 1, 1.0e20, 2.0e20, &fail);
  show("e04tdc bl = bigbnd");
  e04tdc(h, "x", 1, 2.0, 2.0, &fail);
  show("e04tdc fixed");
  group[0] = 1;
  idgroup = 0;
  e04rbc(h, "Q", 3, group, &idgroup, &fail);
  show("e04rbc repeated variable");
  e04rbc(h, "R", 2, group, &idgroup, &fail);
  show("e04rbc rotated of 2");

  printf("\nEditing\n");
  e04tbc(h, "LC", 1, idx, &fail);
  show("e04tbc LC 1");
  e04tbc(h, "LC", 1, idx, &fail);
  show("e04tbc LC 1 again");
  e04tjc(h, 1, 2, 5.0, &fail);
  show("e04tjc deleted row");
  e04tec(h, 1, 3.0, &fail);
  show("e04tec quadratic objective");
  e04tac(h, 2, &fail);
  show("e04tac");
  e04rxc(h, "Primal", 1, 3, x, &fail);
  show("e04rxc write 3");
  e04rxc(h, "PRIMAL", 1, 5, x, &fail);
  show("e04rxc write 5");
  e04rxc(h, "DUAL VARIABLES", 0, 5, y, &fail);
  show("e04rxc dual");
  e04rxc(h, "NONSENSE", 0, 5, y, &fail);
  show("e04rxc nonsense");
  e04rwc(h, "EXPORT TRF", 1, 1, idx, &fail);
  show("e04rwc write export");
  e04ryc(h, 6, "OVERVIEW,NOTAKEYWORD", &fail);
  show("e04ryc keyword 2");
  e04ryc(h, 6, " , ", &fail);
  show("e04ryc empty");
  e04ryc(h, 6, "overview", &fail);
  show("e04ryc");
  e04rzc(&h, &fail);
  show("e04rzc");
  printf("handle null: %s\n", h == NULL ? "yes" : "no");
  e04rzc(&h, &fail);
  show("e04rzc null");

  printf("\nHandle checks\n");
  e04tac(h, 1, &fail);
  show("null handle");
  memset(hdr, 0, sizeof hdr);
  e04tac(hdr, 1, &fail);
  show("foreign memory");
  hdr[0] = 65535;
  hdr[1] = 'Z';
  hdr[2] = 'O';
  hdr[3] = 'M';
  hdr[4] = 'S';
  e04rec(hdr, 0, x, &fail);
  show("tag without body");
  e04ryc(hdr, 6, "OVERVIEW", &fail);
  show("e04ryc tag without body");

  printf("\nReaders\n");
  {
    /* Each good file read (the format named as a user might), then printed. */
    static const char *const good[][3] = {
        {"MPS", "all_sections.mps", "OVERVIEW,OBJECTIVE,SIMPLE BOUNDS,LINEAR CONSTRAINTS BOUNDS"},
        {"MPS", "fixed_continuation.mps", "OBJECTIVE,SIMPLE BOUNDS,LINEAR CONSTRAINTS DETAILED"},
        {"M", "free_quad.mps", "OVERVIEW,OBJECTIVE"},
        {"MPS", "cones.mps", "OVERVIEW,CONE CONSTRAINTS DETAILED"},
        {"SDPA", "example.dat-s", "OVERVIEW,MATRIX CONSTRAINTS DETAILED"}};
    size_t i;
    for (i = 0; i < sizeof good / sizeof good[0]; ++i) {
      e04sac(&h, good[i][0], data(good[i][1]), &fail);
      show(good[i][1]);
      e04ryc(h, 6, good[i][2], &fail);
      e04rzc(&h, &fail);
    }
  }
  {
    /* Bad files of each format: each read fails and leaves no handle. */
    static const char *const bad[][2] = {
        {"MPS", "no_endata.mps"}, {"MPS", "bad_rowtype.mps"}, {"MPS", "unknown_row.mps"},
        {"MPS", "bad_number.mps"}, {"MPS", "bad_boundtype.mps"}, {"MPS", "short_cone.mps"},
        {"MPS", "repeat_cone.mps"}, {"MPS", "quad_and_cones.mps"}, {"MPS", "../missing.mps"},
        {"S", "sdpa_empty.dat-s"}, {"S", "sdpa_no_nblock.dat-s"}, {"S", "sdpa_no_blocks.dat-s"},
        {"S", "sdpa_no_objective.dat-s"}, {"S", "sdpa_no_entries.dat-s"}, {"S", "sdpa_bad_number.dat-s"},
        {"S", "sdpa_lower.dat-s"}, {"S", "sdpa_offdiag.dat-s"}, {"S", "sdpa_repeat.dat-s"},
        {"S", "sdpa_short_entry.dat-s"}};
    size_t i;
    for (i = 0; i < sizeof bad / sizeof bad[0]; ++i) {
      e04sac(&h, bad[i][0], data(bad[i][1]), &fail);
      show(bad[i][1]);
      if (h) printf("a handle was left behind\n");
    }
  }
  {
    FILE *f = fopen(data("example.dat-s"), "r");
    e04rac(&h, 0, &fail);
    e04rdc(h, fileno(f), 2, 5, 5, &fail);
    show("e04rdc small limits");
    rewind(f);
    e04rdc(h, fileno(f), 3, 2, 9, &fail);
    show("e04rdc");
    e04ryc(h, 6, "OVERVIEW", &fail);
    fclose(f);
    e04rzc(&h, &fail);
  }
  return 0;
}
