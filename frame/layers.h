// The engine layers and callback chains, generated from one argument list.
//
// A routine names its engine arguments once, as an X-macro list in Fortran
// order (the engine context comes first and is not listed):
//
//   #define C05AY_ARGS(V, A, U) V(const double *, a) ... U(zem_routine, f) ...
//           A(int64_t *, iuser) A(double *, ruser) A(char *, errbuf) V(int64_t *, ifail)
//
//   V(type, name)  an argument passed by address; traced by its value
//   A(type, name)  an array or an opaque address; traced as an address
//   U(type, name)  a routine argument; not traced
//
// ZEM_ENGINE_LAYERS(c05ay, C05AY_ARGS) then defines the thunk c05ayft_ and
// the traced engine entry c05ayfv_ and declares the worker c05ayfn_, which
// the routine writes.  Every user-function argument gets its callback chain
// from ZEM_CALLBACK_CHAIN(c05ay, f, C05AY_F_ARGS), where the list names the
// arguments of one evaluation after the user routine itself; it declares
// the two adaptors (the routine writes them: they make the user call) and
// defines the guard, marshal and traced layers:
//
//   c05ayf_fh_           Fortran adaptor       (written by the routine)
//   c05ayc_f_helper      C adaptor             (written by the routine)
//   c05ayf_internal_fh_  re-entry guard
//   c05ayf_marshal_fh_   re-entry loop (repeats while the status is -8888)
//   c05ayf_print_fh_     traced callback; the worker calls this one
#pragma once

#include <cxxabi.h>

#include <cstdint>
#include <cstring>

#include "engine.h"
#include "trace.h"

#define ZEM_ARG_PARAM_(type, name) , type name
#define ZEM_ARG_NAME_(type, name) , name
#define ZEM_ARG_TYPE_(type, name) , type
#define ZEM_ARG_TRACE_V_(type, name) zem_tb.value(#name, name);
#define ZEM_ARG_TRACE_A_(type, name) zem_tb.address(#name, name);
#define ZEM_ARG_TRACE_U_(type, name)

#define ZEM_PARAMS(ARGS) engine_data *en_data ARGS(ZEM_ARG_PARAM_, ZEM_ARG_PARAM_, ZEM_ARG_PARAM_)
#define ZEM_NAMES(ARGS) en_data ARGS(ZEM_ARG_NAME_, ZEM_ARG_NAME_, ZEM_ARG_NAME_)
#define ZEM_TRACE_ARGS(ARGS) ARGS(ZEM_ARG_TRACE_V_, ZEM_ARG_TRACE_A_, ZEM_ARG_TRACE_U_)

// A trace block listing the context and every traced argument.
#define ZEM_TRACE_BLOCK(heading, when, ARGS) \
  do {                                       \
    zem::trace_block zem_tb(heading, when);  \
    zem_tb.value("en_data", en_data);        \
    ZEM_TRACE_ARGS(ARGS)                     \
  } while (0)

// The thunk and the traced entry sit between every entry and its worker;
// they are always inlined into the entry (`used` keeps each as a symbol of
// its own), and the traced path is kept out of line.
#define ZEM_LAYER_INLINE ZEM_INTERNAL inline __attribute__((always_inline, used))

// The thunk is where no exception may pass: whatever the worker, the
// library's allocations or a user function written in C++ throw ends there.
// Memory that cannot be had (std::bad_alloc and its kin, std::length_error)
// becomes status -999; anything else status -998, an internal error, with
// an empty message record.  The routine's errbuf and ifail arguments are
// found by name among its arguments (every routine that reports has them);
// all of this is on the cold path and costs nothing on the normal one.
// A routine that calls back runs its worker in a function of its own,
// called from inside the try block: compiled inline into a function that
// has a handler, a worker's loop lost a register to the frame pointer and
// kept its state in memory, which cost a ten-evaluation c05ay solve a sixth
// of its time; the call costs a few nanoseconds per routine call, never
// per evaluation.
// How many user routines a routine takes: those that call back run their
// worker out of line (above); the others, a few arithmetic steps with no
// call inside, keep it inline, where the handler costs nothing and the
// extra call would cost a few nanoseconds of every call.
#define ZEM_ARG_NOT_ROUTINE_(type, name)
#define ZEM_ARG_IS_ROUTINE_(type, name) +zem::is_user_routine<type>
#define ZEM_COUNT_ROUTINES(ARGS) ARGS(ZEM_ARG_NOT_ROUTINE_, ZEM_ARG_NOT_ROUTINE_, ZEM_ARG_IS_ROUTINE_)
#define ZEM_ARG_CATCH_(type, name) zem_sink.take(#name, name);
#define ZEM_ARG_CATCH_U_(type, name)
#define ZEM_CATCH_ARGS(ARGS) ARGS(ZEM_ARG_CATCH_, ZEM_ARG_CATCH_, ZEM_ARG_CATCH_U_)

#define ZEM_ENGINE_LAYERS(rtn, ARGS)                                              \
  ZEM_INTERNAL void rtn##fn_(ZEM_PARAMS(ARGS));                                   \
  [[gnu::cold, gnu::noinline]] static void rtn##_traced(ZEM_PARAMS(ARGS)) {        \
    ZEM_TRACE_BLOCK(#rtn "fv", "entry", ARGS);                                    \
    rtn##fn_(ZEM_NAMES(ARGS));                                                    \
    ZEM_TRACE_BLOCK(#rtn "fv", "exit", ARGS);                                     \
  }                                                                               \
  ZEM_LAYER_INLINE void rtn##fv_(ZEM_PARAMS(ARGS)) {                              \
    if (__builtin_expect(zem::trace_on(), 0)) return rtn##_traced(ZEM_NAMES(ARGS)); \
    rtn##fn_(ZEM_NAMES(ARGS));                                                    \
  }                                                                               \
  [[gnu::noinline, maybe_unused]] static void rtn##_body(ZEM_PARAMS(ARGS)) { rtn##fv_(ZEM_NAMES(ARGS)); } \
  ZEM_LAYER_INLINE void rtn##ft_(ZEM_PARAMS(ARGS)) {                              \
    try {                                                                         \
      if constexpr (0 ZEM_COUNT_ROUTINES(ARGS) > 0)                               \
        rtn##_body(ZEM_NAMES(ARGS));                                              \
      else                                                                        \
        rtn##fv_(ZEM_NAMES(ARGS));                                                \
    } catch (abi::__forced_unwind &) {                                            \
      throw; /* thread cancellation must unwind */                                \
    } catch (...) {                                                               \
      zem::exception_sink zem_sink;                                               \
      ZEM_CATCH_ARGS(ARGS)                                                        \
      zem_sink.report();                                                          \
    }                                                                             \
  }

namespace zem {

template <typename T>
inline constexpr int is_user_routine = 0;
template <>
inline constexpr int is_user_routine<zem_routine> = 1;

// Where a caught exception is reported: the routine's message record and
// status, picked out of its arguments by name.
struct exception_sink {
  char *errbuf = nullptr;
  int64_t *ifail = nullptr;
  template <typename T>
  void take(const char *, const T &) {}
  void take(const char *name, char *p) {
    if (std::strcmp(name, "errbuf") == 0) errbuf = p;
  }
  void take(const char *name, int64_t *p) {
    if (std::strcmp(name, "ifail") == 0) ifail = p;
  }
  // Called inside the catch block: looks at the exception in flight.
  [[gnu::cold, gnu::noinline]] void report() const;
};

// Whether the compiler knows that adaptor is `quiet` (one of the quiet
// adaptors of ZEM_CALLBACK_CHAIN, constants only in the loops of
// ZEM_WITH_KNOWN_ADAPTOR).  Never true of a value known only at run time:
// such a call takes the general path, which is right for any adaptor.
template <typename Adaptor>
[[gnu::always_inline]] inline bool known_as(Adaptor adaptor, Adaptor quiet) {
  return __builtin_constant_p(adaptor == quiet) && adaptor == quiet;
}

// The re-entry loop: calls the adaptor, and again in mode 1 for as long as
// the guard asks for a repeat; restores the caller's mode and returns the
// callback status, which is non-zero when the user asked to stop.
//
// marshal_loop is the whole protocol out of line, for any adaptor.  The
// worker's own calls take the inline marshal below, which makes the first
// call directly and leaves only a repeat to marshal_loop (see
// ZEM_CALLBACK_CHAIN for why the out-of-line paths see copies).
template <typename Adaptor, typename... A>
[[gnu::cold, gnu::noinline]] int64_t marshal_loop(Adaptor adaptor, bool repeat, engine_data *en_data, A... a) {
  const int32_t saved_mode = en_data->cb_mode;
  if (!repeat) adaptor(en_data, a...);
  while (en_data->cb_status == repeat_call) {
    en_data->cb_mode = 1;
    en_data->cb_status = 0;
    adaptor(en_data, a...);
  }
  en_data->cb_mode = saved_mode;
  return en_data->cb_status;
}

// The re-entry guard: a user call is allowed only in mode 1; otherwise the
// call is refused with the repeat status and the marshal layer repeats it.
template <typename Adaptor, typename... A>
[[gnu::always_inline]] inline void guard(Adaptor adaptor, engine_data *en_data, A... a) {
  if (en_data->cb_mode == 1)
    adaptor(en_data, a...);
  else
    en_data->cb_status = repeat_call;
}

// A scalar argument passed by address, copied for an out-of-line call: the
// copy goes back only where the callee may write.
template <typename T>
inline void copy_back(const T *, const T &) {}
template <typename T>
inline void copy_back(T *p, const T &v) {
  *p = v;
}

}  // namespace zem

// The callback layers sit on the engine's hottest path (one pass per
// function value), so they too are always inlined into the worker.  The
// marshal layer calls the two adaptors of the library directly, so that the
// compiler sees through the whole chain down to the user's call.
//
// What stays out of line (a repeat, an adaptor other than the routine's
// own two) is handed copies of the scalar arguments, never their addresses:
// a worker's local whose address reached an opaque call would have to live
// in memory on every pass, and the function value would make a round trip
// through the stack on the worker's critical path.

#define ZEM_CB_PARAMS(CBARGS) CBARGS(ZEM_ARG_PARAM_, ZEM_ARG_PARAM_, ZEM_ARG_PARAM_)
#define ZEM_CB_NAMES(CBARGS) CBARGS(ZEM_ARG_NAME_, ZEM_ARG_NAME_, ZEM_ARG_NAME_)
#define ZEM_CB_COPY_V_(type, name) auto zem_copy_##name = *name;
#define ZEM_CB_COPY_A_(type, name)
#define ZEM_CB_PASS_V_(type, name) , &zem_copy_##name
#define ZEM_CB_BACK_V_(type, name) zem::copy_back(name, zem_copy_##name);
#define ZEM_CB_NOTHING_(type, name)
#define ZEM_CB_COPIES(CBARGS) CBARGS(ZEM_CB_COPY_V_, ZEM_CB_COPY_A_, ZEM_CB_COPY_A_)
#define ZEM_CB_COPY_NAMES(CBARGS) CBARGS(ZEM_CB_PASS_V_, ZEM_ARG_NAME_, ZEM_ARG_NAME_)
#define ZEM_CB_COPY_BACK(CBARGS) CBARGS(ZEM_CB_BACK_V_, ZEM_CB_NOTHING_, ZEM_CB_NOTHING_)

// Calls fn(leading..., copies of the callback arguments) and returns its
// status, writing the copies back (a GNU statement expression: it stays
// inline in the worker, and only the copies' addresses leave it).
#define ZEM_CB_ON_COPIES(CBARGS, fn, ...)                                                              \
  ({                                                                                                 \
    ZEM_CB_COPIES(CBARGS)                                                                            \
    const int64_t zem_status = fn(__VA_ARGS__ ZEM_CB_COPY_NAMES(CBARGS));                             \
    ZEM_CB_COPY_BACK(CBARGS)                                                                         \
    zem_status;                                                                                      \
  })

// One marshal pass with a known adaptor, inline: the call, then one test of
// the status (a stop returns it; a repeat goes to the loop, which keeps the mode).
#define ZEM_CB_MARSHAL_KNOWN(known, arg, CBARGS)                                                         \
  do {                                                                                               \
    known(en_data, arg ZEM_CB_NAMES(CBARGS));                                                        \
    if (__builtin_expect(en_data->cb_status != 0, 0)) {                                              \
      if (en_data->cb_status == zem::repeat_call)                                                    \
        ZEM_CB_ON_COPIES(CBARGS, zem::marshal_loop, known, true, en_data, arg);                       \
      return en_data->cb_status;                                                                     \
    }                                                                                                \
    return 0;                                                                                        \
  } while (0)

#define ZEM_CALLBACK_CHAIN(rtn, arg, CBARGS)                                                             \
  using rtn##_##arg##_adaptor = void (*)(engine_data *, zem_routine CBARGS(ZEM_ARG_TYPE_, ZEM_ARG_TYPE_,   \
                                                                           ZEM_ARG_TYPE_));             \
  ZEM_INTERNAL void rtn##f_##arg##h_(engine_data *en_data, zem_routine arg ZEM_CB_PARAMS(CBARGS));        \
  ZEM_INTERNAL void rtn##c_##arg##_helper(engine_data *en_data, zem_routine arg ZEM_CB_PARAMS(CBARGS));   \
  /* The two adaptors again, as the loop of ZEM_WITH_KNOWN_ADAPTOR knows them once the trace switch \
     has been read for the whole call (see there); called only out of line. */                          \
  [[gnu::noinline]] static void rtn##c_##arg##_quiet(engine_data *en_data, zem_routine arg ZEM_CB_PARAMS(CBARGS)) { \
    rtn##c_##arg##_helper(en_data, arg ZEM_CB_NAMES(CBARGS));                                            \
  }                                                                                                    \
  [[gnu::noinline]] static void rtn##f_##arg##_quiet(engine_data *en_data, zem_routine arg ZEM_CB_PARAMS(CBARGS)) { \
    rtn##f_##arg##h_(en_data, arg ZEM_CB_NAMES(CBARGS));                                                 \
  }                                                                                                    \
  ZEM_LAYER_INLINE void rtn##f_internal_##arg##h_(engine_data *en_data, zem_routine arg ZEM_CB_PARAMS(CBARGS)) { \
    zem::guard(rtn##f_##arg##h_, en_data, arg ZEM_CB_NAMES(CBARGS));                                     \
  }                                                                                                    \
  ZEM_LAYER_INLINE int64_t rtn##f_marshal_##arg##h_(rtn##_##arg##_adaptor adaptor, engine_data *en_data,    \
                                                    zem_routine arg ZEM_CB_PARAMS(CBARGS)) {             \
    if (adaptor == rtn##c_##arg##_helper) ZEM_CB_MARSHAL_KNOWN(rtn##c_##arg##_helper, arg, CBARGS);         \
    if (adaptor == rtn##f_##arg##h_) ZEM_CB_MARSHAL_KNOWN(rtn##f_##arg##h_, arg, CBARGS);                   \
    if (zem::known_as(adaptor, rtn##c_##arg##_quiet)) ZEM_CB_MARSHAL_KNOWN(rtn##c_##arg##_helper, arg, CBARGS); \
    if (zem::known_as(adaptor, rtn##f_##arg##_quiet)) ZEM_CB_MARSHAL_KNOWN(rtn##f_##arg##h_, arg, CBARGS);      \
    return ZEM_CB_ON_COPIES(CBARGS, zem::marshal_loop, adaptor, false, en_data, arg);                   \
  }                                                                                                    \
  [[gnu::cold, gnu::noinline]] static int64_t rtn##_##arg##_traced(                                          \
      rtn##_##arg##_adaptor adaptor, engine_data *en_data, zem_routine arg ZEM_CB_PARAMS(CBARGS)) {          \
    ZEM_TRACE_BLOCK(#rtn "fv:" #arg, "before", CBARGS);                                                    \
    const int64_t zem_status = rtn##f_marshal_##arg##h_(adaptor, en_data, arg ZEM_CB_NAMES(CBARGS));         \
    ZEM_TRACE_BLOCK(#rtn "fv:" #arg, "after", CBARGS);                                                     \
    return zem_status;                                                                                      \
  }                                                                                                         \
  ZEM_LAYER_INLINE int64_t rtn##f_print_##arg##h_(rtn##_##arg##_adaptor adaptor, engine_data *en_data,      \
                                                  zem_routine arg ZEM_CB_PARAMS(CBARGS)) {               \
    const bool zem_quiet = zem::known_as(adaptor, rtn##c_##arg##_quiet) || zem::known_as(adaptor, rtn##f_##arg##_quiet); \
    if (!zem_quiet && __builtin_expect(zem::trace_on(), 0))                                              \
      return ZEM_CB_ON_COPIES(CBARGS, rtn##_##arg##_traced, adaptor, en_data, arg);                       \
    return rtn##f_marshal_##arg##h_(adaptor, en_data, arg ZEM_CB_NAMES(CBARGS));                         \
  }

// A worker that loops over one callback runs its loop once per adaptor:
//
//   ZEM_WITH_KNOWN_ADAPTOR(c05ay, f, adaptor, known, c05ayyn_(..., known, ...));
//
// runs the statement with `known` a constant that stands for the C adaptor
// or for the Fortran adaptor, or, for any other adaptor and whenever the
// trace switch is on, with the adaptor given.  With the adaptor a constant
// the marshal layer's choice between the two folds away, and the loop keeps
// neither the adaptor nor its tests: the choice is made once per call
// instead of once per evaluation, and the register it held is free for the
// solver's state.  The trace switch is read here, once for the whole call:
// the two constants are the quiet adaptors, for which the traced callback
// layer drops its test of the switch, so that a loop run with the switch
// off makes no trace test at all (a switch turned on in the middle of a
// call takes effect at the next call; the traced engine entry has read it
// just before, in any case).  The statement is compiled three times, so this
// is for the loop of a worker, not for one-off calls.
namespace zem {
template <auto C, auto F, auto CQ, auto FQ, typename Adaptor, typename Body>
[[gnu::always_inline]] inline void with_known_adaptor(Adaptor adaptor, Body body) {
  if (__builtin_expect(!trace_on(), 1)) {
    if (adaptor == C) return body(CQ);
    if (adaptor == F) return body(FQ);
  }
  return body(adaptor);
}
}  // namespace zem

#define ZEM_WITH_KNOWN_ADAPTOR(rtn, arg, adaptor, known, ...)                                              \
  zem::with_known_adaptor<rtn##c_##arg##_helper, rtn##f_##arg##h_, rtn##c_##arg##_quiet, rtn##f_##arg##_quiet>( \
      adaptor, [&](rtn##_##arg##_adaptor known) __attribute__((always_inline)) { __VA_ARGS__; })
