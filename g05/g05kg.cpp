// g05kg: non-repeatable initialisation of a base generator's state, seeded
// from the system clock and the run-time library's random source, then
// initialised exactly as g05kf with that one seed.
#include <chrono>
#include <cstdint>
#include <random>

#include "frame/frame.h"
#include "g05/init_report.h"
#include "g05/state.h"

inline constexpr zem::message g05kg_messages[] = {
    zem::g05::row_genid,
    zem::g05::row_lstate,
    zem::g05::row_query,
};

namespace {

// seed(1) = (clock count mod (2^30 - 1)) + [2147483647 r / 2], r in [0,1)
// from the C++ run-time's random device; at least 1.
int64_t clock_seed() {
  const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
  int64_t c = static_cast<int64_t>(ticks % 1073741823);
  if (c < 0) c = -c;
  double r = 0.0;
  try {
    std::random_device source;
    r = static_cast<double>(source()) * 0x1p-32;
  } catch (...) {
    // No random source: the clock alone.
  }
  const int64_t s = c + static_cast<int64_t>(2147483647.0 * r / 2.0);
  return s >= 1 ? s : 1;
}

}  // namespace

#define G05KG_ARGS(V, A, U)                                                                  \
  V(const int64_t *, genid) V(const int64_t *, subid) A(int64_t *, state) V(int64_t *, lstate) \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g05kg, G05KG_ARGS)

ZEM_INTERNAL void g05kgfn_(engine_data *, const int64_t *genid, const int64_t *subid,
                           int64_t *state, int64_t *lstate, char *errbuf, int64_t *ifail) {
  using namespace zem::g05;
  *ifail = 0;
  const int64_t seed[1] = {*lstate > 0 ? clock_seed() : 1};
  int64_t len = 0;
  const int64_t op = initialise(*genid, seed_array{seed, 1, *subid}, state, *lstate, &len);
  report_init(op, *genid, 1, lstate, len, errbuf, ifail);
}

ZEM_API void g05kgf_(const int64_t *genid, const int64_t *subid, int64_t state[], int64_t *lstate,
                     int64_t *ifail) {
  zem::f_entry call("g05kgf", g05kg_messages);
  g05kgft_(&call.en_data, genid, subid, state, lstate, call.errbuf, &call.status);
  zem::g05::finish_init(call, ifail);
}

ZEM_API void g05kgc(Zem_BaseRNG genid, int64_t subid, int64_t state[], int64_t *lstate,
                    Zem_Fail *fail) {
  zem::c_entry call("g05kgc", g05kg_messages, fail);
  const int64_t g = zem::g05::genid_of(genid);
  if (g == 0) return call.bad_param("genid");
  if (!lstate) return call.bad_param("lstate");
  if (!state && *lstate > 0) return call.bad_param("state");
  g05kgft_(&call.en_data, &g, &subid, state, lstate, call.errbuf, &call.status);
  zem::g05::finish_init(call);
}
