// g05kf: repeatable initialisation of a base generator's state from a seed
// (the initialisation frame and the generators are in state.cpp and the
// generator files; the seed conventions are on docs/g05-generators.md).
#include <cstdint>

#include "frame/frame.h"
#include "g05/init_report.h"
#include "g05/state.h"

inline constexpr zem::message g05kf_messages[] = {
    zem::g05::row_genid, zem::g05::row_lseed, zem::g05::row_seed, zem::g05::row_lstate,
    zem::g05::row_query,
};

#define G05KF_ARGS(V, A, U)                                                                  \
  V(const int64_t *, genid) V(const int64_t *, subid) A(const int64_t *, seed)               \
  V(const int64_t *, lseed) A(int64_t *, state) V(int64_t *, lstate) V(char *, errbuf) \
  V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g05kf, G05KF_ARGS)

ZEM_INTERNAL void g05kffn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           const int64_t *seed, const int64_t *lseed, int64_t *state,
                           int64_t *lstate, char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  *ifail = 0;
  int64_t len = 0;
  const int64_t op = initialise(*genid, seed_array{seed, *lseed, *subid}, state, *lstate, &len);
  report_init(op, *genid, *lseed, lstate, len, errbuf, ifail);
}

ZEM_API void g05kff_(const int64_t *genid, const int64_t *subid, const int64_t seed[],
                     const int64_t *lseed, int64_t state[], int64_t *lstate, int64_t *ifail) {
  zem::f_entry call("g05kff", g05kf_messages);
  g05kfft_(&call.en_data, genid, subid, seed, lseed, state, lstate, call.errbuf, &call.status);
  zem::g05::finish_init(call, ifail);
}

ZEM_API void g05kfc(Zem_BaseRNG genid, int64_t subid, const int64_t seed[], int64_t lseed,
                    int64_t state[], int64_t *lstate, Zem_Fail *fail) {
  zem::c_entry call("g05kfc", g05kf_messages, fail);
  const int64_t g = zem::g05::genid_of(genid);
  if (g == 0) return call.bad_param("genid");
  if (!lstate) return call.bad_param("lstate");
  if (!seed && lseed >= 1) return call.bad_param("seed");
  if (!state && *lstate > 0) return call.bad_param("state");
  g05kfft_(&call.en_data, &g, &subid, seed, &lseed, state, lstate, call.errbuf, &call.status);
  zem::g05::finish_init(call);
}
