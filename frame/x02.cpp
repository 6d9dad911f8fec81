// x02: the properties of the library's arithmetic, as fixed constants of
// IEEE double precision and 64-bit integers.  Each routine is the shortest
// form of the call frame: C entry or Fortran entry -> x02XXft_ -> x02XXfv_
// -> x02XXfn_, whose only action is to store the constant.
#include <bit>
#include <cstdint>

#include "frame.h"

#define X02_DOUBLE_ARGS(V, A, U) V(double *, result)
#define X02_INT_ARGS(V, A, U) V(int64_t *, result)
#define X02AH_ARGS(V, A, U) V(double *, maxsc)

#define ZEM_CONSTANT(rtn, type, ARGS, value)                         \
  ZEM_ENGINE_LAYERS(rtn, ARGS)                                       \
  ZEM_INTERNAL void rtn##fn_(engine_data *, type *result) { *result = (value); } \
  ZEM_API type rtn##c() {                                            \
    f90_io_init();                                                   \
    engine_data en_data;                                             \
    y90haan_(&en_data);                                              \
    type r;                                                          \
    rtn##ft_(&en_data, &r);                                          \
    return r;                                                        \
  }                                                                  \
  ZEM_API type rtn##f_() {                                           \
    engine_data en_data;                                             \
    y90haan_(&en_data);                                              \
    type r;                                                          \
    rtn##ft_(&en_data, &r);                                          \
    return r;                                                        \
  }

namespace {
constexpr double bits(uint64_t b) { return std::bit_cast<double>(b); }
}  // namespace

ZEM_CONSTANT(x02ah, double, X02AH_ARGS, bits(0x4950000000000000))      // 2^150
ZEM_CONSTANT(x02aj, double, X02_DOUBLE_ARGS, bits(0x3CA0000000000000)) // 2^-53
ZEM_CONSTANT(x02ak, double, X02_DOUBLE_ARGS, bits(0x0010000000000000)) // 2^-1022
ZEM_CONSTANT(x02al, double, X02_DOUBLE_ARGS, bits(0x7FEFFFFFFFFFFFFF)) // largest double
// One unit in the last place above 2^-1022, deliberately: its reciprocal is
// safely below the largest double.
ZEM_CONSTANT(x02am, double, X02_DOUBLE_ARGS, bits(0x0010000000000001))
ZEM_CONSTANT(x02an, double, X02_DOUBLE_ARGS, bits(0x0010000000000001))
ZEM_CONSTANT(x02bb, int64_t, X02_INT_ARGS, INT64_MAX)
ZEM_CONSTANT(x02be, int64_t, X02_INT_ARGS, 15)
ZEM_CONSTANT(x02bh, int64_t, X02_INT_ARGS, 2)
ZEM_CONSTANT(x02bj, int64_t, X02_INT_ARGS, 53)
ZEM_CONSTANT(x02bk, int64_t, X02_INT_ARGS, -1021)
ZEM_CONSTANT(x02bl, int64_t, X02_INT_ARGS, 1024)
