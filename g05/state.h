// The caller-owned state array of the base random number generators, and the
// table of per-generator operations that every g05 routine dispatches through.
//
// Layout (0-based here; the Fortran interface counts from 1), n = state[0]:
//     state[0]        n, the number of words in use
//     state[1]        the generator's check word
//     state[2]        genid, 1 to 6
//     state[3]        a generator-specific word
//     state[4 .. m-1] the generator's own values (m = its own length)
//     state[n-3]      stream-control word: number of interleaved streams
//                     (the product of the n of every leap-frog applied)
//     state[n-2]      stream-control word: which of them, 1-based
//     state[n-1]      the check word again
// with n = m + 3.  Both stream-control words start at 1 and stay >= 1.
#pragma once

#include <cstdint>

namespace zem::g05 {

// Base generators, by genid.
enum genid_t : int64_t {
  gen_basic = 1,
  gen_wichmann_hill_1 = 2,
  gen_mersenne_twister = 3,
  gen_wichmann_hill_2 = 4,
  gen_acorn = 5,
  gen_mrg32k3a = 6,
};
inline constexpr int64_t genid_min = 1, genid_max = 6;

// Positions of the header words.
inline constexpr int64_t pos_length = 0, pos_check = 1, pos_genid = 2, pos_specific = 3,
                         pos_own = 4;
// Words after a generator's own ones: two stream-control words and the check word.
inline constexpr int64_t trailer_len = 3;

inline int64_t &stride_word(int64_t *state) { return state[state[pos_length] - 3]; }
inline int64_t &stream_word(int64_t *state) { return state[state[pos_length] - 2]; }
inline int64_t stride_word(const int64_t *state) { return state[state[pos_length] - 3]; }

// Results of a generator's own operations.  They are the engine's internal
// vocabulary; each worker turns them into its documented failure numbers.
enum op_status : int64_t {
  op_ok = 0,
  op_wrong_generator = 1,  // init: genid outside 1..6
  op_invalid_seed = 3,     // init: the seed array cannot seed this generator
  op_lseed = 4,            // init: lseed < 1
  op_lstate_small = 6,     // init: lstate below the generator's minimum
  op_query = -1,           // init: length query, nothing initialised
  op_too_small = 4,        // skip-ahead: Mersenne Twister state without working room
  op_unsupported = -999,   // leap-frog / skip-ahead: not available for this state
  op_no_memory = -998,     // skip-ahead: scratch memory could not be obtained
};

// The seed as the initialisers see it.
struct seed_array {
  const int64_t *seed;
  int64_t lseed;
  int64_t subid;
};

// One base generator's operations.
struct generator {
  int64_t genid;
  int64_t check_word;
  const char *name;
  // Initialise.  room = lstate - 3 (the words the generator may use for its
  // own values, header included), query = the caller asked for the length.
  // Checks in order: lseed, query, room, seed; writes nothing unless all pass.
  // Sets *own_len on op_query (the recommended length) and op_lstate_small
  // (the minimum), and on success (the length written in state[0]).
  int64_t (*init)(const seed_array &s, int64_t *state, int64_t room, bool query,
                  int64_t *own_len);
  // Whether n is a total length this generator's states can have; may read
  // state[3] (ACORN keeps its order there), nothing beyond.
  bool (*length_ok)(const int64_t *state, int64_t n);
  // Whether the own values of a state that passed the header test are ones
  // this generator can work on: digit and index ranges, moduli, multipliers.
  bool (*consistent)(const int64_t *state, int64_t n);
  // Writes n >= 0 uniform (0,1) numbers and advances the state.
  void (*fill)(int64_t *state, int64_t n, double *x);
  // Turns the stream into values k, k+n, k+2n, ... (1 <= k <= n).  The
  // stream-control words are updated by the caller on op_ok.
  int64_t (*leapfrog)(int64_t *state, int64_t n, int64_t k);
  // Advances by n >= 0 values.
  int64_t (*skip)(int64_t *state, int64_t n);
  // Advances by 2^n values, n >= 0.
  int64_t (*skip_pow2)(int64_t *state, int64_t n);
};

// The generator of genid 1..6.
const generator &generator_for(int64_t genid);

// The validity test, applied first by every routine that takes a state:
// lstate >= 3, state[0] == lstate, genid in 1..6, a length that genid can
// have, the check word of genid at both ends, both stream-control words >= 1,
// and the generator's own consistency test.  Words are read in an order that
// never goes past what the header has vouched for.
bool state_valid(const int64_t *state, int64_t lstate);
// The same for routines that receive no lstate: the length is state[0].
inline bool state_valid(const int64_t *state) {
  return state_valid(state, state[pos_length]);
}

// Initialisation frame shared by g05kf and g05kg: checks genid, reserves the
// trailer, calls the generator and appends the trailer.  On op_query and
// op_lstate_small, *len is the total length to report (own + 3).
int64_t initialise(int64_t genid, const seed_array &s, int64_t *state, int64_t lstate,
                   int64_t *len);

}  // namespace zem::g05
