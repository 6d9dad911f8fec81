// The uniform fill: validity test, then the generator's own fill.
#include "g05/uniform.h"

#include "g05/state.h"

namespace zem::g05 {

int64_t uniform_fill(int64_t *state, int64_t n, double *x) {
  if (!state_valid(state)) return uniform_bad_state;
  if (n > 0) generator_for(state[pos_genid]).fill(state, n, x);
  return 0;
}

}  // namespace zem::g05
