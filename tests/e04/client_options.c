/* The option routines e04zmc, e04znc and e04zpc as a C program uses them:
 * settings that succeed and every kind of failure, read-back of each type,
 * option files, and handles that are null, destroyed or not handles. */
#include <stdio.h>
#include <string.h>

#include <zem.h>

static void report(const char *what, const Zem_Fail *fail) {
  if (fail->code == NE_NOERROR)
    printf("%-40s ok\n", what);
  else
    printf("%-40s code %d errnum %ld\n%s\n", what, fail->code, (long)fail->errnum, fail->message);
}

static void set(void *handle, const char *optstr) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  e04zmc(handle, optstr, &fail);
  report(optstr, &fail);
}

static void get(void *handle, const char *name) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t ivalue = -99, optype = -99;
  double rvalue = -99.0;
  char cvalue[40] = "-";
  e04znc(handle, name, &ivalue, &rvalue, cvalue, (int64_t)sizeof cvalue, &optype, &fail);
  if (fail.code != NE_NOERROR) {
    report(name, &fail);
  } else if (optype == 1) {
    printf("%-30s integer   %ld\n", name, (long)ivalue);
  } else if (optype == 2) {
    printf("%-30s real      %.17g\n", name, rvalue);
  } else {
    printf("%-30s character %s (code %ld)\n", name, cvalue, (long)ivalue);
  }
}

static void file_test(void *handle, const char *label, const char *text) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  FILE *f = fopen("options.txt", "w");
  fputs(text, f);
  fclose(f);
  e04zpc(handle, "options.txt", &fail);
  report(label, &fail);
}

int main(void) {
  void *handle = NULL;
  Zem_Fail fail = ZEM_FAIL_INIT;
  static const char *const settings[] = {
      "Print Level = 3",
      "  print   level=1  ",
      "Infinite Bound Size = 1.0d+25",
      "Task = maximise",
      "Stats Time = wall clock",
      "FOAS Finite Diff Interval = 1e-7",
      "Print Level = 1.5",
      "Print Level = ",
      "Print Level",
      "Infinite Bound Size = abc",
      "Infinite Bound Size = 10",
      "FOAS Progress Tolerance = 0",
      "FOAS Stop Tolerance = 1",
      "FOAS Memory = 101",
      "Print Level = -1",
      "SSQP Proximal Point Method Nrm = 3",
      "Task = Maximum",
      "Print Levels = 1",
      "An option name far too long to be any option of the registry = 1",
      "",
  };
  static const char *const names[] = {"Print Level", "infinite bound size", "TASK", "Stats Time",
                                      "FOAS Finite Diff Interval", "FOAS Memory", "Print File = 1",
                                      "Print Levels"};
  size_t i;

  e04rac(&handle, 2, &fail);
  report("e04rac", &fail);
  printf("\n-- e04zmc\n");
  for (i = 0; i < sizeof settings / sizeof settings[0]; ++i) set(handle, settings[i]);
  printf("\n-- e04znc\n");
  for (i = 0; i < sizeof names / sizeof names[0]; ++i) get(handle, names[i]);
  {
    int64_t ivalue = 0, optype = 0;
    double rvalue = 0.0;
    char small[8];
    e04znc(handle, "Task", &ivalue, &rvalue, small, 8, &optype, &fail);
    report("Task, lcvalue = 8", &fail);
  }
  set(handle, "Defaults");
  get(handle, "Task");

  printf("\n-- e04zpc\n");
  file_test(handle, "no BEGIN", "Print Level = 4\n");
  file_test(handle, "no END", "* options\nBegin\nPrint Level = 4\n");
  file_test(handle, "no delimiter", "BEGIN\nPrint Level = 4\nTask=Maximize\nEND\n");
  file_test(handle, "unknown option", "BEGIN\n\nPrint Lvl = 4\nEND\n");
  file_test(handle, "not a number", "BEGIN\nFOAS Memory = 1.5\nEND\n");
  file_test(handle, "real out of bounds", "BEGIN\nTime Limit = 0\nEND\n");
  file_test(handle, "integer out of bounds", "BEGIN\nMonitoring File = -2\nEND\n");
  file_test(handle, "bad keyword", "BEGIN\nPrint Options = Maybe\nEND\n");
  get(handle, "Print Level");
  file_test(handle, "good file",
            "Options for the example\nbegin  options\n* a comment\n  Print Level = 4\n"
            "Task = Minimize\r\nTime Limit = 60\nend\nPrint Level = 5\n");
  get(handle, "Print Level");
  get(handle, "Time Limit");
  e04zpc(handle, "no/such/file.txt", &fail);
  report("missing file", &fail);
  e04zpc(handle, NULL, &fail);
  report("fname NULL", &fail);

  printf("\n-- handles\n");
  e04zmc(handle, NULL, &fail);
  report("optstr NULL", &fail);
  e04rzc(&handle, &fail);
  e04zmc(handle, "Print Level = 1", &fail);
  report("destroyed handle", &fail);
  {
    int64_t not_a_handle[9] = {0};
    e04zmc(not_a_handle, "Print Level = 1", &fail);
    report("foreign memory", &fail);
  }
  return 0;
}
