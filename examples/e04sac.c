/* e04sac example: a handle made from an MPS file (written here first), its
 * overview printed; then a file with an unknown row, which fails and leaves
 * the handle null. */
#include <stdio.h>
#include <zem.h>

static const char *model =
    "NAME          TINY\n"
    "ROWS\n"
    " N  COST\n"
    " L  CAP\n"
    " G  DEMAND\n"
    "COLUMNS\n"
    "    MARKER    'MARKER'     'INTORG'\n"
    "    X         COST         3.0   CAP          1.0\n"
    "    X         DEMAND       1.0\n"
    "    MARKER    'MARKER'     'INTEND'\n"
    "    Y         COST         2.0   CAP          1.0\n"
    "    Y         DEMAND       2.0\n"
    "RHS\n"
    "    RHS       CAP          10.0  DEMAND       4.0\n"
    "BOUNDS\n"
    " UP BND       X            5.0\n"
    "ENDATA\n";

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  FILE *f = fopen("tiny.mps", "w");
  if (!f) return 1;
  fputs(model, f);
  fclose(f);

  printf("e04sac example results\n\n");
  zem_opt_handle_read_file(&handle, "MPS", "tiny.mps", &fail);
  if (fail.code != NE_NOERROR) {
    printf("Error from e04sac:\n%s\n", fail.message);
    return 1;
  }
  e04ryc(handle, 6, "OVERVIEW, OBJECTIVE, LINEAR CONSTRAINTS BOUNDS", &fail);
  e04rzc(&handle, &fail);

  f = fopen("bad.mps", "w");
  if (!f) return 1;
  fputs("NAME BAD\nROWS\n N COST\nCOLUMNS\n X COST 1.0 NOROW 2.0\nENDATA\n", f);
  fclose(f);
  e04sac(&handle, "MPS", "bad.mps", &fail);
  printf("\nReading bad.mps:\n%s\nhandle null: %s\n", fail.message, handle == NULL ? "yes" : "no");
  remove("tiny.mps");
  remove("bad.mps");
  return 0;
}
