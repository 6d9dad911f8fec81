// What the workers of chapter d01 share around the engines: work storage,
// the packed outputs rinfo/iinfo, the translation of an engine outcome into
// the message record, and the callback adaptors of the vectorised integrand.
//
// Status numbers are the same for the whole family, so that a caller can
// treat ifail alike from routine to routine:
//    1  subdivision limit            NE_QUAD_MAX_SUBDIV        detail 1002
//    2  round-off                    NE_QUAD_ROUNDOFF_TOL      detail 1003
//    3  bad integrand behaviour      NE_QUAD_BAD_SUBDIV        detail 1004
//    4  round-off in extrapolation   NE_QUAD_ROUNDOFF_EXTRAPL  detail 1005
//    5  divergence                   NE_QUAD_NO_CONV           detail 1006
//    6  maxsub (or the workspace that sets it) invalid          1001, 1010-1012
//    7  the routine's selector (key, inf, npts) invalid         1008
//    8  break points outside the interval                       1009
//    9  d01rm's finite bound not a finite number                 1014
//   -1  the integrand set iflag < 0  NE_USER_STOP              detail 1007
//       (a C integrand that sets comm->flag instead is reported with the
//       frame's user-stop row and its value)
// -999  memory exhausted
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <new>

#include "frame/frame.h"
#include "quad_types.h"

namespace zem::quad {

inline constexpr int64_t detail_maxsub = 1001;
inline constexpr int64_t detail_limit = 1002;
inline constexpr int64_t detail_roundoff = 1003;
inline constexpr int64_t detail_bad = 1004;
inline constexpr int64_t detail_extrapolation = 1005;
inline constexpr int64_t detail_divergence = 1006;
inline constexpr int64_t detail_iflag = 1007;
inline constexpr int64_t detail_selector = 1008;
inline constexpr int64_t detail_breakpoints = 1009;
inline constexpr int64_t detail_maxsub_npts = 1010;
inline constexpr int64_t detail_lw = 1011;
inline constexpr int64_t detail_liw = 1012;
inline constexpr int64_t detail_bound = 1014;

// The rows of the run codes and the iflag stop, shared by the tables of
// d01rj, d01rl, d01rm (d01rk and d01aj pick the ones they use).
#define ZEM_D01_RUN_MESSAGES                                                                              \
  {1, zem::quad::detail_limit, NE_QUAD_MAX_SUBDIV,                                                        \
   {"The maximum number of subdivisions (maxsub) has been reached:", "maxsub = %s."}},                    \
      {2, zem::quad::detail_roundoff, NE_QUAD_ROUNDOFF_TOL,                                                \
       {"Round-off error prevents the requested tolerance from being achieved:",                          \
        "epsabs = %s and epsrel = %s."}},                                                                  \
      {3, zem::quad::detail_bad, NE_QUAD_BAD_SUBDIV,                                                       \
       {"Extremely bad integrand behaviour occurs around the sub-interval", "(%s,%s)."}},                 \
      {4, zem::quad::detail_extrapolation, NE_QUAD_ROUNDOFF_EXTRAPL,                                      \
       {"Round-off error is detected in the extrapolation table."}},                                      \
      {5, zem::quad::detail_divergence, NE_QUAD_NO_CONV,                                                   \
       {"The integral is probably divergent or slowly convergent."}},                                     \
      {-1, zem::quad::detail_iflag, NE_USER_STOP, {"Exit from f with iflag < 0."}}

// The largest element count of T whose size in bytes is representable.
template <typename T>
constexpr int64_t max_count() {
  return static_cast<int64_t>(PTRDIFF_MAX / sizeof(T));
}

// An outcome whose result or error is not a finite number (the integrand
// returned NaN or an infinity, or overflowed the sums; a limit was not
// finite or [a,b] wider than the doubles) is never reported as success nor
// as a mere warning about the tolerance: it becomes "Extremely bad integrand
// behaviour" on [a,b] unless a smaller interval is already named.
inline void settle_nonfinite(quad_outcome &o, double a, double b) {
  if (o.stop != 0 || (std::isfinite(o.result) && std::isfinite(o.abserr))) return;
  if (o.code != 3) {
    o.code = 3;
    o.bad_a = a;
    o.bad_b = b;
  }
}

// Integer work storage of one call: on the stack for small sizes, else on
// the heap.  get() returns null when memory is exhausted.
class int_work {
 public:
  // n is checked before the size in bytes is formed: a count whose size
  // overflows is memory that cannot be had (a nothrow new[] would throw).
  int64_t *get(int64_t n) {
    if (n <= stack_len) return stack_;
    if (n > max_count<int64_t>()) return nullptr;
    heap_.reset(new (std::nothrow) int64_t[n]);
    return heap_.get();
  }

 private:
  static constexpr int64_t stack_len = 256;
  int64_t stack_[stack_len];
  std::unique_ptr<int64_t[]> heap_;
};

// The four lists lie in rinfo at offsets 0, limit, 2 limit, 3 limit while
// the engine runs; afterwards the n used entries of each are moved together:
// a_1..a_n, b_1..b_n, e_1..e_n, r_1..r_n.  Nothing moves for n = 0 or
// n = limit.  (A run that one rule application settles, n = 1, moves three
// numbers in line.)
void pack_lists_moves(double *rinfo, int64_t limit, int64_t n);
inline void pack_lists(double *rinfo, int64_t limit, int64_t n) {
  if (n <= 0 || n >= limit) return;
  if (n == 1) {
    // The general moves, in their order, for one entry per list.
    rinfo[1] = rinfo[limit];
    rinfo[2] = rinfo[2 * limit];
    rinfo[3] = rinfo[3 * limit];
    return;
  }
  pack_lists_moves(rinfo, limit, n);
}

// iinfo[0] = n; iinfo[1 ..] = the ordering list as 1-based interval numbers,
// as many of its first entries as fit (min(n, limit - 1)).
inline void fill_iinfo(int64_t *iinfo, int64_t limit, int64_t n, const int64_t *iord) {
  iinfo[0] = n;
  if (n == 1) {
    if (limit > 1) iinfo[1] = iord[0] + 1;
    return;
  }
  // The ordering list is kept in order only down to depth jupbnd, which
  // grows with last up to limit/2 + 2 and shrinks after: positions from
  // limit/2 + 2 on are never written, and are returned as 0.
  const int64_t m = n < limit - 1 ? n : limit - 1;
  const int64_t written = n < limit / 2 + 2 ? n : limit / 2 + 2;
  for (int64_t i = 0; i < m; ++i) iinfo[i + 1] = i < written ? iord[i] + 1 : 0;
}

// The message record of an engine outcome (nothing for success): the run
// codes with the family's detail codes, or a stop: by iflag < 0 (iflag_stop)
// or, in C, by comm->flag (the frame's user-stop row with the flag's value).
void report_failure(const quad_outcome &o, bool iflag_stop, char *errbuf, int64_t *ifail, double epsabs,
                    double epsrel, int64_t maxsub);
inline void report_outcome(const quad_outcome &o, bool iflag_stop, char *errbuf, int64_t *ifail,
                           double epsabs, double epsrel, int64_t maxsub) {
  if (o.stop == 0 && o.code == 0) return succeed(ifail);
  report_failure(o, iflag_stop, errbuf, ifail, epsabs, epsrel, maxsub);
}

// After the user's vectorised f returned: iflag < 0 asks to stop.
inline void take_iflag(engine_data *en_data, int64_t iflag) {
  if (iflag < 0) en_data->cb_status = iflag;
}

}  // namespace zem::quad

// One evaluation of the vectorised integrand: nx points, their values, the
// stop flag and the user's data.
#define ZEM_D01_VEC_F_ARGS(V, A, U)                                                                        \
  A(const double *, x) V(const int64_t *, nx) A(double *, fv) V(int64_t *, iflag) A(int64_t *, iuser)      \
  A(double *, ruser) A(void **, cpuser)

// The callback chain of routine rtn's vectorised f, with its two adaptors.
#define ZEM_D01_VEC_CALLBACK(rtn)                                                                          \
  ZEM_CALLBACK_CHAIN(rtn, f, ZEM_D01_VEC_F_ARGS)                                                           \
  ZEM_INTERNAL void rtn##f_fh_(engine_data *en_data, zem_routine f, const double *x, const int64_t *nx,    \
                               double *fv, int64_t *iflag, int64_t *iuser, double *ruser, void **cpuser) { \
    reinterpret_cast<Zem_D01_FVecFun>(f)(x, nx, fv, iflag, iuser, ruser, cpuser);                         \
    zem::quad::take_iflag(en_data, *iflag);                                                               \
  }                                                                                                        \
  ZEM_INTERNAL void rtn##c_f_helper(engine_data *en_data, zem_routine f, const double *x, const int64_t *nx, \
                                    double *fv, int64_t *iflag, int64_t *iuser, double *, void **) {       \
    Zem_Comm *comm = zem::comm_from(iuser);                                                                \
    const zem::comm_watch watch(comm);                                                                     \
    reinterpret_cast<Zem_D01_VecFun>(f)(x, *nx, fv, iflag, comm);                                          \
    zem::quad::take_iflag(en_data, *iflag);                                                                \
    if (en_data->cb_status == 0) watch.take(en_data);                                                      \
  }

// The engine's view of routine rtn's f: one call of the traced callback
// layer per rule application, with iflag 0 on entry; name##_iflag_stop
// records whether a stop came from iflag.  ZEM_D01_VEC_INTEGRAND_FN defines
// the callable name##_fn only (for a rule that holds it directly),
// ZEM_D01_VEC_INTEGRAND also its integrand_ref `name`.
#define ZEM_D01_VEC_INTEGRAND_FN(rtn, name)                                                                \
  bool name##_iflag_stop = false;                                                                          \
  auto name##_fn = [=, &name##_iflag_stop](const double *x_, int64_t n_, double *fv_) -> int64_t {         \
    int64_t iflag_ = 0;                                                                                    \
    const int64_t s_ = rtn##f_print_fh_(adaptor, en_data, f, x_, &n_, fv_, &iflag_, iuser, ruser, cpuser); \
    name##_iflag_stop = iflag_ < 0;                                                                        \
    return s_;                                                                                             \
  }
#define ZEM_D01_VEC_INTEGRAND(rtn, name)  \
  ZEM_D01_VEC_INTEGRAND_FN(rtn, name);    \
  zem::quad::integrand_ref name(name##_fn)
