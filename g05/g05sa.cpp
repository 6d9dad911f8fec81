// g05sa: n uniform numbers strictly inside (0,1) from a generator state.
#include <cstdint>

#include "frame/frame.h"
#include "g05/state.h"
#include "g05/uniform.h"

inline constexpr zem::message g05sa_messages[] = {
    {1, 1001, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
    {2, 1002, NE_INT_ARRAY, {"On entry, state vector has been corrupted or not initialized."}},
};

#define G05SA_ARGS(V, A, U) \
  V(const int64_t *, n) A(int64_t *, state) A(double *, x) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g05sa, G05SA_ARGS)

ZEM_INTERNAL void g05safn_(engine_data *, const int64_t *n, int64_t *state, double *x,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  *ifail = 0;
  if (!state_valid(state)) return zem::fail(errbuf, ifail, 2, 1002);
  if (*n < 0) return zem::fail(errbuf, ifail, 1, 1001, *n);
  uniform_fill(state, *n, x);
}

ZEM_API void g05saf_(const int64_t *n, int64_t state[], double x[], int64_t *ifail) {
  zem::f_entry call("g05saf", g05sa_messages);
  g05saft_(&call.en_data, n, state, x, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void g05sac(int64_t n, int64_t state[], double x[], Zem_Fail *fail) {
  zem::c_entry call("g05sac", g05sa_messages, fail);
  if (!state) return call.bad_param("state");
  if (!x && n > 0) return call.bad_param("x");
  g05saft_(&call.en_data, &n, state, x, call.errbuf, &call.status);
  call.finish();
}
