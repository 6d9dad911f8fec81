// g05kh: leap-frog.  Turns the stream of an initialised state into the k-th
// of n interleaved streams: values k, k+n, k+2n, ... of the stream as it was.
// n consumers each call it on a copy of one state with their own k.
#include <cstdint>

#include "frame/frame.h"
#include "g05/modarith.h"
#include "g05/state.h"

inline constexpr zem::message g05kh_messages[] = {
    {1, 1001, NE_INT, {"On entry, n = %s.", "Constraint: n >= 1."}},
    {2, 1002, NE_INT_2, {"On entry, k = %s and n = %s.", "Constraint: 0 < k <= n."}},
    {3, 1003, NE_INT_ARRAY, {"On entry, state vector has been corrupted or not initialized."}},
    {4, 1004, NE_INT_ARRAY, {"On entry, cannot use leap-frog with the base generator defined by state."}},
};

#define G05KH_ARGS(V, A, U) \
  V(const int64_t *, n) V(const int64_t *, k) A(int64_t *, state) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g05kh, G05KH_ARGS)

ZEM_INTERNAL void g05khfn_(engine_data *, const int64_t *n, const int64_t *k, int64_t *state,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  *ifail = 0;
  if (!state_valid(state)) return zem::fail(errbuf, ifail, 3, 1003);
  if (*n < 1) return zem::fail(errbuf, ifail, 1, 1001, *n);
  if (*k < 1 || *k > *n) return zem::fail(errbuf, ifail, 2, 1002, *k, *n);
  const int64_t stride = stride_word(state), stream = stream_word(state);
  if (generator_for(state[pos_genid]).leapfrog(state, *n, *k) != op_ok)
    return zem::fail(errbuf, ifail, 4, 1004);
  // Stream k of n within stream `stream` of `stride`: stream
  // stream + (k - 1) stride of stride n (saturating; informative except for
  // the Mersenne Twister, whose stride stays at most 2^24).
  stride_word(state) = sat_mul(stride, *n);
  stream_word(state) = sat_add(stream, sat_mul(*k - 1, stride));
}

ZEM_API void g05khf_(const int64_t *n, const int64_t *k, int64_t state[], int64_t *ifail) {
  zem::f_entry call("g05khf", g05kh_messages);
  g05khft_(&call.en_data, n, k, state, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void g05khc(int64_t n, int64_t k, int64_t state[], Zem_Fail *fail) {
  zem::c_entry call("g05khc", g05kh_messages, fail);
  if (!state) return call.bad_param("state");
  g05khft_(&call.en_data, &n, &k, state, call.errbuf, &call.status);
  call.finish();
}
