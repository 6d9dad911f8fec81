// g05kj: skip-ahead by n values: the state moves on as if n values had been drawn.
// Every generator does it in O(log n) work (see state.h and the generator
// files); n = 0 leaves the state as it is.
#include <cstdint>

#include "frame/frame.h"
#include "g05/skip_ahead.h"
#include "g05/state.h"

inline constexpr zem::message g05kj_messages[] = {
    {1, 1001, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
    {2, 1002, NE_INT_ARRAY, {"On entry, state vector has been corrupted or not initialized."}},
    {3, 1003, NE_INT_ARRAY, {"On entry, cannot use skip-ahead with the base generator defined by state."}},
    {4, 1004, NE_ARRAY_SIZE,
     {"On entry, the base generator is Mersenne Twister, but",
      "the state vector defined on initialization is not large enough",
      "to perform a skip ahead. See the initialization function zem_rand_init_repeatable (g05kfc) or zem_rand_init_nonrepeatable (g05kgc)."},
     {"On entry, the base generator is Mersenne Twister, but",
      "the state vector defined on initialization is not large enough",
      "to perform a skip ahead. See the initialization routine g05kff or g05kgf."}},
};

#define G05KJ_ARGS(V, A, U) V(const int64_t *, n) A(int64_t *, state) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g05kj, G05KJ_ARGS)

ZEM_INTERNAL void g05kjfn_(engine_data *, const int64_t *n, int64_t *state, char *errbuf, int64_t *ifail) {
  zem::g05::skip_worker(n, state, errbuf, ifail, &zem::g05::generator::skip);
}

ZEM_API void g05kjf_(const int64_t *n, int64_t state[], int64_t *ifail) {
  zem::f_entry call("g05kjf", g05kj_messages);
  g05kjft_(&call.en_data, n, state, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void g05kjc(int64_t n, int64_t state[], Zem_Fail *fail) {
  zem::c_entry call("g05kjc", g05kj_messages, fail);
  if (!state) return call.bad_param("state");
  g05kjft_(&call.en_data, &n, state, call.errbuf, &call.status);
  call.finish();
}
