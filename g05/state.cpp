// The table of base generators, the validity test of a state and the
// initialisation frame shared by the two initialisation routines.
#include "g05/state.h"

#include "g05/generators.h"

namespace zem::g05 {

namespace {

// By genid - 1.
const generator *const generators[genid_max] = {
    &basic_generator,           &wichmann_hill_1_generator, &mersenne_twister_generator,
    &wichmann_hill_2_generator, &acorn_generator,           &mrg32k3a_generator,
};

}  // namespace

const generator &generator_for(int64_t genid) { return *generators[genid - 1]; }

bool state_valid(const int64_t *state, int64_t lstate) {
  if (lstate < 3 || state[pos_length] != lstate) return false;
  const int64_t genid = state[pos_genid];
  if (genid < genid_min || genid > genid_max) return false;
  const generator &g = generator_for(genid);
  // Only now is n known to be a length of this generator's states, so that
  // the trailer may be read.
  const int64_t n = lstate;
  if (!g.length_ok(state, n)) return false;
  if (state[pos_check] != g.check_word || state[n - 1] != state[pos_check]) return false;
  if (state[n - 3] < 1 || state[n - 2] < 1) return false;
  return g.consistent(state, n);
}

int64_t initialise(int64_t genid, const seed_array &s, int64_t *state, int64_t lstate,
                   int64_t *len) {
  if (genid < genid_min || genid > genid_max) return op_wrong_generator;
  const generator &g = generator_for(genid);
  // The generator sees the words left once the trailer is reserved.
  const bool query = lstate <= 0;
  const int64_t room = lstate >= trailer_len ? lstate - trailer_len : lstate;
  int64_t own = 0;
  const int64_t status = g.init(s, state, room, query, &own);
  if (status == op_query || status == op_lstate_small) {
    *len = own + trailer_len;
    return status;
  }
  if (status != op_ok) return status;
  state[own] = 1;                     // number of interleaved streams
  state[own + 1] = 1;                 // which of them
  state[own + 2] = state[pos_check];  // trailing check word
  state[pos_length] = own + trailer_len;
  *len = own + trailer_len;
  return op_ok;
}

}  // namespace zem::g05
