// The two adaptors of a callback chain written from its argument list, for
// user functions whose C and Fortran forms differ only in the usual way:
//
//   Fortran: every chain argument by reference, iuser and ruser last;
//   C:       a read-only scalar (V with a const type) by value, an output
//            scalar (V, not const) and every array (A) by address, and the
//            comm record in the place of iuser and ruser.
//
// ZEM_CALLBACK_ADAPTORS(rtn, arg, CBARGS, FTYPE, CTYPE, AFTER) defines
// rtn##f_##arg##h_ and rtn##c_##arg##_helper, the two adaptors that
// ZEM_CALLBACK_CHAIN(rtn, arg, CBARGS) declares; CBARGS must end with
// A(int64_t *, iuser) A(double *, ruser).  The C adaptor watches comm->flag
// (zem::comm_watch).  AFTER is a statement run after the user's call in
// both (it sees en_data and the chain's arguments by name), e.g. to turn
// a negative inform into a stop request; leave it empty when there is none.
// A routine whose C form is anything else writes its adaptors by hand, as
// c05/c05ay.cpp does.
#pragma once

#include <cstddef>
#include <tuple>
#include <utility>

#include "entry.h"
#include "layers.h"

namespace zem {

// A V argument on its way to a C user function.
template <typename T>
inline T c_value(const T *p) {
  return *p;
}
template <typename T>
inline T *c_value(T *p) {
  return p;
}

// f(a...), the chain's arguments without a leading comma.
template <typename F, typename... A>
[[gnu::always_inline]] inline void call_user(F f, A... a) {
  f(a...);
}

// f(a..., comm) without the last two of a (iuser and ruser).
template <typename F, typename... A>
[[gnu::always_inline]] inline void call_user_comm(F f, Zem_Comm *comm, A... a) {
  static_assert(sizeof...(A) >= 2, "the chain's arguments end with iuser and ruser");
  const std::tuple<A...> t(a...);
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    f(std::get<I>(t)..., comm);
  }(std::make_index_sequence<sizeof...(A) - 2>());
}

}  // namespace zem

#define ZEM_CB_C_VALUE_(type, name) , zem::c_value(name)

#define ZEM_CALLBACK_ADAPTORS(rtn, arg, CBARGS, FTYPE, CTYPE, AFTER)                                         \
  ZEM_INTERNAL void rtn##f_##arg##h_(engine_data *en_data, zem_routine zem_user ZEM_CB_PARAMS(CBARGS)) {     \
    (void)en_data;                                                                                           \
    zem::call_user(reinterpret_cast<FTYPE>(zem_user) ZEM_CB_NAMES(CBARGS));                                  \
    AFTER;                                                                                                   \
  }                                                                                                          \
  ZEM_INTERNAL void rtn##c_##arg##_helper(engine_data *en_data, zem_routine zem_user ZEM_CB_PARAMS(CBARGS)) { \
    Zem_Comm *zem_comm = zem::comm_from(iuser);                                                              \
    const zem::comm_watch zem_watch(zem_comm);                                                               \
    zem::call_user_comm(reinterpret_cast<CTYPE>(zem_user),                                                   \
                        zem_comm CBARGS(ZEM_CB_C_VALUE_, ZEM_ARG_NAME_, ZEM_ARG_NAME_));                     \
    zem_watch.take(en_data);                                                                                 \
    AFTER;                                                                                                   \
  }
