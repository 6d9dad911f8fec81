/* e04ryc's option listings as a C program sees them: "OPTIONS" (the
 * options a user may set, between "Begin of Options" and "End of Options",
 * with the mixed-case names and a comment on the ones set by the caller)
 * and "ALL OPTIONS" (every option of the registry, the internal ones
 * included), after settings through e04zmc ("* U") beside defaults ("* d").  The prototype of
 * e04ryc and its long name are checked by assignment to a pointer of the
 * documented type: a different declaration fails to compile under -Werror. */
#include <stdio.h>
#include <string.h>

#include <zem.h>

typedef void (*printer_t)(void *handle, int64_t nout, const char *cmdstr, Zem_Fail *fail);

static void check(const char *what, const Zem_Fail *fail) {
  if (fail->code != NE_NOERROR) printf("%s: %s\n", what, fail->message);
}

int main(void) {
  printer_t print = e04ryc, print_long = zem_opt_handle_print;
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  static const char *const settings[] = {"Print Level = 3", "infinite bound size = 1.0e25", "TASK = maximize",
                                         "Stop Tolerance 1 = 1.5e-9", "Hessian Density = Dense"};
  size_t i;

  if (print != print_long) printf("zem_opt_handle_print is not e04ryc\n");
  e04rac(&handle, 2, &fail);
  check("e04rac", &fail);
  for (i = 0; i < sizeof settings / sizeof settings[0]; ++i) {
    e04zmc(handle, settings[i], &fail);
    check(settings[i], &fail);
  }
  printf("---- Options after five settings\n");
  print(handle, 6, " options ", &fail);
  check("e04ryc", &fail);
  printf("---- All options after five settings, with the overview\n");
  print(handle, 6, "Overview, ALL OPTIONS", &fail);
  check("e04ryc", &fail);
  fail.print = 0;
  print(handle, 6, "OPTIONS, ALL OPTION", &fail);
  printf("---- A misspelt keyword\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
