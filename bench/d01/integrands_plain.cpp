// The integrands compiled like the rest of the benchmark (-O2): every value
// a call of the scalar mathematical library.
#define BENCH_NS plain
#include "integrands.inc"
