// The engine context and the conventions every engine layer shares.
//
// One call of a public routine travels
//     XXXXXc / XXXXXf_  ->  XXXXXft_  ->  XXXXXfv_  ->  XXXXXfn_  (-> zn_/yn_)
// The entry owns an engine_data, a 200-character message record and a status
// on its stack and passes their addresses down.  The engine never prints and
// never stops the program: it returns a status (0 success, positive the
// routine's documented failure, -999 memory exhausted) and, on failure, the
// message record written by zem::fail (frame/errbuf.h).
#pragma once

#include <cstdint>

// Symbols of the public interface carry ZEM_API; everything else in the
// shared object is hidden (-fvisibility=hidden).
#define ZEM_API extern "C" __attribute__((visibility("default")))
// Engine layers keep their C names (c05ayft_, c05ayfv_, ...) but stay inside
// the shared object.
#define ZEM_INTERNAL extern "C" __attribute__((visibility("hidden")))

// A user routine as the engine stores it: the adaptor that calls it knows
// its real type.
typedef void (*zem_routine)();

// The engine context.  Field order, widths and initial values are part of
// the frame's contract (adaptor classes of other chapters receive it by
// value); only the callback status and mode have meanings every layer uses.
struct engine_data {
  void *pointer;              //  1  null
  int64_t cb_status;          //  2  0; -8888 asks the marshal layer to repeat,
                              //     any other non-zero value asks the engine to stop
  void *reserved;             //  3  null
  int32_t cb_mode;            //  4  1: a user callback may be made now
  int32_t flag;               //  5  0
  int64_t counter;            //  6  0
  void *pointer2;             //  7  null
  void *pointer3;             //  8  null
  zem_routine user_routine;   //  9  null
  int32_t mode2;              // 10  1
  int32_t flag2;              // 11  0
  int64_t counter2;           // 12  0
};

// The internal routine the Fortran entries pass in the place of a library
// routine argument.
ZEM_INTERNAL void y90jdsn_();

// Puts an engine_data into its initial state (inline: every call of every
// routine starts here).
ZEM_INTERNAL inline __attribute__((always_inline, used)) void y90haan_(engine_data *en_data) {
  *en_data = engine_data{nullptr, 0, nullptr, 1, 0, 0, nullptr, nullptr, nullptr, 1, 0, 0};
}

namespace zem {

// Callback status by which the internal guard asks the marshal layer to
// repeat a call in mode 1.
inline constexpr int64_t repeat_call = -8888;
// Engine status for memory exhaustion.
inline constexpr int64_t status_alloc_fail = -999;
// Engine status for an exception other than memory exhaustion caught at the
// thunk (a library fault, or a user function that threw): an internal error.
inline constexpr int64_t status_exception = -998;
// Length of the message record, NUL included at the last position.
inline constexpr int errbuf_len = 200;

}  // namespace zem
