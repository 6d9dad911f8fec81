// The argument trace of the engine entry layer.
//
// A library-wide switch (read and set through y90gczn_; the environment
// variable ZEM_TRACE=1 turns it on when the library is loaded) makes every
// traced engine entry XXXXXfv_ write a block before and after its worker,
// and every traced callback layer a block before and after each user call.
// Blocks go to the advisory message unit:
//
//    ** c05ayfv entry
//       en_data: cb_status = 0, cb_mode = 1
//       a = 0.0
//       iuser = (address 0x7ffd...)
//       errbuf = "|1|1001|0.0|"        (0x01 shown as '|')
//
// The switch is meant to be set before calls are made; reading it is one
// relaxed atomic load, so the cost with the trace off is a single branch.
// A worker's loop run through ZEM_WITH_KNOWN_ADAPTOR (frame/layers.h) reads
// it once per routine call, so that a call is traced whole or not at all.
#pragma once

#include <atomic>
#include <cstdint>

#include "engine.h"

// Reads the trace switch; when set is non-zero, first sets it to value.
ZEM_INTERNAL int64_t y90gczn_(const int64_t *set, const int64_t *value);

namespace zem {

// Hidden, so that a layer reads it with one instruction (no address from
// the global offset table first).
extern __attribute__((visibility("hidden"))) std::atomic<bool> trace_switch;
inline bool trace_on() { return trace_switch.load(std::memory_order_relaxed); }

class trace_block {
 public:
  trace_block(const char *heading, const char *when);
  void value(const char *name, const engine_data *v);
  void value(const char *name, const double *v);
  void value(const char *name, const int64_t *v);
  void value(const char *name, const char *errbuf);  // the 200-character record
  void address(const char *name, const void *p);
};

}  // namespace zem
