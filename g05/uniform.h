// The uniform (0,1) fill of chapter g05 at engine level: what g05sa and every
// variate generator of the chapter draw from.
#pragma once

#include <cstdint>

namespace zem::g05 {

// Status of uniform_fill for a state that fails the validity test.
inline constexpr int64_t uniform_bad_state = 1;

// Writes n >= 0 uniform numbers, each strictly inside (0,1), into x and
// advances state.  Returns 0, or uniform_bad_state (nothing written, state
// unchanged) when state fails the validity test of the state array (its
// length is taken from state[0]).
int64_t uniform_fill(int64_t *state, int64_t n, double *x);

}  // namespace zem::g05
