/* Client test: s30aac and s30abc as a C99 program uses them: both storage
 * orders agree, every failure message exactly, and null pointers and unknown
 * enumeration members refused before the engine runs. */
#include <math.h>
#include <stdio.h>
#include <zem.h>

static void show(const char *what, const Zem_Fail *fail) {
  printf("%s: code %d errnum %lld\n%s\n", what, fail->code, (long long)fail->errnum, fail->message);
}

int main(void) {
  double x[] = {80.0, 100.0, 125.0};
  double t[] = {0.25, 1.0};
  double pc[3 * 2], pr[2 * 3], g[11][6];
  Zem_Fail fail = ZEM_FAIL_INIT;
  int i, j, same = 1;

  s30aac(Zem_ColMajor, Zem_Call, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  s30aac(Zem_RowMajor, Zem_Call, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pr, 2, &fail);
  for (i = 0; i < 3; ++i)
    for (j = 0; j < 2; ++j) same = same && pc[i + 3 * j] == pr[i * 2 + j];
  printf("column and row order agree: %s, code %d\n", same ? "yes" : "no", fail.code);
  s30abc(Zem_ColMajor, Zem_Call, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pr, 3, g[0], g[1], g[2], g[3], g[4], g[5], g[6],
         g[7], g[8], g[9], g[10], &fail);
  for (i = 0; i < 6; ++i) same = same && pc[i] == pr[i];
  printf("s30abc prices equal s30aac: %s, code %d\n", same ? "yes" : "no", fail.code);

  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, -0.5, 0.0, pc, 3, &fail);
  show("r < 0", &fail);
  x[1] = 0.0;
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("x[1] = 0", &fail);
  x[1] = 100.0;
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, NAN, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("s NaN", &fail);
  t[1] = -1.0;
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("t[1] < 0", &fail);
  t[1] = INFINITY;
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("t[1] infinite", &fail);
  t[1] = 1.0;
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.0, 0.03, 0.0, pc, 3, &fail);
  show("sigma = 0", &fail);
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 1e300, 0.0, pc, 3, &fail);
  show("r huge", &fail);
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 0.03, -0.01, pc, 3, &fail);
  show("q < 0", &fail);
  s30aac(Zem_ColMajor, Zem_Put, 0, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("m = 0", &fail);
  s30aac(Zem_ColMajor, Zem_Put, 3, 0, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("n = 0", &fail);
  s30aac(Zem_ColMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 2, &fail);
  show("ldp < m", &fail);
  s30aac(Zem_RowMajor, Zem_Put, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 1, &fail);
  show("ldp < n", &fail);
  s30aac(Zem_ColMajor, (Zem_OptionType)0, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("option 0", &fail);
  s30aac((Zem_OrderType)7, Zem_Call, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, &fail);
  show("order 7", &fail);
  s30abc(Zem_ColMajor, Zem_Call, 3, 2, x, 100.0, t, 0.2, 0.03, 0.0, pc, 3, g[0], g[1], g[2], g[3], g[4], g[5], g[6],
         g[7], NULL, g[9], g[10], &fail);
  show("colour NULL", &fail);
  return 0;
}
